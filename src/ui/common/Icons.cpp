#include "Icons.h"

#include <QString>

static void InitIcons()
{
    Q_INIT_RESOURCE(icons);
}

QIcon DrawnIcon(QLatin1String name)
{
    InitIcons();
    return QIcon(QLatin1String(":/icons/") + name + QLatin1String(".svg"));
}
