#pragma once

#include "analysis/QueryFields.h"

#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// The division of a query into terms and alternatives, without a check of their meaning. All views refer to
// the text of the query.

/// One of the texts of a term, which are separated by "|".
struct WrittenAlternative {
    std::string_view text;             ///< as written
    std::string_view name;             ///< the word before the colon, empty if it has no field name
    std::string_view value;            ///< the part after the colon, or all of it
    const QueryField* field = nullptr; ///< its own field or that of the alternative before it
};

/// A part of a query between blanks.
struct WrittenTerm {
    std::string_view text; ///< as written
    bool isExcluded = false;
    bool isClosed = true; ///< false if it ends in a quotation
    std::vector<WrittenAlternative> alternatives;
};

std::vector<WrittenTerm> SplitQuery(std::string_view query);

/// Returns a query that finds the trips that both queries find. Leaves out a quotation without an end, which
/// filters nothing.
std::string BothQueries(std::string_view first, std::string_view second);

/// Returns a value as it must be written in a query, with quotation marks if it needs them, or an empty text
/// if it contains one and cannot be written.
std::string Quoted(std::string_view value);

/// Returns `written` without quotation marks and with line breaks as blanks.
std::string Unquoted(std::string_view written);

} // namespace Tarno
