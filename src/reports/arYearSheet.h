#pragma once

#include "analysis/YearComparison.h"
#include "reports/HeadedReport.h"

#include <QPageLayout>
#include <QStringList>

#include <vector>

namespace Tarno
{

/// The sheet of a year: its figures and species beside those of the year before, its best trips, and its
/// action by month.
class arYearSheet : public HeadedReport
{
public:
    /// Prints on `page`, which is turned to portrait during a run.
    arYearSheet(const QPageLayout& page, const YearSummary& summary);

    void DataInitialize() override;
    void FetchData(bool& endOfData) override;

private:
    /// A heading, or a caption with a text or with values in columns.
    struct Row {
        QString heading = {};
        QString caption = {};
        QString text = {};
        QStringList values = {};
    };

    void AddFigures(const char* title, const std::vector<ComparedFigure>& figures, int year);
    void AddBestTrips(const YearFigures& figures);
    void AddMonths(const YearFigures& figures);

    std::vector<Row> m_rows;
};

} // namespace Tarno
