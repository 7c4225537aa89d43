#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// A file open for writing. It closes when it goes out of scope; only Close tells whether that went well.
class WritableFile
{
public:
    WritableFile() = default;
    WritableFile(const WritableFile&) = delete;
    WritableFile& operator=(const WritableFile&) = delete;
    virtual ~WritableFile() = default;

    /// Writes from the front of `bytes`; returns how many were taken, at least one.
    virtual std::size_t Write(std::string_view bytes) = 0;
    /// Returns when everything written has reached the disk.
    virtual void Sync() = 0;
    virtual void Close() = 0;
};

/// The steps of which a safe write consists, one call of the operating system each, so that a test
/// can make any of them fail. Every step throws Error when it did not succeed.
class FileOperations
{
public:
    FileOperations() = default;
    FileOperations(const FileOperations&) = delete;
    FileOperations& operator=(const FileOperations&) = delete;
    virtual ~FileOperations() = default;

    /// See Exchange.
    static constexpr std::string_view outSuffix = ".out";

    /// `path` with every symbolic link in it followed; a file that does not exist yet is no error.
    virtual std::string Followed(const std::string& path) = 0;
    /// Throws unless `path` names no file yet or a regular one that may be written.
    virtual void CheckReplaceable(const std::string& path) = 0;
    /// A new file with the mode of `model`, or the usual one when there is no such file. Throws Error
    /// FileAlreadyExists when there is something of that name.
    virtual std::unique_ptr<WritableFile> Create(const std::string& path, const std::string& model) = 0;
    virtual std::uint64_t Size(const std::string& path) = 0;
    /// Puts `from` in the place of `to` in one step that cannot be seen half done.
    virtual void Replace(const std::string& from, const std::string& to) = 0;
    /// Puts each of two files in the place of the other in one step, so that whatever stood at `to` can be
    /// looked at where `from` was. Returns false, nothing having been done, when one of them is not there or
    /// the file system has no such step. Windows takes three: a process that is killed among them leaves what
    /// stood at `to` at `from` with outSuffix behind it, and perhaps nothing at `to`.
    virtual bool Exchange(const std::string& from, const std::string& to) = 0;
    /// Returns when the names in the folder that holds `path` have reached the disk.
    virtual void SyncFolderOf(const std::string& path) = 0;
    virtual void Remove(const std::string& path) = 0;
    /// The number that tells this process from every other one that is running.
    virtual std::uint32_t ProcessNumber() = 0;
    /// Whether a process of that number is running.
    virtual bool IsRunning(std::uint32_t process) = 0;
    /// Writes `bytes` behind the end of the file, which is created when it does not exist.
    /// Throws Error PermissionDenied when another process holds the file, PathFileAccess when the
    /// user may not write to it. Never waits.
    virtual void Append(const std::string& path, std::string_view bytes) = 0;
};

/// The operating system's own operations.
std::unique_ptr<FileOperations> SystemFileOperations();
