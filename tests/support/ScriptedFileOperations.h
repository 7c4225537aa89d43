#pragma once

#include "core/Error.h"
#include "core/FileOperations.h"

#include <QtTest/QTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The system's own file operations, of which single steps go wrong as a test wishes. What is not in the
/// script is really done. A failure that was scripted but never asked for fails the test.
class ScriptedFileOperations final : public FileOperations
{
public:
    ScriptedFileOperations() = default;
    ScriptedFileOperations(const ScriptedFileOperations&) = delete;
    ScriptedFileOperations& operator=(const ScriptedFileOperations&) = delete;

    ~ScriptedFileOperations() override { Heal(); }

    static constexpr int always = -1; ///< times that never come to an end

    /// The next `times` calls of `step` throw `number` and do nothing, after `before` calls that go well.
    /// The steps are named "follow", "check", "create", "write", "sync", "close", "size", "replace",
    /// "exchange", "sync folder", "remove" and "append".
    void Fail(const std::string& step, ErrorNumber number, int times = 1, int before = 0)
    {
        m_failures.push_back({step, number, times, before});
    }

    /// From now on no step fails.
    void Heal()
    {
        for (const Failure& failure : m_failures) {
            if (failure.times >= 0 || failure.before >= 0) {
                QTest::qFail(("the step that was to fail never came: " + failure.step).c_str(), __FILE__,
                             __LINE__);
            }
        }
        m_failures.clear();
    }

    /// From now on a write takes at most `most` bytes.
    void TakeAtMost(std::size_t most) { m_most = most; }

    /// From now on a write says that it took one byte more than it did.
    void LoseBytes() { m_losesBytes = true; }

    /// From now on no two files can be exchanged in one step, as on some file systems.
    void ExchangeNothing() { m_exchanges = false; }

    /// `happen` is called right before the next exchange, as if another program were that quick.
    void BeforeExchange(std::function<void()> happen) { m_beforeExchange = std::move(happen); }

    /// `happen` is called right after the next exchange.
    void AfterExchange(std::function<void()> happen) { m_afterExchange = std::move(happen); }

    /// The path of the file created last.
    const std::string& Created() const { return m_created; }

    /// What was called so far, failed calls included; "drop" is a file given up without Close.
    const std::vector<std::string>& Steps() const { return m_steps; }

    /// Whether anything was done so far that leaves traces.
    bool HasWritten() const
    {
        return std::any_of(m_steps.begin(), m_steps.end(),
                           [](const std::string& step) { return step != "follow" && step != "check"; });
    }

    std::string Followed(const std::string& path) override
    {
        Step("follow");
        return m_system->Followed(path);
    }

    void CheckReplaceable(const std::string& path) override
    {
        Step("check");
        m_system->CheckReplaceable(path);
    }

    std::unique_ptr<WritableFile> Create(const std::string& path, const std::string& model) override
    {
        Step("create");
        m_created = path;
        return std::make_unique<File>(*this, m_system->Create(path, model));
    }

    std::uint64_t Size(const std::string& path) override
    {
        Step("size");
        return m_system->Size(path);
    }

    void Replace(const std::string& from, const std::string& to) override
    {
        Step("replace");
        m_system->Replace(from, to);
    }

    bool Exchange(const std::string& from, const std::string& to) override
    {
        Step("exchange");
        if (const auto happen = std::exchange(m_beforeExchange, nullptr)) {
            happen();
        }
        const bool isExchanged = m_exchanges && m_system->Exchange(from, to);
        if (const auto happen = std::exchange(m_afterExchange, nullptr)) {
            happen();
        }
        return isExchanged;
    }

    void SyncFolderOf(const std::string& path) override
    {
        Step("sync folder");
        m_system->SyncFolderOf(path);
    }

    void Remove(const std::string& path) override
    {
        Step("remove");
        m_system->Remove(path);
    }

    std::uint32_t ProcessNumber() override { return m_system->ProcessNumber(); }

    bool IsRunning(std::uint32_t process) override { return m_system->IsRunning(process); }

    void Append(const std::string& path, std::string_view bytes) override
    {
        Step("append");
        m_system->Append(path, bytes);
    }

private:
    class File final : public WritableFile
    {
    public:
        File(ScriptedFileOperations& script, std::unique_ptr<WritableFile> file)
            : m_script(script), m_file(std::move(file))
        {
        }

        File(const File&) = delete;
        File& operator=(const File&) = delete;

        ~File() override
        {
            if (!m_closed) {
                m_script.m_steps.emplace_back("drop");
            }
        }

        std::size_t Write(std::string_view bytes) override
        {
            m_script.Step("write");
            bytes = bytes.substr(0, m_script.m_most);
            if (m_script.m_losesBytes && bytes.size() > 1) {
                return m_file->Write(bytes.substr(0, bytes.size() - 1)) + 1;
            }
            return m_file->Write(bytes);
        }

        void Sync() override
        {
            m_script.Step("sync");
            m_file->Sync();
        }

        void Close() override
        {
            m_script.Step("close");
            m_file->Close();
            m_closed = true;
        }

    private:
        ScriptedFileOperations& m_script;
        std::unique_ptr<WritableFile> m_file;
        bool m_closed = false;
    };

    struct Failure {
        std::string step;
        ErrorNumber number;
        int times;
        int before;
    };

    void Step(const std::string& step)
    {
        m_steps.push_back(step);
        const auto failure = std::find_if(m_failures.begin(), m_failures.end(),
                                          [&](const Failure& scripted) { return scripted.step == step; });
        if (failure == m_failures.end() || failure->before-- > 0) {
            return;
        }
        const ErrorNumber number = failure->number;
        if (--failure->times == 0) {
            m_failures.erase(failure);
        }
        throw Error(number);
    }

    std::unique_ptr<FileOperations> m_system = SystemFileOperations();
    std::vector<Failure> m_failures;
    std::string m_created;
    std::vector<std::string> m_steps;
    std::size_t m_most = std::string_view::npos;
    bool m_losesBytes = false;
    bool m_exchanges = true;
    std::function<void()> m_beforeExchange;
    std::function<void()> m_afterExchange;
};
