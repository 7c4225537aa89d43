#pragma once

#include "store/ReportSelection.h"
#include "ui/common/Program.h"

#include <cstdint>

class QWidget;

namespace Tarno
{

/// What a log report shows.
struct LogReportRequest {
    ReportSelection selection; ///< the fields whose values are shown
    RecordList columns;        ///< definitions of the columns: headings, widths and fonts
    std::int16_t location = 0; ///< restricts the report to this location; 0 for all
    bool descending = false;   ///< sorts the first column in descending order
};

/// Fills the report grid and shows the report in a preview over `parent` until the preview is closed. Shows
/// nothing if the selection has no names or no numbers, or if the data access has reported an error.
/// Throws the same errors as a run of arLogList.
void ShowLogReport(const Program& program, const LogReportRequest& request, QWidget* parent);

} // namespace Tarno
