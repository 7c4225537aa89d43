#pragma once

#include <QWidget>

namespace Tarno
{

class PictureSource;

/// Paints the picture of its source, if any, scaled to the size of the surface.
class PictureSurface : public QWidget
{
    Q_OBJECT

public:
    /// `source` must outlive the surface.
    PictureSurface(PictureSource& source, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PictureSource& m_source;
};

} // namespace Tarno
