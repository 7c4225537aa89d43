#include "PictureSurface.h"

#include "PictureSource.h"

#include <QPaintEvent>
#include <QPainter>

namespace Tarno
{

PictureSurface::PictureSurface(PictureSource& source, QWidget* parent) : QWidget(parent), m_source(source) {}

void PictureSurface::paintEvent(QPaintEvent* event)
{
    if (!m_source.HasPicture()) {
        return;
    }
    const QImage& source = m_source.LevelFor(size() * devicePixelRatioF());
    const QRectF seen = event->rect();
    const qreal across = qreal(source.width()) / width();
    const qreal down = qreal(source.height()) / height();
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(
        seen, source,
        QRectF(seen.x() * across, seen.y() * down, seen.width() * across, seen.height() * down));
}

} // namespace Tarno
