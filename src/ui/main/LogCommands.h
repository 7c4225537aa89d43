#pragma once

#include <QObject>

#include <functional>
#include <string>
#include <vector>

class QAction;
class QMenu;
class QPoint;
class QWidget;

namespace Tarno
{

/// The commands of the main window. Each has an action in the menu bar. Some also have a button in the
/// toolbar, which shares the action, and an item in the pop-up menu of the list.
class LogCommands : public QObject
{
    Q_OBJECT

public:
    /// What must be there for a command to be enabled.
    enum class Needs {
        Nothing,
        ReadableLog,   ///< trips and locations could be read
        NewTrip,       ///< a trip can be added
        AnyTrip,       ///< a trip in the log
        Row,           ///< a trip in the list
        RowAndNewTrip, ///< both
        FoundRow       ///< a trip in the list, which a query restricts
    };

    struct Situation {
        bool isReadable;
        bool canAddTrip;
        bool hasTrips;
        bool hasRows;
        bool isRestricted;
    };

    using Run = std::function<void()>;

    /// `window` owns the object and the pop-up menu.
    explicit LogCommands(QWidget* window);

    /// Runs `run` whenever `action` is triggered. Errors are reported.
    void Add(QAction* action, Needs needs, const Run& run);
    /// Also gives the action an icon and appends an item to the pop-up menu.
    void AddButton(QAction* button, const char* icon, const char* popUpCaption, Needs needs, const Run& run);
    /// Appends a separator to the pop-up menu.
    void AddSeparator();

    /// Enables the commands whose needs are met and disables the others.
    void Enable(const Situation& situation);

    void ShowPopUp(const QPoint& position);

Q_SIGNALS:
    /// A command is about to run.
    void Started();

private:
    struct Command {
        std::vector<QAction*> actions;
        Needs needs;
    };

    void Connect(QAction* action, const std::string& routine, const Run& run);

    QMenu* m_popUp;
    std::vector<Command> m_commands;
};

} // namespace Tarno
