#pragma once

#include <chrono>

// Instants and sidereal time after O. Montenbruck and T. Pfleger, "Astronomy on the Personal
// Computer". An instant is a modified Julian date (MJD): universal time in days since 17 November
// 1858, 0 h.
namespace Tarno::mRiseSet
{

/// Returns `x` minus floor(`x`), from 0 up to 1: Frac(-0.25) is 0.75.
double Frac(double x);

/// Returns the MJD of `date` at `hour`. Dates up to 4 October 1582 are Julian.
double MJD(std::chrono::year_month_day date, double hour);

/// Returns the Julian centuries from J2000 to `mjd`.
double JulianCenturies(double mjd);

/// Returns the local mean sidereal time at `mjd` in hours, 0 to 24. `lambda` is the longitude in degrees,
/// WEST positive.
double LMST(double mjd, double lambda);

} // namespace Tarno::mRiseSet
