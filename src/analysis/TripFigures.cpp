#include "TripFigures.h"

#include "analysis/ComparableValues.h"
#include "core/Conversions.h"

#include <algorithm>
#include <optional>

namespace Tarno
{

namespace
{

constexpr std::int64_t minutesPerDay = 24 * 60;
constexpr std::int64_t longest = 2 * minutesPerDay;

std::optional<std::int64_t> DurationOf(const RecordView& trip)
{
    const std::string startDate = trip.Text(EntryField::StartDate);
    const std::string endDate = trip.Text(EntryField::EndDate);
    const auto start = DaysBetween(startDate, startDate);
    const auto end = endDate == startDate ? start : DaysBetween(endDate, endDate);
    const auto startTime = TimeOf(trip.Text(EntryField::StartTime));
    const auto endTime = TimeOf(trip.Text(EntryField::EndTime));
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
    const auto duration = DurationOf(trip);
    figures.untimedTrips = duration ? 0 : 1;
    figures.longTrips = duration && *duration > longest ? 1 : 0;
    figures.minutes = duration && *duration <= longest ? *duration : 0;
    figures.tripsWithoutCatch =
        IsBlank(ReadableValue(trip.Text(EntryField::FishCaught), EntryField::FishCaught, {})) ? 1 : 0;
    if (const auto action = CodeOf(trip, EntryField::FishAction)) {
        figures.actions.at(static_cast<std::size_t>(*action)) = 1;
    } else {
        figures.withoutAction = 1;
    }
    const std::string start = trip.Text(EntryField::StartDate);
    if (const auto days = DaysBetween(start, start)) {
        figures.lastDate = FromDate(FirstDay(*days));
    }
    return figures;
}

} // namespace Tarno
