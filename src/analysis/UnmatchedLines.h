#pragma once

#include "analysis/TripFigures.h"
#include "store/EntryFields.h"

#include <string>
#include <vector>

namespace Tarno
{

/// A line that contains no item of its pick list.
struct UnmatchedLine {
    EntryField::Position field; ///< TargetSpecies, FishCaught, BaitUsed or Method
    std::string line;
    int trips; ///< with that line in that field
};

/// Returns the unmatched lines of the trips, by number of trips, then by text.
std::vector<UnmatchedLine> UnmatchedLines(const RecordList& trips, const LogContext& context);

} // namespace Tarno
