#pragma once

#include "store/cSQL.h"
#include "ui/common/Prompts.h"

namespace Tarno
{

/// Shows a conflict with another program over the active window. A conflict is not an error and is not
/// logged.
void ShowConflict(const ConflictNotice& conflict, MessageBoxes& messages);

} // namespace Tarno
