#include "Error.h"
#include "FileOperations.h"
#include "Text.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <linux/limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Tarno
{

namespace
{

void Check(bool success)
{
    if (!success) {
        throw ErrorOf({errno, std::generic_category()});
    }
}

class Descriptor
{
public:
    Descriptor(const std::string& path, int flags)
        : m_number(TEMP_FAILURE_RETRY(::open(path.c_str(), flags | O_CLOEXEC, 0666)))
    {
        Check(m_number >= 0);
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor()
    {
        if (m_number >= 0) {
            ::close(m_number);
        }
    }

    int Number() const { return m_number; }

    void Write(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t written = TEMP_FAILURE_RETRY(::write(m_number, bytes.data(), bytes.size()));
            Check(written >= 0);
            if (written == 0) {
                throw Error(ErrorNumber::DiskFull);
            }
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    /// Ignores EINVAL, which some file systems return for folders.
    void Sync() const { Check(TEMP_FAILURE_RETRY(::fsync(m_number)) == 0 || errno == EINVAL); }

    void Close()
    {
        const int number = std::exchange(m_number, -1);
        Check(::close(number) == 0 || errno == EINTR);
    }

private:
    int m_number;
};

/// Copies owner, extended attributes (including the access list) and mode of the file `model` to `file`.
/// Skips what the user may not set. If group or access list cannot be set, drops the group rights of the
/// mode, because they would apply to a different group.
void CopyRights(const std::string& model, int file)
{
    struct stat status = {};
    if (::stat(model.c_str(), &status) != 0) {
        Check(errno == ENOENT);
        return;
    }
    bool isGroupRight = ::fchown(file, status.st_uid, status.st_gid) == 0 ||
                        ::fchown(file, static_cast<uid_t>(-1), status.st_gid) == 0;
    const std::string accessList = "system.posix_acl_access";
    ::fremovexattr(file, accessList.c_str()); // inherited from the folder
    std::string names(XATTR_LIST_MAX, '\0');
    names.resize(static_cast<std::size_t>(
        std::max<ssize_t>(::listxattr(model.c_str(), names.data(), names.size()), 0)));
    std::string value(XATTR_SIZE_MAX, '\0');
    for (const std::string& name : Split(names, '\0')) {
        const ssize_t size = ::getxattr(model.c_str(), name.c_str(), value.data(), value.size());
        const bool isCopied = size >= 0 && ::fsetxattr(file, name.c_str(), value.data(),
                                                       static_cast<std::size_t>(size), 0) == 0;
        isGroupRight = isGroupRight && (isCopied || name != accessList);
    }
    (void)::fchmod(file, status.st_mode & (isGroupRight ? 07777U : 07707U));
}

class PosixFileOperations final : public FileOperations
{
public:
    /// Ignores SIGXFSZ, so that a write beyond the file size limit fails instead of killing the process.
    PosixFileOperations() { std::signal(SIGXFSZ, SIG_IGN); }

    FileState GetState(const std::string& path) override
    {
        struct stat status = {};
        if (::stat(path.c_str(), &status) != 0) {
            Check(errno == ENOENT);
            return {};
        }
        constexpr std::int64_t nanoseconds = 1'000'000'000;
        return {.exists = true,
                .isReplaceable = S_ISREG(status.st_mode) && ::access(path.c_str(), W_OK) == 0,
                .size = static_cast<std::uint64_t>(status.st_size),
                .modified = status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec,
                .volume = status.st_dev,
                .fileIndex = status.st_ino};
    }

    FileState Create(const std::string& path, std::string_view bytes, const std::string& model) override
    {
        Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL);
        CopyRights(model, file.Number());
        file.Write(bytes);
        file.Sync();
        file.Close();
        return GetState(path);
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        Check(::rename(from.c_str(), to.c_str()) == 0);
    }

    void SyncFile(const std::string& path) override
    {
        Descriptor opened(path, O_WRONLY);
        opened.Sync();
        opened.Close();
    }

    void SyncFolder(const std::string& folder) override
    {
        Descriptor opened(folder, O_RDONLY | O_DIRECTORY);
        opened.Sync();
        opened.Close();
    }

    void Remove(const std::string& path) override { Check(::unlink(path.c_str()) == 0); }

    void MakeFolder(const std::string& path) override { Check(::mkdir(path.c_str(), 0777) == 0); }

    void RemoveFolder(const std::string& path) override { Check(::rmdir(path.c_str()) == 0); }

    FolderLock Lock(const std::string& folder) override
    {
        const auto opened = std::make_shared<Descriptor>(folder, O_RDONLY | O_DIRECTORY);
        if (::flock(opened->Number(), LOCK_EX | LOCK_NB) == 0) {
            return opened;
        }
        if (errno == EWOULDBLOCK) {
            throw Error(ErrorNumber::PermissionDenied);
        }
        return nullptr;
    }

    void Pause() override { std::this_thread::sleep_for(std::chrono::milliseconds(10)); }

    void Append(const std::string& path, std::string_view bytes) override
    {
        // O_NONBLOCK: a pipe in place of the file must not block the program
        Descriptor file(path, O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK);

        struct stat status = {};
        if (::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) {
            throw Error(ErrorNumber::PathFileAccess);
        }
        file.Write(bytes);
        file.Close();
    }
};

} // namespace

std::unique_ptr<FileOperations> SystemFileOperations()
{
    return std::make_unique<PosixFileOperations>();
}

} // namespace Tarno
