#pragma once

#include <chrono>
#include <string_view>

// How much of the moon is lit, and how good a day for fishing that makes.
namespace Tarno::mMoonPhase
{

/// The day number of `date` by the formula of Fliegel and Van Flandern (Communications of the ACM 11,
/// 1968), its divisions not truncated: it departs from the true Julian day by a fraction of a day
/// that changes with the month. LitPercent is tuned to that.
double JulianDay(std::chrono::year_month_day date);

/// The moon's light on one day.
struct Light {
    float percent = 0; ///< lit part of the disc, 0 (new) to 100 (full), to two decimals
    bool waxing = false;
};

/// The light on the day number `jd` (JulianDay less half a day). It grows and shrinks evenly over the
/// synodic month. Single precision keeps day numbers of our time to a quarter of a day, and the
/// light is tuned to that as well.
Light LitPercent(float jd);

struct DayRating {
    std::string_view rating; ///< "Poor", "Fair", "Good" or "Best"; empty for no percentage
    std::string_view stars;  ///< "*" for poor to "****" for best
};

DayRating Rating(float percent, bool waxing);

} // namespace Tarno::mMoonPhase
