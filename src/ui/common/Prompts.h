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

// Interfaces to the desktop. Tests replace them with scripted doubles.

enum class Icon { Information, Question, Exclamation };
enum class Button { Ok, Yes, No, Cancel, Continue, Discard, Later };
enum class Buttons { Ok, YesNo, YesNoCancel, ContinueDiscardLater };

struct Question {
    QString text;
    QString title;
    Icon icon = Icon::Information;
    Buttons buttons = Buttons::Ok;
    Button byDefault = Button::Ok;
};

class MessageBoxes
{
public:
    MessageBoxes() = default;
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    virtual ~MessageBoxes() = default;

    /// Shows a modal box over `parent` and returns the chosen button. The close box and Esc return Cancel or
    /// Later if the box has that button, otherwise No, otherwise Ok.
    virtual Button Ask(QWidget* parent, const Question& question) = 0;

    /// Shows a box with the information icon and an OK button.
    void ShowInformation(QWidget* parent, const QString& text, const QString& title);
};

struct FileQuestion {
    QString title;
    QString filter; ///< in the format of QFileDialog
    QString folder;
    QString fileName;
    QString suffix = {}; ///< appended to the name of a file to save if it has no suffix
};

class FileDialogs
{
public:
    FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;
    virtual ~FileDialogs() = default;

    /// Returns the full path of the file to open, or nothing if the user cancels.
    virtual std::optional<QString> Open(QWidget* parent, const FileQuestion& question) = 0;

    /// Returns the full path of the file to write, or nothing if the user cancels. Does not ask before an
    /// existing file is overwritten.
    virtual std::optional<QString> Save(QWidget* parent, const FileQuestion& question) = 0;

    /// Returns the full path of an existing folder, or nothing if the user cancels. Starts in `folder`.
    virtual std::optional<QString> ChooseFolder(QWidget* parent, const QString& title,
                                                const QString& folder) = 0;
};

struct PrintJob {
    QString title;
    QPageLayout page;
    int pages = 0;
    /// Paints a page, counted from 0, in twips with the origin in its upper left corner.
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

    /// Returns the paper of the default printer in portrait orientation with margins of 20 mm.
    virtual QPageLayout DefaultPage() = 0;
    /// Lets the user choose a printer and prints. Returns false if the user cancels. Throws Error
    /// DeviceInputOutput if printing fails.
    virtual bool Print(QWidget* parent, const PrintJob& job) = 0;
    /// Lets the user change paper and margins. If the user cancels, returns false and leaves `page`
    /// unchanged.
    virtual bool SetUpPage(QWidget* parent, QPageLayout& page) = 0;
};

/// Starts other programs.
class ProgramStarter
{
public:
    ProgramStarter() = default;
    ProgramStarter(const ProgramStarter&) = delete;
    ProgramStarter& operator=(const ProgramStarter&) = delete;
    virtual ~ProgramStarter() = default;

    /// Starts `program` in a normal window and returns without waiting for it. Throws Error FileNotFound if
    /// it cannot be started.
    virtual void Start(const QString& program, const QStringList& arguments) = 0;

    /// Opens the text file `path` in the user's text editor and returns without waiting for it. Throws Error
    /// FileNotFound if the editor cannot be started.
    virtual void EditText(const QString& path) = 0;

    /// Shows the folder `path` in the desktop's file manager and returns without waiting for it. Throws Error
    /// FileNotFound if the folder does not exist or the file manager cannot be started.
    virtual void OpenFolder(const QString& path) = 0;
};

} // namespace Tarno
