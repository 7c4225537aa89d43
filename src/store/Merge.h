#pragma once

#include "store/Record.h"
#include "store/RecordTable.h"

#include <map>
#include <string>
#include <vector>

namespace Tarno
{

/// A record that this program and another one have changed in different ways.
struct Conflict {
    Record ours;             ///< as it is in the merged file; without values if it was deleted here
    Record theirs;           ///< the version that is replaced; without values if it was deleted there
    std::string keptAs = {}; ///< path of the file that holds `theirs`, empty if there is none
};

/// New keys by the keys that they replace.
using KeyMap = std::map<std::string, std::string>;

struct MergeResult {
    std::vector<Conflict> conflicts;
    KeyMap newKeys; ///< of records that were added here
};

/// Makes the changes of `ours` in `theirs`, which another program has written since `ours` was read. What
/// the other program has changed in other records stays. Where both have changed a record, ours replaces
/// theirs. Records added here are appended under the next free keys. The changes of `theirs` are then those
/// that its file still lacks.
MergeResult MergeChanges(const RecordTable& ours, RecordTable& theirs);

} // namespace Tarno
