#pragma once

#include "reports/engine/Report.h"
#include "store/Record.h"
#include "ui/common/Program.h"

/// The report that lists every location: name, description, directions, access, position and time zone.
class arLocList : public Report
{
public:
    /// Prints `locations` in their order. They, and what `program` refers to, must outlive the report.
    arLocList(const Program& program, const RecordList& locations);

    void ReportStart() override;
    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void Detail_Format() override;
    void ToolbarClick(const QString& caption) override;

private:
    void DesignPageHeader();
    void DesignDetail();

    const Program& m_program;
    const RecordList& m_locations;
    std::size_t m_row = 0;
};
