#pragma once

#include "analysis/TripFigures.h"
#include "store/EntryFields.h"
#include "ui/common/Program.h"

namespace Tarno
{

/// Reads the locations and the pick lists for the statistics. A file that cannot be read is reported, and
/// counts as empty.
LogContext ReadLogContext(const Program& program);

/// Returns the name of the pick-list file of a field.
const char* PickListOf(EntryField::Position field);

} // namespace Tarno
