#include "YearComparison.h"

#include "analysis/TripText.h"
#include "store/EntryFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace Tarno
{

namespace
{

ComparedFigure Compared(const std::string& caption, int year, int before)
{
    return {caption, std::to_string(year), std::to_string(before)};
}

/// Returns the trips with a name, which may be written differently in another year.
int TripsWith(const std::string& name, const std::vector<CountedName>& names)
{
    const std::string folded = Fold(name);
    const auto found = std::find_if(names.begin(), names.end(),
                                    [&](const CountedName& counted) { return Fold(counted.name) == folded; });
    return found == names.end() ? 0 : found->trips;
}

} // namespace

std::string HoursText(double hours)
{
    std::array<char, 32> text{};
    constexpr double tenths = 10;
    std::snprintf(text.data(), text.size(), "%.1f", std::floor(hours * tenths + 0.5) / tenths);
    return text.data();
}

std::vector<ComparedFigure> CompareYears(const YearSummary& summary)
{
    const YearFigures& year = summary.figures;
    const YearFigures& before = summary.before;
    std::vector<ComparedFigure> figures{
        Compared("Trips", year.trips, before.trips),
        {"Hours", HoursText(year.Hours()), HoursText(before.Hours())},
        Compared("Days on the water", year.days, before.days),
        Compared("Places", year.places, before.places),
        Compared("Trips without a catch", year.tripsWithoutCatch, before.tripsWithoutCatch)};
    for (std::size_t action = FieldWords::action.size(); action-- > 0;) {
        figures.push_back(Compared("Trips with the action " + std::string(FieldWords::action.at(action)),
                                   year.actions.at(action), before.actions.at(action)));
    }
    figures.push_back(Compared("Trips without an action", year.withoutAction, before.withoutAction));
    return figures;
}

std::vector<ComparedFigure> CompareSpecies(const YearSummary& summary)
{
    std::vector<ComparedFigure> figures;
    for (const CountedName& species : summary.figures.species) {
        figures.push_back(Compared("Trips with " + species.name, species.trips,
                                   TripsWith(species.name, summary.before.species)));
    }
    for (const CountedName& species : summary.before.species) {
        if (TripsWith(species.name, summary.figures.species) == 0) {
            figures.push_back(Compared("Trips with " + species.name, 0, species.trips));
        }
    }
    return figures;
}

} // namespace Tarno
