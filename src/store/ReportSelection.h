#pragma once

#include "store/Record.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Tarno
{

/// The fields of a log report, in its order. The lists can differ in length: a saved report may have been
/// edited by hand.
struct ReportSelection {
    std::vector<std::string> names;   ///< data names
    std::vector<std::string> numbers; ///< field numbers

    bool operator==(const ReportSelection& other) const = default;
};

/// The selection that a saved report stores. Throws Error ObjectNotSet if the record has no such values.
ReportSelection ReadSelection(const RecordView& report);

/// Stores the selection in a saved report. Throws Error ObjectNotSet if the record has no such values.
void WriteSelection(const ReportSelection& selection, Record& report);

/// The definitions of the fields `numbers`, by position in the file: `fields` are all definitions, and number
/// 1 means the first one. Throws Error SubscriptOutOfRange if there is none at such a position.
RecordList DefinitionsOf(const std::vector<std::int32_t>& numbers, const RecordList& fields);

/// The selection of the fields `numbers`, with the data names from DefinitionsOf.
ReportSelection SelectionOf(const std::vector<std::int32_t>& numbers, const RecordList& fields);

} // namespace Tarno
