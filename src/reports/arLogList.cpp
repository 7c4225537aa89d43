#include "arLogList.h"

#include "ReportDesign.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

constexpr Heading heading{"Tarno Fishing Log - Log Reporting", "txtPage", "txtPages"};

// Columns use 57 twips per millimetre instead of twipsPerMillimetre; see docs/quirks.md.
constexpr std::int16_t twipsPerColumnMillimetre = 57;
constexpr std::int16_t headingTop = 13; // top of the first line of headings within the header
constexpr std::int16_t lineAdvance = 7; // distance from one line of columns to the next

constexpr int headingHeight = 399;
constexpr int fieldHeight = 285;
constexpr int lineHeight = 399; // each further line of columns makes the bands this much higher
constexpr int ruleAboveEnd = 12;
constexpr int detailHeight = fieldHeight + 45;

constexpr double smallestFont = 1; // points
constexpr double largestFont = 2160;
constexpr double largestGrowingFont = 36; // with a larger one, a row could take any number of pages

std::int16_t Twips(int millimetres)
{
    return RoundToInt16(static_cast<double>(millimetres) * twipsPerColumnMillimetre);
}

/// Returns the font size of a column, or the nearest one that a report can print.
double FontSize(const RecordView& column)
{
    try {
        return std::clamp(ToDouble(column.Text(FieldField::Font)), smallestFont, largestFont);
    } catch (const Error& error) {
        if (error.Number() != ErrorNumber::Overflow) {
            throw;
        }
        return largestFont;
    }
}

} // namespace

arLogList::arLogList(const QPageLayout& page, RecordList columns, const ReportTable& grid)
    : HeadedReport(page, QPageLayout::Landscape, QStringLiteral("Tarno Fish Log Entry Listing"), heading),
      m_columns(std::move(columns)),
      m_grid(grid)
{
    PageHeader.Height = headingTop * twipsPerColumnMillimetre + headingHeight;
    Detail.Height = detailHeight;
    AddControl(Detail, "Line", QStringLiteral("lineDetail"), {0, detailHeight - ruleAboveEnd, 0, 0}).Weight =
        8;
}

void arLogList::DataInitialize()
{
    HeadedReport::DataInitialize();
    Detail.Controls[QStringLiteral("lineDetail")].Width = PrintableWidth();
    LayOutColumns(PrintableWidth());
}

/// Places the columns side by side without a gap. A column that does not fit starts a new line.
void arLogList::LayOutColumns(int printableWidth)
{
    const double printable = static_cast<double>(printableWidth) / twipsPerColumnMillimetre;
    std::int16_t top = headingTop; // all in millimetres
    std::int16_t left = 0;
    for (const RecordView& column : m_columns) {
        const std::int16_t width = ToInt16(column.Text(FieldField::Width));
        if (left + width > printable) {
            top = RoundToInt16(top + lineAdvance);
            left = 0;
            PageHeader.Height += lineHeight;
            Detail.Height += lineHeight;
        }
        const QString dataName = FromUtf8(column.Text(FieldField::FieldName));
        Fields.Add(dataName);

        ReportControl& label =
            AddLabel(PageHeader, QLatin1String("lbl") + dataName, FromUtf8(column.Text(FieldField::Label)),
                     {Twips(left), Twips(top), Twips(width), headingHeight}, Tahoma(8, true));
        label.VerticalAlignment = VerticalTextAlignment::Middle;
        label.MultiLine = true; // a long heading has room for a second line

        ReportControl& field =
            AddField(Detail, QLatin1String("fld") + dataName, dataName,
                     {Twips(left), Twips(top - headingTop), Twips(width), fieldHeight},
                     Tahoma(FontSize(column)), ToInt16(column.Text(FieldField::Grow)) != 0);
        field.VerticalAlignment = VerticalTextAlignment::Middle;
        field.LargestGrowingFont = largestGrowingFont;
        label.PaddingRight = field.PaddingRight = twipsPerColumnMillimetre; // keeps adjacent texts apart

        left = RoundToInt16(left + width);
    }
}

void arLogList::FetchData(bool& endOfData)
{
    endOfData = m_row >= m_grid.size();
    if (endOfData) {
        return;
    }
    const ReportRow& row = m_grid[m_row];
    if (row.size() < static_cast<std::size_t>(Fields.Count())) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    for (int field = 0; field < Fields.Count(); ++field) {
        Fields.SetValue(field, FromUtf8(row[static_cast<std::size_t>(field)]));
    }
    ++m_row;
}

void arLogList::Detail_BeforePrint()
{
    Detail.Controls[QStringLiteral("lineDetail")].Top = Detail.Height - ruleAboveEnd;
}

} // namespace Tarno
