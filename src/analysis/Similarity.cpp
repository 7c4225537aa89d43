#include "Similarity.h"

#include "analysis/TripText.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace Tarno
{

namespace
{

using std::chrono::year_month_day;

constexpr double near = 50; // km
constexpr double halfYear = 365.2425 / 2;
constexpr double unknown = 0.5;
constexpr int ratings = 4;

constexpr std::array codeFields{EntryField::TideStart, EntryField::WindDir, EntryField::WindStrength,
                                EntryField::Weather, EntryField::WaterClarity};

bool IsCircular(EntryField::Position field)
{
    return field == EntryField::TideStart || field == EntryField::WindDir;
}

/// Returns the distance of two points on a circle of the given length.
double CircularDistance(double left, double right, double length)
{
    const double apart = std::fmod(std::abs(left - right), length);
    return std::min(apart, length - apart);
}

double DayOfYear(const year_month_day& date)
{
    const std::chrono::sys_days newYear(date.year() / std::chrono::January / 1);
    return static_cast<double>((std::chrono::sys_days(date) - newYear).count());
}

template <typename Read>
auto IfReadable(Read&& read) -> std::optional<decltype(read())>
{
    try {
        return read();
    } catch (const Error&) {
        return std::nullopt;
    }
}

/// The parts of the distance between wanted conditions and a trip.
class Comparison
{
public:
    void Add(double weight, std::optional<double> distance)
    {
        m_sum += weight * distance.value_or(unknown);
        m_weights += weight;
    }

    double Distance() const { return m_weights > 0 ? m_sum / m_weights : 0; }

private:
    double m_sum = 0;
    double m_weights = 0;
};

std::optional<double> PlaceDistance(const Conditions& wanted, const Conditions& trip,
                                    const Positions& positions)
{
    if (trip.place == wanted.place) {
        return 0.0;
    }
    const auto from = positions.find(wanted.place);
    const auto to = positions.find(trip.place);
    const bool isNear = from != positions.end() && to != positions.end() &&
                        DistanceInKilometres(from->second, to->second) <= near;
    return isNear ? 0.5 : 1.0;
}

double CodeDistance(EntryField::Position field, int left, int right)
{
    const auto words = static_cast<double>(entryFields.at(field).words.size());
    return IsCircular(field) ? CircularDistance(left, right, words) / std::floor(words / 2)
                             : std::abs(left - right) / (words - 1);
}

double DistanceBetween(const Conditions& wanted, const Conditions& trip, const Positions& positions)
{
    Comparison comparison;
    if (wanted.date) {
        comparison.Add(2, trip.date ? std::optional(CircularDistance(DayOfYear(*wanted.date),
                                                                     DayOfYear(*trip.date), 2 * halfYear) /
                                                    halfYear)
                                    : std::nullopt);
    }
    if (wanted.moonAge) {
        comparison.Add(2, trip.moonAge
                              ? std::optional(2 * CircularDistance(*wanted.moonAge, *trip.moonAge, 1))
                              : std::nullopt);
    }
    if (wanted.rating) {
        comparison.Add(1, trip.rating
                              ? std::optional(std::abs(*wanted.rating - *trip.rating) / (ratings - 1.0))
                              : std::nullopt);
    }
    if (!wanted.place.empty()) {
        comparison.Add(2, PlaceDistance(wanted, trip, positions));
    }
    for (const auto& [field, code] : wanted.codes) {
        const auto known = trip.codes.find(field);
        comparison.Add(1, known != trip.codes.end() ? std::optional(CodeDistance(field, code, known->second))
                                                    : std::nullopt);
    }
    return comparison.Distance();
}

std::vector<std::string> ReasonsFor(const Conditions& wanted, const Conditions& trip,
                                    const Positions& positions)
{
    constexpr double closeDays = 30;
    constexpr double closeMoon = 0.1; // about three days
    std::vector<std::string> reasons;
    if (!wanted.place.empty() && trip.place == wanted.place) {
        reasons.emplace_back("same place");
    } else if (const auto from = positions.find(wanted.place), to = positions.find(trip.place);
               from != positions.end() && to != positions.end()) {
        if (const double apart = DistanceInKilometres(from->second, to->second); apart <= near) {
            reasons.push_back(std::to_string(std::lround(apart)) + " km away");
        }
    }
    if (wanted.moonAge && trip.moonAge && CircularDistance(*wanted.moonAge, *trip.moonAge, 1) <= closeMoon) {
        const bool waxing = *trip.moonAge <= 0.5;
        const long lit = std::lround(200 * (waxing ? *trip.moonAge : 1 - *trip.moonAge));
        reasons.push_back(std::string("moon ") + (waxing ? "waxing " : "waning ") + std::to_string(lit) +
                          " %");
    }
    if (wanted.date && trip.date) {
        const double apart = CircularDistance(DayOfYear(*wanted.date), DayOfYear(*trip.date), 2 * halfYear);
        if (apart <= closeDays) {
            const long days = std::lround(apart);
            reasons.push_back(days == 0   ? "same day of the year"
                              : days == 1 ? "1 day apart in season"
                                          : std::to_string(days) + " days apart in season");
        }
    }
    if (wanted.rating && wanted.rating == trip.rating) {
        reasons.push_back("rated " +
                          std::string(FieldWords::prediction.at(static_cast<std::size_t>(*trip.rating))));
    }
    for (const auto& [field, code] : wanted.codes) {
        const auto known = trip.codes.find(field);
        if (known != trip.codes.end() && known->second == code) {
            reasons.emplace_back(entryFields.at(field).words[static_cast<std::size_t>(code)]);
        }
    }
    return reasons;
}

} // namespace

double DistanceInKilometres(const EarthPosition& from, const EarthPosition& to)
{
    constexpr double meanRadius = 6371.0;
    constexpr double degree = std::numbers::pi / 180;
    const auto squaredHalfSine = [](double degrees) {
        const double sine = std::sin(degrees * degree / 2);
        return sine * sine;
    };
    const double haversine = squaredHalfSine(to.latitude - from.latitude) +
                             std::cos(from.latitude * degree) * std::cos(to.latitude * degree) *
                                 squaredHalfSine(to.longitude - from.longitude);
    return 2 * meanRadius * std::asin(std::sqrt(std::min(1.0, haversine)));
}

Positions PositionsOf(const RecordList& locations)
{
    Positions positions;
    for (const RecordView& location : locations) {
        const auto position = IfReadable([&] {
            return EarthPosition{ToDouble(location.Text(LocationField::LocLatt)),
                                 ToDouble(location.Text(LocationField::LocLong))};
        });
        if (position) {
            positions.emplace(location.Text(LocationField::LocNo), *position);
        }
    }
    return positions;
}

double MoonAge(int percent, bool waxing)
{
    const double half = std::clamp(percent, 0, 100) / 200.0;
    return waxing ? half : 1 - half;
}

Conditions ConditionsOf(const RecordView& trip)
{
    Conditions conditions;
    conditions.date = IfReadable([&] { return ToDate(trip.Text(EntryField::StartDate)); });
    conditions.moonAge = IfReadable([&] {
        const std::string phase = trip.Text(EntryField::MoonPhase);
        return MoonAge(std::abs(static_cast<int>(ToInt16(phase))), !phase.starts_with('-'));
    });
    conditions.rating = CodeOf(trip, EntryField::Prediction);
    conditions.place = trip.Text(EntryField::LocNo);
    for (const EntryField::Position field : codeFields) {
        if (const auto code = CodeOf(trip, field)) {
            conditions.codes.emplace(field, *code);
        }
    }
    return conditions;
}

std::vector<SimilarTrip> RankSimilar(const Conditions& wanted, const std::vector<Conditions>& trips,
                                     const Positions& positions, std::size_t count)
{
    std::vector<SimilarTrip> ranked;
    ranked.reserve(trips.size());
    for (std::size_t index = 0; index < trips.size(); ++index) {
        ranked.push_back({index, DistanceBetween(wanted, trips[index], positions), {}});
    }
    const auto end = ranked.begin() + static_cast<std::ptrdiff_t>(std::min(count, ranked.size()));
    std::partial_sort(ranked.begin(), end, ranked.end(),
                      [](const SimilarTrip& left, const SimilarTrip& right) {
                          return left.distance != right.distance ? left.distance < right.distance
                                                                 : left.index < right.index;
                      });
    ranked.erase(end, ranked.end());
    for (SimilarTrip& trip : ranked) {
        trip.reasons = ReasonsFor(wanted, trips[trip.index], positions);
    }
    return ranked;
}

} // namespace Tarno
