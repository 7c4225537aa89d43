#include "qt/Strings.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/SortableList.h"
#include "ui/entry/fEntry.h"
#include "ui/locations/dlgLocMaint.h"
#include "ui/locations/fLocs.h"
#include "ui/main/fTarno.h"
#include "ui/reports/fRptLog.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTextDocument>

#include <filesystem>
#include <map>
#include <sstream>

#ifdef Q_OS_WIN
#include <QtCore/qt_windows.h>

#include <shellapi.h>
#endif

using namespace Tarno;

// Names and paths that look like commands, markup or other locations: they start no program, cause no writing
// elsewhere and are shown literally.

using namespace std::string_literals;

namespace
{

const std::vector<std::string> hostileNames{
    "; touch x",           "$(touch x)", "`touch x`",   "| touch x", "a && touch x", "> x", "line\nend",
    "\"double\" 'single'", "-option",    "--help",      "%1 %s %n",  "*?[a]",        "~",   "$HOME",
    "back\\slash",         "<b>x<\\b>",  "http:example"};

/// Returns everything in the folder, with the bytes of files.
std::map<std::string, std::string> Tree(const TemporaryFolder& folder)
{
    std::map<std::string, std::string> tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ToPath(folder.Path()))) {
        const std::string name = FromPath(entry.path().lexically_relative(ToPath(folder.Path())));
        tree[name] = entry.is_regular_file() ? folder.Read(name) : "";
    }
    return tree;
}

/// Adds a row for each name.
void AddNames(const std::vector<std::string>& names)
{
    QTest::addColumn<std::string>("name");
    for (const std::string& name : names) {
        std::string row = name.substr(0, 40);
        std::replace(row.begin(), row.end(), '\n', ' ');
        QTest::newRow(row.c_str()) << name;
    }
}

/// Returns the file dialog that "Tides" shows if no program is set.
FileQuestion TideQuestion()
{
    QString filter = QStringLiteral("WXTide32 Progam File (WXTide32.exe)");
#ifndef Q_OS_WIN
    filter += QStringLiteral(";;All Files (*)");
#endif
    return {.title = QStringLiteral("Specify WXTide32 Program Location"),
            .filter = filter,
            .folder = {},
            .fileName = QStringLiteral("WXTide32.exe")};
}

/// Waits until the file exists and returns its contents. The test fails after a timeout.
std::string Awaited(const TemporaryFolder& folder, const std::string& name)
{
    const auto path = ToPath(folder.PathOf(name));
    return Await([&] { return std::filesystem::exists(path); }, "not started") ? folder.Read(name)
                                                                               : std::string();
}

#ifdef Q_OS_WIN

const std::string programSuffix = ".exe";
const std::string textEditor = "notepad";

void WriteRecorder(const TemporaryFolder& folder, const std::string& name)
{
    std::filesystem::copy_file(TARNO_RECORDER, ToPath(folder.PathOf(name)));
}

std::wstring CommandLine(const TemporaryFolder& folder)
{
    const QString record = FromUtf8(Awaited(folder, "started.txt"));
    return record.left(record.lastIndexOf(QLatin1Char('\n'))).toStdWString();
}

std::vector<std::string> Recorded(const TemporaryFolder& folder)
{
    int count = 0;
    wchar_t** words = ::CommandLineToArgvW(CommandLine(folder).c_str(), &count);
    std::vector<std::string> arguments;
    for (int index = 1; index < count; ++index) {
        arguments.push_back(ToUtf8(QString::fromWCharArray(words[index])));
    }
    ::LocalFree(words);
    return arguments;
}

std::string Edited(const TemporaryFolder& desktop)
{
    const std::wstring start = L"notepad.exe "; // followed by the path without quotation marks
    const std::wstring commandLine = CommandLine(desktop);
    return commandLine.starts_with(start) ? ToUtf8(QString::fromStdWString(commandLine.substr(start.size())))
                                          : "another command line";
}

#else

const std::string programSuffix;
const std::string textEditor = "xdg-open";

/// Creates a program that records its arguments.
void WriteRecorder(const TemporaryFolder& folder, const std::string& name)
{
    folder.Write(name, "#!/bin/sh\nfor word in \"$@\"; do printf '%s\\0' \"$word\"; done > \"${0%/*}/.new\"\n"
                       "mv \"${0%/*}/.new\" \"${0%/*}/started.txt\"\n");
    std::filesystem::permissions(ToPath(folder.PathOf(name)), std::filesystem::perms::owner_all);
}

/// Returns the arguments with which the recorder was started.
std::vector<std::string> Recorded(const TemporaryFolder& folder)
{
    std::istringstream words(Awaited(folder, "started.txt"));
    std::vector<std::string> arguments;
    for (std::string word; std::getline(words, word, '\0');) {
        arguments.push_back(word);
    }
    return arguments;
}

/// Returns the file with which the text editor was started.
std::string Edited(const TemporaryFolder& desktop)
{
    const std::vector<std::string> arguments = Recorded(desktop);
    return arguments.size() == 1 ? arguments.front() : "not one argument";
}

#endif

/// Counts the questions and answers them with the default button.
class Answers final : public MessageBoxes
{
public:
    Button Ask(QWidget* /*parent*/, const Question& question) override
    {
        ++count;
        return question.byDefault;
    }

    int count = 0;
};

/// Calls `open`, which shows the dialog `name`, runs `steps` on it and closes it without a question.
template <typename Open, typename Steps>
void RunInDialog(const char* name, Open&& open, Steps&& steps)
{
    WhileOpen(name, std::forward<Open>(open), [&](QDialog& dialog) {
        steps(dialog);
        dialog.done(QDialog::Rejected);
    });
}

/// Returns the first control of the window that does not show `name` literally, or an empty string.
QString FindNonLiteralControl(const QWidget& window, const QString& name)
{
    for (const auto* label : window.findChildren<QLabel*>()) {
        const bool rich = label->textFormat() == Qt::RichText ||
                          (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
        if (label->text().contains(name) && (rich || label->buddy() != nullptr)) {
            return label->objectName();
        }
    }
    for (const auto* widget : window.findChildren<QWidget*>()) {
        if (widget->toolTip().contains(name) && Qt::mightBeRichText(widget->toolTip())) {
            return widget->objectName();
        }
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        QString text = button->text();
        text.remove(QString(name).replace(QLatin1Char('&'), QLatin1String("&&"))); // correctly escaped
        if (text.contains(name)) {
            return button->objectName();
        }
    }
    return {};
}

/// Returns whether the combo box has an item with exactly this text.
bool HasItem(const QWidget& window, const char* box, const QString& name)
{
    return Find<QComboBox>(window, box).findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0;
}

/// Returns whether a cell of the list has exactly this text and its tool tip is plain text.
bool HasCell(const QWidget& window, const char* list, const QString& name)
{
    const QAbstractItemModel* model = Find<SortableList>(window, list).model();
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            if (model->index(row, column).data().toString() == name) {
                const QVariant tip = model->index(row, column).data(Qt::ToolTipRole);
                return !Qt::mightBeRichText(tip.toString());
            }
        }
    }
    return false;
}

} // namespace

class tst_HostileNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void tideProgram_notAFile_isAskedFor_data()
    {
        std::vector<std::string> names = hostileNames;
        for (const std::string name :
             {"folder", "/", ".", "..", "http://example.invalid/tides.exe", "file:///bin/true",
              "\\\\host\\share\\tides.exe", " ", "gone/tides.exe", "true", "sh -c true"}) {
            names.push_back(name);
        }
        names.push_back(std::string(300, 'x'));
        names.push_back(std::string(100'000, '/'));
        AddNames(names);
    }

    void tideProgram_notAFile_isAskedFor()
    {
        QFETCH(std::string, name);
        TestProgram program;
        program.Start();
        program.folder.MakeFolder("folder");
        program.settings.SaveSetting("KOWRA", "XTidePath",
                                     name == "folder" ? program.folder.PathOf(name) : name);
        const auto before = Tree(program.folder);
        fTarno window(program.program);
        program.files.ExpectOpen(TideQuestion(), std::nullopt);
        window.findChild<QAction*>(QStringLiteral("icoTides"))->trigger(); // no program start is expected
        QVERIFY(Tree(program.folder) == before);
    }

    void tideProgram_withAHostileName_isStartedUnderIt_data() { AddNames(hostileNames); }

    void tideProgram_withAHostileName_isStartedUnderIt()
    {
        QFETCH(std::string, name);
        if (!IsFileName(name)) {
            NOT_ON_WINDOWS("files with such names");
        }
        TestProgram program;
        program.Start();
        program.folder.Write(name, "not a program");
        program.settings.SaveSetting("KOWRA", "XTidePath", program.folder.PathOf(name));
        const auto before = Tree(program.folder);
        fTarno window(program.program);
        program.programs.ExpectStart(FromUtf8(program.folder.PathOf(name)));
        window.findChild<QAction*>(QStringLiteral("icoTides"))->trigger();
        QVERIFY(Tree(program.folder) == before);
    }

    void starter_usesNoShell_data() { AddNames(hostileNames); }

    void starter_usesNoShell()
    {
        QFETCH(std::string, name);
        if (!IsFileName(name)) {
            NOT_ON_WINDOWS("files with such names");
        }
        const TemporaryFolder folder;
        name += programSuffix;
        WriteRecorder(folder, name);
        QStringList arguments;
        for (const std::string& argument : hostileNames) {
            arguments << FromUtf8(argument);
        }
        arguments << QString() << QStringLiteral("two words");
        DesktopProgramStarter().Start(FromUtf8(folder.PathOf(name)), arguments);
        std::vector<std::string> expected = hostileNames;
        expected.insert(expected.end(), {"", "two words"});
        QCOMPARE(Recorded(folder), expected);
        QCOMPARE(folder.Names().size(), std::size_t(2));
    }

    void starter_notAProgram_fails_data()
    {
        AddNames({"folder", "text.txt", "gone", "gone; touch x", "$(touch x)", "http://example.invalid/x"});
    }

    void starter_notAProgram_fails()
    {
        QFETCH(std::string, name);
        const TemporaryFolder folder;
        folder.MakeFolder("folder");
        folder.Write("text.txt", "touch x\n");
        const auto before = Tree(folder);
        try {
            DesktopProgramStarter().Start(FromUtf8(folder.PathOf(name)), {});
            QFAIL("started");
        } catch (const Error& error) {
            QVERIFY(error.Description().find(folder.PathOf(name)) != std::string::npos);
        }
        QVERIFY(Tree(folder) == before);
    }

    void textEditor_getsTheFileAsOneArgument_data() { AddNames(hostileNames); }

    void textEditor_getsTheFileAsOneArgument()
    {
        QFETCH(std::string, name);
        if (!IsFileName(name)) {
            NOT_ON_WINDOWS("files with such names");
        }
        const TemporaryFolder desktop;
        WriteRecorder(desktop, textEditor + programSuffix);
        const TemporaryFolder folder;
        folder.Write(name, "Bream\n");
        const QByteArray path = qgetenv("PATH");
        const QString current = QDir::currentPath();
        qputenv("PATH", QByteArray::fromStdString(desktop.Path()) + ':' + path);
        QDir::setCurrent(FromUtf8(desktop.Path())); // Windows searches the current folder first
        DesktopProgramStarter().EditText(FromUtf8(folder.PathOf(name)));
        QDir::setCurrent(current);
        qputenv("PATH", path);
        QCOMPARE(Edited(desktop), folder.PathOf(name));
        QCOMPARE(folder.Names(), std::vector<std::string>{name});
    }

    void picturePath_isOnlyRead_data()
    {
        std::vector<std::string> names = hostileNames;
        for (const std::string name :
             {"../../../../../../../../etc/passwd", "/etc/passwd", "/dev/zero", "/dev/tty", "pipe", "folder",
              "", "..", "\\\\host\\share\\x.jpg", "//host/share/x.jpg", "http://example.invalid/x.png",
              "file:///etc/passwd", ":/icons/add", "qrc:/icons/add", "data:image/png;base64,AAAA",
              "C:\\x.bmp"}) {
            names.push_back(name);
        }
        names.push_back(std::string(300, 'x'));
        names.push_back(std::string(100'000, 'x') + ".png");
        AddNames(names);
    }

    void picturePath_isOnlyRead()
    {
        QFETCH(std::string, name);
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater", {{LocationField::LocPicture, name}});
        program.AddEntry(
            {{EntryField::LocNo, "1"}, {EntryField::Picture, name}, {EntryField::StartDate, "2003-02-05"}});
        program.folder.MakeFolder("folder");
        if constexpr (!isWindows) {
            program.folder.MakePipe("pipe");
        }
        const auto before = Tree(program.folder);
        Answers answers;
        const Program autoAnswered{program.programFolder, program.sql,      program.descs,
                                   program.settings,      program.clock,    answers,
                                   program.files,         program.programs, program.printers,
                                   program.operations,    program.windows,  program.drafts};
        RunInDialog(
            "fEntry", [&] { fEntry(autoAnswered, nullptr).SetData(1, false); }, [](QDialog&) {});
        RunInDialog(
            "dlgLocMaint", [&] { dlgLocMaint(autoAnswered, nullptr).SetData(1, false); }, [](QDialog&) {});
        QVERIFY(Tree(program.folder) == before);
        QCOMPARE(program.StoredEntry(1, EntryField::Picture), name);
        // none of these files exists on Windows
        const bool isNoPicture =
            !isWindows && (name.ends_with("passwd") || name.starts_with("/dev") || name == "pipe");
        QCOMPARE(answers.count > 0, isNoPicture && !name.starts_with("file"));
    }

    void names_areShownLiterally_data()
    {
        AddNames({"<b>x</b>", "<img src=\"/etc/passwd\">", "<a href='http://example.invalid'>x</a>",
                  "<html><script>x</script></html>", "{\\rtf1 x}", "../../x", "%1", "%n", "x&Save y", "&&",
                  "a\tb", "&lt;", "]]>"});
    }

    void names_areShownLiterally()
    {
        QFETCH(std::string, name);
        const QString shown = FromUtf8(name);
        TestProgram program;
        program.Start();
        program.AddLocation(name,
                            {{LocationField::LocDirections, name}, {LocationField::LocDescription, name}});
        program.AddEntry({{EntryField::LocNo, "1"},
                          {EntryField::StartDate, "2003-02-05"},
                          {EntryField::AirTemp, name},
                          {EntryField::Obbos, name}});
        Record report;
        program.sql.ReportGet(0, report);
        report.SetText(ReportField::RptName, name);
        report.SetText(ReportField::FieldKeys, "1");
        QCOMPARE(program.sql.ReportUpdate(report), succeeded);
        Record field;
        RecordList fields;
        QCOMPARE(program.sql.FieldList(fields), succeeded);
        field = Record(fields.front());
        field.SetText(FieldField::Desc, name);
        QCOMPARE(program.sql.FieldUpdate(field), succeeded);
        const std::vector<std::string> names = program.folder.Names();

        fTarno window(program.program);
        QVERIFY(HasCell(window, "lvwEntry", shown));
        QCOMPARE(FindNonLiteralControl(window, shown), QString());
        Answers answers;
        const Program autoAnswered{program.programFolder, program.sql,      program.descs,
                                   program.settings,      program.clock,    answers,
                                   program.files,         program.programs, program.printers,
                                   program.operations,    program.windows,  program.drafts};
        RunInDialog(
            "fLocs", [&] { fLocs(autoAnswered, nullptr).exec(); },
            [&](QDialog& dialog) {
                QVERIFY(HasCell(dialog, "lvwLocs", shown));
                QCOMPARE(FindNonLiteralControl(dialog, shown), QString());
            });
        RunInDialog(
            "dlgLocMaint", [&] { dlgLocMaint(autoAnswered, nullptr).SetData(1, false); },
            [&](QDialog& dialog) { QCOMPARE(FindNonLiteralControl(dialog, shown), QString()); });
        RunInDialog(
            "fRptLog", [&] { fRptLog(autoAnswered, nullptr).exec(); },
            [&](QDialog& dialog) {
                QVERIFY(HasItem(dialog, "cboLocation", shown));
                QVERIFY(HasItem(dialog, "cboSaved", shown));
                QCOMPARE(FindNonLiteralControl(dialog, shown), QString());
            });
        QCOMPARE(program.folder.Names(), names);
    }
};

TEST_CLASS(tst_HostileNames)
#include "tst_HostileNames.moc"
