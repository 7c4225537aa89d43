#pragma once

#include <chrono>
#include <string>
#include <string_view>

// Daylight saving time between the last Sundays of March and October, in summer of either hemisphere.
namespace Tarno::mRiseSet
{

/// The Sunday on or before the 31st.
std::chrono::year_month_day LastSundayOfMarch(std::chrono::year year);
std::chrono::year_month_day LastSundayOfOctober(std::chrono::year year);

/// What a place's clocks show on one day.
struct DaylightSaving {
    std::string gmt; ///< hours ahead of GMT, the daylight-saving hour added where it applies
    bool startsToday = false;
    bool endsToday = false;
};

/// The clocks on `date`. Daylight saving applies at places whose flag is "1", and on the whole of
/// both changeover days. North and south is told by the latitude, in degrees.
/// Throws Error TypeMismatch or Overflow when a text that it needs is no number.
DaylightSaving DSTOffset(std::string_view gmt, std::string_view dstFlag, std::string_view latitude,
                         std::chrono::year_month_day date);

/// `time` ("hh:mm") an hour before; ":" when that is on the day before.
std::string HourEarlier(std::string_view time);

/// `text` as the clocks show it that change during the day: a time ("hh:mm") before the change to
/// daylight saving time, or after the change back, lies an hour earlier than one that counts the
/// whole day as daylight saving time. Other days and other texts stay as they are.
std::string CorrectedForChangeover(const std::string& text, const DaylightSaving& clocks);

} // namespace Tarno::mRiseSet
