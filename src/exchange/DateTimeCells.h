#pragma once

#include "exchange/TableColumns.h"

#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

/// Reads ISO dates, the short form, and in every form a year of four digits in front, as in "2025/2/1".
/// Returns the date as "yyyy-mm-dd", an empty text for an empty one, or nothing if it is not a date.
std::optional<std::string> ReadDate(std::string_view text, const TableForms& forms);

/// Reads "6:00", "06:00", "06:00:00" and "6:00 AM"; seconds are dropped. Returns the time as "hh:mm", an
/// empty text for an empty one, or nothing if it is not a time.
std::optional<std::string> ReadTime(std::string_view text);

} // namespace Tarno
