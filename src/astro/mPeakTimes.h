#pragma once

#include "mRiseSet.h"

#include <string>
#include <string_view>

// The day's periods in which fish are most active: two major ones around the moon's transits above
// and below, two minor ones a quarter of a lunar day away from them. Times are texts "hh:mm" with the
// minutes cut, never rounded, and ":" for none; hours are single precision.
namespace Tarno::mPeakTimes
{

struct Periods {
    std::string major1; ///< the earlier one; ":" stands behind every time
    std::string major2;
    std::string minor1;
    std::string minor2;
};

/// The periods of the day on which the moon rises and sets at `today`. An event that is missing that
/// day (":") is taken from the day `before` (the rise) or `after` (the set). There are no periods when
/// the moon stays "up" or "down", or when the neighbour lacks the event too.
Periods PeakTimes(const mRiseSet::RiseSetTexts& before, const mRiseSet::RiseSetTexts& today,
                  const mRiseSet::RiseSetTexts& after);

/// The middle of the time between the moon's rise and set, over midnight when it sets earlier than it
/// rises.
std::string MoonTransit(std::string_view rise, std::string_view set);

/// The other transit on the day of the transit `major`: half a lunar day before or after it. None
/// when it lies more than a minute beyond midnight.
std::string OppositeTransit(std::string_view major);

struct Minors {
    std::string minor1;
    std::string minor2;
};

/// The minor periods that go with two major ones, at most one of which is ":".
Minors MinorTimes(std::string_view major1, std::string_view major2);

/// Throws Error TypeMismatch when `time` is not of the form "hh:mm".
float TimeToHours(std::string_view time);

/// `hours` must not be negative.
std::string HoursToTime(float hours);

} // namespace Tarno::mPeakTimes
