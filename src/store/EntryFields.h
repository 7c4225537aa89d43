#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace Tarno
{

// The catalogue of the fields of a log entry, used by everything that shows, edits, lists, prints or
// exchanges entries. A new field needs a name in EntryField::Position, a row in entryFields, a child at the
// end of each record in the shipped files, and a control with its binding in the editor.

namespace EntryField
{

/// The positions of the values among the children of an entry's record. The order is part of the file format;
/// the names of the children are ignored.
enum Position : std::size_t {
    TarnoNo,
    StartDate,
    EndDate,
    StartTime,
    EndTime,
    LocNo,
    TideStart,
    TideEnd,
    HighTide,
    HighTideHt,
    LowTide,
    LowTideHt,
    SunRise,
    SunSet,
    MoonRise,
    MoonSet,
    MoonPhase,
    Prediction,
    AirTemp,
    WaterTemp,
    WindDir,
    WindStrength,
    Weather,
    WaterClarity,
    TargetSpecies,
    BaitUsed,
    Method,
    FishAction,
    FishCaught,
    AirPressure,
    PressureReading,
    Obbos,
    Major1,
    Major2,
    Minor1,
    Minor2,
    Picture,
    Count
};

} // namespace EntryField

enum class FieldKind {
    Key,       ///< the number of the record
    Date,      ///< "yyyy-mm-dd"
    Time,      ///< "hh:mm", empty, or a word such as "never" for rise and set
    Number,    ///< a number as the user typed it; any text is accepted
    Text,      ///< one line
    Lines,     ///< several lines, each line break stored as "~CL~"
    Code,      ///< the index of a word of the field as decimal text; any other text means "not set"
    MoonPhase, ///< the illuminated percentage as an integer, negative while waning
    Place,     ///< the number of a location
    Picture,   ///< the path of an image file, or empty
};

/// Whether the first column of a report shows the code before its word ("3-Run In"), so that rows are sorted
/// by code.
enum class FirstColumn { ShowsWord, ShowsCodeAndWord };

struct FieldInfo {
    EntryField::Position position;
    std::string_view name; ///< the data name that identifies the field in reports and other formats
    FieldKind kind;
    std::span<const std::string_view> words = {}; ///< for codes only
    FirstColumn inFirstColumn = FirstColumn::ShowsWord;
};

namespace FieldWords
{

inline constexpr std::array<std::string_view, 4> tide{"Top", "Run Out", "Bottom", "Run In"};
inline constexpr std::array<std::string_view, 4> prediction{"Poor", "Fair", "Good", "Best"};
inline constexpr std::array<std::string_view, 8> windDirection{"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
inline constexpr std::array<std::string_view, 4> windStrength{"Calm", "Light", "Moderate", "Strong"};
inline constexpr std::array<std::string_view, 7> weather{"Stormy", "Rainy",      "Showery", "Overcast",
                                                         "Cloudy", "Few Clouds", "Clear"};
inline constexpr std::array<std::string_view, 3> waterClarity{"Clear", "Cloudy", "Muddy"};
inline constexpr std::array<std::string_view, 4> action{"Slow", "Fair", "Good", "Hot!"};
inline constexpr std::array<std::string_view, 2> pressureTrend{"Rising", "Falling"};

inline constexpr std::string_view notSet = "Not Set"; ///< the word for every other code

} // namespace FieldWords

inline constexpr std::array<FieldInfo, EntryField::Count> entryFields{{
    {EntryField::TarnoNo, "TarnoNo", FieldKind::Key},
    {EntryField::StartDate, "StartDate", FieldKind::Date},
    {EntryField::EndDate, "EndDate", FieldKind::Date},
    {EntryField::StartTime, "StartTime", FieldKind::Time},
    {EntryField::EndTime, "EndTime", FieldKind::Time},
    {EntryField::LocNo, "LocNo", FieldKind::Place},
    {EntryField::TideStart, "TideStart", FieldKind::Code, FieldWords::tide, FirstColumn::ShowsCodeAndWord},
    {EntryField::TideEnd, "TideEnd", FieldKind::Code, FieldWords::tide, FirstColumn::ShowsCodeAndWord},
    {EntryField::HighTide, "HighTide", FieldKind::Time},
    {EntryField::HighTideHt, "HighTideHt", FieldKind::Number},
    {EntryField::LowTide, "LowTide", FieldKind::Time},
    {EntryField::LowTideHt, "LowTideHt", FieldKind::Number},
    {EntryField::SunRise, "SunRise", FieldKind::Time},
    {EntryField::SunSet, "SunSet", FieldKind::Time},
    {EntryField::MoonRise, "MoonRise", FieldKind::Time},
    {EntryField::MoonSet, "MoonSet", FieldKind::Time},
    {EntryField::MoonPhase, "MoonPhase", FieldKind::MoonPhase},
    {EntryField::Prediction, "Prediction", FieldKind::Code, FieldWords::prediction,
     FirstColumn::ShowsCodeAndWord},
    {EntryField::AirTemp, "AirTemp", FieldKind::Number},
    {EntryField::WaterTemp, "WaterTemp", FieldKind::Number},
    {EntryField::WindDir, "WindDir", FieldKind::Code, FieldWords::windDirection},
    {EntryField::WindStrength, "WindStrength", FieldKind::Code, FieldWords::windStrength},
    {EntryField::Weather, "Weather", FieldKind::Code, FieldWords::weather, FirstColumn::ShowsCodeAndWord},
    {EntryField::WaterClarity, "WaterClarity", FieldKind::Code, FieldWords::waterClarity},
    {EntryField::TargetSpecies, "TargetSpecies", FieldKind::Lines},
    {EntryField::BaitUsed, "BaitUsed", FieldKind::Lines},
    {EntryField::Method, "Method", FieldKind::Lines},
    {EntryField::FishAction, "FishAction", FieldKind::Code, FieldWords::action,
     FirstColumn::ShowsCodeAndWord},
    {EntryField::FishCaught, "FishCaught", FieldKind::Lines},
    {EntryField::AirPressure, "AirPressure", FieldKind::Code, FieldWords::pressureTrend},
    {EntryField::PressureReading, "PressureReading", FieldKind::Number},
    {EntryField::Obbos, "Obbos", FieldKind::Lines},
    {EntryField::Major1, "Major1", FieldKind::Text},
    {EntryField::Major2, "Major2", FieldKind::Text},
    {EntryField::Minor1, "Minor1", FieldKind::Text},
    {EntryField::Minor2, "Minor2", FieldKind::Text},
    {EntryField::Picture, "Picture", FieldKind::Picture},
}};

/// Returns the field with the data name `name` (case-sensitive), or null.
const FieldInfo* FindEntryField(std::string_view name);

/// Returns the word for a stored code of a field of kind Code, or "Not Set" for any other text, such as " 1"
/// and "01".
std::string CodeWord(EntryField::Position field, std::string_view code);

} // namespace Tarno
