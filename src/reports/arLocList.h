#pragma once

#include "reports/engine/Report.h"
#include "store/Record.h"

namespace Tarno
{

/// The report that lists every location: name, description, directions, access, position and time zone.
class arLocList : public Report
{
public:
    /// Prints `locations`, which must outlive the report, in their order on `page`.
    arLocList(const QPageLayout& page, const RecordList& locations);

    void ReportStart() override;
    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void Detail_Format() override;
    void ToolbarClick(const QString& caption, ReportViewer& viewer) override;

private:
    void DesignPageHeader();
    void DesignDetail();

    const RecordList& m_locations;
    std::size_t m_row = 0;
};

} // namespace Tarno
