#include "arYearSheet.h"

#include "ReportDesign.h"
#include "analysis/ComparableValues.h"
#include "qt/Strings.h"
#include "store/EntryFields.h"

namespace Tarno
{

namespace
{

constexpr Heading heading{"Tarno Fishing Log - Year", "txtPage", "txtPages"};

constexpr int titleTop = 780;
constexpr int headerHeight = 1200;
constexpr int rowHeight = 260;
constexpr int textTop = 20;
constexpr int textHeight = 230;
constexpr int captionWidth = 3400;
constexpr int columns = 5;
constexpr int fontSize = 9; // points

/// The fields of a row, in the order of its values.
enum Field : int { HeadingField, CaptionField, TextField, FirstValue };

/// Returns a text of the log in at most a few lines of the sheet.
QString Shortened(const std::string& text)
{
    constexpr qsizetype longest = 120;
    const QString shown = FromUtf8(text);
    return shown.size() > longest ? shown.left(longest - 1) + QChar(0x2026) : shown;
}

QString ValueName(int column)
{
    return QStringLiteral("Value%1").arg(column);
}

} // namespace

arYearSheet::arYearSheet(const QPageLayout& page, const YearSummary& summary)
    : HeadedReport(page, QPageLayout::Portrait, QStringLiteral("Tarno Year Sheet"), heading)
{
    PageHeader.Height = headerHeight;
    AddLabel(PageHeader, QStringLiteral("lblYear"), QString::number(summary.year), {0, titleTop, 0, 300},
             Tahoma(12, true));
    Detail.Height = rowHeight;
    AddField(Detail, QStringLiteral("fldHeading"), QStringLiteral("Heading"),
             {0, textTop, captionWidth, textHeight}, Tahoma(fontSize, true), false);
    AddField(Detail, QStringLiteral("fldCaption"), QStringLiteral("Caption"),
             {0, textTop, captionWidth, textHeight}, Tahoma(fontSize), true);
    AddField(Detail, QStringLiteral("fldText"), QStringLiteral("Text"),
             {captionWidth, textTop, 0, textHeight}, Tahoma(fontSize), true);
    for (int column = 0; column < columns; ++column) {
        AddField(Detail, QLatin1String("fld") + ValueName(column), ValueName(column),
                 {captionWidth, textTop, 0, textHeight}, Tahoma(fontSize), false);
    }
    AddFigures("Figures", CompareYears(summary), summary.year);
    AddBestTrips(summary.figures);
    AddMonths(summary.figures);
    m_rows.push_back({});
    AddFigures("Species", CompareSpecies(summary), summary.year);
}

void arYearSheet::AddFigures(const char* title, const std::vector<ComparedFigure>& figures, int year)
{
    m_rows.push_back(
        {.heading = QLatin1String(title), .values = {QString::number(year), QString::number(year - 1)}});
    for (const ComparedFigure& figure : figures) {
        m_rows.push_back({.caption = Shortened(figure.caption),
                          .values = {FromUtf8(figure.year), FromUtf8(figure.before)}});
    }
}

void arYearSheet::AddBestTrips(const YearFigures& figures)
{
    m_rows.push_back({});
    m_rows.push_back({.heading = QStringLiteral("Best trips")});
    if (figures.best.empty()) {
        m_rows.push_back({.caption = QStringLiteral("No trip has the action Good or Hot!.")});
    }
    for (const BestTrip& trip : figures.best) {
        QStringList parts;
        for (const std::string* part : {&trip.action, &trip.place, &trip.caught}) {
            if (!part->empty()) {
                parts << Shortened(*part);
            }
        }
        m_rows.push_back({.caption = FromUtf8(trip.date), .text = parts.join(QLatin1String(", "))});
    }
}

void arYearSheet::AddMonths(const YearFigures& figures)
{
    QStringList words;
    for (const std::string_view word : FieldWords::action) {
        words << FromUtf8(word);
    }
    words << FromUtf8(FieldWords::notSet);
    m_rows.push_back({});
    m_rows.push_back({.heading = QStringLiteral("Trips by month and action"), .values = words});
    for (std::size_t month = 0; month < figures.months.size(); ++month) {
        QStringList counts;
        for (const int count : figures.months.at(month)) {
            counts << (count == 0 ? QStringLiteral("-") : QString::number(count));
        }
        m_rows.push_back({.caption = FromUtf8(monthNames.at(month)), .values = counts});
    }
}

void arYearSheet::DataInitialize()
{
    HeadedReport::DataInitialize();
    const int width = PrintableWidth();
    PageHeader.Controls[QStringLiteral("lblYear")].Width = width;
    for (const char* name : {"Heading", "Caption", "Text"}) {
        Fields.Add(QLatin1String(name));
    }
    const int valueWidth = (width - captionWidth) / columns;
    Detail.Controls[QStringLiteral("fldText")].Width = width - captionWidth;
    for (int column = 0; column < columns; ++column) {
        Fields.Add(ValueName(column));
        ReportControl& value = Detail.Controls[QLatin1String("fld") + ValueName(column)];
        value.Left = captionWidth + column * valueWidth;
        value.Width = valueWidth;
    }
}

void arYearSheet::FetchData(bool& endOfData)
{
    endOfData = m_row >= m_rows.size();
    if (endOfData) {
        return;
    }
    const Row& row = m_rows[m_row];
    Fields.SetValue(HeadingField, row.heading);
    Fields.SetValue(CaptionField, row.caption);
    Fields.SetValue(TextField, row.text);
    for (int column = 0; column < columns; ++column) {
        Fields.SetValue(FirstValue + column, row.values.value(column));
    }
    ++m_row;
}

} // namespace Tarno
