#include "AstroTest.h"
#include "astro/DaylightSaving.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace mRiseSet;
using namespace std::chrono_literals;
using namespace std::string_literals;
using std::chrono::year_month_day;

Q_DECLARE_METATYPE(std::chrono::year_month_day)

class tst_DaylightSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void lastSunday_monthEndingOnAnotherDay_isBeforeItsEnd()
    {
        QCOMPARE(LastSundayOfMarch(2003y), year_month_day(2003y / 3 / 30));
        QCOMPARE(LastSundayOfOctober(2003y), year_month_day(2003y / 10 / 26));
        QCOMPARE(LastSundayOfOctober(2009y), year_month_day(2009y / 10 / 25));
    }

    void lastSunday_monthEndingOnASunday_isThe31st()
    {
        QCOMPARE(LastSundayOfMarch(2002y), year_month_day(2002y / 3 / 31));
        QCOMPARE(LastSundayOfOctober(2010y), year_month_day(2010y / 10 / 31));
    }

    void dstOffset_flagOtherThanOne_changesNothing()
    {
        for (const char* flag : {"0", "", "True", "11", " 1"}) {
            const DaylightSaving clocks = DSTOffset(" +10", flag, "40", 2003y / 3 / 30);
            QCOMPARE(clocks.gmt, " +10"s);
            QVERIFY(!clocks.startsToday);
            QVERIFY(!clocks.endsToday);
        }
    }

    void dstOffset_dateAndHemisphere_determineTheOffset_data()
    {
        QTest::addColumn<std::string>("latitude");
        QTest::addColumn<year_month_day>("date");
        QTest::addColumn<std::string>("gmt");
        QTest::addColumn<bool>("startsToday");
        QTest::addColumn<bool>("endsToday");
        const auto row = [](const char* name, const std::string& latitude, year_month_day date,
                            const std::string& gmt, bool startsToday = false, bool endsToday = false) {
            QTest::newRow(name) << latitude << date << gmt << startsToday << endsToday;
        };

        row("north, new year", "40", 2003y / 1 / 1, "10");
        row("north, day before the start", "40", 2003y / 3 / 29, "10");
        row("north, start day", "40", 2003y / 3 / 30, "11", true);
        row("north, summer", "40", 2003y / 7 / 15, "11");
        row("north, end day", "40", 2003y / 10 / 26, "11", false, true);
        row("north, day after the end", "40", 2003y / 10 / 27, "10");
        row("equator counts as north", "0", 2003y / 7 / 15, "11");
        row("south, January", "-33", 2003y / 1 / 15, "11");
        row("south, day before the end", "-33", 2003y / 3 / 29, "11");
        row("south, end day", "-33", 2003y / 3 / 30, "11", false, true);
        row("south, day after the end", "-33", 2003y / 3 / 31, "10");
        row("south, April", "-33", 2003y / 4 / 1, "10");
        row("south, July", "-33", 2003y / 7 / 15, "10");
        row("south, day before the start", "-33", 2003y / 10 / 25, "10");
        row("south, start day", "-33", 2003y / 10 / 26, "11", true);
        row("south, December", "-33", 2003y / 12 / 31, "11");
        row("south, year 1", "-33", 1y / 1 / 1, "11");
        row("south, year 9999", "-33", 9999y / 12 / 31, "11");
    }

    void dstOffset_dateAndHemisphere_determineTheOffset()
    {
        QFETCH(std::string, latitude);
        QFETCH(year_month_day, date);
        const DaylightSaving clocks = DSTOffset("10", "1", latitude, date);
        QTEST(clocks.gmt, "gmt");
        QTEST(clocks.startsToday, "startsToday");
        QTEST(clocks.endsToday, "endsToday");
    }

    void dstOffset_fractionsOfAnHour_areKept()
    {
        QCOMPARE(DSTOffset("-3.5", "1", "47", 2003y / 7 / 15).gmt, "-2.5"s);
        QCOMPARE(DSTOffset("12.75", "1", "-44", 2003y / 1 / 15).gmt, "13.75"s);
        QCOMPARE(DSTOffset("-1", "1", "38", 2003y / 7 / 15).gmt, "0"s);
    }

    void dstOffset_invalidNumbers_raiseTypeMismatch()
    {
        const auto dstOffset = [](const char* gmt, const char* latitude) {
            return ErrorOf([=] { DSTOffset(gmt, "1", latitude, 2003y / 7 / 15); });
        };
        QVERIFY(dstOffset("ten", "40") == ErrorNumber::TypeMismatch);
        QVERIFY(dstOffset("10", "40 N") == ErrorNumber::TypeMismatch);
        QVERIFY(dstOffset("10", "40") == std::nullopt);
    }

    void hourEarlier_subtractsAnHour()
    {
        QCOMPARE(HourEarlier("05:10"), "04:10"s);
        QCOMPARE(HourEarlier("10:05"), "09:05"s);
        QCOMPARE(HourEarlier("01:59"), "00:59"s);
        QCOMPARE(HourEarlier("24:00"), "23:00"s);
    }

    void hourEarlier_firstHourOfTheDay_isNone() { QCOMPARE(HourEarlier("00:30"), ":"s); }

    void corrected_startDay_movesTimesBeforeTwo()
    {
        const DaylightSaving startDay{"10", true, false};
        QCOMPARE(CorrectedForChangeover("00:30", startDay), ":"s);
        QCOMPARE(CorrectedForChangeover("01:59", startDay), "00:59"s);
        QCOMPARE(CorrectedForChangeover("02:00", startDay), "02:00"s);
        QCOMPARE(CorrectedForChangeover("18:00", startDay), "18:00"s);
    }

    void corrected_endDay_movesTimesFromFourOn()
    {
        const DaylightSaving endDay{"10", false, true};
        QCOMPARE(CorrectedForChangeover("00:30", endDay), "00:30"s);
        QCOMPARE(CorrectedForChangeover("03:59", endDay), "03:59"s);
        QCOMPARE(CorrectedForChangeover("04:00", endDay), "03:00"s);
        QCOMPARE(CorrectedForChangeover("24:00", endDay), "23:00"s);
    }

    void corrected_endDayOfLatitude40_shows0510As0410()
    {
        const DaylightSaving clocks = DSTOffset("0", "1", "40", LastSundayOfOctober(2003y));
        QCOMPARE(CorrectedForChangeover("05:10", clocks), "04:10"s);
    }

    void corrected_ordinaryDay_changesNothing()
    {
        const DaylightSaving clocks{"10", false, false};
        QCOMPARE(CorrectedForChangeover("01:30", clocks), "01:30"s);
        QCOMPARE(CorrectedForChangeover("12:00", clocks), "12:00"s);
    }

    void corrected_otherTexts_areUnchanged()
    {
        const DaylightSaving bothDays{"10", true, true};
        for (const std::string text : {"", ":", "up", "down", "never", "1:30", "01:3", "0x:30", "001:30"}) {
            QCOMPARE(CorrectedForChangeover(text, bothDays), text);
        }
    }
};

TEST_CLASS(tst_DaylightSaving)
#include "tst_DaylightSaving.moc"
