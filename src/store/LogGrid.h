#pragma once

#include "core/ShellSort.h"
#include "store/Record.h"
#include "store/ReportSelection.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Tarno
{

/// The parameters of a log report. The names in `selection` determine how values are shown, the numbers are
/// the positions of the values in the entry.
struct LogGridQuery {
    ReportSelection selection;
    std::int16_t location = 0; ///< the location to filter by; 0 for all
};

/// Returns the table of the log report, with a row for each entry that passes the filter, in file order.
/// Codes are replaced by words, locations by their names (`locationName` is called once per number), and line
/// breaks are carriage return and line feed. A value that an entry lacks is empty. In the first column the
/// codes of tide, rating, action and weather precede their words ("3-Run In"), so that rows are sorted by
/// code.
///
/// The table has at least one row: the first row is empty if the first entry of the file does not pass the
/// filter (see docs/quirks.md).
///
/// Throws Error: TypeMismatch if a location filter is set and an entry's location is not a number. If any
/// entry passes, also throws SubscriptOutOfRange if there are fewer names than numbers, TypeMismatch if a
/// field number or moon phase is not a number, and ObjectNotSet if
/// a field number is neither one of EntryField nor a position in the entry.
ReportTable LogGrid(const RecordList& entries, const LogGridQuery& query,
                    const std::function<std::string(const std::string& number)>& locationName);

} // namespace Tarno
