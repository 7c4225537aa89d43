#pragma once

#include "core/FileOperations.h"

#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

/// Writes whole files. A reader, a crash or a power failure finds the old bytes or the new ones, never a
/// mixture: a temporary file in the same folder is written, synchronised and checked, and replaces the
/// target.
class SafeWriter
{
public:
    explicit SafeWriter(FileOperations& operations) : m_operations(operations) {}

    /// Replaces the contents of `path`, or creates it, through symbolic links and with the rights of the old
    /// file. Throws Error if any step fails: the old bytes are then still there and the temporary is removed.
    /// (Only a failure to synchronise the folder comes after the new bytes have replaced the old ones.)
    void Write(const std::string& path, std::string_view bytes);

    /// Replaces `target`, in which all links are resolved, without synchronising the folder. Returns the
    /// state of the new file; nothing, having changed nothing, if the old one is no longer as `expected`.
    /// Throws as Write.
    std::optional<FileState> Replace(const std::string& target, std::string_view bytes,
                                     const std::optional<FileState>& expected);

    /// Locks `folder`, so that no other Tarno saves or cleans up there. Null if the file system has no locks.
    /// Waits for up to ten seconds, then throws Error PermissionDenied.
    FolderLock LockFolder(const std::string& folder);

    /// Removes the temporaries that killed programs have left beside `path`: all that are found while the
    /// folder is locked, or, without locks, those older than an hour. Never fails.
    void RemoveStale(const std::string& path);

    /// The end of the name of every temporary.
    static constexpr std::string_view temporarySuffix = ".tarno-tmp";

private:
    void TryRemove(const std::string& path);

    FileOperations& m_operations;
};

} // namespace Tarno
