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

/// Shows errors to the user and writes them to the log file. The program has one reporter, which routines use
/// through ErrorLog and Trap.
class ErrorReporter
{
public:
    /// Shows `text` under `title` with an information icon and an OK button.
    using ShowMessage = std::function<void(const std::string& text, const std::string& title)>;

    static ErrorReporter& Instance();

    /// Sets the log file: the program name with ".log" in `folder`. The arguments must remain valid until
    /// Reset or the next SetLog. Errors are shown but not logged until this is called.
    void SetLog(const ProgramFolder& folder, FileOperations& operations, const Clock& clock);
    void SetShowMessage(ShowMessage show);
    /// Removes the log and the message function.
    void Reset();

    /// Allows the last message to be shown again. Call this when the program waits for its user. Until then
    /// a message that equals the last one is only logged, so that one cause does not show a row of boxes.
    void AllowRepetition() { m_lastMessage.clear(); }

    /// Appends a record to the log and shows the message unless `show` is false. Never throws. Waits while
    /// another process holds the log file; skips a log that cannot be written.
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
    std::string m_lastMessage;
};

/// Reports `pending` (null if no error is pending) as raised in `module`.`routine`: one record in the log and
/// one message on screen. `message` is always logged, but shown only if no error is pending.
void ErrorLog(std::string_view module, std::string_view routine, const Error* pending,
              const std::optional<std::string>& message = std::nullopt);

/// Converts the exception that is currently being handled to an Error and returns it.
Error CurrentError();

/// Runs `body`, the body of the routine `module`.`routine`. Passes an exception from it to ErrorLog and does
/// not rethrow it. Returns whether the body completed.
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
