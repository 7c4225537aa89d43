#pragma once

#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"
#include "core/Xml.h"
#include "store/LogFiles.h"
#include "store/Merge.h"
#include "store/RecordTable.h"

#include <memory>
#include <optional>
#include <string>

namespace Tarno
{

/// A data file that is completely held in memory: a document whose element `data` contains the records. Other
/// programs may change the file at any time.
class DataFile
{
public:
    DataFile(std::string name, RecordTable::Names names);

    explicit DataFile(const LogFile& file) : DataFile(file.name, file.elements) {}

    const std::string& Name() const { return m_name; }

    RecordTable& Records() { return m_contents->records; }

    const RecordTable& Records() const { return m_contents->records; }

    /// Reads the file from `folder`. If the file is missing, damaged or not a data file, the document stays
    /// empty and every operation on it fails, so that the file is never overwritten.
    void Load(const ProgramFolder& folder, FileOperations& operations);

    /// Reads `bytes`, the contents of such a file that is stored elsewhere. It can be inspected, but not
    /// saved.
    void LoadBytes(const std::string& bytes);

    /// Returns why the records of the file cannot be listed, for the user, or an empty text if they can.
    const std::string& Problem() const { return m_problem; }

    /// Whether Save has written the file since this object was made.
    bool WasSaved() const { return m_wasSaved; }

    /// Drops the document, including unsaved changes.
    void Release();

    /// Writes all changes to the file that was loaded. If that file no longer exists, writes to
    /// `folder.FindPath(name)` instead. Changes of other programs are merged into the document first.
    /// A version of another program that ours replaces is written to "tarno-kept-1.xml" or the next free
    /// number. Throws Error: PermissionDenied if the folder stays locked, PathNotFound if it is no longer the
    /// folder that was opened, PathFileAccess if the file is damaged or incomplete, and the errors of
    /// SafeWriter. The changes then stay in memory for the next save. Stores the result of merging in
    /// `merged`, even on failure.
    void Save(const ProgramFolder& folder, const std::string& name, FileOperations& operations,
              MergeResult& merged);

    /// Merges the file into the document like Save, but writes nothing else than kept versions.
    void MergeChangesOfOthers(const ProgramFolder& folder, const std::string& name,
                              FileOperations& operations, MergeResult& merged);

private:
    struct Contents {
        explicit Contents(RecordTable::Names names) : records(document, names) {}

        /// Parses `newBytes`. Returns a fault if they are not a data file.
        std::optional<XmlFault> Parse(std::string newBytes);

        std::string bytes; ///< of the file; the document refers to them
        pugi::xml_document document;
        RecordTable records;
    };

    void LoadContents(FileOperations& operations);
    /// Replaces the document, unless `bytes` have a fault.
    std::optional<XmlFault> ParseContents(std::string bytes);
    /// Calls `finish` with the path and the state of the file while the folder is locked and the document
    /// contains the changes of other programs. Repeats that until `finish` returns true.
    template <typename Finish>
    void WhileMerged(const ProgramFolder& folder, const std::string& name, FileOperations& operations,
                     MergeResult& merged, const Finish& finish);
    /// Merges the file, which another program has changed, into the document. Returns false if the file is
    /// damaged or may be incomplete. `lastRead` are the bytes read by the previous attempt.
    bool MergeFile(const std::string& path, const FileState& found, std::string& lastRead,
                   FileOperations& operations, MergeResult& merged);

    std::string m_name;
    RecordTable::Names m_names;
    std::unique_ptr<Contents> m_contents;
    std::string m_problem;
    std::string m_path;  ///< of the file that was loaded
    FileState m_folder;  ///< of the folder of the loaded file
    FileState m_version; ///< state of the file when it was last read or written
    bool m_wasSaved = false;
};

} // namespace Tarno
