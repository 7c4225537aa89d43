#include "Query.h"

#include "analysis/Comparison.h"
#include "analysis/QuerySyntax.h"
#include "core/Conversions.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace Tarno
{

namespace
{

using Condition = std::function<bool(const SearchedTrip&)>;

bool Contains(std::string_view text, std::string_view searched)
{
    return text.find(searched) != std::string_view::npos;
}

/// Matches trips with a value in the field.
Condition HasValue(const QueryField& field)
{
    return [&field](const SearchedTrip& trip) {
        return std::any_of(field.searched.begin(), field.searched.end(), [&](EntryField::Position position) {
            return trip.Of(position).find_first_not_of(" \t\r\n") != std::string_view::npos;
        });
    };
}

/// Matches trips with `folded` in the field. A word of a code must be the whole value.
Condition HasText(const QueryField& field, const std::string& folded)
{
    return [&field, folded, isCodeWord = IsCodeWord(field, folded)](const SearchedTrip& trip) {
        return std::any_of(field.searched.begin(), field.searched.end(), [&](EntryField::Position position) {
            const bool isWhole = isCodeWord && entryFields.at(position).kind == FieldKind::Code;
            return isWhole ? trip.Of(position) == folded : Contains(trip.Of(position), folded);
        });
    };
}

/// Matches trips with a line that equals `folded`; also with one whose subject equals it, if `orSubject`.
Condition HasLine(const QueryField& field, std::string folded, bool orSubject)
{
    const auto isLine = [folded = std::move(folded), orSubject](std::string_view line) {
        return line == folded || (orSubject && SubjectOf(line) == folded);
    };
    return [&field, isLine](const SearchedTrip& trip) {
        return std::any_of(field.searched.begin(), field.searched.end(), [&](EntryField::Position position) {
            std::string_view rest = trip.Of(position);
            while (!rest.empty()) {
                const std::size_t length = std::min(rest.find('\n'), rest.size());
                if (isLine(Trimmed(rest.substr(0, length)))) {
                    return true;
                }
                rest.remove_prefix(std::min(length + 1, rest.size()));
            }
            return false;
        });
    };
}

/// Reads "=text" and "==text". Returns nullopt for other values, and for "=" with a number or a time, which
/// compares. Throws MalformedValue.
std::optional<Condition> ReadEquality(const WrittenAlternative& written)
{
    if (!HasTexts(*written.field) || !written.value.starts_with('=')) {
        return std::nullopt;
    }
    const bool isExact = written.value.starts_with("==");
    const std::string text(Trimmed(Unquoted(written.value.substr(isExact ? 2 : 1))));
    if (!isExact && written.field->order == Order::Numbers && IsNumberOrTime(text)) {
        return std::nullopt;
    }
    std::string folded(Trimmed(Fold(text)));
    if (folded.empty()) {
        throw MalformedValue(Cited(written.text) + " needs a text after the equals sign.");
    }
    return HasLine(*written.field, std::move(folded), !isExact);
}

/// Throws MalformedValue.
Condition ConditionOf(const WrittenAlternative& written)
{
    if (!written.name.empty() && written.field == nullptr) {
        throw MalformedValue(Cited(written.name) + " is not a field. To search for " + Cited(written.text) +
                             ", put it in quotation marks.");
    }
    std::string folded = Fold(Unquoted(written.value));
    if (written.field == nullptr) {
        return
            [folded = std::move(folded)](const SearchedTrip& trip) { return Contains(trip.All(), folded); };
    }
    if (auto equality = ReadEquality(written)) {
        return *std::move(equality);
    }
    if (const auto comparison = Comparison::Read(*written.field, written.value, written.text)) {
        return [comparison = *comparison](const SearchedTrip& trip) { return comparison.Matches(trip); };
    }
    return folded.empty() ? HasValue(*written.field) : HasText(*written.field, folded);
}

/// Whether nothing is to be searched for, as in "bream|" while the user is typing.
bool IsEmpty(const WrittenAlternative& written)
{
    return written.name.empty() && Fold(Unquoted(written.text)).empty();
}

} // namespace

Query::Query(std::string_view text)
{
    for (const WrittenTerm& written : SplitQuery(text)) {
        const std::size_t faultsBefore = m_faults.size();
        const auto addFault = [&](std::string_view part, std::string reason) {
            m_faults.push_back(
                {static_cast<std::size_t>(part.data() - text.data()), part.size(), std::move(reason)});
        };
        if (!written.isClosed) {
            addFault(written.text, Cited(written.text) + " has no closing quotation mark.");
            continue;
        }
        Term term{written.isExcluded, {}};
        for (const WrittenAlternative& alternative : written.alternatives) {
            try {
                if (!IsEmpty(alternative)) {
                    term.alternatives.push_back(ConditionOf(alternative));
                }
            } catch (const MalformedValue& malformed) {
                addFault(alternative.text, malformed.what());
            }
        }
        if (m_faults.size() > faultsBefore) {
            continue;
        }
        if (term.alternatives.empty()) {
            addFault(written.text, Cited(written.text) + " contains no text to search for.");
        } else {
            m_terms.push_back(std::move(term));
        }
    }
}

bool Query::Matches(const SearchedTrip& trip) const
{
    return std::all_of(m_terms.begin(), m_terms.end(), [&](const Term& term) {
        return term.isExcluded != std::any_of(term.alternatives.begin(), term.alternatives.end(),
                                              [&](const Condition& matches) { return matches(trip); });
    });
}

} // namespace Tarno
