#pragma once

#include <QLabel>

namespace Tarno
{

/// A label that is clicked like a button and looks like one. It never takes the focus.
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
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_isPressed = false;
};

} // namespace Tarno
