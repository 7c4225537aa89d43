#pragma once

#include <QLocale>
#include <QString>

#include <chrono>
#include <optional>
#include <string>

namespace Tarno
{

// The rules of the date and time boxes.

/// The date that a user may write: "yyyy-mm-dd" with or without leading zeros, or the short form of
/// `locale`. A year of two digits is 2000 to 2029 or 1930 to 1999. Years run from 1 to 9999.
std::optional<std::chrono::year_month_day> UserDate(const QString& text, const QLocale& locale = QLocale());

/// Whether `text` is a date; when it is, it is rewritten as "yyyy-mm-dd".
void CheckDateFormat(std::string& text, bool& ok);

/// Whether `text` is a time of the day, the empty text or one of "never", "sets" and "rises". A time may
/// be written as "hh:mm" with parts of any length or as four digits; it is rewritten as "hh:mm". An hours
/// or minutes part that is no number is also reported through ErrorLog.
void CheckTimeFormat(std::string& text, bool& ok);

} // namespace Tarno
