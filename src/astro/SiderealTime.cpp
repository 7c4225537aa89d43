#include "SiderealTime.h"

#include <cmath>

namespace Tarno
{

double mRiseSet::Frac(double x)
{
    const double rest = x - std::trunc(x);
    return rest < 0 ? rest + 1 : rest;
}

double mRiseSet::MJD(std::chrono::year_month_day date, double hour)
{
    int year = static_cast<int>(date.year());
    int month = static_cast<int>(static_cast<unsigned>(date.month()));
    const int day = static_cast<int>(static_cast<unsigned>(date.day()));
    const bool isJulian = 10000 * year + 100 * month + day <= 15821004;
    if (month <= 2) { // the year starts in March, so that the leap day is its last
        month += 12;
        --year;
    }
    const int leapDays = isJulian ? (year + 4716) / 4 - 1181 : year / 400 - year / 100 + year / 4;
    return 365.0 * year - 679004 + leapDays + std::trunc(30.6001 * (month + 1)) + day + hour / 24;
}

double mRiseSet::JulianCenturies(double mjd)
{
    return (mjd - 51544.5) / 36525;
}

double mRiseSet::LMST(double mjd, double lambda)
{
    const double mjd0 = std::trunc(mjd);
    const double ut = (mjd - mjd0) * 24;
    const double t = JulianCenturies(mjd0);
    const double gmst =
        6.697374558 + 1.0027379093 * ut + (8640184.812866 + (0.093104 - 6.2e-6 * t) * t) * t / 3600;
    return 24 * Frac((gmst - lambda / 15) / 24);
}

} // namespace Tarno
