#pragma once

#include <QSize>
#include <QString>
#include <QWidget>
#include <QtTest/QTest>

#include <functional>
#include <map>
#include <vector>

namespace Tarno
{

/// A function that is called with a window while it is shown.
using Visit = std::function<void(QWidget& window)>;

/// A window of the program in one state, with the sample log unless the name states otherwise.
struct WindowState {
    const char* name;
    /// Opens the window, waits until it is active, visits it once and closes it.
    std::function<void(const Visit& visit)> show;
    /// The number of Esc presses that close the window, or 0 if Esc does not close it.
    int escapes = 1;
    /// Whether Tab cycles through the controls. It does not if it closes a list, moves between links or
    /// between the parts of a date, or if a refused box keeps the focus.
    bool tabCycles = true;
};

/// Returns every window of the program in every state that looks different.
const std::vector<WindowState>& EveryWindow();

/// Returns the state with that name. Aborts the test program if the name is unknown.
const WindowState& StateOf(const QString& name);

/// Sets the screen to which the windows are fitted when they are shown. By default, it is as large as a
/// common one.
void SetScreen(const QSize& size);

/// Adds the column "state" and a row for each wanted state to the data of a test.
void AddEveryWindow(const std::function<bool(const WindowState&)>& wanted = [](const WindowState&) {
    return true;
});

/// Visits each state once, when the first row that checks it runs, and caches the findings for the other
/// rows.
template <typename Findings>
class SharedVisits
{
public:
    /// `inspect` only collects findings. The rows compare them, because a Qt Test macro in `inspect` would
    /// fail only the row that runs first.
    explicit SharedVisits(Findings (*inspect)(QWidget& window)) : m_inspect(inspect) {}

    /// Returns the findings for the state in the column "state" of the current row. If the test fails during
    /// the visit, for example because the window does not open, the next row visits the state again.
    Findings Found()
    {
        QFETCH(QString, state);
        if (const auto stored = m_stored.find(state); stored != m_stored.end()) {
            return stored->second;
        }
        Findings findings;
        StateOf(state).show([&](QWidget& window) { findings = m_inspect(window); });
        if (!QTest::currentTestFailed()) {
            m_stored.emplace(state, findings);
        }
        return findings;
    }

private:
    Findings (*m_inspect)(QWidget& window);
    std::map<QString, Findings> m_stored;
};

} // namespace Tarno
