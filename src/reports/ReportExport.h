#pragma once

#include "reports/engine/Report.h"
#include "ui/common/Program.h"

#include <QString>

#include <vector>

class QWidget;

namespace mMain
{

// Both ask for a file and write the report's pages into it, through a temporary file that takes the place of
// an older one only when it is complete. A name that does not end with ".pdf" gets that suffix, whichever the
// format. Cancelling is silent; a file that cannot be written is said to the user. `report` must be shown
// in its preview, `parent`.

void RTFExport(const Program& program, const Report& report, QWidget* parent);
void PDFExport(const Program& program, const Report& report, QWidget* parent);

} // namespace mMain

/// The tools that a report's preview offers: "&RTF Export" and "&PDF Export" at their positions.
std::vector<ReportTool> ExportTools();

/// Runs the export whose tool has that caption, for the preview that is the active window; other captions
/// do nothing.
void RunExportTool(const Program& program, const Report& report, const QString& caption);
