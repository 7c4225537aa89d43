#include "arLocList.h"

#include "ReportDesign.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"

namespace Tarno
{

namespace
{

// The columns, in twips from the left margin. With margins of 20 mm they fit on A4 and on Letter.
constexpr int nameLeft = 0;
constexpr int nameWidth = 2600;
constexpr int descriptionLeft = 2760;
constexpr int descriptionWidth = 3300;
constexpr int directionsLeft = 6220;
constexpr int directionsWidth = 3380;
constexpr int reportWidth = directionsLeft + directionsWidth;

constexpr Heading heading{"Tarno Fishing Log - Locations Listing", "txtPageNumber", "txtPageCount"};

} // namespace

arLocList::arLocList(const QPageLayout& page, const RecordList& locations) : m_locations(locations)
{
    Caption = QStringLiteral("Tarno Locations Listing");
    Page = page;
    DesignPageHeader();
    DesignDetail();
}

void arLocList::DesignPageHeader()
{
    PageHeader.Height = 1380;
    AddHeading(PageHeader, heading);
    PlacePageNumber(PageHeader, heading, reportWidth);
    AddLabel(PageHeader, QStringLiteral("lblLocation"), QStringLiteral("Location"),
             {nameLeft, 960, nameWidth, 280}, Verdana(9));
    AddLabel(PageHeader, QStringLiteral("lblDescription"), QStringLiteral("Description"),
             {descriptionLeft, 960, descriptionWidth, 280}, {QStringLiteral("Arial"), 9, true});
    AddLabel(PageHeader, QStringLiteral("lblDirections"), QStringLiteral("How To Get There"),
             {directionsLeft, 960, directionsWidth, 280}, Verdana(9));
    AddControl(PageHeader, "Line", QStringLiteral("Line1"), {0, 1290, reportWidth, 0});
}

void arLocList::DesignDetail()
{
    Detail.Height = 700;
    AddField(Detail, QStringLiteral("fldLocName"), QStringLiteral("locname"), {nameLeft, 60, nameWidth, 240},
             Tahoma(8, true), true);
    AddField(Detail, QStringLiteral("fldDescription"), QStringLiteral("LocDescription"),
             {descriptionLeft, 60, descriptionWidth, 240}, Tahoma(), true);
    AddField(Detail, QStringLiteral("fldDirections"), QStringLiteral("LocDirections"),
             {directionsLeft, 60, directionsWidth, 240}, Tahoma(), true);
    AddLabel(Detail, QStringLiteral("lblAccess"), QStringLiteral("Accessible By:"),
             {nameLeft, 360, 1260, 240}, Tahoma());
    AddField(Detail, QStringLiteral("fldAccess"), QStringLiteral("LocAccess"),
             {1260, 360, nameWidth - 1260, 240}, Tahoma(), false);
    AddLabel(Detail, QStringLiteral("lblLattLong"), QStringLiteral("Latt/Long:"),
             {descriptionLeft, 360, 900, 240}, Tahoma());
    AddField(Detail, QStringLiteral("fldLatt"), QStringLiteral("LocLatt"),
             {descriptionLeft + 900, 360, 1140, 240}, Tahoma(), true);
    AddField(Detail, QStringLiteral("fldLong"), QStringLiteral("LocLong"),
             {descriptionLeft + 2100, 360, 1200, 240}, Tahoma(), true);
    AddLabel(Detail, QStringLiteral("lblGMT"), QStringLiteral("GMT"), {directionsLeft, 360, 500, 240},
             Tahoma());
    AddField(Detail, QStringLiteral("fldGMT"), QStringLiteral("locGMT"),
             {directionsLeft + 500, 360, 1200, 240}, Tahoma(), false);
    AddControl(Detail, "Line", QStringLiteral("Line2"), {0, 660, reportWidth, 0}).Weight = 8;
}

void arLocList::ReportStart()
{
    Page.setOrientation(QPageLayout::Portrait);
    Tools = ExportTools();
}

void arLocList::DataInitialize()
{
    for (const char* name :
         {"LocName", "LocDescription", "LocDirections", "LocAccess", "LocLatt", "LocLong", "LocGMT"}) {
        Fields.Add(QLatin1String(name));
    }
    m_row = 0;
}

void arLocList::FetchData(bool& endOfData)
{
    endOfData = m_row >= m_locations.size();
    if (endOfData) {
        return;
    }
    const RecordView& location = m_locations[m_row++];
    int field = 0;
    for (const LocationField::Position position :
         {LocationField::LocName, LocationField::LocDescription, LocationField::LocDirections,
          LocationField::LocAccess, LocationField::LocLatt, LocationField::LocLong, LocationField::LocGMT}) {
        Fields.SetValue(field++, ShownLines(location.Text(position)));
    }
}

void arLocList::Detail_Format()
{
    QString& access = Detail.Controls[QStringLiteral("fldAccess")].Text;
    access = access.isEmpty()               ? QStringLiteral("Not Set")
             : access == QLatin1String("0") ? QStringLiteral("Land")
             : access == QLatin1String("1") ? QStringLiteral("Boat")
                                            : QStringLiteral("Land/Boat");
}

void arLocList::ToolbarClick(const QString& caption, ReportViewer& viewer)
{
    RunExportTool(caption, viewer);
}

} // namespace Tarno
