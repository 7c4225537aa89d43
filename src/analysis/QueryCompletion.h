#pragma once

#include "analysis/TripText.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

struct QueryField;

/// Proposals for the part of a query before the cursor.
struct Completion {
    std::size_t position = 0; ///< of the bytes to replace
    std::size_t length = 0;
    std::vector<std::string> texts; ///< the replacements, best first
};

/// Proposes field names ("cau" becomes "caught:") and, after a field name, values that occur in the trips,
/// most frequent first. Of the lines of a text, proposes the part before the first number, comma or bracket.
/// Reads the trips when a field is completed for the first time, and keeps only its values.
class QueryCompletion
{
public:
    /// `trips` returns the trips of the log.
    QueryCompletion(std::function<RecordList()> trips, PlaceNames places);

    /// Returns at most 20 proposals for the word that ends at `cursor`, a position in bytes. Returns none if
    /// the cursor is inside a word, or if the only proposal is what the query already contains.
    Completion At(std::string_view text, std::size_t cursor) const;

private:
    const std::vector<std::string>& ValuesOf(const QueryField& field) const;

    std::function<RecordList()> m_trips;
    PlaceNames m_places;
    mutable std::map<std::string_view, std::vector<std::string>> m_values; ///< by field name
};

/// Returns the distinct lines of a text field over all trips, most frequent first, equally frequent ones in
/// alphabetical order. Blank lines are left out and surrounding blanks removed.
std::vector<std::string> FrequentLines(const RecordList& trips, EntryField::Position field);

/// Like FrequentLines, but of each line only the part before the first number, comma or bracket: "Flathead"
/// of "Flathead 41 and 52 cm (kept)".
std::vector<std::string> FrequentSubjects(const RecordList& trips, EntryField::Position field);

} // namespace Tarno
