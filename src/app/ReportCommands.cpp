#include "CommandParts.h"
#include "analysis/CalendarDay.h"
#include "analysis/TripText.h"
#include "core/Error.h"
#include "core/Text.h"
#include "exchange/PeakEvents.h"
#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arLogList.h"
#include "reports/arMonthSheet.h"
#include "reports/engine/LayOut.h"
#include "reports/engine/PdfWriter.h"
#include "reports/engine/RtfWriter.h"
#include "store/RecordLayouts.h"
#include "ui/calendar/MonthModel.h"
#include "ui/calendar/MonthSheet.h"
#include "ui/reports/LogReport.h"

#include <QLocale>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr const char* defaultReport = "default";

/// Lays the report out and writes it.
void WriteReport(Report& report, const CommandLine& line, const CommandContext& context)
{
    const Document document = LayOut(report).value();
    const QByteArray bytes = line.format == OutputFormat::Rtf ? RtfBytes(document) : PdfBytes(document);
    WriteOutput(context, line.output, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

/// Returns the saved report with the name, compared like the words of a query.
RecordView SavedReport(const CommandContext& context, const std::string& name)
{
    RecordList reports;
    context.sql.ReportList(reports);
    std::string names = std::string("\n  ") + defaultReport;
    for (const RecordView& report : reports) {
        const std::string known = report.Text(ReportField::RptName);
        if (Fold(known) == Fold(name)) {
            return report;
        }
        names += "\n  " + known;
    }
    throw CommandFailure("No report has the name \"" + name + "\". The reports are:" + names);
}

/// Returns the request for a report with all trips: that of the report builder with this report.
LogReportRequest RequestFor(const CommandContext& context, const std::string& name)
{
    RecordList fields;
    context.sql.FieldList(fields);
    std::vector<std::int32_t> numbers;
    if (name == defaultReport) {
        for (const RecordView& field : fields) {
            if (field.Text(FieldField::DefaultFlag) != "0") {
                numbers.push_back(field.Key());
            }
        }
        return {.selection = SelectionOf(numbers, fields), .columns = DefinitionsOf(numbers, fields)};
    }
    const ReportSelection selection = ReadSelection(SavedReport(context, name));
    for (const std::string& number : selection.numbers) {
        for (const RecordView& field : fields) {
            if (field.Text(FieldField::FieldNo) == number) {
                numbers.push_back(field.Key());
            }
        }
    }
    return {.selection = selection, .columns = DefinitionsOf(numbers, fields)};
}

/// Writes the sheet of a month.
void WriteMonthSheet(const RecordView& place, const CommandLine& line, const CommandContext& context)
{
    const std::string number = place.Text(LocationField::LocNo);
    MonthModel month(QLocale().firstDayOfWeek(), nullptr);
    month.SetMonth(line.month, TextsOf(place), number, TripDays(TripsOf(context)), context.clock.Today());
    const QString title = FromUtf8(LongDate(line.month / 1)).section(QLatin1Char(' '), 2) +
                          QStringLiteral(", ") + ShownInOneLine(place.Text(LocationField::LocName));
    arMonthSheet sheet = MonthSheetOf(month, title, context.printers.DefaultPage());
    sheet.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(context.clock);
    WriteReport(sheet, line, context);
}

/// Writes the major and minor times of a month and returns their number.
std::size_t WritePeaks(const RecordView& place, const CommandLine& line, const CommandContext& context)
{
    const std::string name = ToUtf8(ShownInOneLine(place.Text(LocationField::LocName)));
    if (!DayAt(TextsOf(place), line.month / 1).times) {
        throw CommandFailure("The times of sun and moon need a location with coordinates and a time zone: " +
                             name + "\nNo file was written.");
    }
    const auto events = PeakEvents({.location = TextsOf(place),
                                    .number = place.Text(LocationField::LocNo),
                                    .name = name,
                                    .first = line.month / 1,
                                    .last = line.month / std::chrono::last});
    WriteOutput(context, line.output, ICalendar(events, std::chrono::sys_days(context.clock.Today())));
    return events.size();
}

} // namespace

ExitStatus RunReport(const CommandLine& line, const CommandContext& context)
{
    LoadLog(context, {"tarno.xml", "location.xml", "field.xml", "Rpt.xml"});
    LogReportRequest request = RequestFor(context, line.subject);
    const std::string place =
        line.location.empty() ? "" : PlaceNamed(context, line.location).Text(LocationField::LocNo);
    request.found = TripsFound{.keys = {}, .query = FromUtf8(line.query)};
    for (const RecordView& trip : FoundTrips(context, line.query)) {
        if (place.empty() || trip.Text(EntryField::LocNo) == place) {
            request.found->keys.insert(trip.Text(EntryField::TarnoNo));
        }
    }
    if (request.found->keys.empty()) {
        throw CommandFailure("No trip is found, so there is nothing to print. No file was written.");
    }
    const auto report =
        MakeLogReport(context.sql, request, context.printers.DefaultPage(), PrintedOn(context.clock));
    if (!report) {
        throw CommandFailure("The report has no columns, or the log cannot be printed. No file was written.");
    }
    WriteReport(*report, line, context);
    context.out << "Printed " << Counted(request.found->keys.size(), "trip") << " to " << line.output << '\n';
    return Done;
}

ExitStatus RunCalendar(const CommandLine& line, const CommandContext& context)
{
    LoadLog(context, {"tarno.xml", "location.xml"});
    const RecordView place = PlaceNamed(context, line.subject);
    if (line.format == OutputFormat::ICalendar) {
        context.out << "Exported " << Counted(WritePeaks(place, line, context), "event") << " to "
                    << line.output << '\n';
    } else {
        WriteMonthSheet(place, line, context);
        context.out << "Printed the month to " << line.output << '\n';
    }
    return Done;
}

} // namespace Tarno
