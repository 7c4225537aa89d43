#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Tarno
{

/// Identifies a version of a file without reading its contents.
struct FileState {
    bool exists = false;
    bool isReplaceable = true;   ///< does not exist yet, or is a regular file that the user may write to
    std::uint64_t size = 0;      ///< in bytes
    std::int64_t modified = 0;   ///< time of the last write, in platform units
    std::uint64_t volume = 0;    ///< file system that holds the file
    std::uint64_t fileIndex = 0; ///< unique within the volume; a replacement file has a new one

    bool operator==(const FileState&) const = default;

    bool IsSameFile(const FileState& other) const
    {
        return exists && other.exists && volume == other.volume && fileIndex == other.fileIndex;
    }
};

/// Releases its lock when the last copy goes out of scope.
using FolderLock = std::shared_ptr<void>;

/// The file operations that a safe write consists of, as an interface so that tests can make any of them
/// fail. They throw Error on failure.
class FileOperations
{
public:
    FileOperations() = default;
    FileOperations(const FileOperations&) = delete;
    FileOperations& operator=(const FileOperations&) = delete;
    virtual ~FileOperations() = default;

    /// Returns the state of a file or folder. A missing path is not an error.
    virtual FileState GetState(const std::string& path) = 0;
    /// Creates a file with the contents `bytes`, flushes it to disk and returns its state. Copies mode,
    /// owner, access list and extended attributes from the file `model` as far as the user may set them, or
    /// uses the defaults if `model` does not exist. Throws FileAlreadyExists if `path` exists; any other
    /// failure may leave a partial file.
    virtual FileState Create(const std::string& path, std::string_view bytes, const std::string& model) = 0;
    /// Atomically renames `from` to `to`, replacing it. Throws PermissionDenied if another program holds one
    /// of the files.
    virtual void Replace(const std::string& from, const std::string& to) = 0;
    /// Flushes the contents of the file to disk.
    virtual void SyncFile(const std::string& path) = 0;
    /// Flushes the names in `folder` to disk.
    virtual void SyncFolder(const std::string& folder) = 0;
    virtual void Remove(const std::string& path) = 0;
    /// Creates the folder, whose parent must exist. Throws FileAlreadyExists if `path` exists.
    virtual void MakeFolder(const std::string& path) = 0;
    /// Removes the folder, which must be empty.
    virtual void RemoveFolder(const std::string& path) = 0;
    /// Takes the advisory lock of `folder` without waiting. Returns null if the file system does not support
    /// locks. Throws PermissionDenied if another process holds the lock.
    virtual FolderLock Lock(const std::string& folder) = 0;
    /// Waits for 10 ms. Called between two attempts.
    virtual void Pause() = 0;
    /// Appends `bytes` to the file, creating it if necessary. Throws PermissionDenied if another process
    /// holds the file, PathFileAccess if the user may not write to it. Never waits.
    virtual void Append(const std::string& path, std::string_view bytes) = 0;
};

/// Returns the implementation of the operating system.
std::unique_ptr<FileOperations> SystemFileOperations();

} // namespace Tarno
