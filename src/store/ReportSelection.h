#pragma once

#include "store/Record.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Tarno
{

/// The fields of a log report, in order. The lists can differ in length if a saved report was edited by hand.
struct ReportSelection {
    std::vector<std::string> names;   ///< data names
    std::vector<std::string> numbers; ///< field numbers

    bool operator==(const ReportSelection& other) const = default;
};

/// Returns the selection of a saved report. Throws Error ObjectNotSet if the record lacks the values.
ReportSelection ReadSelection(const RecordView& report);

/// Stores the selection in a saved report. Throws Error ObjectNotSet if the record lacks the values.
void WriteSelection(const ReportSelection& selection, Record& report);

/// Returns the definitions of the fields `numbers`. `fields` are all definitions; number 1 is the first one.
/// Throws Error SubscriptOutOfRange if a number is outside the list.
RecordList DefinitionsOf(const std::vector<std::int32_t>& numbers, const RecordList& fields);

/// Returns the selection of the fields `numbers`, with data names from DefinitionsOf.
ReportSelection SelectionOf(const std::vector<std::int32_t>& numbers, const RecordList& fields);

} // namespace Tarno
