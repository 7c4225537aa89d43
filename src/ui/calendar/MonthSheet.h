#pragma once

#include "reports/arMonthSheet.h"
#include "ui/common/Program.h"

#include <QPageLayout>
#include <QString>

class QWidget;

namespace Tarno
{

class MonthModel;

/// Returns the sheet of a month. `title` names the month and the place; a long one is shortened.
arMonthSheet MonthSheetOf(const MonthModel& month, const QString& title, const QPageLayout& page);

/// Shows the sheet of a month in a preview over `parent` until the preview is closed.
void ShowMonthSheet(const Program& program, const MonthModel& month, const QString& title, QWidget* parent);

} // namespace Tarno
