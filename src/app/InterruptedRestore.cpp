#include "InterruptedRestore.h"

#include "backup/Restore.h"
#include "core/Error.h"

namespace Tarno
{

std::string FinishInterruptedRestore(const ProgramFolder& folder, FileOperations& operations)
{
    try {
        switch (FinishRestore(folder, operations)) {
        case FinishedRestore::Completed:
            return "A restore that was interrupted is now complete.";
        case FinishedRestore::Discarded:
            return "A restore was interrupted before it changed the log. It was discarded.";
        case FinishedRestore::Nothing:
            break;
        }
        return {};
    } catch (const RestoreInterrupted&) {
        throw;
    } catch (const Error& error) {
        const std::string reason = error.Description();
        throw Error(error.Number(), "A restore that was interrupted could not be completed: " + reason +
                                        (reason.ends_with('.') ? "" : ".") +
                                        " Close all programs that use the log, then try again.");
    }
}

} // namespace Tarno
