#pragma once

#include "analysis/TripGroups.h"
#include "store/EntryFields.h"

#include <string_view>
#include <vector>

namespace Tarno
{

/// A field whose lines name what the trips are grouped by.
struct GroupedLines {
    EntryField::Position field;
    std::string_view queryField;
    const LineItems* items; ///< null if each different line is a group
    const PlaceNames& places;
    std::string_view nameOfRest; ///< the name of the group of trips without any line
};

/// Returns the groups as GroupTrips does.
std::vector<TripGroup> GroupByLines(const RecordList& trips, const GroupedLines& grouped);

} // namespace Tarno
