#pragma once

#include "store/ReportSelection.h"
#include "ui/common/Program.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <set>
#include <string>

class QWidget;

namespace Tarno
{

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

/// Fills the report grid and shows the report in a preview over `parent` until the preview is closed. Shows
/// nothing if the selection has no names or no numbers, or if the data access has reported an error.
/// Throws the same errors as a run of arLogList.
void ShowLogReport(const Program& program, const LogReportRequest& request, QWidget* parent);

} // namespace Tarno
