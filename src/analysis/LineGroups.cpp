#include "LineGroups.h"

#include "analysis/ComparableValues.h"
#include "analysis/QuerySyntax.h"
#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

namespace Tarno
{

namespace
{

/// A different line of the trips.
struct Line {
    std::string text;
    std::string folded;
    NamedItem subject; ///< the beginning that an equality searches
    std::size_t group;
};

std::string FoldedLine(std::string_view line)
{
    return std::string(Trimmed(Fold(line)));
}

/// Collects the groups of the lines and the different lines of each.
class LineGroups
{
public:
    explicit LineGroups(const GroupedLines& grouped) : m_grouped(grouped) {}

    void Add(const RecordView& trip, TripGroup& rest);

    std::vector<TripGroup> Take();

private:
    std::size_t GroupOf(const std::string& line);
    std::size_t AddLine(const std::string& line);
    std::string ConditionFor(const Line& line) const;

    static constexpr std::size_t several = std::numeric_limits<std::size_t>::max();

    const GroupedLines& m_grouped;
    std::vector<TripGroup> m_groups;
    std::unordered_map<std::string, std::size_t> m_groupByName; ///< by folded name
    std::vector<Line> m_lines;
    std::unordered_map<std::string, std::size_t> m_groupByLine;
    /// The group whose lines "=text" finds, by folded text, or `several`.
    std::unordered_map<std::string, std::size_t> m_groupByEquality;
};

void LineGroups::Add(const RecordView& trip, TripGroup& rest)
{
    const TripFigures figures = FiguresOf(trip);
    std::set<std::size_t> named;
    for (const std::string& line : LinesOf(trip, m_grouped.field, m_grouped.places)) {
        named.insert(GroupOf(line));
    }
    for (const std::size_t group : named) {
        m_groups[group].Add(figures);
    }
    if (named.empty()) {
        rest.Add(figures);
    }
}

std::size_t LineGroups::GroupOf(const std::string& line)
{
    const auto known = m_groupByLine.find(line);
    return known != m_groupByLine.end() ? known->second
                                        : m_groupByLine.emplace(line, AddLine(line)).first->second;
}

std::size_t LineGroups::AddLine(const std::string& line)
{
    static const LineItems noItems;
    std::string folded = FoldedLine(line);
    const NamedItem item =
        m_grouped.items == nullptr ? NamedItem{line, folded, false} : m_grouped.items->Of(line);
    const auto [found, isNew] = m_groupByName.try_emplace(item.folded, m_groups.size());
    const std::size_t group = found->second;
    if (isNew) {
        m_groups.emplace_back().name = item.name;
    }
    NamedItem subject = noItems.Of(line);
    for (const std::string& text : {folded, subject.folded}) {
        std::size_t& owner = m_groupByEquality.try_emplace(text, group).first->second;
        owner = owner == group ? group : several;
    }
    m_lines.push_back({line, std::move(folded), std::move(subject), group});
    return group;
}

/// Returns an alternative of a query that finds the line, and no line of another group.
std::string LineGroups::ConditionFor(const Line& line) const
{
    const bool isSubjectEnough =
        m_grouped.items != nullptr && m_groupByEquality.at(line.subject.folded) == line.group;
    const std::string& searched = isSubjectEnough ? line.subject.name : line.text;
    const std::string sign = isSubjectEnough && !IsNumberOrTime(line.subject.folded) ? "=" : "==";
    if (const std::string quoted = Quoted(searched); !quoted.empty()) {
        return sign + quoted;
    }
    std::string longest;
    for (const std::string& part : Split(searched, '"')) {
        longest = part.size() > longest.size() ? part : longest;
    }
    return '"' + longest + '"';
}

/// Completes the groups and returns them in their order.
std::vector<TripGroup> LineGroups::Take()
{
    std::vector<std::set<std::string>> conditions(m_groups.size());
    for (const Line& line : m_lines) {
        std::string& query = m_groups[line.group].query;
        const std::string condition = ConditionFor(line);
        if (conditions[line.group].insert(Fold(condition)).second) {
            query += (query.empty() ? std::string(m_grouped.queryField) + ':' : "|") + condition;
        }
    }
    std::vector<std::pair<std::string, TripGroup>> byName;
    for (TripGroup& group : m_groups) {
        byName.emplace_back(Fold(group.name), std::move(group));
    }
    std::sort(byName.begin(), byName.end(), [](const auto& left, const auto& right) {
        return std::tie(right.second.trips, left.first) < std::tie(left.second.trips, right.first);
    });
    std::vector<TripGroup> sorted;
    for (auto& [folded, group] : byName) {
        sorted.push_back(std::move(group));
    }
    return sorted;
}

} // namespace

std::vector<TripGroup> GroupByLines(const RecordList& trips, const GroupedLines& grouped)
{
    LineGroups lines(grouped);
    TripGroup rest;
    rest.name = grouped.nameOfRest;
    rest.query = '-' + std::string(grouped.queryField) + ':';
    for (const RecordView& trip : trips) {
        lines.Add(trip, rest);
    }
    std::vector<TripGroup> groups = lines.Take();
    if (rest.trips > 0) {
        groups.push_back(std::move(rest));
    }
    return groups;
}

} // namespace Tarno
