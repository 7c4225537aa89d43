#include "CrispFrames.h"

#include <QFrame>
#include <QPainter>
#include <QStyleOption>

namespace Tarno
{

CrispFrames::CrispFrames() : QProxyStyle(QStringLiteral("fusion")) {}

void CrispFrames::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    const bool isFrame = qobject_cast<const QFrame*>(widget) != nullptr &&
                         !widget->inherits("QComboBoxPrivateContainer"); // of a drop-down list
    if (element != PE_Frame || !isFrame) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const QColor window = option->palette.color(QPalette::Window);
    const QColor outline = window.lightness() < 128 ? window.lighter(150) : window.darker(130);
    const QRect frame = option->rect;
    // filled rectangles are rounded to device pixels like the contents, unlike lines
    painter->fillRect(QRect(frame.left(), frame.top(), frame.width(), 1), outline);
    painter->fillRect(QRect(frame.left(), frame.bottom(), frame.width(), 1), outline);
    painter->fillRect(QRect(frame.left(), frame.top(), 1, frame.height()), outline);
    painter->fillRect(QRect(frame.right(), frame.top(), 1, frame.height()), outline);
}

} // namespace Tarno
