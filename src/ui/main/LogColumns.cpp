#include "LogColumns.h"

#include "qt/Strings.h"
#include "store/EntryFields.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace Tarno
{

namespace
{

enum class CellContent { Value, CodeAndWord };

struct LogColumn {
    const char* heading;
    EntryField::Position field;
    CellContent content = CellContent::Value;
};

constexpr std::array columns{
    LogColumn{"From", EntryField::StartDate},
    LogColumn{"To", EntryField::EndDate},
    LogColumn{"Location", EntryField::LocNo},
    LogColumn{"Start", EntryField::StartTime},
    LogColumn{"End", EntryField::EndTime},
    LogColumn{"Tide-Start", EntryField::TideStart},
    LogColumn{"Tide-End", EntryField::TideEnd},
    LogColumn{"Rating", EntryField::Prediction, CellContent::CodeAndWord},
    LogColumn{"Action", EntryField::FishAction, CellContent::CodeAndWord},
};

QString SampleOf(const LogColumn& column)
{
    switch (entryFields.at(column.field).kind) {
    case FieldKind::Date:
        return QStringLiteral("2008-08-08");
    case FieldKind::Time:
        return QStringLiteral("08:08");
    case FieldKind::Code:
        return (column.content == CellContent::CodeAndWord ? QStringLiteral("2 - ") : QString()) +
               FromUtf8(FieldWords::notSet);
    default:
        return {};
    }
}

template <typename Text>
QStringList TextsOf(Text&& text)
{
    QStringList texts;
    std::transform(columns.begin(), columns.end(), std::back_inserter(texts), text);
    return texts;
}

} // namespace

QStringList LogHeadings()
{
    return TextsOf([](const LogColumn& column) { return QLatin1String(column.heading); });
}

QStringList LogSamples()
{
    return TextsOf(SampleOf);
}

int StretchedLogColumn()
{
    return static_cast<int>(LogSamples().indexOf(QString()));
}

QString EntryRowKey(const std::string& number)
{
    return QLatin1Char('K') + FromUtf8(number);
}

void AddLogRows(std::vector<TextTableModel::Row>& rows, const RecordList& entries,
                const std::function<std::string(const std::string&)>& locationName)
{
    std::unordered_map<std::string, QString> locations;
    const auto shownName = [&](const std::string& number) {
        auto known = locations.find(number);
        if (known == locations.end()) {
            known = locations.emplace(number, ShownInOneLine(locationName(number))).first;
        }
        return known->second;
    };
    const auto cell = [&](const RecordView& entry, const LogColumn& column) {
        const std::string value = entry.Text(column.field);
        switch (entryFields.at(column.field).kind) {
        case FieldKind::Place:
            return entry.Has(column.field) ? shownName(value) : QString();
        case FieldKind::Code: {
            const std::string word = CodeWord(column.field, value);
            return FromUtf8(column.content == CellContent::CodeAndWord ? value + " - " + word : word);
        }
        default:
            return FromUtf8(value);
        }
    };
    rows.reserve(rows.size() + entries.size());
    for (const RecordView& entry : entries) {
        rows.push_back({EntryRowKey(entry.Text(EntryField::TarnoNo)),
                        TextsOf([&](const LogColumn& column) { return cell(entry, column); })});
    }
}

} // namespace Tarno
