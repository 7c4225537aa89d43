#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Tarno
{

/// The stored texts of a record by position, UTF-8. The first one is its key.
using StoredTexts = std::vector<std::string>;

struct ImportedTrip {
    StoredTexts values;
    std::optional<std::size_t> newLocation = {}; ///< position in ImportBatch::locations; replaces its LocNo
};

/// Locations and trips that are added together. The keys are what the records should get: a number from 1 to
/// 32767 is kept if the log does not have it, any other text means the next free key.
struct ImportBatch {
    std::vector<StoredTexts> locations;
    std::vector<ImportedTrip> trips;
};

} // namespace Tarno
