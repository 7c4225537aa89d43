#pragma once

#include "core/Clock.h"
#include "reports/engine/Report.h"

#include <QString>

#include <vector>

namespace Tarno
{

// What the reports' designs have in common. All lengths are twips.

struct Place {
    int left;
    int top;
    int width;
    int height;
};

ReportFont Tahoma(double size = 8, bool bold = false);
/// In bold.
ReportFont Verdana(double size);

/// Appends a control of the kind "Label", "Field", "Line" or "Image".
ReportControl& AddControl(ReportSection& section, const char* kind, const QString& name, const Place& place);

ReportControl& AddLabel(ReportSection& section, const QString& name, const QString& caption,
                        const Place& place, const ReportFont& font);

/// A field bound to `dataField`; one that grows wraps its text as well.
ReportControl& AddField(ReportSection& section, const QString& name, const QString& dataField,
                        const Place& place, const ReportFont& font, bool grows);

struct Heading {
    const char* title;
    const char* pageNumber; ///< the names of the labels in "Page n of m"
    const char* pageCount;
};

/// Puts picture, title, `lblPrinted` and page number into a page header.
void AddHeading(ReportSection& header, const Heading& heading);

/// Puts the page number at the right end of a report that is `width` wide.
void PlacePageNumber(ReportSection& header, const Heading& heading, int width);

/// The tools "&RTF Export" and "&PDF Export" at their positions.
std::vector<ReportTool> ExportTools();

/// Runs the export whose tool has that caption; other captions do nothing.
void RunExportTool(const QString& caption, ReportViewer& viewer);

/// "Printed on " with today's date and the time as the desktop writes them.
QString PrintedOn(const Clock& clock);

} // namespace Tarno
