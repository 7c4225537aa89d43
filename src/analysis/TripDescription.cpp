#include "TripDescription.h"

#include "core/Text.h"
#include "store/EntryFields.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Tarno
{

namespace
{

/// A line of the description: its caption, and its values with a separator between those that are set.
struct Line {
    std::string_view caption;
    std::string_view separator;
    std::vector<EntryField::Position> fields;
};

std::string Joined(const RecordView& trip, const Line& line, const PlaceNames& places)
{
    std::string joined;
    std::string last;
    for (const EntryField::Position field : line.fields) {
        const std::string text = ReadableText(trip, field, places);
        const bool repeats = line.separator == " to " && text == last; // a trip of one day
        if (text.empty() || repeats) {
            continue;
        }
        joined += (joined.empty() ? std::string_view() : line.separator);
        joined += text;
        last = text;
    }
    return joined;
}

} // namespace

std::vector<DescribedValue> DescribeTrip(const RecordView& trip, const PlaceNames& places)
{
    using namespace EntryField;
    static const std::vector<Line> lines{
        {"Date", " to ", {StartDate, EndDate}},
        {"Place", "", {LocNo}},
        {"Time", " to ", {StartTime, EndTime}},
        {"Action", "", {FishAction}},
        {"Caught", "", {FishCaught}},
        {"Targeted", "", {TargetSpecies}},
        {"Bait", "", {BaitUsed}},
        {"Methods", "", {Method}},
        {"Tide", " to ", {TideStart, TideEnd}},
        {"High tide", ", ", {HighTide, HighTideHt}},
        {"Low tide", ", ", {LowTide, LowTideHt}},
        {"Weather", "", {Weather}},
        {"Wind", ", ", {WindDir, WindStrength}},
        {"Air", "", {AirTemp}},
        {"Water", ", ", {WaterTemp, WaterClarity}},
        {"Air pressure", ", ", {PressureReading, AirPressure}},
        {"Observations", "", {Obbos}},
        {"Rating", "", {Prediction}},
        {"Moon", "", {MoonPhase}},
        {"Sunrise", "", {SunRise}},
        {"Sunset", "", {SunSet}},
        {"Moonrise", "", {MoonRise}},
        {"Moonset", "", {MoonSet}},
        {"Major periods", ", ", {Major1, Major2}},
        {"Minor periods", ", ", {Minor1, Minor2}},
    };
    std::vector<DescribedValue> values;
    for (const Line& line : lines) {
        if (std::string text = Joined(trip, line, places); !text.empty()) {
            values.push_back({std::string(line.caption), std::move(text)});
        }
    }
    return values;
}

std::string TabSeparated(const RecordList& trips, const PlaceNames& places)
{
    std::vector<std::string> lines;
    const auto addLine = [&lines](const auto& value) { // without the key, which is first
        std::vector<std::string> values;
        std::transform(entryFields.begin() + 1, entryFields.end(), std::back_inserter(values), value);
        lines.push_back(Join(values, '\t'));
    };
    addLine([](const FieldInfo& field) { return std::string(field.name); });
    for (const RecordView& trip : trips) {
        addLine([&](const FieldInfo& field) {
            std::string text = ReadableText(trip, field.position, places);
            for (const char* separator : {"\r\n", "\n", "\r", "\t"}) {
                text = ReplaceAll(text, separator, "; ");
            }
            return text;
        });
    }
    return Join(lines, '\n');
}

} // namespace Tarno
