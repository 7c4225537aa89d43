#include "CommandParts.h"
#include "analysis/TripText.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "exchange/Gpx.h"
#include "exchange/TripTable.h"

#include <QLocale>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Tarno
{

namespace
{

/// Whether the file of the command has way points. Throws CommandFailure if an option is only for tables.
bool HasWayPoints(const CommandLine& line)
{
    if (!HasSuffix(line.subject, ".gpx")) {
        return false;
    }
    if (!line.query.empty() || line.addsPlaces) {
        throw CommandFailure((line.query.empty() ? "--add-places" : "--find") +
                                 std::string(" is only for tables of trips. This file is for locations: ") +
                                 line.subject + "\nNothing was changed.",
                             WrongUsage);
    }
    return true;
}

CommandFailure CannotImport(const std::string& path, const std::string& reason)
{
    return CommandFailure("This file cannot be imported: " + path + "\n" + reason + "\nNothing was changed.");
}

/// Reads the stream until it ends, or until the limit of the readers is exceeded.
std::string BytesOf(std::istream& stream)
{
    constexpr std::size_t chunk = 65536;
    std::string bytes;
    for (std::size_t end = 0; bytes.size() == end && end <= CsvLimits::bytes;) {
        end += chunk;
        bytes.resize(end);
        stream.read(&bytes[end - chunk], chunk);
        bytes.resize(end - chunk + static_cast<std::size_t>(stream.gcount()));
    }
    return bytes;
}

/// Reads the file to import, which may be a pipe, or standard input.
std::string BytesOf(const std::string& path, const CommandContext& context)
{
    if (path == "-") {
        return BytesOf(context.in);
    }
    try {
        std::error_code failure;
        const auto type = std::filesystem::status(ToPath(path), failure).type();
        if (type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::character) {
            std::ifstream file(ToPath(path), std::ios::binary);
            return file ? BytesOf(file) : throw Error(ErrorNumber::PathFileAccess);
        }
        return ReadWholeFile(path);
    } catch (const Error& error) {
        throw CannotImport(path, error.Description() + '.');
    }
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
            context.err << "Line " << file.lines.at(row.row) << " is refused: " << InOneLine(row.reason)
                        << '\n';
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

/// Prints what an import does with way points. `numbers` are those of the locations that they already are.
void Describe(const GpxFile& file, const std::vector<std::string>& numbers, const CommandContext& context)
{
    const auto known =
        numbers.size() - static_cast<std::size_t>(std::count(numbers.begin(), numbers.end(), ""));
    context.out << Counted(numbers.size() - known, "new location") << ", " << known << " already there\n";
    if (const std::string ignored = file.Ignored(); !ignored.empty()) {
        context.out << "Ignored: " << ignored << '\n';
    }
    const PlaceNames places(LocationsOf(context));
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const WayPoint& point = file.points[index];
        if (numbers[index].empty()) {
            context.out << "New location: " << InOneLine(point.name) << " at "
                        << FromDouble(point.position.latitude) << ", " << FromDouble(point.position.longitude)
                        << '\n';
        } else {
            context.out << "Already there: " << InOneLine(point.name) << " is "
                        << InOneLine(places.Of(numbers[index])) << '\n';
        }
    }
}

/// Adds the batch to the log, unless it is a dry run.
void Import(ImportBatch& batch, const CommandLine& line, const CommandContext& context)
{
    const std::size_t trips = batch.trips.size();
    const std::size_t places = batch.locations.size();
    if (!context.sql.HasNumbersFor(batch)) {
        throw CommandFailure("The log has too few numbers left for so many trips or locations. The highest "
                             "number is 32767. Nothing was changed.");
    }
    if (line.isDryRun) {
        context.out << "Dry run: nothing was changed.\n";
        return;
    }
    if (trips + places == 0) {
        context.out << "Nothing was imported.\n";
        return;
    }
    if (context.sql.Import(batch) != succeeded) {
        throw CommandFailure(
            std::string(trips > 0
                            ? "The trips could not be saved. Remove the cause, then import the table "
                            : "The locations could not be saved. Remove the cause, then import the file ") +
            "again. What the log already has is not imported twice.");
    }
    context.out << "Imported " << (trips > 0 ? Counted(trips, "trip") : "")
                << (trips > 0 && places > 0 ? " and " : "") << (places > 0 ? Counted(places, "location") : "")
                << ".\n";
}

ExitStatus ImportTable(const CommandLine& line, const CommandContext& context)
{
    const CsvFile file = ReadCsv(BytesOf(line.subject, context));
    if (file.problem) {
        throw CannotImport(line.subject, file.problem->Describe() + '.');
    }
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
    Import(plan.batch, line, context);
    return plan.Count(RowStatus::Refused) == 0 ? Done : NotDone;
}

ExitStatus ImportWayPoints(const CommandLine& line, const CommandContext& context)
{
    const GpxFile file = ReadGpx(BytesOf(line.subject, context));
    if (!file.problem.empty()) {
        throw CannotImport(line.subject, file.problem);
    }
    LoadLog(context, {"tarno.xml", "location.xml", "tarnoblank.xml", "locationblank.xml"});
    const std::vector<std::string> numbers = MarkKnown(file.points, LocationsOf(context));
    Describe(file, numbers, context);
    ImportBatch batch;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        if (numbers[index].empty()) {
            batch.locations.push_back(LocationOf(file.points[index]));
        }
    }
    Import(batch, line, context);
    return Done;
}

/// What is exported.
struct ExportedFile {
    std::string bytes;
    std::string contents; ///< for the user, for example "2 trips"
};

ExportedFile ExportTable(const CommandLine& line, const CommandContext& context)
{
    LoadLog(context, {"tarno.xml", "location.xml"});
    const RecordList trips = FoundTrips(context, line.query);
    if (!line.query.empty() && trips.empty()) {
        throw CommandFailure("No trip is found, so there is nothing to export. Nothing was written.");
    }
    return {WriteCsv(TripRows(trips, LocationsOf(context))), Counted(trips.size(), "trip")};
}

ExportedFile ExportWayPoints(const CommandContext& context)
{
    LoadLog(context, {"location.xml"});
    const RecordList locations = LocationsOf(context);
    const std::vector<WayPoint> points = WayPointsOf(locations);
    if (const std::size_t others = locations.size() - points.size(); others > 0) {
        context.out << "Ignored: " << Counted(others, "location") << " without valid coordinates\n";
    }
    return {WriteGpx(points), Counted(points.size(), "location")};
}

} // namespace

ExitStatus RunExport(const CommandLine& line, const CommandContext& context)
{
    const ExportedFile file = HasWayPoints(line) ? ExportWayPoints(context) : ExportTable(line, context);
    if (line.subject == "-") {
        context.out << file.bytes;
        return Done;
    }
    WriteOutput(context, line.subject, file.bytes);
    context.out << "Exported " << file.contents << " to " << line.subject << '\n';
    return Done;
}

ExitStatus RunImport(const CommandLine& line, const CommandContext& context)
{
    return HasWayPoints(line) ? ImportWayPoints(line, context) : ImportTable(line, context);
}

} // namespace Tarno
