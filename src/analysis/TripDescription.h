#pragma once

#include "analysis/TripText.h"

#include <string>
#include <vector>

namespace Tarno
{

/// A line of a description of a trip, for the user. Both texts are UTF-8; the text can have several lines,
/// separated by "\n".
struct DescribedValue {
    std::string caption;
    std::string text;
};

/// Describes a trip in words, the most interesting values first. Values that are not set are left out. The
/// picture is not included.
std::vector<DescribedValue> DescribeTrip(const RecordView& trip, const PlaceNames& places);

/// Returns the trips as lines of values separated by tabs, after a line with the data names: all values but
/// the number of the trip. Tabs and line breaks within a value become "; ".
std::string TabSeparated(const RecordList& trips, const PlaceNames& places);

} // namespace Tarno
