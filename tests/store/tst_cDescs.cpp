#include "store/cDescs.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Words = std::vector<std::string>;
using Description = std::string (cDescs::*)(std::string_view) const;

} // namespace

class tst_cDescs : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void code_isDescribedByItsWord_data()
    {
        const Words tides{"Top", "Run Out", "Bottom", "Run In"};
        QTest::addColumn<Description>("describe");
        QTest::addColumn<Words>("words");
        QTest::newRow("tide at the start") << &cDescs::TideStartDesc << tides;
        QTest::newRow("tide at the end") << &cDescs::TideEndDesc << tides;
        QTest::newRow("action") << &cDescs::FishActionDesc << Words{"Slow", "Fair", "Good", "Hot!"};
        QTest::newRow("prediction") << &cDescs::PredictionDesc << Words{"Poor", "Fair", "Good", "Best"};
        QTest::newRow("weather") << &cDescs::WeatherDesc
                                 << Words{"Stormy", "Rainy",      "Showery", "Overcast",
                                          "Cloudy", "Few Clouds", "Clear"};
        QTest::newRow("clarity") << &cDescs::WaterClarityDesc << Words{"Clear", "Cloudy", "Muddy"};
        QTest::newRow("wind strength")
            << &cDescs::WindStrengthDesc << Words{"Calm", "Light", "Moderate", "Strong"};
        QTest::newRow("wind direction")
            << &cDescs::WindDirDesc << Words{"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
        QTest::newRow("pressure") << &cDescs::AirPressureDesc << Words{"Rising", "Falling"};
    }

    void code_isDescribedByItsWord()
    {
        QFETCH(Description, describe);
        QFETCH(Words, words);
        const cDescs descs;
        Words described;
        for (std::size_t code = 0; code < words.size(); ++code) {
            described.push_back((descs.*describe)(std::to_string(code)));
        }
        QCOMPARE(described, words);
        QCOMPARE((descs.*describe)(std::to_string(words.size())), "Not Set"s);
    }

    void anyOtherText_isNotSet_data()
    {
        QTest::addColumn<std::string>("text");
        for (const char* text : {"", "-1", "9", "/", ":", " 1", "1 ", "01", "+1", "1.0", "10", "x", "Top"}) {
            QTest::addRow("\"%s\"", text) << std::string(text);
        }
    }

    void anyOtherText_isNotSet()
    {
        QFETCH(std::string, text);
        const cDescs descs;
        for (const Description describe :
             {&cDescs::TideStartDesc, &cDescs::TideEndDesc, &cDescs::FishActionDesc, &cDescs::PredictionDesc,
              &cDescs::WeatherDesc, &cDescs::WaterClarityDesc, &cDescs::WindStrengthDesc,
              &cDescs::WindDirDesc, &cDescs::AirPressureDesc}) {
            QCOMPARE((descs.*describe)(text), "Not Set"s);
        }
    }

    void moonPhase_percentage_isWaxingOrWaning_data()
    {
        QTest::addColumn<std::string>("stored");
        QTest::addColumn<std::string>("shown");
        const auto row = [](const char* stored, const char* shown) {
            QTest::addRow("\"%s\"", stored) << std::string(stored) << std::string(shown);
        };
        row("", "Not Set");
        row("-45", "Waning, 45%");
        row("7", "Waxing, 07%");
        row("0", "Waxing, 00%");
        row("-0", "Waning, 00%");
        row("100", "Waxing, 00%");
        row("-100", "Waning, 00%");
        row("-3", "Waning, 03%");
        row("99", "Waxing, 99%");
        row("045", "Waxing, 45%");
        row("2.5", "Waxing, 02%");
        row(" -45", "Waxing, 45%"); // only the first character is checked for "-"
    }

    void moonPhase_percentage_isWaxingOrWaning()
    {
        QFETCH(std::string, stored);
        QTEST(cDescs().MoonPhaseDesc(stored), "shown");
    }

    void moonPhase_notANumber_isTypeMismatch()
    {
        for (const char* text : {"full", "-", " ", "45%"}) {
            QCOMPARE(RaisedNumber([&] { cDescs().MoonPhaseDesc(text); }), 13);
        }
    }

    void moonPhase_beyond16Bits_isOverflow()
    {
        QCOMPARE(RaisedNumber([] { cDescs().MoonPhaseDesc("32768"); }), 6);
        QCOMPARE(RaisedNumber([] { cDescs().MoonPhaseDesc("-40000"); }), 6);
        QCOMPARE(RaisedNumber([] { cDescs().MoonPhaseDesc("-32768"); }), 6);
        QCOMPARE(cDescs().MoonPhaseDesc("-32767"), "Waning, 67%");
    }
};

TEST_CLASS(tst_cDescs)
#include "tst_cDescs.moc"
