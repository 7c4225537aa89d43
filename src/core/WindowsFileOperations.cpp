#include "Error.h"
#include "FileOperations.h"
#include "Paths.h"
#include "WindowsHandle.h"

namespace Tarno
{

namespace
{

void Write(const Handle& file, std::string_view bytes)
{
    DWORD written = 0;
    Check(file &&
          ::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0);
    if (written != bytes.size()) {
        throw Error(ErrorNumber::DiskFull);
    }
}

class WindowsFileOperations final : public FileOperations
{
public:
    FileState GetState(const std::string& path) override
    {
        const Handle file(
            Open(path, FILE_READ_ATTRIBUTES, shareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
        if (!file) {
            const Error error = LastError();
            return error.Number() == ErrorNumber::PathNotFound ? FileState() : throw error;
        }
        BY_HANDLE_FILE_INFORMATION found{};
        Check(::GetFileInformationByHandle(file.get(), &found) != 0);
        const auto joined = [](std::uint64_t high, DWORD low) { return (high << 32U) | low; };
        return {.exists = true,
                .isReplaceable =
                    (found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0,
                .size = joined(found.nFileSizeHigh, found.nFileSizeLow),
                .modified = static_cast<std::int64_t>(
                    joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime)),
                .volume = found.dwVolumeSerialNumber,
                .fileIndex = joined(found.nFileIndexHigh, found.nFileIndexLow)};
    }

    FileState Create(const std::string& path, std::string_view bytes, const std::string& model) override
    {
        const std::wstring from = ToPath(model).wstring();
        DWORD size = 0;
        ::GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
        std::string descriptor(size, '\0');
        const bool hasDescriptor =
            ::GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) != 0;
        SECURITY_ATTRIBUTES security{sizeof(SECURITY_ATTRIBUTES), descriptor.data(), FALSE};
        const DWORD attributes = ::GetFileAttributesW(from.c_str());
        Handle file = Open(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW,
                           attributes == INVALID_FILE_ATTRIBUTES ? FILE_ATTRIBUTE_NORMAL : attributes,
                           hasDescriptor ? &security : nullptr);
        Write(file, bytes);
        Check(::FlushFileBuffers(file.get()) != 0);
        Check(::CloseHandle(file.release()) != 0);
        return GetState(path);
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        const bool isReplaced =
            ::MoveFileExW(ToPath(from).c_str(), ToPath(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
        // also returned while another program, for example a virus scanner, has the file open
        if (!isReplaced && ::GetLastError() == ERROR_ACCESS_DENIED) {
            throw Error(ErrorNumber::PermissionDenied);
        }
        Check(isReplaced);
    }

    void SyncFile(const std::string& path) override
    {
        Handle file = Open(path, GENERIC_WRITE, shareAll, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
        Check(file && ::FlushFileBuffers(file.get()) != 0);
        Check(::CloseHandle(file.release()) != 0);
    }

    /// Does nothing: the file system journals names.
    void SyncFolder(const std::string& /*folder*/) override {}

    void Remove(const std::string& path) override { Check(::DeleteFileW(ToPath(path).c_str()) != 0); }

    void MakeFolder(const std::string& path) override
    {
        Check(::CreateDirectoryW(ToPath(path).c_str(), nullptr) != 0);
    }

    void RemoveFolder(const std::string& path) override
    {
        Check(::RemoveDirectoryW(ToPath(path).c_str()) != 0);
    }

    /// The lock is a file that the system deletes when it is released, even if the process is killed.
    FolderLock Lock(const std::string& folder) override
    {
        FolderLock file = Open(folder + "\\tarno.lock", GENERIC_WRITE, 0, OPEN_ALWAYS,
                               FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE);
        if (!file && ::GetLastError() == ERROR_SHARING_VIOLATION) {
            throw LastError();
        }
        return file;
    }

    void Pause() override { ::Sleep(10); }

    void Append(const std::string& path, std::string_view bytes) override
    {
        Handle file = Open(path, FILE_APPEND_DATA, FILE_SHARE_READ, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL);
        Write(file, bytes);
        Check(::CloseHandle(file.release()) != 0);
    }
};

} // namespace

std::unique_ptr<FileOperations> SystemFileOperations()
{
    return std::make_unique<WindowsFileOperations>();
}

} // namespace Tarno
