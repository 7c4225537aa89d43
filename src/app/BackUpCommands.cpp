#include "CommandParts.h"
#include "InterruptedRestore.h"
#include "backup/BackUp.h"
#include "backup/Restore.h"
#include "core/Error.h"
#include "core/Text.h"

namespace Tarno
{

namespace
{

/// Returns the description of an error with a full stop.
std::string Sentence(const Error& error)
{
    const std::string text = error.Description();
    return text.ends_with('.') ? text : text + '.';
}

void ListMissing(const std::vector<std::string>& missing, const CommandContext& context)
{
    for (const std::string& picture : missing) {
        context.err << "This picture does not exist or cannot be read: " << InOneLine(picture) << '\n';
    }
}

} // namespace

void TellInterruptedRestore(const CommandContext& context)
{
    try {
        const std::string done = FinishInterruptedRestore(context.folder, context.operations);
        context.err << done << (done.empty() ? "" : "\n");
    } catch (const Error& error) {
        throw CommandFailure(error.Description());
    }
}

ExitStatus RunBackUp(const CommandLine& line, const CommandContext& context)
{
    TellInterruptedRestore(context);
    try {
        const BackUpResult result = BackUp(context.folder, context.operations, line.subject,
                                           {.pictures = BackUpPictures::Include,
                                            .time = LocalTimeOf(context.clock),
                                            .program = ProgramName()});
        ListMissing(result.missing, context);
        context.out << "Backed up the log with " << Counted(result.pictures, "picture") << " to "
                    << line.subject << '\n';
    } catch (const Error& error) {
        throw CommandFailure("The back-up could not be written: " + line.subject + "\n" + Sentence(error));
    }
    return Done;
}

ExitStatus RunRestore(const CommandLine& line, const CommandContext& context)
{
    try {
        const RestoreResult result = RestoreBackUp(line.subject, context.folder, context.operations,
                                                   LocalTimeOf(context.clock), ProgramName());
        ListMissing(result.missing, context);
        context.out << "Restored " << Counted(result.restored.trips, "trip") << ", "
                    << Counted(result.restored.locations, "location") << " and "
                    << Counted(result.pictures, "picture") << " to " << context.folder.GetAppPath() << '\n';
        if (!result.before.empty()) {
            context.out << "The files that were there before are in " << result.before << '\n';
        }
    } catch (const RestoreInterrupted& error) {
        throw CommandFailure(error.Description());
    } catch (const Error& error) {
        const std::string unchanged = "Nothing was changed.";
        const std::string reason = Sentence(error);
        throw CommandFailure("This back-up cannot be restored: " + line.subject + "\n" + reason +
                             (reason.ends_with(unchanged) ? "" : "\n" + unchanged));
    }
    return Done;
}

} // namespace Tarno
