#include "ReportDesign.h"

#include "qt/Icons.h"
#include "qt/Strings.h"

#include <QIcon>

#include <array>

namespace Tarno
{

namespace
{

constexpr int pictureSize = 680;
constexpr int titleLeft = 840;
constexpr int titleWidth = 8000;
constexpr int smallTop = 440; // top of the line below the title
constexpr int smallHeight = 240;

constexpr QLatin1String rtfTool("&RTF Export");
constexpr QLatin1String pdfTool("&PDF Export");

struct PageNumberPart {
    const char* name;
    const char* caption;
    int width;
    PageText page;
};

/// Returns the parts of "Page n of m" from left to right.
std::array<PageNumberPart, 4> PageNumberParts(const Heading& heading)
{
    return {{{"lblPage", "Page", 480, PageText::None},
             {heading.pageNumber, "", 600, PageText::Number},
             {"lblOf", "of", 240, PageText::None},
             {heading.pageCount, "", 600, PageText::Count}}};
}

} // namespace

ReportFont Tahoma(double size, bool bold)
{
    return {QStringLiteral("Tahoma"), size, bold};
}

ReportFont Verdana(double size)
{
    return {QStringLiteral("Verdana"), size, true};
}

ReportControl& AddControl(ReportSection& section, const char* kind, const QString& name, const Place& place)
{
    ReportControl& control = section.Controls.Add(QLatin1String("DDActiveReports.") + QLatin1String(kind));
    control.Name = name;
    control.Left = place.left;
    control.Top = place.top;
    control.Width = place.width;
    control.Height = place.height;
    return control;
}

ReportControl& AddLabel(ReportSection& section, const QString& name, const QString& caption,
                        const Place& place, const ReportFont& font)
{
    ReportControl& label = AddControl(section, "Label", name, place);
    label.Text = caption;
    label.Font = font;
    return label;
}

ReportControl& AddField(ReportSection& section, const QString& name, const QString& dataField,
                        const Place& place, const ReportFont& font, bool grows)
{
    ReportControl& field = AddControl(section, "Field", name, place);
    field.DataField = dataField;
    field.Font = font;
    field.CanGrow = grows;
    field.MultiLine = grows;
    return field;
}

void AddHeading(ReportSection& header, const Heading& heading)
{
    AddControl(header, "Image", QStringLiteral("picHeader"), {0, 0, pictureSize, pictureSize}).Picture =
        DrawnIcon(QLatin1String("tarno")).pixmap(QSize(256, 256)).toImage();
    AddLabel(header, QStringLiteral("lblTitle"), QLatin1String(heading.title),
             {titleLeft, 40, titleWidth, 380}, Verdana(14));
    AddLabel(header, QStringLiteral("lblPrinted"), QStringLiteral("Printed on ... at ..."),
             {titleLeft, smallTop, 5000, smallHeight}, Tahoma());
    for (const PageNumberPart& part : PageNumberParts(heading)) {
        ReportControl& label = AddLabel(header, QLatin1String(part.name), QLatin1String(part.caption),
                                        {0, smallTop, part.width, smallHeight}, Tahoma());
        label.Page = part.page;
        label.Alignment = TextAlignment::Right;
        label.JoinsPrevious = label.Name != QLatin1String("lblPage");
    }
}

void PlacePageNumber(ReportSection& header, const Heading& heading, int width)
{
    const auto parts = PageNumberParts(heading);
    int left = width;
    for (const PageNumberPart& part : parts) {
        left -= part.width;
    }
    for (const PageNumberPart& part : parts) {
        header.Controls[QLatin1String(part.name)].Left = left;
        left += part.width;
    }
}

std::vector<ReportTool> ExportTools()
{
    return {{rtfTool, 3}, {pdfTool, 4}};
}

void RunExportTool(const QString& caption, ReportViewer& viewer)
{
    if (caption == rtfTool) {
        viewer.ExportRtf();
    } else if (caption == pdfTool) {
        viewer.ExportPdf();
    }
}

QString PrintedOn(const Clock& clock)
{
    return FromUtf8("Printed on " + clock.ShortDate() + " at " + clock.ShortTime());
}

} // namespace Tarno
