#include "PeakEvents.h"

#include "astro/DaylightSaving.h"
#include "core/Conversions.h"
#include "core/Text.h"
#include "store/EntryFields.h"

#include <cmath>
#include <utility>

namespace Tarno
{

namespace
{

using std::chrono::minutes;
using std::chrono::sys_days;
using std::chrono::year_month_day;

/// Returns how far the clocks are ahead of GMT at a calculated time of a day, in minutes. On the days on
/// which they change, CorrectedForChangeover has made times of before 01:00 (start) or from 03:00 on (end)
/// standard time.
minutes ClocksAhead(const LocationTexts& location, year_month_day date, int minutesOfDay)
{
    constexpr int hour = 60;
    const mRiseSet::DaylightSaving clocks =
        mRiseSet::DSTOffset(location.gmt, location.dst, location.latitude, date);
    const bool isStandardTime =
        (clocks.startsToday && minutesOfDay < hour) || (clocks.endsToday && minutesOfDay >= 3 * hour);
    const auto ahead = static_cast<int>(std::lround(ToDouble(clocks.gmt) * hour));
    return minutes(isStandardTime ? ahead - hour : ahead);
}

/// Whether the time can be written as UTC.
bool HasYearOfFourDigits(std::chrono::sys_seconds time)
{
    using std::chrono::year;
    return time >= sys_days(year(1) / 1 / 1) && time < sys_days(year(10000) / 1 / 1);
}

std::string Compact(year_month_day date)
{
    return ReplaceAll(FromDate(date), "-", "");
}

} // namespace

std::vector<CalendarEvent> PeakEvents(const PeakEventsRequest& request)
{
    constexpr int good = 2;
    std::vector<CalendarEvent> events;
    for (sys_days day(request.first); day <= sys_days(request.last); day += std::chrono::days(1)) {
        const year_month_day date(day);
        const DayForecast forecast = Forecast(request.location, date);
        if (request.onlyGoodDays && forecast.moon.prediction < good) {
            continue;
        }
        const std::string rating(
            FieldWords::prediction.at(static_cast<std::size_t>(forecast.moon.prediction)));
        for (const auto& [name, time] :
             {std::pair("major-1", &forecast.riseSet.major1), std::pair("major-2", &forecast.riseSet.major2),
              std::pair("minor-1", &forecast.riseSet.minor1),
              std::pair("minor-2", &forecast.riseSet.minor2)}) {
            const auto minutesOfDay = MinutesOf(*time);
            if (!minutesOfDay) {
                continue;
            }
            const std::chrono::sys_seconds start =
                day + minutes(*minutesOfDay) - ClocksAhead(request.location, date, *minutesOfDay);
            if (!HasYearOfFourDigits(start)) {
                continue;
            }
            const std::string kind = std::string(name).starts_with("major") ? "Major" : "Minor";
            events.push_back({.uid = Compact(date) + '-' + name + "-place-" + request.number + "@tarno",
                              .start = start,
                              .summary = kind + " time, day rated " + rating,
                              .description = kind + " time " + *time + " at " + request.name + ". Moon " +
                                             std::to_string(forecast.moon.percent) + " % lit, " +
                                             (forecast.moon.waxing ? "waxing" : "waning") + ", day rated " +
                                             rating + ".",
                              .location = request.name});
        }
    }
    return events;
}

} // namespace Tarno
