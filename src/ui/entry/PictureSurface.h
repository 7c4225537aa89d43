#pragma once

#include <QImage>
#include <QWidget>

#include <vector>

/// Paints a picture stretched to the widget's size, or nothing.
class PictureSurface : public QWidget
{
    Q_OBJECT

public:
    explicit PictureSurface(QWidget* parent);

    void SetPicture(const QImage& picture);

    bool HasPicture() const { return !m_levels.empty(); }

    /// One image pixel is one device-independent pixel. Empty without a picture.
    QSize NaturalSize() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QImage& LevelFor(QSize pixels);

    std::vector<QImage> m_levels; ///< the picture, and as far as they were needed its halves of halves
};
