#pragma once

#include "analysis/TripFigures.h"

#include <array>
#include <string>
#include <vector>

namespace Tarno
{

/// A trip worth remembering.
struct BestTrip {
    std::string key;
    std::string date;   ///< of the start, "yyyy-mm-dd"
    std::string place;  ///< empty if it is unknown
    std::string action; ///< "Hot!" or "Good"
    std::string caught; ///< what was caught, without numbers: "Flathead, Squid"
};

struct CountedName {
    std::string name;
    int trips;
};

/// The trips that start in a year.
struct YearFigures : TripFigures {
    /// Trips of a month by action: Slow, Fair, Good, Hot!, not set.
    using MonthActions = std::array<int, 5>;

    int days = 0;   ///< days of the year that are part of a trip, also of one that started before it
    int places = 0; ///< different places, by name
    std::vector<BestTrip> best = {}; ///< at most 5: Hot! before Good, then the newest first
    std::array<MonthActions, 12> months = {};
    std::vector<CountedName> species = {}; ///< what was caught, by number of trips, then by name
};

struct YearSummary {
    int year;
    YearFigures figures;
    YearFigures before; ///< the year before, for comparison
};

/// Returns the years in which trips start, latest first.
std::vector<int> YearsOf(const RecordList& trips);

YearSummary SummarizeYear(const RecordList& trips, int year, const LogContext& context);

} // namespace Tarno
