#include "TripFigures.h"

#include "analysis/ComparableValues.h"
#include "core/Conversions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::int64_t minutesPerDay = 1440;
constexpr std::int64_t longest = 2 * minutesPerDay;

struct Texts {
    std::string startDate, endDate, startTime, endTime, action, caught;
};

/// Reads the values in one pass: RecordView::Text counts from the first value each time.
Texts TextsOf(const RecordView& trip)
{
    Texts texts;
    const std::array<std::pair<EntryField::Position, std::string*>, 6> wanted{{
        {EntryField::StartDate, &texts.startDate},
        {EntryField::EndDate, &texts.endDate},
        {EntryField::StartTime, &texts.startTime},
        {EntryField::EndTime, &texts.endTime},
        {EntryField::FishAction, &texts.action},
        {EntryField::FishCaught, &texts.caught},
    }};
    const auto* next = wanted.begin();
    std::size_t position = 0;
    for (pugi::xml_node child = trip.Node().first_child(); child && next != wanted.end();
         child = child.next_sibling()) {
        if (child.type() == pugi::node_element && position++ == next->first) {
            *next->second = TextOf(child);
            ++next;
        }
    }
    return texts;
}

std::optional<std::int64_t> DurationOf(const Texts& trip, const std::optional<Interval>& start)
{
    const auto end = trip.endDate == trip.startDate ? start : DaysBetween(trip.endDate, trip.endDate);
    const auto startTime = TimeOf(trip.startTime);
    const auto endTime = TimeOf(trip.endTime);
    if (!start || !startTime || !endTime) {
        return std::nullopt;
    }
    const double days = end ? end->first - start->first : 0;
    const double minutes = days * minutesPerDay + *endTime - *startTime;
    return minutes < 0 ? std::nullopt : std::optional(static_cast<std::int64_t>(minutes));
}

} // namespace

double TripFigures::Hours() const
{
    constexpr double minutesPerHour = 60;
    return static_cast<double>(minutes) / minutesPerHour;
}

void TripFigures::Add(const TripFigures& other)
{
    trips += other.trips;
    minutes += other.minutes;
    longTrips += other.longTrips;
    untimedTrips += other.untimedTrips;
    tripsWithoutCatch += other.tripsWithoutCatch;
    std::transform(actions.begin(), actions.end(), other.actions.begin(), actions.begin(), std::plus<>());
    withoutAction += other.withoutAction;
    lastDate = std::max(lastDate, other.lastDate);
}

TripFigures FiguresOf(const RecordView& trip)
{
    TripFigures figures;
    figures.trips = 1;
    const Texts texts = TextsOf(trip);
    const auto start = DaysBetween(texts.startDate, texts.startDate);
    const auto duration = DurationOf(texts, start);
    figures.untimedTrips = duration ? 0 : 1;
    figures.longTrips = duration && *duration > longest ? 1 : 0;
    figures.minutes = duration && *duration <= longest ? *duration : 0;
    figures.tripsWithoutCatch = IsBlank(ReadableValue(texts.caught, EntryField::FishCaught, {})) ? 1 : 0;
    if (const auto action = CodeOf(texts.action, EntryField::FishAction)) {
        figures.actions.at(static_cast<std::size_t>(*action)) = 1;
    } else {
        figures.withoutAction = 1;
    }
    figures.lastDate = start ? FromDate(FirstDay(*start)) : std::string();
    return figures;
}

} // namespace Tarno
