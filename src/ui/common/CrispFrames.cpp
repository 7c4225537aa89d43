#include "CrispFrames.h"

#include <QFrame>
#include <QPainter>
#include <QStyleOption>

namespace Tarno
{

namespace
{

/// Draws the edges of a rectangle inside of it.
void DrawEdges(QPainter* painter, const QRect& frame, const QColor& colour)
{
    // filled rectangles are rounded to device pixels like the contents, unlike lines
    painter->fillRect(QRect(frame.left(), frame.top(), frame.width(), 1), colour);
    painter->fillRect(QRect(frame.left(), frame.bottom(), frame.width(), 1), colour);
    painter->fillRect(QRect(frame.left(), frame.top(), 1, frame.height()), colour);
    painter->fillRect(QRect(frame.right(), frame.top(), 1, frame.height()), colour);
}

} // namespace

CrispFrames::CrispFrames() : QProxyStyle(QStringLiteral("fusion")) {}

void CrispFrames::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    const bool isFrame = element == PE_Frame && qobject_cast<const QFrame*>(widget) != nullptr &&
                         !widget->inherits("QComboBoxPrivateContainer"); // of a drop-down list
    if (isFrame) {
        const QColor window = option->palette.color(QPalette::Window);
        DrawEdges(painter, option->rect, window.lightness() < 128 ? window.lighter(150) : window.darker(130));
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_IndicatorItemViewItemCheck) {
        QColor edge = option->palette.color(QPalette::Text);
        edge.setAlphaF(0.5F);
        DrawEdges(painter, option->rect, edge);
    }
}

} // namespace Tarno
