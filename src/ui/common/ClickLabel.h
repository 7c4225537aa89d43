#pragma once

#include <QLabel>

namespace Tarno
{

/// A label that acts when it is clicked. It takes no focus, so the box that has it keeps it.
class ClickLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickLabel(QWidget* parent = nullptr);

    /// A square that a finger or an unsteady hand hits.
    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace Tarno
