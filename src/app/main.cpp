#include "core/Error.h"
#include "mStart.h"
#include "qt/Icons.h"
#include "ui/common/CrispFrames.h"
#include "ui/common/DarkColours.h"
#include "ui/common/DesktopPrompts.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <QStyle>

#include <optional>

#ifdef Q_OS_WIN
#include <QPalette>
#include <QSettings>

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

/// Returns the absolute path given with --folder, or nothing without that option. Exits the program for
/// --help, --version and unknown options.
static std::optional<QString> FolderOption(const QApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A fishing log for one angler."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption folder(
        QStringLiteral("folder"),
        QStringLiteral("Store the data in <dir> instead of the program folder or your own data folder."),
        QStringLiteral("dir"));
    parser.addOption(folder);
    parser.process(application);
    return parser.isSet(folder) ? std::optional(QDir(parser.value(folder)).absolutePath()) : std::nullopt;
}

int main(int argc, char* argv[])
{
#ifdef Q_OS_WIN
    constexpr const char* platform = "QT_QPA_PLATFORM";
    const bool isDark = !qEnvironmentVariableIsSet(platform) && UserWantsDarkPrograms();
    if (isDark) { // the Windows style is always light; Fusion follows the palette
        qputenv(platform, "windows:darkmode=2");
        QApplication::setStyle(QStringLiteral("fusion"));
    }
#endif
    QApplication application(argc, argv);
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
    QApplication::setApplicationName(QStringLiteral("Tarno"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(TARNO_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(DrawnIcon(QLatin1String("tarno")));

    if (const auto folder = FolderOption(application)) {
        return mStart::Main({*folder});
    }
    const QString programFolder = QApplication::applicationDirPath();
    const QString userFolder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
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
