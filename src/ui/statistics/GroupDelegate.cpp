#include "GroupDelegate.h"

#include "StatisticsRows.h"
#include "analysis/Proportion.h"
#include "ui/common/GradeColours.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr int margin = 4;
constexpr double fewOpacity = 0.5;
const QColor figureColour(0x10, 0x14, 0x1a);

/// Returns the width of the scale of the interval.
int ScaleWidth(const QFontMetrics& metrics)
{
    return 6 * metrics.height();
}

QColor Faded(QColor colour)
{
    colour.setAlphaF(fewOpacity);
    return colour;
}

/// Paints the trips by action as parts of the bar. A figure that has no room is left out; the tool tip and
/// assistive tools have it.
void PaintActions(QPainter& painter, const QRectF& bar, const TripGroup& group)
{
    double left = bar.left();
    for (std::size_t action = 0; action < group.actions.size(); ++action) {
        const int count = group.actions.at(action);
        const double width = count == 0 ? 0 : bar.width() * count / group.RatedTrips();
        const QRectF part(left, bar.top(), width, bar.height());
        painter.fillRect(part, gradeColours.at(action));
        const QString figure = QString::number(count);
        if (painter.fontMetrics().horizontalAdvance(figure) + 2 < width) {
            painter.setPen(figureColour);
            painter.drawText(part, Qt::AlignCenter, figure);
        }
        left += width;
    }
}

/// Paints the interval as a line on a scale, with a dot at the share, and its text beside it.
void PaintShare(QPainter& painter, const QRectF& cell, const TripGroup& group, const QString& text,
                const QColor& colour)
{
    const auto interval = WilsonInterval(group.Successes(), group.RatedTrips());
    if (!interval) {
        return;
    }
    constexpr double dot = 3;
    const int width = ScaleWidth(painter.fontMetrics());
    const double middle = cell.center().y();
    const auto at = [&](double part) { return cell.left() + dot + part * (width - 2 * dot); };
    QColor faint = colour;
    faint.setAlphaF(0.3F);
    painter.setPen(QPen(faint, 1));
    painter.drawLine(QPointF(at(0), middle), QPointF(at(1), middle));
    painter.setPen(QPen(colour, 2));
    painter.drawLine(QPointF(at(interval->low), middle), QPointF(at(interval->high), middle));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(at(Share(group)), middle), dot, dot);
    painter.setPen(colour);
    painter.drawText(cell.adjusted(width + 2 * margin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
}

} // namespace

GroupDelegate::GroupDelegate(const std::vector<TripGroup>& groups, QObject* parent)
    : QStyledItemDelegate(parent), m_groups(groups)
{
}

void GroupDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    const TripGroup& group = m_groups.at(GroupOfRow(index.data(TextTableModel::keyRole).toString()));
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const bool isDrawn = index.column() == GroupColumn::Actions || index.column() == GroupColumn::Share;
    if (isDrawn) {
        item.text.clear();
    }
    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const bool isFaded = group.IsFew() && !isSelected;
    if (isFaded) {
        item.palette.setColor(QPalette::Text, Faded(item.palette.color(QPalette::Text)));
    }
    const QStyle* style = item.widget != nullptr ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    if (!isDrawn) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(item.font);
    const QRectF cell = QRectF(item.rect).adjusted(margin, 0, -margin, 0);
    if (index.column() == GroupColumn::Actions) {
        const QRectF bar = cell.adjusted(0, margin, 0, -margin);
        if (isSelected && group.RatedTrips() > 0) { // its colours could be that of the selection
            painter->fillRect(bar.adjusted(-1, -1, 1, 1), item.palette.color(QPalette::HighlightedText));
        }
        painter->setOpacity(isFaded ? fewOpacity : 1);
        PaintActions(*painter, bar, group);
    } else {
        const auto role = isSelected ? QPalette::HighlightedText : QPalette::Text;
        PaintShare(*painter, cell, group, index.data().toString(), item.palette.color(role));
    }
    painter->restore();
}

QSize GroupDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (index.column() == GroupColumn::Share) {
        size.rwidth() += ScaleWidth(option.fontMetrics) + 2 * margin;
    }
    size.setHeight(std::max(size.height(), option.fontMetrics.height() + 3 * margin));
    return size;
}

bool GroupDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || index.column() != GroupColumn::Actions) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QToolTip::showText(event->globalPos(), index.data().toString(), view->viewport(), option.rect);
    return true;
}

} // namespace Tarno
