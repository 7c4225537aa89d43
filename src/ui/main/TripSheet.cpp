#include "TripSheet.h"

#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arTripSheet.h"
#include "ui/entry/PictureFile.h"
#include "ui/reports/fPreview.h"

namespace Tarno
{

void ShowTripSheet(const Program& program, const RecordView& trip, const PlaceNames& places, QWidget* parent)
{
    std::vector<DescribedValue> values = DescribeTrip(trip, places);
    const auto [picture, problem] =
        TryReadPicture(PicturePath(program.folder, trip.Text(EntryField::Picture)));
    if (!problem.isEmpty()) {
        values.push_back({"Picture", ToUtf8(problem)});
    }
    arTripSheet sheet(program.printers.DefaultPage(), std::move(values), picture);
    sheet.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(program.clock);
    fPreview(program, sheet, parent).ShowReport();
}

} // namespace Tarno
