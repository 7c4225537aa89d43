#include "LineGroups.h"

#include "analysis/ComparableValues.h"
#include "analysis/QuerySyntax.h"
#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace Tarno
{

namespace
{

/// A different line of the trips.
struct Line {
    std::string text;
    std::string folded;
    std::size_t group;

    /// The beginning for which "=" searches.
    std::string_view Subject() const { return SubjectOf(folded); }
};

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
    void AddCondition(const Line& line);
    std::string Condition(const Line& line, bool isSubjectEnough) const;

    static constexpr std::size_t several = std::numeric_limits<std::size_t>::max();

    const GroupedLines& m_grouped;
    std::vector<TripGroup> m_groups;
    std::unordered_map<std::string, std::size_t> m_groupByName; ///< by folded name
    std::deque<Line> m_lines; ///< does not move the texts to which the members below refer
    std::unordered_map<std::string_view, std::size_t> m_groupByLine;
    /// The group whose lines have a subject, or `several`. A line that equals a subject has that subject.
    std::unordered_map<std::string_view, std::size_t> m_groupBySubject;
    std::vector<std::unordered_set<std::string_view>> m_searched; ///< by the query of each group, folded
};

void LineGroups::Add(const RecordView& trip, TripGroup& rest)
{
    const TripFigures figures = FiguresOf(trip);
    std::vector<std::size_t> named;
    for (const std::string& line : LinesOf(trip, m_grouped.field, m_grouped.places)) {
        const std::size_t group = GroupOf(line);
        if (std::find(named.begin(), named.end(), group) == named.end()) {
            named.push_back(group);
            m_groups[group].Add(figures);
        }
    }
    if (named.empty()) {
        rest.Add(figures);
    }
}

std::size_t LineGroups::GroupOf(const std::string& line)
{
    const auto known = m_groupByLine.find(line);
    return known != m_groupByLine.end() ? known->second : AddLine(line);
}

std::size_t LineGroups::AddLine(const std::string& line)
{
    std::string folded(Trimmed(Fold(line)));
    NamedItem item =
        m_grouped.items == nullptr ? NamedItem{line, folded, false} : m_grouped.items->Of(line, folded);
    const auto [found, isNew] = m_groupByName.try_emplace(std::move(item.folded), m_groups.size());
    const std::size_t group = found->second;
    if (isNew) {
        m_groups.emplace_back().name = std::move(item.name);
    }
    const Line& added = m_lines.emplace_back(Line{line, std::move(folded), group});
    m_groupByLine.emplace(added.text, group);
    std::size_t& owner = m_groupBySubject.try_emplace(added.Subject(), group).first->second;
    owner = owner == group ? group : several;
    return group;
}

/// Adds an alternative to the query of the group that finds the line, and no line of another group.
void LineGroups::AddCondition(const Line& line)
{
    const std::string_view subject = line.Subject();
    const bool isSubjectEnough =
        m_grouped.items != nullptr && m_groupBySubject.at(subject) == line.group && !IsNumberOrTime(subject);
    const std::string_view searched = isSubjectEnough ? subject : std::string_view(line.folded);
    if (!m_searched[line.group].insert(searched).second) {
        return;
    }
    std::string& query = m_groups[line.group].query;
    query += query.empty() ? std::string(m_grouped.queryField) + ':' : "|";
    query += Condition(line, isSubjectEnough);
}

std::string LineGroups::Condition(const Line& line, bool isSubjectEnough) const
{
    const std::string searched = isSubjectEnough ? ShownSubject(line.text, line.Subject()) : line.text;
    if (const std::string quoted = Quoted(searched); !quoted.empty()) {
        return (isSubjectEnough ? "=" : "==") + quoted;
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
    m_searched.resize(m_groups.size());
    for (const Line& line : m_lines) {
        AddCondition(line);
    }
    std::vector<std::pair<std::string, TripGroup>> byName;
    for (TripGroup& group : m_groups) {
        byName.emplace_back(Fold(group.name), std::move(group));
    }
    std::sort(byName.begin(), byName.end(), [](const auto& left, const auto& right) {
        return std::tie(right.second.trips, left.first) < std::tie(left.second.trips, right.first);
    });
    std::vector<TripGroup> sorted;
    sorted.reserve(byName.size());
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
