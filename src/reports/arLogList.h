#pragma once

#include "core/ShellSort.h"
#include "reports/engine/Report.h"
#include "store/Record.h"

#include <QPageLayout>

#include <cstddef>

namespace Tarno
{

/// The log report: a landscape table whose columns are laid out from their field definitions, each time that
/// the report runs, for the page that it prints on.
///
/// Running it throws Error: TypeMismatch when a width, font size or grow flag is no number, Overflow when a
/// width or position is no 16-bit number of twips, InvalidProcedureCall for a font size that no font has,
/// SubscriptOutOfRange when a row has fewer cells than there are columns.
class arLogList : public Report
{
public:
    /// Prints on `page`, turned to landscape while it runs. `columns` are field definitions in the order of
    /// the report, `grid` its rows. The grid and what `columns` refer to must outlive the report.
    arLogList(const QPageLayout& page, RecordList columns, const ReportTable& grid);

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
    QPageLayout::Orientation m_orientation = QPageLayout::Portrait; ///< of the printer, before the report
};

} // namespace Tarno
