#include "core/Xml.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// Parses `bytes` with both parsers, which must agree, and serialises the document. Returns "refused" on
/// failure.
std::string RoundTrip(std::string_view bytes)
{
    pugi::xml_document document;
    const std::string rewritten = ParseXml(bytes, document) ? SerializeXml(document) : "refused";
    std::string inPlace(bytes);
    pugi::xml_document same;
    const std::string also = ParseXmlInPlace(inPlace, same) ? "refused" : SerializeXml(same);
    return also == rewritten ? rewritten : rewritten + ", but in place " + also;
}

std::string Utf16(const std::u16string& text, bool littleEndian)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFFU);
        const char high = static_cast<char>(unit >> 8U);
        bytes += littleEndian ? low : high;
        bytes += littleEndian ? high : low;
    }
    return bytes;
}

/// Returns `count` nested elements.
std::string Levels(std::size_t count)
{
    std::string openings;
    std::string endings;
    for (std::size_t level = 0; level < count; ++level) {
        openings += "<a>";
        endings += "</a>";
    }
    return openings + endings;
}

} // namespace

class tst_Xml : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void serialize_writesOneElementPerLine()
    {
        QCOMPARE(RoundTrip("<data><tarno><TarnoNo>1</TarnoNo><Weather/></tarno></data>"),
                 "<data>\n"
                 "\t<tarno>\n"
                 "\t\t<TarnoNo>1</TarnoNo>\n"
                 "\t\t<Weather />\n"
                 "\t</tarno>\n"
                 "</data>\n"s);
    }

    void roundTrip_everyNode_isKept_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("declaration") << "<?xml version=\"1.0\"?>\n<data />\n"s;
        QTest::newRow("comments")
            << "<!-- before -->\n<data>\n\t<!-- in -->\n\t<a />\n</data>\n<!-- after -->\n"s;
        QTest::newRow("instructions") << "<?before it?>\n<data>\n\t<?in it?>\n</data>\n"s;
        QTest::newRow("document type") << "<!DOCTYPE data>\n<data />\n"s;
        QTest::newRow("attributes") << "<data by=\"&quot;me&quot; &amp; &lt;you>\" />\n"s;
        QTest::newRow("blanks in a value") << "<data>  a  b  </data>\n"s;
        QTest::newRow("value of blanks") << "<data> \t </data>\n"s;
        QTest::newRow("line feed in a value") << "<data>a\nb</data>\n"s;
        QTest::newRow("carriage return in a value") << "<data>a&#13;\nb</data>\n"s;
        QTest::newRow("carriage return in an attribute") << "<data by=\"a&#13;&#10;b\" />\n"s;
        QTest::newRow("text before other nodes")
            << "<data>a<!-- b -->\n\t<?c d?>\n\t<e />f<![CDATA[g]]>h</data>\n"s;
        QTest::newRow("text after other nodes") << "<data>\n\t<!-- a -->b<c />d</data>\n"s;
        QTest::newRow("CDATA section") << "<data><![CDATA[<a> & ]]></data>\n"s;
        QTest::newRow("escaped characters") << "<data>&lt;a&gt; &amp; \"b\" 'c'</data>\n"s;
        QTest::newRow("non-ASCII") << "<data>\u9BDB \xF0\x9F\x90\x9F</data>\n"s;
        QTest::newRow("ampersand in a comment") << "<data>\n\t<!-- a & b -->\n</data>\n"s;
        QTest::newRow("ampersand in an instruction that begins with xml") << "<?xmls a & b?>\n<data />\n"s;
        QTest::newRow("ampersand in an instruction") << "<data>\n\t<?it a & b?>\n</data>\n"s;
        QTest::newRow("reference after comments with ampersands")
            << "<data>\n\t<!-- & -->\n\t<a>&amp;</a>\n\t<!-- && -->\n</data>\n"s;
        QTest::newRow("ampersand in a CDATA section") << "<data><![CDATA[a & b; &c;]]></data>\n"s;
    }

    void roundTrip_everyNode_isKept()
    {
        QFETCH(std::string, bytes);
        QCOMPARE(RoundTrip(bytes), bytes);
    }

    void roundTrip_ofARoundTrip_changesNothing()
    {
        const std::string once =
            RoundTrip("\xEF\xBB\xBF<data>\r\n <a> x </a><b/> <!-- c -->text<d>\r\n</d></data> ");
        QVERIFY(once != "refused");
        QCOMPARE(RoundTrip(once), once);
    }

    void parse_utf16_isRead_data()
    {
        QTest::addColumn<bool>("littleEndian");
        QTest::newRow("little endian") << true;
        QTest::newRow("big endian") << false;
    }

    void parse_utf16_isRead()
    {
        QFETCH(bool, littleEndian);
        QCOMPARE(RoundTrip(Utf16(u"\uFEFF<data>a \u00E9 \u9BDB \U0001F41F &amp;</data>", littleEndian)),
                 "<data>a \u00E9 \u9BDB \U0001F41F &amp;</data>\n"s);
        // input that cannot be decoded completely is refused
        const std::string good = Utf16(u"\uFEFF<data>a</data>", littleEndian);
        QCOMPARE(RoundTrip(good + 'x'), "refused"s);
        QCOMPARE(RoundTrip(good.substr(0, good.size() - 4)), "refused"s);
        QCOMPARE(RoundTrip(good + std::string(2, '\0') + good), "refused"s);
        QCOMPARE(RoundTrip(Utf16(u"\uFEFF<data>a\x01</data>", littleEndian)), "refused"s);
        for (const std::u16string& surrogates :
             {std::u16string{0xD800}, std::u16string{0xDC00}, std::u16string{0xDC00, 0xD800},
              std::u16string{0xD800, 0xD800, 0xDC00}}) {
            QCOMPARE(RoundTrip(Utf16(u"\uFEFF<data>" + surrogates + u"</data>", littleEndian)), "refused"s);
        }
    }

    void parse_byteOrderMark_isDropped()
    {
        QCOMPARE(RoundTrip("\xEF\xBB\xBF<data>a</data>"), "<data>a</data>\n"s);
    }

    void parse_declaredEncoding_isIgnoredAndCorrected()
    {
        QCOMPARE(RoundTrip("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><data>\u00E9</data>"),
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<data>\u00E9</data>\n"s);
        QCOMPARE(
            RoundTrip(Utf16(u"\uFEFF<?xml version=\"1.0\" encoding=\"UTF-16\"?><data>\u00E9</data>", true)),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<data>\u00E9</data>\n"s);
        QCOMPARE(RoundTrip("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><data>\xE9</data>"), "refused"s);
    }

    void parse_malformed_isRefused_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("empty") << ""s;
        QTest::newRow("blanks only") << " \n"s;
        QTest::newRow("not XML") << "tarno"s;
        QTest::newRow("comment only") << "<!-- data -->"s;
        QTest::newRow("declaration only") << R"(<?xml version="1.0"?>)"s;
        QTest::newRow("truncated in a tag") << "<data><tarno></tar"s;
        QTest::newRow("truncated between tags") << "<data><tarno></tarno>"s;
        QTest::newRow("truncated in a value") << "<data><a>val"s;
        QTest::newRow("truncated in a comment") << "<data/><!-- "s;
        QTest::newRow("overlapping tags") << "<data><a><b></a></b></data>"s;
        QTest::newRow("end without start") << "</data>"s;
        QTest::newRow("two roots") << "<data></data><data></data>"s;
        QTest::newRow("text before") << "x<data/>"s;
        QTest::newRow("text after") << "<data/>text"s;
        QTest::newRow("letter after") << "<data/>x"s;
        QTest::newRow("letter after a line end") << "<data/>\nx"s;
        QTest::newRow("CDATA section after") << "<data/><![CDATA[x]]>"s;
        QTest::newRow("zeros only") << std::string(64, '\0');
        QTest::newRow("zeros after") << "<data/>"s + std::string(16, '\0');
        QTest::newRow("zero in a value") << "<data>a\0b</data>"s;
        QTest::newRow("control character") << "<data>a\x02</data>"s;
        QTest::newRow("not UTF-8") << "<data>\xE9</data>"s;
        QTest::newRow("UTF-16 without byte order mark") << Utf16(u"<data/>", true);
        QTest::newRow("UTF-32") << "\xFF\xFE\0\0<\0\0\0d\0\0\0/\0\0\0>\0\0\0"s;
        QTest::newRow("byte order mark only") << "\xFF\xFE"s;
        QTest::newRow("attribute without quotes") << "<data a=b/>"s;
        QTest::newRow("bare ampersand") << "<data>a & b</data>"s;
        QTest::newRow("ampersand at the end") << "<data>a &</data>"s;
        QTest::newRow("unknown reference") << "<data>&tide;</data>"s;
        QTest::newRow("unterminated reference") << "<data>&amp</data>"s;
        QTest::newRow("empty reference") << "<data>&;</data>"s;
        QTest::newRow("zero as reference") << "<data>a&#0;b</data>"s;
        QTest::newRow("control character as reference") << "<data>&#x1;</data>"s;
        QTest::newRow("surrogate as reference") << "<data>&#xD800;</data>"s;
        QTest::newRow("reference above U+10FFFF") << "<data>&#x110000;</data>"s;
        QTest::newRow("reference above 32 bits") << "<data>&#99999999999999;</data>"s;
        QTest::newRow("reference without digits") << "<data>&#x;</data>"s;
        QTest::newRow("reference with invalid digits") << "<data>&#1F;</data>"s;
        QTest::newRow("ampersand after a comment with an ampersand") << "<data><!-- & --><a>&</a></data>"s;
        QTest::newRow("ampersand between comments") << "<data><!-- & -->a & b<!-- & --></data>"s;
        QTest::newRow("reference terminated in a comment") << "<data>&amp<!-- ; --></data>"s;
        QTest::newRow("unknown reference after a comment start in an attribute")
            << "<data a='<!--'>&tide;</data>"s;
        QTest::newRow("control character after an instruction start in an attribute")
            << "<data a=\"<?'\" b='\"'>&#xF;</data>"s;
        QTest::newRow("surrogate as reference in the declaration") << R"(<?xml version="&#xD800;"?><data/>)"s;
        QTest::newRow("unknown reference in the declaration") << R"(<?XML version="&tide;"?><data/>)"s;
        QTest::newRow("overlong reference") << "<data>&#" + std::string(1000, '0') + "65;</data>";
        QTest::newRow("257 levels") << Levels(257);
        QTest::newRow("200,000 levels") << Levels(200000);
        QTest::newRow("200,000 levels without end tags") << Levels(200000).substr(0, 600000);
        QTest::newRow("unknown reference in an attribute") << R"(<data><a b="&tide;"/></data>)"s;
    }

    void parse_malformed_isRefused()
    {
        QFETCH(std::string, bytes);
        QCOMPARE(RoundTrip(bytes), "refused"s);
        pugi::xml_document document;
        QVERIFY(ParseXmlInPlace(bytes, document).has_value());
        QVERIFY(!document.first_child());
    }

    void parse_accepts256Levels()
    {
        QVERIFY(RoundTrip(Levels(64)) != "refused");
        QVERIFY(RoundTrip(Levels(256)) != "refused");
    }

    void parseInPlace_storesTextInItsElement()
    {
        std::string bytes = "<data><a>text</a><b><![CDATA[x]]>y</b></data>";
        pugi::xml_document document;
        QVERIFY(!ParseXmlInPlace(bytes, document));
        const pugi::xml_node data = document.child("data");
        QCOMPARE(std::string(data.child("a").value()), "text"s);
        QVERIFY(!data.child("a").first_child());
        QCOMPARE(std::string(data.child("b").value()), ""s); // only the first text, to keep the order
        QCOMPARE(std::string(data.child("b").last_child().value()), "y"s);
    }

    void parse_references_areReadAsTheirCharacters()
    {
        pugi::xml_document document;
        QVERIFY(ParseXml(
            "<data a=\"&#65;\">&lt;&gt;&amp;&quot;&apos;&#9;&#10;&#13;&#233;&#x9BDB;&#x1F41F;</data>",
            document));
        QCOMPARE(std::string(document.child("data").text().get()), "<>&\"'\t\n\r\u00E9\u9BDB\U0001F41F"s);
        QCOMPARE(std::string(document.child("data").attribute("a").value()), "A"s);
    }

    void fault_hasPositionAndReason_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("fault");
        QTest::newRow("empty file") << ""s
                                    << "Line 1, column 1: No element"s;
        QTest::newRow("wrong end tag") << "<data>\n\t<a>x</b>\n</data>\n"s
                                       << "Line 2, column 8: Start-end tags mismatch"s;
        QTest::newRow("character") << "<data>\n\n<a>\x01</a></data>"s
                                   << "Line 3, column 4: Character that XML does not allow"s;
        QTest::newRow("reference") << "<data>\n&tide;</data>"s
                                   << "Line 2, column 1: Invalid character reference"s;
        QTest::newRow("second root") << "<data/>\n <data/>"s
                                     << "Line 2, column 3: Text or element outside the first element"s;
        QTest::newRow("comment only") << "<!-- a -->"s
                                      << "Line 1, column 1: No element"s;
        QTest::newRow("257 levels") << Levels(257) << "Line 1, column 770: Too many nested elements"s;
        QTest::newRow("UTF-16") << Utf16(u"\uFEFF<data>\n</b>", true)
                                << "Line 2, column 3: Start-end tags mismatch"s;
    }

    void fault_hasPositionAndReason()
    {
        QFETCH(const std::string, bytes);
        std::string parsed = bytes;
        pugi::xml_document document;
        const auto fault = ParseXmlInPlace(parsed, document);
        QVERIFY(fault.has_value());
        QTEST(DescribeXmlPosition(bytes, fault->offset) + ": " + std::string(fault->reason), "fault");
    }

    void parse_refused_leavesTheDocumentEmpty()
    {
        pugi::xml_document document;
        QVERIFY(ParseXml("<data/>", document));
        QVERIFY(document.child("data"));
        for (const char* damage :
             {"<data><a>", "<data/><data/>", "<data>\xE9</data>", "<data>&tide;</data>"}) {
            QVERIFY(!ParseXml(damage, document));
            QVERIFY(!document.first_child());
        }
    }
};

TEST_CLASS(tst_Xml)
#include "tst_Xml.moc"
