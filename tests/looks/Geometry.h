#pragma once

#include "Controls.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <QTreeView>

#include <cstdlib>

namespace Tarno
{

// Checks of the positions and sizes of controls. Each function returns a description of every fault.

inline QString Fault(const QWidget& control, const QString& what)
{
    return NameOf(control) + QLatin1Char(' ') + what;
}

/// Returns the controls that are smaller than their contents.
inline QStringList Clipped(const QWidget& window)
{
    QStringList faults;
    for (const QWidget* control : Controls(window)) {
        QSize needed;
        if (const auto* label = qobject_cast<const QLabel*>(control)) {
            needed = label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        } else if (qobject_cast<const QAbstractButton*>(control) != nullptr) {
            needed = control->sizeHint();
        } else if (qobject_cast<const QGroupBox*>(control) != nullptr ||
                   qobject_cast<const QTabBar*>(control) != nullptr ||
                   qobject_cast<const QLineEdit*>(control) != nullptr ||
                   qobject_cast<const QComboBox*>(control) != nullptr) {
            needed = control->minimumSizeHint();
        }
        if (control->objectName() == QLatin1String("qt_toolbar_ext_button")) {
            faults << QStringLiteral("tools are hidden");
            continue;
        }
        if (control->width() < needed.width() || control->height() < needed.height()) {
            faults << Fault(*control, QStringLiteral("is %1 x %2, needs %3 x %4")
                                          .arg(control->width())
                                          .arg(control->height())
                                          .arg(needed.width())
                                          .arg(needed.height()));
        }
    }
    return faults;
}

/// Returns the width available for the text of a box.
inline int TextWidth(const QLineEdit& box)
{
    // QLineEdit's size hint is 17 letters "x" plus its frame and margins
    const int padding = box.sizeHint().width() - 17 * box.fontMetrics().horizontalAdvance(QLatin1Char('x'));
    return box.width() - padding;
}

inline int TextWidth(const QComboBox& box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    return box.style()
        ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
        .width();
}

/// Whether the list elides texts of trips or places on purpose. It shows the whole text in a tool tip.
inline bool ElidesCells(const QTreeView& list)
{
    return list.objectName() == QLatin1String("lvwSimilar") ||
           list.objectName() == QLatin1String("lvwGroups");
}

/// Returns the texts in boxes, tabs and lists that do not fit.
inline QStringList Elided(const QWidget& window)
{
    QStringList faults;
    for (const QLineEdit* box : ControlsOfKind<QLineEdit>(window)) {
        if (box->fontMetrics().horizontalAdvance(box->text()) > TextWidth(*box)) {
            faults << Fault(*box, box->text());
        }
    }
    for (const QComboBox* box : ControlsOfKind<QComboBox>(window)) {
        if (box->fontMetrics().horizontalAdvance(box->currentText()) > TextWidth(*box)) {
            faults << Fault(*box, box->currentText());
        }
    }
    for (const QTabBar* tabs : ControlsOfKind<QTabBar>(window)) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            if (!tabs->rect().contains(tabs->tabRect(tab)) ||
                tabs->tabRect(tab).width() < tabs->fontMetrics().horizontalAdvance(tabs->tabText(tab))) {
                faults << Fault(*tabs, tabs->tabText(tab));
            }
        }
    }
    for (const QListView* list : ControlsOfKind<QListView>(window)) {
        if (list->horizontalScrollBar()->maximum() > 0) {
            faults << Fault(*list, QStringLiteral("is too narrow for its rows"));
        }
    }
    for (const QTreeView* list : ControlsOfKind<QTreeView>(window)) {
        const QHeaderView* header = list->header();
        for (int column = 0; column < header->count(); ++column) {
            const QString heading = list->model()->headerData(column, Qt::Horizontal).toString();
            if (header->sectionSize(column) < header->sectionSizeHint(column)) {
                faults << Fault(*list, QStringLiteral("%1: %2 < %3")
                                           .arg(heading)
                                           .arg(header->sectionSize(column))
                                           .arg(header->sectionSizeHint(column)));
            }
            for (int row = 0; row < list->model()->rowCount() && !ElidesCells(*list); ++row) {
                const QString cell = list->model()->index(row, column).data().toString();
                const int margins =
                    2 * (list->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, list) + 1);
                if (header->sectionResizeMode(column) != QHeaderView::Stretch &&
                    header->sectionSize(column) < list->fontMetrics().horizontalAdvance(cell) + margins) {
                    faults << Fault(*list, cell);
                }
            }
        }
    }
    return faults;
}

/// Whether `control` covers other controls on purpose: the open pick list, proposals, the frame for saving,
/// the note at a refused box.
inline bool IsOverlay(const QWidget& control)
{
    return control.objectName() == QLatin1String("lstList") ||
           control.objectName() == QLatin1String("lstProposals") ||
           control.objectName() == QLatin1String("lblRefusal") ||
           control.objectName() == QLatin1String("frSaved");
}

inline QStringList Overlapping(const QWidget& window)
{
    QStringList faults;
    const QList<QWidget*> controls = Controls(window);
    for (qsizetype one = 0; one < controls.size(); ++one) {
        for (qsizetype other = one + 1; other < controls.size(); ++other) {
            const QWidget& left = *controls[one];
            const QWidget& right = *controls[other];
            if (left.parentWidget() == right.parentWidget() && !IsOverlay(left) && !IsOverlay(right) &&
                left.geometry().intersects(right.geometry())) {
                faults << NameOf(left) + QStringLiteral(" and ") + NameOf(right);
            }
        }
    }
    return faults;
}

/// Whether the contents of `holder` scroll, so that they may exceed it.
inline bool Scrolls(const QWidget& holder)
{
    return holder.objectName() == QLatin1String("frPic") ||
           qobject_cast<const QScrollArea*>(holder.parentWidget()) != nullptr;
}

/// Returns the controls that exceed their parents, unless these scroll.
inline QStringList ExceedingParents(const QWidget& window)
{
    QStringList faults;
    for (const QWidget* control : Controls(window)) {
        const QWidget* holder = control->parentWidget();
        if (!Scrolls(*holder) && !holder->rect().contains(control->geometry())) {
            faults << NameOf(*control);
        }
    }
    return faults;
}

/// Whether `control` is one line high with vertically centred text.
inline bool IsOneLine(const QWidget& control)
{
    const auto* label = qobject_cast<const QLabel*>(&control);
    return (label != nullptr && !label->wordWrap() && !label->text().isEmpty() &&
            (label->alignment() & Qt::AlignTop) == 0) ||
           qobject_cast<const QLineEdit*>(&control) != nullptr ||
           qobject_cast<const QComboBox*>(&control) != nullptr ||
           qobject_cast<const QCheckBox*>(&control) != nullptr ||
           qobject_cast<const QRadioButton*>(&control) != nullptr;
}

/// Returns the neighbours in a row that are not vertically aligned.
inline QStringList Misaligned(const QWidget& window)
{
    constexpr int tolerance = 2;
    QStringList faults;
    const QList<QWidget*> controls = Controls(window);
    for (const QWidget* one : controls) {
        for (const QWidget* other : controls) {
            if (one >= other || one->parentWidget() != other->parentWidget() || !IsOneLine(*one) ||
                !IsOneLine(*other)) {
                continue;
            }
            const QRect a = one->geometry();
            const QRect b = other->geometry();
            const int shared = std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top()) + 1;
            if (2 * shared > std::min(a.height(), b.height()) &&
                std::abs(a.center().y() - b.center().y()) > tolerance) {
                faults << NameOf(*one) + QStringLiteral(" and ") + NameOf(*other);
            }
        }
    }
    return faults;
}

/// Returns the sides of click labels, lists and boxes of several lines without a visible border.
inline QStringList Borderless(QWidget& window)
{
    QStringList faults;
    const QImage shown = window.grab().toImage();
    const double scale = shown.devicePixelRatio();
    const auto colour = [&](QPointF position) { return shown.pixelColor((position * scale).toPoint()); };
    for (const QWidget* control : Controls(window)) {
        const bool isArea =
            qobject_cast<const QAbstractScrollArea*>(control) != nullptr && IsComposite(*control);
        if ((!isArea && !control->inherits("Tarno::ClickLabel")) || IsOverlay(*control)) {
            continue;
        }
        const QPointF centre = QRectF(QRect(control->mapTo(&window, QPoint()), control->size())).center();
        constexpr int margin = 3;
        for (const QPointF& side : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)}) {
            const QPointF edge =
                centre + QPointF(side.x() * control->width(), side.y() * control->height()) / 2;
            const QColor page = colour(edge + side * margin);
            bool isVisible = false;
            for (double depth = 0; depth <= margin; depth += 1 / scale) {
                isVisible |= std::abs(colour(edge - side * depth).lightness() - page.lightness()) > 16;
            }
            if (!isVisible) {
                faults << Fault(*control, QStringLiteral("at %1, %2").arg(side.x()).arg(side.y()));
            }
        }
    }
    return faults;
}

/// Returns the layouts whose gaps or margins are not multiples of 4.
inline QStringList IrregularGaps(const QWidget& window)
{
    QStringList faults;
    for (const QLayout* layout : window.findChildren<QLayout*>()) {
        const auto* grid = qobject_cast<const QGridLayout*>(layout);
        if (layout->objectName().isEmpty() || layout->objectName().startsWith(QLatin1Char('_'))) {
            continue; // internal layout of a Qt widget
        }
        const QMargins margins = layout->contentsMargins();
        QList<int> gaps{margins.left(), margins.top(), margins.right(), margins.bottom()};
        gaps << (grid != nullptr ? QList<int>{grid->horizontalSpacing(), grid->verticalSpacing()}
                                 : QList<int>{layout->count() > 1 ? layout->spacing() : 0});
        for (const int gap : gaps) {
            if (gap % 4 != 0) {
                faults << QStringLiteral("%1: %2").arg(layout->objectName()).arg(gap);
            }
        }
    }
    faults.removeDuplicates();
    return faults;
}

} // namespace Tarno
