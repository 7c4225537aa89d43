#pragma once

#include "CommandLine.h"
#include "core/Clock.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "store/cSQL.h"
#include "ui/common/Prompts.h"

#include <istream>
#include <ostream>

namespace Tarno
{

/// How a command ended, as the exit status of the program.
enum ExitStatus { Done = 0, NotDone = 1, WrongUsage = 2 };

/// What a command works with: the log, what belongs to the machine, and its streams (UTF-8).
struct CommandContext {
    const ProgramFolder& folder;
    FileOperations& operations;
    cSQL& sql; ///< is initialised by commands that need it
    const Clock& clock;
    Printers& printers; ///< for the paper of the default printer
    std::istream& in;
    std::ostream& out;
    std::ostream& err; ///< why something could not be done, and what that means for the data
};

/// Carries out a command: any action from Action::List on. Its arguments must have no problem. Needs a
/// QGuiApplication if the action prints (see PrintsPages), otherwise a QCoreApplication.
ExitStatus RunCommand(const CommandLine& line, const CommandContext& context);

/// Whether the command needs fonts.
bool PrintsPages(const CommandLine& line);

} // namespace Tarno
