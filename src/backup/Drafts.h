#pragma once

#include "core/FileOperations.h"
#include "store/ImportBatch.h"
#include "store/RecordTitle.h"
#include "store/cSQL.h"

#include <QLockFile>

#include <memory>
#include <string>
#include <vector>

namespace Tarno
{

/// What the user has typed into an editing window and not saved yet.
struct Draft {
    RecordTitle::Kind kind = RecordTitle::Kind::Trip;
    std::string key = "0";  ///< of the record; "0" for a new one
    std::string dataFolder; ///< of the log to which it belongs
    std::string written;    ///< when, for the user: "2026-11-22 18:30"
    StoredTexts values;     ///< as they were typed, by position
    StoredTexts before;     ///< the stored values when editing began; empty for a new record
    int number = 1;         ///< distinguishes the drafts of one record, or of several new ones

    bool operator==(const Draft&) const = default;
};

enum class DraftState {
    NewRecord,     ///< the record was never saved
    Unchanged,     ///< the record has the values from which editing began
    ChangedSince,  ///< the record has other values than when editing began
    RecordDeleted, ///< the record does not exist any more
    Saved          ///< the record has the values of the draft
};

/// The drafts of a user, one file for each record, in a folder outside the data folders.
class Drafts
{
public:
    Drafts(std::string folder, FileOperations& operations);

    /// Takes the drafts of a log, so that no other program offers them while this one is running. Returns
    /// whether this program has them. Removes what killed programs have left. Never fails.
    bool Claim(const std::string& dataFolder);

    /// Writes the draft, replacing an older one of the same record of the same log with its number. Creates
    /// the folder if its parent exists. Throws Error if that fails.
    void Write(const Draft& draft);

    /// Whether a draft of this record and log with this number exists.
    bool Exists(const Draft& draft);

    /// Removes the draft with the record, log and number of `draft`, if there is one. Throws Error if it
    /// cannot be removed.
    void Remove(const Draft& draft);

    /// Returns the drafts of a log, the oldest first. Renames drafts that cannot be read to names that end
    /// with ".damaged" and leaves them out. Never fails.
    std::vector<Draft> List(const std::string& dataFolder);

private:
    void MakeFolder();
    std::string PathOf(const Draft& draft) const;

    std::string m_folder;
    FileOperations& m_operations;
    std::unique_ptr<QLockFile> m_claim;
};

/// Compares the draft with its record in the loaded log.
DraftState StateOf(const Draft& draft, const cSQL& sql);

} // namespace Tarno
