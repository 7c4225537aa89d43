#include "CommandParts.h"
#include "core/Error.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "exchange/TripTable.h"

#include <QLocale>

#include <algorithm>

namespace Tarno
{

namespace
{

/// Throws CommandFailure if `path` is a file of the log.
void CheckIsNoDataFile(const std::string& path, const CommandContext& context)
{
    const std::string target = Resolved(path);
    const std::string suffix = FromPath(ToPath(target).extension());
    if ((EqualIgnoringCase(suffix, ".xml") || EqualIgnoringCase(suffix, ".txt")) &&
        FolderOf(target) == Resolved(context.folder.GetAppPath())) {
        throw CommandFailure("This file may belong to the log: " + path +
                             "\nNothing was written. Choose a name that ends with .csv.");
    }
}

CsvFile ReadTable(const std::string& path)
{
    const auto refuse = [&](const std::string& reason) {
        return CommandFailure("This file cannot be imported: " + path + "\n" + reason +
                              ".\nNothing was changed.");
    };
    CsvFile file;
    try {
        file = ReadCsv(ReadWholeFile(path));
    } catch (const Error& error) {
        throw refuse(error.Description());
    }
    if (file.problem) {
        throw refuse(file.problem->Describe());
    }
    return file;
}

/// Prints what an import would do.
void Describe(const ImportPlan& plan, const CsvFile& file, const ColumnMapping& mapping,
              const CommandContext& context)
{
    context.out << Counted(plan.Count(RowStatus::New), "new trip") << ", "
                << plan.Count(RowStatus::AlreadyThere) << " already there, " << plan.Count(RowStatus::Refused)
                << " refused\n";
    std::string ignored;
    for (std::size_t column = 0; column < mapping.size(); ++column) {
        if (!mapping[column]) {
            ignored += (ignored.empty() ? "" : ", ") + InOneLine(file.rows.front().at(column));
        }
    }
    if (!ignored.empty()) {
        context.out << "Ignored columns: " << ignored << '\n';
    }
    for (const PlannedPlace& place : plan.places) {
        context.out << "New location: " << InOneLine(mMain::DecodeLineBreaks(place.name)) << ", "
                    << Counted(place.trips, "trip") << '\n';
    }
    for (const PlannedRow& row : plan.rows) {
        if (row.status == RowStatus::Refused) {
            context.err << "Line " << file.lines.at(row.row) << " is refused: " << row.reason << '\n';
        }
    }
}

/// Throws CommandFailure if a new location has no coordinates.
void CheckPlaces(const ImportPlan& plan)
{
    std::string names;
    for (const PlannedPlace& place : plan.places) {
        if (place.latitude.empty() || place.longitude.empty()) {
            names += "\n  " + InOneLine(mMain::DecodeLineBreaks(place.name));
        }
    }
    if (!names.empty()) {
        throw CommandFailure("The table has no coordinates for these locations:" + names +
                             "\nNothing was changed. Use --add-places to add them without coordinates.");
    }
}

void Import(ImportPlan& plan, const CommandContext& context)
{
    const std::size_t trips = plan.batch.trips.size();
    const std::size_t places = plan.batch.locations.size();
    if (context.sql.Import(plan.batch) != succeeded) {
        throw CommandFailure(
            "The trips could not be saved. Remove the cause, then import the table again. What "
            "the log already has is not imported twice.");
    }
    context.out << "Imported " << Counted(trips, "trip");
    if (places > 0) {
        context.out << " and " << Counted(places, "location");
    }
    context.out << ".\n";
}

} // namespace

ExitStatus RunExport(const CommandLine& line, const CommandContext& context)
{
    LoadLog(context, {"tarno.xml", "location.xml"});
    const RecordList trips = FoundTrips(context, line.query);
    const std::string bytes = WriteCsv(TripRows(trips, LocationsOf(context)));
    if (line.subject == "-") {
        context.out << bytes;
        return Done;
    }
    CheckIsNoDataFile(line.subject, context);
    WriteOutput(context, line.subject, bytes);
    context.out << "Exported " << Counted(trips.size(), "trip") << " to " << line.subject << '\n';
    return Done;
}

ExitStatus RunImport(const CommandLine& line, const CommandContext& context)
{
    const CsvFile file = ReadTable(line.subject);
    LoadLog(context, {"tarno.xml", "location.xml", "field.xml", "tarnoblank.xml", "locationblank.xml"});
    RecordList fields;
    context.sql.FieldList(fields);
    const ColumnMapping mapping = ProposeMapping(file.rows.empty() ? CsvRow() : file.rows.front(), fields);
    if (std::none_of(mapping.begin(), mapping.end(), [](const auto& column) { return column.has_value(); })) {
        throw CommandFailure("No column of this file is known: " + line.subject +
                             "\nIts first row must have headings such as StartDate and Location. Nothing was "
                             "changed.");
    }
    ImportPlan plan = PlanImport(ReadTrips(file.rows, mapping, TableForms::Of(QLocale())), TripsOf(context),
                                 LocationsOf(context));
    Describe(plan, file, mapping, context);
    if (!line.addsPlaces) {
        CheckPlaces(plan);
    }
    if (line.isDryRun) {
        context.out << "Dry run: nothing was changed.\n";
    } else if (plan.batch.trips.empty()) {
        context.out << "Nothing was imported.\n";
    } else {
        Import(plan, context);
    }
    return plan.Count(RowStatus::Refused) == 0 ? Done : NotDone;
}

} // namespace Tarno
