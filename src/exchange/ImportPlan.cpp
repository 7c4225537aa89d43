#include "TripTable.h"
#include "exchange/PlaceName.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace Tarno
{

namespace
{

/// Finds the location of each row, in the log or among those that the import adds.
class PlaceFinder
{
public:
    PlaceFinder(const RecordList& locations, ImportPlan& plan) : m_plan(plan)
    {
        for (const RecordView& location : locations) {
            const std::string number = location.Text(LocationField::LocNo);
            const std::string name = ComparedName(location.Text(LocationField::LocName));
            m_byNumber.emplace(number, name);
            m_byName.emplace(name, number);
        }
    }

    struct Place {
        std::string number;
        std::optional<std::size_t> isNew = {}; ///< its position in the batch
    };

    Place Find(const StoredTexts& place)
    {
        const std::string& number = place[LocationField::LocNo];
        const std::string name = ComparedName(place[LocationField::LocName]);
        if (place[LocationField::LocName].empty()) {
            return {number};
        }
        if (const auto found = m_byNumber.find(number); found != m_byNumber.end() && found->second == name) {
            return {number};
        }
        if (const auto found = m_byName.find(name); found != m_byName.end()) {
            return {found->second};
        }
        return {number, FindNew(number, name, place)};
    }

private:
    /// Returns the position of the new location, which is added at its first row. Other rows complete it.
    std::size_t FindNew(const std::string& number, const std::string& name, const StoredTexts& place)
    {
        auto& locations = m_plan.batch.locations;
        std::map<std::string, std::size_t>& known = m_new[name];
        const auto found = number.empty() ? known.begin() : known.find(number);
        if (found == known.end()) {
            known.emplace(number, locations.size());
            locations.push_back(place);
            return locations.size() - 1;
        }
        StoredTexts& location = locations[found->second];
        for (std::size_t position = 0; position < location.size(); ++position) {
            if (location[position].empty()) {
                location[position] = place[position];
            }
        }
        return found->second;
    }

    ImportPlan& m_plan;
    std::map<std::string, std::string> m_byNumber;                   ///< compared names
    std::map<std::string, std::string> m_byName;                     ///< numbers by compared name
    std::map<std::string, std::map<std::string, std::size_t>> m_new; ///< by compared name and number
};

/// The values by which two trips are taken for the same one.
using Identity = std::array<std::string, 4>;

template <typename Values>
Identity IdentityOf(const Values& valueOf, const std::string& place)
{
    return {place, valueOf(EntryField::StartDate), valueOf(EntryField::StartTime),
            valueOf(EntryField::EndTime)};
}

} // namespace

std::size_t ImportPlan::Count(RowStatus status) const
{
    return static_cast<std::size_t>(
        std::count_if(rows.begin(), rows.end(), [&](const PlannedRow& row) { return row.status == status; }));
}

ImportPlan PlanImport(const std::vector<TripCandidate>& candidates, const RecordList& trips,
                      const RecordList& locations)
{
    ImportPlan plan;
    std::map<Identity, std::string> logged; // the numbers of the trips
    for (const RecordView& trip : trips) {
        logged.emplace(IdentityOf([&](EntryField::Position field) { return trip.Text(field); },
                                  trip.Text(EntryField::LocNo)),
                       trip.Text(EntryField::TarnoNo));
    }
    PlaceFinder finder(locations, plan);
    std::vector<std::size_t> tripsAt; // by new location
    for (const TripCandidate& candidate : candidates) {
        if (!candidate.refusal.empty()) {
            plan.rows.push_back({candidate.row, RowStatus::Refused, candidate.refusal});
            continue;
        }
        const auto [number, newPlace] = finder.Find(candidate.place);
        if (!newPlace) {
            const auto same = logged.find(
                IdentityOf([&](EntryField::Position field) { return candidate.trip[field]; }, number));
            if (same != logged.end()) {
                plan.rows.push_back({candidate.row, RowStatus::AlreadyThere, same->second});
                continue;
            }
        }
        plan.rows.push_back({candidate.row, RowStatus::New, {}});
        ImportedTrip& trip = plan.batch.trips.emplace_back(ImportedTrip{candidate.trip, newPlace});
        trip.values[EntryField::LocNo] = number;
        tripsAt.resize(plan.batch.locations.size());
        if (newPlace) {
            ++tripsAt[*newPlace];
        }
    }
    for (std::size_t index = 0; index < tripsAt.size(); ++index) {
        const StoredTexts& place = plan.batch.locations[index];
        plan.places.push_back({place[LocationField::LocName], place[LocationField::LocLatt],
                               place[LocationField::LocLong], tripsAt[index]});
    }
    return plan;
}

} // namespace Tarno
