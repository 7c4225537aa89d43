#pragma once

#include <chrono>

// Instants and sidereal time after O. Montenbruck and T. Pfleger, "Astronomy on the Personal
// Computer". An instant is a modified Julian date (MJD): universal time in days since 17 November
// 1858, 0 h.
namespace Tarno::mRiseSet
{

/// The fractional part of `x`, 0 to 1, counted upwards for negative numbers too: Frac(-0.25) is 0.75.
double Frac(double x);

/// `date` at `hour` as an MJD. Dates up to 4 October 1582 are those of the Julian calendar.
double MJD(std::chrono::year_month_day date, double hour);

/// Julian centuries from the epoch J2000 to `mjd`.
double JulianCenturies(double mjd);

/// Local mean sidereal time at `mjd` in hours, 0 to 24. `lambda` is the longitude in degrees, WEST
/// positive.
double LMST(double mjd, double lambda);

} // namespace Tarno::mRiseSet
