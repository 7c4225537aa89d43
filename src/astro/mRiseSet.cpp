#include "mRiseSet.h"

#include "SiderealTime.h"
#include "SunMoon.h"
#include "core/Conversions.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace Tarno
{

namespace
{

using mRiseSet::Body;
using mRiseSet::Observer;

constexpr double rads = std::numbers::pi / 180;

// slightly different from `rads`; see docs/quirks.md
constexpr double radiansPerDegree = 0.0174532925199433;

double SinOfDegrees(double degrees)
{
    return std::sin(radiansPerDegree * degrees);
}

double CosOfDegrees(double degrees)
{
    return std::cos(radiansPerDegree * degrees);
}

/// The horizon crossings of one day, in hours after local midnight.
struct Crossings {
    std::optional<double> rise;
    std::optional<double> set;
    bool above = false; ///< the body was above the horizon at midnight
};

/// Returns the sine of the altitude of a body's centre at which it counts as rising or setting. For sun and
/// moon this includes refraction, the radius of the disc and the parallax of the moon.
double SinHorizon(Body body)
{
    switch (body) {
    case Body::Moon:
        return std::sin(rads * 8 / 60);
    case Body::NauticalTwilight:
        return std::sin(rads * -12);
    case Body::Sun:
        break;
    }
    return std::sin(rads * -50 / 60);
}

/// Adds the crossings of the two hours around `hour`. `yMinus` is the height at their start.
void AddCrossings(Crossings& found, int hour, double yMinus, const mRiseSet::Parabola& parabola)
{
    if (parabola.nz == 1) {
        (yMinus < 0 ? found.rise : found.set) = hour + parabola.z1;
    } else if (parabola.nz == 2) {
        const bool setsFirst = parabola.ye < 0;
        found.rise = hour + (setsFirst ? parabola.z2 : parabola.z1);
        found.set = hour + (setsFirst ? parabola.z1 : parabola.z2);
    }
}

/// Returns the crossings of the local day that starts at the instant `mjd0`.
Crossings FindCrossings(Body body, const Observer& observer, double mjd0)
{
    const double sinHorizon = SinHorizon(body);
    const auto height = [&](int hour) { return SinAlt(body, mjd0, hour, observer) - sinHorizon; };

    double yMinus = height(0);
    Crossings found;
    found.above = yMinus > 0;
    for (int hour = 1; hour < 25 && !(found.rise && found.set); hour += 2) {
        const double y0 = height(hour);
        const double yPlus = height(hour + 1);
        AddCrossings(found, hour, yMinus, mRiseSet::Quad(yMinus, y0, yPlus));
        yMinus = yPlus;
    }
    return found;
}

Crossings FindCrossings(Body body, const Observer& observer, double gmt, std::chrono::year_month_day date)
{
    return FindCrossings(body, observer, mRiseSet::MJD(date, 0) - gmt / 24);
}

/// Returns the text of `event`, one of the two in `found`.
std::string EventText(const Crossings& found, std::optional<double> event)
{
    if (!found.rise && !found.set) {
        return found.above ? "up" : "down";
    }
    if (!event) {
        return {};
    }
    const std::string hhmm = ZeroPadded(mRiseSet::HM(*event), 4);
    return hhmm.substr(0, 2) + ':' + hhmm.substr(2);
}

Body BodyOf(std::string_view eventCode)
{
    if (eventCode.starts_with('M')) {
        return Body::Moon;
    }
    return eventCode.starts_with('N') ? Body::NauticalTwilight : Body::Sun;
}

} // namespace

Observer mRiseSet::ObserverAt(double latitude, double longitude)
{
    return {-longitude, CosOfDegrees(latitude), SinOfDegrees(latitude)};
}

double mRiseSet::SinAlt(Body body, double mjd0, double hour, const Observer& observer)
{
    const double instant = mjd0 + hour / 24;
    const double t = JulianCenturies(instant);
    const Equatorial place = body == Body::Moon ? MiniMoon(t) : MiniSun(t);
    const double hourAngle = 15 * (LMST(instant, observer.lambda) - place.ra);
    return observer.sinLat * SinOfDegrees(place.dec) +
           observer.cosLat * CosOfDegrees(place.dec) * CosOfDegrees(hourAngle);
}

mRiseSet::Parabola mRiseSet::Quad(double yMinus, double y0, double yPlus)
{
    const double a = 0.5 * (yMinus + yPlus) - y0;
    const double b = 0.5 * (yPlus - yMinus);
    const double c = y0;
    Parabola parabola;
    parabola.xe = -b / (2 * a);
    parabola.ye = (a * parabola.xe + b) * parabola.xe + c;
    const double discriminant = b * b - 4 * a * c;
    if (discriminant > 0) {
        const double dx = 0.5 * std::sqrt(discriminant) / std::abs(a);
        parabola.z1 = parabola.xe - dx;
        parabola.z2 = parabola.xe + dx;
        parabola.nz = (std::abs(parabola.z1) <= 1 ? 1 : 0) + (std::abs(parabola.z2) <= 1 ? 1 : 0);
        if (parabola.z1 < -1) {
            parabola.z1 = parabola.z2;
        }
    }
    return parabola;
}

int mRiseSet::HM(double hours)
{
    // rounded first, so that the minutes never become 60
    const double rounded = std::floor(hours * 60 + 0.5) / 60;
    return static_cast<int>(100 * std::floor(rounded) + std::floor(60 * Frac(rounded) + 0.5));
}

mRiseSet::RiseSetTexts mRiseSet::RiseAndSet(Body body, const Observer& observer, double gmt,
                                            std::chrono::year_month_day date)
{
    const Crossings found = FindCrossings(body, observer, gmt, date);
    return {EventText(found, found.rise), EventText(found, found.set)};
}

std::string mRiseSet::RiseSetTime(std::string_view latitude, std::string_view longitude,
                                  std::string_view gmtDifference, std::string_view eventCode,
                                  std::chrono::year_month_day date)
{
    const Observer observer = ObserverAt(ToDouble(latitude), ToDouble(longitude));
    const Crossings found = FindCrossings(BodyOf(eventCode), observer, ToDouble(gmtDifference), date);
    std::optional<double> event;
    if (eventCode.ends_with('R')) {
        event = found.rise;
    } else if (eventCode.ends_with('S')) {
        event = found.set;
    }
    return EventText(found, event);
}

} // namespace Tarno
