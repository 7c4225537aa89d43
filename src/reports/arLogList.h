#pragma once

#include "core/ShellSort.h"
#include "reports/HeadedReport.h"
#include "store/Record.h"

#include <QPageLayout>

namespace Tarno
{

/// The log report: a landscape table. Each run lays out the columns from their field definitions to fit the
/// current page.
///
/// Running it throws Error: TypeMismatch if a width, font size or grow flag is not a number, Overflow if a
/// width or position in twips does not fit in 16 bits, InvalidProcedureCall if a font size is out of range,
/// SubscriptOutOfRange if a row has fewer cells than there are columns.
class arLogList : public HeadedReport
{
public:
    /// Prints on `page`, which is turned to landscape during a run. `columns` contains the field definitions
    /// from left to right, `grid` the rows. The grid and the records in `columns` must outlive the report.
    arLogList(const QPageLayout& page, RecordList columns, const ReportTable& grid);

    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void Detail_BeforePrint() override;

private:
    void LayOutColumns(int printableWidth);

    RecordList m_columns;
    const ReportTable& m_grid;
};

} // namespace Tarno
