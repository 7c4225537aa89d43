#include "ForecastCheck.h"

#include "analysis/TripText.h"
#include "core/Conversions.h"
#include "core/Error.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

namespace Tarno
{

namespace
{

/// A condition that is compared with the action, and its words in the sentence.
struct Relation {
    std::string_view title;
    std::vector<std::pair<std::string_view, int>> rows; ///< names and levels
    std::function<std::optional<int>(const RecordView& trip)> rowOf;
    std::string_view value;   ///< "... have both a rating and an action"
    std::string_view equal;   ///< "All trips have the same rating"
    std::string_view higher;  ///< "better ratings went with ..."
    std::string_view subject; ///< "no connection between rating and action"
};

std::optional<int> QuarterOfMoon(const RecordView& trip)
{
    try {
        constexpr int width = 25;
        const int lit = std::abs(static_cast<int>(ToInt16(trip.Text(EntryField::MoonPhase))));
        return std::min(lit / width, 3);
    } catch (const Error&) {
        return std::nullopt;
    }
}

/// Returns the pressure trend in ascending order.
std::optional<int> TrendOf(const RecordView& trip)
{
    const auto code = CodeOf(trip, EntryField::AirPressure);
    return code ? std::optional(1 - *code) : std::nullopt;
}

std::function<std::optional<int>(const RecordView&)> Code(EntryField::Position field)
{
    return [field](const RecordView& trip) { return CodeOf(trip, field); };
}

std::vector<Relation> Relations()
{
    return {
        {.title = "Rating and action",
         .rows = {{"Poor", 0}, {"Fair", 1}, {"Good", 2}, {"Best", 3}},
         .rowOf = Code(EntryField::Prediction),
         .value = "a rating",
         .equal = "the same rating",
         .higher = "better ratings",
         .subject = "rating"},
        {.title = "Moon and action",
         .rows = {{"0 to 24 % lit", 0}, {"25 to 49 % lit", 1}, {"50 to 74 % lit", 2}, {"75 to 100 % lit", 3}},
         .rowOf = QuarterOfMoon,
         .value = "a moon phase",
         .equal = "about the same part of the moon lit",
         .higher = "a fuller moon",
         .subject = "the moon"},
        {.title = "Tide at the start and action",
         .rows = {{"Top", 0}, {"Run Out", 1}, {"Bottom", 0}, {"Run In", 1}},
         .rowOf = Code(EntryField::TideStart),
         .value = "a tide at the start",
         .equal = "the same kind of tide at the start, slack or running",
         .higher = "running water (Run Out or Run In)",
         .subject = "the tide at the start"},
        {.title = "Air pressure and action",
         .rows = {{"Falling", 0}, {"Rising", 1}},
         .rowOf = TrendOf,
         .value = "a pressure trend",
         .equal = "the same pressure trend",
         .higher = "rising pressure",
         .subject = "the pressure trend"},
    };
}

std::string TooFew(const Relation& relation, int trips)
{
    const std::string number = trips == 0   ? "none has"
                               : trips == 1 ? "1 has"
                                            : std::to_string(trips) + " have";
    return "Too few trips to tell: " + number + " both " + std::string(relation.value) + " and an action.";
}

std::string AllEqual(const Relation& relation, const ForecastCheck& check)
{
    const auto hasAction = [&](std::size_t action) {
        return std::any_of(check.rows.begin(), check.rows.end(),
                           [&](const ForecastCheck::Row& row) { return row.actions.at(action) > 0; });
    };
    const int actions = hasAction(0) + hasAction(1) + hasAction(2) + hasAction(3);
    return "All " + std::to_string(check.trips) + " trips have " +
           (actions == 1 ? "the same action" : std::string(relation.equal)) +
           ", so there is nothing to compare.";
}

std::string Result(const Relation& relation, int trips, const RankCorrelation& correlation)
{
    constexpr double significant = 0.05;
    constexpr double least = 0.01;
    const std::string count = "With " + std::to_string(trips) + " trips, ";
    const std::string logs = std::to_string(std::lround(100 * correlation.probability)) + " of 100 logs.";
    if (correlation.probability >= significant) {
        return count + "no connection between " + std::string(relation.subject) +
               " and action is visible; chance alone would show as much in about " + logs;
    }
    return count + std::string(relation.higher) + " went with " + (correlation.tau > 0 ? "better" : "worse") +
           " action; chance alone would do this in " +
           (correlation.probability < least ? "fewer than 1 of 100 logs." : "about " + logs);
}

ForecastCheck CheckRelation(const Relation& relation, const RecordList& trips)
{
    constexpr int fewest = 10;
    ForecastCheck check{std::string(relation.title), {}, 0, {}, {}};
    for (const auto& [name, level] : relation.rows) {
        check.rows.push_back({std::string(name), level, {}});
    }
    for (const RecordView& trip : trips) {
        const auto row = relation.rowOf(trip);
        const auto action = CodeOf(trip, EntryField::FishAction);
        if (row && action) {
            ++check.rows.at(static_cast<std::size_t>(*row)).actions.at(static_cast<std::size_t>(*action));
            ++check.trips;
        }
    }
    if (check.trips < fewest) {
        check.sentence = TooFew(relation, check.trips);
        return check;
    }
    std::vector<RankedRow> table;
    for (const ForecastCheck::Row& row : check.rows) {
        table.push_back({row.level, {row.actions.begin(), row.actions.end()}});
    }
    check.correlation = KendallTauB(table);
    check.sentence =
        check.correlation ? Result(relation, check.trips, *check.correlation) : AllEqual(relation, check);
    return check;
}

} // namespace

std::vector<ForecastCheck> CheckForecasts(const RecordList& trips)
{
    std::vector<ForecastCheck> checks;
    for (const Relation& relation : Relations()) {
        checks.push_back(CheckRelation(relation, trips));
    }
    return checks;
}

} // namespace Tarno
