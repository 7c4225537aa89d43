#include "arTripSheet.h"

#include "ReportDesign.h"
#include "qt/Strings.h"

#include <utility>

namespace Tarno
{

namespace
{

constexpr Heading heading{"Tarno Fishing Log - Trip", "txtPage", "txtPages"};

constexpr int headerHeight = 1140;
constexpr int captionWidth = 2000;
constexpr int rowHeight = 330;
constexpr int textTop = 45;
constexpr int textHeight = 240;
constexpr int spaceAbovePicture = 240;
constexpr int fontSize = 10; // points

} // namespace

arTripSheet::arTripSheet(const QPageLayout& page, std::vector<DescribedValue> values, QImage picture)
    : HeadedReport(page, QPageLayout::Portrait, QStringLiteral("Tarno Trip Sheet"), heading),
      m_values(std::move(values)),
      m_picture(std::move(picture))
{
    PageHeader.Height = headerHeight;
    Detail.Height = rowHeight;
    AddField(Detail, QStringLiteral("fldCaption"), QStringLiteral("Caption"),
             {0, textTop, captionWidth, textHeight}, Tahoma(fontSize, true), false);
    AddField(Detail, QStringLiteral("fldText"), QStringLiteral("Text"),
             {captionWidth, textTop, 0, textHeight}, Tahoma(fontSize), true);
    AddControl(Detail, "Image", QStringLiteral("picTrip"), {0, 0, 0, 0}).Visible = false;
}

void arTripSheet::DataInitialize()
{
    HeadedReport::DataInitialize();
    Fields.Add(QStringLiteral("Caption"));
    Fields.Add(QStringLiteral("Text"));
    Detail.Controls[QStringLiteral("fldText")].Width = PrintableWidth() - captionWidth;
}

void arTripSheet::FetchData(bool& endOfData)
{
    const std::size_t rows = m_values.size() + (m_picture.isNull() ? 0 : 1);
    endOfData = m_row >= rows;
    if (endOfData) {
        return;
    }
    const bool isPicture = m_row == m_values.size();
    Fields.SetValue(0, isPicture ? QString() : FromUtf8(m_values[m_row].caption));
    Fields.SetValue(1, isPicture ? QString() : FromUtf8(m_values[m_row].text));
    ++m_row;
}

/// Turns the row after the values into the one of the picture, which takes at most a third of the page.
void arTripSheet::Detail_Format()
{
    if (m_row <= m_values.size()) {
        return;
    }
    const QSize room(PrintableWidth(), PaperSize().height() / 3);
    const QSize shown = m_picture.size().scaled(room, Qt::KeepAspectRatio);
    ReportControl& picture = Detail.Controls[QStringLiteral("picTrip")];
    picture.Visible = true;
    picture.Picture = m_picture;
    picture.Top = spaceAbovePicture;
    picture.Width = shown.width();
    picture.Height = shown.height();
    Detail.Height = picture.Top + picture.Height;
}

} // namespace Tarno
