#pragma once

#include "ReportDesign.h"

#include <QPageLayout>
#include <QString>

#include <cstddef>

namespace Tarno
{

/// A report with the heading of the program, the export tools and an orientation of its own.
class HeadedReport : public Report
{
public:
    /// Prints `text` at the bottom of every page.
    void AddFooter(const QString& text);

    void ReportStart() override;
    void DataInitialize() override;
    void ReportEnd() override;
    void ToolbarClick(const QString& caption, ReportViewer& viewer) override;

protected:
    /// Prints on `page`, which is turned to `orientation` during a run. The texts of `heading` must outlive
    /// the report.
    HeadedReport(const QPageLayout& page, QPageLayout::Orientation orientation, const QString& caption,
                 const Heading& heading);

    int PrintableWidth() const;

    std::size_t m_row = 0; ///< the next one to fetch

private:
    Heading m_heading;
    QPageLayout::Orientation m_orientation;
    QPageLayout::Orientation m_orientationBefore = QPageLayout::Portrait; ///< of the page before the run
};

} // namespace Tarno
