#pragma once

#include "store/cSQL.h"

#include <string>
#include <vector>

namespace Tarno
{

/// Returns the names of the files with unsaved changes.
inline std::vector<std::string> UnsavedFiles(const cSQL& sql)
{
    std::vector<std::string> files;
    for (const UnsavedChange& change : sql.UnsavedChanges()) {
        if (files.empty() || files.back() != change.file) {
            files.push_back(change.file);
        }
    }
    return files;
}

} // namespace Tarno
