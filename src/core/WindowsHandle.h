#pragma once

#include "Error.h"

#include <utility>
#include <windows.h>

/// What the operating system calls `code`, as this program counts errors.
Error ErrorOf(DWORD code);

/// What its last call has failed with.
Error LastError();

/// Throws LastError unless the call went well.
void Check(bool success);

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

    explicit operator bool() const { return m_handle != nullptr && m_handle != INVALID_HANDLE_VALUE; }

    HANDLE Get() const { return m_handle; }

    HANDLE Release() { return std::exchange(m_handle, INVALID_HANDLE_VALUE); }

private:
    HANDLE m_handle;
};

/// Whoever reads does not stand in the way of a program that writes, replaces or removes.
inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
