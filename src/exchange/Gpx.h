#pragma once

#include "analysis/Similarity.h"
#include "store/ImportBatch.h"
#include "store/Record.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// A named position. The texts are UTF-8, with "\n" as line break.
struct WayPoint {
    std::string name = {}; ///< one line
    EarthPosition position = {};
    std::string description = {};
    std::string comment = {};
};

/// Returns the locations that have readable coordinates within range, as way points: the description as
/// `description`, the directions as `comment`.
std::vector<WayPoint> WayPointsOf(const RecordList& locations);

/// Returns the way points as a GPX 1.1 file in UTF-8.
std::string WriteGpx(const std::vector<WayPoint>& points);

namespace GpxLimits
{
inline constexpr std::size_t bytes = 100'000'000;
inline constexpr std::size_t points = 32'767; ///< a log cannot have more locations
} // namespace GpxLimits

struct GpxFile {
    std::vector<WayPoint> points;
    std::string problem = {};              ///< a sentence for the user; if set, there are no points
    std::size_t routes = 0;                ///< ignored
    std::size_t tracks = 0;                ///< ignored
    std::size_t pointsWithoutPosition = 0; ///< ignored: the position is missing or out of range
    std::size_t repeatedPoints = 0;        ///< ignored: name and position are those of an earlier one

    /// Returns what was ignored for the user, for example "2 tracks, 1 way point without a valid position",
    /// or an empty text.
    std::string Ignored() const;
};

/// Reads the way points of a GPX file, version 1.0 or 1.1, with any prefix of its name space. Names lose
/// surrounding blanks and line breaks; a missing name becomes "-33.7, 151.3", the position; extensions,
/// times, symbols and everything else is ignored. Document types are not evaluated, and references to their
/// entities are a problem.
GpxFile ReadGpx(std::string_view bytes);

/// Returns the number of the location for each way point that the log already has: within 50 m, or with the
/// same name, compared like the words of a query. The nearest location comes before one of the same name. The
/// text is empty for others.
std::vector<std::string> MarkKnown(const std::vector<WayPoint>& points, const RecordList& locations);

/// Returns the hours from GMT that a location of this longitude probably has, in the form that locations
/// store: the whole hour nearest to a fifteenth of the longitude, "-5" for -71.07.
std::string ProposedOffset(double longitude);

/// Returns the stored texts of a new location by LocationField, for cSQL::Import, with the proposed offset
/// from GMT. WayPointsOf returns the same way point for it.
StoredTexts LocationOf(const WayPoint& point);

} // namespace Tarno
