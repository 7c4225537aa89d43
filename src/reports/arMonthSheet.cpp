#include "arMonthSheet.h"

#include "ReportDesign.h"

#include <utility>

namespace Tarno
{

namespace
{

constexpr Heading heading{"Tarno Fishing Log - Calendar", "txtPage", "txtPages"};

constexpr int daysOfWeek = 7;
constexpr int titleTop = 780;
constexpr int weekdaysTop = 1090;
constexpr int lineHeight = 285;
constexpr int headerHeight = weekdaysTop + lineHeight + 30;
constexpr int weekHeight = 1280; // six of them fit on A4 and on Letter
constexpr int gap = 60;
constexpr double fontSize = 7; // points

QString DayName(int day)
{
    return QStringLiteral("Day%1").arg(day);
}

} // namespace

arMonthSheet::arMonthSheet(const QPageLayout& page, const QString& title, QStringList weekdays,
                           std::vector<QStringList> weeks)
    : HeadedReport(page, QPageLayout::Landscape, QStringLiteral("Tarno Fishing Calendar"), heading),
      m_weeks(std::move(weeks)),
      m_weekdays(std::move(weekdays))
{
    PageHeader.Height = headerHeight;
    AddLabel(PageHeader, QStringLiteral("lblMonth"), title, {0, titleTop, 0, lineHeight}, Tahoma(11, true));
    Detail.Height = weekHeight;
}

void arMonthSheet::DataInitialize()
{
    HeadedReport::DataInitialize();
    const int width = PrintableWidth();
    PageHeader.Controls[QStringLiteral("lblMonth")].Width = width;
    for (int day = 0; day < daysOfWeek; ++day) {
        const int left = width * day / daysOfWeek;
        const int right = width * (day + 1) / daysOfWeek - gap;
        Fields.Add(DayName(day));
        AddLabel(PageHeader, QLatin1String("lbl") + DayName(day), m_weekdays.value(day),
                 {left, weekdaysTop, right - left, lineHeight}, Tahoma(8, true));
        AddField(Detail, QLatin1String("fld") + DayName(day), DayName(day),
                 {left, gap, right - left, weekHeight - gap}, Tahoma(fontSize), false)
            .MultiLine = true;
    }
    AddControl(Detail, "Line", QStringLiteral("lineWeek"), {0, 0, width, 0}).Weight = 8;
}

void arMonthSheet::FetchData(bool& endOfData)
{
    endOfData = m_row >= m_weeks.size();
    if (endOfData) {
        return;
    }
    for (int day = 0; day < daysOfWeek; ++day) {
        Fields.SetValue(day, m_weeks[m_row].value(day));
    }
    ++m_row;
}

} // namespace Tarno
