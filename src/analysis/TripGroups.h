#pragma once

#include "analysis/TripFigures.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// By what trips are grouped. Dates and times are those of the start.
enum class Grouping {
    Month,
    Year,
    Season,
    Place,
    Rating,
    Moon,
    TideStart,
    TideEnd,
    Weather,
    WindDirection,
    WindStrength,
    Water, ///< the clarity of the water
    PressureTrend,
    Target,
    Caught,
    Bait,
    Method,
    StartHour,
};

struct GroupingTitle {
    Grouping grouping;
    std::string_view title; ///< for the user, for example "Wind direction"
};

/// Returns all groupings in the order in which they are proposed.
std::span<const GroupingTitle> Groupings();

struct TripGroup : TripFigures {
    std::string name;  ///< for the user, for example "November" or "Not set"
    std::string query; ///< finds the trips of the group among those that were grouped; see docs/queries.md
};

/// Groups trips, which may be a part of the log. Groups without trips are left out. Their order is that of
/// the calendar, the clock or the codes; places and items are ordered by number of trips, then by name. The
/// group of the trips without a value is the last one: "Not set", "No date", "No time", "Unknown place" or
/// "None recorded".
///
/// - Target, Caught, Bait and Method: a trip is counted once in the group of each item that its lines name.
///   Names that differ only in case and accents are one group.
/// - Season: December to February and so on. The groups have the names of the seasons if all positions of the
///   places of these trips are on one side of the equator.
/// - Moon: the eight phases by the percentage that is lit. New is at most 3 and full at least 97, as in
///   queries. Up to 30 is a crescent, up to 69 a quarter, up to 96 gibbous: the octants of the moon's age
///   that are centred on the phases, where 3.8, 30.9, 69.1 and 96.2 percent are lit.
///
/// The query of a group finds exactly its trips. There is one exception: a query cannot contain a quotation
/// mark. If a line with one has to be searched for as a whole, the query contains its longest part without
/// quotation marks and may find more trips.
std::vector<TripGroup> GroupTrips(const RecordList& trips, Grouping grouping, const LogContext& context);

} // namespace Tarno
