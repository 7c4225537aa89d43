#pragma once

#include "core/ShellSort.h"
#include "store/Record.h"
#include "store/ReportSelection.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Tarno
{

/// What a log report asks for. The names of `selection` choose how values are shown, its numbers are the
/// positions of the values in the entry.
struct LogGridQuery {
    ReportSelection selection;
    std::int16_t location = 0; ///< only entries of that location; 0 for all
};

/// The table of the log report: a row for each entry that passes the filter, in file order. Codes are words,
/// a location is its name (`locationName` is asked once for each number), line breaks are carriage return
/// and line feed. In the first column the codes of tide, rating, action and weather stand before their words
/// ("3-Run In"), so that sorting orders by code.
///
/// There is always at least one row: the first is empty when the first entry of the file does not pass.
///
/// Throws Error: TypeMismatch when a filter meets an entry whose location is no number; when an entry passes,
/// SubscriptOutOfRange when there are fewer names than numbers, TypeMismatch when a field number or a moon
/// phase is no number, ObjectNotSet when an entry lacks a value.
ReportTable LogGrid(const RecordList& entries, const LogGridQuery& query,
                    const std::function<std::string(const std::string& number)>& locationName);

} // namespace Tarno
