#include "AstroTest.h"
#include "astro/SiderealTime.h"
#include "astro/mRiseSet.h"
#include "support/TestClass.h"

#include <cmath>

using namespace Tarno;

using namespace mRiseSet;
using namespace std::chrono_literals;
using namespace std::string_literals;
using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

namespace
{

bool IsTime(const std::string& text)
{
    return text.size() == 5 && text[2] == ':';
}

double SinOfDegrees(double angle)
{
    return std::sin(angle * std::acos(-1) / 180);
}

int MinutesOf(const std::string& time)
{
    return 60 * ToInt16(time.substr(0, 2)) + ToInt16(time.substr(3));
}

} // namespace

class tst_mRiseSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void quad_twoRoots_givesBothAndTheExtremum()
    {
        const Parabola parabola = Quad(1.125, -0.125, 0.625); // (z + 0.25) (z - 0.5)
        QCOMPARE(parabola.nz, 2);
        QCOMPARE(parabola.z1, -0.25);
        QCOMPARE(parabola.z2, 0.5);
        QCOMPARE(parabola.xe, 0.125);
        QCOMPARE(parabola.ye, -0.140625);
    }

    void quad_openingDownwards_givesTheRootsInTheSameOrder()
    {
        const Parabola parabola = Quad(-1.125, 0.125, -0.625);
        QCOMPARE(parabola.nz, 2);
        QCOMPARE(parabola.z1, -0.25);
        QCOMPARE(parabola.z2, 0.5);
        QCOMPARE(parabola.ye, 0.140625);
    }

    void quad_firstRootTooEarly_givesTheOtherAsFirst()
    {
        const Parabola parabola = Quad(-1.5, -1, 1.5); // (z + 2) (z - 0.5)
        QCOMPARE(parabola.nz, 1);
        QCOMPARE(parabola.z1, 0.5);
    }

    void quad_secondRootTooLate_givesTheFirst()
    {
        const Parabola parabola = Quad(4.5, 1, -0.5); // (z - 2) (z - 0.5)
        QCOMPARE(parabola.nz, 1);
        QCOMPARE(parabola.z1, 0.5);
    }

    void quad_rootsAtBothEnds_areIncluded()
    {
        const Parabola parabola = Quad(0, -1, 0);
        QCOMPARE(parabola.nz, 2);
        QCOMPARE(parabola.z1, -1.0);
        QCOMPARE(parabola.z2, 1.0);
    }

    void quad_rootsOutside_areIgnored() { QCOMPARE(Quad(3, 4, 3).nz, 0); }

    void quad_noRealRoots_areNone() { QCOMPARE(Quad(2, 1, 2).nz, 0); }

    void quad_straightLine_hasNone()
    {
        QCOMPARE(Quad(-1, 0, 1).nz, 0);
        QCOMPARE(Quad(1, 0, -1).nz, 0);
        QCOMPARE(Quad(1, 1, 1).nz, 0);
    }

    void hm_everyMinuteOfTheDay_keepsHoursAndMinutes()
    {
        for (int minute = 0; minute <= 24 * 60; ++minute) {
            const int hhmm = 100 * (minute / 60) + minute % 60;
            QCOMPARE(HM(minute / 60.0), hhmm);
            QCOMPARE(HM((minute + 0.49) / 60), hhmm);
        }
    }

    void hm_secondsAndAboveAHalf_roundUp()
    {
        QCOMPARE(HM(6.75 + 0.51 / 60), 646);
        QCOMPARE(HM(6.995), 700);
    }

    void hm_lastHalfMinute_is2400()
    {
        QCOMPARE(HM(23.9916), 2359);
        QCOMPARE(HM(23.9917), 2400);
    }

    void sinAlt_sunAtTheEquatorAtNoonOfTheEquinox_isNearlyOne()
    {
        const double noon = MJD(2003y / 3 / 21, 12);
        QVERIFY(SinAlt(Body::Sun, noon, 0, ObserverAt(0, 0)) > 0.999);
        QVERIFY(SinAlt(Body::Sun, noon, 12, ObserverAt(0, 0)) < -0.999);
        QVERIFY(SinAlt(Body::Sun, noon, -6, ObserverAt(0, 90)) > 0.999);
    }

    void sinAlt_sunAtThePoleOnTheSolstice_isTheSineOfItsDeclination()
    {
        const double solstice = MJD(2003y / 6 / 21, 0);
        for (int hour = 0; hour <= 24; ++hour) {
            const double sine = SinAlt(Body::Sun, solstice, hour, ObserverAt(90, 0));
            QVERIFY(std::abs(sine - 0.39779) < 0.0001);
        }
    }

    void sinAlt_nauticalTwilight_isThatOfTheSun()
    {
        const Observer observer = ObserverAt(54.3, 10.1);
        const double mjd = MJD(2003y / 5 / 5, 0);
        QCOMPARE(SinAlt(Body::NauticalTwilight, mjd, 7, observer), SinAlt(Body::Sun, mjd, 7, observer));
        QVERIFY(SinAlt(Body::Moon, mjd, 7, observer) != SinAlt(Body::Sun, mjd, 7, observer));
    }

    void riseSetTime_equatorAtTheEquinox_isSixToSix()
    {
        const std::string rise = RiseSetTime("0", "0", "0", "R", 2003y / 3 / 21);
        const std::string set = RiseSetTime("0", "0", "0", "S", 2003y / 3 / 21);
        QVERIFY(std::abs(MinutesOf(rise) - 6 * 60) <= 15);
        QVERIFY(std::abs(MinutesOf(set) - 18 * 60) <= 15);
    }

    void riseSetTime_firstLetter_choosesTheBody()
    {
        const Observer observer = ObserverAt(-33.8, 151.25);
        const year_month_day date = 2003y / 1 / 10;
        const auto rise = [&](Body body) { return RiseAndSet(body, observer, 10, date).rise; };
        QCOMPARE(RiseSetTime("-33.8", "151.25", "10", "MR", date), rise(Body::Moon));
        QCOMPARE(RiseSetTime("-33.8", "151.25", "10", "NR", date), rise(Body::NauticalTwilight));
        QCOMPARE(RiseSetTime("-33.8", "151.25", "10", "R", date), rise(Body::Sun));
        QCOMPARE(RiseSetTime("-33.8", "151.25", "10", "SR", date), rise(Body::Sun));
        QVERIFY(rise(Body::Sun) != rise(Body::Moon));
    }

    void riseSetTime_lastLetter_choosesTheEvent()
    {
        const RiseSetTexts times = RiseAndSet(Body::Moon, ObserverAt(40, 0), 0, 2003y / 1 / 20);
        QCOMPARE(RiseSetTime("40", "0", "0", "MR", 2003y / 1 / 20), times.rise);
        QCOMPARE(RiseSetTime("40", "0", "0", "MS", 2003y / 1 / 20), times.set);
        QVERIFY(IsTime(times.rise) && IsTime(times.set));
        QCOMPARE(RiseSetTime("40", "0", "0", "M", 2003y / 1 / 20), ""s);
        QCOMPARE(RiseSetTime("40", "0", "0", "", 2003y / 1 / 20), ""s);
    }

    void riseSetTime_twilight_isLongerThanTheDay()
    {
        const RiseSetTexts day = RiseAndSet(Body::Sun, ObserverAt(50, 0), 0, 2003y / 3 / 21);
        const RiseSetTexts twilight =
            RiseAndSet(Body::NauticalTwilight, ObserverAt(50, 0), 0, 2003y / 3 / 21);
        const int morning = MinutesOf(day.rise) - MinutesOf(twilight.rise);
        const int evening = MinutesOf(twilight.set) - MinutesOf(day.set);
        QVERIFY(morning > 66 && morning < 73);
        QVERIFY(evening > 66 && evening < 73);
    }

    void riseSetTime_polarSummer_isUp()
    {
        QCOMPARE(RiseSetTime("80", "0", "0", "R", 2003y / 6 / 21), "up"s);
        QCOMPARE(RiseSetTime("80", "0", "0", "S", 2003y / 6 / 21), "up"s);
        QCOMPARE(RiseSetTime("-80", "0", "0", "R", 2003y / 12 / 21), "up"s);
    }

    void riseSetTime_polarWinter_isDown()
    {
        QCOMPARE(RiseSetTime("80", "0", "0", "R", 2003y / 12 / 21), "down"s);
        QCOMPARE(RiseSetTime("80", "0", "0", "S", 2003y / 12 / 21), "down"s);
        QCOMPARE(RiseSetTime("-80", "0", "0", "R", 2003y / 6 / 21), "down"s);
    }

    void riseSetTime_moonThatDoesNotSet_hasNoSet()
    {
        QVERIFY(IsTime(RiseSetTime("40", "0", "0", "MR", 2000y / 1 / 14)));
        QCOMPARE(RiseSetTime("40", "0", "0", "MS", 2000y / 1 / 14), ""s);
        const std::string nextSet = RiseSetTime("40", "0", "0", "MS", 2000y / 1 / 15);
        QVERIFY(IsTime(nextSet) && nextSet < "01:00");
    }

    void riseSetTime_invalidNumbers_raiseTypeMismatch()
    {
        const auto riseSetTime = [](const char* latitude, const char* longitude, const char* gmt) {
            return ErrorOf([=] { RiseSetTime(latitude, longitude, gmt, "R", 2003y / 1 / 1); });
        };
        QVERIFY(riseSetTime("40", "10", "1") == std::nullopt);
        QVERIFY(riseSetTime("40 N", "10", "1") == ErrorNumber::TypeMismatch);
        QVERIFY(riseSetTime("40", "", "1") == ErrorNumber::TypeMismatch);
        QVERIFY(riseSetTime("40", "10", "one") == ErrorNumber::TypeMismatch);
    }

    void riseAndSet_shortestDay_isWithinOneStep()
    {
        const RiseSetTexts noon = RiseAndSet(Body::Sun, ObserverAt(68, 0), 0, 2002y / 12 / 9);
        QVERIFY(IsTime(noon.rise) && IsTime(noon.set));
        QVERIFY(noon.rise >= "11:00" && noon.rise < noon.set && noon.set <= "13:00");
    }

    void riseAndSet_shortestNight_isWithinOneStep()
    {
        const RiseSetTexts morning = RiseAndSet(Body::Sun, ObserverAt(66, 0), 6, 2004y / 6 / 30);
        QVERIFY(IsTime(morning.rise) && IsTime(morning.set));
        QVERIFY(morning.set >= "05:00" && morning.set < morning.rise && morning.rise <= "07:00");
    }

    void riseAndSet_secondSetOfTheDay_isIgnored()
    {
        // the sun sets and rises just after midnight, and sets again just before the next
        const RiseSetTexts times = RiseAndSet(Body::Sun, ObserverAt(66, 0), 0, 2000y / 6 / 30);
        QCOMPARE(times.set, "00:01"s);
        QCOMPARE(times.rise, "00:04"s);
        const auto height = [](double hour) {
            return SinAlt(Body::Sun, MJD(2000y / 6 / 30, 0), hour, ObserverAt(66, 0)) -
                   SinOfDegrees(-50 / 60.0);
        };
        QVERIFY(height(1) > 0);
        QVERIFY(height(24) < 0);
    }

    void riseAndSet_lastHalfMinute_reads2400()
    {
        QCOMPARE(RiseAndSet(Body::Sun, ObserverAt(60, 0), 6, 2001y / 3 / 14).set, "24:00"s);
    }

    void riseAndSet_timeZone_shiftsTheTimes()
    {
        const Observer observer = ObserverAt(45, 10);
        const int atGreenwich = MinutesOf(RiseAndSet(Body::Sun, observer, 0, 2003y / 5 / 1).rise);
        QCOMPARE(MinutesOf(RiseAndSet(Body::Sun, observer, 2, 2003y / 5 / 1).rise), atGreenwich + 120);
        QCOMPARE(MinutesOf(RiseAndSet(Body::Sun, observer, 5.5, 2003y / 5 / 1).rise), atGreenwich + 330);
    }

    void riseAndSet_moonOverTenMonths_missesTenOfEachEvent()
    {
        int rises = 0;
        int sets = 0;
        for (int day = 0; day < 295; ++day) { // ten synodic months
            const sys_days date = sys_days(2003y / 1 / 3) + days(day);
            const RiseSetTexts times = RiseAndSet(Body::Moon, ObserverAt(40, 0), 0, date);
            rises += IsTime(times.rise) ? 1 : 0;
            sets += IsTime(times.set) ? 1 : 0;
        }
        QVERIFY(std::abs(rises - 285) <= 1);
        QVERIFY(std::abs(sets - 285) <= 1);
    }

    void riseAndSet_atTheReturnedTime_theBodyIsOnTheHorizon()
    {
        const Observer observer = ObserverAt(40, 0);
        for (int day = 0; day < 365; ++day) {
            const sys_days date = sys_days(2003y / 1 / 1) + days(day);
            const RiseSetTexts times = RiseAndSet(Body::Sun, observer, 0, date);
            for (const std::string& time : {times.rise, times.set}) {
                const double altitude = SinAlt(Body::Sun, MJD(date, 0), MinutesOf(time) / 60.0, observer);
                QVERIFY(altitude > SinOfDegrees(-50 / 60.0 - 0.25) &&
                        altitude < SinOfDegrees(-50 / 60.0 + 0.25));
            }
        }
    }

    void riseAndSet_extremePlaces_terminateAndGiveTexts()
    {
        for (const double latitude : {90.0, -90.0, 95.0, -95.0, 1e9, 1e300}) {
            for (const double longitude : {0.0, 360.0, -1e6, 1e18, 1e300}) {
                for (const double gmt : {0.0, -100.0, 1e9, 1e300}) {
                    for (const Body body : {Body::Sun, Body::Moon}) {
                        const RiseSetTexts times =
                            RiseAndSet(body, ObserverAt(latitude, longitude), gmt, 2003y / 1 / 1);
                        for (const std::string& text : {times.rise, times.set}) {
                            QVERIFY(text.empty() || text == "up" || text == "down" || IsTime(text));
                        }
                    }
                }
            }
        }
    }
};

TEST_CLASS(tst_mRiseSet)
#include "tst_mRiseSet.moc"
