#include "ClickLabel.h"

#include <QMouseEvent>

namespace Tarno
{

ClickLabel::ClickLabel(QWidget* parent) : QLabel(parent)
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ClickLabel::sizeHint() const
{
    const int side = fontMetrics().height() * 3 / 2;
    return {side, side};
}

void ClickLabel::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        Q_EMIT Clicked();
    } else {
        QLabel::mousePressEvent(event);
    }
}

} // namespace Tarno
