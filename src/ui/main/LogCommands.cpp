#include "LogCommands.h"

#include "core/ErrorLog.h"
#include "qt/Icons.h"
#include "qt/Strings.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

namespace Tarno
{

LogCommands::LogCommands(QWidget* window) : QObject(window), m_popUp(new QMenu(window))
{
    m_popUp->setObjectName(QStringLiteral("popPopup"));
}

void LogCommands::Connect(QAction* action, const std::string& routine, const Run& run)
{
    connect(action, &QAction::triggered, this, [this, routine, run] {
        Q_EMIT Started();
        Trap("fTarno", routine, run);
    });
}

void LogCommands::Add(QAction* action, Needs needs, const Run& run)
{
    Connect(action, ToUtf8(action->objectName()) + "_Click", run);
    m_commands.push_back({{action}, needs});
}

void LogCommands::AddButton(QAction* button, const char* icon, const char* popUpCaption, Needs needs,
                            const Run& run)
{
    button->setIcon(DrawnIcon(QLatin1String(icon)));
    const auto index = m_popUp->actions().size();
    QAction* item = m_popUp->addAction(button->icon(), QLatin1String(popUpCaption));
    item->setObjectName(QStringLiteral("miPopUp_") + QString::number(index));
    // shows the key without reacting to it, because if both did, neither would work
    item->setShortcut(button->shortcut());
    item->setShortcutContext(Qt::WidgetShortcut);
    item->setShortcutVisibleInContextMenu(true);
    Connect(button, "tlbTarno_ButtonClick", run);
    Connect(item, "miPopup_Click", run);
    m_commands.push_back({{button, item}, needs});
}

void LogCommands::AddSeparator()
{
    m_popUp->addSeparator();
}

void LogCommands::Enable(const Situation& situation)
{
    const auto isMet = [&situation](Needs needs) {
        switch (needs) {
        case Needs::ReadableLog:
            return situation.isReadable;
        case Needs::NewTrip:
            return situation.canAddTrip;
        case Needs::AnyTrip:
            return situation.hasTrips;
        case Needs::Row:
            return situation.hasRows;
        case Needs::RowAndNewTrip:
            return situation.hasRows && situation.canAddTrip;
        case Needs::FoundRow:
            return situation.hasRows && situation.isRestricted;
        case Needs::Nothing:
            break;
        }
        return true;
    };
    for (const Command& command : m_commands) {
        for (QAction* action : command.actions) {
            action->setEnabled(isMet(command.needs));
        }
    }
}

void LogCommands::ShowPopUp(const QPoint& position)
{
    m_popUp->popup(position);
}

} // namespace Tarno
