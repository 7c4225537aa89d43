#include "mStart.h"
#include "ui/common/Icons.h"
#include "ui/common/Strings.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

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
        QStringLiteral("Keep the data in <dir> instead of the program's own folder."), QStringLiteral("dir"),
        QApplication::applicationDirPath());
    parser.addOption(folder);
    parser.process(application);

    return mStart::Main(ToUtf8(QDir::toNativeSeparators(QDir(parser.value(folder)).absolutePath())));
}
