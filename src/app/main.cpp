#include "core/Error.h"
#include "mStart.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/Icons.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarno"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(TARNO_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(DrawnIcon(QLatin1String("tarno")));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A fishing log for one angler."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption folder(
        QStringLiteral("folder"),
        QStringLiteral("Keep the data in <dir> instead of the program's or your own folder."),
        QStringLiteral("dir"));
    parser.addOption(folder);
    parser.process(application);

    if (parser.isSet(folder)) {
        return mStart::Main({QDir(parser.value(folder)).absolutePath()});
    }
    const QString programFolder = QApplication::applicationDirPath();
    const QString userFolder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    try {
        return mStart::Main(FindDataFolder(programFolder, userFolder));
    } catch (const Error&) {
        DesktopMessageBoxes().Tell(
            nullptr,
            QStringLiteral("Your log needs a folder that can be written to. This one cannot be "
                           "made:\r\n\r\n") +
                QDir::toNativeSeparators(userFolder) +
                QStringLiteral("\r\n\r\nStart Tarno with --folder and another one."),
            QStringLiteral("Tarno Error"));
        return 1;
    }
}
