#include "arLocList.h"

#include "ReportExport.h"
#include "store/RecordLayouts.h"
#include "ui/common/Icons.h"
#include "ui/common/Strings.h"

#include <QApplication>

#include <array>

namespace
{

// The columns, in twips from the left margin: they fit between margins of 20 mm on A4 and Letter.
constexpr int nameLeft = 0;
constexpr int nameWidth = 2600;
constexpr int descriptionLeft = 2760;
constexpr int descriptionWidth = 3300;
constexpr int directionsLeft = 6220;
constexpr int directionsWidth = 3380;
constexpr int reportWidth = directionsLeft + directionsWidth;

struct Place {
    int left;
    int top;
    int width;
    int height;
};

ReportControl& Add(ReportSection& section, const char* type, const char* name, const Place& place)
{
    ReportControl& control = section.Controls.Add(QLatin1String("DDActiveReports.") + QLatin1String(type));
    control.Name = QLatin1String(name);
    control.Left = place.left;
    control.Top = place.top;
    control.Width = place.width;
    control.Height = place.height;
    return control;
}

ReportControl& AddLabel(ReportSection& section, const char* name, const char* caption, const Place& place,
                        const ReportFont& font)
{
    ReportControl& label = Add(section, "Label", name, place);
    label.Text = QLatin1String(caption);
    label.Font = font;
    return label;
}

ReportControl& AddField(ReportSection& section, const char* name, const char* dataField, const Place& place,
                        const ReportFont& font, bool grows)
{
    ReportControl& field = Add(section, "Field", name, place);
    field.DataField = QLatin1String(dataField);
    field.Font = font;
    field.CanGrow = grows;
    field.MultiLine = grows;
    return field;
}

ReportFont Tahoma(bool bold = false)
{
    return {QStringLiteral("Tahoma"), 8, bold};
}

ReportFont Verdana(double size)
{
    return {QStringLiteral("Verdana"), size, true};
}

} // namespace

arLocList::arLocList(const Program& program, const RecordList& locations)
    : m_program(program), m_locations(locations)
{
    Caption = QStringLiteral("Tarno Locations Listing");
    Page = program.printers.DefaultPage();
    DesignPageHeader();
    DesignDetail();
}

void arLocList::DesignPageHeader()
{
    PageHeader.Height = 1380;
    Add(PageHeader, "Image", "picHeader", {0, 0, 720, 720}).Picture =
        DrawnIcon(QLatin1String("tarno")).pixmap(QSize(256, 256)).toImage();
    AddLabel(PageHeader, "lblTitle", "Tarno Fishing Log - Locations Listing",
             {880, 60, reportWidth - 880, 380}, Verdana(14));
    AddLabel(PageHeader, "lblPrinted", "Printed on ... at ...", {880, 480, 5000, 240}, Tahoma());
    const int pageLeft = reportWidth - 1560;
    AddLabel(PageHeader, "lblPage", "Page", {pageLeft, 480, 480, 240}, Tahoma());
    AddLabel(PageHeader, "txtPageNumber", "", {pageLeft + 480, 480, 420, 240}, Tahoma()).Page =
        PageText::Number;
    AddLabel(PageHeader, "lblOf", "of", {pageLeft + 900, 480, 240, 240}, Tahoma());
    AddLabel(PageHeader, "txtPageCount", "", {pageLeft + 1140, 480, 420, 240}, Tahoma()).Page =
        PageText::Count;
    for (const char* part : {"txtPageNumber", "lblOf", "txtPageCount"}) {
        PageHeader.Controls[QLatin1String(part)].Alignment = Alignment::Center;
    }
    AddLabel(PageHeader, "lblLocation", "Location", {nameLeft, 960, nameWidth, 280}, Verdana(9));
    AddLabel(PageHeader, "lblDescription", "Description", {descriptionLeft, 960, descriptionWidth, 280},
             {QStringLiteral("Arial"), 9, true});
    AddLabel(PageHeader, "lblDirections", "How To Get There", {directionsLeft, 960, directionsWidth, 280},
             Verdana(9));
    Add(PageHeader, "Line", "Line1", {0, 1290, reportWidth, 0});
}

void arLocList::DesignDetail()
{
    Detail.Height = 700;
    AddField(Detail, "fldLocName", "locname", {nameLeft, 60, nameWidth, 240}, Tahoma(true), true);
    AddField(Detail, "fldDescription", "LocDescription", {descriptionLeft, 60, descriptionWidth, 240},
             Tahoma(), true);
    AddField(Detail, "fldDirections", "LocDirections", {directionsLeft, 60, directionsWidth, 240}, Tahoma(),
             true);
    AddLabel(Detail, "lblAccess", "Accessible By:", {nameLeft, 360, 1260, 240}, Tahoma());
    AddField(Detail, "fldAccess", "LocAccess", {1260, 360, nameWidth - 1260, 240}, Tahoma(), false);
    AddLabel(Detail, "lblLattLong", "Latt/Long:", {descriptionLeft, 360, 900, 240}, Tahoma());
    AddField(Detail, "fldLatt", "LocLatt", {descriptionLeft + 900, 360, 1140, 240}, Tahoma(), false);
    AddField(Detail, "fldLong", "LocLong", {descriptionLeft + 2100, 360, 1200, 240}, Tahoma(), false);
    AddLabel(Detail, "lblGMT", "GMT", {directionsLeft, 360, 500, 240}, Tahoma());
    AddField(Detail, "fldGMT", "locGMT", {directionsLeft + 500, 360, 1200, 240}, Tahoma(), false);
    Add(Detail, "Line", "Line2", {0, 660, reportWidth, 0}).Weight = 8;
}

void arLocList::ReportStart()
{
    Page.setOrientation(QPageLayout::Portrait);
    Tools = {{QStringLiteral("&RTF Export"), 3}, {QStringLiteral("&PDF Export"), 4}};
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

void arLocList::ToolbarClick(const QString& caption)
{
    if (caption == QLatin1String("&RTF Export")) {
        mMain::RTFExport(m_program, *this, QApplication::activeWindow());
    } else if (caption == QLatin1String("&PDF Export")) {
        mMain::PDFExport(m_program, *this, QApplication::activeWindow());
    }
}
