#pragma once

#include <string>

namespace mStart
{

/// Creates what lives for the whole run, loads the data files in `folder` (UTF-8, the program's own
/// folder) and shows the main window with the splash screen over it. Returns the exit code when the user
/// has left the program; at once, without a window, when loading fails.
int Main(const std::string& folder);

} // namespace mStart
