#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/ShellSort.h"
#include "store/DataFile.h"
#include "store/Record.h"
#include "store/RecordTable.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tarno
{

/// What an operation of the data access returns.
using Status = std::int32_t;
constexpr Status succeeded = 0;
constexpr Status failed = 1; ///< the error has been reported through ErrorLog

/// A record that this program and another one have changed in different ways; the log has the version of
/// this one.
struct ConflictNotice {
    enum class Kind { Trip, Location, Column, Report };

    Kind kind;
    std::string date; ///< of a trip
    std::string name; ///< of the location, column or report; a trip has that of its location
    bool isDeletedHere;
    std::string keptAs; ///< path of the file that holds the other version; empty if it was deleted there
};

/// The only code that touches the data files. Documents are held whole in memory; every change is written
/// to its file at once. A change whose saving failed stays in memory and is written by the next save. Changes
/// that another program has made in a file are merged, record by record, when that file is saved.
///
/// A record is handed out as a copy and handed back whole; a key of 0 means the blank template.
class cSQL
{
public:
    /// The references must outlive the object. Until Init every file is empty.
    cSQL(const ProgramFolder& folder, FileOperations& operations);

    /// `show` is called after a save that has met a conflict. Until this is called conflicts are not shown.
    void SetShowConflict(std::function<void(const ConflictNotice&)> show)
    {
        m_showConflict = std::move(show);
    }

    /// Loads the seven files. A file that is missing or damaged is no failure here; the operations that
    /// need it fail. Temporaries that a crash has left behind are removed.
    Status Init();
    /// Releases the documents; nothing is saved. No operation may follow.
    Status DeInit();

    // Lists: all records in file order. A file without records leaves the argument as it was.

    Status EntryList(RecordList& xEntries) const;
    Status LocationList(RecordList& xLocs) const;
    Status FieldList(RecordList& xField) const;
    Status ReportList(RecordList& xRpt) const;

    // Gets: a copy of the record with that number, of the template for 0.

    Status EntryGet(std::int16_t iTarnoNo, Record& xEntry) const;
    Status LocationGet(std::int16_t iLocNo, Record& xLoc) const;
    Status ReportGet(std::int16_t iRptNo, Record& xRpt) const;

    // Updates: a record whose key is "0" is appended under the last record's key plus one, which is
    // written into the argument as well; any other replaces the stored record of its key.

    Status EntryUpdate(Record& xTarno);
    Status LocationUpdate(Record& xLoc);
    Status ReportUpdate(Record& xRpt);
    /// Replaces only; the set of field definitions is fixed.
    Status FieldUpdate(const Record& xFld);

    // Deletions: the file is saved whether there was such a record or not.

    Status EntryDelete(std::int16_t iTarnoNo);
    Status LocationDelete(std::int16_t iLocNo);
    Status ReportDelete(std::int16_t iRptNo);

    /// The stored name of the location whose key is `sLocNo`; "1", the error reported, when there is none.
    std::string LocationNameGet(const std::string& sLocNo) const;

    /// Fills ReportGrid with the rows of the log report, as LogGrid says. `sFlds` are the data names of the
    /// columns, `sKeys` their field numbers, both with "," between them; `iLocNo` is the location whose
    /// entries are wanted, 0 for all. After a failure the grid is as it was.
    Status ReportLogData(const std::string& sFlds, const std::string& sKeys, std::int16_t iLocNo);

    /// The rows that ReportLogData filled last, for the report to sort and to read; they are kept until it
    /// fills them anew.
    ReportTable& ReportGrid() { return m_reportGrid; }

    /// The names of the files whose last change has not reached the disk.
    std::vector<std::string> UnsavedFiles() const;

private:
    static Status List(std::string_view routine, const DataFile& from, RecordList& list);
    static Status Get(std::string_view routine, const DataFile& from, const DataFile& blank, std::int16_t key,
                      Record& record);
    Status Update(std::string_view routine, DataFile& in, Record& record, const char* savedAs);
    Status Delete(std::string_view routine, DataFile& in, std::int16_t key, const char* savedAs);

    /// Runs `change` on the records and saves the file. `updated` is the record that was added or replaced.
    template <typename TableChange>
    Status Change(std::string_view routine, DataFile& in, const char* savedAs, const TableChange& change,
                  Record* updated = nullptr);

    /// Brings what refers to records of `in` up to date: the record of the caller and the trips of this run.
    void UpdateReferences(std::string_view routine, const DataFile& in, const KeyMap& newKeys,
                          Record* updated);

    ConflictNotice NoticeOf(const DataFile& in, const Conflict& conflict) const;

    const ProgramFolder& m_folder;
    FileOperations& m_operations;
    DataFile m_entries;
    DataFile m_fields;
    DataFile m_locations;
    DataFile m_entryBlank;
    DataFile m_locationBlank;
    DataFile m_reports;
    DataFile m_reportBlank;
    std::set<std::string> m_ownTrips; ///< keys of the trips that were added or changed in this run
    std::function<void(const ConflictNotice&)> m_showConflict;
    ReportTable m_reportGrid;
};

} // namespace Tarno
