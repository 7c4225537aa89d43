#include "mMoonPhase.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Tarno
{

namespace
{

/// Returns the position of the day number `jd` in the synodic month: -100 and 100 are full moons, 0 is the
/// new moon between them.
double SynodicPosition(double jd)
{
    constexpr double synodicMonth = 29.53058;
    const double months = jd / synodicMonth;
    return (2 * (months - std::trunc(months)) - 1) * 100;
}

/// Folds `percent` back into 0 to 100; negative day numbers exceed it.
float Folded(float percent)
{
    return percent > 100 ? std::abs(percent - 200) : percent;
}

constexpr mMoonPhase::DayRating poor{"Poor", "*"};
constexpr mMoonPhase::DayRating fair{"Fair", "**"};
constexpr mMoonPhase::DayRating good{"Good", "***"};
constexpr mMoonPhase::DayRating best{"Best", "****"};

struct Band {
    mMoonPhase::RatingBand range;
    mMoonPhase::DayRating waxing;
    mMoonPhase::DayRating waning;
};

// The edges are 2, 6, 8, 10, 12, 22, 26 and 28 days of a month of 29.5.
constexpr std::array<Band, 9> bands{{
    {{0.0F, 6.78F}, good, fair},
    {{6.79F, 20.34F}, best, fair},
    {{20.35F, 27.12F}, best, good},
    {{27.13F, 33.9F}, good, good},
    {{33.91F, 40.68F}, fair, fair},
    {{40.69F, 74.58F}, poor, poor},
    {{74.59F, 88.14F}, fair, fair},
    {{88.15F, 94.92F}, best, best},
    {{94.93F, 100.0F}, good, good},
}};

const Band* FindBand(float percent)
{
    const auto* const band = std::find_if(bands.begin(), bands.end(), [percent](const Band& candidate) {
        return candidate.range.first <= percent && percent <= candidate.range.last;
    });
    return band == bands.end() ? nullptr : band;
}

} // namespace

double mMoonPhase::JulianDay(std::chrono::year_month_day date)
{
    const double d = static_cast<unsigned>(date.day());
    const double m = static_cast<unsigned>(date.month());
    const double y = static_cast<int>(date.year());
    const double a = (m - 14) / 12;
    const double jd =
        (m - 2 - a * 12) * 367 / 12 + (a + y + 4800) * 1461 / 4 - 3 * ((a + y + 4900) / 100) / 4 + d - 32075;
    // Rounded to 15 significant digits: for some months (October 6617) the sum is exactly between two
    // quarters of a day, and rounding errors would change the result of LitPercent.
    return std::round(jd * 1e8) / 1e8;
}

mMoonPhase::Light mMoonPhase::LitPercent(float jd)
{
    const double daysSinceFull = static_cast<double>(jd) + 4.867;
    const double now = std::abs(SynodicPosition(daysSinceFull));
    const double quarterDayAgo = std::abs(SynodicPosition(daysSinceFull - 0.25));

    const float percent = Folded(static_cast<float>(std::nearbyint(now * 100) / 100));
    const float earlier = Folded(static_cast<float>(std::trunc(quarterDayAgo)));
    return {percent, earlier < percent};
}

mMoonPhase::DayRating mMoonPhase::Rating(float percent, bool waxing)
{
    const Band* band = FindBand(percent);
    if (band == nullptr) {
        return {};
    }
    return waxing ? band->waxing : band->waning;
}

std::optional<mMoonPhase::RatingBand> mMoonPhase::BandOf(float percent)
{
    const Band* band = FindBand(percent);
    return band == nullptr ? std::nullopt : std::optional(band->range);
}

} // namespace Tarno
