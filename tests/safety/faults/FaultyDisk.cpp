// A library that is loaded before the C library: inside one folder, one call of the operating system fails as
// a broken, full or busy disk makes it fail.
//   TARNO_FAULTY_FOLDER  the folder, without a "/" at its end
//   TARNO_FAULTY_CALL    which call: "open", "write", "fsync", "close", "exchange", "rename" (no exchange is
//                        possible then), "unlink", "stat",
//                        "fchmod", "access", "open folder", "fsync folder" or "close folder"
//   TARNO_FAULTY_NUMBER  the first of these calls that fails, counted from 1
//   TARNO_FAULTY_TIMES   how many of them fail
//   TARNO_FAULTY_ERROR   the number of the error; 0: a write is short, -1: it takes nothing

#include "FaultyDisk.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

bool hasBegun = false;
int calls = 0;
int failures = 0;

int Number(const char* variable)
{
    const char* text = std::getenv(variable);
    return text == nullptr ? 0 : std::atoi(text);
}

bool IsInside(const char* path)
{
    const char* folder = std::getenv("TARNO_FAULTY_FOLDER");
    return folder != nullptr && path != nullptr && std::strncmp(path, folder, std::strlen(folder)) == 0 &&
           (path[std::strlen(folder)] == '/' || path[std::strlen(folder)] == '\0');
}

bool IsWanted(const char* call)
{
    const char* wanted = std::getenv("TARNO_FAULTY_CALL");
    return hasBegun && wanted != nullptr && std::strcmp(wanted, call) == 0;
}

/// The next call of that name fails; errno says how.
bool Fails(const char* call, const char* path)
{
    if (!IsWanted(call) || !IsInside(path)) {
        return false;
    }
    ++calls;
    const int first = Number("TARNO_FAULTY_NUMBER");
    if (calls < first || calls >= first + Number("TARNO_FAULTY_TIMES")) {
        return false;
    }
    ++failures;
    errno = Number("TARNO_FAULTY_ERROR");
    return true;
}

/// The path behind a descriptor.
class PathOf
{
public:
    explicit PathOf(int descriptor)
    {
        char link[64];
        std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
        const ssize_t length = ::readlink(link, m_path, sizeof m_path - 1);
        m_path[length < 0 ? 0 : length] = '\0';
    }

    operator const char*() const { return m_path; } // NOLINT(google-explicit-constructor)

    bool IsFolder() const
    {
        const char* folder = std::getenv("TARNO_FAULTY_FOLDER");
        return folder != nullptr && std::strcmp(m_path, folder) == 0;
    }

private:
    char m_path[4096];
};

template <typename Function>
Function Real(Function /*type*/, const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

bool FailsToOpen(const char* path, int flags)
{
    if ((flags & O_DIRECTORY) != 0) {
        return Fails("open folder", path);
    }
    return (flags & O_CREAT) != 0 && Fails("open", path);
}

} // namespace

void FaultyDiskBegin()
{
    hasBegun = true;
}

int FaultyDiskFailures()
{
    return failures;
}

// The C library's headers declare these with attributes that a definition need not repeat.
extern "C" {

int open(const char* path, int flags, ...)
{
    std::va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return FailsToOpen(path, flags) ? -1 : Real(&open, "open")(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    std::va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return FailsToOpen(path, flags) ? -1 : Real(&open64, "open64")(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    if (Fails("write", PathOf(descriptor))) {
        if (errno > 0) {
            return -1;
        }
        if (errno < 0) {
            return 0;
        }
        count = (count + 1) / 2;
    }
    return Real(&write, "write")(descriptor, bytes, count);
}

int fsync(int descriptor)
{
    const PathOf path(descriptor);
    return Fails(path.IsFolder() ? "fsync folder" : "fsync", path) ? -1 : Real(&fsync, "fsync")(descriptor);
}

int close(int descriptor)
{
    const PathOf path(descriptor);
    const bool fails = Fails(path.IsFolder() ? "close folder" : "close", path);
    const int error = errno;
    const int closed = Real(&close, "close")(descriptor); // closed it is in any case
    errno = fails ? error : errno;
    return fails ? -1 : closed;
}

int rename(const char* from, const char* to) noexcept
{
    return Fails("rename", to) ? -1 : Real(&rename, "rename")(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) noexcept
{
    if (IsWanted("rename") && IsInside(to)) {
        errno = EINVAL;
        return -1;
    }
    return Fails("exchange", to) ? -1 : Real(&renameat2, "renameat2")(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) noexcept
{
    return Fails("unlink", path) ? -1 : Real(&unlink, "unlink")(path);
}

int stat(const char* path, struct stat* status) noexcept
{
    return Fails("stat", path)
               ? -1
               : Real(static_cast<int (*)(const char*, struct stat*)>(&stat), "stat")(path, status);
}

int access(const char* path, int mode) noexcept
{
    return Fails("access", path) ? -1 : Real(&access, "access")(path, mode);
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    return Fails("fchmod", PathOf(descriptor)) ? -1 : Real(&fchmod, "fchmod")(descriptor, mode);
}

} // extern "C"
