#include "AstroTest.h"
#include "astro/SunMoon.h"
#include "support/TestClass.h"

#include <cmath>

using namespace Tarno;

using namespace mRiseSet;

namespace
{

/// Returns the great-circle distance of two positions in degrees, accurate for small distances.
double Distance(const Equatorial& one, const Equatorial& other)
{
    const double degree = std::acos(-1) / 180;
    const double east = 15 * (one.ra - other.ra) * std::cos(degree * one.dec);
    return std::hypot(east, one.dec - other.dec);
}

} // namespace

// The reference positions are from J. Meeus, "Astronomical Algorithms", examples 25.a and 47.a.

class tst_SunMoon : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void miniSun_13October1992_isWithinAnArcMinuteOfTheAlmanac()
    {
        const Equatorial almanac{198.38083 / 15, -7.78507};
        QVERIFY(Distance(MiniSun(-0.072183436), almanac) < 1 / 60.0);
    }

    void miniSun_solstices_areAtTheTropics()
    {
        const double june2003 = (52811 - 51544.5) / 36525; // 21 June 2003
        const double december2003 = (52995 - 51544.5) / 36525;
        QVERIFY(std::abs(MiniSun(june2003).dec - 23.44) < 0.02);
        QVERIFY(std::abs(MiniSun(december2003).dec + 23.44) < 0.02);
    }

    void miniMoon_12April1992_isWithinFiveArcMinutesOfTheAlmanac()
    {
        const Equatorial almanac{134.688470 / 15, 13.768368};
        QVERIFY(Distance(MiniMoon(-0.077221081451), almanac) < 5 / 60.0);
    }

    void bothBodies_fromYear1To9999_haveValidCoordinates()
    {
        for (int day = 0; day < 9999 * 365; day += 501) {
            const double t = -20 + day / 36525.0;
            for (const Equatorial& place : {MiniSun(t), MiniMoon(t)}) {
                QVERIFY(place.ra >= 0 && place.ra <= 24);
                QVERIFY(std::abs(place.dec) < 30);
            }
        }
    }
};

TEST_CLASS(tst_SunMoon)
#include "tst_SunMoon.moc"
