#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"
#include "core/ShellSort.h"
#include "store/DataFile.h"
#include "store/Record.h"
#include "store/RecordTable.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What an operation of the data access returns.
using Status = std::int32_t;
constexpr Status succeeded = 0;
constexpr Status failed = 1; ///< the error has been reported through ErrorLog

/// The only code that touches the data files. Documents are held whole in memory; every change is written
/// to its file at once. A change whose saving failed stays in memory and goes with the next save. Before a
/// change, what another program has written into the file meanwhile is taken over, or kept beside it.
///
/// A record is handed out as a copy and handed back whole; a key of 0 means the blank template.
class cSQL
{
public:
    /// The references must outlive the object. Until Init every file is empty.
    cSQL(const ProgramFolder& folder, FileOperations& operations);

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
    /// One of the seven files with its records.
    struct Document {
        Document(std::string fileName, RecordTable::Names names)
            : file(std::move(fileName)), table(file, names)
        {
        }

        DataFile file;
        RecordTable table;
    };

    static Status List(std::string_view routine, const Document& from, RecordList& list);
    static Status Get(std::string_view routine, const Document& from, const Document& blank, std::int16_t key,
                      Record& record);
    Status Update(std::string_view routine, Document& in, Record& record, const char* savedAs);
    Status Delete(std::string_view routine, Document& in, std::int16_t key, const char* savedAs);

    /// Runs `change` on the table and saves the file. `keyOf` tells the key of the record that is changed.
    template <typename KeyOf, typename TableChange>
    Status Change(std::string_view routine, Document& in, const char* savedAs, const KeyOf& keyOf,
                  const TableChange& change);

    /// Looks, before the record `key` is changed, whether another program has written the file at `path`.
    /// What it wrote is taken over where it leaves that record as it is here, otherwise it is kept beside the
    /// file. Returns words for the user when one of the two versions was kept.
    std::string MeetOtherVersion(Document& in, const std::string& path, const std::string& key);

    const ProgramFolder& m_folder;
    SafeWriter m_writer;
    Document m_entries;
    Document m_fields;
    Document m_locations;
    Document m_entryBlank;
    Document m_locationBlank;
    Document m_reports;
    Document m_reportBlank;
    ReportTable m_reportGrid;
};
