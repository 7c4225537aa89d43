#pragma once

#include "store/EntryFields.h"
#include "store/Record.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// The names of the locations by number, each on one line: line breaks become blanks.
class PlaceNames
{
public:
    PlaceNames() = default;
    explicit PlaceNames(const RecordList& locations);

    /// Returns an empty text for an unknown number.
    const std::string& Of(std::string_view number) const;

    bool operator==(const PlaceNames&) const = default;

private:
    std::map<std::string, std::string, std::less<>> m_names;
};

/// Returns the value of a field in readable form: the word of a code, the name of a location, "Waning, 45%"
/// for a moon phase, lines separated by "\n", otherwise the stored text. Returns an empty text if the value
/// is missing or not set, or if its code has no word. Unlike the log report, shows a full moon as "100%".
std::string ReadableText(const RecordView& trip, EntryField::Position field, const PlaceNames& places);

/// Returns the code of a field of kind Code, or nullopt if it is not set.
std::optional<int> CodeOf(const RecordView& trip, EntryField::Position field);
std::optional<int> CodeOf(std::string_view stored, EntryField::Position field);

/// Returns the lines of a field without surrounding blanks. Blank lines are left out.
std::vector<std::string> LinesOf(const RecordView& trip, EntryField::Position field,
                                 const PlaceNames& places = {});

/// Returns the readable form of the stored text `value` of a field.
std::string ReadableValue(std::string_view value, EntryField::Position field, const PlaceNames& places);

/// Returns `text` in the form in which texts are compared: in lower case, without accents, and with
/// compatibility characters replaced (U+00DF becomes "ss"). Bytes that are not UTF-8 become U+FFFD.
std::string Fold(std::string_view text);

/// Whether nothing but blanks is left of `text` when it is folded.
bool IsBlank(std::string_view text);

/// Returns the beginning of a line that other trips are likely to share, the part before the first number,
/// comma, semicolon or bracket: "Flathead" of "Flathead 41 and 52 cm (kept)" and of "Flathead x 3". Returns
/// the whole line if that part is empty. The line has no surrounding blanks.
std::string_view SubjectOf(std::string_view line);

} // namespace Tarno
