#include "LogReport.h"

#include "core/ShellSort.h"
#include "core/Text.h"
#include "fPreview.h"
#include "reports/ReportDesign.h"
#include "reports/arLogList.h"

namespace Tarno
{

std::unique_ptr<arLogList> MakeLogReport(cSQL& sql, const LogReportRequest& request, const QPageLayout& page,
                                         const QString& printedOn)
{
    const std::string names = Join(request.selection.names, ',');
    const std::string numbers = Join(request.selection.numbers, ',');
    if (names.empty() || numbers.empty() ||
        sql.ReportLogData(names, numbers, request.location,
                          request.found ? std::optional(request.found->keys) : std::nullopt) != succeeded) {
        return nullptr;
    }
    ReportTable& grid = sql.ReportGrid();
    if (grid.size() > 1) {
        mMain::ShellSort(grid, {.column = 0, .descending = request.descending, .mode = 0});
    }
    auto report = std::make_unique<arLogList>(page, request.columns, grid);
    report->PageHeader.Controls[QStringLiteral("lblPrinted")].Text = printedOn;
    if (request.found && !request.found->query.isEmpty()) {
        report->AddFooter(QStringLiteral("Trips found by: ") + request.found->query);
    }
    return report;
}

void ShowLogReport(const Program& program, const LogReportRequest& request, QWidget* parent)
{
    if (const auto report =
            MakeLogReport(program.sql, request, program.printers.DefaultPage(), PrintedOn(program.clock))) {
        fPreview(program, *report, parent).ShowReport();
    }
}

} // namespace Tarno
