#pragma once

#include "core/Error.h"
#include "core/FileOperations.h"

#include <memory>
#include <string>
#include <string_view>

namespace Tarno
{

/// The system's file operations, one of which fails. Counts those that can change something.
class DyingFileOperations final : public FileOperations
{
public:
    enum class Death {
        Once,     ///< only one operation fails
        ForGood,  ///< all others after it fail too, as if the program had been killed
        HalfDone, ///< likewise, but the operation itself is carried out
    };

    /// Lets `before` operations succeed. A negative number lets all succeed.
    DyingFileOperations(int before, Death death) : m_before(before), m_death(death) {}

    int Count() const { return m_count; }

    bool HasFailed() const { return m_hasFailed; }

    FileState GetState(const std::string& path) override { return m_system->GetState(path); }

    FileState Create(const std::string& path, std::string_view bytes, const std::string& model) override
    {
        FileState state;
        Run([&] { state = m_system->Create(path, bytes, model); });
        return state;
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        Run([&] { m_system->Replace(from, to); });
    }

    void SyncFile(const std::string& path) override
    {
        Run([&] { m_system->SyncFile(path); });
    }

    void SyncFolder(const std::string& folder) override
    {
        Run([&] { m_system->SyncFolder(folder); });
    }

    void Remove(const std::string& path) override
    {
        Run([&] { m_system->Remove(path); });
    }

    void MakeFolder(const std::string& path) override
    {
        Run([&] { m_system->MakeFolder(path); });
    }

    void RemoveFolder(const std::string& path) override
    {
        Run([&] { m_system->RemoveFolder(path); });
    }

    FolderLock Lock(const std::string& folder) override { return m_system->Lock(folder); }

    void Pause() override {}

    void Append(const std::string& path, std::string_view bytes) override
    {
        Run([&] { m_system->Append(path, bytes); });
    }

private:
    template <typename Operation>
    void Run(const Operation& operation)
    {
        const int number = m_count++;
        const bool isFirst = m_before >= 0 && number == m_before;
        const bool fails = isFirst || (m_before >= 0 && number > m_before && m_death != Death::Once);
        if (!fails || (isFirst && m_death == Death::HalfDone)) {
            operation();
        }
        if (fails) {
            m_hasFailed = true;
            throw Error(ErrorNumber::DiskFull);
        }
    }

    std::unique_ptr<FileOperations> m_system = SystemFileOperations();
    int m_before;
    Death m_death;
    int m_count = 0;
    bool m_hasFailed = false;
};

} // namespace Tarno
