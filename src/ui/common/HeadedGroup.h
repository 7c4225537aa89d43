#pragma once

#include <QGroupBox>

namespace Tarno
{

/// A group box without a frame. Its heading is bold unless it is within another group.
class HeadedGroup : public QGroupBox
{
    Q_OBJECT

public:
    using QGroupBox::QGroupBox;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QFont HeadingFont() const;
};

} // namespace Tarno
