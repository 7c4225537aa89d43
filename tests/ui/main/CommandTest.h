#pragma once

#include "MainTest.h"

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Tarno
{

// Helpers to run the commands of the main window as its user does.

using Texts = std::vector<std::string>;

enum class Way { Toolbar, Menu, Key, DoubleClick, Enter };

/// A log with one location and two trips there.
class TwoTrips : public TestProgram
{
public:
    TwoTrips()
    {
        Start();
        AddLocation("Pittwater");
        for (const char* date : {"2003-02-05", "2003-02-06"}) {
            AddEntry({{EntryField::StartDate, date},
                      {EntryField::EndDate, date},
                      {EntryField::LocNo, "1"},
                      {EntryField::MoonPhase, "45"},
                      {EntryField::Major1, "04:01"},
                      {EntryField::Major2, "16:26"},
                      {EntryField::Minor1, "10:13"},
                      {EntryField::Minor2, "22:37"}});
        }
    }
};

inline void CloseWindow(QDialog& window)
{
    window.close();
}

/// Runs a command in the given way.
inline void Run(QWidget& window, Way way, const char* button, int menuIndex, Qt::Key key,
                Qt::KeyboardModifiers modifiers = {})
{
    switch (way) {
    case Way::Toolbar:
        ClickCommand(window, button);
        break;
    case Way::Menu:
        MenuItem(window, menuIndex).trigger();
        break;
    case Way::Key:
        Press(window, key, modifiers);
        break;
    case Way::DoubleClick:
        QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, PointInRow(window, 1));
        break;
    case Way::Enter:
        Press(window, Qt::Key_Return);
        break;
    }
}

inline void AddWays(std::initializer_list<Way> ways)
{
    static const std::map<Way, const char*> names{{Way::Toolbar, "toolbar"},
                                                  {Way::Menu, "menu"},
                                                  {Way::Key, "key"},
                                                  {Way::DoubleClick, "double click"},
                                                  {Way::Enter, "Enter"}};
    QTest::addColumn<Way>("way");
    for (const Way way : ways) {
        QTest::newRow(names.at(way)) << way;
    }
}

/// Returns the keys of the enabled buttons. Adds a text for each menu item whose state differs from its
/// button.
inline Texts EnabledCommands(const QWidget& window)
{
    const std::initializer_list<std::pair<const char*, int>> commands{
        {"icoAdd", 0},     {"icoEdit", 1},  {"icoDelete", 2}, {"Earth", 3},
        {"icoReports", 4}, {"icoAbout", 5}, {"icoTides", 7}};
    Texts enabled;
    for (const auto& [button, menuIndex] : commands) {
        if (Command(window, button).isEnabled()) {
            enabled.emplace_back(button);
        }
        if (Command(window, button).isEnabled() != MenuItem(window, menuIndex).isEnabled()) {
            enabled.emplace_back("(differs in the menu)");
        }
    }
    return enabled;
}

inline const Texts allCommands{"icoAdd",     "icoEdit",  "icoDelete", "Earth",
                               "icoReports", "icoAbout", "icoTides"};

} // namespace Tarno

Q_DECLARE_METATYPE(Tarno::Way)
