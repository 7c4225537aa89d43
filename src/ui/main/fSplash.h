#pragma once

#include <QDialog>

#include <memory>

class QTimer;

namespace Tarno
{

namespace Ui
{
class fSplash;
}

/// The About box; at the start of the program it is the splash screen.
class fSplash : public QDialog
{
    Q_OBJECT

public:
    /// `folder` is where the log lies; the box says so.
    fSplash(const QString& folder, QWidget* parent);
    fSplash(const fSplash&) = delete;
    fSplash& operator=(const fSplash&) = delete;
    ~fSplash() override;

    /// Shows it modally. As a splash it closes by itself; its button and Esc close it before.
    void ShowSplash();
    void ShowAbout();

private:
    std::unique_ptr<Ui::fSplash> m_ui;
    QTimer* tShow; ///< closes the splash
};

} // namespace Tarno
