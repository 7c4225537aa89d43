#pragma once

#include <QIcon>
#include <QLatin1String>

namespace Tarno
{

/// Returns the icon `name` of the program ("add", "tarno", ...), which is sharp at every size.
QIcon DrawnIcon(QLatin1String name);

} // namespace Tarno
