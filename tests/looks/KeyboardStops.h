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

#include <algorithm>

namespace Tarno
{

// What a keyboard finds in a window.

/// The keys that act in the whole window, each as often as something in it claims it.
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
        keys << (action->isEnabled() ? action->shortcuts() : QList<QKeySequence>());
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

/// The keys of `Shortcuts` that more than one thing claims.
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

/// The stop of Tab at which a control stands: itself, or the group of its options.
inline QString Stop(const QWidget* control)
{
    static const QRegularExpression number(QStringLiteral("_[0-9]+$"));
    return control != nullptr ? NameOf(*control).remove(number) : QString();
}

/// The stops at which Tab has to come by, sorted.
inline QStringList ExpectedStops(const QWidget& window)
{
    QSet<QString> stops;
    for (const QWidget* control : Controls(window)) {
        if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0 &&
            control->focusProxy() == nullptr) {
            stops << Stop(control);
        }
    }
    return Sorted(stops.values());
}

/// The stops at which `key` comes by, from the control with the focus until it comes there again.
inline QStringList StopsBy(const QWidget& window, Qt::Key key)
{
    constexpr int more = 100; // than any window has
    QStringList stops{Stop(window.focusWidget())};
    for (int step = 0; step < more; ++step) {
        Press(window, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        const QString stop = Stop(window.focusWidget());
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

/// Walks round the window with Tab and back with Shift+Tab.
inline TabStops WalkRound(QWidget& window)
{
    StopsBy(window, Qt::Key_Tab); // a box that is left decides whether there is something to save
    const QStringList expected = ExpectedStops(window);
    const QStringList byTab = StopsBy(window, Qt::Key_Tab);
    return {expected, byTab, StopsBy(window, Qt::Key_Backtab)};
}

/// What a user types to find a row: its beginning, as far as it stands on the keyboard.
inline QString Typed(const QString& text)
{
    static const QRegularExpression beginning(QStringLiteral("^[A-Za-z0-9-]{1,10}"));
    return beginning.match(text).captured();
}

/// Types the beginning of the last row of `rows` into `control`; returns it.
inline QString TypeLastRow(QWidget& control, const QAbstractItemModel& rows, int column)
{
    const QString typed = Typed(rows.index(rows.rowCount() - 1, column).data().toString());
    control.setFocus();
    Type(*control.window(), qPrintable(typed));
    return typed;
}

inline bool HasItem(const QMenu& menu, const QString& text)
{
    // a menu's item may say that a window comes
    const QList<QAction*> items = menu.actions();
    return std::any_of(items.begin(), items.end(), [&](const QAction* item) {
        return item->text().remove(QLatin1String("...")) == text;
    });
}

/// The tools that have neither a key nor an item in the menu of the window.
inline QStringList UnreachableTools(const QWidget& window)
{
    const auto* menu = window.findChild<QMenu*>(QStringLiteral("popPopup"));
    QStringList unreachable;
    for (const QToolButton* tool : ControlsOfKind<QToolButton>(window)) {
        const QAction* action = tool->defaultAction();
        if (action == nullptr) {
            unreachable << NameOf(*tool) + QStringLiteral(" has no action");
        } else if (action->shortcut().isEmpty() && (menu == nullptr || !HasItem(*menu, action->text()))) {
            unreachable << NameOf(*tool);
        }
    }
    return unreachable;
}

/// The lists in which a user can type to find a row.
inline QList<QAbstractItemView*> SearchableLists(const QWidget& window)
{
    QList<QAbstractItemView*> lists = ControlsOfKind<QAbstractItemView>(window);
    lists.removeIf(
        [](const QAbstractItemView* list) { return !list->isEnabled() || list->model()->rowCount() == 0; });
    return lists;
}

/// The choices of which a user can type the beginning.
inline QList<QComboBox*> SearchableChoices(const QWidget& window)
{
    QList<QComboBox*> choices = ControlsOfKind<QComboBox>(window);
    choices.removeIf(
        [](const QComboBox* box) { return !box->isEnabled() || box->isEditable() || box->count() == 0; });
    return choices;
}

inline bool TabGoesRound(const WindowState& state)
{
    return state.tabGoesRound;
}

} // namespace Tarno
