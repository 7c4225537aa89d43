#pragma once

#include "store/cSQL.h"
#include "ui/common/Prompts.h"

namespace Tarno
{

/// Shows the user a conflict with another program over the active window. It is no error: nothing is logged.
void ShowConflict(const ConflictNotice& conflict, MessageBoxes& messages);

} // namespace Tarno
