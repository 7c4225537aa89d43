#include "AstroTest.h"
#include "astro/mMoonPhase.h"
#include "support/TestClass.h"

#include <cmath>

using namespace Tarno;

using namespace mMoonPhase;
using namespace std::chrono_literals;
using namespace std::string_literals;
using std::chrono::year_month_day;

namespace
{

Light LightOn(year_month_day date)
{
    return LitPercent(static_cast<float>(JulianDay(date) - 0.5));
}

} // namespace

class tst_mMoonPhase : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void julianDay_18January2003_hasAFractionOfADay()
    {
        QVERIFY(std::abs(JulianDay(2003y / 1 / 18) - 2452658.298) < 0.0005);
    }

    void julianDay_monthBetweenTwoQuarterDays_isExactlyBetweenThem()
    {
        QCOMPARE(std::fmod(JulianDay(2017y / 10 / 5), 0.25), 0.125);
        QVERIFY(JulianDay(6617y / 10 / 13) == 4138156.125);
    }

    void litPercent_fullMoonOfJanuary2003_is98()
    {
        const Light light = LightOn(2003y / 1 / 18);
        QCOMPARE(RoundToInt16(light.percent), std::int16_t(98));
        QVERIFY(!light.waxing);
    }

    void litPercent_newMoonOfJanuary2003_is6_36() { QCOMPARE(LightOn(2003y / 1 / 2).percent, 6.36F); }

    void litPercent_newMoonOfJanuary2003_countsAsWaning() { QVERIFY(!LightOn(2003y / 1 / 2).waxing); }

    void litPercent_weekAfterTheNewMoon_increases()
    {
        const Light fifth = LightOn(2003y / 1 / 5);
        QCOMPARE(RoundToInt16(fifth.percent), std::int16_t(14));
        QVERIFY(fifth.waxing);
        const Light tenth = LightOn(2003y / 1 / 10);
        QCOMPARE(RoundToInt16(tenth.percent), std::int16_t(48));
        QVERIFY(tenth.waxing);
    }

    void litPercent_justPastFull_isWaxingIfTheTruncatedEarlierPercentageIsLower()
    {
        const Light light = LightOn(1952y / 8 / 5); // 99.17 a quarter of a day before
        QCOMPARE(light.percent, 99.14F);
        QVERIFY(light.waxing);
    }

    void litPercent_unchangedWholePercentage_isWaning()
    {
        const Light light = LightOn(2004y / 2 / 6);
        QCOMPARE(light.percent, 99.0F);
        QVERIFY(!light.waxing);
    }

    void litPercent_anyDay_hasTwoDecimals()
    {
        for (int quarterDay = 0; quarterDay < 4000; ++quarterDay) {
            const float percent = LitPercent(static_cast<float>(2452000 + 0.25 * quarterDay)).percent;
            QVERIFY(percent >= 0 && percent <= 100);
            QCOMPARE(percent, static_cast<float>(std::round(percent * 100.0) / 100));
        }
    }

    void litPercent_synodicMonth_rises100AndFalls100()
    {
        const float full = -4.867F; // the day number of a full moon
        QVERIFY(LitPercent(full + 0.01F).percent > 99.9F);
        QVERIFY(LitPercent(full + 14.76529F).percent < 0.1F);
        QVERIFY(LitPercent(full + 29.53F).percent > 99.9F);
        QVERIFY(!LitPercent(full + 7).waxing);
        QVERIFY(LitPercent(full + 22).waxing);
    }

    void litPercent_daysBeforeDayZero_foldBack()
    {
        const float month = 29.53058F;
        for (int day = -29; day < -6; ++day) {
            const auto jd = static_cast<float>(day);
            const Light before = LitPercent(jd);
            const Light after = LitPercent(jd + month);
            QVERIFY(before.percent >= 0 && before.percent <= 100);
            QVERIFY(std::abs(before.percent - after.percent) < 0.02F);
        }
    }

    void rating_bandEdges_belongToTheirBand_data()
    {
        QTest::addColumn<float>("first");
        QTest::addColumn<float>("last");
        QTest::addColumn<std::string>("waxing");
        QTest::addColumn<std::string>("waning");

        QTest::newRow("new moon") << 0.0F << 6.78F << "Good"s
                                  << "Fair"s;
        QTest::newRow("from 2 days") << 6.79F << 20.34F << "Best"s
                                     << "Fair"s;
        QTest::newRow("from 6 days") << 20.35F << 27.12F << "Best"s
                                     << "Good"s;
        QTest::newRow("from 8 days") << 27.13F << 33.9F << "Good"s
                                     << "Good"s;
        QTest::newRow("from 10 days") << 33.91F << 40.68F << "Fair"s
                                      << "Fair"s;
        QTest::newRow("from 12 days") << 40.69F << 74.58F << "Poor"s
                                      << "Poor"s;
        QTest::newRow("from 22 days") << 74.59F << 88.14F << "Fair"s
                                      << "Fair"s;
        QTest::newRow("from 26 days") << 88.15F << 94.92F << "Best"s
                                      << "Best"s;
        QTest::newRow("full moon") << 94.93F << 100.0F << "Good"s
                                   << "Good"s;
    }

    void rating_bandEdges_belongToTheirBand()
    {
        QFETCH(float, first);
        QFETCH(float, last);
        QFETCH(std::string, waxing);
        QFETCH(std::string, waning);
        const auto starsOf = [](const std::string& rating) {
            return rating == "Poor" ? "*"s : rating == "Fair" ? "**"s : rating == "Good" ? "***"s : "****"s;
        };
        for (const float percent : {first, (first + last) / 2, last}) {
            QCOMPARE(std::string(Rating(percent, true).rating), waxing);
            QCOMPARE(std::string(Rating(percent, true).stars), starsOf(waxing));
            QCOMPARE(std::string(Rating(percent, false).rating), waning);
            QCOMPARE(std::string(Rating(percent, false).stars), starsOf(waning));
        }
    }

    void rating_outsideAllBands_isEmpty()
    {
        for (const float percent : {-0.01F, 6.785F, 94.925F, 100.01F, std::nanf("")}) {
            QCOMPARE(Rating(percent, true).rating, std::string_view());
            QCOMPARE(Rating(percent, true).stars, std::string_view());
        }
    }
};

TEST_CLASS(tst_mMoonPhase)
#include "tst_mMoonPhase.moc"
