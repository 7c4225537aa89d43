#pragma once

#include "Error.h"
#include "Paths.h"

#include <memory>
#include <windows.h>

namespace Tarno
{

/// Returns the Error of the last system call.
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

struct CloseHandleOf {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};

using Handle = std::unique_ptr<void, CloseHandleOf>;

/// Full sharing: a reader does not block a program that writes, replaces or removes the file.
inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens or creates a file. Returns null on failure; LastError then returns the reason.
inline Handle Open(const std::string& path, DWORD access, DWORD share, DWORD disposition, DWORD flags,
                   SECURITY_ATTRIBUTES* security = nullptr)
{
    const HANDLE handle =
        ::CreateFileW(ToPath(path).c_str(), access, share, security, disposition, flags, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace Tarno
