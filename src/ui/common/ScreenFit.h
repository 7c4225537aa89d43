#pragma once

#include <QObject>
#include <QSize>

#include <optional>

class QWidget;

namespace Tarno
{

/// Fits every window of the program to the available screen while the object exists: when a window is shown
/// or its layout changes. A window that needs more room gets it from its lists, text boxes and scroll pages,
/// which then scroll. Windows that fit are not changed.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    /// Fits the windows to `screen` instead of the screen that they are on, if given.
    explicit ScreenFit(std::optional<QSize> screen = {});

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Returns the size that the contents of `window` can have on its screen.
    QSize Room(const QWidget& window) const;

private:
    void Fit(QWidget& window) const;
    void FitNewWindow(QWidget& window) const;

    std::optional<QSize> m_screen;
};

} // namespace Tarno
