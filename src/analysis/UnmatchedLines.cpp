#include "UnmatchedLines.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

namespace Tarno
{

namespace
{

/// Returns the lines of a text without surrounding blanks, each once.
std::set<std::string> DistinctLines(const std::string& text)
{
    std::set<std::string> lines;
    constexpr std::string_view blanks = " \t\r";
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string line = text.substr(start, end - start);
        const std::size_t first = line.find_first_not_of(blanks);
        if (first != std::string::npos) {
            lines.insert(line.substr(first, line.find_last_not_of(blanks) - first + 1));
        }
        start = end + 1;
    }
    return lines;
}

} // namespace

std::vector<UnmatchedLine> UnmatchedLines(const RecordList& trips, const LogContext& context)
{
    const std::array<std::pair<EntryField::Position, const LineItems*>, 4> fields{
        {{EntryField::TargetSpecies, &context.species},
         {EntryField::FishCaught, &context.species},
         {EntryField::BaitUsed, &context.baits},
         {EntryField::Method, &context.methods}}};
    std::vector<UnmatchedLine> unmatched;
    for (const auto& [field, items] : fields) {
        std::map<std::string, int> counts;
        for (const RecordView& trip : trips) {
            for (const std::string& line : DistinctLines(ReadableText(trip, field, context.places))) {
                ++counts[line];
            }
        }
        for (const auto& [line, count] : counts) {
            if (!items->Of(line).isMatched) {
                unmatched.push_back({field, line, count});
            }
        }
    }
    std::stable_sort(unmatched.begin(), unmatched.end(),
                     [](const UnmatchedLine& left, const UnmatchedLine& right) {
                         return std::pair(-left.trips, left.line) < std::pair(-right.trips, right.line);
                     });
    return unmatched;
}

} // namespace Tarno
