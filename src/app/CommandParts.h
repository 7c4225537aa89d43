#pragma once

#include "Commands.h"
#include "store/Record.h"

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Tarno
{

// What the commands have in common, and the commands themselves. They throw CommandFailure if they cannot be
// carried out.

/// Why a command cannot be carried out: sentences for the user.
class CommandFailure : public std::runtime_error
{
public:
    explicit CommandFailure(const std::string& text, ExitStatus status = NotDone)
        : std::runtime_error(text), m_status(status)
    {
    }

    ExitStatus Status() const { return m_status; }

private:
    ExitStatus m_status;
};

/// Finishes a restore that was killed, and says so on standard error. Throws CommandFailure if that fails.
void TellInterruptedRestore(const CommandContext& context);

/// Loads the data files, after finishing a restore that was killed. Throws CommandFailure if one of `needed`
/// cannot be read.
void LoadLog(const CommandContext& context, std::initializer_list<std::string_view> needed);

RecordList TripsOf(const CommandContext& context);
RecordList LocationsOf(const CommandContext& context);

/// Returns the trips that the query finds, in the order of the log. Throws CommandFailure if a part of the
/// query cannot be understood.
RecordList FoundTrips(const CommandContext& context, const std::string& query);

/// Returns the only location with this name, compared like the words of a query, or the only one whose name
/// contains it.
RecordView PlaceNamed(const CommandContext& context, const std::string& name);

/// Replaces or creates a file. Throws CommandFailure if that fails, or if the file may belong to the log.
void WriteOutput(const CommandContext& context, const std::string& path, std::string_view bytes);

/// Returns the text on one line, without tabs and other control characters, which a terminal would obey.
std::string InOneLine(std::string_view text);

ExitStatus RunList(const CommandLine& line, const CommandContext& context);
ExitStatus RunExport(const CommandLine& line, const CommandContext& context);
ExitStatus RunImport(const CommandLine& line, const CommandContext& context);
ExitStatus RunCheck(const CommandContext& context);
ExitStatus RunForecast(const CommandLine& line, const CommandContext& context);
ExitStatus RunReport(const CommandLine& line, const CommandContext& context);
ExitStatus RunCalendar(const CommandLine& line, const CommandContext& context);
ExitStatus RunBackUp(const CommandLine& line, const CommandContext& context);
ExitStatus RunRestore(const CommandLine& line, const CommandContext& context);

} // namespace Tarno
