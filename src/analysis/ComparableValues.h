#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <span>
#include <string_view>

namespace Tarno
{

// The values that queries compare, read from texts of trips and of queries.

inline constexpr std::array<std::string_view, 12> monthNames{"January",   "February", "March",    "April",
                                                             "May",       "June",     "July",     "August",
                                                             "September", "October",  "November", "December"};

/// A range of comparable values, both ends included: days since 1970, minutes since midnight, numbers, or
/// positions of words.
struct Interval {
    double first;
    double last;
};

/// Returns the days from `start` to `end`, or nullopt if `start` is not a date. An `end` that is not a date
/// or before the start counts as the start.
std::optional<Interval> DaysBetween(std::string_view start, std::string_view end);

/// Returns the days of a year, a month or a day: "2024", "2024-11", "2024-11-05".
std::optional<Interval> DaysOf(std::string_view period);

std::chrono::year_month_day FirstDay(const Interval& days);

/// Returns the minutes since midnight for "hh:mm" or "h:mm".
std::optional<double> TimeOf(std::string_view text);

struct FoundNumber {
    double value;
    std::string_view written;
};

/// Finds the first number in a text: digits, also with a decimal point or comma. A minus sign or a leading
/// point belongs to the number only at the start of a word, so that "x-7" contains 7.
std::optional<FoundNumber> FirstNumber(std::string_view text);

/// Whether the whole text is a number or a time.
bool IsNumberOrTime(std::string_view text);

/// Returns the position in `words` of the word that equals `text`, ignoring case.
std::optional<double> PositionOf(std::string_view text, std::span<const std::string_view> words);

/// Returns the position of the same word, or else of the only word that starts with `text`.
std::optional<double> PositionOfBeginning(std::string_view text, std::span<const std::string_view> words);

} // namespace Tarno
