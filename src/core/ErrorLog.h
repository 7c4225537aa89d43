#pragma once

#include "core/Clock.h"
#include "core/Error.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace Tarno
{

/// Tells the user and the log file about errors. There is one reporter, which every routine reaches
/// through ErrorLog and Trap.
class ErrorReporter
{
public:
    /// Shows `text` under `title` with an information icon and an OK button.
    using ShowMessage = std::function<void(const std::string& text, const std::string& title)>;

    static ErrorReporter& Instance();

    /// Where records go: the file named after the program, with ".log", in `folder`. The references
    /// must outlive their use; until this is called errors are shown but not logged.
    void SetLog(const ProgramFolder& folder, FileOperations& operations, const Clock& clock);
    void SetShowMessage(ShowMessage show);
    /// Forgets what was set.
    void Reset();

    /// Appends a record to the log and shows the message unless `show` is false; never throws. While
    /// another process holds the log file, waits for it; a log that cannot be written is skipped.
    void Report(std::string_view module, std::string_view routine, const std::string& detail,
                const std::string& userMessage, bool show);

private:
    void AppendToLog(const std::string& record);

    struct Log {
        const ProgramFolder* folder;
        FileOperations* operations;
        const Clock* clock;
    };

    std::optional<Log> m_log;
    ShowMessage m_show;
};

/// Reports `pending` (nothing when no error is pending) as raised in `module`.`routine`: one record in
/// the log, one message. `message` is shown in place of the error's text only when no error is pending,
/// and logged below it in any case.
void ErrorLog(std::string_view module, std::string_view routine, const Error* pending,
              const std::optional<std::string>& message = std::nullopt);

/// The exception that is being handled, as an Error.
Error CurrentError();

/// Runs the body of the routine `module`.`routine`. An exception out of it is handed to ErrorLog and
/// ends there. Returns whether the body came to its end.
template <typename Body>
bool Trap(std::string_view module, std::string_view routine, Body&& body)
{
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        const Error error = CurrentError();
        ErrorLog(module, routine, &error);
        return false;
    }
}

} // namespace Tarno
