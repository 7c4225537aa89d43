#include "core/Conversions.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <locale>

using namespace Tarno;

using namespace std::chrono_literals;
using namespace std::string_literals;

class tst_Conversions : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void toDouble_aNumber_isRead_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("whole") << "7"s << 7.0;
        QTest::newRow("negative") << "-36.8485"s << -36.8485;
        QTest::newRow("plus sign") << "+3"s << 3.0;
        QTest::newRow("leading zeros") << "007"s << 7.0;
        QTest::newRow("no digit before the point") << ".5"s << 0.5;
        QTest::newRow("negative, no digit before the point") << "-.5"s << -0.5;
        QTest::newRow("no digit after the point") << "5."s << 5.0;
        QTest::newRow("exponent") << "1e2"s << 100.0;
        QTest::newRow("upper case exponent") << "25E-1"s << 2.5;
        QTest::newRow("blanks around") << " \t12.5 "s << 12.5;
    }

    void toDouble_aNumber_isRead()
    {
        QFETCH(std::string, text);
        QTEST(ToDouble(text), "value");
    }

    void toDouble_anyOtherText_isTypeMismatch_data()
    {
        QTest::addColumn<std::string>("text");
        for (const char* text :
             {"",    " ",    "abc", "1,5", "1 2", "--1", "+-1", "-+1", "1e",       "0x10",
              "inf", "-inf", "nan", ".",   "-",   "+",   "12a", "a12", "\xD9\xA1", "1\n"}) {
            QTest::addRow("\"%s\"", text) << std::string(text);
        }
        QTest::newRow("zero byte") << "1\0"s;
    }

    void toDouble_anyOtherText_isTypeMismatch()
    {
        QFETCH(std::string, text);
        QCOMPARE(RaisedNumber([&] { ToDouble(text); }), 13);
    }

    void toDouble_tooLarge_isOverflow()
    {
        QCOMPARE(RaisedNumber([] { ToDouble("1e400"); }), 6);
        QCOMPARE(RaisedNumber([] { ToDouble("-1e400"); }), 6);
    }

    void toDouble_underALocaleWithDecimalComma_readsThePoint()
    {
        struct Comma final : std::numpunct<char> {
            char do_decimal_point() const override { return ','; }
        };

        const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
        const double value = ToDouble("1.5");
        const std::string text = FromDouble(2.5);
        std::locale::global(before);
        QCOMPARE(value, 1.5);
        QCOMPARE(text, "2.5"s);
    }

    void toInt16_half_isRoundedToEven_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("0.5") << "0.5"s << 0;
        QTest::newRow("1.5") << "1.5"s << 2;
        QTest::newRow("2.5") << "2.5"s << 2;
        QTest::newRow("-0.5") << "-0.5"s << 0;
        QTest::newRow("-1.5") << "-1.5"s << -2;
        QTest::newRow("-2.5") << "-2.5"s << -2;
        QTest::newRow("just under") << "2.49"s << 2;
        QTest::newRow("just over") << "2.51"s << 3;
        QTest::newRow("negative, just under") << "-2.51"s << -3;
        QTest::newRow("largest under a half") << "0.49999999999999994"s << 0;
    }

    void toInt16_half_isRoundedToEven()
    {
        QFETCH(std::string, text);
        QFETCH(int, value);
        QCOMPARE(static_cast<int>(ToInt16(text)), value);
        QCOMPARE(static_cast<int>(ToInt32(text)), value);
    }

    void toInt16_beyondItsLimits_isOverflow()
    {
        QCOMPARE(static_cast<int>(ToInt16("32767")), 32767);
        QCOMPARE(static_cast<int>(ToInt16("32767.4")), 32767);
        QCOMPARE(static_cast<int>(ToInt16("-32768")), -32768);
        QCOMPARE(static_cast<int>(ToInt16("-32768.5")), -32768);
        for (const char* text : {"32767.5", "32768", "-32769", "1e300"}) {
            QCOMPARE(RaisedNumber([&] { ToInt16(text); }), 6);
        }
    }

    void toInt32_beyondItsLimits_isOverflow()
    {
        QCOMPARE(ToInt32("2147483647"), 2147483647);
        QCOMPARE(ToInt32("-2147483648"), -2147483647 - 1);
        for (const char* text : {"2147483648", "-2147483649", "1e300"}) {
            QCOMPARE(RaisedNumber([&] { ToInt32(text); }), 6);
        }
    }

    void toInt_textWithoutNumber_isTypeMismatch()
    {
        QCOMPARE(RaisedNumber([] { ToInt16(""); }), 13);
        QCOMPARE(RaisedNumber([] { ToInt16("abc"); }), 13);
        QCOMPARE(RaisedNumber([] { ToInt32("never"); }), 13);
    }

    void roundToInt16_roundsLikeToInt16()
    {
        QCOMPARE(static_cast<int>(RoundToInt16(2.5)), 2);
        QCOMPARE(static_cast<int>(RoundToInt16(-3.5)), -4);
        QCOMPARE(RaisedNumber([] { RoundToInt16(32767.5); }), 6);
        QCOMPARE(RaisedNumber([] { RoundToInt16(std::numeric_limits<double>::quiet_NaN()); }), 6);
    }

    void fromDouble_aNumber_isItsShortestText_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<std::string>("text");
        QTest::newRow("whole") << 10.0 << "10"s;
        QTest::newRow("tenth") << 0.1 << "0.1"s;
        QTest::newRow("negative") << -174.7633 << "-174.7633"s;
        QTest::newRow("small") << 1e-7 << "0.0000001"s;
        QTest::newRow("large") << 1e21 << "1000000000000000000000"s;
    }

    void fromDouble_aNumber_isItsShortestText()
    {
        QFETCH(double, value);
        QTEST(FromDouble(value), "text");
    }

    void toDate_aDate_isRead()
    {
        QVERIFY(ToDate("2003-02-05") == 2003y / 2 / 5);
        QVERIFY(ToDate("2003-2-5") == 2003y / 2 / 5);
        QVERIFY(ToDate(" 2004-02-29 ") == 2004y / 2 / 29);
        QVERIFY(ToDate("0001-01-01") == 1y / 1 / 1);
        QVERIFY(ToDate("9999-12-31") == 9999y / 12 / 31);
    }

    void toDate_anyOtherText_isTypeMismatch_data()
    {
        QTest::addColumn<std::string>("text");
        for (const char* text : {"",
                                 "never",
                                 "2003-02",
                                 "2003-02-",
                                 "2003--05",
                                 "-2003-02-05",
                                 "03-02-05",
                                 "20030-02-05",
                                 "2003-02-29",
                                 "2003-13-01",
                                 "2003-00-01",
                                 "2003-01-00",
                                 "2003-04-31",
                                 "0000-01-01",
                                 "2003/02/05",
                                 "2003-02-05x",
                                 "2003-02-05-01",
                                 "2003-002-05",
                                 "2003-02-005",
                                 "2003- 2-05",
                                 "2003-+2-05",
                                 "2003-02-05 06:00"}) {
            QTest::addRow("\"%s\"", text) << std::string(text);
        }
    }

    void toDate_anyOtherText_isTypeMismatch()
    {
        QFETCH(std::string, text);
        QCOMPARE(RaisedNumber([&] { ToDate(text); }), 13);
    }

    void fromDate_aDate_isPadded()
    {
        QCOMPARE(FromDate(2003y / 2 / 5), "2003-02-05"s);
        QCOMPARE(FromDate(987y / 12 / 31), "0987-12-31"s);
    }

    void zeroPadded_padsToTheWidth()
    {
        QCOMPARE(ZeroPadded(5, 2), "05"s);
        QCOMPARE(ZeroPadded(0, 2), "00"s);
        QCOMPARE(ZeroPadded(12, 2), "12"s);
        QCOMPARE(ZeroPadded(123, 2), "123"s);
    }

    void trimmed_removesSurroundingBlanks()
    {
        QCOMPARE(std::string(Trimmed(" \t a b\t ")), "a b"s);
        QCOMPARE(std::string(Trimmed("a")), "a"s);
        QCOMPARE(std::string(Trimmed(" \t ")), ""s);
        QCOMPARE(std::string(Trimmed("")), ""s);
        QCOMPARE(std::string(Trimmed("\na ")), "\na"s);
    }
};

TEST_CLASS(tst_Conversions)
#include "tst_Conversions.moc"
