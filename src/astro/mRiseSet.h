#pragma once

#include <chrono>
#include <string>
#include <string_view>

// Rise and set of sun and moon after O. Montenbruck and T. Pfleger, "Astronomy on the Personal Computer": the
// sine of the altitude is sampled at every hour of the local day, and a parabola through three successive
// samples gives the horizon crossings of those two hours.
namespace Tarno::mRiseSet
{

enum class Body { Moon = 1, Sun = 2, NauticalTwilight = 3 };

/// The position of the observer.
struct Observer {
    double lambda = 0; ///< longitude in degrees, WEST positive
    double cosLat = 1; ///< cosine and sine of the latitude
    double sinLat = 0;
};

/// Returns the observer at `latitude` and `longitude` (degrees, north and EAST positive).
Observer ObserverAt(double latitude, double longitude);

/// Returns the sine of the altitude of the centre of `body`, `hour` hours after the instant `mjd0` (an MJD).
double SinAlt(Body body, double mjd0, double hour, const Observer& observer);

/// The parabola through (-1, yMinus), (0, y0) and (1, yPlus).
struct Parabola {
    int nz = 0;    ///< number of roots from -1 to 1 inclusive: 0, 1 or 2
    double z1 = 0; ///< the first root (nz 1 and 2)
    double z2 = 0; ///< the second root (nz 2)
    double xe = 0; ///< position and value of the extremum
    double ye = 0;
};

/// Fits the parabola. If the points are on a straight line, it has no extremum and no roots.
Parabola Quad(double yMinus, double y0, double yPlus);

/// Rounds `hours` (0 or more) to minutes and returns the number hhmm: 645 for 6.75, 2400 for 23.995.
int HM(double hours);

/// Rise and set of a body on one day: "hh:mm", or an empty text if only the other event happens. Both are
/// "up" if the body stays above the horizon all day, "down" if it stays below.
struct RiseSetTexts {
    std::string rise;
    std::string set;
};

/// Returns the events of the local day `date`, for clocks that are `gmt` hours ahead of GMT. An event in the
/// last half minute of the day is "24:00". The search stops as soon as both events are found, so if the sun
/// sets twice on one day the first set counts.
RiseSetTexts RiseAndSet(Body body, const Observer& observer, double gmt, std::chrono::year_month_day date);

/// Returns one of the texts of RiseAndSet for a place and time zone given as texts (degrees, north and east
/// positive; hours ahead of GMT). The event code starts with "M" for the moon, "N" for nautical twilight or
/// anything else for the sun, and ends with "R" for the rise or "S" for the set. Throws Error TypeMismatch or
/// Overflow if a text is not a number.
std::string RiseSetTime(std::string_view latitude, std::string_view longitude, std::string_view gmtDifference,
                        std::string_view eventCode, std::chrono::year_month_day date);

} // namespace Tarno::mRiseSet
