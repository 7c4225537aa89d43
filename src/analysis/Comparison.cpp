#include "Comparison.h"

#include "analysis/QuerySyntax.h"
#include "analysis/SearchedTrip.h"
#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace Tarno
{

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The lit percentages from which the moon counts as full, and up to which it counts as new.
constexpr double fullMoon = 97;
constexpr double newMoon = 3;

/// Whether `byte` continues a character of UTF-8.
bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::optional<Interval> IntervalOf(std::optional<double> value)
{
    return value ? std::optional(Interval{*value, *value}) : std::nullopt;
}

/// Returns the month with a number from 1 to 12, or with a name or the beginning of only one name.
std::optional<Interval> MonthsNamed(std::string_view text, std::span<const std::string_view> names)
{
    for (int month = 1; month <= static_cast<int>(names.size()); ++month) {
        if (text == std::to_string(month) || text == ZeroPadded(month, 2)) {
            return Interval{static_cast<double>(month), static_cast<double>(month)};
        }
    }
    const auto named = PositionOfBeginning(Fold(text), names);
    return IntervalOf(named ? std::optional(*named + 1) : std::nullopt);
}

std::optional<Interval> OperandOf(const QueryField& field, Order order, std::string_view text)
{
    switch (order) {
    case Order::Days:
        return DaysOf(text);
    case Order::Months:
        return MonthsNamed(text, field.words);
    case Order::Times:
        return IntervalOf(TimeOf(text));
    case Order::Words:
        return IntervalOf(PositionOfBeginning(Fold(text), field.words));
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
    case Order::Words:
        return IntervalOf(PositionOf(line, field.words));
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
    case Order::Months:
        return "a month, for example 11 or November.";
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
    if (last < first && order != Order::Months) { // "november..february" is a part of two years
        throw MalformedValue(Cited(written) + " ends before it begins. Write the smaller value first.");
    }
    return {first, last};
}

} // namespace

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
    const bool isPeriod = field.order == Order::Days || field.order == Order::Months;
    if (isPeriod && !isQuoted && !value.empty()) {
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
    if (m_order == Order::Months) {
        return trip.Days() && HoldsForMonth(static_cast<unsigned>(FirstDay(*trip.Days()).month()));
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

bool Comparison::HoldsForMonth(unsigned month) const
{
    const bool spansNewYear = m_operand.last < m_operand.first;
    return spansNewYear ? month >= m_operand.first || month <= m_operand.last
                        : Holds({static_cast<double>(month), static_cast<double>(month)});
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
