#pragma once

#include "astro/Forecast.h"
#include "store/Record.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace Tarno
{

/// A part of a day, in minutes since midnight from 0 to 1440.
struct DayPart {
    int from;
    int to;

    bool operator==(const DayPart&) const = default;
};

/// What a calendar shows of a day at a place.
struct CalendarDay {
    std::chrono::year_month_day date;
    MoonForecast moon;
    /// Absent if the location has no coordinates or time zone, or they are not numbers.
    std::optional<RiseSetForecast> times = {};
    std::vector<DayPart> daylight = {}; ///< between sunrise and sunset
    std::vector<DayPart> moonUp = {};   ///< between moonrise and moonset
    std::vector<int> majors = {};       ///< major and minor times in minutes since midnight, ascending
    std::vector<int> minors = {};
};

/// Returns the day at a location. Never fails.
CalendarDay DayAt(const LocationTexts& location, std::chrono::year_month_day date);

/// Returns for example "Saturday 14 November 2026".
std::string LongDate(std::chrono::year_month_day date);

/// Returns the day in one sentence, for example "Saturday 14 November 2026, rating Good, moon 31 % waxing,
/// majors 04:04 and 16:30, 1 trip". `trips` is the number of trips logged on it.
std::string DescribeDay(const CalendarDay& day, int trips);

/// Returns the lines about a day for a sheet of its month. `trips` is the number of trips logged on it.
std::string SheetText(const CalendarDay& day, int trips);

/// Returns in words why the day has its rating, for example "Best: the moon is waxing and 6.79 to 20.34 %
/// lit".
std::string ReasonOfRating(std::chrono::year_month_day date);

/// Returns sentences about events that do not happen on the day, for example "The sun does not set.", or why
/// nothing can be calculated.
std::vector<std::string> WarningsFor(const CalendarDay& day);

/// Returns the location's texts for a forecast.
LocationTexts TextsOf(const RecordView& location);

/// The logged trips by day. It is independent of the records.
class TripDays
{
public:
    struct Trip {
        std::string key;
        std::string place; ///< number of the location
        std::chrono::sys_days first;
        std::chrono::sys_days last;
    };

    TripDays() = default;
    /// Leaves out trips whose start is not a date.
    explicit TripDays(const RecordList& trips);

    /// Returns the trips with a part on that day, in the order of the log.
    std::vector<Trip> On(std::chrono::year_month_day date) const;

private:
    std::vector<Trip> m_trips;
};

} // namespace Tarno
