#include "CommandParts.h"
#include "backup/BackUp.h"
#include "backup/Restore.h"
#include "core/Error.h"
#include "core/Text.h"

#include <QCoreApplication>

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

std::string ProgramName()
{
    return "Tarno " + QCoreApplication::applicationVersion().toStdString();
}

LocalTime TimeOf(const Clock& clock)
{
    return {clock.Today(), clock.TimeOfDay()};
}

void ListMissing(const std::vector<std::string>& missing, const CommandContext& context)
{
    for (const std::string& picture : missing) {
        context.err << "This picture does not exist or cannot be read: " << InOneLine(picture) << '\n';
    }
}

} // namespace

void FinishInterruptedRestore(const CommandContext& context)
{
    try {
        switch (FinishRestore(context.folder, context.operations)) {
        case FinishedRestore::Completed:
            context.err << "A restore that was interrupted is now complete.\n";
            break;
        case FinishedRestore::Discarded:
            context.err << "A restore was interrupted before it changed the log. It was discarded.\n";
            break;
        default:
            break;
        }
    } catch (const RestoreInterrupted& error) {
        throw CommandFailure(error.Description());
    } catch (const Error& error) {
        throw CommandFailure("A restore that was interrupted could not be completed: " + Sentence(error) +
                             " Close all programs that use the log, then try again.");
    }
}

ExitStatus RunBackUp(const CommandLine& line, const CommandContext& context)
{
    FinishInterruptedRestore(context);
    try {
        const BackUpResult result = BackUp(
            context.folder, context.operations, line.subject,
            {.pictures = BackUpPictures::Include, .time = TimeOf(context.clock), .program = ProgramName()});
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
                                                   TimeOf(context.clock), ProgramName());
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
