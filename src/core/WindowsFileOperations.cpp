// Built on Windows only.

#include "Error.h"
#include "FileOperations.h"
#include "Paths.h"

#include <filesystem>
#include <system_error>
#include <windows.h>

namespace
{

namespace fs = std::filesystem;

Error LastError()
{
    switch (::GetLastError()) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return Error(ErrorNumber::DiskFull);
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return Error(ErrorNumber::PermissionDenied);
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return Error(ErrorNumber::PathNotFound);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return Error(ErrorNumber::FileAlreadyExists);
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return Error(ErrorNumber::OutOfMemory);
    default:
        return Error(ErrorNumber::PathFileAccess);
    }
}

void Check(bool success)
{
    if (!success) {
        throw LastError();
    }
}

class WindowsFile final : public WritableFile
{
public:
    WindowsFile(const std::string& path, DWORD access, DWORD disposition)
        : m_handle(::CreateFileW(ToPath(path).c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                                 FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        Check(m_handle != INVALID_HANDLE_VALUE);
    }

    WindowsFile(const WindowsFile&) = delete;
    WindowsFile& operator=(const WindowsFile&) = delete;

    ~WindowsFile() override
    {
        if (m_handle != INVALID_HANDLE_VALUE) {
            ::CloseHandle(m_handle);
        }
    }

    std::size_t Write(std::string_view bytes) override
    {
        constexpr std::size_t most = 1U << 30U;
        DWORD written = 0;
        Check(::WriteFile(m_handle, bytes.data(),
                          static_cast<DWORD>(bytes.size() < most ? bytes.size() : most), &written,
                          nullptr) != 0);
        if (written == 0) {
            throw Error(ErrorNumber::DiskFull);
        }
        return written;
    }

    void Sync() override { Check(::FlushFileBuffers(m_handle) != 0); }

    void Close() override
    {
        const HANDLE handle = m_handle;
        m_handle = INVALID_HANDLE_VALUE;
        Check(::CloseHandle(handle) != 0);
    }

private:
    HANDLE m_handle;
};

class WindowsFileOperations final : public FileOperations
{
public:
    std::string Followed(const std::string& path) override
    {
        std::error_code failure;
        const fs::path followed = fs::weakly_canonical(ToPath(path), failure);
        return failure ? path : FromPath(followed);
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
        const fs::path source = ToPath(from);
        const fs::path target = ToPath(to);
        if (::ReplaceFileW(target.c_str(), source.c_str(), nullptr, 0, nullptr, nullptr) != 0) {
            return;
        }
        Check(::GetLastError() == ERROR_FILE_NOT_FOUND);
        Check(::MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0);
    }

    bool Exchange(const std::string& from, const std::string& to) override
    {
        const fs::path source = ToPath(from);
        const fs::path aside = ToPath(from + "-out");
        if (::ReplaceFileW(ToPath(to).c_str(), source.c_str(), aside.c_str(), 0, nullptr, nullptr) == 0) {
            Check(::GetLastError() == ERROR_FILE_NOT_FOUND);
            return false;
        }
        Check(::MoveFileExW(aside.c_str(), source.c_str(), MOVEFILE_WRITE_THROUGH) != 0);
        return true;
    }

    // the file system's own journal keeps names safe; there is nothing to call
    void SyncFolderOf(const std::string& /*path*/) override {}

    void Remove(const std::string& path) override { Check(::DeleteFileW(ToPath(path).c_str()) != 0); }

    std::uint32_t ProcessNumber() override { return ::GetCurrentProcessId(); }

    // the process of another user may not be opened
    bool IsRunning(std::uint32_t process) override
    {
        const HANDLE handle = ::OpenProcess(SYNCHRONIZE, FALSE, process);
        if (handle == nullptr) {
            return ::GetLastError() == ERROR_ACCESS_DENIED;
        }
        const bool isRunning = ::WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
        ::CloseHandle(handle);
        return isRunning;
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
