#pragma once

#include "store/EntryFields.h"
#include "store/Record.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// A position on the earth in decimal degrees, north and east positive.
struct EarthPosition {
    double latitude;
    double longitude;
};

/// Returns the great-circle distance in kilometres, by the haversine formula on a sphere with the mean radius
/// of the earth.
double DistanceInKilometres(const EarthPosition& from, const EarthPosition& to);

/// The positions of the locations by number. Locations without readable coordinates are left out.
using Positions = std::map<std::string, EarthPosition, std::less<>>;

Positions PositionsOf(const RecordList& locations);

/// What is known of a day at a place, or of a logged trip.
struct Conditions {
    std::optional<std::chrono::year_month_day> date = {};
    /// Part of the lunar month since new moon, from 0 to 1: 0.5 is a full moon.
    std::optional<double> moonAge = {};
    std::optional<int> rating = {}; ///< 0 poor to 3 best
    std::string place = {};         ///< the number of the location
    /// Codes of tide stage at the start, wind direction, wind strength, weather and water clarity.
    std::map<EntryField::Position, int> codes = {};
};

/// Returns the part of the lunar month for an illuminated percentage.
double MoonAge(int percent, bool waxing);

/// Returns the conditions of a logged trip. Values that are missing or cannot be read are unknown.
Conditions ConditionsOf(const RecordView& trip);

struct SimilarTrip {
    std::size_t index;                ///< in the list of trips
    double distance;                  ///< 0 for equal conditions, at most 1
    std::vector<std::string> reasons; ///< what is alike, for the user, for example "4 days apart in season"
};

/// Returns the `count` trips whose conditions are most like `wanted`, best first, equal ones in the order of
/// the list. The distance of two conditions is the weighted mean of the distances of their parts, each from 0
/// (equal) to 1:
/// - season: the days between the two dates within a year, of at most half a year; weight 2
/// - moon: the difference of the moon ages, of at most half a month; weight 2
/// - rating: the difference, of at most 3; weight 1
/// - place: 0 for the same, 0.5 for one within 50 km, 1 for another; weight 2
/// - each code in `wanted`: the steps between the two, of the most possible ones, where tide and wind
/// direction
///   run in a circle; weight 1
/// A part that `wanted` does not know does not count; one that only the trip does not know counts half.
std::vector<SimilarTrip> RankSimilar(const Conditions& wanted, const std::vector<Conditions>& trips,
                                     const Positions& positions, std::size_t count);

} // namespace Tarno
