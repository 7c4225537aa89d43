#include "ComparableValues.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <string>

namespace Tarno
{

namespace
{

bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
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

/// Returns the length of the number at the start of `text`, or 0 if there is none.
std::size_t NumberLength(std::string_view text)
{
    const auto endOfDigits = [&](std::size_t at) {
        return std::min(text.find_first_not_of("0123456789", at), text.size());
    };
    const std::size_t start = text.starts_with('-') ? 1 : 0;
    const std::size_t point = endOfDigits(start);
    const bool hasPoint = point < text.size() && (text[point] == '.' || text[point] == ',');
    const std::size_t end = hasPoint ? endOfDigits(point + 1) : point;
    return end > point + 1 ? end : point > start ? point : 0;
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

std::optional<Interval> DaysOf(std::string_view period)
{
    const auto dashes = std::count(period.begin(), period.end(), '-');
    const auto first = DateOf(std::string(period) + (dashes == 0 ? "-01-01" : dashes == 1 ? "-01" : ""));
    if (!first) {
        return std::nullopt;
    }
    const auto last = dashes == 0 ? first->year() / std::chrono::December / 31
                      : dashes == 1
                          ? std::chrono::year_month_day(first->year() / first->month() / std::chrono::last)
                          : *first;
    return Interval{DayNumber(*first), DayNumber(last)};
}

std::chrono::year_month_day FirstDay(const Interval& days)
{
    return std::chrono::sys_days{std::chrono::days(static_cast<int>(days.first))};
}

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

std::optional<FoundNumber> FirstNumber(std::string_view text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool startsWord = at == 0 || text[at - 1] == ' ' || text[at - 1] == '(';
        const std::size_t length = startsWord || IsDigit(text[at]) ? NumberLength(text.substr(at)) : 0;
        if (length == 0) {
            continue;
        }
        FoundNumber found{0, text.substr(at, length)};
        const std::string number = ReplaceAll(found.written, ",", ".");
        const auto parsed = std::from_chars(number.data(), number.data() + number.size(), found.value);
        return parsed.ec == std::errc() ? std::optional(found) : std::nullopt; // it may be too large
    }
    return std::nullopt;
}

bool IsNumberOrTime(std::string_view text)
{
    const auto number = FirstNumber(text);
    return (number && number->written == text) || TimeOf(text);
}

std::optional<double> PositionOf(std::string_view text, std::span<const std::string_view> words)
{
    const auto found = std::find_if(words.begin(), words.end(),
                                    [&](std::string_view word) { return EqualIgnoringCase(word, text); });
    return found == words.end() ? std::nullopt : std::optional(static_cast<double>(found - words.begin()));
}

std::optional<double> PositionOfBeginning(std::string_view text, std::span<const std::string_view> words)
{
    const auto startsWithText = [&](std::string_view word) {
        return !text.empty() && EqualIgnoringCase(word.substr(0, text.size()), text);
    };
    const auto found = std::find_if(words.begin(), words.end(), startsWithText);
    const bool isOnly = std::count_if(words.begin(), words.end(), startsWithText) == 1;
    const auto only = isOnly ? std::optional(static_cast<double>(found - words.begin())) : std::nullopt;
    const auto whole = PositionOf(text, words);
    return whole ? whole : only;
}

} // namespace Tarno
