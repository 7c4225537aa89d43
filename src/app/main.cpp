#include "CommandLine.h"
#include "Commands.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/Text.h"
#include "mStart.h"
#include "qt/Icons.h"
#include "qt/Strings.h"
#include "ui/common/CrispFrames.h"
#include "ui/common/DarkColours.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/SystemClock.h"
#include "ui/reports/DesktopPrinters.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QStyle>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#ifdef Q_OS_WIN
#include <QPalette>
#include <QSettings>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

/// Whether errors are printed: to the console program, or because they are redirected.
static bool HasErrorOutput()
{
    return ::GetFileType(::GetStdHandle(STD_ERROR_HANDLE)) != FILE_TYPE_UNKNOWN;
}

static bool UserWantsDarkPrograms()
{
    const QSettings theme(
        QStringLiteral(
            "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize"),
        QSettings::NativeFormat);
    return theme.value(QStringLiteral("AppsUseLightTheme"), 1).toInt() == 0;
}
#endif

using namespace Tarno;

static QString UserFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

/// Tells the user why nothing is done.
static void ShowProblem([[maybe_unused]] int argc, [[maybe_unused]] char** argv, const std::string& text)
{
#ifdef Q_OS_WIN
    if (!HasErrorOutput()) {
        const QApplication application(argc, argv);
        DesktopMessageBoxes().ShowInformation(nullptr, FromUtf8(text), QStringLiteral("Tarno"));
        return;
    }
#endif
    std::cerr << text << '\n';
}

/// Prints the text on standard output and returns the exit status of the program.
static int Print(std::string_view text)
{
    if (std::cout << text << std::flush) {
        return Done;
    }
    std::cerr << "The output could not be written completely.\n";
    return NotDone;
}

/// Prints the cause of an error that a routine has reported.
static void PrintCause(const std::string& report, const std::string& /*title*/)
{
    constexpr std::string_view end = "error raised\r\n";
    const auto at = report.rfind(end);
    std::cerr << ReplaceAll(at == std::string::npos ? report : report.substr(at + end.size()), "\r\n", "\n")
              << '\n';
}

/// Prints only messages of Qt about errors. Its warnings are for developers and would look like messages of
/// the command.
static void PrintMessageOfQt(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::cerr << ToUtf8(text) << '\n';
    }
}

/// Carries out a command and returns the exit status of the program.
static int RunWithoutDisplay(const CommandLine& line, char** argv)
{
    qInstallMessageHandler(PrintMessageOfQt);
    int onlyName = 1; // the options of Qt do not matter without a window
    std::unique_ptr<QCoreApplication> application;
    if (PrintsPages(line)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(onlyName, argv);
    } else {
        application = std::make_unique<QCoreApplication>(onlyName, argv);
    }
#ifdef Q_OS_WIN
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    QString path = line.folder ? FromUtf8(*line.folder)
                               : ExistingDataFolder(QCoreApplication::applicationDirPath(), UserFolder());
    if (path.isEmpty() && line.action == Action::Restore) {
        path = UserFolder();
    }
    if (path.isEmpty()) {
        std::cerr << "There is no log yet. Start Tarno once to create it, or use --folder.\n";
        return NotDone;
    }
    const ProgramFolder folder(ToUtf8(QDir::toNativeSeparators(path)));
    const auto operations = SystemFileOperations();
    const SystemClock clock;
    DesktopPrinters printers;
    cSQL sql(folder, *operations);
    ErrorReporter::Instance().SetShowMessage(PrintCause);
    const ExitStatus status =
        RunCommand(line, {folder, *operations, sql, clock, printers, std::cin, std::cout, std::cerr});
    ErrorReporter::Instance().Reset();
    return status;
}

/// Opens the window and returns the exit status of the program.
static int OpenWindow(int argc, char** argv, const std::optional<std::string>& folder)
{
#ifdef Q_OS_WIN
    constexpr const char* platform = "QT_QPA_PLATFORM";
    const bool isDark = !qEnvironmentVariableIsSet(platform) && UserWantsDarkPrograms();
    if (isDark) { // the Windows style is always light; Fusion follows the palette
        qputenv(platform, "windows:darkmode=2");
        QApplication::setStyle(QStringLiteral("fusion"));
    }
#endif
    const QApplication application(argc, argv);
#ifdef Q_OS_WIN
    if (isDark) {
        qunsetenv(platform); // programs started by this one must not inherit it
        QPalette colours = QApplication::palette();
        colours.setColor(QPalette::AlternateBase, colours.color(QPalette::Window)); // default: bright blue
        QApplication::setPalette(colours);
    }
#else
    if (QApplication::style()->name() == QLatin1String("fusion")) {
        QApplication::setStyle(new CrispFrames);
    }
    // KDE's own style is already dark; Qt's style for GNOME and others ignores the preference
    if (QApplication::palette().color(QPalette::Window).lightness() > 128 && DesktopPrefersDark()) {
        QApplication::setPalette(DarkColours());
    }
#endif
    QApplication::setApplicationDisplayName(QString());
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(DrawnIcon(QLatin1String("tarno")));

    if (folder) {
        return mStart::Main({FromUtf8(*folder)});
    }
    const QString programFolder = QApplication::applicationDirPath();
    const QString userFolder = UserFolder();
    try {
        return mStart::Main(FindDataFolder(programFolder, userFolder));
    } catch (const Error&) {
        DesktopMessageBoxes().ShowInformation(
            nullptr,
            QStringLiteral("Tarno could not create the folder for your log:\r\n\r\n") +
                QDir::toNativeSeparators(userFolder) +
                QStringLiteral("\r\n\r\nNo log was created. Start Tarno with --folder "
                               "and a folder that you can write to."),
            QStringLiteral("Tarno Error"));
        return 1;
    }
}

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Tarno"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TARNO_VERSION));
    std::vector<std::string> arguments;
    std::transform(argv + std::min(argc, 1), argv + argc, std::back_inserter(arguments),
                   [](const char* argument) { return ToUtf8(QString::fromLocal8Bit(argument)); });
    CommandLine line = ParseCommandLine(arguments);
    if (!line.problem.empty()) {
        ShowProblem(argc, argv, line.problem + "\n\"tarno --help\" shows all options.");
        return WrongUsage;
    }
    if (line.action == Action::ShowHelp) {
        return Print(HelpText());
    }
    if (line.action == Action::ShowVersion) {
        return Print("Tarno " TARNO_VERSION "\n");
    }
    if (line.folder) {
        const QDir folder(FromUtf8(*line.folder));
        if (!folder.exists() && line.action != Action::Restore) {
            ShowProblem(argc, argv, "The folder does not exist: " + *line.folder + "\nNo log was opened.");
            return NotDone;
        }
        line.folder = ToUtf8(folder.absolutePath());
    }
    return line.action == Action::OpenWindow ? OpenWindow(argc, argv, line.folder)
                                             : RunWithoutDisplay(line, argv);
}
