#include "Error.h"
#include "FileOperations.h"
#include "Paths.h"
#include "WindowsExchange.h"
#include "WindowsHandle.h"

#include <algorithm>

namespace
{

/// "C:\tarno.xml" for "\\?\C:\tarno.xml", "\\server\log\tarno.xml" for "\\?\UNC\server\log\tarno.xml".
std::string WithoutPrefix(const std::string& path)
{
    constexpr std::string_view prefix = R"(\\?\)";
    constexpr std::string_view server = R"(\\?\UNC\)";
    if (path.starts_with(server)) {
        return R"(\\)" + path.substr(server.size());
    }
    return path.starts_with(prefix) ? path.substr(prefix.size()) : path;
}

class WindowsFile final : public WritableFile
{
public:
    WindowsFile(const std::string& path, DWORD access, DWORD disposition)
        : m_handle(::CreateFileW(ToPath(path).c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                                 FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        Check(static_cast<bool>(m_handle));
    }

    std::size_t Write(std::string_view bytes) override
    {
        constexpr std::size_t most = 1U << 30U;
        DWORD written = 0;
        Check(::WriteFile(m_handle.Get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), most)),
                          &written, nullptr) != 0);
        if (written == 0) {
            throw Error(ErrorNumber::DiskFull);
        }
        return written;
    }

    void Sync() override { Check(::FlushFileBuffers(m_handle.Get()) != 0); }

    void Close() override { Check(::CloseHandle(m_handle.Release()) != 0); }

private:
    Handle m_handle;
};

class WindowsFileOperations final : public FileOperations
{
public:
    std::string Followed(const std::string& path) override
    {
        const Handle file(::CreateFileW(ToPath(path).c_str(), 0, shareAll, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (!file) {
            return path;
        }
        std::wstring name(::GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
        name.resize(::GetFinalPathNameByHandleW(file.Get(), name.data(), static_cast<DWORD>(name.size()),
                                                FILE_NAME_NORMALIZED));
        return name.empty() ? path : WithoutPrefix(FromPath(name));
    }

    void CheckReplaceable(const std::string& path) override
    {
        const DWORD attributes = ::GetFileAttributesW(ToPath(path).c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES &&
            (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
            throw Error(ErrorNumber::PathFileAccess);
        }
    }

    // ReplaceFile hands the old file's attributes on
    std::unique_ptr<WritableFile> Create(const std::string& path, const std::string& /*model*/) override
    {
        return std::make_unique<WindowsFile>(path, GENERIC_WRITE, CREATE_NEW);
    }

    std::uint64_t Size(const std::string& path) override
    {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        Check(::GetFileAttributesExW(ToPath(path).c_str(), GetFileExInfoStandard, &data) != 0);
        return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32U) | data.nFileSizeLow;
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        if (Exchange(from, to)) {
            ::DeleteFileW(ToPath(from).c_str()); // otherwise it goes with the other leftovers
        } else {
            Check(::MoveFileExW(ToPath(from).c_str(), ToPath(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0);
        }
    }

    bool Exchange(const std::string& from, const std::string& to) override
    {
        return WindowsExchange().Exchange(from, to);
    }

    // the file system's own journal keeps names safe; there is nothing to call
    void SyncFolderOf(const std::string& /*path*/) override {}

    void Remove(const std::string& path) override { Check(::DeleteFileW(ToPath(path).c_str()) != 0); }

    std::uint32_t ProcessNumber() override { return ::GetCurrentProcessId(); }

    // the process of another user may not be opened
    bool IsRunning(std::uint32_t process) override
    {
        const Handle handle(::OpenProcess(SYNCHRONIZE, FALSE, process));
        return handle ? ::WaitForSingleObject(handle.Get(), 0) == WAIT_TIMEOUT
                      : ::GetLastError() == ERROR_ACCESS_DENIED;
    }

    void Append(const std::string& path, std::string_view bytes) override
    {
        WindowsFile file(path, FILE_APPEND_DATA, OPEN_ALWAYS);
        while (!bytes.empty()) {
            bytes.remove_prefix(file.Write(bytes));
        }
        file.Close();
    }
};

} // namespace

std::unique_ptr<FileOperations> SystemFileOperations()
{
    return std::make_unique<WindowsFileOperations>();
}
