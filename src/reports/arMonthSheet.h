#pragma once

#include "reports/engine/Report.h"

#include <QPageLayout>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

namespace Tarno
{

/// A sheet with the forecasts of a month: a landscape page with a row for each week.
class arMonthSheet : public Report
{
public:
    /// `weekdays` are the seven headings. `weeks` contains the texts of seven days each, empty for days of
    /// other months.
    arMonthSheet(const QPageLayout& page, const QString& title, QStringList weekdays,
                 std::vector<QStringList> weeks);

    void ReportStart() override;
    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void ReportEnd() override;
    void ToolbarClick(const QString& caption, ReportViewer& viewer) override;

private:
    std::vector<QStringList> m_weeks;
    QStringList m_weekdays;
    std::size_t m_row = 0;
    QPageLayout::Orientation m_orientation = QPageLayout::Portrait; ///< of the page before the run
};

} // namespace Tarno
