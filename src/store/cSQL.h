#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/ShellSort.h"
#include "store/DataFile.h"
#include "store/History.h"
#include "store/ImportBatch.h"
#include "store/Merge.h"
#include "store/Record.h"
#include "store/RecordTable.h"
#include "store/RecordTitle.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tarno
{

/// The result of a data access operation.
using Status = std::int32_t;
constexpr Status succeeded = 0;
constexpr Status failed = 1; ///< the error has been reported through ErrorLog

/// Describes a record that this program and another one have changed differently. The log contains the
/// version of this program.
struct ConflictNotice {
    RecordTitle record;
    bool isDeletedHere;
    std::string keptAs; ///< path of the file with the other version; empty if it was deleted there
};

/// A data file whose records cannot be listed. It is never overwritten.
struct FileProblem {
    std::string file;
    std::string reason; ///< for the user, without a full stop
};

/// A change that the last save of its file could not write.
struct UnsavedChange {
    RecordTitle record;
    bool isDeletion;
    std::string file;
};

/// A change that can be undone or redone, for a menu.
struct ChangeTitle {
    ChangeKind kind;
    RecordTitle record;        ///< as it is now, or as it was before it was deleted; one of those imported
    std::size_t trips = 0;     ///< the number of trips of an import, or of an edit of several records
    std::size_t locations = 0; ///< the number of locations likewise
};

enum class UndoStatus {
    Done,
    Nothing,        ///< there is nothing to undo or redo
    ChangedByOther, ///< another program has changed the record; the step has been dropped
    InUse,          ///< the location would be deleted, but other trips refer to it
    Failed          ///< the error has been reported through ErrorLog
};

struct UndoResult {
    UndoStatus status;
    ChangeTitle change; ///< what was to be undone or redone; undefined if there was nothing
    std::string key;    ///< of the record that is there again or was changed; empty if it is not there. Of an
                        ///< import, the first trip
};

/// The only class that accesses the data files. It keeps the documents in memory and saves each change
/// immediately. If a save fails, the change stays in memory and is written by the next save. Saving a file
/// merges changes of other programs to it record by record.
///
/// Records are returned and passed back as complete copies. Key 0 is the blank template.
class cSQL
{
public:
    /// The references must outlive the object. All documents are empty before Init.
    cSQL(const ProgramFolder& folder, FileOperations& operations);

    /// Sets the function to be called for each conflict after a save. Conflicts are not shown before this is
    /// called.
    void SetShowConflict(std::function<void(const ConflictNotice&)> show)
    {
        m_showConflict = std::move(show);
    }

    /// Loads the seven files and removes orphaned temporaries. Succeeds even if a file is missing or damaged;
    /// operations that need the file then fail.
    Status Init();
    /// Releases the documents without saving. No operation may follow.
    Status DeInit();

    // Lists: all records in file order. The argument is unchanged if the file has no records.

    Status EntryList(RecordList& xEntries) const;
    Status LocationList(RecordList& xLocs) const;
    Status FieldList(RecordList& xField) const;
    Status ReportList(RecordList& xRpt) const;

    // Gets: a copy of the record with the number, or of the template for 0.

    Status EntryGet(std::int16_t iTarnoNo, Record& xEntry) const;
    Status LocationGet(std::int16_t iLocNo, Record& xLoc) const;
    Status ReportGet(std::int16_t iRptNo, Record& xRpt) const;

    // Updates: a record with the key "0" is appended with the last record's key plus one, and the new key is
    // stored in the argument. Any other record replaces the stored one with its key.

    Status EntryUpdate(Record& xTarno);
    Status LocationUpdate(Record& xLoc);
    Status ReportUpdate(Record& xRpt);
    /// Replaces only; the set of field definitions is fixed.
    Status FieldUpdate(const Record& xFld);

    /// Adds locations and trips as one step of the history, and stores their keys in `batch`. A free number
    /// is kept, see RecordTable::AddAll; trips refer to the keys that their locations get. Each file is
    /// merged and saved once, the locations first. All records are in memory even if a save fails; like any
    /// change they are then among UnsavedChanges and written by the next save of their file. If the locations
    /// cannot be saved, the trips are not saved either, so that the log on disk never refers to locations
    /// that are not there. Fails without any change if the records cannot be added to both files.
    Status Import(ImportBatch& batch);

    /// Replaces the stored records with the keys of these, as one step of the history. Each file is merged
    /// and saved once. If a save fails, the changes are in memory like any others. Fails without any change
    /// if a record does not exist.
    Status UpdateTogether(const std::vector<Record>& trips, const std::vector<Record>& locations);

    /// Whether the numbers from 1 to 32767 suffice for the records of `batch`. Import fails otherwise.
    bool HasNumbersFor(ImportBatch batch) const;

    /// Takes over what other programs have changed in the files of trips and locations since they were read.
    /// Nothing of this program is saved.
    Status ReadChangesOfOthers();

    // Deletions: the file is saved even if the record does not exist.

    Status EntryDelete(std::int16_t iTarnoNo);
    Status LocationDelete(std::int16_t iLocNo);
    Status ReportDelete(std::int16_t iRptNo);

    // Undo: the changes of trips and locations that this object has made since Init, in any number of steps.
    // An import is one step. It is undone or redone completely, or not at all if another program has changed
    // one of its records; the result then names that record.
    // A new change drops the steps that could be redone.

    /// Returns the change that Undo would revert, or that Redo would repeat, if any.
    std::optional<ChangeTitle> NextUndo() const { return TitleOfNext(History::Direction::Undo); }

    std::optional<ChangeTitle> NextRedo() const { return TitleOfNext(History::Direction::Redo); }

    /// Undoes the last change, or repeats the last one undone, and saves the file. Merges the changes of
    /// other programs first and never replaces a record that another program has changed. A deleted record
    /// whose key has been taken comes back under the next free key. If only saving fails, the change is in
    /// memory like any other one, and `change` and `key` describe it.
    UndoResult Undo() { return Step("Undo", History::Direction::Undo); }

    UndoResult Redo() { return Step("Redo", History::Direction::Redo); }

    /// Returns the stored name of the location with the key `sLocNo`. If it does not exist, reports the error
    /// and returns "1" (see docs/quirks.md).
    std::string LocationNameGet(const std::string& sLocNo) const;

    /// Fills ReportGrid with the rows of the log report, see LogGrid. `sFlds` are the data names of the
    /// columns and `sKeys` their field numbers, both comma-separated. `iLocNo` is the location to filter by,
    /// 0 for all. `trips`, if given, are the keys of the only trips to report. The grid is unchanged on
    /// failure.
    Status ReportLogData(const std::string& sFlds, const std::string& sKeys, std::int16_t iLocNo,
                         const std::optional<std::set<std::string>>& trips = {});

    /// The rows of the last successful ReportLogData, for the report to sort and print.
    ReportTable& ReportGrid() { return m_reportGrid; }

    /// Returns the files that Init could not read.
    std::vector<FileProblem> FileProblems() const;

    /// Whether new trips or locations can be added to their files.
    bool CanAddEntries() const { return m_entries.Problem().empty(); }

    bool CanAddLocations() const { return m_locations.Problem().empty(); }

    /// Returns the records with fewer values than their kind has. They can be listed and deleted, but not
    /// edited.
    std::vector<RecordTitle> ShortRecords() const;

    /// Returns the trip with the key, or a record without values. Valid until the next change of the trips.
    RecordView FindEntry(const std::string& key) const { return RecordView(m_entries.Records().Find(key)); }

    /// Returns the present state of the trips, and what has changed since, see RecordTable.
    RecordTable::Revision EntryRevision() const { return m_entries.Records().CurrentRevision(); }

    std::optional<std::set<std::string>> EntriesChangedSince(const RecordTable::Revision& revision) const
    {
        return m_entries.Records().ChangedSince(revision);
    }

    /// Whether this object has written any of the files.
    bool HasSaved() const;

    /// Returns the changes that are in memory only because saving failed.
    std::vector<UnsavedChange> UnsavedChanges() const;

private:
    static Status List(std::string_view routine, const DataFile& from, RecordList& list);
    static Status Get(std::string_view routine, const DataFile& from, const DataFile& blank, std::int16_t key,
                      Record& record);
    Status Update(std::string_view routine, DataFile& in, Record& record, const char* savedAs);
    Status Delete(std::string_view routine, DataFile& in, std::int16_t key, const char* savedAs);

    /// Runs `change` on the records and saves the file. `updated` is the record that `change` adds or
    /// replaces.
    template <typename TableChange>
    Status Change(std::string_view routine, DataFile& in, const char* savedAs, const TableChange& change,
                  Record* updated = nullptr);

    /// Stores new keys of records of the caller.
    using UpdateKeys = std::function<void(const KeyMap& newKeys)>;

    /// Runs `body`, which may merge changes of other programs to `in`. Then applies the new keys and shows
    /// the conflicts.
    Status WithMerging(std::string_view routine, const DataFile& in, const UpdateKeys& updateKeys,
                       const std::function<void(MergeResult&)>& body);

    /// Throws Error if the records cannot be added.
    void CheckImport(ImportBatch& batch) const;

    /// Adds records of an import and saves the file if `saves`. Stores their keys in `records`.
    Status AddAll(DataFile& in, const DataFile& blank, const std::vector<StoredTexts*>& records,
                  std::size_t import, bool saves);

    Status MergeChangesOfOthers(std::string_view routine, DataFile& in);

    std::optional<ChangeTitle> TitleOfNext(History::Direction direction) const;
    UndoResult Step(std::string_view routine, History::Direction direction);
    UndoResult StepImport(std::string_view routine, History::Direction direction, const ChangeTitle& title);
    /// Undoes or redoes the changes of an import in one of its files, which is saved if `saves`. Trips that
    /// are added refer to the new keys of their locations.
    Status ApplyImport(std::string_view routine, History::Direction direction, RecordTitle::Kind kind,
                       const KeyMap& newLocations, bool saves);
    /// Returns the new location that undoing an import would remove although other trips refer to it.
    const History::Step* FindUsedLocation(std::span<const History::Step> import) const;

    DataFile& FileOf(RecordTitle::Kind kind)
    {
        return kind == RecordTitle::Kind::Trip ? m_entries : m_locations;
    }

    /// Whether a trip refers to the location with the key `location`.
    bool IsUsed(const std::string& location) const;
    /// Updates `m_ownTrips` after a change of a record of `in`.
    void NoteTrip(const DataFile& in, const RecordChange& change);

    /// Applies the new keys that merging gave to records of `in` to `m_ownTrips`, the history, and the trips
    /// of this run whose location has a new key.
    void UpdateReferences(std::string_view routine, const DataFile& in, const KeyMap& newKeys);

    RecordTitle::Kind KindOf(const DataFile& in) const;
    RecordTitle TitleOf(const DataFile& in, const RecordView& record) const;
    RecordTitle TitleOf(const History::Step& step, History::Direction direction) const;

    const ProgramFolder& m_folder;
    FileOperations& m_operations;
    DataFile m_entries;
    DataFile m_fields;
    DataFile m_locations;
    DataFile m_entryBlank;
    DataFile m_locationBlank;
    DataFile m_reports;
    DataFile m_reportBlank;
    History m_history;
    std::set<std::string> m_ownTrips; ///< keys of the trips that were added or changed in this run
    std::function<void(const ConflictNotice&)> m_showConflict;
    ReportTable m_reportGrid;
};

} // namespace Tarno
