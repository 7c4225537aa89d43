#pragma once

#include "core/Clock.h"
#include "reports/engine/Report.h"

#include <QString>

#include <vector>

namespace Tarno
{

// Helpers shared by the designs of the reports. All lengths are in twips.

struct Place {
    int left;
    int top;
    int width;
    int height;
};

ReportFont Tahoma(double size = 8, bool bold = false);
/// Returns bold Verdana.
ReportFont Verdana(double size);

/// Appends a control of the kind "Label", "Field", "Line" or "Image".
ReportControl& AddControl(ReportSection& section, const char* kind, const QString& name, const Place& place);

ReportControl& AddLabel(ReportSection& section, const QString& name, const QString& caption,
                        const Place& place, const ReportFont& font);

/// Appends a field bound to `dataField`. If `grows` is true, the field also wraps its text.
ReportControl& AddField(ReportSection& section, const QString& name, const QString& dataField,
                        const Place& place, const ReportFont& font, bool grows);

struct Heading {
    const char* title;
    const char* pageNumber; ///< name of the label that shows n in "Page n of m"
    const char* pageCount;  ///< name of the label that shows m
};

/// Adds the picture, the title, `lblPrinted` and the page number to a page header.
void AddHeading(ReportSection& header, const Heading& heading);

/// Aligns the page number with the right edge of a report that is `width` wide.
void PlacePageNumber(ReportSection& header, const Heading& heading, int width);

/// Returns the tools "&RTF Export" and "&PDF Export" with their positions.
std::vector<ReportTool> ExportTools();

/// Runs the export whose tool has the given caption. Ignores other captions.
void RunExportTool(const QString& caption, ReportViewer& viewer);

/// Returns "Printed on <date> at <time>" for the current time, in the formats of the desktop.
QString PrintedOn(const Clock& clock);

} // namespace Tarno
