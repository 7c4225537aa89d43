#pragma once

#include "Error.h"
#include "Paths.h"

#include <utility>
#include <windows.h>

/// The Error of the last system call.
inline Error LastError()
{
    return ErrorOf({static_cast<int>(::GetLastError()), std::system_category()});
}

/// Throws LastError unless the call succeeded.
inline void Check(bool success)
{
    if (!success) {
        throw LastError();
    }
}

/// A handle of the operating system, closed at the end of its scope.
class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    ~Handle()
    {
        if (*this) {
            ::CloseHandle(m_handle);
        }
    }

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }

    HANDLE Get() const { return m_handle; }

    HANDLE Release() { return std::exchange(m_handle, INVALID_HANDLE_VALUE); }

private:
    HANDLE m_handle;
};

/// Full sharing: a reader does not block a program that writes, replaces or removes the file.
inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens or creates a file; for the handle of a Handle, which is false if that failed.
inline HANDLE Open(const std::string& path, DWORD access, DWORD share, DWORD disposition, DWORD flags,
                   SECURITY_ATTRIBUTES* security = nullptr)
{
    return ::CreateFileW(ToPath(path).c_str(), access, share, security, disposition, flags, nullptr);
}
