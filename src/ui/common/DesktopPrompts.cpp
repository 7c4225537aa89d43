#include "DesktopPrompts.h"

#include "core/Error.h"
#include "qt/Strings.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>

#include <map>

namespace Tarno
{

namespace
{

QMessageBox::Icon IconOf(Icon icon)
{
    switch (icon) {
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        break;
    }
    return QMessageBox::Information;
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons)
{
    switch (buttons) {
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::ContinueDiscardLater:
        return QMessageBox::NoButton;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

/// Adds buttons with captions of our own and returns their answers.
std::map<QAbstractButton*, Button> AddOwnButtons(QMessageBox& box, const Question& question)
{
    if (question.buttons != Buttons::ContinueDiscardLater) {
        return {};
    }
    std::map<QAbstractButton*, Button> answers;
    const auto add = [&](const char* caption, QMessageBox::ButtonRole role, Button answer) {
        QPushButton* button = box.addButton(QLatin1String(caption), role);
        answers[button] = answer;
        if (answer == question.byDefault) {
            box.setDefaultButton(button);
        }
        return button;
    };
    add("&Continue", QMessageBox::AcceptRole, Button::Continue);
    add("&Discard", QMessageBox::DestructiveRole, Button::Discard);
    box.setEscapeButton(add("&Later", QMessageBox::RejectRole, Button::Later));
    return answers;
}

QMessageBox::StandardButton ButtonOf(Button button)
{
    switch (button) {
    case Button::Yes:
        return QMessageBox::Yes;
    case Button::No:
        return QMessageBox::No;
    case Button::Cancel:
        return QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

Button AnswerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return Button::Yes;
    case QMessageBox::No:
        return Button::No;
    case QMessageBox::Cancel:
        return Button::Cancel;
    default:
        return Button::Ok;
    }
}

std::optional<QString> ChosenIn(QFileDialog& dialog)
{
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QDir::toNativeSeparators(dialog.selectedFiles().first());
}

} // namespace

void MessageBoxes::ShowInformation(QWidget* parent, const QString& text, const QString& title)
{
    Ask(parent, {.text = text, .title = title});
}

Button DesktopMessageBoxes::Ask(QWidget* parent, const Question& question)
{
    QString lines = question.text;
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QMessageBox box(IconOf(question.icon), question.title, lines, ButtonsOf(question.buttons), parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(ButtonOf(question.byDefault));
    if (question.buttons == Buttons::YesNo) {
        box.setEscapeButton(QMessageBox::No);
    }
    const auto ownAnswers = AddOwnButtons(box, question);
    const int answer = box.exec();
    const auto own = ownAnswers.find(box.clickedButton());
    return own == ownAnswers.end() ? AnswerOf(answer) : own->second;
}

std::optional<QString> DesktopFileDialogs::Open(QWidget* parent, const FileQuestion& question)
{
    QFileDialog dialog(parent, question.title, question.folder, question.filter);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.selectFile(question.fileName);
    return ChosenIn(dialog);
}

std::optional<QString> DesktopFileDialogs::Save(QWidget* parent, const FileQuestion& question)
{
    QFileDialog dialog(parent, question.title, question.folder, question.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(question.suffix);
    dialog.selectFile(question.fileName);
    return ChosenIn(dialog);
}

std::optional<QString> DesktopFileDialogs::ChooseFolder(QWidget* parent, const QString& title,
                                                        const QString& folder)
{
    QFileDialog dialog(parent, title, folder);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return ChosenIn(dialog);
}

void DesktopProgramStarter::Start(const QString& program, const QStringList& arguments)
{
    if (!QProcess::startDetached(program, arguments, QFileInfo(program).path())) {
        throw Error(ErrorNumber::FileNotFound, "This program could not be started: " + ToUtf8(program));
    }
}

void DesktopProgramStarter::EditText(const QString& path)
{
#ifdef Q_OS_WIN
    // path without quotation marks: see docs/quirks.md
    std::wstring commandLine = QStringLiteral("notepad.exe %1").arg(path).toStdWString();
    QProcess editor;
    editor.setProgram(QStringLiteral("notepad.exe"));
    editor.setCreateProcessArgumentsModifier(
        [&](QProcess::CreateProcessArguments* process) { process->arguments = commandLine.data(); });
    const bool started = editor.startDetached();
#else
    // unlike Notepad, the desktop's editor does not offer to create a missing file
    if (const QFileInfo file(path); !file.isFile()) {
        throw Error(ErrorNumber::FileNotFound,
                    "There is no file \"" + ToUtf8(file.fileName()) +
                        "\" in this folder: " + ToUtf8(QDir::toNativeSeparators(file.absolutePath())) +
                        ". Create it there as a text file, with one item in each line.");
    }
    const bool started =
        QProcess::startDetached(QStringLiteral("xdg-open"), {QFileInfo(path).absoluteFilePath()});
#endif
    if (!started) {
        throw Error(ErrorNumber::FileNotFound,
                    "The text editor could not be started. Open this file in another editor: " +
                        ToUtf8(path));
    }
}

void DesktopProgramStarter::OpenFolder(const QString& path)
{
    if (!QFileInfo(path).isDir()) {
        throw Error(ErrorNumber::FileNotFound, "This folder does not exist: " + ToUtf8(path));
    }
#ifdef Q_OS_WIN
    const QString fileManager = QStringLiteral("explorer.exe");
#else
    const QString fileManager = QStringLiteral("xdg-open");
#endif
    if (!QProcess::startDetached(fileManager,
                                 {QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath())})) {
        throw Error(ErrorNumber::FileNotFound,
                    "The file manager could not be started. Open this folder yourself: " + ToUtf8(path));
    }
}

} // namespace Tarno
