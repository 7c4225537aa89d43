#include "PictureSource.h"

namespace Tarno
{

PictureSource::PictureSource(QWidget* parent) : QWidget(parent)
{
    hide();
}

void PictureSource::SetPicture(const QImage& picture)
{
    m_levels.clear();
    if (!picture.isNull()) {
        m_levels.push_back(picture);
    }
}

QSize PictureSource::NaturalSize() const
{
    return HasPicture() ? m_levels.front().size() : QSize();
}

const QImage& PictureSource::LevelFor(QSize pixels)
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

} // namespace Tarno
