#pragma once

#include "analysis/YearSummary.h"

#include <string>
#include <vector>

namespace Tarno
{

/// A figure of a year and of the year before, in words and numbers for the user.
struct ComparedFigure {
    std::string caption; ///< for example "Days on the water"
    std::string year;
    std::string before;
};

/// Returns the figures of a year: trips, hours, days, places, trips without a catch, and trips by action.
std::vector<ComparedFigure> CompareYears(const YearSummary& summary);

/// Returns the number of trips with each species that was caught in the year or in the year before.
std::vector<ComparedFigure> CompareSpecies(const YearSummary& summary);

/// Returns hours with one decimal.
std::string HoursText(double hours);

} // namespace Tarno
