#include "IconAtEndHeader.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStyleOptionHeader>

namespace Tarno
{

IconAtEndHeader::IconAtEndHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

void IconAtEndHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int column) const
{
    QHeaderView::initStyleOptionForIndex(option, column);
    option->icon = {};
    option->text = fontMetrics().elidedText(option->text, Qt::ElideRight,
                                            sectionSize(column) - 3 * Margin() - IconSize());
}

void IconAtEndHeader::paintSection(QPainter* painter, const QRect& section, int column) const
{
    painter->save(); // the style leaves its clipping behind
    QHeaderView::paintSection(painter, section, column);
    painter->restore();
    const QSize size(IconSize(), IconSize());
    QPixmap icon = model()
                       ->headerData(column, orientation(), Qt::DecorationRole)
                       .value<QIcon>()
                       .pixmap(size, devicePixelRatioF());
    if (!icon.isNull()) {
        // in the colour of the heading, to be as visible in dark colours
        QPainter colour(&icon);
        colour.setCompositionMode(QPainter::CompositionMode_SourceIn);
        colour.fillRect(icon.rect(), palette().color(QPalette::ButtonText));
        colour.end();
        painter->drawPixmap(QStyle::alignedRect(layoutDirection(), Qt::AlignRight | Qt::AlignVCenter, size,
                                                section.marginsRemoved({Margin(), 0, Margin(), 0})),
                            icon);
    }
}

int IconAtEndHeader::Margin() const
{
    return style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
}

int IconAtEndHeader::IconSize() const
{
    return style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
}

} // namespace Tarno
