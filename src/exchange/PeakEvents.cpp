#include "PeakEvents.h"

#include "astro/DaylightSaving.h"
#include "core/Conversions.h"
#include "core/Text.h"
#include "store/EntryFields.h"

#include <cmath>
#include <optional>
#include <string_view>
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

/// Returns the event for the time `text` of a day, or nullopt if it cannot be written. `name` is for example
/// "major-1".
std::optional<CalendarEvent> EventAt(const PeakEventsRequest& request, year_month_day date,
                                     const MoonForecast& moon, std::string_view name, const std::string& text)
{
    const auto minutesOfDay = MinutesOf(text);
    if (!minutesOfDay) {
        return std::nullopt;
    }
    const std::chrono::sys_seconds start =
        sys_days(date) + minutes(*minutesOfDay) - ClocksAhead(request.location, date, *minutesOfDay);
    if (!HasYearOfFourDigits(start)) {
        return std::nullopt;
    }
    const std::string kind = name.starts_with("major") ? "Major time" : "Minor time";
    const std::string rated =
        "day rated " + std::string(FieldWords::prediction.at(static_cast<std::size_t>(moon.prediction)));
    return CalendarEvent{
        .uid = Compact(date) + '-' + std::string(name) + "-place-" + request.number + "@tarno",
        .start = start,
        .summary = kind + ", " + rated,
        .description = kind + ' ' + text + " at " + request.name + ". Moon " + std::to_string(moon.percent) +
                       " % lit, " + (moon.waxing ? "waxing" : "waning") + ", " + rated + ".",
        .location = request.name};
}

} // namespace

std::vector<CalendarEvent> PeakEvents(const PeakEventsRequest& request)
{
    constexpr int good = 2;
    std::vector<CalendarEvent> events;
    for (sys_days day(request.first); day <= sys_days(request.last); day += std::chrono::days(1)) {
        const auto& [moon, times] = Forecast(request.location, day);
        if (request.onlyGoodDays && moon.prediction < good) {
            continue;
        }
        for (const auto& [name, text] :
             {std::pair("major-1", &times.major1), std::pair("major-2", &times.major2),
              std::pair("minor-1", &times.minor1), std::pair("minor-2", &times.minor2)}) {
            if (auto event = EventAt(request, day, moon, name, *text)) {
                events.push_back(std::move(*event));
            }
        }
    }
    return events;
}

} // namespace Tarno
