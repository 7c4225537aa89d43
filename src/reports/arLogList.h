#pragma once

#include "core/ShellSort.h"
#include "reports/engine/Report.h"
#include "store/Record.h"

#include <QPageLayout>

#include <cstddef>

namespace Tarno
{

/// The log report: a landscape table. Each run lays out the columns from their field definitions to fit the
/// current page.
///
/// Running it throws Error: TypeMismatch if a width, font size or grow flag is not a number, Overflow if a
/// width or position in twips does not fit in 16 bits, InvalidProcedureCall if a font size is out of range,
/// SubscriptOutOfRange if a row has fewer cells than there are columns.
class arLogList : public Report
{
public:
    /// Prints on `page`, which is turned to landscape during a run. `columns` contains the field definitions
    /// from left to right, `grid` the rows. The grid and the records in `columns` must outlive the report.
    arLogList(const QPageLayout& page, RecordList columns, const ReportTable& grid);

    /// Prints `text` at the bottom of every page.
    void AddFooter(const QString& text);

    void ReportStart() override;
    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void Detail_BeforePrint() override;
    void ReportEnd() override;
    void ToolbarClick(const QString& caption, ReportViewer& viewer) override;

private:
    void LayOutColumns(int printableWidth);

    RecordList m_columns;
    const ReportTable& m_grid;
    std::size_t m_row = 0;
    QPageLayout::Orientation m_orientation = QPageLayout::Portrait; ///< of the page before the run
};

} // namespace Tarno
