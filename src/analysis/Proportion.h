#pragma once

#include <optional>

namespace Tarno
{

/// The range in which the true proportion is likely to be, both ends from 0 to 1.
struct ProportionInterval {
    double low;
    double high;
};

/// Returns the 95 % score interval for `successes` of `trials` (Wilson, "Probable inference, the law of
/// succession, and statistical inference", 1927), or nullopt for 0 trials.
std::optional<ProportionInterval> WilsonInterval(int successes, int trials);

} // namespace Tarno
