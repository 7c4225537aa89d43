#pragma once

#include "store/Record.h"
#include "store/RecordTable.h"

#include <map>
#include <string>
#include <vector>

namespace Tarno
{

/// A record that this program and another one have changed differently.
struct Conflict {
    Record ours;             ///< the version in the merged file; without values if it was deleted here
    Record theirs;           ///< the replaced version; without values if it was deleted there
    std::string keptAs = {}; ///< path of the file that contains `theirs`, or empty
};

/// Maps replaced keys to new ones.
using KeyMap = std::map<std::string, std::string>;

/// Returns the new key for `key`, or `key` itself if it was not replaced.
inline std::string KeyIn(const KeyMap& newKeys, const std::string& key)
{
    const auto found = newKeys.find(key);
    return found == newKeys.end() ? key : found->second;
}

struct MergeResult {
    std::vector<Conflict> conflicts;
    KeyMap newKeys; ///< of records added here
};

/// Merges the changes of `ours` into `theirs`, which another program has written since `ours` was read.
/// Changes of the other program to other records are kept. If both have changed a record, ours replaces
/// theirs. Records added here are appended under the next free keys. Afterwards the changes recorded in
/// `theirs` are only those that its file does not contain yet.
MergeResult MergeChanges(const RecordTable& ours, RecordTable& theirs);

} // namespace Tarno
