#include "Icons.h"

#include <QDir>
#include <QString>

// Q_INIT_RESOURCE does not work in a namespace
static void InitIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace Tarno
{

QIcon DrawnIcon(QLatin1String name)
{
    InitIcons();
    QIcon icon;
    for (const QFileInfo& file : QDir(QLatin1String(":/icons/") + name).entryInfoList()) {
        icon.addFile(file.filePath());
    }
    return icon;
}

} // namespace Tarno
