#include "YearSummary.h"

#include "analysis/ComparableValues.h"
#include "core/Conversions.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <tuple>

namespace Tarno
{

namespace
{

constexpr int good = 2; // code of the action
constexpr std::size_t mostBest = 5;

std::optional<Interval> DaysOfTrip(const RecordView& trip)
{
    return DaysBetween(trip.Text(EntryField::StartDate), trip.Text(EntryField::EndDate));
}

int YearOf(const Interval& days)
{
    return static_cast<int>(FirstDay(days).year());
}

/// Returns what the lines of the catch name, each once.
std::vector<NamedItem> CaughtOn(const RecordView& trip, const LineItems& species)
{
    std::vector<NamedItem> caught;
    std::set<std::string> known;
    for (const std::string& line : LinesOf(trip, EntryField::FishCaught)) {
        NamedItem item = species.Of(line);
        if (known.insert(item.folded).second) {
            caught.push_back(std::move(item));
        }
    }
    return caught;
}

std::string Names(const std::vector<NamedItem>& items)
{
    std::string names;
    for (const NamedItem& item : items) {
        names += (names.empty() ? "" : ", ") + item.name;
    }
    return names;
}

/// Adds up the trips of one year.
class YearCounter
{
public:
    YearCounter(int year, const LogContext& context)
        : m_context(context), m_year(*DaysOf(ZeroPadded(year, 4)))
    {
    }

    void Add(const RecordView& trip);

    YearFigures Take();

private:
    void AddStarted(const RecordView& trip, const Interval& days);
    void AddBest(const RecordView& trip, const TripFigures& figures, const std::vector<NamedItem>& caught);

    const LogContext& m_context;
    Interval m_year;
    YearFigures m_figures;
    std::set<int> m_days;
    std::set<std::string> m_places;
    std::map<std::string, CountedName> m_species; ///< by folded name
};

void YearCounter::Add(const RecordView& trip)
{
    const auto days = DaysOfTrip(trip);
    if (!days || days->last < m_year.first || days->first > m_year.last) {
        return;
    }
    const auto last = static_cast<int>(std::min(days->last, m_year.last));
    for (auto day = static_cast<int>(std::max(days->first, m_year.first)); day <= last; ++day) {
        m_days.insert(day);
    }
    if (days->first >= m_year.first) {
        AddStarted(trip, *days);
    }
}

void YearCounter::AddStarted(const RecordView& trip, const Interval& days)
{
    const TripFigures figures = FiguresOf(trip);
    const auto action = CodeOf(trip, EntryField::FishAction);
    const std::vector<NamedItem> caught = CaughtOn(trip, m_context.species);
    m_figures.Add(figures);
    const std::size_t month = static_cast<unsigned>(FirstDay(days).month()) - 1;
    ++m_figures.months.at(month).at(action ? static_cast<std::size_t>(*action) : figures.actions.size());
    if (const std::string& place = m_context.places.Of(trip.Text(EntryField::LocNo)); !IsBlank(place)) {
        m_places.insert(std::string(Trimmed(Fold(place))));
    }
    for (const NamedItem& item : caught) {
        ++m_species.try_emplace(item.folded, CountedName{item.name, 0}).first->second.trips;
    }
    if (action && *action >= good) {
        AddBest(trip, figures, caught);
    }
}

void YearCounter::AddBest(const RecordView& trip, const TripFigures& figures,
                          const std::vector<NamedItem>& caught)
{
    m_figures.best.push_back(
        {trip.Text(EntryField::TarnoNo), figures.lastDate, m_context.places.Of(trip.Text(EntryField::LocNo)),
         CodeWord(EntryField::FishAction, trip.Text(EntryField::FishAction)), Names(caught)});
}

YearFigures YearCounter::Take()
{
    m_figures.days = static_cast<int>(m_days.size());
    m_figures.places = static_cast<int>(m_places.size());
    for (auto& [folded, species] : m_species) {
        m_figures.species.push_back(std::move(species));
    }
    // the map has sorted them by name
    std::stable_sort(
        m_figures.species.begin(), m_figures.species.end(),
        [](const CountedName& left, const CountedName& right) { return left.trips > right.trips; });
    std::vector<BestTrip>& best = m_figures.best;
    std::stable_sort(best.begin(), best.end(), [](const BestTrip& left, const BestTrip& right) {
        // "Hot!" is after "Good"
        return std::tie(right.action, right.date) < std::tie(left.action, left.date);
    });
    best.resize(std::min(best.size(), mostBest));
    return std::move(m_figures);
}

YearFigures FiguresOfYear(const RecordList& trips, int year, const LogContext& context)
{
    constexpr int firstYear = 1;
    constexpr int lastYear = 9999;
    if (year < firstYear || year > lastYear) {
        return {};
    }
    YearCounter counter(year, context);
    for (const RecordView& trip : trips) {
        counter.Add(trip);
    }
    return counter.Take();
}

} // namespace

std::vector<int> YearsOf(const RecordList& trips)
{
    std::set<int, std::greater<>> years;
    for (const RecordView& trip : trips) {
        if (const auto days = DaysOfTrip(trip)) {
            years.insert(YearOf(*days));
        }
    }
    return {years.begin(), years.end()};
}

YearSummary SummarizeYear(const RecordList& trips, int year, const LogContext& context)
{
    return {year, FiguresOfYear(trips, year, context), FiguresOfYear(trips, year - 1, context)};
}

} // namespace Tarno
