#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace Tarno
{

// Conversions between text and numbers, independent of the locale: the decimal separator is always ".".
// Surrounding blanks are ignored; exponents ("1e2") are accepted.

/// Parses a number. Throws Error: TypeMismatch if `text` is not a number, Overflow if it does not fit a
/// double.
double ToDouble(std::string_view text);

/// Parses a number and rounds it to the nearest integer, halves to even.
/// Throws Error: TypeMismatch if `text` is not a number, Overflow if it does not fit.
std::int16_t ToInt16(std::string_view text);
std::int32_t ToInt32(std::string_view text);

/// Rounds like ToInt16. Throws Error Overflow if the result does not fit.
std::int16_t RoundToInt16(double value);

/// Returns the shortest decimal text without an exponent that parses to `value` again.
std::string FromDouble(double value);

/// Parses a date: year, month and day as numbers with "-" between them ("2003-2-5"). Surrounding blanks are
/// ignored. The year has four digits and is 1 to 9999.
/// Throws Error TypeMismatch if the text does not have this form or the date does not exist.
std::chrono::year_month_day ToDate(std::string_view text);

/// Formats `date` as "yyyy-mm-dd".
std::string FromDate(std::chrono::year_month_day date);

/// Formats `number` with leading zeros up to `width` digits ("05"). Longer numbers are not truncated.
std::string ZeroPadded(int number, int width);

/// Returns `text` without surrounding blanks (space and tab).
std::string_view Trimmed(std::string_view text);

} // namespace Tarno
