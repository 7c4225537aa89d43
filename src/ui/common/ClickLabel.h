#pragma once

#include <QLabel>

namespace Tarno
{

/// A clickable label. It never takes the focus.
class ClickLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickLabel(QWidget* parent = nullptr);

    /// A square large enough for touch and imprecise pointing.
    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace Tarno
