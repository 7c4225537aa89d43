#pragma once

#include <QDialog>

class QTextBrowser;

namespace Tarno
{

class RememberedWindows;

/// The manual, with one page for each window of the program. It is not modal.
class fHelp : public QDialog
{
    Q_OBJECT

public:
    explicit fHelp(QWidget* parent);

    /// Shows the page about `window`, found by its object name, or the table of contents if that page does
    /// not exist.
    void ShowPageFor(const QWidget* window);

private:
    void ShowContents();

    QTextBrowser* m_browser;
};

/// Opens the manual at the page about the active window when the user presses F1.
class HelpKey : public QObject
{
    Q_OBJECT

public:
    /// Installs the key for the whole program until the object is destroyed. `windows` must outlive the
    /// object.
    explicit HelpKey(const RememberedWindows& windows);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    const RememberedWindows& m_windows;
};

} // namespace Tarno
