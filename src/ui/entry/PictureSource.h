#pragma once

#include <QImage>
#include <QWidget>

#include <vector>

namespace Tarno
{

/// A hidden widget that holds a picture at its natural size for the surface that shows it.
class PictureSource : public QWidget
{
    Q_OBJECT

public:
    explicit PictureSource(QWidget* parent);

    void SetPicture(const QImage& picture);

    bool HasPicture() const { return !m_levels.empty(); }

    /// Returns the size of the picture; one image pixel is one device-independent pixel. Empty without a
    /// picture.
    QSize NaturalSize() const;

    /// Returns the smallest mipmap level that is not smaller than `pixels`. Smooth scaling from there uses
    /// every pixel of the picture. Requires a picture.
    const QImage& LevelFor(QSize pixels);

private:
    std::vector<QImage> m_levels; ///< mipmap levels: the picture, then halved sizes, created on demand
};

} // namespace Tarno
