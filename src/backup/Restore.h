#pragma once

#include "backup/Archive.h"
#include "backup/BackUpNames.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "exchange/TripTable.h"
#include "store/DataFile.h"
#include "store/cSQL.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// A back-up that can be restored. It comes from an unknown source.
class BackUpArchive
{
public:
    /// Opens the back-up and reads its data files. Throws ArchiveProblem if it cannot be restored: it is not
    /// an archive that can be trusted, it has no trips or locations, or one of its data files is damaged.
    explicit BackUpArchive(const std::string& path);

    /// Returns the records of the back-up. They refer to the object.
    RecordList Trips() const { return m_trips.Records().List(); }

    RecordList Locations() const { return m_locations.Records().List(); }

    /// Returns the contents of its data files and pick lists by name.
    const std::map<std::string, std::string>& Files() const { return m_files; }

    /// Returns when the back-up was made, for the user. Empty if it does not say so.
    const std::string& Time() const { return m_time; }

    /// Returns the entry of the picture that a record refers to by `stored`, or null.
    const ArchiveEntry* PictureOf(const std::string& stored) const;

    /// Returns the number of pictures that records refer to.
    std::size_t PictureCount() const;

    const ArchiveReader& Archive() const { return m_archive; }

private:
    ArchiveReader m_archive;
    std::map<std::string, std::string> m_files;
    std::map<std::string, std::string> m_pictures; ///< names of entries by stored path, not to be trusted
    std::string m_time;
    DataFile m_trips;
    DataFile m_locations;
};

/// What a log contains, for the user's decision.
struct LogSummary {
    std::size_t trips = 0;
    std::size_t locations = 0;
    std::string lastTrip; ///< the latest start date, "yyyy-mm-dd"; empty without trips
};

LogSummary Summarize(const RecordList& trips, const RecordList& locations);

struct RestoreResult {
    std::string before; ///< path of the back-up of the files that were replaced; empty if there were none
    LogSummary restored;
    std::size_t pictures = 0;         ///< the number of pictures that records refer to
    std::vector<std::string> missing; ///< stored paths of pictures that are in neither back-up nor folder
};

/// Replaces the log in `folder` by the back-up, completely or not at all. Creates the folder if it does not
/// exist. A file that the back-up does not have stays. Pictures are never replaced; the restored records
/// refer to them by relative paths. First makes a back-up of the present files in the folder "backups" of
/// the data folder. Holds the lock of the folder all the time.
///
/// Throws ArchiveProblem, Cancelled, or Error with sentences for the user; the log is then unchanged. Throws
/// RestoreInterrupted if the log may be changed in part: FinishRestore completes it.
///
/// A cSQL of the folder must be loaded again afterwards; its unsaved changes would be merged otherwise.
RestoreResult RestoreBackUp(const std::string& path, const ProgramFolder& folder, FileOperations& operations,
                            const LocalTime& time, const std::string& program, const Progress& progress = {});

/// A restore that has begun to replace files, but has not replaced all.
class RestoreInterrupted : public Error
{
public:
    explicit RestoreInterrupted(const std::string& text) : Error(ErrorNumber::PathFileAccess, text) {}
};

enum class FinishedRestore {
    Nothing,   ///< there was nothing to finish
    Completed, ///< a restore was interrupted while it replaced files; now it is complete
    Discarded  ///< a restore was interrupted before it replaced files; the log is as it was
};

/// Finishes a restore that was killed. Call this before the files of the folder are read. Throws Error if it
/// cannot be finished, for example while another program restores; RestoreInterrupted if it must be repeated.
FinishedRestore FinishRestore(const ProgramFolder& folder, FileOperations& operations);

/// Returns the trips and locations of the back-up that the log does not have, see PlanImport. Two trips are
/// the same if they have the same place, start date and times; two places if they have the same name. The
/// rows of the plan are the trips of the back-up.
ImportPlan PlanMissing(const BackUpArchive& backUp, const RecordList& trips, const RecordList& locations);

/// Adds the records of the plan as one step of the history, with their pictures. Stores their keys in the
/// plan. Throws Cancelled or Error if a picture cannot be written; the log is then unchanged.
Status AddMissing(const BackUpArchive& backUp, ImportPlan& plan, const ProgramFolder& folder,
                  FileOperations& operations, cSQL& sql, const Progress& progress = {});

} // namespace Tarno
