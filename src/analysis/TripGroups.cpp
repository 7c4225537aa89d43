#include "TripGroups.h"

#include "analysis/ComparableValues.h"
#include "analysis/LineGroups.h"
#include "analysis/QuerySyntax.h"
#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

namespace Tarno
{

namespace
{

struct Label {
    std::string name;
    std::string query;
};

/// Groups with a natural order.
struct RankedGroups {
    std::function<std::optional<int>(const RecordView& trip)> rankOf; ///< nullopt if there is no value
    std::function<Label(int rank)> labelOf;
    Label rest; ///< of the trips without a value
};

TripGroup EmptyGroup(Label label)
{
    TripGroup group;
    group.name = std::move(label.name);
    group.query = std::move(label.query);
    return group;
}

std::vector<TripGroup> GroupByRanks(const RecordList& trips, const RankedGroups& ranked)
{
    std::map<int, TripGroup> byRank;
    TripGroup rest = EmptyGroup(ranked.rest);
    for (const RecordView& trip : trips) {
        const auto rank = ranked.rankOf(trip);
        if (rank && !byRank.contains(*rank)) {
            byRank.emplace(*rank, EmptyGroup(ranked.labelOf(*rank)));
        }
        (rank ? byRank.at(*rank) : rest).Add(FiguresOf(trip));
    }
    std::vector<TripGroup> groups;
    groups.reserve(byRank.size() + 1);
    for (auto& [rank, group] : byRank) {
        groups.push_back(std::move(group));
    }
    if (rest.trips > 0) {
        groups.push_back(std::move(rest));
    }
    return groups;
}

std::optional<std::chrono::year_month_day> StartOf(const RecordView& trip)
{
    const std::string date = trip.Text(EntryField::StartDate);
    const auto days = DaysBetween(date, date);
    return days ? std::optional(FirstDay(*days)) : std::nullopt;
}

std::optional<int> MonthOf(const RecordView& trip)
{
    const auto start = StartOf(trip);
    return start ? std::optional(static_cast<int>(static_cast<unsigned>(start->month()))) : std::nullopt;
}

std::string MonthName(int month)
{
    return std::string(monthNames.at(static_cast<std::size_t>(month - 1)));
}

RankedGroups Months()
{
    return {.rankOf = MonthOf,
            .labelOf =
                [](int month) {
                    return Label{MonthName(month), "month:" + Fold(MonthName(month))};
                },
            .rest = {"No date", "-month:1..12"}};
}

RankedGroups Years()
{
    const auto rankOf = [](const RecordView& trip) {
        const auto start = StartOf(trip);
        return start ? std::optional(static_cast<int>(start->year())) : std::nullopt;
    };
    const auto labelOf = [](int year) {
        constexpr int lastYear = 9999;
        const std::string next = ZeroPadded(year + 1, 4);
        return Label{ZeroPadded(year, 4), "date:>=" + ZeroPadded(year, 4) +
                                              (year < lastYear ? " -date:>=" + next : std::string())};
    };
    return {.rankOf = rankOf, .labelOf = labelOf, .rest = {"No date", "-date:>=0001"}};
}

enum class Hemisphere { Unknown, North, South };

/// Returns the side of the equator on which all places of the trips are whose positions are known.
Hemisphere HemisphereOf(const RecordList& trips, const Positions& positions)
{
    bool isNorth = true;
    bool isSouth = true;
    for (const RecordView& trip : trips) {
        if (const auto found = positions.find(trip.Text(EntryField::LocNo)); found != positions.end()) {
            isNorth = isNorth && found->second.latitude > 0;
            isSouth = isSouth && found->second.latitude < 0;
        }
    }
    return isNorth == isSouth ? Hemisphere::Unknown : isNorth ? Hemisphere::North : Hemisphere::South;
}

RankedGroups Seasons(Hemisphere hemisphere)
{
    const auto rankOf = [](const RecordView& trip) {
        const auto month = MonthOf(trip);
        return month ? std::optional(*month % 12 / 3) : std::nullopt; // 0 is December to February
    };
    const auto labelOf = [hemisphere](int season) {
        constexpr std::array names{"Winter", "Spring", "Summer", "Autumn"};
        const std::string first = MonthName(season == 0 ? 12 : 3 * season);
        const std::string last = MonthName(3 * season + 2);
        const auto index = static_cast<std::size_t>(hemisphere == Hemisphere::South ? season + 2 : season);
        const std::string months = first + " to " + last;
        return Label{hemisphere == Hemisphere::Unknown ? months : names.at(index % 4) + (" (" + months + ')'),
                     "month:" + Fold(first) + ".." + Fold(last)};
    };
    return {.rankOf = rankOf, .labelOf = labelOf, .rest = {"No date", "-month:1..12"}};
}

RankedGroups Codes(EntryField::Position field, const std::string& queryField)
{
    const auto written = [](std::string_view word) { return Quoted(Fold(word)); };
    const auto words = entryFields.at(field).words;
    std::vector<std::string> all;
    std::transform(words.begin(), words.end(), std::back_inserter(all), written);
    const auto labelOf = [words, queryField, written](int code) {
        const std::string_view word = words[static_cast<std::size_t>(code)];
        return Label{std::string(word), queryField + ':' + written(word)};
    };
    return {.rankOf = [field](const RecordView& trip) { return CodeOf(trip, field); },
            .labelOf = labelOf,
            .rest = {"Not set", '-' + queryField + ':' + Join(all, '|')}};
}

/// The conditions of the queries are those of this function, also for percentages that are not whole numbers.
std::optional<int> MoonPhaseOf(const RecordView& trip)
{
    const std::string text = Fold(ReadableText(trip, EntryField::MoonPhase, {}));
    const auto percent = FirstNumber(text);
    if (!percent || TimeOf(text)) {
        return std::nullopt;
    }
    const int waxing = percent->value <= 3    ? 0
                       : percent->value <= 30 ? 1
                       : percent->value < 70  ? 2
                       : percent->value < 97  ? 3
                                              : 4;
    const bool isWaning = text.find("waning") != std::string::npos;
    return isWaning ? (8 - waxing) % 8 : waxing;
}

RankedGroups MoonPhases()
{
    const auto labelOf = [](int phase) {
        static const std::array<Label, 8> labels{{
            {"New moon", "moon:new"},
            {"Waxing crescent", "moon:>3 moon:<=30 -moon:waning"},
            {"First quarter", "moon:>30 moon:<70 -moon:waning"},
            {"Waxing gibbous", "moon:>=70 moon:<97 -moon:waning"},
            {"Full moon", "moon:full"},
            {"Waning gibbous", "moon:>=70 moon:<97 moon:waning"},
            {"Last quarter", "moon:>30 moon:<70 moon:waning"},
            {"Waning crescent", "moon:>3 moon:<=30 moon:waning"},
        }};
        return labels.at(static_cast<std::size_t>(phase));
    };
    return {.rankOf = MoonPhaseOf, .labelOf = labelOf, .rest = {"Not set", "-moon:<=3|>3"}};
}

RankedGroups StartHours()
{
    const auto rankOf = [](const RecordView& trip) {
        const auto minutes = TimeOf(Fold(trip.Text(EntryField::StartTime)));
        return minutes ? std::optional(static_cast<int>(*minutes) / 60) : std::nullopt;
    };
    const auto labelOf = [](int hour) {
        const std::string first = ZeroPadded(hour, 2) + ":00";
        const std::string last = ZeroPadded(hour, 2) + ":59";
        return Label{first + " to " + last, "start:" + first + ".." + last};
    };
    return {.rankOf = rankOf, .labelOf = labelOf, .rest = {"No time", "-start:00:00..23:59"}};
}

std::vector<TripGroup> GroupByItems(const RecordList& trips, EntryField::Position field,
                                    std::string_view queryField, const LineItems& items,
                                    const PlaceNames& places)
{
    return GroupByLines(trips, {field, queryField, &items, places, "None recorded"});
}

} // namespace

std::span<const GroupingTitle> Groupings()
{
    static constexpr std::array titles{
        GroupingTitle{Grouping::Month, "Month"},
        GroupingTitle{Grouping::Year, "Year"},
        GroupingTitle{Grouping::Season, "Season"},
        GroupingTitle{Grouping::StartHour, "Start hour"},
        GroupingTitle{Grouping::Place, "Place"},
        GroupingTitle{Grouping::Rating, "Rating"},
        GroupingTitle{Grouping::Moon, "Moon"},
        GroupingTitle{Grouping::TideStart, "Tide at the start"},
        GroupingTitle{Grouping::TideEnd, "Tide at the end"},
        GroupingTitle{Grouping::Weather, "Weather"},
        GroupingTitle{Grouping::WindDirection, "Wind direction"},
        GroupingTitle{Grouping::WindStrength, "Wind strength"},
        GroupingTitle{Grouping::Water, "Water clarity"},
        GroupingTitle{Grouping::PressureTrend, "Pressure trend"},
        GroupingTitle{Grouping::Target, "Target species"},
        GroupingTitle{Grouping::Caught, "Species caught"},
        GroupingTitle{Grouping::Bait, "Bait"},
        GroupingTitle{Grouping::Method, "Method"},
    };
    return titles;
}

std::vector<TripGroup> GroupTrips(const RecordList& trips, Grouping grouping, const LogContext& context)
{
    switch (grouping) {
    case Grouping::Month:
        return GroupByRanks(trips, Months());
    case Grouping::Year:
        return GroupByRanks(trips, Years());
    case Grouping::Season:
        return GroupByRanks(trips, Seasons(HemisphereOf(trips, context.positions)));
    case Grouping::Place:
        return GroupByLines(trips, {EntryField::LocNo, "place", nullptr, context.places, "Unknown place"});
    case Grouping::Rating:
        return GroupByRanks(trips, Codes(EntryField::Prediction, "rating"));
    case Grouping::Moon:
        return GroupByRanks(trips, MoonPhases());
    case Grouping::TideStart:
        return GroupByRanks(trips, Codes(EntryField::TideStart, "tidestart"));
    case Grouping::TideEnd:
        return GroupByRanks(trips, Codes(EntryField::TideEnd, "tideend"));
    case Grouping::Weather:
        return GroupByRanks(trips, Codes(EntryField::Weather, "weather"));
    case Grouping::WindDirection:
        return GroupByRanks(trips, Codes(EntryField::WindDir, "wind"));
    case Grouping::WindStrength:
        return GroupByRanks(trips, Codes(EntryField::WindStrength, "wind"));
    case Grouping::Water:
        return GroupByRanks(trips, Codes(EntryField::WaterClarity, "clarity"));
    case Grouping::PressureTrend:
        return GroupByRanks(trips, Codes(EntryField::AirPressure, "trend"));
    case Grouping::Target:
        return GroupByItems(trips, EntryField::TargetSpecies, "target", context.species, context.places);
    case Grouping::Caught:
        return GroupByItems(trips, EntryField::FishCaught, "caught", context.species, context.places);
    case Grouping::Bait:
        return GroupByItems(trips, EntryField::BaitUsed, "bait", context.baits, context.places);
    case Grouping::Method:
        return GroupByItems(trips, EntryField::Method, "method", context.methods, context.places);
    case Grouping::StartHour:
        break;
    }
    return GroupByRanks(trips, StartHours());
}

} // namespace Tarno
