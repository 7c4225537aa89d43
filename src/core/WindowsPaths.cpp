#include "Paths.h"
#include "WindowsHandle.h"

#include <algorithm>

namespace Tarno
{

namespace
{

/// Returns "C:\tarno.xml" for "\\?\C:\tarno.xml" and "\\server\log\tarno.xml" for
/// "\\?\UNC\server\log\tarno.xml".
std::string WithoutPrefix(const std::string& path)
{
    constexpr std::string_view prefix = R"(\\?\)";
    constexpr std::string_view server = R"(\\?\UNC\)";
    if (path.starts_with(server)) {
        return R"(\\)" + path.substr(server.size());
    }
    return path.starts_with(prefix) ? path.substr(prefix.size()) : path;
}

} // namespace

std::string ReadWholeFile(const std::string& path)
{
    const Handle file = Open(path, GENERIC_READ, shareAll, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    if (!file) {
        const Error error = LastError();
        throw error.Number() == ErrorNumber::PathNotFound ? Error(ErrorNumber::FileNotFound) : error;
    }
    LARGE_INTEGER size{};
    if (::GetFileType(file.get()) != FILE_TYPE_DISK || ::GetFileSizeEx(file.get(), &size) == 0) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    constexpr std::size_t maxChunk = 1U << 30U;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    for (std::size_t done = 0; done < bytes.size();) {
        DWORD read = 0;
        if (::ReadFile(file.get(), bytes.data() + done,
                       static_cast<DWORD>(std::min(bytes.size() - done, maxChunk)), &read, nullptr) == 0 ||
            read == 0) {
            throw Error(ErrorNumber::DeviceInputOutput);
        }
        done += read;
    }
    return bytes;
}

std::string Resolved(const std::string& path)
{
    const Handle file = Open(path, FILE_READ_ATTRIBUTES, shareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (!file) {
        return path;
    }
    std::wstring name(::GetFinalPathNameByHandleW(file.get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    name.resize(::GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()),
                                            FILE_NAME_NORMALIZED));
    return name.empty() ? path : WithoutPrefix(FromPath(name));
}

} // namespace Tarno
