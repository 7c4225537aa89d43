#pragma once

#include <QString>
#include <QWidget>
#include <QtTest/QTest>

#include <functional>
#include <map>
#include <vector>

namespace Tarno
{

/// What is done with a window while it is on the screen.
using Visit = std::function<void(QWidget& window)>;

/// A window of the program in one state, over the sample log unless its name says otherwise.
struct WindowState {
    const char* name;
    /// Opens the window, waits until it is active, visits it once and closes it.
    std::function<void(const Visit& visit)> show;
    /// How often Esc is pressed until it has closed; 0 where Esc leaves it open.
    int escapes = 1;
    /// Whether Tab goes round the controls; not where it closes a list or walks along links, or where a
    /// refused box keeps the focus.
    bool tabGoesRound = true;
};

/// Every window of the program in every state in which it looks different.
const std::vector<WindowState>& EveryWindow();

/// The state of that name; the test ends when there is none.
const WindowState& StateOf(const QString& name);

/// Adds a row for each wanted state to the data of a test; its column is "state".
void AddEveryWindow(const std::function<bool(const WindowState&)>& wanted = [](const WindowState&) {
    return true;
});

/// Visits each state once for all rows that check it, when the first of them runs, and stores what was found.
template <typename Findings>
class SharedVisits
{
public:
    /// `inspect` returns its findings and leaves it to the rows to compare them: a macro of Qt Test would
    /// fail only the row that happens to run first.
    explicit SharedVisits(Findings (*inspect)(QWidget& window)) : m_inspect(inspect) {}

    /// The findings in the state that the column "state" of the current row names. If the test fails during
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
