#pragma once

#include "ui/common/Program.h"

class QWidget;

namespace Tarno
{

/// Lets the user choose locations, and writes them to a GPX file as way points.
void ExportLocations(const Program& program, QWidget* parent);

/// Asks for a GPX file and adds those of its way points to the locations that the user chooses.
void ImportLocations(const Program& program, QWidget* parent);

} // namespace Tarno
