#include "SunMoon.h"

#include "SiderealTime.h"

#include <cmath>

namespace Tarno
{

namespace
{

using std::sin;

constexpr double twoPi = 6.283185307; // the published precision; see docs/quirks.md
constexpr double arcSecondsPerRadian = 206264.8062;
constexpr double arcSecondsPerCircle = 1296000;

/// Returns the mean anomaly of the sun in radians.
double SunAnomaly(double t)
{
    return twoPi * mRiseSet::Frac(0.993133 + 99.997361 * t);
}

/// Converts ecliptic `longitude` and `latitude` (radians).
mRiseSet::Equatorial FromEcliptic(double longitude, double latitude)
{
    constexpr double cosObliquity = 0.91748;
    constexpr double sinObliquity = 0.39778;

    const double x = std::cos(latitude) * std::cos(longitude);
    const double v = std::cos(latitude) * sin(longitude);
    const double w = sin(latitude);
    const double y = cosObliquity * v - sinObliquity * w;
    const double z = sinObliquity * v + cosObliquity * w;
    const double rho = std::sqrt(1 - z * z);

    const double dec = 360 / twoPi * std::atan(z / rho);
    const double ra = 48 / twoPi * std::atan(y / (x + rho));
    return {ra < 0 ? ra + 24 : ra, dec};
}

} // namespace

mRiseSet::Equatorial mRiseSet::MiniSun(double t)
{
    const double m = SunAnomaly(t);
    const double dL = 6893 * sin(m) + 72 * sin(2 * m);
    const double longitude = twoPi * Frac(0.7859453 + m / twoPi + (6191.2 * t + dL) / arcSecondsPerCircle);
    return FromEcliptic(longitude, 0);
}

mRiseSet::Equatorial mRiseSet::MiniMoon(double t)
{
    // mean longitude (in circles), mean anomalies of the moon and the sun, mean elongation from the
    // sun, mean distance from the ascending node
    const double l0 = Frac(0.606433 + 1336.855225 * t);
    const double l = twoPi * Frac(0.374897 + 1325.55241 * t);
    const double ls = SunAnomaly(t);
    const double d = twoPi * Frac(0.827361 + 1236.853086 * t);
    const double f = twoPi * Frac(0.259086 + 1342.227825 * t);

    const double sinLs = sin(ls);
    const double sin2F = sin(2 * f);
    // perturbations of longitude and latitude, in arc seconds
    const double dL = 22640 * sin(l) - 4586 * sin(l - 2 * d) + 2370 * sin(2 * d) + 769 * sin(2 * l) -
                      668 * sinLs - 412 * sin2F - 212 * sin(2 * l - 2 * d) - 206 * sin(l + ls - 2 * d) +
                      192 * sin(l + 2 * d) - 165 * sin(ls - 2 * d) - 125 * sin(d) - 110 * sin(l + ls) +
                      148 * sin(l - ls) - 55 * sin(2 * f - 2 * d);
    const double s = f + (dL + 412 * sin2F + 541 * sinLs) / arcSecondsPerRadian;
    const double h = f - 2 * d;
    const double n = -526 * sin(h) + 44 * sin(l + h) - 31 * sin(h - l) - 23 * sin(ls + h) + 11 * sin(h - ls) -
                     25 * sin(f - 2 * l) + 21 * sin(f - l);

    const double longitude = twoPi * Frac(l0 + dL / arcSecondsPerCircle);
    const double latitude = (18520 * sin(s) + n) / arcSecondsPerRadian;
    return FromEcliptic(longitude, latitude);
}

} // namespace Tarno
