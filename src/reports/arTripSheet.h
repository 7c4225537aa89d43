#pragma once

#include "analysis/TripDescription.h"
#include "reports/HeadedReport.h"

#include <QImage>
#include <QPageLayout>

#include <vector>

namespace Tarno
{

/// The sheet of one trip: a row for each value, in words, and its picture below.
class arTripSheet : public HeadedReport
{
public:
    /// Prints on `page`. A null `picture` is left out.
    arTripSheet(const QPageLayout& page, std::vector<DescribedValue> values, QImage picture);

    void DataInitialize() override;
    void FetchData(bool& endOfData) override;
    void Detail_Format() override;

private:
    std::vector<DescribedValue> m_values;
    QImage m_picture;
};

} // namespace Tarno
