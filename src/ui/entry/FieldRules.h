#pragma once

#include <QLocale>
#include <QString>

#include <chrono>
#include <optional>
#include <string>

namespace Tarno
{

/// Parses a date as "yyyy-mm-dd", with or without leading zeros, or in the short format of `locale`.
/// Two-digit years mean 1930 to 2029. Years 1 to 9999 are valid.
std::optional<std::chrono::year_month_day> ParseUserDate(const QString& text,
                                                         const QLocale& locale = QLocale());

/// Returns the date `days` after `date`, or before it if negative. Returns nothing outside the years 1 to
/// 9999.
std::optional<std::chrono::year_month_day> DaysLater(std::chrono::year_month_day date, int days);

/// Sets `ok` to whether `text` is a date, and if so rewrites it as "yyyy-mm-dd".
void CheckDateFormat(std::string& text, bool& ok);

/// Sets `ok` to whether `text` is a time of day, empty, or one of "never", "sets" and "rises". A time is
/// written as "hh:mm" with parts of any length, or as four digits, and is rewritten as "hh:mm". If hours or
/// minutes are not numbers, also reports an error through ErrorLog.
void CheckTimeFormat(std::string& text, bool& ok);

/// Like CheckTimeFormat, but never reports an error.
void CheckTimeFormatSilently(std::string& text, bool& ok);

} // namespace Tarno
