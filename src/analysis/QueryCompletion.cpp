#include "QueryCompletion.h"

#include "analysis/ComparableValues.h"
#include "analysis/QuerySyntax.h"
#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

namespace Tarno
{

namespace
{

constexpr std::size_t mostProposals = 20;

using Counts = std::unordered_map<std::string, std::size_t>;

std::vector<std::string> MostFrequentFirst(const Counts& counts)
{
    struct Counted {
        std::size_t count;
        std::string folded;
        std::string text;
    };

    std::vector<Counted> all;
    all.reserve(counts.size());
    for (const auto& [text, count] : counts) {
        all.push_back({count, Fold(text), text});
    }
    std::sort(all.begin(), all.end(), [](const Counted& left, const Counted& right) {
        return std::tie(right.count, left.folded, left.text) < std::tie(left.count, right.folded, right.text);
    });
    std::vector<std::string> texts;
    texts.reserve(all.size());
    for (Counted& each : all) {
        texts.push_back(std::move(each.text));
    }
    return texts;
}

void CountLines(const RecordList& trips, EntryField::Position field, const PlaceNames& places, Counts& counts,
                std::string_view (*part)(std::string_view line) = Trimmed)
{
    for (const RecordView& trip : trips) {
        for (const std::string& line : LinesOf(trip, field, places)) {
            ++counts[std::string(part(line))];
        }
    }
}

/// Counts the years of readable dates.
void CountYears(const RecordList& trips, EntryField::Position field, Counts& counts)
{
    for (const RecordView& trip : trips) {
        const std::string date = trip.Text(field);
        if (DaysBetween(date, date)) {
            ++counts[std::string(Trimmed(date).substr(0, 4))];
        }
    }
}

/// Returns the values to propose for a field.
std::vector<std::string> ProposedValues(const QueryField& field, const RecordList& trips,
                                        const PlaceNames& places)
{
    std::vector<std::string> values;
    Counts counts;
    if (field.order == Order::Months) {
        return {field.words.begin(), field.words.end()};
    }
    for (const EntryField::Position position : field.searched) {
        switch (entryFields.at(position).kind) {
        case FieldKind::Code:
            for (const std::string_view word : entryFields.at(position).words) {
                if (std::find(values.begin(), values.end(), word) == values.end()) {
                    values.emplace_back(word);
                }
            }
            break;
        case FieldKind::MoonPhase:
            values = {"full", "new", "waxing", "waning"};
            break;
        case FieldKind::Date:
            CountYears(trips, position, counts);
            break;
        case FieldKind::Lines:
            CountLines(trips, position, places, counts, SubjectOf);
            break;
        case FieldKind::Place:
        case FieldKind::Picture:
            CountLines(trips, position, places, counts);
            break;
        default: // numbers and times differ from trip to trip
            break;
        }
    }
    for (std::string& value : MostFrequentFirst(counts)) {
        values.push_back(std::move(value));
    }
    return values;
}

/// Appends those of `texts` that contain `typed`, both folded; first those that start with it.
void AppendMatches(const std::vector<std::string>& texts, const std::string& typed,
                   std::vector<std::string>& proposals)
{
    std::vector<std::string> inside;
    for (const std::string& text : texts) {
        const std::size_t found = Fold(text).find(typed);
        std::string written = found == std::string::npos ? std::string() : Quoted(text);
        if (!written.empty()) {
            (found == 0 ? proposals : inside).push_back(std::move(written));
        }
    }
    proposals.insert(proposals.end(), inside.begin(), inside.end());
}

/// Appends the names of the fields that start with `typed`, with their colons.
void AppendFieldNames(const std::string& typed, std::vector<std::string>& proposals)
{
    for (const QueryField& field : QueryFields()) {
        if (!typed.empty() && field.name.starts_with(typed)) {
            proposals.push_back(std::string(field.name) + ':');
        }
    }
}

} // namespace

QueryCompletion::QueryCompletion(std::function<RecordList()> trips, PlaceNames places)
    : m_trips(std::move(trips)), m_places(std::move(places))
{
}

Completion QueryCompletion::At(std::string_view text, std::size_t cursor) const
{
    const std::string_view before = text.substr(0, cursor);
    const std::vector<WrittenTerm> terms = SplitQuery(before);
    const bool isInsideWord =
        cursor < text.size() && std::string_view(" \t\r\n|").find(text[cursor]) == std::string_view::npos;
    if (terms.empty() || isInsideWord || terms.back().text.end() != before.end()) {
        return {};
    }
    const WrittenAlternative& last = terms.back().alternatives.back();
    const std::string typed = Fold(Unquoted(last.value));
    Completion completion{static_cast<std::size_t>(last.value.data() - text.data()), last.value.size(), {}};
    if (last.field != nullptr) {
        AppendMatches(ValuesOf(*last.field), typed, completion.texts);
    }
    if (last.name.empty()) {
        AppendFieldNames(Fold(last.text), completion.texts);
    }
    if (completion.texts.size() == 1 && Fold(completion.texts.front()) == Fold(last.value)) {
        return {};
    }
    completion.texts.resize(std::min(completion.texts.size(), mostProposals));
    return completion;
}

const std::vector<std::string>& QueryCompletion::ValuesOf(const QueryField& field) const
{
    const auto known = m_values.find(field.name);
    return known != m_values.end()
               ? known->second
               : m_values.emplace(field.name, ProposedValues(field, m_trips(), m_places)).first->second;
}

std::vector<std::string> FrequentLines(const RecordList& trips, EntryField::Position field)
{
    Counts counts;
    CountLines(trips, field, {}, counts);
    return MostFrequentFirst(counts);
}

std::vector<std::string> FrequentSubjects(const RecordList& trips, EntryField::Position field)
{
    Counts counts;
    CountLines(trips, field, {}, counts, SubjectOf);
    return MostFrequentFirst(counts);
}

} // namespace Tarno
