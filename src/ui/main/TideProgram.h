#pragma once

#include "ui/common/Program.h"

class QWidget;

namespace Tarno
{

/// Starts the tide program of the settings and returns without waiting for it. If no existing program is set,
/// asks for one over `window` and does nothing if the user cancels. A program that cannot be started is
/// removed from the settings, so that the next call asks again; throws Error FileNotFound then.
void StartTideProgram(const Program& program, QWidget* window);

} // namespace Tarno
