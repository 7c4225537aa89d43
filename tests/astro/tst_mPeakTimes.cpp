#include "AstroTest.h"
#include "astro/mPeakTimes.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace mPeakTimes;
using namespace std::string_literals;
using mRiseSet::RiseSetTexts;

namespace
{

const RiseSetTexts unused{"03:33", "15:15"};
const RiseSetTexts nothing{":", ":"};

/// Returns the four texts, separated by blanks.
std::string Joined(const Periods& periods)
{
    return periods.major1 + ' ' + periods.major2 + ' ' + periods.minor1 + ' ' + periods.minor2;
}

std::string Joined(const Minors& minors)
{
    return minors.minor1 + ' ' + minors.minor2;
}

} // namespace

class tst_mPeakTimes : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void peakTimes_rise0100AndSet1300_giveAllFour()
    {
        QCOMPARE(Joined(PeakTimes(unused, {"01:00", "13:00"}, unused)), "07:00 19:25 00:47 13:12"s);
    }

    void peakTimes_transitAt1150_hasNoSecondMajor()
    {
        QCOMPARE(Joined(PeakTimes(unused, {"05:50", "17:50"}, unused)), "11:50 : 05:37 18:02"s);
    }

    void peakTimes_afternoonTransit_comesSecond()
    {
        QCOMPARE(Joined(PeakTimes(unused, {"13:00", "01:00"}, unused)), "06:34 19:00 00:21 12:47"s);
    }

    void peakTimes_missingRise_isThatOfTheDayBefore()
    {
        const Periods wanted = PeakTimes(unused, {"23:30", "11:30"}, unused);
        QCOMPARE(Joined(PeakTimes({"23:30", ":"}, {":", "11:30"}, unused)), Joined(wanted));
        QCOMPARE(wanted.major1, "05:30"s);
    }

    void peakTimes_missingSet_isThatOfTheDayAfter()
    {
        const Periods wanted = PeakTimes(unused, {"12:30", "00:30"}, unused);
        QCOMPARE(Joined(PeakTimes(unused, {"12:30", ":"}, {":", "00:30"})), Joined(wanted));
        QCOMPARE(wanted.major2, "18:30"s);
    }

    void peakTimes_eventMissingOnBothDays_givesNone()
    {
        QCOMPARE(Joined(PeakTimes(nothing, {":", "11:20"}, unused)), ": : : :"s);
        QCOMPARE(Joined(PeakTimes(unused, {"12:30", ":"}, nothing)), ": : : :"s);
        QCOMPARE(Joined(PeakTimes(nothing, nothing, nothing)), ": : : :"s);
    }

    void peakTimes_moonUpOrDownAllDay_givesNone()
    {
        for (const std::string word : {"up", "down", ""}) {
            QCOMPARE(Joined(PeakTimes(unused, {word, word}, unused)), ": : : :"s);
        }
        for (const std::string word : {"rises", "sets"}) {
            QCOMPARE(Joined(PeakTimes(unused, {word, "11:20"}, unused)), ": : : :"s);
        }
        QCOMPARE(Joined(PeakTimes(unused, {"11:20", "never"}, unused)), ": : : :"s);
    }

    void peakTimes_neighbourUpOrDown_givesNone()
    {
        QCOMPARE(Joined(PeakTimes({"down", "down"}, {":", "11:20"}, unused)), ": : : :"s);
        QCOMPARE(Joined(PeakTimes(unused, {"12:30", ":"}, {"up", "up"})), ": : : :"s);
    }

    void peakTimes_anyMoonTimes_comeInOrder()
    {
        for (int rise = 0; rise <= 24 * 60; rise += 7) {
            for (int set = 0; set <= 24 * 60; ++set) {
                const auto text = [](int minutes) {
                    return ZeroPadded(minutes / 60, 2).append(":").append(ZeroPadded(minutes % 60, 2));
                };
                const Periods periods = PeakTimes(unused, {text(rise), text(set)}, unused);
                QVERIFY(periods.major1 < periods.major2);
                QVERIFY(periods.minor1 < periods.minor2);
                QVERIFY(periods.major1 <= "24:00" && periods.minor1 <= "24:00");
                QVERIFY(periods.major2 <= "24:00" || periods.major2 == ":");
                QVERIFY(periods.minor2 <= "24:00" || periods.minor2 == ":");
            }
        }
    }

    void moonTransit_setAfterRise_isTheMiddle()
    {
        QCOMPARE(MoonTransit("01:00", "13:00"), "07:00"s);
        QCOMPARE(MoonTransit("08:30", "08:30"), "08:30"s);
        QCOMPARE(MoonTransit("00:00", "24:00"), "12:00"s);
    }

    void moonTransit_setAfterMidnight_isOnTheDayOfTheMiddle()
    {
        QCOMPARE(MoonTransit("20:00", "06:00"), "01:00"s);
        QCOMPARE(MoonTransit("16:00", "04:00"), "22:00"s);
        QCOMPARE(MoonTransit("18:00", "06:00"), "00:00"s);
    }

    void moonTransit_halfMinute_isTruncated() { QCOMPARE(MoonTransit("01:00", "13:01"), "07:00"s); }

    void moonTransit_arithmetic_isSinglePrecision()
    {
        QCOMPARE(MoonTransit("23:40", "11:20"), "05:29"s);
        QCOMPARE(MoonTransit("00:01", "00:05"), "00:03"s);
        QCOMPARE(MoonTransit("00:01", "00:31"), "00:15"s);
    }

    void oppositeTransit_later_isHalfALunarDayBefore()
    {
        QCOMPARE(OppositeTransit("19:00"), "06:34"s);
        QCOMPARE(OppositeTransit("12:26"), "00:00"s);
    }

    void oppositeTransit_earlier_isHalfALunarDayAfter()
    {
        QCOMPARE(OppositeTransit("07:00"), "19:25"s);
        QCOMPARE(OppositeTransit("00:00"), "12:25"s);
        QCOMPARE(OppositeTransit("11:30"), "23:55"s);
    }

    void oppositeTransit_upToAMinutePastMidnight_countsAsThisDay()
    {
        QCOMPARE(OppositeTransit("11:34"), "23:59"s);
        QCOMPARE(OppositeTransit("11:35"), "00:00"s);
        QCOMPARE(OppositeTransit("11:36"), "00:01"s);
    }

    void oppositeTransit_moreThanAMinutePastMidnight_isNone()
    {
        QCOMPARE(OppositeTransit("11:37"), ":"s);
        QCOMPARE(OppositeTransit("11:50"), ":"s);
        QCOMPARE(OppositeTransit("12:25"), ":"s);
    }

    void minorTimes_onlyFirstMajor_surroundIt()
    {
        QCOMPARE(Joined(MinorTimes("11:50", ":")), "05:37 18:02"s);
    }

    void minorTimes_onlySecondMajor_givesTheSameTimeTwice()
    {
        QCOMPARE(Joined(MinorTimes(":", "11:50")), "05:37 05:37"s);
    }

    void minorTimes_bothMajors_precedeThem()
    {
        QCOMPARE(Joined(MinorTimes("07:00", "19:25")), "00:47 13:12"s);
        QCOMPARE(Joined(MinorTimes("06:13", "18:38")), "00:00 12:25"s);
    }

    void minorTimes_firstMajorTooEarly_surroundTheSecond()
    {
        QCOMPARE(Joined(MinorTimes("05:00", "17:25")), "11:12 23:37"s);
        QCOMPARE(Joined(MinorTimes("06:12", "18:37")), "12:24 :"s);
    }

    void minorTimes_beyondMidnight_isNone()
    {
        QCOMPARE(Joined(MinorTimes("05:22", "17:47")), "11:34 23:59"s);
        QCOMPARE(Joined(MinorTimes("05:23", "17:48")), "11:35 :"s);
        QCOMPARE(Joined(MinorTimes("05:00", ":")), ": 11:12"s);
    }

    void timeToHours_minutes_areSixtieths()
    {
        QCOMPARE(TimeToHours("06:30"), 6.5F);
        QCOMPARE(TimeToHours("00:00"), 0.0F);
        QCOMPARE(TimeToHours("24:00"), 24.0F);
        QCOMPARE(TimeToHours("11:36"), 11.6F);
    }

    void timeToHours_notATime_raisesTypeMismatch()
    {
        for (const char* text : {"", ":", "up", "12", "12:", ":30", "ab:cd"}) {
            QVERIFY(ErrorOf([text] { TimeToHours(text); }) == ErrorNumber::TypeMismatch);
        }
    }

    void hoursToTime_minutes_areTruncated()
    {
        QCOMPARE(HoursToTime(7.9999F), "07:59"s);
        QCOMPARE(HoursToTime(0), "00:00"s);
        QCOMPARE(HoursToTime(12.75F), "12:45"s);
        QCOMPARE(HoursToTime(24), "24:00"s);
    }
};

TEST_CLASS(tst_mPeakTimes)
#include "tst_mPeakTimes.moc"
