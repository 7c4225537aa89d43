#include "Icons.h"

#include <QDir>
#include <QString>

static void InitIcons()
{
    Q_INIT_RESOURCE(icons);
}

QIcon DrawnIcon(QLatin1String name)
{
    InitIcons();
    QIcon icon;
    for (const QFileInfo& file : QDir(QLatin1String(":/icons/") + name).entryInfoList()) {
        icon.addFile(file.filePath());
    }
    return icon;
}
