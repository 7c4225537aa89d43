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

/// The About box, also used as the splash screen at the start.
class fSplash : public QDialog
{
    Q_OBJECT

public:
    /// `folder` is the data folder, shown in the box.
    fSplash(const QString& folder, QWidget* parent);
    fSplash(const fSplash&) = delete;
    fSplash& operator=(const fSplash&) = delete;
    ~fSplash() override;

    /// Shows the box modally and closes it after a short time, or earlier with its button or Esc.
    void ShowSplash();
    /// Shows the box modally until the user closes it.
    void ShowAbout();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::unique_ptr<Ui::fSplash> m_ui;
    QTimer* tShow; ///< closes the splash
};

} // namespace Tarno
