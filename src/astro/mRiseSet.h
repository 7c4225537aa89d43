#pragma once

#include <chrono>
#include <string>
#include <string_view>

// When the sun and the moon cross the horizon, after O. Montenbruck and T. Pfleger, "Astronomy on the
// Personal Computer": the sine of the altitude is taken at every hour of the local day, and a
// parabola through each three of them gives the crossings of those two hours.
namespace Tarno::mRiseSet
{

enum class Body { Moon = 1, Sun = 2, NauticalTwilight = 3 };

/// Where the observer stands.
struct Observer {
    double lambda = 0; ///< longitude in degrees, WEST positive
    double cosLat = 1; ///< cosine and sine of the latitude
    double sinLat = 0;
};

/// The observer at `latitude` and `longitude`: degrees, north and EAST positive.
Observer ObserverAt(double latitude, double longitude);

/// The sine of the altitude of `body`'s centre, `hour` hours after the instant `mjd0` (an MJD).
double SinAlt(Body body, double mjd0, double hour, const Observer& observer);

/// The parabola through (-1, yMinus), (0, y0) and (1, yPlus).
struct Parabola {
    int nz = 0;    ///< roots between -1 and 1, both ends included: 0, 1 or 2
    double z1 = 0; ///< the first of them (nz 1 and 2)
    double z2 = 0; ///< the second of them (nz 2)
    double xe = 0; ///< the extremum and its value
    double ye = 0;
};

/// Three points on a straight line have no extremum, and no root is found.
Parabola Quad(double yMinus, double y0, double yPlus);

/// `hours` (0 or more) rounded to the minute, as the number hhmm: 6.75 is 645, 23.995 is 2400.
int HM(double hours);

/// When a body rises and sets on one day: "hh:mm", or an empty text where only the other event
/// happens that day. Both are "up" when the body stays above the horizon, "down" when below.
struct RiseSetTexts {
    std::string rise;
    std::string set;
};

/// The events of the local day `date`, in the time of clocks that are `gmt` hours ahead of GMT. An
/// event in the last half minute of the day reads "24:00". The search ends with the step in which both
/// are known: where the sun sets twice on one day, this is the first of them.
RiseSetTexts RiseAndSet(Body body, const Observer& observer, double gmt, std::chrono::year_month_day date);

/// One of the texts of RiseAndSet, for a place and a time zone in texts: degrees, north and east
/// positive, and hours ahead of GMT. The event code starts with "M" for the moon, "N" for nautical
/// twilight, anything else for the sun, and ends with "R" for the rise, "S" for the set.
/// Throws Error TypeMismatch or Overflow when a text is no number.
std::string RiseSetTime(std::string_view latitude, std::string_view longitude, std::string_view gmtDifference,
                        std::string_view eventCode, std::chrono::year_month_day date);

} // namespace Tarno::mRiseSet
