#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tarno
{

/// What is wrong with a data file.
struct DataFault {
    std::string file;
    std::string text; ///< for the user, without a full stop; begins with line and column if they are known

    bool operator==(const DataFault&) const = default;
};

struct DataCheck {
    std::vector<DataFault> faults = {};
    std::size_t trips = 0; ///< that could be read
    std::size_t locations = 0;
};

/// Reads the data files and the pick lists in `folder` and checks them: whether they are complete, what their
/// records contain, and whether records refer to others that exist. Changes nothing, not even locks.
DataCheck CheckData(const ProgramFolder& folder, FileOperations& operations);

} // namespace Tarno
