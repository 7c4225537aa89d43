#pragma once

#include <string>

namespace Tarno
{

/// The values with which a new trip starts, in stored form. The others are calculated or empty.
struct NewTripValues {
    std::string date = {};     ///< today if empty
    std::string location = {}; ///< the first location if empty or unknown
    std::string startTime = "06:00";
    std::string endTime = "12:00";
    std::string target = {};
    std::string bait = {};
    std::string method = {};
};

} // namespace Tarno
