#pragma once

#include "analysis/TripDescription.h"
#include "reports/engine/Report.h"

#include <QImage>
#include <QPageLayout>

#include <cstddef>
#include <vector>

namespace Tarno
{

/// The sheet of one trip: a row for each value, in words, and its picture below.
class arTripSheet : public Report
{
public:
    /// Prints on `page`. A null `picture` is left out.
    arTripSheet(const QPageLayout& page, std::vector<DescribedValue> values, QImage picture);

    void ReportStart() override;
    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void Detail_Format() override;
    void ToolbarClick(const QString& caption, ReportViewer& viewer) override;

private:
    int PrintableWidth() const;

    std::vector<DescribedValue> m_values;
    QImage m_picture;
    std::size_t m_row = 0;
};

} // namespace Tarno
