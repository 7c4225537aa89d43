#pragma once

#include <QIcon>
#include <QLatin1String>

namespace Tarno
{

/// The program's own drawing `name` ("add", "tarno", ...), sharp at every size.
QIcon DrawnIcon(QLatin1String name);

} // namespace Tarno
