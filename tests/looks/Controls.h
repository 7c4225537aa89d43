#pragma once

#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollArea>
#include <QStringList>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>

namespace Tarno
{

// The controls of a window as its user perceives them.

/// Whether Qt composes `widget` of internal widgets, such as viewports, scroll bars and line edits.
inline bool IsComposite(const QWidget& widget)
{
    return (qobject_cast<const QAbstractScrollArea*>(&widget) != nullptr &&
            qobject_cast<const QScrollArea*>(&widget) == nullptr) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QMenuBar*>(&widget) != nullptr ||
           qobject_cast<const QTabBar*>(&widget) != nullptr;
}

/// Whether `widget` is an internal part of a composite control.
inline bool IsPart(const QWidget& widget)
{
    const QWidget* around = widget.parentWidget();
    while (around != nullptr && !IsComposite(*around)) {
        around = widget.isWindow() || around->isWindow() ? nullptr : around->parentWidget();
    }
    // a QScrollArea is a container, of which only viewport and scroll bars are internal
    return around != nullptr || widget.objectName().startsWith(QLatin1String("qt_scrollarea_")) ||
           (widget.parentWidget() != nullptr &&
            widget.parentWidget()->objectName().startsWith(QLatin1String("qt_scrollarea_")) &&
            qobject_cast<const QAbstractSlider*>(&widget) != nullptr);
}

/// Returns the visible controls and containers of `window`.
inline QList<QWidget*> Controls(const QWidget& window)
{
    QList<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &window && !IsPart(*widget)) {
            controls << widget;
        }
    }
    return controls;
}

/// Returns the visible controls of the type `Kind`.
template <typename Kind>
QList<Kind*> ControlsOfKind(const QWidget& window)
{
    QList<Kind*> controls;
    for (QWidget* widget : Controls(window)) {
        if (auto* control = qobject_cast<Kind*>(widget); control != nullptr) {
            controls << control;
        }
    }
    return controls;
}

/// Returns the name of a control for failure messages: its object name, or that of its action.
inline QString NameOf(const QWidget& widget)
{
    const auto* tool = qobject_cast<const QToolButton*>(&widget);
    const QString name = tool != nullptr && tool->defaultAction() != nullptr
                             ? tool->defaultAction()->objectName()
                             : widget.objectName();
    return name.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : name;
}

/// Joins texts, so that a failed comparison shows all of them.
inline QString Joined(const QStringList& texts)
{
    return texts.join(QLatin1String(", "));
}

} // namespace Tarno
