#include "HeadedReport.h"

namespace Tarno
{

namespace
{

constexpr int footerHeight = 285;

} // namespace

HeadedReport::HeadedReport(const QPageLayout& page, QPageLayout::Orientation orientation,
                           const QString& caption, const Heading& heading)
    : m_heading(heading), m_orientation(orientation)
{
    Caption = caption;
    Page = page;
    AddHeading(PageHeader, heading);
}

void HeadedReport::AddFooter(const QString& text)
{
    PageFooter.Height = footerHeight;
    AddLabel(PageFooter, QStringLiteral("lblFooter"), text, {0, 0, 0, footerHeight}, Tahoma())
        .VerticalAlignment = VerticalTextAlignment::Bottom;
}

void HeadedReport::ReportStart()
{
    m_orientationBefore = Page.orientation();
    Page.setOrientation(m_orientation);
    Tools = ExportTools();
    m_row = 0;
}

void HeadedReport::DataInitialize()
{
    PlacePageNumber(PageHeader, m_heading, PrintableWidth());
    for (ReportControl& footer : PageFooter.Controls) {
        footer.Width = PrintableWidth();
    }
}

void HeadedReport::ReportEnd()
{
    Page.setOrientation(m_orientationBefore);
}

void HeadedReport::ToolbarClick(const QString& caption, ReportViewer& viewer)
{
    RunExportTool(caption, viewer);
}

int HeadedReport::PrintableWidth() const
{
    return PaperSize().width() - PaperMargins().left() - PaperMargins().right();
}

} // namespace Tarno
