#include "Error.h"
#include "FileOperations.h"
#include "Paths.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
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

/// What `call` of the operating system returns; a signal that interrupts it is no failure.
template <typename Call>
auto Uninterrupted(const Call& call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// A descriptor of the file that is opened, for PosixFile to check.
int Opened(const std::string& path, int flags)
{
    constexpr mode_t usual = 0666;
    return Uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, usual); });
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
        const ssize_t written =
            Uninterrupted([&] { return ::write(m_descriptor, bytes.data(), bytes.size()); });
        Check(written >= 0);
        if (written == 0) {
            throw Error(ErrorNumber::DiskFull);
        }
        return static_cast<std::size_t>(written);
    }

    // some file systems offer no sync of a folder and say EINVAL
    void Sync() override
    {
        Check(Uninterrupted([&] { return ::fsync(m_descriptor); }) == 0 || errno == EINVAL);
    }

    void Close() override
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        Check(::close(descriptor) == 0 || errno == EINTR);
    }

    /// A file system that keeps no modes refuses this, which is no reason to lose what is to be written.
    void TrySetMode(mode_t mode) const { (void)::fchmod(m_descriptor, mode); }

    void CheckRegular() const
    {
        struct stat status {
        };

        if (::fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
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
    /// A file that would grow beyond the limit of its size is told like a full disk, and ends nothing.
    PosixFileOperations() { std::signal(SIGXFSZ, SIG_IGN); }

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
        auto file = std::make_unique<PosixFile>(Opened(path, O_WRONLY | O_CREAT | O_EXCL));

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
        PosixFile opened(Opened(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY));
        opened.Sync();
        opened.Close();
    }

    void Remove(const std::string& path) override
    {
        Check(::unlink(path.c_str()) == 0);
    }

    std::uint32_t ProcessNumber() override
    {
        return static_cast<std::uint32_t>(::getpid());
    }

    // the process of another user may not be sent a signal
    bool IsRunning(std::uint32_t process) override
    {
        return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
    }

    void Append(const std::string& path, std::string_view bytes) override
    {
        // a pipe in the file's place must not keep the program waiting
        PosixFile file(Opened(path, O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK));
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
