#include "LogGrid.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "store/RecordLayouts.h"
#include "store/cDescs.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

namespace
{

using Word = std::string (cDescs::*)(std::string_view) const;

struct CodedField {
    std::string_view name;
    Word word;
    bool ordersByCode; ///< as the first column
};

constexpr std::array codedFields{
    CodedField{"WindDir", &cDescs::WindDirDesc, false},
    CodedField{"WindStrength", &cDescs::WindStrengthDesc, false},
    CodedField{"WaterClarity", &cDescs::WaterClarityDesc, false},
    CodedField{"MoonPhase", &cDescs::MoonPhaseDesc, false},
    CodedField{"AirPressure", &cDescs::AirPressureDesc, false},
    CodedField{"TideStart", &cDescs::TideStartDesc, true},
    CodedField{"TideEnd", &cDescs::TideEndDesc, true},
    CodedField{"Prediction", &cDescs::PredictionDesc, true},
    CodedField{"FishAction", &cDescs::FishActionDesc, true},
    CodedField{"Weather", &cDescs::WeatherDesc, true},
};

constexpr std::array<std::string_view, 5> fieldsOfLines{"TargetSpecies", "BaitUsed", "Method", "FishCaught",
                                                        "Obbos"};

/// The names of the locations, each looked up once.
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

/// A column of the table: where its values are, and how they are shown.
class Column
{
public:
    Column(std::string_view name, const std::string& number, bool first)
        : m_position(ToInt32(number)),
          m_isLocation(name == "LocNo"),
          m_hasLines(std::find(fieldsOfLines.begin(), fieldsOfLines.end(), name) != fieldsOfLines.end())
    {
        const auto coded = std::find_if(codedFields.begin(), codedFields.end(),
                                        [&](const CodedField& field) { return field.name == name; });
        if (coded != codedFields.end()) {
            m_word = coded->word;
            m_showsCode = first && coded->ordersByCode;
        }
    }

    std::string Cell(const RecordView& entry, LocationNames& locations) const
    {
        std::string value = entry.Text(static_cast<std::size_t>(m_position));
        if (m_isLocation) {
            return locations.Of(value);
        }
        if (m_word != nullptr) {
            const std::string word = (cDescs().*m_word)(value);
            return m_showsCode ? value + "-" + word : word;
        }
        return m_hasLines ? mMain::DecodeLineBreaks(value) : value;
    }

private:
    std::int32_t m_position; // a negative one is beyond every record's end
    bool m_isLocation;
    bool m_hasLines;
    Word m_word = nullptr;
    bool m_showsCode = false;
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
    std::vector<Column> columns; // made when there is an entry for them
    LocationNames locations(locationName);
    ReportTable table(1, ReportRow(query.selection.numbers.size()));
    for (std::size_t index = 0; index < entries.size(); ++index) {
        const RecordView& entry = entries[index];
        if (query.location != 0 && ToDouble(entry.Text(EntryField::LocNo)) != query.location) {
            continue;
        }
        if (columns.empty()) {
            columns = ColumnsOf(query.selection);
        }
        if (index > 0) { // the first row is the first entry's own, and stays empty without it
            table.emplace_back(columns.size());
        }
        std::transform(columns.begin(), columns.end(), table.back().begin(),
                       [&](const Column& column) { return column.Cell(entry, locations); });
    }
    return table;
}
