#pragma once

#include "core/FileOperations.h"

#include <memory>
#include <string>
#include <string_view>

/// The system's own file operations without the waiting for the disk, which no crash of a fuzzer needs.
class UnsyncedFileOperations final : public FileOperations
{
public:
    std::string Followed(const std::string& path) override { return m_system->Followed(path); }

    void CheckReplaceable(const std::string& path) override { m_system->CheckReplaceable(path); }

    std::unique_ptr<WritableFile> Create(const std::string& path, const std::string& model) override
    {
        return std::make_unique<File>(m_system->Create(path, model));
    }

    std::uint64_t Size(const std::string& path) override { return m_system->Size(path); }

    void Replace(const std::string& from, const std::string& to) override { m_system->Replace(from, to); }

    bool Exchange(const std::string& from, const std::string& to) override
    {
        return m_system->Exchange(from, to);
    }

    void SyncFolderOf(const std::string& /*path*/) override {}

    void Remove(const std::string& path) override { m_system->Remove(path); }

    std::uint32_t ProcessNumber() override { return m_system->ProcessNumber(); }

    bool IsRunning(std::uint32_t process) override { return m_system->IsRunning(process); }

    void Append(const std::string& path, std::string_view bytes) override { m_system->Append(path, bytes); }

private:
    class File final : public WritableFile
    {
    public:
        explicit File(std::unique_ptr<WritableFile> file) : m_file(std::move(file)) {}

        std::size_t Write(std::string_view bytes) override { return m_file->Write(bytes); }

        void Sync() override {}

        void Close() override { m_file->Close(); }

    private:
        std::unique_ptr<WritableFile> m_file;
    };

    std::unique_ptr<FileOperations> m_system = SystemFileOperations();
};
