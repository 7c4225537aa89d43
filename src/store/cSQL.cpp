#include "cSQL.h"

#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/EntryFields.h"
#include "store/LogGrid.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "cSQL";

constexpr RecordTable::Names entryNames{"tarno", "TarnoNo"};
constexpr RecordTable::Names locationNames{"location", "LocNo"};
constexpr RecordTable::Names fieldNames{"field", "FieldNo"};
constexpr RecordTable::Names reportNames{"report", "RptNo"};

constexpr std::string_view newKey = "0"; ///< the key of a record that is not stored yet

template <typename Body>
Status Trapped(std::string_view routine, Body&& body)
{
    return Trap(module, routine, std::forward<Body>(body)) ? succeeded : failed;
}

} // namespace

cSQL::cSQL(const ProgramFolder& folder, FileOperations& operations)
    : m_folder(folder),
      m_operations(operations),
      m_entries("tarno.xml", entryNames),
      m_fields("field.xml", fieldNames),
      m_locations("location.xml", locationNames),
      m_entryBlank("tarnoblank.xml", entryNames),
      m_locationBlank("locationblank.xml", locationNames),
      m_reports("Rpt.xml", reportNames),
      m_reportBlank("RptBlank.xml", reportNames)
{
}

Status cSQL::Init()
{
    return Trapped("Init", [&] {
        for (DataFile* file : {&m_entries, &m_fields, &m_locations, &m_entryBlank, &m_locationBlank,
                               &m_reports, &m_reportBlank}) {
            file->Load(m_folder, m_operations);
            SafeWriter(m_operations).RemoveStaleTemporaries(m_folder.FindPath(file->Name()));
        }
    });
}

Status cSQL::DeInit()
{
    return Trapped("DeInit", [&] {
        for (DataFile* file : {&m_entries, &m_locations, &m_fields, &m_entryBlank, &m_locationBlank,
                               &m_reports, &m_reportBlank}) {
            file->Release();
        }
    });
}

Status cSQL::EntryList(RecordList& xEntries) const
{
    return List("EntryList", m_entries, xEntries);
}

Status cSQL::LocationList(RecordList& xLocs) const
{
    return List("LocationList", m_locations, xLocs);
}

Status cSQL::FieldList(RecordList& xField) const
{
    return List("FieldList", m_fields, xField);
}

Status cSQL::ReportList(RecordList& xRpt) const
{
    return List("ReportList", m_reports, xRpt);
}

Status cSQL::EntryGet(std::int16_t iTarnoNo, Record& xEntry) const
{
    return Get("EntryGet", m_entries, m_entryBlank, iTarnoNo, xEntry);
}

Status cSQL::LocationGet(std::int16_t iLocNo, Record& xLoc) const
{
    return Get("LocationGet", m_locations, m_locationBlank, iLocNo, xLoc);
}

Status cSQL::ReportGet(std::int16_t iRptNo, Record& xRpt) const
{
    return Get("ReportGet", m_reports, m_reportBlank, iRptNo, xRpt);
}

Status cSQL::EntryUpdate(Record& xTarno)
{
    return Update("EntryUpdate", m_entries, xTarno, "tarno.xml");
}

Status cSQL::LocationUpdate(Record& xLoc)
{
    return Update("LocationUpdate", m_locations, xLoc, "location.xml");
}

Status cSQL::ReportUpdate(Record& xRpt)
{
    return Update("ReportUpdate", m_reports, xRpt, "rpt.xml");
}

Status cSQL::FieldUpdate(const Record& xFld)
{
    return Change("FieldUpdate", m_fields, "Field.xml", [&](RecordTable& table) { table.Replace(xFld); });
}

Status cSQL::EntryDelete(std::int16_t iTarnoNo)
{
    return Delete("EntryDelete", m_entries, iTarnoNo, "tarno.xml");
}

Status cSQL::LocationDelete(std::int16_t iLocNo)
{
    return Delete("LocationDelete", m_locations, iLocNo, "location.xml");
}

Status cSQL::ReportDelete(std::int16_t iRptNo)
{
    return Delete("ReportDelete", m_reports, iRptNo, "Rpt.xml");
}

std::string cSQL::LocationNameGet(const std::string& sLocNo) const
{
    std::string name = "1";
    Trap(module, "LocationNameGet",
         [&] { name = m_locations.Records().Get(sLocNo).Text(LocationField::LocName); });
    return name;
}

Status cSQL::ReportLogData(const std::string& sFlds, const std::string& sKeys, std::int16_t iLocNo)
{
    return Trapped("ReportLogData", [&] {
        m_reportGrid = LogGrid(
            m_entries.Records().List(),
            {.selection = {.names = Split(sFlds, ','), .numbers = Split(sKeys, ',')}, .location = iLocNo},
            [this](const std::string& number) { return LocationNameGet(number); });
    });
}

std::vector<FileProblem> cSQL::FileProblems() const
{
    std::vector<FileProblem> problems;
    for (const DataFile* file :
         {&m_entries, &m_locations, &m_fields, &m_entryBlank, &m_locationBlank, &m_reports, &m_reportBlank}) {
        if (!file->Problem().empty()) {
            problems.push_back({file->Name(), file->Problem()});
        }
    }
    return problems;
}

std::vector<RecordTitle> cSQL::ShortRecords() const
{
    std::vector<RecordTitle> titles;
    for (const auto& [file, count] :
         {std::pair<const DataFile&, std::size_t>(m_entries, EntryField::Count),
          std::pair<const DataFile&, std::size_t>(m_locations, LocationField::Count),
          std::pair<const DataFile&, std::size_t>(m_fields, FieldField::Count),
          std::pair<const DataFile&, std::size_t>(m_reports, ReportField::Count)}) {
        if (!file.Problem().empty()) {
            continue;
        }
        for (const RecordView& record : file.Records().List()) {
            if (!record.Has(count - 1)) {
                titles.push_back(TitleOf(file, record));
            }
        }
    }
    return titles;
}

std::vector<UnsavedChange> cSQL::UnsavedChanges() const
{
    std::vector<UnsavedChange> changes;
    for (const DataFile* file : {&m_entries, &m_locations, &m_fields, &m_reports}) {
        for (const auto& [key, before] : file->Records().Changed()) {
            const pugi::xml_node record = file->Records().Find(key);
            pugi::xml_document deleted;
            ParseXml(before, deleted);
            changes.push_back({.record = TitleOf(*file, RecordView(record ? record : deleted.first_child())),
                               .isDeletion = !record,
                               .file = file->Name()});
        }
        for (const pugi::xml_node& record : file->Records().Appended()) {
            changes.push_back(
                {.record = TitleOf(*file, RecordView(record)), .isDeletion = false, .file = file->Name()});
        }
    }
    return changes;
}

Status cSQL::List(std::string_view routine, const DataFile& from, RecordList& list)
{
    return Trapped(routine, [&] {
        if (RecordList records = from.Records().List(); !records.empty()) {
            list = std::move(records);
        }
    });
}

Status cSQL::Get(std::string_view routine, const DataFile& from, const DataFile& blank, std::int16_t key,
                 Record& record)
{
    return Trapped(routine, [&] {
        record = Record(key != 0 ? from.Records().Get(std::to_string(key)) : blank.Records().First());
    });
}

Status cSQL::Update(std::string_view routine, DataFile& in, Record& record, const char* savedAs)
{
    const auto change = [&](RecordTable& table) {
        if (record.Text(0) == newKey) {
            table.Append(record);
        } else {
            table.Replace(record);
        }
    };
    return Change(routine, in, savedAs, change, &record);
}

Status cSQL::Delete(std::string_view routine, DataFile& in, std::int16_t key, const char* savedAs)
{
    return Change(routine, in, savedAs, [&](RecordTable& table) { table.Remove(std::to_string(key)); });
}

template <typename TableChange>
Status cSQL::Change(std::string_view routine, DataFile& in, const char* savedAs, const TableChange& change,
                    Record* updated)
{
    MergeResult merged;
    const Status status = Trapped(routine, [&] {
        change(in.Records());
        if (&in == &m_entries && updated != nullptr) {
            m_ownTrips.insert(updated->Text(0));
        }
        in.Save(m_folder, savedAs, m_operations, merged);
    });
    if (!merged.newKeys.empty()) {
        Trap(module, routine, [&] { UpdateReferences(routine, in, merged.newKeys, updated); });
    }
    for (const Conflict& conflict : merged.conflicts) {
        if (m_showConflict) {
            const bool isDeletedHere = conflict.ours.Count() == 0;
            const Record& record = isDeletedHere ? conflict.theirs : conflict.ours;
            m_showConflict({.record = TitleOf(in, record.View()),
                            .isDeletedHere = isDeletedHere,
                            .keptAs = conflict.keptAs});
        }
    }
    return status;
}

void cSQL::UpdateReferences(std::string_view routine, const DataFile& in, const KeyMap& newKeys,
                            Record* updated)
{
    const auto keyOf = [&](const std::string& key) {
        const auto found = newKeys.find(key);
        return found == newKeys.end() ? key : found->second;
    };
    if (updated != nullptr) {
        updated->SetText(0, keyOf(updated->Text(0)));
    }
    if (&in == &m_entries) {
        std::set<std::string> trips;
        std::transform(m_ownTrips.begin(), m_ownTrips.end(), std::inserter(trips, trips.end()), keyOf);
        m_ownTrips = std::move(trips);
    } else if (&in == &m_locations) {
        std::vector<Record> trips;
        for (const std::string& key : m_ownTrips) {
            Record trip{RecordView(m_entries.Records().Find(key))};
            if (const std::string location = trip.View().Text(EntryField::LocNo);
                newKeys.contains(location)) {
                trip.SetText(EntryField::LocNo, keyOf(location));
                trips.push_back(std::move(trip));
            }
        }
        if (!trips.empty()) {
            Change(routine, m_entries, "tarno.xml", [&](RecordTable& table) {
                for (const Record& trip : trips) {
                    table.Replace(trip);
                }
            });
        }
    }
}

RecordTitle cSQL::TitleOf(const DataFile& in, const RecordView& record) const
{
    using Kind = RecordTitle::Kind;
    RecordTitle title{.kind = &in == &m_entries     ? Kind::Trip
                              : &in == &m_locations ? Kind::Location
                              : &in == &m_fields    ? Kind::Column
                                                    : Kind::Report,
                      .key = record.Text(0),
                      .date = {},
                      .name = record.Text(1)};
    if (title.kind == Kind::Trip) {
        title.date = record.Text(EntryField::StartDate);
        const RecordView location(m_locations.Records().Find(record.Text(EntryField::LocNo)));
        title.name = location.Text(LocationField::LocName);
    } else if (title.kind == Kind::Column) {
        title.name = record.Text(FieldField::Desc);
    }
    return title;
}

} // namespace Tarno
