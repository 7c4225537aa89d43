#include "LogReport.h"

#include "core/ShellSort.h"
#include "core/Text.h"
#include "fPreview.h"
#include "reports/ReportDesign.h"
#include "reports/arLogList.h"

namespace Tarno
{

void ShowLogReport(const Program& program, const LogReportRequest& request, QWidget* parent)
{
    const std::string names = Join(request.selection.names, ',');
    const std::string numbers = Join(request.selection.numbers, ',');
    if (names.empty() || numbers.empty() ||
        program.sql.ReportLogData(names, numbers, request.location,
                                  request.found ? std::optional(request.found->keys) : std::nullopt) !=
            succeeded) {
        return;
    }
    ReportTable& grid = program.sql.ReportGrid();
    if (grid.size() > 1) {
        mMain::ShellSort(grid, {.column = 0, .descending = request.descending, .mode = 0});
    }
    arLogList report(program.printers.DefaultPage(), request.columns, grid);
    report.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(program.clock);
    if (request.found && !request.found->query.isEmpty()) {
        report.AddFooter(QStringLiteral("Trips found by: ") + request.found->query);
    }
    fPreview(program, report, parent).ShowReport();
}

} // namespace Tarno
