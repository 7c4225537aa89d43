#pragma once

#include "core/Error.h"
#include "core/FileOperations.h"

#include <QtTest/QTest>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tarno
{

/// The system's file operations with scripted failures. A scripted failure that does not happen fails the
/// test. Pauses take no time.
class ScriptedFileOperations final : public FileOperations
{
public:
    ScriptedFileOperations() = default;
    ScriptedFileOperations(const ScriptedFileOperations&) = delete;
    ScriptedFileOperations& operator=(const ScriptedFileOperations&) = delete;

    ~ScriptedFileOperations() override { ClearFailures(); }

    static constexpr int always = -1; ///< fails every time

    /// Lets the next `before` calls of `step` succeed and the `times` calls after them throw `number`. The
    /// steps are "get state", "create", "replace", "sync file", "sync folder", "remove", "make folder",
    /// "remove folder", "lock" and "append".
    void Fail(const std::string& step, ErrorNumber number, int times = 1, int before = 0)
    {
        m_failures.push_back({step, number, times, before});
    }

    /// Removes all scripted failures.
    void ClearFailures()
    {
        for (const Failure& failure : m_failures) {
            if (failure.times >= 0 || failure.before >= 0) {
                QTest::qFail(("scripted failure did not happen: " + failure.step).c_str(), __FILE__,
                             __LINE__);
            }
        }
        m_failures.clear();
    }

    /// Makes Create drop the last byte of every file.
    void LoseLastByte() { m_losesByte = true; }

    /// Simulates a file system without locks.
    void DisableLocks() { m_locks = false; }

    /// Calls `happen` once, immediately before a call of `step` (or "pause"), after `before` other calls of
    /// it. Simulates another program that acts at that moment.
    void Before(const std::string& step, std::function<void()> happen, int before = 0)
    {
        m_events.push_back({step, std::move(happen), before});
    }

    /// Returns the path of the last file created.
    const std::string& Created() const { return m_created; }

    /// Returns all steps so far, including failed ones.
    const std::vector<std::string>& Steps() const { return m_steps; }

    /// Whether any step so far may have changed the file system.
    bool HasWritten() const
    {
        return std::any_of(m_steps.begin(), m_steps.end(), [](const std::string& step) {
            return step != "get state" && step != "lock" && step != "pause";
        });
    }

    int Count(const std::string& step) const
    {
        return static_cast<int>(std::count(m_steps.begin(), m_steps.end(), step));
    }

    FileState GetState(const std::string& path) override
    {
        Step("get state");
        return m_system->GetState(path);
    }

    FileState Create(const std::string& path, std::string_view bytes, const std::string& model) override
    {
        Step("create");
        m_created = path;
        return m_system->Create(path, bytes.substr(0, bytes.size() - (m_losesByte ? 1 : 0)), model);
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        Step("replace");
        m_system->Replace(from, to);
    }

    void SyncFile(const std::string& path) override
    {
        Step("sync file");
        m_system->SyncFile(path);
    }

    void MakeFolder(const std::string& path) override
    {
        Step("make folder");
        m_system->MakeFolder(path);
    }

    void RemoveFolder(const std::string& path) override
    {
        Step("remove folder");
        m_system->RemoveFolder(path);
    }

    void SyncFolder(const std::string& folder) override
    {
        Step("sync folder");
        m_system->SyncFolder(folder);
    }

    void Remove(const std::string& path) override
    {
        Step("remove");
        m_system->Remove(path);
    }

    FolderLock Lock(const std::string& folder) override
    {
        Step("lock");
        return m_locks ? m_system->Lock(folder) : nullptr;
    }

    void Pause() override { Step("pause"); }

    void Append(const std::string& path, std::string_view bytes) override
    {
        Step("append");
        m_system->Append(path, bytes);
    }

private:
    struct Failure {
        std::string step;
        ErrorNumber number;
        int times;
        int before;
    };

    struct Event {
        std::string step;
        std::function<void()> happen;
        int before;
    };

    void Step(const std::string& step)
    {
        m_steps.push_back(step);
        const auto isNow = [&](auto& planned) { return planned.step == step && planned.before-- <= 0; };
        if (const auto event = std::find_if(m_events.begin(), m_events.end(), isNow);
            event != m_events.end()) {
            const auto happen = std::move(event->happen);
            m_events.erase(event);
            happen();
        }
        const auto failure = std::find_if(m_failures.begin(), m_failures.end(), isNow);
        if (failure != m_failures.end()) {
            const ErrorNumber number = failure->number;
            if (--failure->times == 0) {
                m_failures.erase(failure);
            }
            throw Error(number);
        }
    }

    std::unique_ptr<FileOperations> m_system = SystemFileOperations();
    std::vector<Failure> m_failures;
    std::vector<Event> m_events;
    std::string m_created;
    std::vector<std::string> m_steps;
    bool m_losesByte = false;
    bool m_locks = true;
};

} // namespace Tarno
