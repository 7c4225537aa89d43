#include "MonthSheet.h"

#include "MonthModel.h"
#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arMonthSheet.h"
#include "ui/reports/fPreview.h"

namespace Tarno
{

void ShowMonthSheet(const Program& program, const MonthModel& month, const QString& title, QWidget* parent)
{
    QStringList weekdays;
    for (int day = 0; day < MonthModel::daysOfWeek; ++day) {
        weekdays << month.headerData(day, Qt::Horizontal, Qt::AccessibleTextRole).toString();
    }
    std::vector<QStringList> weeks;
    for (int week = 0; week < MonthModel::weeks; ++week) {
        QStringList texts;
        bool isInMonth = false;
        for (int day = 0; day < MonthModel::daysOfWeek; ++day) {
            const MonthCell* cell = month.CellAt(month.index(week, day));
            const bool isShown = cell != nullptr && cell->isInMonth;
            isInMonth = isInMonth || isShown;
            texts << (isShown ? FromUtf8(SheetText(cell->day, cell->trips)) : QString());
        }
        if (isInMonth) {
            weeks.push_back(texts);
        }
    }
    constexpr qsizetype longestTitle = 90; // fits on a line of A4 and Letter
    const QString shownTitle =
        title.size() > longestTitle ? title.left(longestTitle - 1) + QChar(0x2026) : title;
    arMonthSheet sheet(program.printers.DefaultPage(), shownTitle, weekdays, std::move(weeks));
    sheet.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(program.clock);
    fPreview(program, sheet, parent).ShowReport();
}

} // namespace Tarno
