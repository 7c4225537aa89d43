#pragma once

#include "backup/Archive.h"
#include "backup/BackUpNames.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tarno
{

// A back-up is an archive with the data files and pick lists of a log, and with its pictures if they are
// wanted. See docs/backup.md.

enum class BackUpPictures { LeaveOut, Include };

struct BackUpOptions {
    BackUpPictures pictures = BackUpPictures::Include;
    LocalTime time;      ///< stored in the back-up
    std::string program; ///< the name and version of the program, stored in the back-up
};

struct BackUpResult {
    std::size_t pictures = 0;         ///< the number of pictures in the back-up
    std::vector<std::string> missing; ///< pictures that cannot be read, as they are stored in the records
};

/// Returns the name and version of the program.
std::string ProgramName();

/// Writes a back-up of the log in `folder` to the file `path`, see ArchiveWriter::Write. The data files are
/// read while the folder is locked, so that they belong together. Refuses a log with a data file that cannot
/// be read, because such a back-up could not be restored. Throws Error with a sentence for the user, and like
/// ArchiveWriter::Write.
BackUpResult BackUp(const ProgramFolder& folder, FileOperations& operations, const std::string& path,
                    const BackUpOptions& options, const Progress& progress = {});

/// Whether the data files or the pick lists in `folder` differ from those in the back-up `path`, or that
/// cannot be read. Pictures do not count: a new picture changes the record that refers to it.
bool DiffersFromBackUp(const ProgramFolder& folder, FileOperations& operations, const std::string& path);

/// Creates the folder `backUps` if it does not exist and is in the folder of the log. Any other one may be on
/// a drive that is not connected: throws Error PathNotFound with a sentence for the user.
void EnsureBackUpFolder(const ProgramFolder& folder, FileOperations& operations, const std::string& backUps);

/// Makes an automatic back-up in the folder `backUps` if the log differs from its newest one there, then
/// removes its automatic back-ups that have expired; other logs may have theirs in the same folder. Returns
/// the name of the new back-up, or an empty text. Throws like EnsureBackUpFolder and BackUp.
std::string BackUpIfChanged(const ProgramFolder& folder, FileOperations& operations,
                            const std::string& backUps, const BackUpOptions& options,
                            const Progress& progress = {});

/// Returns the names of the files in `folder`, or none if it cannot be read.
std::vector<std::string> NamesIn(const std::string& folder);

} // namespace Tarno
