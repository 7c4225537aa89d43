#include "AstroTest.h"
#include "astro/Forecast.h"
#include "support/TestClass.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <vector>

using namespace Tarno;

using namespace std::chrono_literals;
using namespace std::string_literals;
using std::chrono::year_month_day;

namespace
{

const LocationTexts sydney{"-33.8", "151.25", "10", "1"};

bool IsBoxText(const std::string& text)
{
    static const QRegularExpression shape(QStringLiteral("^(|:|never|sets|rises|[0-2][0-9]:[0-5][0-9])$"));
    return shape.match(QString::fromStdString(text)).hasMatch();
}

bool AreBoxTexts(const RiseSetForecast& texts)
{
    const std::array all{texts.sunRise, texts.sunSet, texts.moonRise, texts.moonSet,
                         texts.major1,  texts.major2, texts.minor1,   texts.minor2};
    return std::all_of(all.begin(), all.end(), IsBoxText);
}

/// Returns the cells of each line of the reference data.
std::vector<QStringList> ReferenceRows()
{
    QFile file(QStringLiteral(TARNO_TEST_DATA "/forecast.tsv"));
    std::vector<QStringList> rows;
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        file.readLine(); // column names
        while (!file.atEnd()) {
            rows.push_back(
                QString::fromUtf8(file.readLine()).remove(QLatin1Char('\n')).split(QLatin1Char('\t')));
        }
    }
    return rows;
}

/// Returns the cells of `forecast` in the order of the reference rows.
QStringList CellsOf(const DayForecast& forecast)
{
    const MoonForecast& moon = forecast.moon;
    const RiseSetForecast& texts = forecast.riseSet;
    const std::string unsignedPhase = std::to_string(moon.percent);
    const std::string signedNumber = std::to_string(moon.percent * (moon.waxing ? 1 : -1));
    QStringList cells;
    for (const std::string& cell :
         {texts.sunRise, texts.sunSet, texts.moonRise, texts.moonSet, unsignedPhase,
          moon.waxing ? "1"s : "0"s, unsignedPhase, std::to_string(moon.prediction), texts.major1,
          texts.major2, texts.minor1, texts.minor2, moon.SignedPhase(), signedNumber}) {
        cells.append(QString::fromStdString(cell));
    }
    return cells;
}

} // namespace

class tst_Forecast : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void forecast_referencePlacesAndDays_matchInEveryCell_data()
    {
        QTest::addColumn<QStringList>("cells");
        const std::vector<QStringList> rows = ReferenceRows();
        QCOMPARE(rows.size(), std::size_t(300));
        for (const QStringList& cells : rows) {
            QTest::addRow("%s", qPrintable(cells.mid(0, 5).join(QLatin1Char(' ')))) << cells;
        }
    }

    void forecast_referencePlacesAndDays_matchInEveryCell()
    {
        QFETCH(QStringList, cells);
        const auto text = [&cells](int column) { return cells.at(column).toStdString(); };
        const LocationTexts location{text(0), text(1), text(2), text(3)};
        QCOMPARE(CellsOf(Forecast(location, ToDate(text(4)))), cells.mid(5));
    }

    void forecast_combinesMoonAndRiseSet()
    {
        const year_month_day date = 2003y / 1 / 10;
        const DayForecast parts{ForecastMoon(date), ForecastRiseSet(sydney, date)};
        QCOMPARE(CellsOf(Forecast(sydney, date)), CellsOf(parts));
    }

    void moon_18January2003_is98WaningAndGood()
    {
        const MoonForecast moon = ForecastMoon(2003y / 1 / 18);
        QCOMPARE(moon.percent, std::int16_t(98));
        QVERIFY(!moon.waxing);
        QCOMPARE(moon.prediction, std::int16_t(2));
    }

    void moon_2January2003_is6WaningAndFair()
    {
        const MoonForecast moon = ForecastMoon(2003y / 1 / 2);
        QCOMPARE(moon.percent, std::int16_t(6));
        QVERIFY(!moon.waxing);
        QCOMPARE(moon.prediction, std::int16_t(1));
    }

    void moon_5January2003_is14WaxingAndBest()
    {
        const MoonForecast moon = ForecastMoon(2003y / 1 / 5);
        QCOMPARE(moon.percent, std::int16_t(14));
        QVERIFY(moon.waxing);
        QCOMPARE(moon.prediction, std::int16_t(3));
    }

    void moon_10January2003_is48WaxingAndPoor()
    {
        const MoonForecast moon = ForecastMoon(2003y / 1 / 10);
        QCOMPARE(moon.percent, std::int16_t(48));
        QVERIFY(moon.waxing);
        QCOMPARE(moon.prediction, std::int16_t(0));
    }

    void moon_everyDayOfACentury_hasARating()
    {
        using std::chrono::sys_days;
        for (sys_days day = 1950y / 1 / 1; day < sys_days(2050y / 1 / 1); day += std::chrono::days(1)) {
            const MoonForecast moon = ForecastMoon(day);
            QVERIFY(moon.percent >= 0 && moon.percent <= 100);
            QVERIFY(moon.prediction >= 0 && moon.prediction <= 3);
        }
    }

    void signedPhase_waxing_hasNoSign()
    {
        QCOMPARE((MoonForecast{48, true, 0}.SignedPhase()), "48"s);
        QCOMPARE((MoonForecast{0, true, 0}.SignedPhase()), "0"s);
    }

    void signedPhase_waning_isNegative() { QCOMPARE((MoonForecast{98, false, 2}.SignedPhase()), "-98"s); }

    void signedPhase_waningZero_keepsItsSign() { QCOMPARE((MoonForecast{0, false, 1}.SignedPhase()), "-0"s); }

    void riseSet_midsummerAtLatitude80_neverSets()
    {
        const RiseSetForecast texts = ForecastRiseSet({"80", "0", "0", "0"}, 2003y / 6 / 21);
        QCOMPARE(texts.sunRise, "never"s);
        QCOMPARE(texts.sunSet, "sets"s);
    }

    void riseSet_midwinterAtLatitude80_neverRises()
    {
        const RiseSetForecast texts = ForecastRiseSet({"80", "0", "0", "0"}, 2003y / 12 / 21);
        QCOMPARE(texts.sunRise, "never"s);
        QCOMPARE(texts.sunSet, "rises"s);
    }

    void riseSet_sunThatOnlySets_neverRises()
    {
        const RiseSetForecast texts = ForecastRiseSet({"67", "0", "0", "0"}, 2000y / 7 / 10);
        QCOMPARE(texts.sunRise, "never"s);
        QCOMPARE(texts.sunSet, "rises"s);
    }

    void riseSet_sunThatOnlyRises_hasAnEmptySunset()
    {
        const RiseSetForecast texts = ForecastRiseSet({"69", "0", "0", "0"}, 2000y / 5 / 20);
        QCOMPARE(texts.sunRise, "00:26"s);
        QCOMPARE(texts.sunSet, ""s);
    }

    void riseSet_moonUpAllDay_hasNoPeriods()
    {
        const RiseSetForecast texts = ForecastRiseSet({"80", "0", "0", "0"}, 2003y / 12 / 10);
        QCOMPARE(texts.moonRise, "never"s);
        QCOMPARE(texts.moonSet, "sets"s);
        for (const std::string& period : {texts.major1, texts.major2, texts.minor1, texts.minor2}) {
            QCOMPARE(period, ":"s);
        }
    }

    void riseSet_moonThatDoesNotSet_takesTheSetOfTheDayAfter()
    {
        const LocationTexts location{"40", "0", "0", "0"};
        const RiseSetForecast today = ForecastRiseSet(location, 2000y / 1 / 14);
        QCOMPARE(today.moonRise, "11:46"s);
        QCOMPARE(today.moonSet, ":"s);
        QVERIFY(ForecastRiseSet(location, 2000y / 1 / 15).moonSet < "01:00");
        QVERIFY(today.major2 > "18:00" && today.major2 < "18:30"); // between 11:46 and a time after midnight
    }

    void riseSet_moonThatDoesNotRise_takesTheRiseOfTheDayBefore()
    {
        const LocationTexts location{"-31.95", "115.86", "8", "1"};
        const RiseSetForecast today = ForecastRiseSet(location, 2006y / 8 / 15);
        QCOMPARE(today.moonRise, ":"s);
        QCOMPARE(today.moonSet, "10:19"s);
        QVERIFY(ForecastRiseSet(location, 2006y / 8 / 14).moonRise > "23:00");
        QVERIFY(today.major1 > "04:30" && today.major1 < "05:15");
    }

    void riseSet_daylightSaving_addsAnHourInSummerOnly()
    {
        const LocationTexts without{"-33", "151", "10", "0"};
        const LocationTexts with{"-33", "151", "10", "1"};
        const LocationTexts hourAhead{"-33", "151", "11", "0"};
        const auto sunRise = [](const LocationTexts& location, year_month_day date) {
            return ForecastRiseSet(location, date).sunRise;
        };
        QCOMPARE(sunRise(with, 2003y / 1 / 15), sunRise(hourAhead, 2003y / 1 / 15));
        QCOMPARE(sunRise(with, 2003y / 7 / 15), sunRise(without, 2003y / 7 / 15));
    }

    void riseSet_endDay_showsStandardTimes()
    {
        const RiseSetForecast with = ForecastRiseSet({"40", "0", "0", "1"}, 2003y / 10 / 26);
        const RiseSetForecast without = ForecastRiseSet({"40", "0", "0", "0"}, 2003y / 10 / 26);
        QCOMPARE(with.sunRise, without.sunRise);
        QCOMPARE(with.sunSet, without.sunSet);
    }

    void riseSet_startDayInTheFirstHour_hasNoTime()
    {
        // the time zone is so far off that the sun rises just after midnight
        const LocationTexts withoutFlag{"40", "0", "-5", "0"};
        const LocationTexts withFlag{"40", "0", "-6", "1"};
        const std::string wholeDay = ForecastRiseSet(withoutFlag, 2003y / 3 / 30).sunRise;
        QVERIFY(wholeDay < "01:00");
        QCOMPARE(ForecastRiseSet(withFlag, 2003y / 3 / 30).sunRise, ":"s);
    }

    void riseSet_invalidNumbers_raiseTypeMismatch_data()
    {
        QTest::addColumn<QStringList>("texts");
        const auto row = [](const char* name, const char* latitude, const char* longitude, const char* gmt) {
            QTest::newRow(name) << QStringList{QLatin1String(latitude), QLatin1String(longitude),
                                               QLatin1String(gmt)};
        };
        row("latitude with a letter", "40 N", "10", "1");
        row("longitude in degrees and minutes", "40", "10 30", "1");
        row("word for the time zone", "40", "10", "CET");
        row("decimal comma", "40,5", "10", "1");
        row("not a number", "40", "nan", "1");
        row("empty latitude", "", "10", "1");
        row("empty longitude", "40", "", "1");
        row("empty time zone", "40", "10", "");
    }

    void riseSet_invalidNumbers_raiseTypeMismatch()
    {
        QFETCH(QStringList, texts);
        for (const std::string flag : {"0", "1"}) {
            const LocationTexts location{texts.at(0).toStdString(), texts.at(1).toStdString(),
                                         texts.at(2).toStdString(), flag};
            QVERIFY(ErrorOf([&] { ForecastRiseSet(location, 2003y / 7 / 1); }) == ErrorNumber::TypeMismatch);
            QVERIFY(ErrorOf([&] { Forecast(location, 2003y / 1 / 1); }) == ErrorNumber::TypeMismatch);
        }
    }

    void riseSet_numberTooLarge_raisesOverflow()
    {
        const LocationTexts location{"40", "1e999", "1", "0"};
        QVERIFY(ErrorOf([&] { ForecastRiseSet(location, 2003y / 7 / 1); }) == ErrorNumber::Overflow);
    }

    void riseSet_extremePlacesAndDays_giveBoxTexts_data()
    {
        QTest::addColumn<QStringList>("texts");
        const auto row = [](const char* name, const char* latitude, const char* longitude, const char* gmt) {
            QTest::newRow(name) << QStringList{QLatin1String(latitude), QLatin1String(longitude),
                                               QLatin1String(gmt)};
        };
        row("ordinary place", "40", "10", "1");
        row("north pole", "90", "0", "0");
        row("south pole", "-90", "0", "0");
        row("beyond the pole", "95", "20", "1");
        row("longitude of many turns", "40", "1000000", "1");
        row("huge longitude", "-40", "-1e300", "1");
        row("huge latitude", "1e300", "10", "1");
        row("time zone of weeks", "40", "10", "-1000");
        row("huge time zone", "40", "10", "1e300");
    }

    void riseSet_extremePlacesAndDays_giveBoxTexts()
    {
        QFETCH(QStringList, texts);
        for (const std::string flag : {"0", "1"}) {
            const LocationTexts location{texts.at(0).toStdString(), texts.at(1).toStdString(),
                                         texts.at(2).toStdString(), flag};
            for (const year_month_day date : {1y / 1 / 1, 1y / 12 / 31, 1582y / 10 / 10, 2003y / 3 / 30,
                                              2003y / 6 / 21, 9999y / 1 / 1, 9999y / 12 / 31}) {
                QVERIFY(AreBoxTexts(Forecast(location, date).riseSet));
            }
        }
    }

    void isComplete_anyTextMissing_isFalse()
    {
        QVERIFY((LocationTexts{"1", "2", "3", ""}.IsComplete()));
        QVERIFY(!(LocationTexts{"", "2", "3", "1"}.IsComplete()));
        QVERIFY(!(LocationTexts{"1", "", "3", "1"}.IsComplete()));
        QVERIFY(!(LocationTexts{"1", "2", "", "1"}.IsComplete()));
    }
};

TEST_CLASS(tst_Forecast)
#include "tst_Forecast.moc"
