#pragma once

#include "PictureFolder.h"
#include "Restore.h"

#include <string>
#include <string_view>

namespace Tarno
{

/// The new files of a restore before they are put in place, in a folder of the data folder. The caller holds
/// the lock of the data folder.
class RestoreStaging
{
public:
    RestoreStaging(const ProgramFolder& folder, FileOperations& operations);

    /// Whether a restore has left such a folder.
    bool Exists() const;

    void Create();
    /// Adds a data file or pick list with the rights of the file that it will replace.
    void AddFile(const std::string& name, std::string_view bytes);
    /// Adds a picture that is not in the data folder. `name` is relative to it.
    void AddPicture(const std::string& name, const PictureContents& contents);
    /// Makes the restore irrevocable: from now on, Finish completes it.
    void Commit();

    /// Removes the folder after a failure, if possible. Never fails.
    void Abandon();

    /// Puts the files in place if the restore is irrevocable, and removes the folder. Throws
    /// RestoreInterrupted if that fails; it can be repeated.
    FinishedRestore Finish();

private:
    std::string PathOf(std::string_view name) const;
    std::string MarkerPath() const;
    void PutFilesInPlace();
    void PutPictureInPlace(const std::string& name);
    /// Removes the folder if possible. Never fails.
    void RemoveAll();

    const ProgramFolder& m_folder;
    FileOperations& m_operations;
    std::string m_path;
};

} // namespace Tarno
