#include "core/Variant.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_Variant : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void emptyToNegative_noInteger_isMinusOne_data()
    {
        QTest::addColumn<Variant>("value");
        QTest::newRow("empty") << Variant(Empty());
        QTest::newRow("null") << Variant(Null());
        QTest::newRow("empty text") << Variant(""s);
        QTest::newRow("not a number") << Variant("abc"s);
        QTest::newRow("blank") << Variant(" "s);
        QTest::newRow("too large text") << Variant("32768"s);
        QTest::newRow("too large number") << Variant(40000.0);
    }

    void emptyToNegative_noInteger_isMinusOne()
    {
        QFETCH(Variant, value);
        QCOMPARE(static_cast<int>(mMain::EmptyToNegative(value)), -1);
    }

    void emptyToNegative_number_isThatNumber_data()
    {
        QTest::addColumn<Variant>("value");
        QTest::addColumn<int>("number");
        QTest::newRow("text 7") << Variant("7"s) << 7;
        QTest::newRow("text 0") << Variant("0"s) << 0;
        QTest::newRow("text, negative") << Variant("-3"s) << -3;
        QTest::newRow("text, half to even") << Variant("2.5"s) << 2;
        QTest::newRow("number 7") << Variant(7.0) << 7;
        QTest::newRow("number 0") << Variant(0.0) << 0;
        QTest::newRow("number, half to even") << Variant(3.5) << 4;
    }

    void emptyToNegative_number_isThatNumber()
    {
        QFETCH(Variant, value);
        QTEST(static_cast<int>(mMain::EmptyToNegative(value)), "number");
    }

    void nullToFalse_nullOrZero_isFalse()
    {
        QVERIFY(!mMain::NullToFalse(Null()));
        QVERIFY(!mMain::NullToFalse(Empty()));
        QVERIFY(!mMain::NullToFalse(0.0));
        QVERIFY(!mMain::NullToFalse("0"s));
    }

    void nullToFalse_anyOtherNumber_isTrue()
    {
        QVERIFY(mMain::NullToFalse(5.0));
        QVERIFY(mMain::NullToFalse(-1.0));
        QVERIFY(mMain::NullToFalse(0.5));
        QVERIFY(mMain::NullToFalse("-1"s));
    }

    void nullToFalse_textWithoutNumber_isTypeMismatch()
    {
        QCOMPARE(RaisedNumber([] { mMain::NullToFalse("abc"s); }), 13);
        QCOMPARE(RaisedNumber([] { mMain::NullToFalse(""s); }), 13);
    }

    void compMe_twoValues_isTrueWhenOutOfOrder_data()
    {
        enum Order { Less, Equal, Greater }; // of the second value compared to the first

        QTest::addColumn<Variant>("first");
        QTest::addColumn<Variant>("second");
        QTest::addColumn<int>("order");
        QTest::newRow("numbers, less") << Variant(10.0) << Variant(9.0) << int(Less);
        QTest::newRow("numbers, greater") << Variant(9.0) << Variant(10.0) << int(Greater);
        QTest::newRow("numbers, equal") << Variant(9.0) << Variant(9.0) << int(Equal);
        QTest::newRow("texts, less") << Variant("9"s) << Variant("10"s) << int(Less);
        QTest::newRow("texts, greater") << Variant("10"s) << Variant("9"s) << int(Greater);
        QTest::newRow("texts, equal") << Variant("a"s) << Variant("a"s) << int(Equal);
        QTest::newRow("number after text") << Variant("1"s) << Variant(2.0) << int(Less);
        QTest::newRow("text after number") << Variant(2.0) << Variant("1"s) << int(Greater);
        QTest::newRow("empty and a positive number") << Variant(1.0) << Variant(Empty()) << int(Less);
        QTest::newRow("empty and zero") << Variant(Empty()) << Variant(0.0) << int(Equal);
        QTest::newRow("empty and a text") << Variant("a"s) << Variant(Empty()) << int(Less);
        QTest::newRow("empty and an empty text") << Variant(""s) << Variant(Empty()) << int(Equal);
        QTest::newRow("empty and empty") << Variant(Empty()) << Variant(Empty()) << int(Equal);
    }

    void compMe_twoValues_isTrueWhenOutOfOrder()
    {
        QFETCH(Variant, first);
        QFETCH(Variant, second);
        QFETCH(int, order);
        const bool less = order == 0;
        const bool equal = order == 1;
        const bool greater = order == 2;
        QCOMPARE(mMain::CompMe(first, second, false, 0), less);
        QCOMPARE(mMain::CompMe(first, second, false, -1), less || equal);
        QCOMPARE(mMain::CompMe(first, second, true, 0), greater);
        QCOMPARE(mMain::CompMe(first, second, true, -1), greater || equal);
    }

    void compMe_anyOtherMode_isFalse()
    {
        for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{-2}, std::int16_t{2}}) {
            for (const bool descending : {false, true}) {
                QVERIFY(!mMain::CompMe(Variant(2.0), Variant(1.0), descending, mode));
                QVERIFY(!mMain::CompMe(Variant(1.0), Variant(2.0), descending, mode));
                QVERIFY(!mMain::CompMe("b"s, "a"s, descending, mode));
                QVERIFY(!mMain::CompMe("a"s, "a"s, descending, mode));
            }
        }
    }

    void compMe_withNull_isNeverOutOfOrder()
    {
        for (const Variant& other : {Variant(Null()), Variant(Empty()), Variant(-1.0), Variant("a"s)}) {
            for (const bool descending : {false, true}) {
                QVERIFY(!mMain::CompMe(Variant(Null()), other, descending, -1));
                QVERIFY(!mMain::CompMe(other, Variant(Null()), descending, -1));
            }
        }
    }

    void compMe_texts_compareByBytes()
    {
        QVERIFY(mMain::CompMe("a"s, "Z"s, false, 0));
        QVERIFY(!mMain::CompMe("Z"s, "a"s, false, 0));
        QVERIFY(mMain::CompMe("\u00E9"s, "z"s, false, 0));
        QVERIFY(mMain::CompMe(":"s, "9"s, false, 0));
        QVERIFY(mMain::CompMe("ab"s, "a"s, false, 0));
        QVERIFY(mMain::CompMe("a"s, "a"s, false, -1));
        QVERIFY(mMain::CompMe("a"s, "b"s, true, 0));
    }
};

TEST_CLASS(tst_Variant)
#include "tst_Variant.moc"
