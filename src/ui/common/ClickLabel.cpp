#include "ClickLabel.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace Tarno
{

ClickLabel::ClickLabel(QWidget* parent) : QLabel(parent)
{
    setAttribute(Qt::WA_Hover);
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
        m_isPressed = true;
        update();
        Q_EMIT Clicked();
    } else {
        QLabel::mousePressEvent(event);
    }
}

void ClickLabel::mouseReleaseEvent(QMouseEvent* event)
{
    m_isPressed = false;
    update();
    QLabel::mouseReleaseEvent(event);
}

void ClickLabel::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionButton button;
    button.initFrom(this);
    // a message that the click opened may have received the release of the mouse button
    const bool isPressed = m_isPressed && (QApplication::mouseButtons() & Qt::LeftButton) != 0;
    button.state |= isPressed ? QStyle::State_Sunken : QStyle::State_Raised;
    button.text = text();
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButton, button);
}

} // namespace Tarno
