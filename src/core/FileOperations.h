#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Tarno
{

/// Tells one version of a file from another without reading it.
struct FileState {
    bool exists = false;
    bool isReplaceable = true;   ///< nothing is there yet, or a regular file that the user may write to
    std::uint64_t size = 0;      ///< in bytes
    std::int64_t modified = 0;   ///< time of the last write, in units of the platform
    std::uint64_t volume = 0;    ///< file system that holds the file
    std::uint64_t fileIndex = 0; ///< unique within the volume; a file that replaces another has its own

    bool operator==(const FileState&) const = default;

    bool IsSameFile(const FileState& other) const
    {
        return exists && other.exists && volume == other.volume && fileIndex == other.fileIndex;
    }
};

/// Releases its lock when the last copy goes out of scope.
using FolderLock = std::shared_ptr<void>;

/// The operations on files that a safe write consists of, so that a test can make any of them fail.
/// They throw Error when they do not succeed.
class FileOperations
{
public:
    FileOperations() = default;
    FileOperations(const FileOperations&) = delete;
    FileOperations& operator=(const FileOperations&) = delete;
    virtual ~FileOperations() = default;

    /// The state of a file or folder. A path that does not exist is no error.
    virtual FileState GetState(const std::string& path) = 0;
    /// Creates a file with the contents `bytes` and returns its state when they have reached the disk. Mode,
    /// owner, access list and extended attributes are those of the file `model`, as far as the user may set
    /// them, or the usual ones if it does not exist. Throws FileAlreadyExists if `path` exists; after any
    /// other failure a part of the file may be left.
    virtual FileState Create(const std::string& path, std::string_view bytes, const std::string& model) = 0;
    /// Renames `from` to `to`, which it replaces in one step. Throws PermissionDenied if another program
    /// holds one of the files.
    virtual void Replace(const std::string& from, const std::string& to) = 0;
    /// Returns when the names in `folder` have reached the disk.
    virtual void SyncFolder(const std::string& folder) = 0;
    virtual void Remove(const std::string& path) = 0;
    /// Locks `folder` against other processes that do the same, without waiting. Returns null if the file
    /// system has no locks. Throws PermissionDenied if another process has the lock.
    virtual FolderLock Lock(const std::string& folder) = 0;
    /// Waits for 10 ms, to give another program time to finish.
    virtual void Pause() = 0;
    /// Writes `bytes` at the end of the file, which is created if it does not exist. Throws PermissionDenied
    /// if another process holds the file, PathFileAccess if the user may not write to it. Never waits.
    virtual void Append(const std::string& path, std::string_view bytes) = 0;
};

/// The operating system's own operations.
std::unique_ptr<FileOperations> SystemFileOperations();

} // namespace Tarno
