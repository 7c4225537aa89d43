#pragma once

#include "backup/Archive.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "store/cSQL.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Tarno
{

/// A picture that does not have a relative path within the data folder.
struct CollectablePicture {
    std::string stored;     ///< the path in the records
    std::string name;       ///< the relative path that it will get
    bool isCopied = false;  ///< whether the file must be copied; otherwise it is in the data folder already
    std::uint64_t size = 0; ///< of the file, in bytes
};

/// What collecting the pictures will do. Nothing has been changed yet.
struct CollectPlan {
    std::vector<CollectablePicture> pictures;
    std::vector<std::string> missing; ///< stored paths of pictures that cannot be read; they stay as they are
    std::uint64_t bytes = 0;          ///< of the files that must be copied
};

/// Finds the pictures of the log that have absolute paths or are outside the data folder. The same file gets
/// the same name; a name that another picture has gets a number.
CollectPlan PlanCollecting(const ProgramFolder& folder, FileOperations& operations, const RecordList& trips,
                           const RecordList& locations);

/// Copies the pictures to the picture folder and changes the records to the new paths as one step of the
/// history. The original files stay. Throws Cancelled or Error if a picture cannot be copied: the log is then
/// unchanged and the copies are removed. Returns `failed` if the records could not be saved.
Status CollectPictures(const CollectPlan& plan, const ProgramFolder& folder, FileOperations& operations,
                       cSQL& sql, const Progress& progress = {});

} // namespace Tarno
