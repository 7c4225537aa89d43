#pragma once

#include <chrono>
#include <optional>
#include <string_view>

// The illumination of the moon and the fishing rating of a day that follows from it.
namespace Tarno::mMoonPhase
{

/// Returns the day number of `date` by the formula of Fliegel and Van Flandern (Communications of the ACM 11,
/// 1968) without truncating its divisions. The result differs from the true Julian day by a fraction of a day
/// that depends on the month; LitPercent relies on this (see docs/quirks.md).
double JulianDay(std::chrono::year_month_day date);

/// The illumination of the moon on one day.
struct Light {
    float percent = 0; ///< illuminated part of the disc, 0 (new) to 100 (full), two decimals
    bool waxing = false;
};

/// Returns the illumination on the day number `jd` (JulianDay minus 0.5), which rises and falls linearly over
/// the synodic month. Single precision rounds present-day day numbers to a quarter of a day; the result
/// relies on this (see docs/quirks.md).
Light LitPercent(float jd);

struct DayRating {
    std::string_view rating; ///< "Poor", "Fair", "Good" or "Best"; empty outside 0 to 100
    std::string_view stars;  ///< "*" for poor to "****" for best
};

DayRating Rating(float percent, bool waxing);

/// The illuminated percentages, both inclusive, that give the same rating.
struct RatingBand {
    float first;
    float last;
};

/// Returns the band of `percent` in the rule of the rating, or nullopt outside all bands.
std::optional<RatingBand> BandOf(float percent);

} // namespace Tarno::mMoonPhase
