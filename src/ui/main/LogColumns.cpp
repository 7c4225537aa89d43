#include "LogColumns.h"

#include "qt/Strings.h"
#include "store/EntryFields.h"

#include <algorithm>
#include <array>
#include <cstddef>

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

QString LogText(const RecordView& entry, int column, const QString& location)
{
    const LogColumn& shown = columns.at(static_cast<std::size_t>(column));
    const std::string value = entry.Text(shown.field);
    switch (entryFields.at(shown.field).kind) {
    case FieldKind::Place:
        return location;
    case FieldKind::Code: {
        const std::string word = CodeWord(shown.field, value);
        return FromUtf8(shown.content == CellContent::CodeAndWord ? value + " - " + word : word);
    }
    default:
        return FromUtf8(value);
    }
}

} // namespace Tarno
