#pragma once

#include "backup/BackUp.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// What making a back-up and restoring it have in common.

/// The entry that describes a back-up.
inline constexpr std::string_view noteName = "tarno-backup.xml";

/// The contents of the entry `noteName`.
struct BackUpNote {
    unsigned version = 1;                        ///< of the format; this program knows version 1
    std::string log;                             ///< the data folder that was backed up
    std::string time;                            ///< "2026-11-22 18:30"
    std::string program;                         ///< the name and version of the program
    std::map<std::string, std::string> pictures; ///< names of entries by stored paths
};

std::string WriteNote(const BackUpNote& note);

/// Reads the note of a back-up from an unknown source. Ignores what is damaged. The caller must check whether
/// the entries exist.
BackUpNote ReadNote(const std::string& bytes);

/// The contents of data files and pick lists by name.
using LogBytes = std::map<std::string, std::string>;

/// Reads those files of the log that exist. The caller holds the lock of the folder.
LogBytes ReadLogFiles(const ProgramFolder& folder);

/// Returns why the files cannot be restored, sentences for the user, or an empty text. The trips and the
/// locations are needed; the other files are checked if they are there.
std::string ProblemOf(const LogBytes& files);

} // namespace Tarno
