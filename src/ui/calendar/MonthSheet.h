#pragma once

#include "ui/common/Program.h"

#include <QString>

class QWidget;

namespace Tarno
{

class MonthModel;

/// Shows the sheet of a month in a preview over `parent` until the preview is closed. `title` names the month
/// and the place.
void ShowMonthSheet(const Program& program, const MonthModel& month, const QString& title, QWidget* parent);

} // namespace Tarno
