#include "Comparison.h"

#include "analysis/QuerySyntax.h"
#include "analysis/SearchedTrip.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace Tarno
{

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The lit percentages from which the moon counts as full, and up to which it counts as new.
constexpr double fullMoon = 97;
constexpr double newMoon = 3;

bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Whether `byte` continues a character of UTF-8.
bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

double DayNumber(std::chrono::year_month_day day)
{
    return static_cast<double>(std::chrono::sys_days(day).time_since_epoch().count());
}

std::optional<std::chrono::year_month_day> DateOf(std::string_view text)
{
    try {
        return ToDate(text);
    } catch (const Error&) {
        return std::nullopt;
    }
}

/// Returns the days of a year, a month or a day: "2024", "2024-11", "2024-11-05".
std::optional<Interval> PeriodOf(std::string_view text)
{
    const auto dashes = std::count(text.begin(), text.end(), '-');
    const auto first = DateOf(std::string(text) + (dashes == 0 ? "-01-01" : dashes == 1 ? "-01" : ""));
    if (!first) {
        return std::nullopt;
    }
    const auto last = dashes == 0 ? first->year() / std::chrono::December / 31
                      : dashes == 1
                          ? std::chrono::year_month_day(first->year() / first->month() / std::chrono::last)
                          : *first;
    return Interval{DayNumber(*first), DayNumber(last)};
}

/// Returns the minutes since midnight for "hh:mm" or "h:mm".
std::optional<double> TimeOf(std::string_view text)
{
    text = Trimmed(text);
    const std::size_t colon = text.find(':');
    if (colon == 0 || colon > 2 || text.size() != colon + 3) {
        return std::nullopt;
    }
    int hours = 0;
    int minutes = 0;
    const char* end = text.data() + text.size();
    const bool isTime = IsDigit(text.front()) && IsDigit(text[colon + 1]) &&
                        std::from_chars(text.data(), end, hours).ptr == text.data() + colon &&
                        std::from_chars(text.data() + colon + 1, end, minutes).ptr == end;
    return isTime && hours < 24 && minutes < 60 ? std::optional<double>(hours * 60 + minutes) : std::nullopt;
}

struct FoundNumber {
    double value;
    std::string_view written;
};

/// Finds the first number: digits, optionally with a decimal point or comma and more digits. A minus sign or
/// a leading point belongs to it unless a letter or digit precedes.
std::optional<FoundNumber> FirstNumber(std::string_view text)
{
    const auto* digit = std::find_if(text.begin(), text.end(), IsDigit);
    if (digit == text.end()) {
        return std::nullopt;
    }
    auto start = static_cast<std::size_t>(digit - text.begin());
    const auto startsWord = [&](std::size_t at) {
        return at == 0 || std::string_view(" (-\n").find(text[at - 1]) != std::string_view::npos;
    };
    if (start > 0 && (text[start - 1] == '.' || text[start - 1] == ',') && startsWord(start - 1)) {
        --start;
    }
    if (start > 0 && text[start - 1] == '-' && startsWord(start - 1)) {
        --start;
    }
    std::size_t end = text.find_first_of("0123456789", start);
    bool hasPoint = end > start && text[end - 1] != '-';
    while (end < text.size() &&
           (IsDigit(text[end]) || (!hasPoint && end + 1 < text.size() &&
                                   (text[end] == '.' || text[end] == ',') && IsDigit(text[end + 1])))) {
        hasPoint = hasPoint || !IsDigit(text[end]);
        ++end;
    }
    FoundNumber found{0, text.substr(start, end - start)};
    std::string digits(found.written);
    std::replace(digits.begin(), digits.end(), ',', '.');
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), found.value);
    return parsed.ec == std::errc() ? std::optional(found) : std::nullopt;
}

/// Returns the position of the only word that starts with `text`, or of the word that equals it.
std::optional<double> WordOf(std::span<const std::string_view> words, std::string_view text)
{
    std::optional<double> found;
    for (std::size_t at = 0; at < words.size(); ++at) {
        if (EqualIgnoringCase(words[at], text)) {
            return static_cast<double>(at);
        }
        if (EqualIgnoringCase(words[at].substr(0, text.size()), text)) {
            found = found || text.empty() ? std::nullopt : std::optional(static_cast<double>(at));
        }
    }
    return found;
}

std::optional<Interval> IntervalOf(std::optional<double> value)
{
    return value ? std::optional(Interval{*value, *value}) : std::nullopt;
}

std::optional<Interval> OperandOf(const QueryField& field, Order order, std::string_view text)
{
    switch (order) {
    case Order::Days:
        return PeriodOf(text);
    case Order::Times:
        return IntervalOf(TimeOf(text));
    case Order::Words:
        return IntervalOf(WordOf(field.words, Fold(text)));
    default:
        const auto found = FirstNumber(text);
        return found && found->written == text ? IntervalOf(found->value) : std::nullopt;
    }
}

/// Returns the value of a folded line of a trip.
std::optional<Interval> ValueOf(const QueryField& field, Order order, std::string_view line)
{
    switch (order) {
    case Order::Times:
        return IntervalOf(TimeOf(line));
    case Order::Words: {
        const auto is = [&](std::string_view word) { return EqualIgnoringCase(word, line); };
        const auto word = std::find_if(field.words.begin(), field.words.end(), is);
        return word == field.words.end() ? std::nullopt
                                         : IntervalOf(static_cast<double>(word - field.words.begin()));
    }
    default:
        const auto found = FirstNumber(line);
        return found && !TimeOf(line) ? IntervalOf(found->value) : std::nullopt;
    }
}

std::string ExpectedValue(const QueryField& field, Order order)
{
    switch (order) {
    case Order::Days:
        return "a date, for example 2024, 2024-11 or 2024-11-05.";
    case Order::Times:
        return "a time, for example 06:30.";
    case Order::Words: {
        std::vector<std::string> words(field.words.begin(), field.words.end());
        return "a value. The values are, in this order: " + ReplaceAll(Join(words, ','), ",", ", ") + ".";
    }
    default:
        return "a number, for example 18.5.";
    }
}

Interval RequiredOperand(const QueryField& field, Order order, std::string_view text,
                         std::string_view written)
{
    const auto operand = OperandOf(field, order, text);
    if (!operand) {
        throw MalformedValue(Cited(written) + " needs " + ExpectedValue(field, order));
    }
    return *operand;
}

/// Reads "a..b", "a.." or "..b".
Interval ReadRange(const QueryField& field, Order order, std::string_view value, std::string_view written)
{
    const std::size_t dots = value.find("..");
    const std::string_view from = value.substr(0, dots);
    const std::string_view to = value.substr(dots + 2);
    const bool isOpen = !from.empty() || !to.empty();
    const double first =
        isOpen && from.empty() ? -infinity : RequiredOperand(field, order, from, written).first;
    const double last = to.empty() ? infinity : RequiredOperand(field, order, to, written).last;
    if (last < first) {
        throw MalformedValue(Cited(written) + " ends before it begins. Write the smaller value first.");
    }
    return {first, last};
}

} // namespace

std::optional<Interval> DaysBetween(std::string_view start, std::string_view end)
{
    const auto first = DateOf(start);
    if (!first) {
        return std::nullopt;
    }
    const auto last = end == start ? first : DateOf(end);
    return Interval{DayNumber(*first), DayNumber(last ? std::max(*first, *last) : *first)};
}

std::optional<Comparison> Comparison::Read(const QueryField& field, std::string_view value,
                                           std::string_view written)
{
    struct Sign {
        std::string_view text;
        Operator compare;
    };

    constexpr std::array signs{Sign{">=", Operator::From}, Sign{"<=", Operator::UpTo},
                               Sign{">", Operator::After}, Sign{"<", Operator::Before},
                               Sign{"=", Operator::Overlaps}};
    const auto* sign = std::find_if(signs.begin(), signs.end(),
                                    [&](const Sign& each) { return value.starts_with(each.text); });
    const bool isQuoted = value.find('"') != std::string_view::npos;
    const bool isRange = !isQuoted && value.find("..") != std::string_view::npos;
    if (field.order == Order::None && (sign != signs.end() || isRange)) {
        throw MalformedValue(Cited(written) + " cannot be compared, because the values of " +
                             Cited(field.name) + " have no order.");
    }
    const bool isTime = field.order == Order::Numbers && value.find(':') != std::string_view::npos;
    const Order order = isTime ? Order::Times : field.order;
    if (sign != signs.end()) {
        const std::string operand = Unquoted(value.substr(sign->text.size()));
        return Comparison(field, order, sign->compare, RequiredOperand(field, order, operand, written));
    }
    if (isRange) {
        return Comparison(field, order, Operator::Overlaps, ReadRange(field, order, value, written));
    }
    if (field.order == Order::Days && !isQuoted && !value.empty()) {
        return Comparison(field, order, Operator::Overlaps, RequiredOperand(field, order, value, written));
    }
    if (field.searched.front() == EntryField::MoonPhase && EqualIgnoringCase(value, "full")) {
        return Comparison(field, order, Operator::From, {fullMoon, fullMoon});
    }
    if (field.searched.front() == EntryField::MoonPhase && EqualIgnoringCase(value, "new")) {
        return Comparison(field, order, Operator::UpTo, {newMoon, newMoon});
    }
    return std::nullopt;
}

bool Comparison::Matches(const SearchedTrip& trip) const
{
    if (m_order == Order::Days) {
        return trip.Days() && Holds(*trip.Days());
    }
    for (const EntryField::Position position : m_field->searched) {
        std::string_view rest = trip.Of(position);
        while (!rest.empty()) {
            const std::size_t length = std::min(rest.find('\n'), rest.size());
            const auto value = ValueOf(*m_field, m_order, rest.substr(0, length));
            if (value && Holds(*value)) {
                return true;
            }
            rest.remove_prefix(std::min(length + 1, rest.size()));
        }
    }
    return false;
}

bool Comparison::Holds(const Interval& value) const
{
    switch (m_operator) {
    case Operator::After:
        return value.first > m_operand.last;
    case Operator::From:
        return value.first >= m_operand.first;
    case Operator::Before:
        return value.last < m_operand.first;
    case Operator::UpTo:
        return value.last <= m_operand.last;
    default:
        return value.first <= m_operand.last && value.last >= m_operand.first;
    }
}

std::string Cited(std::string_view written)
{
    constexpr std::size_t longest = 60;
    std::size_t length = std::min(written.size(), longest);
    while (length > 0 && length < written.size() && IsContinuation(written[length])) {
        --length;
    }
    const std::string text = XmlText(written.substr(0, length)) + (length < written.size() ? "\u2026" : "");
    return "\u201C" + text + "\u201D";
}

} // namespace Tarno
