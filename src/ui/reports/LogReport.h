#pragma once

#include "store/ReportSelection.h"
#include "ui/common/Program.h"

#include <QPageLayout>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>

class QWidget;

namespace Tarno
{

class arLogList;

/// The trips that a query has found.
struct TripsFound {
    std::set<std::string> keys;
    QString query; ///< printed in the page footer
};

/// What a log report shows.
struct LogReportRequest {
    ReportSelection selection;            ///< the fields whose values are shown
    RecordList columns;                   ///< definitions of the columns: headings, widths and fonts
    std::int16_t location = 0;            ///< restricts the report to this location; 0 for all
    bool descending = false;              ///< sorts the first column in descending order
    std::optional<TripsFound> found = {}; ///< restricts the report to these trips
};

/// Fills the report grid of `sql`, to which the report refers, and returns the report with this page and text
/// about the time of printing. Returns null if the selection has no names or no numbers, or if the data
/// access has reported an error.
std::unique_ptr<arLogList> MakeLogReport(cSQL& sql, const LogReportRequest& request, const QPageLayout& page,
                                         const QString& printedOn);

/// Makes the report and shows it in a preview over `parent` until the preview is closed. Shows nothing if it
/// cannot be made. Throws the same errors as a run of arLogList.
void ShowLogReport(const Program& program, const LogReportRequest& request, QWidget* parent);

} // namespace Tarno
