#include "PictureSurface.h"

#include <QPaintEvent>
#include <QPainter>

PictureSurface::PictureSurface(QWidget* parent) : QWidget(parent) {}

void PictureSurface::SetPicture(const QImage& picture)
{
    m_levels.clear();
    if (!picture.isNull()) {
        m_levels.push_back(picture);
    }
    update();
}

QSize PictureSurface::NaturalSize() const
{
    return HasPicture() ? m_levels.front().size() : QSize();
}

/// The smallest of the halved pictures that is not smaller than `pixels`: stretched from there, every
/// pixel of the picture has its share in what is shown.
const QImage& PictureSurface::LevelFor(QSize pixels)
{
    std::size_t level = 0;
    for (;;) {
        const QSize size = m_levels[level].size();
        const QSize half = size / 2; // rounds up: half of one pixel is one pixel
        if (half.width() < pixels.width() || half.height() < pixels.height() || half == size) {
            return m_levels[level];
        }
        ++level;
        if (level == m_levels.size()) {
            m_levels.push_back(m_levels.back().scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        }
    }
}

void PictureSurface::paintEvent(QPaintEvent* event)
{
    if (!HasPicture()) {
        return;
    }
    const QImage& source = LevelFor(size() * devicePixelRatioF());
    const QRectF seen = event->rect();
    const qreal across = qreal(source.width()) / width();
    const qreal down = qreal(source.height()) / height();
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(
        seen, source,
        QRectF(seen.x() * across, seen.y() * down, seen.width() * across, seen.height() * down));
}
