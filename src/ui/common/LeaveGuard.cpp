#include "LeaveGuard.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTabBar>
#include <QWheelEvent>
#include <QWindow>

#include <utility>

namespace Tarno
{

namespace
{

bool IsWithin(const QWidget* widget, const QWidget* box)
{
    return box == widget || box->isAncestorOf(widget);
}

/// The widget or the nearest one around it for which `wanted` holds, up to the window.
template <typename Wanted>
QWidget* Nearest(QWidget* widget, Wanted&& wanted)
{
    while (widget != nullptr && !wanted(widget)) {
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return widget;
}

/// Whether a press on it acts or moves the focus; a disabled button may be enabled by the check.
bool ActsOnPress(const QWidget* widget)
{
    const bool takesFocus = (widget->focusPolicy() & Qt::ClickFocus) != 0 && widget->isEnabled();
    return takesFocus || qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QTabBar*>(widget) != nullptr;
}

bool IsMnemonic(const QAbstractButton& button, const QKeyEvent& key)
{
    return !button.shortcut().isEmpty() && button.shortcut() == QKeySequence(key.keyCombination());
}

} // namespace

LeaveGuard::LeaveGuard(QWidget* window) : QObject(window), m_window(window)
{
    qApp->installEventFilter(this);
}

void LeaveGuard::Add(QWidget* box, Check check)
{
    m_checks[box] = std::move(check);
}

void LeaveGuard::SetSaveButton(QAbstractButton* button)
{
    m_save = button;
}

bool LeaveGuard::Leave()
{
    QWidget* box = FocusedBox();
    return box == nullptr || m_checks[box]();
}

QWidget* LeaveGuard::FocusedBox() const
{
    for (QWidget* widget = m_window->focusWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (m_checks.contains(widget)) {
            return widget;
        }
    }
    return nullptr;
}

bool LeaveGuard::IsOwn(const QObject* widget) const
{
    return widget->isWidgetType() && static_cast<const QWidget*>(widget)->window() == m_window;
}

bool LeaveGuard::eventFilter(QObject* receiver, QEvent* event)
{
    if (!m_window->isVisible()) {
        return false;
    }
    switch (event->type()) {
    // at the window, not at the widget: before the widget hears of a press the focus has moved
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return receiver == m_window->windowHandle() &&
               RefusesPress(static_cast<QMouseEvent*>(event)->position().toPoint());
    case QEvent::Wheel:
        return receiver == m_window->windowHandle() &&
               RefusesWheel(static_cast<QWheelEvent*>(event)->position().toPoint());
    case QEvent::ShortcutOverride:
        // before the shortcuts are looked up: the check may enable the button
        if (IsOwn(receiver) && IsMnemonicOfDisabledSave(*static_cast<QKeyEvent*>(event))) {
            Leave();
        }
        return false;
    case QEvent::KeyPress:
        // a key that nobody wants also visits the parents; once is enough
        return receiver == m_window->focusWidget() && RefusesKey(*static_cast<QKeyEvent*>(event));
    case QEvent::Shortcut:
        return IsOwn(receiver) && !Leave();
    case QEvent::Close:
        if (receiver == m_window && !Leave()) {
            event->ignore();
            return true;
        }
        return false;
    default:
        return false;
    }
}

bool LeaveGuard::RefusesPress(const QPoint& position)
{
    QWidget* box = FocusedBox();
    QWidget* pressed = Nearest(m_window->childAt(position), ActsOnPress);
    return box != nullptr && pressed != nullptr && !IsWithin(pressed, box) && !Leave();
}

bool LeaveGuard::RefusesWheel(const QPoint& position)
{
    QWidget* turned = m_window->childAt(position);
    if (Nearest(turned, [](QWidget* widget) { return qobject_cast<QTabBar*>(widget) != nullptr; }) !=
        nullptr) {
        return !Leave();
    }
    // a list that drops down would change without ever having had the focus
    const QWidget* list =
        Nearest(turned, [](QWidget* widget) { return qobject_cast<QComboBox*>(widget) != nullptr; });
    return list != nullptr && !list->hasFocus();
}

bool LeaveGuard::IsMnemonicOfDisabledSave(const QKeyEvent& key) const
{
    return m_save != nullptr && !m_save->isEnabled() && IsMnemonic(*m_save, key);
}

bool LeaveGuard::RefusesKey(const QKeyEvent& key)
{
    // a mnemonic that found its button disabled, even now, is no letter for the box
    if (IsMnemonicOfDisabledSave(key)) {
        return true;
    }
    switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
        return !Leave();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // in a box of several lines it is a line break
        return qobject_cast<QLineEdit*>(m_window->focusWidget()) != nullptr && !Leave();
    default:
        return false;
    }
}

} // namespace Tarno
