#include "core/Text.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_Text : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void equalIgnoringCase_comparesAsciiLettersOnly()
    {
        QVERIFY(EqualIgnoringCase("Field.xml", "fIELD.XML"));
        QVERIFY(EqualIgnoringCase("", ""));
        QVERIFY(!EqualIgnoringCase("field.xml", "field.xm"));
        QVERIFY(!EqualIgnoringCase("field.xml", "field_xml"));
        // non-ASCII letters and the characters next to the alphabet are case-sensitive
        QVERIFY(!EqualIgnoringCase("\u00C4.xml", "\u00E4.xml"));
        QVERIFY(!EqualIgnoringCase("@[", "`{"));
    }

    void replaceAll_everyOccurrence_isReplacedOnce()
    {
        QCOMPARE(ReplaceAll("aXbXc", "X", "--"), "a--b--c"s);
        QCOMPARE(ReplaceAll("XX", "X", ""), ""s);
        QCOMPARE(ReplaceAll("aaa", "aa", "a"), "aa"s);
        QCOMPARE(ReplaceAll("a", "a", "aa"), "aa"s);
        QCOMPARE(ReplaceAll("none", "X", "Y"), "none"s);
        QCOMPARE(ReplaceAll("", "X", "Y"), ""s);
    }

    void split_returnsThePartsBetweenSeparators_data()
    {
        using Texts = std::vector<std::string>;
        QTest::addColumn<std::string>("text");
        QTest::addColumn<Texts>("parts");
        QTest::newRow("empty") << ""s << Texts{};
        QTest::newRow("no separator") << "LocNo"s << Texts{"LocNo"};
        QTest::newRow("three parts") << "1,24,5"s << Texts{"1", "24", "5"};
        QTest::newRow("blanks stay") << " a , b "s << Texts{" a ", " b "};
        QTest::newRow("separator alone") << ","s << Texts{"", ""};
        QTest::newRow("at the start") << ",a"s << Texts{"", "a"};
        QTest::newRow("at the end") << "a,"s << Texts{"a", ""};
        QTest::newRow("two in a row") << "a,,b"s << Texts{"a", "", "b"};
        QTest::newRow("only separators") << ",,,"s << Texts{"", "", "", ""};
        QTest::newRow("other separators") << "a;b c"s << Texts{"a;b c"};
        QTest::newRow("non-ASCII") << "\u9BDB,\u00E9"s << Texts{"\u9BDB", "\u00E9"};
    }

    void split_returnsThePartsBetweenSeparators()
    {
        QFETCH(std::string, text);
        QTEST(Split(text, ','), "parts");
        QCOMPARE(Join(Split(text, ','), ','), text);
    }

    void counted_isSingularForOne()
    {
        QCOMPARE(Counted(0, "trip"), std::string("0 trips"));
        QCOMPARE(Counted(1, "trip"), std::string("1 trip"));
        QCOMPARE(Counted(2, "trip"), std::string("2 trips"));
    }

    void join_putsTheSeparatorBetweenTheTexts()
    {
        QCOMPARE(Join({"a", "b,c", ""}, ','), "a,b,c,"s);
        QCOMPARE(Join({""}, ','), ""s);
        QCOMPARE(Join({"a", "b"}, '\0'), "a\0b"s);
    }

    void xmlText_validText_isUnchanged_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::newRow("empty") << ""s;
        QTest::newRow("ascii") << R"(Snapper <2 kg> & "kahawai")"s;
        QTest::newRow("tab, line feed, carriage return") << "a\tb\nc\rd"s;
        QTest::newRow("two bytes") << "\xC2\x80\xDF\xBF"s;
        QTest::newRow("three bytes") << "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD"s;
        QTest::newRow("four bytes") << "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"s;
        QTest::newRow("delete") << "\x7F"s;
    }

    void xmlText_validText_isUnchanged()
    {
        QFETCH(std::string, text);
        QVERIFY(IsXmlText(text));
        QCOMPARE(XmlText(text), text);
    }

    void xmlText_invalidText_becomesReplacementCharacters_data()
    {
        const std::string one = "a\uFFFDb";
        QTest::addColumn<std::string>("text");
        QTest::addColumn<std::string>("replaced");
        QTest::newRow("zero") << "a\0b"s << one;
        QTest::newRow("control") << "a\x1F"s + "b" << one;
        QTest::newRow("U+FFFE") << "a\uFFFEb"s << one;
        QTest::newRow("U+FFFF") << "a\uFFFFb"s << one;
        QTest::newRow("lone continuation") << "a\x80"s + "b" << one;
        QTest::newRow("lead without continuation") << "a\xC3"s + "b" << one;
        QTest::newRow("lead at the end") << "a\xE2\x82"s
                                         << "a\uFFFD\uFFFD"s;
        QTest::newRow("overlong, two bytes") << "a\xC0\x80"s + "b"
                                             << "a\uFFFD\uFFFDb"s;
        QTest::newRow("overlong, three bytes") << "a\xE0\x80\xAF"s + "b"
                                               << "a\uFFFD\uFFFD\uFFFDb"s;
        QTest::newRow("overlong, four bytes") << "a\xF0\x80\x80\xAF"s + "b"
                                              << "a\uFFFD\uFFFD\uFFFD\uFFFDb"s;
        QTest::newRow("surrogate") << "a\xED\xA0\x80"s + "b" << one;
        QTest::newRow("last surrogate") << "a\xED\xBF\xBF"s + "b" << one;
        QTest::newRow("above U+10FFFF") << "a\xF4\x90\x80\x80"s + "b" << one;
        QTest::newRow("invalid lead") << "a\xFF"s + "b" << one;
    }

    void xmlText_invalidText_becomesReplacementCharacters()
    {
        QFETCH(std::string, text);
        QVERIFY(!IsXmlText(text));
        QTEST(XmlText(text), "replaced");
    }

    void xmlTextLength_isTheSameAtEveryPosition_data()
    {
        QTest::addColumn<std::string>("character");
        QTest::addColumn<bool>("isAllowed");
        QTest::newRow("tab") << "\t"s << true;
        QTest::newRow("delete") << "\x7F"s << true;
        QTest::newRow("two bytes") << "\xC3\xA9"s << true;
        QTest::newRow("three bytes") << "\u9BDB"s << true;
        QTest::newRow("four bytes") << "\xF0\x9F\x90\x9F"s << true;
        QTest::newRow("zero") << "\0"s << false;
        QTest::newRow("control") << "\x1F"s << false;
        QTest::newRow("U+FFFE") << "\uFFFE"s << false;
        QTest::newRow("not UTF-8") << "\xFF"s << false;
        QTest::newRow("incomplete") << "\xE2\x82"s << false;
    }

    void xmlTextLength_isTheSameAtEveryPosition()
    {
        QFETCH(const std::string, character);
        QFETCH(const bool, isAllowed);
        for (std::size_t before = 0; before <= 200; ++before) {
            for (const std::size_t after : {0U, 1U, 7U, 63U, 64U, 200U}) {
                const std::string text = std::string(before, 'a') + character + std::string(after, 'b');
                const std::size_t expected = isAllowed ? text.size() : before;
                QCOMPARE(XmlTextLength(text), expected);
            }
        }
    }

    void fromUtf16_wellFormed_isConverted()
    {
        QVERIFY(HasUtf16Mark("\xFF\xFE"));
        QVERIFY(HasUtf16Mark("\xFE\xFF\x9B\xDB"));
        QVERIFY(!HasUtf16Mark("\xEF\xBB\xBF"));
        QVERIFY(!HasUtf16Mark("\xFF"));
        QCOMPARE(FromUtf16("\xFF\xFE"), ""s);
        QCOMPARE(FromUtf16("\xFF\xFE"s + "A\0\x7F\0\x80\0\xFF\x07\0\x08\xFD\xFF"s),
                 "A\x7F\u0080\u07FF\u0800\uFFFD"s);
        QCOMPARE(FromUtf16("\xFE\xFF"s + "\0A\0\x7F\0\x80\x07\xFF\x08\0\xFF\xFD"s),
                 "A\x7F\u0080\u07FF\u0800\uFFFD"s);
        QCOMPARE(FromUtf16("\xFF\xFE\0\xD8\0\xDC\xFF\xDB\xFF\xDF"s), "\U00010000\U0010FFFF"s);
        QCOMPARE(FromUtf16("\xFE\xFF\xD8\x3D\xDC\x1F"s), "\U0001F41F"s);
    }

    void fromUtf16_malformed_isNotXmlText()
    {
        QVERIFY(!IsXmlText(FromUtf16("\xFE\xFF\0Ax"s)));
        QVERIFY(!IsXmlText(FromUtf16("\xFF\xFE"s + "A"s)));
        QVERIFY(!IsXmlText(FromUtf16("\xFE\xFF\xD8\0"s)));
        QVERIFY(!IsXmlText(FromUtf16("\xFE\xFF\xD8\0\0A"s)));
        QVERIFY(!IsXmlText(FromUtf16("\xFE\xFF\xDC\0\xDC\0"s)));
        QVERIFY(!IsXmlText(FromUtf16("\xFE\xFF\xDC\0\xD8\0"s)));
    }

    void decodeLineBreaks_marks_becomeCarriageReturnAndLineFeed()
    {
        QCOMPARE(mMain::DecodeLineBreaks("a~CL~b"), "a\r\nb"s);
        QCOMPARE(mMain::DecodeLineBreaks("a~CL~~CL~b"), "a\r\n\r\nb"s);
        QCOMPARE(mMain::DecodeLineBreaks("~CL~"), "\r\n"s);
        QCOMPARE(mMain::DecodeLineBreaks("~CL~CL~"), "\r\nCL~"s);
        QCOMPARE(mMain::DecodeLineBreaks("a~cl~b"), "a~cl~b"s);
        QCOMPARE(mMain::DecodeLineBreaks(""), ""s);
    }

    void encodeLineBreaks_pairs_becomeMarks()
    {
        QCOMPARE(mMain::EncodeLineBreaks("a\r\nb"), "a~CL~b"s);
        QCOMPARE(mMain::EncodeLineBreaks("a\r\n\r\nb"), "a~CL~~CL~b"s);
        QCOMPARE(mMain::EncodeLineBreaks("\r\n"), "~CL~"s);
        QCOMPARE(mMain::EncodeLineBreaks(""), ""s);
        QCOMPARE(mMain::DecodeLineBreaks(mMain::EncodeLineBreaks("one\r\ntwo\r\n")), "one\r\ntwo\r\n"s);
    }

    void encodeLineBreaks_loneCarriageReturnOrLineFeed_isKept()
    {
        QCOMPARE(mMain::EncodeLineBreaks("a\rb\nc"), "a\rb\nc"s);
        QCOMPARE(mMain::EncodeLineBreaks("a\r\r\n\nb"), "a\r~CL~\nb"s);
    }
};

TEST_CLASS(tst_Text)
#include "tst_Text.moc"
