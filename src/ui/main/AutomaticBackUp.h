#pragma once

#include "ui/common/Program.h"

class QWidget;

namespace Tarno
{

/// Makes an automatic back-up if this run has changed the log; call this when the program ends. The user can
/// cancel it. If it fails, says so, but only once a day for each log. Never fails.
void BackUpAutomatically(const Program& program, QWidget* parent);

} // namespace Tarno
