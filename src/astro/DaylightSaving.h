#pragma once

#include <chrono>
#include <string>
#include <string_view>

// Daylight saving time, which changes on the last Sundays of March and October in both hemispheres.
namespace Tarno::mRiseSet
{

/// Both functions return the last Sunday of the month.
std::chrono::year_month_day LastSundayOfMarch(std::chrono::year year);
std::chrono::year_month_day LastSundayOfOctober(std::chrono::year year);

/// The clock settings of a place on one day.
struct DaylightSaving {
    std::string gmt; ///< hours ahead of GMT, including daylight saving time
    bool startsToday = false;
    bool endsToday = false;
};

/// Returns the clock settings on `date`. Daylight saving time applies if `dstFlag` is "1", and on the whole
/// of both changeover days. The sign of `latitude` (degrees) selects the hemisphere. Throws Error
/// TypeMismatch or Overflow if a text that is needed is not a number.
DaylightSaving DSTOffset(std::string_view gmt, std::string_view dstFlag, std::string_view latitude,
                         std::chrono::year_month_day date);

/// Returns the time one hour before `time` ("hh:mm"), or ":" if that is on the previous day.
std::string HourEarlier(std::string_view time);

/// Corrects a time ("hh:mm") that was calculated as if daylight saving time applied to the whole changeover
/// day: subtracts an hour before the change to daylight saving time and after the change back. Returns other
/// texts and texts of other days unchanged.
std::string CorrectedForChangeover(const std::string& text, const DaylightSaving& clocks);

} // namespace Tarno::mRiseSet
