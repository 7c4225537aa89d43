#include "UnmatchedLines.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

namespace Tarno
{

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
            const std::vector<std::string> lines = LinesOf(trip, field);
            for (const std::string& line : std::set<std::string>(lines.begin(), lines.end())) {
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
