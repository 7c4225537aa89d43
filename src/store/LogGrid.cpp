#include "LogGrid.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "store/EntryFields.h"
#include "store/cDescs.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace Tarno
{

namespace
{

/// Caches the names of locations.
class LocationNames
{
public:
    explicit LocationNames(const std::function<std::string(const std::string&)>& lookUp) : m_lookUp(lookUp) {}

    const std::string& Of(const std::string& number)
    {
        auto known = m_names.find(number);
        if (known == m_names.end()) {
            known = m_names.emplace(number, mMain::DecodeLineBreaks(m_lookUp(number))).first;
        }
        return known->second;
    }

private:
    const std::function<std::string(const std::string&)>& m_lookUp;
    std::unordered_map<std::string, std::string> m_names;
};

/// A column of the table: the position of its values and how they are shown. The two may belong to different
/// fields if a saved report was edited by hand.
class Column
{
public:
    Column(std::string_view name, const std::string& number, bool isFirst)
        : m_position(ToInt32(number)), m_shownAs(FindEntryField(name)), m_isFirst(isFirst)
    {
    }

    std::string Cell(const RecordView& entry, LocationNames& locations) const
    {
        const auto position = static_cast<std::size_t>(m_position);
        if (position >= EntryField::Count && !entry.Has(position)) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        std::string value = entry.Text(position);
        switch (m_shownAs == nullptr ? FieldKind::Text : m_shownAs->kind) {
        case FieldKind::Place:
            return entry.Has(position) ? locations.Of(value) : value;
        case FieldKind::Code: {
            const std::string word = CodeWord(m_shownAs->position, value);
            const bool showsCode = m_isFirst && m_shownAs->inFirstColumn == FirstColumn::ShowsCodeAndWord;
            return showsCode ? value + "-" + word : word;
        }
        case FieldKind::MoonPhase:
            return cDescs().MoonPhaseDesc(value);
        case FieldKind::Lines:
            return mMain::DecodeLineBreaks(value);
        default:
            return value;
        }
    }

private:
    std::int32_t m_position; // a negative position becomes one beyond the end of every record
    const FieldInfo* m_shownAs;
    bool m_isFirst;
};

std::vector<Column> ColumnsOf(const ReportSelection& selection)
{
    if (selection.names.size() < selection.numbers.size()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    std::vector<Column> columns;
    for (std::size_t column = 0; column < selection.numbers.size(); ++column) {
        columns.emplace_back(selection.names[column], selection.numbers[column], column == 0);
    }
    return columns;
}

} // namespace

ReportTable LogGrid(const RecordList& entries, const LogGridQuery& query,
                    const std::function<std::string(const std::string& number)>& locationName)
{
    std::vector<Column> columns; // created with the first entry that passes
    LocationNames locations(locationName);
    ReportTable table(1, ReportRow(query.selection.numbers.size()));
    for (std::size_t index = 0; index < entries.size(); ++index) {
        const RecordView& entry = entries[index];
        if (query.location != 0 &&
            (!entry.Has(EntryField::LocNo) || ToDouble(entry.Text(EntryField::LocNo)) != query.location)) {
            continue;
        }
        if (columns.empty()) {
            columns = ColumnsOf(query.selection);
        }
        // the first row is reserved for the first entry and stays empty if the filter excludes it
        if (index > 0) {
            table.emplace_back(columns.size());
        }
        std::transform(columns.begin(), columns.end(), table.back().begin(),
                       [&](const Column& column) { return column.Cell(entry, locations); });
    }
    return table;
}

} // namespace Tarno
