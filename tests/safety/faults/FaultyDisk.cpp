// A library that is preloaded before the C library and makes system calls fail as on a broken or full disk.

#include "FaultyDisk.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

using namespace Tarno;

extern "C" {
FaultyDisk faultyDisk;
}

namespace
{

/// Returns whether this call of `name` fails. If so, sets errno to the error or the WriteFault.
bool Fails(const char* name)
{
    FaultyDisk& disk = faultyDisk;
    if (disk.record != nullptr) {
        disk.record(name);
    }
    if (disk.call == nullptr || std::strcmp(disk.call, name) != 0 || disk.times == 0 || disk.before-- > 0) {
        return false;
    }
    --disk.times;
    ++disk.failures;
    errno = disk.error;
    return true;
}

template <typename Function>
Function* Real(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// The C library's headers declare these with attributes that a definition need not repeat.
extern "C" {

int open(const char* path, int flags, ...)
{
    std::va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return Fails("open") ? -1 : Real<int(const char*, int, ...)>("open")(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    if (Fails("write")) {
        if (errno != ShortWrite) {
            return errno == NothingWritten ? 0 : -1;
        }
        count = (count + 1) / 2;
    }
    return Real<ssize_t(int, const void*, size_t)>("write")(descriptor, bytes, count);
}

int close(int descriptor)
{
    const bool fails = Fails("close");
    const int error = errno;
    const int closed = Real<int(int)>("close")(descriptor); // a failing close releases the descriptor, too
    errno = fails ? error : errno;
    return fails ? -1 : closed;
}

/// Defines a call that returns -1 if it fails.
#define SYSTEM_CALL(Result, name, Parameters, arguments)                                                     \
    Result name Parameters                                                                                   \
    {                                                                                                        \
        return Fails(#name) ? -1 : Real<Result Parameters>(#name) arguments;                                 \
    }

SYSTEM_CALL(ssize_t, read, (int file, void* bytes, size_t count), (file, bytes, count))
SYSTEM_CALL(int, fsync, (int file), (file))
SYSTEM_CALL(int, flock, (int file, int operation) noexcept, (file, operation))
SYSTEM_CALL(int, rename, (const char* from, const char* to) noexcept, (from, to))
SYSTEM_CALL(int, unlink, (const char* path) noexcept, (path))
SYSTEM_CALL(int, stat, (const char* path, struct stat* status) noexcept, (path, status))
SYSTEM_CALL(int, access, (const char* path, int mode) noexcept, (path, mode))
SYSTEM_CALL(int, fchmod, (int file, mode_t mode) noexcept, (file, mode))
SYSTEM_CALL(int, fchown, (int file, uid_t user, gid_t group) noexcept, (file, user, group))
SYSTEM_CALL(int, fremovexattr, (int file, const char* name) noexcept, (file, name))
SYSTEM_CALL(ssize_t, listxattr, (const char* path, char* names, size_t size) noexcept, (path, names, size))
SYSTEM_CALL(ssize_t, getxattr, (const char* path, const char* name, void* value, size_t size) noexcept,
            (path, name, value, size))
SYSTEM_CALL(int, fsetxattr, (int file, const char* name, const void* value, size_t size, int flags) noexcept,
            (file, name, value, size, flags))

} // extern "C"
