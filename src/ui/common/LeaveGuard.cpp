#include "LeaveGuard.h"

#include "RefusalNote.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabBar>
#include <QTabWidget>
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

/// Returns the nearest of `widget` and its ancestors, up to the window, for which `wanted` is true.
template <typename Wanted>
QWidget* Nearest(QWidget* widget, Wanted&& wanted)
{
    while (widget != nullptr && !wanted(widget)) {
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return widget;
}

/// Whether a mouse press on `widget` triggers it or moves the focus. Disabled buttons count, because the
/// check may enable them.
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

LeaveGuard::LeaveGuard(QWidget* window) : QObject(window), m_window(window), m_note(new RefusalNote(window))
{
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &LeaveGuard::FocusChanged);
}

void LeaveGuard::FocusChanged(QWidget* old, QWidget* now)
{
    if (now == nullptr || !BelongsToWindow(now)) {
        return;
    }
    if (qobject_cast<QPushButton*>(now) == nullptr) {
        m_lastInput = now;
    }
    if (m_unchecked.contains(old)) { // an assistive tool has moved the focus
        const auto check = [this, old] {
            if (m_unchecked.contains(old)) {
                RunCheck(old);
            }
        };
        QMetaObject::invokeMethod(this, check, Qt::QueuedConnection); // a check may show a message
    }
}

void LeaveGuard::Add(QWidget* box, Check check, const QString& refusal)
{
    m_boxes[box] = {std::move(check), refusal};
}

void LeaveGuard::SetSaveButton(QAbstractButton* button)
{
    m_save = button;
}

void LeaveGuard::Edited(QWidget* box)
{
    if (!m_window->isVisible() || m_isShowing) {
        return;
    }
    m_unchecked.insert(box);
    m_note->HideAt(box);
    Q_EMIT BoxEdited();
    if (FocusedBox() != box) {
        RunCheck(box);
    }
}

void LeaveGuard::WhileShowing(const std::function<void()>& show)
{
    const QScopedValueRollback showing(m_isShowing, true);
    show();
    m_unchecked.clear();
}

bool LeaveGuard::RunCheck(QWidget* box)
{
    const auto& [check, refusal] = m_boxes.at(box);
    m_unchecked.erase(box);
    const bool isAccepted = check();
    if (isAccepted) {
        m_note->HideAt(box);
    } else {
        m_unchecked.insert(box);
        m_note->ShowAt(box, refusal);
    }
    return isAccepted;
}

bool LeaveGuard::Leave()
{
    QWidget* box = FocusedBox();
    return box == nullptr || RunCheck(box);
}

bool LeaveGuard::LeaveAll()
{
    if (!Leave()) {
        return false;
    }
    for (QWidget* box : std::set(m_unchecked)) {
        if (!RunCheck(box)) {
            ShowPageOf(box);
            box->setFocus();
            return false;
        }
    }
    return true;
}

void LeaveGuard::ShowPageOf(const QWidget* box)
{
    for (auto* pages : m_window->findChildren<QTabWidget*>()) {
        for (int page = 0; page < pages->count(); ++page) {
            if (pages->widget(page)->isAncestorOf(box)) {
                pages->setCurrentIndex(page);
            }
        }
    }
}

void LeaveGuard::ReturnFocus()
{
    if (m_lastInput != nullptr && m_lastInput->isVisible()) {
        m_lastInput->setFocus();
    }
}

QWidget* LeaveGuard::FocusedBox() const
{
    for (QWidget* widget = m_window->focusWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (m_boxes.contains(widget)) {
            return widget;
        }
    }
    return nullptr;
}

bool LeaveGuard::BelongsToWindow(const QObject* widget) const
{
    return widget->isWidgetType() && static_cast<const QWidget*>(widget)->window() == m_window;
}

bool LeaveGuard::eventFilter(QObject* receiver, QEvent* event)
{
    if (!m_window->isVisible()) {
        return false;
    }
    switch (event->type()) {
    // filtered at the native window: the focus moves before the widget receives the press
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return receiver == m_window->windowHandle() && RefusesPress(*static_cast<QMouseEvent*>(event));
    case QEvent::Wheel:
        if (const auto* list = qobject_cast<QComboBox*>(receiver); list != nullptr && BelongsToWindow(list)) {
            event->setAccepted(list->hasFocus()); // without the focus it would change without its check
            return !list->hasFocus();             // Qt passes the event to the parent, which may scroll
        }
        return receiver == m_window->windowHandle() &&
               RefusesWheel(static_cast<QWheelEvent*>(event)->position().toPoint());
    case QEvent::ShortcutOverride:
        // this event precedes the shortcut lookup, and the check may enable the button
        if (BelongsToWindow(receiver) && IsMnemonicOfDisabledSave(*static_cast<QKeyEvent*>(event))) {
            LeaveAll();
        }
        return false;
    case QEvent::KeyPress:
        // an unhandled key propagates to the parents, but is checked once only
        return receiver == m_window->focusWidget() && RefusesKey(*static_cast<QKeyEvent*>(event));
    case QEvent::Shortcut:
        return BelongsToWindow(receiver) && !Leave();
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

bool LeaveGuard::RefusesPress(const QMouseEvent& press)
{
    const QPointF position = press.position(); // events during the check change that of the press
    const QPointF globalPosition = press.globalPosition();
    const QWidget* pressed = Nearest(m_window->childAt(position.toPoint()), ActsOnPress);
    const QWidget* box = FocusedBox();
    bool isRefused = false;
    if (pressed != nullptr && pressed == m_save) {
        isRefused = !LeaveAll();
    } else if (pressed != nullptr && box != nullptr && !IsWithin(pressed, box)) {
        isRefused = !Leave();
    }
    if (!isRefused && press.spontaneous() && !QGuiApplication::mouseButtons().testFlag(press.button())) {
        // the release went to a message that the check has shown, so the whole click is repeated
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const bool isDown = type == QEvent::MouseButtonPress;
            QCoreApplication::postEvent(
                m_window->windowHandle(),
                new QMouseEvent(type, position, position, globalPosition, press.button(),
                                isDown ? Qt::MouseButtons(press.button()) : Qt::NoButton, press.modifiers()));
        }
        return true;
    }
    return isRefused;
}

bool LeaveGuard::RefusesWheel(const QPoint& position)
{
    const QWidget* tabs = Nearest(m_window->childAt(position),
                                  [](QWidget* widget) { return qobject_cast<QTabBar*>(widget) != nullptr; });
    return tabs != nullptr && !Leave();
}

bool LeaveGuard::IsMnemonicOfDisabledSave(const QKeyEvent& key) const
{
    return m_save != nullptr && !m_save->isEnabled() && IsMnemonic(*m_save, key);
}

bool LeaveGuard::RefusesKey(const QKeyEvent& key)
{
    // the mnemonic of a button that is still disabled must not reach the box as text
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
        // in a multi-line box Enter inserts a line break
        return qobject_cast<QLineEdit*>(m_window->focusWidget()) != nullptr && !Leave();
    default:
        return false;
    }
}

} // namespace Tarno
