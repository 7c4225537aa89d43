#include "CommandLine.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Paths.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <string_view>

namespace Tarno
{

namespace
{

constexpr unsigned Bit(Action action)
{
    return 1U << static_cast<unsigned>(action);
}

enum class Takes { Nothing, Value, OptionalValue };

struct Option {
    std::string_view name;
    std::string_view value; ///< as in the help
    Takes takes;
    unsigned actions; ///< the ones that have this option
};

constexpr std::array options{
    Option{"--folder", "DIR", Takes::Value, ~0U},
    Option{"--find", "QUERY", Takes::Value, Bit(Action::Export) | Bit(Action::Report)},
    Option{"--dry-run", "", Takes::Nothing, Bit(Action::Import)},
    Option{"--add-places", "", Takes::Nothing, Bit(Action::Import)},
    Option{"--from", "DATE", Takes::Value, Bit(Action::Forecast)},
    Option{"--days", "N", Takes::Value, Bit(Action::Forecast)},
    Option{"--location", "PLACE", Takes::Value, Bit(Action::Report)},
    Option{"--month", "YYYY-MM", Takes::Value, Bit(Action::Calendar)},
    Option{"--output", "FILE", Takes::Value, Bit(Action::Report) | Bit(Action::Calendar)},
};

struct Command {
    Option option;
    Action action;
};

constexpr std::array commands{
    Command{{"--help", "", Takes::Nothing, ~0U}, Action::ShowHelp},
    Command{{"--help-all", "", Takes::Nothing, ~0U}, Action::ShowHelp},
    Command{{"--version", "", Takes::Nothing, ~0U}, Action::ShowVersion},
    Command{{"--list", "QUERY", Takes::OptionalValue, ~0U}, Action::List},
    Command{{"--export", "FILE.csv", Takes::Value, ~0U}, Action::Export},
    Command{{"--import", "FILE.csv", Takes::Value, ~0U}, Action::Import},
    Command{{"--check", "", Takes::Nothing, ~0U}, Action::Check},
    Command{{"--forecast", "PLACE", Takes::Value, ~0U}, Action::Forecast},
    Command{{"--report", "NAME", Takes::Value, ~0U}, Action::Report},
    Command{{"--calendar", "PLACE", Takes::Value, ~0U}, Action::Calendar},
    Command{{"--backup", "FILE.zip", Takes::Value, ~0U}, Action::BackUp},
    Command{{"--restore", "FILE.zip", Takes::Value, ~0U}, Action::Restore},
};

constexpr std::array qtOptionsWithValue{"display",     "geometry",      "icon",         "platform",
                                        "plugin",      "platformtheme", "session",      "platformpluginpath",
                                        "style",       "stylesheet",    "title",        "qwindowgeometry",
                                        "qwindowicon", "qwindowtitle",  "qmljsdebugger"};
constexpr std::array qtOptions{"dograb", "nograb", "reverse", "sync", "widgetcount"};

class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

std::string Cited(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

/// Returns the texts as an enumeration, for example "--a, --b or --c".
std::string Enumerated(const std::vector<std::string>& texts, const std::string& lastSeparator)
{
    std::string joined;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        joined += (index == 0 ? "" : index + 1 == texts.size() ? lastSeparator : ", ") + texts[index];
    }
    return joined;
}

const Option* FindOption(std::string_view name)
{
    for (const Command& command : commands) {
        if (command.option.name == name) {
            return &command.option;
        }
    }
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const Option& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

std::string_view LongName(std::string_view name)
{
    return name == "-h" || name == "-?" ? "--help" : name == "-v" ? "--version" : name;
}

/// The options that were given, by name, with their values.
class Given
{
public:
    explicit Given(const std::vector<std::string>& arguments)
    {
        for (m_next = arguments.begin(); m_next != arguments.end();) {
            const std::string& argument = *m_next++;
            if (argument == "--" && !m_haveEnded) {
                m_haveEnded = true;
            } else if (m_haveEnded || !SkipQtOption(argument, arguments)) {
                Add(argument, arguments);
            }
        }
    }

    bool Has(std::string_view name) const { return m_values.contains(name); }

    std::string Value(std::string_view name) const { return Has(name) ? m_values.find(name)->second : ""; }

private:
    bool SkipQtOption(std::string_view argument, const std::vector<std::string>& arguments)
    {
        if (!argument.starts_with('-')) {
            return false;
        }
        argument.remove_prefix(argument.starts_with("--") ? 2 : 1);
        const std::string_view name = argument.substr(0, argument.find('='));
        if (std::find(qtOptions.begin(), qtOptions.end(), argument) != qtOptions.end()) {
            return true;
        }
        if (std::find(qtOptionsWithValue.begin(), qtOptionsWithValue.end(), name) ==
            qtOptionsWithValue.end()) {
            return false;
        }
        if (name.size() == argument.size() && m_next != arguments.end()) {
            ++m_next;
        }
        return true;
    }

    void Add(std::string_view argument, const std::vector<std::string>& arguments)
    {
        if (m_haveEnded || !argument.starts_with('-')) {
            throw UsageError("The argument " + Cited(argument) + " does not belong to an option.");
        }
        const std::string_view written = argument.substr(0, argument.find('='));
        const std::string name(LongName(written));
        const Option* option = FindOption(name);
        if (option == nullptr) {
            throw UsageError("The option " + std::string(written) + " does not exist.");
        }
        const bool hasValue = written.size() < argument.size();
        if (hasValue && option->takes == Takes::Nothing) {
            throw UsageError(name + " has no value.");
        }
        std::string value(hasValue ? argument.substr(written.size() + 1) : std::string_view());
        if (!hasValue && option->takes != Takes::Nothing && m_next != arguments.end() &&
            !m_next->starts_with("--")) {
            value = *m_next++;
        }
        if (value.empty() && option->takes == Takes::Value) {
            throw UsageError(name + " needs a value: " + name + ' ' + std::string(option->value));
        }
        if (!m_values.emplace(name, std::move(value)).second) {
            throw UsageError(name + " is given twice.");
        }
    }

    std::map<std::string, std::string, std::less<>> m_values;
    std::vector<std::string>::const_iterator m_next;
    bool m_haveEnded = false; ///< the options, by "--"
};

/// Returns the command that was given, or null.
const Command* FindCommand(const Given& given)
{
    std::vector<std::string> names;
    const Command* first = nullptr;
    for (const Command& command : commands) {
        if (given.Has(command.option.name)) {
            if (command.action == Action::ShowHelp) {
                return &command;
            }
            names.emplace_back(command.option.name);
            first = first == nullptr ? &command : first;
        }
    }
    if (names.size() > 1) {
        throw UsageError(Enumerated(names, " and ") + " cannot be used together.");
    }
    return first;
}

/// Throws unless every option belongs to the action.
void CheckOptions(const Given& given, Action action)
{
    for (const Option& option : options) {
        if (!given.Has(option.name) || (option.actions & Bit(action)) != 0) {
            continue;
        }
        std::vector<std::string> names;
        for (const Command& command : commands) {
            if ((option.actions & Bit(command.action)) != 0) {
                names.emplace_back(command.option.name);
            }
        }
        throw UsageError(std::string(option.name) + " can only be used with " + Enumerated(names, " or ") +
                         '.');
    }
}

/// Throws unless the options without which the command is incomplete were given.
void CheckComplete(const Given& given, const Command& command)
{
    for (const std::string_view name : {"--month", "--output"}) {
        const Option& option = *FindOption(name);
        if ((option.actions & Bit(command.action)) != 0 && !given.Has(name)) {
            throw UsageError(std::string(command.option.name) + " also needs " + std::string(name) + ' ' +
                             std::string(option.value) + '.');
        }
    }
}

/// Returns the date `text`. `written` is what the user wrote for the option.
std::chrono::year_month_day DateIn(const std::string& text, const std::string& expected,
                                   const std::string& written)
{
    try {
        return ToDate(text);
    } catch (const Error&) {
        throw UsageError(expected + ", not " + Cited(written) + '.');
    }
}

int DaysIn(const std::string& text)
{
    constexpr int most = 3660;
    try {
        const int days = text.find_first_not_of("0123456789") == std::string::npos ? ToInt32(text) : 0;
        if (days >= 1 && days <= most) {
            return days;
        }
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): too large
    }
    throw UsageError("--days needs a number from 1 to " + std::to_string(most) + ", not " + Cited(text) +
                     '.');
}

OutputFormat FormatOf(const std::string& file, Action action)
{
    const std::string other = action == Action::Report ? ".rtf" : ".ics";
    if (HasSuffix(file, ".pdf")) {
        return OutputFormat::Pdf;
    }
    if (HasSuffix(file, other)) {
        return action == Action::Report ? OutputFormat::Rtf : OutputFormat::ICalendar;
    }
    throw UsageError("--output needs a file name that ends with .pdf or " + other + ", not " + Cited(file) +
                     '.');
}

CommandLine Parse(const std::vector<std::string>& arguments)
{
    const Given given(arguments);
    CommandLine line;
    if (given.Has("--folder")) {
        line.folder = given.Value("--folder");
    }
    const Command* command = FindCommand(given);
    if (command != nullptr) {
        line.action = command->action;
        line.subject = given.Value(command->option.name);
    }
    if (line.action == Action::ShowHelp || line.action == Action::ShowVersion) {
        return line;
    }
    CheckOptions(given, line.action);
    if (command != nullptr) {
        CheckComplete(given, *command);
    }
    if (line.action == Action::BackUp && !HasSuffix(line.subject, ".zip")) {
        throw UsageError("--backup needs a file name that ends with .zip, not " + Cited(line.subject) + '.');
    }
    line.query = line.action == Action::List ? line.subject : given.Value("--find");
    line.location = given.Value("--location");
    line.isDryRun = given.Has("--dry-run");
    line.addsPlaces = given.Has("--add-places");
    if (given.Has("--from")) {
        const std::string from = given.Value("--from");
        line.from = DateIn(from, "--from needs a date such as 2026-03-31", from);
    }
    if (given.Has("--days")) {
        line.days = DaysIn(given.Value("--days"));
    }
    if (given.Has("--month")) {
        const std::string month = given.Value("--month");
        const auto first = DateIn(month + "-01", "--month needs a month such as 2026-03", month);
        line.month = first.year() / first.month();
    }
    if (given.Has("--output")) {
        line.output = given.Value("--output");
        line.format = FormatOf(line.output, line.action);
    }
    return line;
}

} // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments)
{
    try {
        return Parse(arguments);
    } catch (const UsageError& wrong) {
        return {.problem = wrong.what()};
    }
}

} // namespace Tarno
