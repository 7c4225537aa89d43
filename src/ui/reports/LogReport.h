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
    std::int16_t location = 0; ///< only entries of that location; 0 for all
    bool descending = false;   ///< the order of the first column
};

/// Fills the report grid and shows the report in a preview over `parent`, until the preview is closed. Shows
/// nothing if the selection has no names or no numbers, or if the data access has reported an error.
/// Throws what running arLogList throws.
void ShowLogReport(const Program& program, const LogReportRequest& request, QWidget* parent);

} // namespace Tarno
