#pragma once

#include "analysis/CalendarDay.h"
#include "analysis/TripDescription.h"

#include <vector>

namespace Tarno
{

/// Describes the forecast of a day in words: date, rating and its reason, moon, times of sun and moon, major
/// and minor times, and a note about what does not happen or cannot be calculated.
std::vector<DescribedValue> DescribeForecast(const CalendarDay& day);

} // namespace Tarno
