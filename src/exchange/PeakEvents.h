#pragma once

#include "astro/Forecast.h"
#include "exchange/ICalendar.h"

#include <chrono>
#include <string>
#include <vector>

namespace Tarno
{

struct PeakEventsRequest {
    LocationTexts location; ///< must be complete
    std::string number;     ///< of the location
    std::string name;
    std::chrono::year_month_day first; ///< the range of days, both included
    std::chrono::year_month_day last;
    bool onlyGoodDays = false; ///< only days rated Good or Best
};

/// Returns an event for each major and minor time of each day, in order of the days. Local times are
/// converted with the offset of the forecast of their day, including its correction on the days on which the
/// clocks change. Leaves out times that are before the year 1 or after 9999 in UTC. Throws like
/// ForecastRiseSet.
std::vector<CalendarEvent> PeakEvents(const PeakEventsRequest& request);

} // namespace Tarno
