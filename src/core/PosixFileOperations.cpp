#include "Error.h"
#include "FileOperations.h"
#include "Paths.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

Error ErrorOf(int code)
{
    switch (code) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return Error(ErrorNumber::DiskFull);
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
        return Error(ErrorNumber::PermissionDenied);
    case ENOENT:
        return Error(ErrorNumber::PathNotFound);
    case EEXIST:
        return Error(ErrorNumber::FileAlreadyExists);
    case EIO:
        return Error(ErrorNumber::DeviceInputOutput);
    case ENOMEM:
        return Error(ErrorNumber::OutOfMemory);
    default:
        return Error(ErrorNumber::PathFileAccess);
    }
}

void Check(bool success)
{
    if (!success) {
        throw ErrorOf(errno);
    }
}

class PosixFile final : public WritableFile
{
public:
    explicit PosixFile(int descriptor) : m_descriptor(descriptor) { Check(descriptor >= 0); }

    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    ~PosixFile() override
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }

    std::size_t Write(std::string_view bytes) override
    {
        ssize_t written = 0;
        do {
            written = ::write(m_descriptor, bytes.data(), bytes.size());
        } while (written < 0 && errno == EINTR);
        Check(written >= 0);
        if (written == 0) {
            throw Error(ErrorNumber::DiskFull);
        }
        return static_cast<std::size_t>(written);
    }

    // some file systems offer no sync of a folder and say EINVAL
    void Sync() override { Check(::fsync(m_descriptor) == 0 || errno == EINVAL); }

    void Close() override
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        Check(::close(descriptor) == 0 || errno == EINTR);
    }

    /// A file system that keeps no modes refuses this, which is no reason to lose what is to be written.
    void TrySetMode(mode_t mode) const { (void)::fchmod(m_descriptor, mode); }

    /// Marks the file as being written for as long as it is open, whatever ends the process; tells whether
    /// no other process has done so.
    bool TryMark() const { return ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0; }

    void CheckRegular() const
    {
        struct stat status {
        };

        Check(::fstat(m_descriptor, &status) == 0);
        if (!S_ISREG(status.st_mode)) {
            throw Error(ErrorNumber::PathFileAccess);
        }
    }

private:
    int m_descriptor;
};

class PosixFileOperations final : public FileOperations
{
    static constexpr int mostLinks = 40;

public:
    std::string Followed(const std::string& path) override
    {
        std::error_code failure;
        fs::path followed = ToPath(path);
        // a link to a file that does not exist yet is no link to weakly_canonical
        for (int links = 0; links < mostLinks && fs::is_symlink(fs::symlink_status(followed, failure));
             ++links) {
            followed = followed.parent_path() / fs::read_symlink(followed, failure);
        }
        followed = fs::weakly_canonical(followed, failure);
        if (failure) {
            throw ErrorOf(failure.value());
        }
        return FromPath(followed);
    }

    void CheckReplaceable(const std::string& path) override
    {
        struct stat status {
        };

        if (::stat(path.c_str(), &status) != 0) {
            Check(errno == ENOENT);
            return;
        }
        if (!S_ISREG(status.st_mode)) {
            throw Error(ErrorNumber::PathFileAccess);
        }
        Check(::access(path.c_str(), W_OK) == 0 || errno == ENOENT); // gone since
    }

    std::unique_ptr<WritableFile> Create(const std::string& path, const std::string& model) override
    {
        auto file = std::make_unique<PosixFile>(
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));

        file->TryMark();

        struct stat status {
        };

        if (::stat(model.c_str(), &status) == 0) {
            file->TrySetMode(status.st_mode & 07777U);
        }
        return file;
    }

    std::uint64_t Size(const std::string& path) override
    {
        struct stat status {
        };

        Check(::stat(path.c_str(), &status) == 0);
        return static_cast<std::uint64_t>(status.st_size);
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        Check(::rename(from.c_str(), to.c_str()) == 0);
    }

    bool Exchange([[maybe_unused]] const std::string& from, [[maybe_unused]] const std::string& to) override
    {
#ifdef RENAME_EXCHANGE
        if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) == 0) {
            return true;
        }
        Check(errno == EINVAL || errno == ENOSYS || errno == ENOENT);
#endif
        return false;
    }

    void SyncFolderOf(const std::string& path) override
    {
        const std::string folder = FromPath(ToPath(path).parent_path());
        PosixFile opened(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        opened.Sync();
        opened.Close();
    }

    void Remove(const std::string& path) override
    {
        Check(::unlink(path.c_str()) == 0);
    }

    void RemoveAbandoned(const std::string& path) override
    {
        const PosixFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        file.CheckRegular();
        if (file.TryMark()) {
            Remove(path);
        }
    }

    void Append(const std::string& path, std::string_view bytes) override
    {
        // a pipe in the file's place must not keep the program waiting
        PosixFile file(::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, 0666));
        file.CheckRegular();
        while (!bytes.empty()) {
            bytes.remove_prefix(file.Write(bytes));
        }
        file.Close();
    }
};

} // namespace

std::unique_ptr<FileOperations> SystemFileOperations()
{
    return std::make_unique<PosixFileOperations>();
}
