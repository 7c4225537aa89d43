#pragma once

#include "analysis/LineItems.h"
#include "analysis/Similarity.h"
#include "analysis/TripText.h"
#include "store/Record.h"

#include <array>
#include <cstdint>
#include <string>

namespace Tarno
{

/// What the statistics need besides the trips. It is independent of the records.
struct LogContext {
    PlaceNames places = {};
    Positions positions = {}; ///< of the locations; they determine the hemisphere
    LineItems species = {};
    LineItems baits = {};
    LineItems methods = {};
};

/// What is counted of trips.
struct TripFigures {
    int trips = 0;
    std::int64_t minutes = 0;        ///< of the trips that are neither long nor untimed
    int longTrips = 0;               ///< trips of more than 48 hours
    int untimedTrips = 0;            ///< trips whose duration cannot be read, or would be negative
    int tripsWithoutCatch = 0;       ///< trips with nothing but blanks in the text of the catch
    std::array<int, 4> actions = {}; ///< trips by action: Slow, Fair, Good, Hot!
    int withoutAction = 0;           ///< trips whose action is not set
    std::string lastDate = {};       ///< latest start, "yyyy-mm-dd"; empty if no start is a date

    double Hours() const;

    /// Returns the number of trips whose action is set.
    int RatedTrips() const { return trips - withoutAction; }

    /// Returns the number of trips with the action Good or Hot!.
    int Successes() const { return actions[2] + actions[3]; }

    /// Whether the trips are too few for conclusions.
    bool IsFew() const { return trips < 5; }

    void Add(const TripFigures& other);

    bool operator==(const TripFigures&) const = default;
};

/// Returns the figures of one trip. Its duration is from the start date and time to the end date and time; an
/// end date that cannot be read counts as the start date.
TripFigures FiguresOf(const RecordView& trip);

} // namespace Tarno
