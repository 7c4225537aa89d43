#include "cSQL.h"

#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/EntryFields.h"
#include "store/LogFiles.h"
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
      m_entries(LogFiles::trips),
      m_fields(LogFiles::fields),
      m_locations(LogFiles::locations),
      m_entryBlank(LogFiles::blankTrip),
      m_locationBlank(LogFiles::blankLocation),
      m_reports(LogFiles::reports),
      m_reportBlank(LogFiles::blankReport)
{
}

Status cSQL::Init()
{
    m_history.Clear();
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
    m_history.Clear();
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
    return Change("FieldUpdate", m_fields, "Field.xml",
                  [&](RecordTable& table) { return table.Replace(xFld); });
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

Status cSQL::ReportLogData(const std::string& sFlds, const std::string& sKeys, std::int16_t iLocNo,
                           const std::optional<std::set<std::string>>& trips)
{
    return Trapped("ReportLogData", [&] {
        RecordList entries = m_entries.Records().List();
        if (trips) {
            std::erase_if(entries, [&](const RecordView& entry) { return !trips->contains(entry.Text(0)); });
        }
        m_reportGrid = LogGrid(
            entries,
            {.selection = {.names = Split(sFlds, ','), .numbers = Split(sKeys, ',')}, .location = iLocNo},
            [this](const std::string& number) { return LocationNameGet(number); });
    });
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
        return record.Text(0) == newKey ? table.Append(record) : table.Replace(record);
    };
    return Change(routine, in, savedAs, change, &record);
}

Status cSQL::Delete(std::string_view routine, DataFile& in, std::int16_t key, const char* savedAs)
{
    return Change(routine, in, savedAs,
                  [&](RecordTable& table) { return table.Remove(std::to_string(key)); });
}

template <typename TableChange>
Status cSQL::Change(std::string_view routine, DataFile& in, const char* savedAs, const TableChange& change,
                    Record* updated)
{
    const auto updateKey = [&](const KeyMap& newKeys) {
        if (updated != nullptr) {
            updated->SetText(0, KeyIn(newKeys, updated->Text(0)));
        }
    };
    return WithMerging(routine, in, updateKey, [&](MergeResult& merged) {
        RecordChange made = change(in.Records());
        if (&in == &m_entries || &in == &m_locations) {
            NoteTrip(in, made);
            m_history.Add({KindOf(in), std::move(made)});
        }
        in.Save(m_folder, savedAs, m_operations, merged);
    });
}

Status cSQL::WithMerging(std::string_view routine, const DataFile& in, const UpdateKeys& updateKeys,
                         const std::function<void(MergeResult&)>& body)
{
    MergeResult merged;
    const Status status = Trapped(routine, [&] { body(merged); });
    if (!merged.newKeys.empty()) {
        Trap(module, routine, [&] {
            if (updateKeys) {
                updateKeys(merged.newKeys);
            }
            UpdateReferences(routine, in, merged.newKeys);
        });
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

void cSQL::NoteTrip(const DataFile& in, const RecordChange& change)
{
    if (&in != &m_entries) {
        return;
    }
    if (change.after.empty()) {
        m_ownTrips.erase(change.key);
    } else {
        m_ownTrips.insert(change.key);
    }
}

void cSQL::UpdateReferences(std::string_view routine, const DataFile& in, const KeyMap& newKeys)
{
    const auto keyOf = [&](const std::string& key) { return KeyIn(newKeys, key); };
    std::vector<History::NewKey> moved;
    for (const auto& [from, to] : newKeys) {
        moved.push_back({from, to, SerializeXml(in.Records().Find(to))});
    }
    m_history.SetKeys(KindOf(in), moved);
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
            WithMerging(routine, m_entries, nullptr, [&](MergeResult& merged) {
                for (const Record& trip : trips) {
                    m_entries.Records().Replace(trip);
                }
                m_entries.Save(m_folder, "tarno.xml", m_operations, merged);
            });
        }
    }
}

} // namespace Tarno
