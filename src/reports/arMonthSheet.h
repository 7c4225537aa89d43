#pragma once

#include "reports/HeadedReport.h"

#include <QPageLayout>
#include <QString>
#include <QStringList>

#include <vector>

namespace Tarno
{

/// A sheet with the forecasts of a month: a landscape page with a row for each week.
class arMonthSheet : public HeadedReport
{
public:
    /// `weekdays` are the seven headings. `weeks` contains the texts of seven days each, empty for days of
    /// other months.
    arMonthSheet(const QPageLayout& page, const QString& title, QStringList weekdays,
                 std::vector<QStringList> weeks);

    void DataInitialize() override;
    void FetchData(bool& endOfData) override;

private:
    std::vector<QStringList> m_weeks;
    QStringList m_weekdays;
};

} // namespace Tarno
