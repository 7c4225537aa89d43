#include "cSQL.h"

#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/Text.h"
#include "store/LogGrid.h"
#include "store/RecordLayouts.h"

namespace
{

constexpr std::string_view module = "cSQL";

constexpr RecordTable::Names entryNames{"tarno", "TarnoNo"};
constexpr RecordTable::Names locationNames{"location", "LocNo"};
constexpr RecordTable::Names fieldNames{"field", "FieldNo"};
constexpr RecordTable::Names reportNames{"report", "RptNo"};

constexpr std::string_view newKey = "0"; ///< of a record that has no key yet

std::string KeptNotice(const std::string& file, std::string_view now, const std::string& kept)
{
    return "Another program has changed " + file + ". Nothing is lost: the log is now as " +
           std::string(now) + " is kept in\r\n" + kept;
}

std::string OursStays(const std::string& file, const std::string& kept)
{
    return KeptNotice(file, "you see it here; the other version", kept);
}

std::string TheirsIsTaken(const std::string& file, const std::string& kept)
{
    return KeptNotice(file, "that program left it, with your change; what you saw here before", kept);
}

std::string FoundAgain(const std::string& file, const std::string& kept)
{
    return "Tarno was ended by force while it wrote " + file +
           ". Nothing is lost: what another program had written meanwhile is kept in\r\n" + kept;
}

void AddNotice(std::string& notice, const std::string& more)
{
    notice += (notice.empty() ? "" : "\r\n\r\n") + more;
}

void Tell(std::string_view routine, const std::string& notice)
{
    if (!notice.empty()) {
        ErrorLog(module, routine, nullptr, notice);
    }
}

template <typename Body>
Status Trapped(std::string_view routine, Body&& body)
{
    return Trap(module, routine, std::forward<Body>(body)) ? succeeded : failed;
}

} // namespace

cSQL::cSQL(const ProgramFolder& folder, FileOperations& operations)
    : m_folder(folder),
      m_writer(operations),
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
    std::string notice;
    const Status status = Trapped("Init", [&] {
        for (Document* document : {&m_entries, &m_fields, &m_locations, &m_entryBlank, &m_locationBlank,
                                   &m_reports, &m_reportBlank}) {
            document->file.Load(m_folder);
            document->table.Rebuild();
            for (const std::string& kept :
                 m_writer.RemoveLeftovers(m_folder.Existing(document->file.Name()))) {
                AddNotice(notice, FoundAgain(document->file.Name(), kept));
            }
        }
    });
    Tell("Init", notice);
    return status;
}

Status cSQL::DeInit()
{
    return Trapped("DeInit", [&] {
        for (Document* document : {&m_entries, &m_locations, &m_fields, &m_entryBlank, &m_locationBlank,
                                   &m_reports, &m_reportBlank}) {
            document->file.Release();
            document->table.Rebuild();
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
    return Change(
        "FieldUpdate", m_fields, "Field.xml", [&] { return xFld.Text(0); },
        [&](RecordTable& table) { table.Replace(xFld); });
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
         [&] { name = m_locations.table.Get(sLocNo).Text(LocationField::LocName); });
    return name;
}

Status cSQL::ReportLogData(const std::string& sFlds, const std::string& sKeys, std::int16_t iLocNo)
{
    return Trapped("ReportLogData", [&] {
        m_reportGrid = LogGrid(m_entries.table.List(),
                               {.names = Split(sFlds, ','), .keys = Split(sKeys, ','), .location = iLocNo},
                               [this](const std::string& number) { return LocationNameGet(number); });
    });
}

std::vector<std::string> cSQL::UnsavedFiles() const
{
    std::vector<std::string> names;
    for (const Document* document : {&m_entries, &m_locations, &m_fields, &m_reports}) {
        if (document->file.IsUnsaved()) {
            names.push_back(document->file.Name());
        }
    }
    return names;
}

Status cSQL::List(std::string_view routine, const Document& from, RecordList& list)
{
    return Trapped(routine, [&] {
        if (RecordList records = from.table.List(); !records.empty()) {
            list = std::move(records);
        }
    });
}

Status cSQL::Get(std::string_view routine, const Document& from, const Document& blank, std::int16_t key,
                 Record& record)
{
    return Trapped(routine, [&] {
        record = Record(key != 0 ? from.table.Get(std::to_string(key)) : blank.table.First());
    });
}

Status cSQL::Update(std::string_view routine, Document& in, Record& record, const char* savedAs)
{
    return Change(
        routine, in, savedAs, [&] { return record.Text(0); },
        [&](RecordTable& table) {
            if (record.Text(0) == newKey) {
                table.Append(record);
            } else {
                table.Replace(record);
            }
        });
}

Status cSQL::Delete(std::string_view routine, Document& in, std::int16_t key, const char* savedAs)
{
    return Change(
        routine, in, savedAs, [&] { return std::to_string(key); },
        [&](RecordTable& table) { table.Remove(std::to_string(key)); });
}

template <typename KeyOf, typename TableChange>
Status cSQL::Change(std::string_view routine, Document& in, const char* savedAs, const KeyOf& keyOf,
                    const TableChange& change)
{
    std::string notice;
    const Status status = Trapped(routine, [&] {
        const std::string path = in.file.SavePath(m_folder, savedAs);
        try {
            notice = MeetOtherVersion(in, path, keyOf());
        } catch (...) { // nothing may be written now, but the change goes with the next save
            change(in.table);
            in.file.CountAsUnsaved();
            throw;
        }
        change(in.table);
        if (const std::string kept = in.file.Save(path, m_writer); !kept.empty()) {
            AddNotice(notice, OursStays(in.file.Name(), kept));
        }
    });
    Tell(routine, notice);
    return status;
}

std::string cSQL::MeetOtherVersion(Document& in, const std::string& path, const std::string& key)
{
    const std::optional<std::string> found = in.file.OtherVersion(path);
    if (!found) {
        return {};
    }
    Document theirs(in.file.Name(), in.table.RecordNames());
    const bool isUsable = theirs.file.TakeOver(*found) && theirs.file.Container() == theirs.file.Data();
    theirs.table.Rebuild();
    if (!isUsable || in.file.IsUnsaved() || !theirs.table.AgreesWith(in.table, key)) {
        const std::string kept = m_writer.Keep(path, *found);
        in.file.GiveUp(*found);
        return OursStays(in.file.Name(), kept);
    }
    const std::string kept =
        theirs.table.HoldsAllOf(in.table) ? std::string() : m_writer.Keep(path, in.file.Bytes());
    in.file.TakeOver(*found);
    in.table.Rebuild();
    return kept.empty() ? std::string() : TheirsIsTaken(in.file.Name(), kept);
}
