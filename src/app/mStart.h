#pragma once

#include "DataFolder.h"

namespace Tarno::mStart
{

/// Creates what lives for the whole run, loads the data files in `folder` and shows the main window with the
/// splash screen over it; says where a folder is that was made just now. Returns the exit code when the user
/// has left the program; at once, without a window, when loading fails.
int Main(const DataFolder& folder);

} // namespace Tarno::mStart
