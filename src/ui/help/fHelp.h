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

    /// Shows the page `name`, or the table of contents if that page does not exist. The page about a window
    /// has the object name of the window.
    void ShowPage(const QString& name);

private:
    void ShowContents();

    QTextBrowser* m_browser;
};

/// Shows a page of the manual over `window`, in the manual that is already open there if there is one.
void ShowManual(QWidget* window, const QString& page, const RememberedWindows& windows);

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
