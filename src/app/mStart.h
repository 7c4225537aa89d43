#pragma once

#include "DataFolder.h"

namespace Tarno::mStart
{

/// Creates the objects that live for the whole run, loads the data files in `folder`, and shows the main
/// window with the splash screen over it. If `folder` is new, a message first shows its path. Returns the
/// exit code when the user exits. If loading fails, returns immediately without showing a window.
int Main(const DataFolder& folder);

} // namespace Tarno::mStart
