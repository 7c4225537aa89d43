#include "QueryFields.h"

#include "analysis/ComparableValues.h"
#include "analysis/TripText.h"

#include <algorithm>

namespace Tarno
{

const std::vector<QueryField>& QueryFields()
{
    using namespace EntryField;
    static const std::vector<QueryField> fields{
        {"date", {StartDate, EndDate}, Order::Days},
        {"month", {StartDate}, Order::Months, monthNames},
        {"start", {StartTime}, Order::Times},
        {"end", {EndTime}, Order::Times},
        {"place", {LocNo}, Order::None},
        {"tide", {TideStart, TideEnd}, Order::None},
        {"tidestart", {TideStart}, Order::None},
        {"tideend", {TideEnd}, Order::None},
        {"high", {HighTide, HighTideHt}, Order::Numbers},
        {"low", {LowTide, LowTideHt}, Order::Numbers},
        {"sunrise", {SunRise}, Order::Times},
        {"sunset", {SunSet}, Order::Times},
        {"moon", {EntryField::MoonPhase}, Order::Numbers},
        {"moonrise", {MoonRise}, Order::Times},
        {"moonset", {MoonSet}, Order::Times},
        {"rating", {Prediction}, Order::Words, FieldWords::prediction},
        {"action", {FishAction}, Order::Words, FieldWords::action},
        {"air", {AirTemp}, Order::Numbers},
        {"water", {WaterTemp, WaterClarity}, Order::Numbers},
        {"clarity", {WaterClarity}, Order::None},
        {"wind", {WindDir, WindStrength}, Order::Words, FieldWords::windStrength},
        {"weather", {Weather}, Order::None},
        {"pressure", {AirPressure, PressureReading}, Order::Numbers},
        {"trend", {AirPressure}, Order::None},
        {"target", {TargetSpecies}, Order::Numbers},
        {"bait", {BaitUsed}, Order::Numbers},
        {"method", {Method}, Order::Numbers},
        {"caught", {FishCaught}, Order::Numbers},
        {"notes", {Obbos}, Order::Numbers},
        {"peak", {Major1, Major2, Minor1, Minor2}, Order::Times},
        {"picture", {EntryField::Picture}, Order::None},
    };
    return fields;
}

const QueryField* FindQueryField(std::string_view name)
{
    const std::string folded = Fold(name);
    const auto& fields = QueryFields();
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const QueryField& field) { return field.name == folded; });
    return found == fields.end() ? nullptr : &*found;
}

bool HasTexts(const QueryField& field)
{
    return field.order == Order::None || entryFields.at(field.searched.front()).kind == FieldKind::Lines;
}

bool IsCodeWord(const QueryField& field, std::string_view folded)
{
    return std::any_of(field.searched.begin(), field.searched.end(), [&](EntryField::Position position) {
        const auto words = entryFields.at(position).words;
        return std::any_of(words.begin(), words.end(),
                           [&](std::string_view word) { return Fold(word) == folded; });
    });
}

} // namespace Tarno
