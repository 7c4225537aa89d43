#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

/// What is done with a window while it stands on the screen.
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
