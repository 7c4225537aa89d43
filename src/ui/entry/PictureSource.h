#pragma once

#include <QImage>
#include <QWidget>

#include <vector>

namespace Tarno
{

/// Holds a picture at its natural size for the surface that shows it; is itself never visible.
class PictureSource : public QWidget
{
    Q_OBJECT

public:
    explicit PictureSource(QWidget* parent);

    void SetPicture(const QImage& picture);

    bool HasPicture() const { return !m_levels.empty(); }

    /// One image pixel is one device-independent pixel. Empty without a picture.
    QSize NaturalSize() const;

    /// The picture, or the smallest of its halves of halves that is not smaller than `pixels`: scaled from
    /// there, every pixel of the picture contributes to the result. There must be a picture.
    const QImage& LevelFor(QSize pixels);

private:
    std::vector<QImage> m_levels; ///< the picture, and its halves of halves as far as they were needed
};

} // namespace Tarno
