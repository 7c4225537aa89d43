#pragma once

#include <QPageLayout>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QPainter;
class QWidget;

namespace Tarno
{

// What the program asks of the desktop, so that a test can answer in the user's place.

enum class Icon { Information, Question, Exclamation };
enum class Button { Ok, Yes, No, Cancel };
enum class Buttons { Ok, YesNo, YesNoCancel };

struct Question {
    QString text;
    QString title;
    Icon icon = Icon::Information;
    Buttons buttons = Buttons::Ok;
    Button byDefault = Button::Ok;
};

/// Message boxes.
class MessageBoxes
{
public:
    MessageBoxes() = default;
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    virtual ~MessageBoxes() = default;

    /// Shows the box over `parent` and waits. The close box and Esc answer Cancel where there is such a
    /// button, otherwise No, otherwise Ok.
    virtual Button Ask(QWidget* parent, const Question& question) = 0;

    /// A box with the information icon and an OK button.
    void Tell(QWidget* parent, const QString& text, const QString& title);
};

struct FileQuestion {
    QString title;
    QString filter; ///< as QFileDialog takes it
    QString folder;
    QString fileName;
    QString suffix = {}; ///< of a file to be saved whose name has none
};

/// Dialogs that let the user choose a file.
class FileDialogs
{
public:
    FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;
    virtual ~FileDialogs() = default;

    /// The full path of the file to open; nothing when the user cancelled.
    virtual std::optional<QString> Open(QWidget* parent, const FileQuestion& question) = 0;

    /// The full path of the file to write; nothing when the user cancelled. Does not ask about a file that
    /// exists already.
    virtual std::optional<QString> Save(QWidget* parent, const FileQuestion& question) = 0;
};

/// What is to be printed, page by page.
struct PrintJob {
    QString title;
    QPageLayout page;
    int pages = 0;
    /// Paints a page (from 0), its upper left corner at the origin, one unit to the twip.
    std::function<void(QPainter& painter, int page)> paint;
};

/// Printers and their dialogs.
class Printers
{
public:
    Printers() = default;
    Printers(const Printers&) = delete;
    Printers& operator=(const Printers&) = delete;
    virtual ~Printers() = default;

    /// The paper of the default printer, upright, with margins of 20 mm.
    virtual QPageLayout DefaultPage() = 0;
    /// Lets the user choose a printer and prints; returns false when the user cancelled.
    /// Throws Error DeviceInputOutput when the printer does not take it.
    virtual bool Print(QWidget* parent, const PrintJob& job) = 0;
    /// Lets the user change paper and margins; returns false, `page` unchanged, when the user cancelled.
    virtual bool SetUpPage(QWidget* parent, QPageLayout& page) = 0;
};

/// Starting other programs.
class ProgramStarter
{
public:
    ProgramStarter() = default;
    ProgramStarter(const ProgramStarter&) = delete;
    ProgramStarter& operator=(const ProgramStarter&) = delete;
    virtual ~ProgramStarter() = default;

    /// Starts `program` in a normal window and returns at once.
    /// Throws Error FileNotFound when it cannot be started.
    virtual void Start(const QString& program, const QStringList& arguments) = 0;

    /// Opens the text file `path` in the user's text editor and returns at once.
    /// Throws Error FileNotFound when the editor cannot be started.
    virtual void EditText(const QString& path) = 0;
};

} // namespace Tarno
