#pragma once

#include "ui/common/Program.h"

#include <string>
#include <vector>

class QWidget;

namespace Tarno
{

/// Asks for a file with trips, shows what it contains, and imports it if the user wants it. Returns the keys
/// of the imported trips.
std::vector<std::string> ImportTrips(const Program& program, QWidget* parent);

} // namespace Tarno
