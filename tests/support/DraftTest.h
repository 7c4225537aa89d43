#pragma once

#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/common/DraftKeeper.h"

#include <QTimer>

namespace Tarno
{

// Helpers for the drafts of editing windows.

/// Returns the timer that writes the draft of an editing window.
inline QTimer& DraftTimer(const QWidget& editor)
{
    return Find<QTimer>(editor, "tDraft");
}

/// Lets the timer of the draft run only when the test wants it. Call this before any change.
inline void HoldDraft(const QWidget& editor)
{
    DraftTimer(editor).setInterval(std::chrono::hours(24));
}

/// Lets the time pass until the draft is due. The timer must be running.
inline void PassDraftTime(const QWidget& editor, const Caller& caller = Caller::Current())
{
    QTimer& timer = DraftTimer(editor);
    if (!timer.isActive()) {
        FailAt(caller, "no draft is due");
        return;
    }
    const auto interval = timer.intervalAsDuration();
    timer.start(0);
    Await([&] { return !timer.isActive(); }, "no draft was written", caller);
    timer.setInterval(interval);
}

/// Returns the drafts of the log.
inline std::vector<Draft> DraftsOf(TestProgram& program)
{
    return program.drafts.List(LogOfDrafts(program.program));
}

/// Returns the only draft of the log.
inline Draft OnlyDraft(TestProgram& program, const Caller& caller = Caller::Current())
{
    std::vector<Draft> drafts = DraftsOf(program);
    if (drafts.size() != 1) {
        FailAt(caller, qPrintable(QStringLiteral("%1 drafts").arg(drafts.size())));
        return {};
    }
    return std::move(drafts.front());
}

/// Returns a value of the only draft of the log.
inline std::string DraftValue(TestProgram& program, std::size_t position,
                              const Caller& caller = Caller::Current())
{
    const Draft draft = OnlyDraft(program, caller);
    return position < draft.values.size() ? draft.values[position] : "(missing value)";
}

} // namespace Tarno
