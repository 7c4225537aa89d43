#include "AstroTest.h"
#include "astro/SiderealTime.h"
#include "support/TestClass.h"

#include <cmath>

using namespace Tarno;

using namespace mRiseSet;
using namespace std::chrono_literals;
using std::chrono::days;
using std::chrono::sys_days;

class tst_SiderealTime : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void frac_positiveNumber_isTheFractionalPart()
    {
        QCOMPARE(Frac(2.25), 0.25);
        QCOMPARE(Frac(0), 0.0);
        QCOMPARE(Frac(7), 0.0);
    }

    void frac_negativeNumber_countsUpwards()
    {
        QCOMPARE(Frac(-0.25), 0.75);
        QCOMPARE(Frac(-3.75), 0.25);
        QCOMPARE(Frac(-3), 0.0);
    }

    void mjd_17November1858_isZero()
    {
        QCOMPARE(MJD(1858y / 11 / 17, 0), 0.0);
        QCOMPARE(MJD(1858y / 11 / 16, 6), -0.75);
    }

    void mjd_noonOf1January2000_isTheEpochJ2000() { QCOMPARE(MJD(2000y / 1 / 1, 12), 51544.5); }

    void mjd_calendarReform_leavesNoGap()
    {
        QCOMPARE(MJD(1582y / 10 / 4, 0), -100841.0);
        QCOMPARE(MJD(1582y / 10 / 15, 0), -100840.0);
    }

    void mjd_julianCentury_hasALeapDay()
    {
        QCOMPARE(MJD(1500y / 3 / 1, 0) - MJD(1500y / 2 / 28, 0), 2.0);
        QCOMPARE(MJD(1700y / 3 / 1, 0) - MJD(1700y / 2 / 28, 0), 1.0);
    }

    void mjd_firstDayOfTheYear1_isJulian() { QCOMPARE(MJD(1y / 1 / 1, 0), 1721423.5 - 2400000.5); }

    void mjd_everyDaySinceTheReform_isOneMoreThanTheDayBefore()
    {
        const sys_days zero = 1858y / 11 / 17;
        for (sys_days day = 1582y / 10 / 15; day <= sys_days(2400y / 12 / 31); day += days(1)) {
            QCOMPARE(MJD(day, 0), static_cast<double>((day - zero).count()));
        }
        const sys_days last = 9999y / 12 / 31;
        QCOMPARE(MJD(last, 0), static_cast<double>((last - zero).count()));
    }

    void julianCenturies_have36525Days()
    {
        QCOMPARE(JulianCenturies(51544.5), 0.0);
        QCOMPARE(JulianCenturies(51544.5 - 36525), -1.0);
    }

    void lmst_greenwich_matchesTheAlmanac_data()
    {
        QTest::addColumn<double>("mjd");
        QTest::addColumn<double>("hours");

        // J. Meeus, "Astronomical Algorithms", examples 12.a and 12.b
        QTest::newRow("10 April 1987, 0 h") << 46895.0 << 13 + 10 / 60.0 + 46.3668 / 3600;
        QTest::newRow("10 April 1987, 19:21")
            << 46895 + (19 + 21 / 60.0) / 24 << 8 + 34 / 60.0 + 57.0896 / 3600;
        QTest::newRow("noon of J2000") << 51544.5 << 18.697374558;
    }

    void lmst_greenwich_matchesTheAlmanac()
    {
        QFETCH(double, mjd);
        QFETCH(double, hours);
        const double tolerance = 0.01 / 3600;
        QVERIFY(std::abs(LMST(mjd, 0) - hours) < tolerance);
    }

    void lmst_fifteenDegreesEast_isAnHourAhead()
    {
        QCOMPARE(LMST(46895, -15), LMST(46895, 0) + 1);
        QCOMPARE(LMST(46895, 30), LMST(46895, 0) - 2);
    }

    void lmst_negativeMjd_isBetween0And24()
    {
        for (int mjd = -700000; mjd < 0; mjd += 997) {
            const double time = LMST(mjd + 0.3, 0);
            QVERIFY(time >= 0 && time <= 24);
        }
    }
};

TEST_CLASS(tst_SiderealTime)
#include "tst_SiderealTime.moc"
