#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace Tarno
{

// Conversions between text and numbers. None depends on the user's locale: the decimal sign is
// always ".". Blanks around a number are ignored; an exponent ("1e2") is a number.

/// The number in `text`. Throws Error: TypeMismatch when it is none, Overflow beyond a double.
double ToDouble(std::string_view text);

/// The number in `text`, rounded to the nearest whole number, a half to the even neighbour.
/// Throws Error: TypeMismatch when it is no number, Overflow when it does not fit.
std::int16_t ToInt16(std::string_view text);
std::int32_t ToInt32(std::string_view text);

/// `value` rounded as ToInt16 does. Throws Error: Overflow when it does not fit.
std::int16_t RoundToInt16(double value);

/// The shortest decimal text that reads back as `value`, without an exponent where one can be avoided.
std::string FromDouble(double value);

/// The date in `text`: year, month and day as numbers with "-" between them ("2003-2-5"), blanks
/// around it ignored. The year has four digits and is 1 to 9999.
/// Throws Error: TypeMismatch when the text is no such date or the calendar has no such day.
std::chrono::year_month_day ToDate(std::string_view text);

/// `date` as "yyyy-mm-dd".
std::string FromDate(std::chrono::year_month_day date);

/// `number` in decimal, with zeros in front up to `width` digits ("05"). Longer numbers stay whole.
std::string ZeroPadded(int number, int width);

/// `text` without the blanks (space and tab) around it.
std::string_view Trimmed(std::string_view text);

} // namespace Tarno
