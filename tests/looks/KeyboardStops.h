#pragma once

#include "Controls.h"
#include "EveryWindow.h"
#include "support/Windows.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QSet>
#include <QShortcut>
#include <QTableView>

#include <algorithm>

namespace Tarno
{

// Keyboard access to the controls of a window: shortcuts, tab stops and typing in lists.

/// Returns the shortcuts of the window, each as often as it is assigned.
inline QStringList Shortcuts(const QWidget& window)
{
    QList<QKeySequence> keys;
    for (const QWidget* control : Controls(window)) {
        if (!control->isEnabled()) {
            continue;
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
            keys << button->shortcut();
        } else if (const auto* frame = qobject_cast<const QGroupBox*>(control)) {
            keys << QKeySequence::mnemonic(frame->title());
        } else if (const auto* label = qobject_cast<const QLabel*>(control)) {
            keys << (label->buddy() != nullptr ? QKeySequence::mnemonic(label->text()) : QKeySequence());
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(control)) {
            for (int tab = 0; tab < tabs->count(); ++tab) {
                keys << QKeySequence::mnemonic(tabs->tabText(tab));
            }
        }
    }
    for (const QAction* action : window.findChildren<QAction*>()) {
        const bool isActive = action->isEnabled() && action->shortcutContext() != Qt::WidgetShortcut;
        keys << (isActive ? action->shortcuts() : QList<QKeySequence>());
    }
    for (const QShortcut* shortcut : window.findChildren<QShortcut*>()) {
        keys << (shortcut->context() == Qt::WidgetShortcut ? QKeySequence() : shortcut->key());
    }
    keys.removeAll(QKeySequence());
    QStringList names;
    for (const QKeySequence& key : keys) {
        names << key.toString();
    }
    return names;
}

/// Returns the shortcuts that are assigned more than once.
inline QStringList RepeatedShortcuts(const QWidget& window)
{
    QStringList repeated;
    QSet<QString> keys;
    for (const QString& key : Shortcuts(window)) {
        if (keys.contains(key)) {
            repeated << key;
        }
        keys << key;
    }
    return repeated;
}

inline QStringList Sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

/// Returns the name of the tab stop of a control: its own, or that of its option group.
inline QString TabStopName(const QWidget* control)
{
    static const QRegularExpression number(QStringLiteral("_[0-9]+$"));
    return control != nullptr ? NameOf(*control).remove(number) : QString();
}

/// Returns the sorted tab stops that the window must have.
inline QStringList ExpectedTabStops(const QWidget& window)
{
    QSet<QString> stops;
    for (const QWidget* control : Controls(window)) {
        if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0 &&
            control->focusProxy() == nullptr) {
            stops << TabStopName(control);
        }
    }
    return Sorted(stops.values());
}

/// Returns the tab stops in the order in which `key` visits them, starting at the focused control.
inline QStringList VisitedTabStops(const QWidget& window, Qt::Key key)
{
    constexpr int maximum = 100; // more than any window has
    QStringList stops{TabStopName(window.focusWidget())};
    for (int step = 0; step < maximum; ++step) {
        Press(window, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        const QString stop = TabStopName(window.focusWidget());
        if (stop == stops.first()) {
            return stops;
        }
        stops << stop;
    }
    return stops << QStringLiteral("...");
}

struct TabStops {
    QStringList expected; ///< sorted
    QStringList byTab;
    QStringList byShiftTab;
};

/// Cycles through the window with Tab, then with Shift+Tab.
inline TabStops FindTabStops(QWidget& window)
{
    VisitedTabStops(window, Qt::Key_Tab); // leaving a box may enable or disable "Save"
    const QStringList expected = ExpectedTabStops(window);
    const QStringList byTab = VisitedTabStops(window, Qt::Key_Tab);
    return {expected, byTab, VisitedTabStops(window, Qt::Key_Backtab)};
}

/// Returns the text that a user types to find a row: its first characters, without those missing on
/// keyboards.
inline QString Typed(const QString& text)
{
    static const QRegularExpression beginning(QStringLiteral("^[A-Za-z0-9/-]{1,10}"));
    return beginning.match(text).captured();
}

/// Types the beginning of the last row of `rows` into `control` and returns the typed text.
inline QString TypeLastRow(QWidget& control, const QAbstractItemModel& rows, int column)
{
    const QString typed = Typed(rows.index(rows.rowCount() - 1, column).data().toString());
    control.setFocus();
    Type(*control.window(), qPrintable(typed));
    return typed;
}

inline bool HasItem(const QMenu& menu, const QString& text)
{
    // "..." in a menu item announces a window
    const QList<QAction*> items = menu.actions();
    return std::any_of(items.begin(), items.end(), [&](const QAction* item) {
        return item->text().remove(QLatin1String("...")) == text;
    });
}

/// Returns the tools without a shortcut and without an item in the window's menu that Tab does not reach
/// either.
inline QStringList UnreachableTools(const QWidget& window)
{
    const auto* menu = window.findChild<QMenu*>(QStringLiteral("popPopup"));
    QStringList unreachable;
    for (const QToolButton* tool : ControlsOfKind<QToolButton>(window)) {
        const QAction* action = tool->defaultAction();
        if ((tool->focusPolicy() & Qt::TabFocus) != 0) {
            continue;
        }
        if (action == nullptr) {
            unreachable << NameOf(*tool) + QStringLiteral(" has no action");
        } else if (action->shortcut().isEmpty() && (menu == nullptr || !HasItem(*menu, action->text()))) {
            unreachable << NameOf(*tool);
        }
    }
    return unreachable;
}

/// Returns the lists in which the user can find a row by typing.
inline QList<QAbstractItemView*> SearchableLists(const QWidget& window)
{
    QList<QAbstractItemView*> lists = ControlsOfKind<QAbstractItemView>(window);
    lists.removeIf([](const QAbstractItemView* list) {
        return !list->isEnabled() || list->focusPolicy() == Qt::NoFocus || list->model()->rowCount() == 0 ||
               qobject_cast<const QTableView*>(list) != nullptr; // the days of a month are no list
    });
    return lists;
}

/// Returns the combo boxes in which the user can find an item by typing.
inline QList<QComboBox*> SearchableChoices(const QWidget& window)
{
    QList<QComboBox*> choices = ControlsOfKind<QComboBox>(window);
    choices.removeIf(
        [](const QComboBox* box) { return !box->isEnabled() || box->isEditable() || box->count() == 0; });
    return choices;
}

inline bool TabCycles(const WindowState& state)
{
    return state.tabCycles;
}

} // namespace Tarno
