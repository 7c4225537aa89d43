#pragma once

#include <string>

namespace Tarno
{

/// Identifies a record for the user.
struct RecordTitle {
    enum class Kind { Trip, Location, Column, Report };

    Kind kind;
    std::string key;
    std::string date; ///< of a trip
    std::string name; ///< of the location, column or report; for a trip, of its location
};

} // namespace Tarno
