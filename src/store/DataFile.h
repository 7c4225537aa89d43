#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"
#include "store/Merge.h"
#include "store/RecordTable.h"

#include <memory>
#include <string>

namespace Tarno
{

/// One data file, held whole in memory: a document whose element `data` holds the records. Its file may be
/// changed by other programs at any time.
class DataFile
{
public:
    DataFile(std::string name, RecordTable::Names names);

    const std::string& Name() const { return m_name; }

    RecordTable& Records() { return m_contents->records; }

    const RecordTable& Records() const { return m_contents->records; }

    /// Reads the file from `folder`. A file that is missing, damaged or no data file leaves the document
    /// empty: every operation on it then fails, so nothing can be saved over it.
    void Load(const ProgramFolder& folder, FileOperations& operations);

    void Release();

    /// Writes all changes to the file that was loaded or, if it is gone, to the file `name` of `folder`
    /// whatever the case of its letters. Changes of other programs are merged into the document first. A
    /// replaced version of a record is written to "tarno-kept-1.xml" or the next number that is free.
    /// Throws Error: PermissionDenied if the folder stays locked, PathNotFound if it is no longer the folder
    /// that was opened, PathFileAccess if the file is damaged or incomplete, and what SafeWriter throws. The
    /// changes then stay in memory for the next save. Returns in `merged`, even then, what merging has done.
    void Save(const ProgramFolder& folder, const std::string& name, FileOperations& operations,
              MergeResult& merged);

    /// Whether the last Save failed: the document differs from the file.
    bool IsUnsaved() const { return m_isUnsaved; }

private:
    struct Contents {
        explicit Contents(RecordTable::Names names) : records(document, names) {}

        std::string bytes; ///< as read; the values of the document lie in them
        pugi::xml_document document;
        RecordTable records;
    };

    /// Null if `bytes` are no data file.
    std::unique_ptr<Contents> Parsed(std::string bytes) const;
    /// Merges the file, which another program has changed. Returns false if it is damaged or may still be
    /// being written. `lastRead` is what the attempt before this one has read.
    bool MergeFile(const std::string& path, const FileState& found, std::string& lastRead,
                   FileOperations& operations, MergeResult& merged);

    std::string m_name;
    RecordTable::Names m_names;
    std::unique_ptr<Contents> m_contents;
    std::string m_path;  ///< of the file that was loaded
    FileState m_folder;  ///< of the folder of that file
    FileState m_version; ///< of the file when it was last read or written
    bool m_isUnsaved = false;
};

} // namespace Tarno
