#include "TableColumns.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "exchange/DateTimeCells.h"
#include "exchange/TextScanner.h"

#include <algorithm>
#include <cmath>

namespace Tarno
{

namespace
{

using MaybeText = std::optional<std::string>;

constexpr std::string_view exactMark = "~=";

bool IsAnyOf(std::string_view text, std::initializer_list<std::string_view> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return EqualIgnoringCase(text, word); });
}

MaybeText ReadRiseOrSet(std::string_view text)
{
    for (const char* calculated : {"never", "rises", "sets", ":", "24:00"}) { // see Forecast.h
        if (EqualIgnoringCase(text, calculated)) {
            return calculated;
        }
    }
    return text == "24:00:00" ? MaybeText("24:00") : ReadTime(text); // as spreadsheets may save it
}

/// Reads words of the field without regard to case, their codes, and other numbers as they are.
MaybeText ReadCode(const TableColumn& column, std::string_view text)
{
    if (text.empty() || EqualIgnoringCase(text, FieldWords::notSet)) {
        return std::string();
    }
    for (std::size_t code = 0; code < column.words.size(); ++code) {
        if (EqualIgnoringCase(text, column.words[code])) {
            return std::to_string(code);
        }
    }
    constexpr std::size_t mostDigits = 9;
    Scanner scanner(text);
    const bool isNegative = scanner.Take("-") != 0;
    const std::string_view digits = scanner.TakeDigits(1, mostDigits);
    if (digits.empty() || !scanner.AtEnd()) {
        return {};
    }
    const int value = ValueOf(digits);
    if (!isNegative && static_cast<std::size_t>(value) < column.words.size()) {
        return std::to_string(value);
    }
    return text == std::to_string(isNegative ? -value : value) ? MaybeText(text) : std::nullopt;
}

/// Reads "Waning, 5%" and the stored form, "-5". A moon that is not lit has a direction too: "-0".
MaybeText ReadMoonPhase(std::string_view text)
{
    if (text.empty() || EqualIgnoringCase(text, FieldWords::notSet)) {
        return std::string();
    }
    Scanner scanner(text);
    const bool isWaning = scanner.TakeWord("waning");
    if (isWaning || scanner.TakeWord("waxing")) {
        scanner.Take(",");
        scanner.SkipBlanks();
    }
    const bool isNegative = isWaning || scanner.Take("-") != 0;
    const int percent = ValueOf(scanner.TakeDigits(1, 3));
    scanner.SkipBlanks();
    scanner.Take("%");
    if (!scanner.AtEnd() || percent < 0 || percent > 100) {
        return {};
    }
    std::string phase(isNegative ? "-" : "");
    phase += std::to_string(percent);
    return phase;
}

/// Reads a number from -limit to limit. Keeps its digits and replaces a decimal comma.
MaybeText ReadNumber(std::string_view text, double limit)
{
    if (text.empty()) {
        return std::string();
    }
    std::string number(text);
    if (std::count(number.begin(), number.end(), ',') == 1) {
        std::replace(number.begin(), number.end(), ',', '.');
    }
    try {
        return std::abs(ToDouble(number)) <= limit ? MaybeText(number) : std::nullopt;
    } catch (const Error&) {
        return {};
    }
}

MaybeText ReadYesOrNo(std::string_view text)
{
    return text.empty()                          ? MaybeText(std::string())
           : IsAnyOf(text, {"1", "yes", "true"}) ? MaybeText("1")
           : IsAnyOf(text, {"0", "no", "false"}) ? MaybeText("0")
                                                 : std::nullopt;
}

std::string ReadLines(std::string_view text)
{
    std::string lines = ReplaceAll(text, "\r\n", "\n");
    std::replace(lines.begin(), lines.end(), '\r', '\n');
    return mMain::EncodeLineBreaks(ReplaceAll(lines, "\n", "\r\n"));
}

/// Returns the stored text, or nothing if the cell is refused.
MaybeText Read(const TableColumn& column, std::string_view cell, const TableForms& forms)
{
    constexpr double mostHours = 14;
    const std::string_view text = Trimmed(cell);
    switch (column.kind) {
    case CellKind::Text:
        return std::string(cell);
    case CellKind::Lines:
        return ReadLines(cell);
    case CellKind::Date:
        return ReadDate(text, forms);
    case CellKind::Time:
        return ReadTime(text);
    case CellKind::RiseOrSet:
        return ReadRiseOrSet(text);
    case CellKind::PeakTime:
        return ReadTime(text).value_or(std::string(cell));
    case CellKind::Code:
        return ReadCode(column, text);
    case CellKind::MoonPhase:
        return ReadMoonPhase(text);
    case CellKind::Latitude:
        return ReadNumber(text, 90);
    case CellKind::Longitude:
        return ReadNumber(text, 180);
    case CellKind::Hours:
        return ReadNumber(text, mostHours);
    case CellKind::YesOrNo:
        return ReadYesOrNo(text);
    }
    return {};
}

/// Returns what a cell of the column must be, for example "a date".
std::string Expected(const TableColumn& column)
{
    switch (column.kind) {
    case CellKind::Date:
        return "a date";
    case CellKind::Time:
    case CellKind::RiseOrSet:
        return "a time";
    case CellKind::MoonPhase:
        return "a phase like \"Waning, 45%\", or a number from -100 to 100";
    case CellKind::Latitude:
        return "a number from -90 to 90";
    case CellKind::Longitude:
        return "a number from -180 to 180";
    case CellKind::Hours:
        return "a number of hours from -14 to 14";
    case CellKind::YesOrNo:
        return "\"yes\" or \"no\"";
    default:
        break;
    }
    std::string words;
    for (std::size_t index = 0; index < column.words.size(); ++index) {
        words += index == 0 ? "" : index + 1 == column.words.size() ? " or " : ", ";
        words += column.words[index];
    }
    return words;
}

/// Returns a sentence like: The start date "31/02/2025" is not a date.
std::string Refusal(const TableColumn& column, std::string_view cell)
{
    constexpr std::size_t mostBytes = 60;
    const std::string_view start = cell.substr(0, mostBytes);
    std::string shown(start.substr(0, XmlTextLength(start))); // without a part of a character
    for (const char* lineBreak : {"\r", "\n"}) {
        shown = ReplaceAll(shown, lineBreak, " ");
    }
    std::string caption(column.caption);
    caption.front() = static_cast<char>(caption.front() - 'A' + 'a');
    return "The " + caption + " \"" + shown + (cell.size() > mostBytes ? "..." : "") + "\" is not " +
           Expected(column) + ".";
}

/// Returns the stored text as users read it.
std::string ReadableCell(const TableColumn& column, std::string_view stored)
{
    if (column.kind == CellKind::Code && stored.size() == 1 && IsDigit(stored[0]) &&
        static_cast<std::size_t>(stored[0] - '0') < column.words.size()) {
        return std::string(column.words[static_cast<std::size_t>(stored[0] - '0')]);
    }
    if (column.kind == CellKind::Lines) {
        return ReplaceAll(mMain::DecodeLineBreaks(stored), "\r\n", "\n");
    }
    if (column.kind == CellKind::MoonPhase && !stored.empty() && ReadMoonPhase(stored) == stored) {
        const bool isWaning = stored.front() == '-';
        return (isWaning ? "Waning, " : "Waxing, ") +
               ZeroPadded(ValueOf(stored.substr(isWaning ? 1 : 0)), 2) + '%';
    }
    return std::string(stored);
}

} // namespace

CellReading ReadCell(const TableColumn& column, std::string_view cell, const TableForms& forms)
{
    if (cell.starts_with(exactMark)) {
        return {.stored = std::string(cell.substr(exactMark.size()))};
    }
    MaybeText stored = Read(column, cell, forms);
    return stored ? CellReading{.stored = std::move(*stored)} : CellReading{.refusal = Refusal(column, cell)};
}

std::string CellOf(const TableColumn& column, std::string_view stored)
{
    std::string cell = ReadableCell(column, stored);
    const CellReading reading = ReadCell(column, cell, {});
    const bool isRestored = reading.refusal.empty() && reading.stored == stored;
    return isRestored && !(cell.empty() && column.isNeeded) ? cell
                                                            : std::string(exactMark) + std::string(stored);
}

} // namespace Tarno
