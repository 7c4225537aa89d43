#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace Tarno
{

/// What the program does: opens its window, or carries out a command without a display.
enum class Action {
    OpenWindow,
    ShowHelp,
    ShowVersion,
    List,
    Export,
    Import,
    Check,
    Forecast,
    Report,
    Calendar,
    BackUp,
    Restore
};

enum class OutputFormat { Pdf, Rtf, ICalendar };

/// The arguments of the program, checked. All texts are UTF-8.
struct CommandLine {
    Action action = Action::OpenWindow;
    std::string problem = {}; ///< what is wrong with the arguments, a sentence; empty if nothing is
    std::optional<std::string> folder = {};
    std::string subject = {};  ///< the value of the command: a file, a place or a report
    std::string query = {};    ///< finds all trips if it is empty
    std::string location = {}; ///< restricts a report to a location, unless it is empty
    std::string output = {};   ///< the file to write
    OutputFormat format = OutputFormat::Pdf;
    bool isDryRun = false;
    bool addsPlaces = false; ///< an import may add locations without coordinates
    std::optional<std::chrono::year_month_day> from = {};
    int days = 7;
    std::chrono::year_month month = {};
};

/// Parses the arguments that follow the name of the program. Ignores the options of Qt, such as -style.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// Returns the text of --help.
std::string HelpText();

} // namespace Tarno
