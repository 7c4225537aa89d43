#pragma once

#include "core/FileOperations.h"

#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

/// Replaces whole files. Readers see either the old or the new bytes, never a mixture, even after a crash or
/// power failure: the writer creates a temporary in the same folder, synchronises and checks it, and renames
/// it to the target.
class SafeWriter
{
public:
    explicit SafeWriter(FileOperations& operations) : m_operations(operations) {}

    /// Replaces or creates the file `path`. Follows symbolic links and keeps the access rights of the old
    /// file. Throws Error if any step fails: the old file is then unchanged and the temporary is removed.
    /// Only a failure to synchronise the folder is reported after the new file has replaced the old one.
    void Write(const std::string& path, std::string_view bytes);

    /// Replaces `target`, a path without symbolic links, without synchronising the folder. Returns the state
    /// of the new file, or nullopt without changing anything if the old file no longer has the state
    /// `expected`. Throws like Write.
    std::optional<FileState> Replace(const std::string& target, std::string_view bytes,
                                     const std::optional<FileState>& expected);

    /// Renames `from` to `to`, replacing it. Waits for up to one second if another program holds one of the
    /// files, then throws Error PermissionDenied.
    void PutInPlace(const std::string& from, const std::string& to);

    /// Locks `folder` so that no other instance of Tarno saves or cleans up there. Returns null if the file
    /// system does not support locks. Waits for up to ten seconds, then throws Error PermissionDenied.
    FolderLock LockFolder(const std::string& folder);

    /// Removes orphaned temporaries of `path` that killed processes have left. Takes the folder lock first
    /// and does nothing if another program holds it. On file systems without locks, removes only temporaries
    /// older than an hour. Never fails.
    void RemoveStaleTemporaries(const std::string& path);

    /// Removes temporaries in `folder` whose names begin with `prefix`, if no program has written to them for
    /// an hour. Takes no lock. Never fails.
    void RemoveOldTemporaries(const std::string& folder, std::string_view prefix);

    /// Returns a name for a temporary of `target`, different at each call.
    static std::string TemporaryOf(const std::string& target);

    /// Removes the file if possible. Never fails.
    void TryRemove(const std::string& path);

    /// The suffix of every temporary's name.
    static constexpr std::string_view temporarySuffix = ".tarno-tmp";

private:
    FileOperations& m_operations;
};

} // namespace Tarno
