#pragma once

#include <QPalette>

#include <chrono>

namespace Tarno
{

/// Whether the settings portal of the desktop prefers dark colours. Returns false if there is no portal or no
/// answer within `timeout`.
bool DesktopPrefersDark(std::chrono::milliseconds timeout = std::chrono::seconds(1));

/// Returns dark colours for Qt's style Fusion.
QPalette DarkColours();

} // namespace Tarno
