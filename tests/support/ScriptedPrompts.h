#pragma once

#include "core/Error.h"
#include "ui/common/Prompts.h"

#include <QStringList>
#include <QtTest/QTest>

#include <deque>
#include <functional>
#include <optional>
#include <utility>

namespace Tarno
{

// Test doubles for the prompts of the desktop. An unexpected question fails the test, and so does an expected
// question that is not asked. Questions must be asked in the expected order.

namespace Scripted
{

/// What happens while a question is shown.
using WhileShown = std::function<void()>;

inline void Fail(const QString& text)
{
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
}

inline QString Described(const Question& question)
{
    return QStringLiteral("%1 / %2 / icon %3, buttons %4, default %5")
        .arg(question.title, question.text)
        .arg(static_cast<int>(question.icon))
        .arg(static_cast<int>(question.buttons))
        .arg(static_cast<int>(question.byDefault));
}

inline QString Described(const FileQuestion& question)
{
    return QStringList{question.title, question.filter, question.folder, question.fileName}.join(
        QLatin1String(" / "));
}

/// Removes and returns the next expected question if it is `asked`; otherwise fails the test.
template <typename Expected>
std::optional<Expected> Next(std::deque<Expected>& expected, const QString& asked)
{
    if (expected.empty() || expected.front().described != asked) {
        Fail(QStringLiteral("asked: ") + asked + QStringLiteral("\n   expected: ") +
             (expected.empty() ? QStringLiteral("nothing") : expected.front().described));
        return std::nullopt;
    }
    Expected next = std::move(expected.front());
    expected.pop_front();
    return next;
}

template <typename Expected>
void FailIfAnyIsLeft(const std::deque<Expected>& expected)
{
    for (const Expected& left : expected) {
        Fail(QStringLiteral("not asked: ") + left.described);
    }
}

} // namespace Scripted

class ScriptedMessageBoxes final : public MessageBoxes
{
public:
    ScriptedMessageBoxes() = default;
    ScriptedMessageBoxes(const ScriptedMessageBoxes&) = delete;
    ScriptedMessageBoxes& operator=(const ScriptedMessageBoxes&) = delete;

    ~ScriptedMessageBoxes() override { Scripted::FailIfAnyIsLeft(m_expected); }

    void Expect(const Question& question, Button answer, Scripted::WhileShown whileShown = nullptr)
    {
        m_expected.push_back({Scripted::Described(question), answer, std::move(whileShown)});
    }

    /// Expects a box with the information icon and an OK button.
    void ExpectInformation(const QString& text, const QString& title)
    {
        Expect({.text = text, .title = title}, Button::Ok);
    }

    Button Ask(QWidget* /*parent*/, const Question& question) override
    {
        const auto next = Scripted::Next(m_expected, Scripted::Described(question));
        if (next && next->whileShown) {
            next->whileShown();
        }
        return next ? next->answer : question.byDefault;
    }

private:
    struct Expected {
        QString described;
        Button answer;
        Scripted::WhileShown whileShown;
    };

    std::deque<Expected> m_expected;
};

class ScriptedFileDialogs final : public FileDialogs
{
public:
    ScriptedFileDialogs() = default;
    ScriptedFileDialogs(const ScriptedFileDialogs&) = delete;
    ScriptedFileDialogs& operator=(const ScriptedFileDialogs&) = delete;

    ~ScriptedFileDialogs() override { Scripted::FailIfAnyIsLeft(m_expected); }

    /// The user chooses `path`, or cancels (nullopt).
    void ExpectOpen(const FileQuestion& question, const std::optional<QString>& path)
    {
        m_expected.push_back({Scripted::Described(question), path});
    }

    /// The user chooses `path` to save to, or cancels (nullopt).
    void ExpectSave(const FileQuestion& question, const std::optional<QString>& path)
    {
        m_expected.push_back({ToSave(question), path});
    }

    std::optional<QString> Save(QWidget* /*parent*/, const FileQuestion& question) override
    {
        const auto next = Scripted::Next(m_expected, ToSave(question));
        return next ? next->path : std::nullopt;
    }

    std::optional<QString> Open(QWidget* /*parent*/, const FileQuestion& question) override
    {
        const auto next = Scripted::Next(m_expected, Scripted::Described(question));
        return next ? next->path : std::nullopt;
    }

    /// The user chooses the folder `path`, or cancels (nullopt).
    void ExpectChooseFolder(const QString& title, const QString& folder, const std::optional<QString>& path)
    {
        m_expected.push_back({ToChoose(title, folder), path});
    }

    std::optional<QString> ChooseFolder(QWidget* /*parent*/, const QString& title,
                                        const QString& folder) override
    {
        const auto next = Scripted::Next(m_expected, ToChoose(title, folder));
        return next ? next->path : std::nullopt;
    }

private:
    static QString ToChoose(const QString& title, const QString& folder)
    {
        return QStringLiteral("choose folder ") + title + QStringLiteral(" / ") + folder;
    }

    static QString ToSave(const FileQuestion& question)
    {
        return QStringLiteral("save ") + Scripted::Described(question) + QStringLiteral(" / ") +
               question.suffix;
    }

    struct Expected {
        QString described;
        std::optional<QString> path;
    };

    std::deque<Expected> m_expected;
};

class ScriptedProgramStarter final : public ProgramStarter
{
public:
    ScriptedProgramStarter() = default;
    ScriptedProgramStarter(const ScriptedProgramStarter&) = delete;
    ScriptedProgramStarter& operator=(const ScriptedProgramStarter&) = delete;

    ~ScriptedProgramStarter() override { Scripted::FailIfAnyIsLeft(m_expected); }

    void ExpectStart(const QString& program, const QStringList& arguments = {}, bool starts = true)
    {
        m_expected.push_back({Started(program, arguments), starts});
    }

    void ExpectEditText(const QString& path, bool starts = true)
    {
        m_expected.push_back({Edited(path), starts});
    }

    void ExpectOpenFolder(const QString& path, bool opens = true)
    {
        m_expected.push_back({Opened(path), opens});
    }

    void Start(const QString& program, const QStringList& arguments) override
    {
        Run(Started(program, arguments));
    }

    void EditText(const QString& path) override { Run(Edited(path)); }

    void OpenFolder(const QString& path) override { Run(Opened(path)); }

private:
    struct Expected {
        QString described;
        bool starts;
    };

    static QString Started(const QString& program, const QStringList& arguments)
    {
        return QStringLiteral("start ") + (QStringList(program) + arguments).join(QLatin1Char(' '));
    }

    static QString Edited(const QString& path) { return QStringLiteral("edit ") + path; }

    static QString Opened(const QString& path) { return QStringLiteral("open ") + path; }

    void Run(const QString& asked)
    {
        const auto next = Scripted::Next(m_expected, asked);
        if (next && !next->starts) {
            throw Error(ErrorNumber::FileNotFound);
        }
    }

    std::deque<Expected> m_expected;
};

/// Printers that print nothing and keep the last job for the test.
class ScriptedPrinters final : public Printers
{
public:
    ScriptedPrinters() = default;
    ScriptedPrinters(const ScriptedPrinters&) = delete;
    ScriptedPrinters& operator=(const ScriptedPrinters&) = delete;

    ~ScriptedPrinters() override { Scripted::FailIfAnyIsLeft(m_expected); }

    /// The user prints, or cancels if `prints` is false.
    void ExpectPrint(const QString& title, int pages, bool prints = true)
    {
        m_expected.push_back({Printed(title, pages), prints, std::nullopt});
    }

    /// The user chooses `page`, or cancels (nullopt).
    void ExpectSetUpPage(const std::optional<QPageLayout>& page)
    {
        m_expected.push_back({QStringLiteral("set up page"), page.has_value(), page});
    }

    QPageLayout DefaultPage() override { return defaultPage; }

    bool Print(QWidget* /*parent*/, const PrintJob& job) override
    {
        const auto next = Scripted::Next(m_expected, Printed(job.title, job.pages));
        lastJob = job;
        return next && next->accepted;
    }

    bool SetUpPage(QWidget* /*parent*/, QPageLayout& page) override
    {
        const auto next = Scripted::Next(m_expected, QStringLiteral("set up page"));
        page = next && next->page ? *next->page : page;
        return next && next->accepted;
    }

    QPageLayout defaultPage{QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(20, 20, 20, 20),
                            QPageLayout::Millimeter};
    std::optional<PrintJob> lastJob;

private:
    struct Expected {
        QString described;
        bool accepted;
        std::optional<QPageLayout> page;
    };

    static QString Printed(const QString& title, int pages)
    {
        return QStringLiteral("print %1, pages %2").arg(title).arg(pages);
    }

    std::deque<Expected> m_expected;
};

} // namespace Tarno
