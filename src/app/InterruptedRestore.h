#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"

#include <string>

namespace Tarno
{

/// Finishes a restore that was killed; call this before the log is read. Returns a sentence for the user
/// about what was done, or an empty text if there was nothing to do. Throws Error with sentences for the user
/// if the log must not be read.
std::string FinishInterruptedRestore(const ProgramFolder& folder, FileOperations& operations);

} // namespace Tarno
