#include "Commands.h"

#include "CommandParts.h"
#include "DataCheck.h"
#include "analysis/DayDescription.h"
#include "analysis/Query.h"
#include "core/ErrorLog.h"
#include "core/SafeWriter.h"
#include "core/Text.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

ExitStatus Run(const CommandLine& line, const CommandContext& context)
{
    switch (line.action) {
    case Action::List:
        return RunList(line, context);
    case Action::Export:
        return RunExport(line, context);
    case Action::Import:
        return RunImport(line, context);
    case Action::Check:
        return RunCheck(context);
    case Action::Forecast:
        return RunForecast(line, context);
    case Action::Report:
        return RunReport(line, context);
    case Action::Calendar:
        return RunCalendar(line, context);
    case Action::BackUp:
        return RunBackUp(line, context);
    case Action::Restore:
        return RunRestore(line, context);
    default:
        throw Error(ErrorNumber::InvalidProcedureCall);
    }
}

/// Returns a line about the day: DescribeDay, then the other times.
std::string ForecastLine(const CalendarDay& day)
{
    std::string text = DescribeDay(day, 0);
    for (const DescribedValue& value : DescribeForecast(day)) {
        for (const auto& [caption, word] :
             {std::pair("Minor times", "minors"), std::pair("Sun", "sun"), std::pair("Moon up", "moon")}) {
            if (value.caption == caption && !value.text.empty()) {
                text += std::string("; ") + word + ' ' + value.text;
            }
        }
    }
    return text;
}

} // namespace

ExitStatus RunCommand(const CommandLine& line, const CommandContext& context)
{
    const auto fail = [&](const std::string& text, ExitStatus status) {
        context.err << text << '\n';
        return status;
    };
    try {
        const ExitStatus status = Run(line, context);
        context.out.flush();
        return context.out ? status : fail("The output could not be written completely.", NotDone);
    } catch (const CommandFailure& failure) {
        return fail(failure.what(), failure.Status());
    } catch (...) {
        return fail("This could not be done: " + CurrentError().Description() + ". Your log is unchanged.",
                    NotDone);
    }
}

bool PrintsPages(const CommandLine& line)
{
    return line.action == Action::Report || line.action == Action::Calendar;
}

void LoadLog(const CommandContext& context, std::initializer_list<std::string_view> needed)
{
    TellInterruptedRestore(context);
    if (context.sql.Init() != succeeded) {
        throw CommandFailure("The log could not be read. Nothing was changed.");
    }
    std::string problems;
    for (const auto& [file, reason] : context.sql.FileProblems()) {
        if (std::find(needed.begin(), needed.end(), file) != needed.end()) {
            problems += context.folder.PathOf(file) + " cannot be read: " + reason + ".\n";
        }
    }
    if (!problems.empty()) {
        throw CommandFailure(
            problems + "Nothing was changed. Restore each file from a copy, or correct it in a text editor.");
    }
}

RecordList TripsOf(const CommandContext& context)
{
    RecordList trips;
    context.sql.EntryList(trips);
    return trips;
}

RecordList LocationsOf(const CommandContext& context)
{
    RecordList locations;
    context.sql.LocationList(locations);
    return locations;
}

RecordList FoundTrips(const CommandContext& context, const std::string& query)
{
    const Query parsed(query);
    std::vector<std::string> reasons;
    for (const QueryFault& fault : parsed.Faults()) {
        reasons.push_back(fault.reason);
    }
    if (!reasons.empty()) {
        throw CommandFailure(Join(reasons, '\n'), WrongUsage);
    }
    RecordList trips = TripsOf(context);
    if (!parsed.HasTerms()) {
        return trips;
    }
    const PlaceNames places(LocationsOf(context));
    std::erase_if(trips, [&](const RecordView& trip) { return !parsed.Matches(SearchedTrip(trip, places)); });
    return trips;
}

RecordView PlaceNamed(const CommandContext& context, const std::string& name)
{
    const std::string wanted = Fold(name);
    RecordList containing;
    std::string names;
    const RecordList locations = LocationsOf(context);
    const PlaceNames places(locations);
    for (const RecordView& location : locations) {
        const std::string& known = places.Of(location.Text(LocationField::LocNo));
        const std::string folded = Fold(known);
        if (folded == wanted) {
            return location;
        }
        if (folded.find(wanted) != std::string::npos) {
            containing.push_back(location);
        }
        names += "\n  " + known;
    }
    if (containing.size() == 1) {
        return containing.front();
    }
    throw CommandFailure((containing.empty() ? "No location has the name \"" + name + "\"."
                                             : "Several locations have \"" + name + "\" in their names.") +
                         (names.empty() ? " The log has no locations." : " The locations are:" + names));
}

void WriteOutput(const CommandContext& context, const std::string& path, std::string_view bytes)
{
    try {
        if (context.folder.MayBelongToLog(path)) {
            throw CommandFailure("This file may belong to the log: " + path +
                                 "\nNothing was written. Choose a name that ends with .csv.");
        }
        SafeWriter(context.operations).Write(path, bytes);
    } catch (const Error& error) {
        throw CommandFailure("The file could not be written: " + path + "\n" + error.Description() +
                             ". Your log is unchanged.");
    }
}

std::string InOneLine(std::string_view text)
{
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string line = XmlText(text);
    for (std::size_t at = 0; (at = line.find('\xC2', at)) != std::string::npos; ++at) {
        if (static_cast<unsigned char>(line[at + 1]) < 0xA0) { // the control characters that XML allows
            line.replace(at, 2, replacement);
        }
    }
    for (const char* separator : {"\r\n", "\n", "\r", "\t"}) {
        line = ReplaceAll(line, separator, "; ");
    }
    return line;
}

ExitStatus RunList(const CommandLine& line, const CommandContext& context)
{
    LoadLog(context, {"tarno.xml", "location.xml"});
    const PlaceNames places(LocationsOf(context));
    for (const RecordView& trip : FoundTrips(context, line.query)) {
        std::vector<std::string> texts;
        for (const EntryField::Position field :
             {EntryField::StartDate, EntryField::LocNo, EntryField::FishAction, EntryField::FishCaught}) {
            texts.push_back(InOneLine(ReadableText(trip, field, places)));
        }
        context.out << Join(texts, '\t') << '\n';
    }
    return Done;
}

ExitStatus RunCheck(const CommandContext& context)
{
    const DataCheck check = CheckData(context.folder, context.operations);
    for (const DataFault& fault : check.faults) {
        context.out << fault.file << ": " << fault.text << '\n';
    }
    context.out << "Checked " << Counted(check.trips, "trip") << " and "
                << Counted(check.locations, "location") << ": "
                << (check.faults.empty() ? "no problems" : Counted(check.faults.size(), "problem")) << '\n';
    if (check.faults.empty()) {
        return Done;
    }
    context.err << "There are problems in " << context.folder.GetAppPath()
                << "\nNothing was changed. Restore the files from a copy or correct them in a text editor.\n";
    return NotDone;
}

ExitStatus RunForecast(const CommandLine& line, const CommandContext& context)
{
    using std::chrono::sys_days;
    LoadLog(context, {"location.xml"});
    const RecordView place = PlaceNamed(context, line.subject);
    const sys_days first(line.from.value_or(context.clock.Today()));
    const sys_days end = std::min(first + std::chrono::days(line.days),
                                  sys_days(std::chrono::year(10000) / 1 / 1)); // the last year of all dates
    bool hasTimes = true;
    for (sys_days date = first; date < end; date += std::chrono::days(1)) {
        const CalendarDay day = DayAt(TextsOf(place), date);
        hasTimes = day.times.has_value();
        context.out << ForecastLine(day) << '\n';
    }
    if (!hasTimes) {
        context.err << "The times of sun and moon need a location with coordinates and a time zone.\n";
    }
    return Done;
}

} // namespace Tarno
