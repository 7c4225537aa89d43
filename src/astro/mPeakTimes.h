#pragma once

#include "mRiseSet.h"

#include <string>
#include <string_view>

// The periods of a day in which fish are most active: two major periods around the upper and lower transit of
// the moon, and two minor periods a quarter of a lunar day away from them. Times are texts "hh:mm" with
// truncated minutes, or ":" for none. Hours have single precision.
namespace Tarno::mPeakTimes
{

struct Periods {
    std::string major1; ///< the earlier one; ":" sorts after every time
    std::string major2;
    std::string minor1;
    std::string minor2;
};

/// Returns the periods of the day on which the moon rises and sets at `today`. A missing rise (":") is taken
/// from the day `before`, a missing set from the day `after`. There are no periods if the moon stays "up" or
/// "down", or if the event is missing on the other day too.
Periods PeakTimes(const mRiseSet::RiseSetTexts& before, const mRiseSet::RiseSetTexts& today,
                  const mRiseSet::RiseSetTexts& after);

/// Returns the middle between the rise and set of the moon, across midnight if it sets before it rises.
std::string MoonTransit(std::string_view rise, std::string_view set);

/// Returns the other transit on the day of the transit `major`, half a lunar day before or after it, or ":"
/// if it is more than a minute past midnight.
std::string OppositeTransit(std::string_view major);

struct Minors {
    std::string minor1;
    std::string minor2;
};

/// Returns the minor periods for two major periods, at most one of which is ":".
Minors MinorTimes(std::string_view major1, std::string_view major2);

/// Throws Error TypeMismatch if `time` does not have the form "hh:mm".
float TimeToHours(std::string_view time);

/// `hours` must not be negative.
std::string HoursToTime(float hours);

} // namespace Tarno::mPeakTimes
