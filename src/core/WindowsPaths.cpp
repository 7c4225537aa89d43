#include "Paths.h"
#include "WindowsExchange.h"
#include "WindowsHandle.h"

#include <algorithm>

static HANDLE Opened(const std::string& path)
{
    return ::CreateFileW(ToPath(path).c_str(), GENERIC_READ, shareAll, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string ReadWholeFile(const std::string& path)
{
    HANDLE handle = Opened(path);
    if (handle == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_FILE_NOT_FOUND &&
        WindowsExchange::ComesBack(path)) {
        handle = Opened(path);
    }
    const Handle file(handle);
    if (!file) {
        const Error error = LastError();
        throw error.Number() == ErrorNumber::PathNotFound ? Error(ErrorNumber::FileNotFound) : error;
    }
    LARGE_INTEGER size{};
    if (::GetFileType(file.Get()) != FILE_TYPE_DISK || ::GetFileSizeEx(file.Get(), &size) == 0) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    constexpr std::size_t most = 1U << 30U;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    for (std::size_t done = 0; done < bytes.size();) {
        DWORD read = 0;
        if (::ReadFile(file.Get(), bytes.data() + done,
                       static_cast<DWORD>(std::min(bytes.size() - done, most)), &read, nullptr) == 0 ||
            read == 0) {
            throw Error(ErrorNumber::DeviceInputOutput);
        }
        done += read;
    }
    return bytes;
}
