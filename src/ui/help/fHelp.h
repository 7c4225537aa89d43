#pragma once

#include <QDialog>

class QTextBrowser;

namespace Tarno
{

/// The manual, one page for each window of the program. It stands beside the window that it was opened from,
/// which can be used meanwhile.
class fHelp : public QDialog
{
    Q_OBJECT

public:
    explicit fHelp(QWidget* parent);

    /// Shows the page about `window`, known by its object name; the contents when there is none.
    void ShowPageFor(const QWidget* window);

private:
    void ShowContents();

    QTextBrowser* m_browser;
};

/// Opens the manual at the page of the active window when the user presses F1, whichever window that is.
class HelpKey : public QObject
{
    Q_OBJECT

public:
    /// Works as long as it lives, in the whole program.
    HelpKey();

    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace Tarno
