#include "DataCheck.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Paths.h"
#include "core/Xml.h"
#include "exchange/TableColumns.h"
#include "store/DataFile.h"
#include "store/EntryFields.h"
#include "store/LogFiles.h"
#include "store/RecordLayouts.h"
#include "store/ReportSelection.h"
#include "ui/entry/PictureFile.h"

#include <QFileInfo>

#include <cmath>
#include <cstdint>
#include <set>
#include <utility>

namespace Tarno
{

namespace
{

std::string Cited(const std::string& text)
{
    return '"' + text + '"';
}

template <typename Conversion>
bool Converts(const Conversion& conversion, const std::string& text)
{
    try {
        conversion(text);
        return true;
    } catch (const Error&) {
        return false;
    }
}

bool IsDate(const std::string& text)
{
    return Converts(ToDate, text);
}

/// Whether the text is a number between `-most` and `most`, or empty.
bool IsNumberUpTo(double most, const std::string& text)
{
    try {
        return text.empty() || std::abs(ToDouble(text)) <= most;
    } catch (const Error&) {
        return false;
    }
}

bool IsWholeNumber(std::string_view text)
{
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Whether the editor accepts the text as a time: a time, what is calculated for a day without one, or
/// nothing.
bool IsTime(TableColumn column, const std::string& text)
{
    column.kind = CellKind::RiseOrSet;
    return !text.starts_with('~') && ReadCell(column, text, {}).refusal.empty(); // "~=" accepts any text
}

bool IsKey(const std::string& text)
{
    try {
        const std::int16_t number = ToInt16(text);
        return number >= 1 && std::to_string(number) == text; // keys are compared as text
    } catch (const Error&) {
        return false;
    }
}

/// A data file while it is checked.
class CheckedFile
{
public:
    /// `kind` is what the user calls a record with `count` values.
    CheckedFile(const LogFile& file, std::string kind, std::size_t count, DataCheck& check)
        : m_file(file), m_kind(std::move(kind)), m_count(count), m_check(check)
    {
    }

    void Load(const ProgramFolder& folder, FileOperations& operations)
    {
        m_file.Load(folder, operations);
        if (!m_file.Problem().empty()) {
            m_check.faults.push_back({m_file.Name(), m_file.Problem()});
            return;
        }
        m_path = folder.FindPath(m_file.Name());
        m_records = m_file.Records().List();
        for (const RecordView& record : m_records) {
            if (!record.Has(m_count - 1)) {
                Add(record, TitleOf(record) + " has only " + std::to_string(record.Count()) + " of " +
                                std::to_string(m_count) + " values");
            }
        }
    }

    void RequireRecord()
    {
        if (m_file.Problem().empty() && m_records.empty()) {
            m_check.faults.push_back({m_file.Name(), "The file has no record"});
        }
    }

    void CheckKeys()
    {
        for (const RecordView& record : m_records) {
            const std::string key = record.Text(0);
            if (!IsKey(key)) {
                Add(record, "The number " + Cited(key) + " is not a whole number from 1 to 32767", 0);
            } else if (!m_keys.insert(key).second) {
                Add(record, "Another " + m_kind + " also has the number " + key, 0);
            }
        }
    }

    /// Adds a fault at the record, or at its value at `position` if it has one.
    void Add(const RecordView& record, const std::string& text, std::size_t position = noPosition)
    {
        if (m_bytes.empty()) {
            m_bytes = ReadWholeFile(m_path);
        }
        pugi::xml_node node = record.Node();
        for (const pugi::xml_node& child : record.Node().children()) {
            if (child.type() == pugi::node_element && position-- == 0) {
                node = child;
            }
        }
        const auto offset = static_cast<std::size_t>(node.offset_debug()) - 1; // that of the "<"
        m_check.faults.push_back({m_file.Name(), DescribeXmlPosition(m_bytes, offset) + ": " + text});
    }

    /// Adds a fault about a value unless it is as `expected`.
    void CheckValue(const RecordView& record, std::size_t position, bool isValid, const std::string& name,
                    const std::string& expected)
    {
        if (!isValid) {
            Add(record,
                "The " + name + ' ' + Cited(record.Text(position)) + " of " + m_kind + ' ' + record.Text(0) +
                    " is not " + expected,
                position);
        }
    }

    /// Adds a fault unless the value is empty or the path of a file.
    void CheckPicture(const ProgramFolder& folder, const RecordView& record, std::size_t position)
    {
        const std::string stored = record.Text(position);
        const QFileInfo picture(PicturePath(folder, stored));
        CheckValue(record, position, stored.empty() || (picture.exists() && !picture.isDir()), "picture",
                   "an existing file");
    }

    bool IsReadable() const { return m_file.Problem().empty(); }

    bool HasKey(const std::string& key) const { return m_keys.contains(key); }

    const RecordList& Records() const { return m_records; }

    /// Returns for example "The trip 12".
    std::string TitleOf(const RecordView& record) const { return "The " + m_kind + ' ' + record.Text(0); }

private:
    static constexpr auto noPosition = static_cast<std::size_t>(-1);

    DataFile m_file;
    std::string m_kind;
    std::size_t m_count;
    DataCheck& m_check;
    RecordList m_records = {};
    std::set<std::string> m_keys = {};
    std::string m_path = {};
    std::string m_bytes = {}; ///< to find lines and columns; the parser has changed those of the document
};

/// Checks the value of a column if it is a time, a code or a moon phase.
void CheckColumn(CheckedFile& trips, const RecordView& trip, const TableColumn& column)
{
    constexpr double fullMoon = 100;
    const std::string value = trip.Text(column.position);
    std::string name(column.caption);
    name.front() = static_cast<char>(name.front() - 'A' + 'a');
    switch (column.kind) {
    case CellKind::Time:
    case CellKind::RiseOrSet:
        trips.CheckValue(trip, column.position, IsTime(column, value), name, "a time");
        break;
    case CellKind::Code:
        trips.CheckValue(trip, column.position, value.empty() || IsWholeNumber(value), name,
                         "a whole number");
        break;
    case CellKind::MoonPhase:
        trips.CheckValue(trip, column.position, IsNumberUpTo(fullMoon, value), name,
                         "a number from -100 to 100");
        break;
    default:
        break;
    }
}

void CheckTrips(const ProgramFolder& folder, CheckedFile& trips, const CheckedFile& locations)
{
    using namespace EntryField;
    for (const RecordView& trip : trips.Records()) {
        const std::string start = trip.Text(StartDate);
        const std::string end = trip.Text(EndDate);
        trips.CheckValue(trip, StartDate, IsDate(start), "start date", "a date");
        trips.CheckValue(trip, EndDate, end.empty() || IsDate(end), "end date", "a date");
        if (IsDate(start) && IsDate(end) && ToDate(end) < ToDate(start)) {
            trips.Add(trip, trips.TitleOf(trip) + " ends before it starts", EndDate);
        }
        if (locations.IsReadable()) {
            trips.CheckValue(trip, LocNo, locations.HasKey(trip.Text(LocNo)), "location",
                             "the number of a location in location.xml");
        }
        for (const TableColumn& column : TableColumns()) {
            if (column.owner == TableColumn::Owner::Trip) {
                CheckColumn(trips, trip, column);
            }
        }
        trips.CheckPicture(folder, trip, Picture);
    }
}

void CheckLocations(const ProgramFolder& folder, CheckedFile& locations)
{
    using namespace LocationField;
    constexpr double pole = 90;
    constexpr double dateLine = 180;
    constexpr double day = 24;
    for (const RecordView& location : locations.Records()) {
        const auto check = [&](std::size_t position, double most, const std::string& name) {
            locations.CheckValue(location, position, IsNumberUpTo(most, location.Text(position)), name,
                                 "a number from -" + FromDouble(most) + " to " + FromDouble(most));
        };
        check(LocLatt, pole, "latitude");
        check(LocLong, dateLine, "longitude");
        check(LocGMT, day, "time zone");
        locations.CheckPicture(folder, location, LocPicture);
    }
}

void CheckColumns(CheckedFile& columns)
{
    using namespace FieldField;
    for (const RecordView& column : columns.Records()) {
        columns.CheckValue(column, Width, Converts(ToInt16, column.Text(Width)), "width", "a number");
        columns.CheckValue(column, Font, Converts(ToDouble, column.Text(Font)), "font size", "a number");
        columns.CheckValue(column, Grow, Converts(ToInt16, column.Text(Grow)), "grow flag", "a number");
    }
}

void CheckReports(CheckedFile& reports, const CheckedFile& columns)
{
    for (const RecordView& report : reports.Records()) {
        const ReportSelection selection = ReadSelection(report);
        if (selection.names.size() != selection.numbers.size()) {
            reports.Add(report, reports.TitleOf(report) + " has " + std::to_string(selection.names.size()) +
                                    " names of columns, but " + std::to_string(selection.numbers.size()) +
                                    " numbers");
        }
        for (const std::string& number : selection.numbers) {
            if (columns.IsReadable() && !columns.HasKey(number)) {
                reports.Add(report, reports.TitleOf(report) + " prints the column " + Cited(number) +
                                        ", which field.xml does not have");
            }
        }
    }
}

void CheckPickList(const ProgramFolder& folder, const char* name, DataCheck& check)
{
    try {
        ReadWholeFile(folder.FindPath(name));
    } catch (const Error& error) {
        check.faults.push_back({name, error.Number() == ErrorNumber::FileNotFound ? "The file does not exist"
                                                                                  : error.Description()});
    }
}

} // namespace

DataCheck CheckData(const ProgramFolder& folder, FileOperations& operations)
{
    DataCheck check;
    CheckedFile trips(LogFiles::trips, "trip", EntryField::Count, check);
    CheckedFile locations(LogFiles::locations, "location", LocationField::Count, check);
    CheckedFile columns(LogFiles::fields, "column", FieldField::Count, check);
    CheckedFile reports(LogFiles::reports, "report", ReportField::Count, check);
    CheckedFile blankTrip(LogFiles::blankTrip, "blank trip", EntryField::Count, check);
    CheckedFile blankLocation(LogFiles::blankLocation, "blank location", LocationField::Count, check);
    CheckedFile blankReport(LogFiles::blankReport, "blank report", ReportField::Count, check);
    for (CheckedFile* file :
         {&trips, &locations, &columns, &reports, &blankTrip, &blankLocation, &blankReport}) {
        file->Load(folder, operations);
    }
    for (CheckedFile* file : {&trips, &locations, &columns, &reports}) {
        file->CheckKeys();
    }
    for (CheckedFile* file : {&columns, &blankTrip, &blankLocation, &blankReport}) {
        file->RequireRecord();
    }
    CheckTrips(folder, trips, locations);
    CheckLocations(folder, locations);
    CheckColumns(columns);
    CheckReports(reports, columns);
    for (const char* list : LogFiles::pickLists) {
        CheckPickList(folder, list, check);
    }
    check.trips = trips.Records().size();
    check.locations = locations.Records().size();
    return check;
}

} // namespace Tarno
