#pragma once

#include <QLabel>
#include <QPointer>

namespace Tarno
{

/// A note below a box that says why its text was refused. Unlike a tool tip, it remains when the mouse moves
/// or a button is released.
class RefusalNote : public QLabel
{
    Q_OBJECT

public:
    /// Notes for the boxes of `window`, which owns the note.
    explicit RefusalNote(QWidget* window);

    /// Shows `text` at `box` and makes it the accessible description of the box. Does nothing without a text.
    void ShowAt(QWidget* box, const QString& text);
    /// Hides the note of `box`, if it is shown.
    void HideAt(QWidget* box);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Place();

    QPointer<QWidget> m_box;
};

} // namespace Tarno
