#include "Proportion.h"

#include <algorithm>
#include <cmath>

namespace Tarno
{

std::optional<ProportionInterval> WilsonInterval(int successes, int trials)
{
    if (trials == 0) {
        return std::nullopt;
    }
    constexpr double z = 1.959964; // 97.5 % of the standard normal distribution are below it
    const double n = trials;
    const double part = successes / n;
    const double center = part + z * z / (2 * n);
    const double margin = z * std::sqrt(part * (1 - part) / n + z * z / (4 * n * n));
    const double scale = 1 + z * z / n;
    return ProportionInterval{std::max(0.0, (center - margin) / scale),
                              std::min(1.0, (center + margin) / scale)};
}

} // namespace Tarno
