#include "TableColumns.h"

#include "analysis/TripText.h"
#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <map>

namespace Tarno
{

namespace
{

/// What users call a field: the caption and, separated by "|", its other names in the windows.
struct FieldCaption {
    std::string_view caption;
    std::string_view others = {};
};

/// In the order of EntryField.
constexpr std::array<FieldCaption, EntryField::Count> tripCaptions{{
    {"Number of the trip"},
    {"Start date", "From|Date"},
    {"End date", "To"},
    {"Start time", "Start|Started"},
    {"End time", "End|Finished"},
    {"Number of the location"},
    {"Tide at the start", "Tide-Start"},
    {"Tide at the end", "Tide-End"},
    {"High tide time", "High Tide At"},
    {"High tide height"},
    {"Low tide time", "Low Tide At"},
    {"Low tide height"},
    {"Sunrise"},
    {"Sunset"},
    {"Moonrise"},
    {"Moonset"},
    {"Moon phase", "Moon Phase (%Lit)|Moon phase, percent lit|Moon"},
    {"Rating", "Prediction|Prediction Was"},
    {"Air temperature"},
    {"Water temperature"},
    {"Wind direction"},
    {"Wind strength"},
    {"Weather", "The Weather Was"},
    {"Water clarity", "The Water Was|Clarity of the water"},
    {"Target species", "Targeted|Species you targetted"},
    {"Bait", "Bait, lure or fly you used|Bait/Lure/Fly You Used"},
    {"Methods", "Method|Methods you used"},
    {"Action", "Fishing Action Was"},
    {"Caught", "Species you encountered or caught|Species You Encountered/Caught|Species caught"},
    {"Trend of the air pressure"},
    {"Air pressure reading"},
    {"Observations", "Other observations|Notes|Other Observations (hatches, baitfish, etc)"},
    {"First major peak period"},
    {"Second major peak period"},
    {"First minor peak period"},
    {"Second minor peak period"},
    {"Picture"},
}};

static_assert(!tripCaptions.back().caption.empty(), "every field has a caption");

struct PlaceColumn {
    LocationField::Position position;
    std::string_view heading;
    FieldCaption names;
    CellKind kind;
};

constexpr std::array<PlaceColumn, 5> placeColumns{{
    {LocationField::LocName, "Location", {"Location", "Place|Name of the location"}, CellKind::Lines},
    {LocationField::LocLatt, "Latitude", {"Latitude", "Lat|Latt"}, CellKind::Latitude},
    {LocationField::LocLong, "Longitude", {"Longitude", "Long|Lon"}, CellKind::Longitude},
    {LocationField::LocGMT, "GMT", {"Offset from GMT", "GMT Diff|Hours from GMT"}, CellKind::Hours},
    {LocationField::LocDST, "DST", {"Daylight saving time", "Daylight saving"}, CellKind::YesOrNo},
}};

CellKind KindOf(const FieldInfo& field)
{
    switch (field.kind) {
    case FieldKind::Date:
        return CellKind::Date;
    case FieldKind::Time:
        return field.position >= EntryField::SunRise && field.position <= EntryField::MoonSet
                   ? CellKind::RiseOrSet
                   : CellKind::Time;
    case FieldKind::Lines:
        return CellKind::Lines;
    case FieldKind::Code:
        return CellKind::Code;
    case FieldKind::MoonPhase:
        return CellKind::MoonPhase;
    default:
        return field.position >= EntryField::Major1 && field.position <= EntryField::Minor2
                   ? CellKind::PeakTime
                   : CellKind::Text;
    }
}

std::string_view OtherNames(const TableColumn& column)
{
    if (column.owner == TableColumn::Owner::Trip) {
        return tripCaptions.at(column.position).others;
    }
    const auto* found = std::find_if(placeColumns.begin(), placeColumns.end(), [&](const PlaceColumn& place) {
        return place.position == column.position;
    });
    return found->names.others;
}

/// Returns a heading in the form in which headings are compared.
std::string Normalized(std::string_view heading)
{
    heading = Trimmed(heading);
    return Fold(heading.ends_with(':') ? Trimmed(heading.substr(0, heading.size() - 1)) : heading);
}

/// Returns the position of the column of each normalised data name, caption and other name.
std::map<std::string, std::size_t> FixedHeadings()
{
    const auto& columns = TableColumns();
    std::map<std::string, std::size_t> known; // the first column of a name counts
    for (std::size_t index = 0; index < columns.size(); ++index) {
        known.emplace(Normalized(columns[index].heading), index);
    }
    for (std::size_t index = 0; index < columns.size(); ++index) {
        known.emplace(Normalized(columns[index].caption), index);
        for (const std::string& name : Split(OtherNames(columns[index]), '|')) {
            known.emplace(Normalized(name), index);
        }
    }
    return known;
}

/// Adds the descriptions and labels of the fields.
std::map<std::string, std::size_t> KnownHeadings(const RecordList& fields)
{
    static const auto fixed = FixedHeadings();
    auto known = fixed;
    for (const FieldField::Position text : {FieldField::Desc, FieldField::Label}) {
        for (const RecordView& field : fields) {
            const auto column = known.find(Normalized(field.Text(FieldField::FieldName)));
            if (column != known.end()) {
                known.emplace(Normalized(field.Text(text)), column->second);
            }
        }
    }
    known.erase("");
    return known;
}

} // namespace

const std::vector<TableColumn>& TableColumns()
{
    static const std::vector<TableColumn> columns = [] {
        std::vector<TableColumn> all;
        for (const FieldInfo& field : entryFields) {
            all.push_back(
                {.owner = TableColumn::Owner::Trip,
                 .position = field.position,
                 .heading = field.name,
                 .caption = tripCaptions.at(field.position).caption,
                 .kind = KindOf(field),
                 .words = field.words,
                 .isNeeded = field.position == EntryField::StartDate || field.position == EntryField::LocNo});
            if (field.position != EntryField::LocNo) {
                continue;
            }
            for (const PlaceColumn& place : placeColumns) {
                all.push_back({.owner = TableColumn::Owner::Location,
                               .position = place.position,
                               .heading = place.heading,
                               .caption = place.names.caption,
                               .kind = place.kind});
            }
        }
        return all;
    }();
    return columns;
}

ColumnMapping ProposeMapping(const CsvRow& headings, const RecordList& fields)
{
    const auto known = KnownHeadings(fields);
    std::vector<bool> isMapped(TableColumns().size());
    ColumnMapping mapping;
    for (const std::string& heading : headings) {
        const auto found = known.find(Normalized(heading));
        const bool isNew = found != known.end() && !isMapped[found->second];
        mapping.push_back(isNew ? std::optional(found->second) : std::nullopt);
        if (isNew) {
            isMapped[found->second] = true;
        }
    }
    return mapping;
}

TableForms TableForms::Of(const QLocale& locale)
{
    const QString format = locale.dateFormat(QLocale::ShortFormat);
    const auto day = format.indexOf(QLatin1Char('d'));
    const auto month = format.indexOf(QLatin1Char('M'));
    const auto year = format.indexOf(QLatin1Char('y'));
    return {.dates = year < day && year < month ? DateOrder::YearMonthDay
                     : month < day              ? DateOrder::MonthDayYear
                                                : DateOrder::DayMonthYear};
}

} // namespace Tarno
