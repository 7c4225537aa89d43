#include "core/Xml.h"
#include "store/Record.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <limits>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// A document with one record, parsed like a data file.
struct Stored {
    explicit Stored(std::string text) : bytes(std::move(text)) { parsed = !ParseXmlInPlace(bytes, document); }

    RecordView View() const { return RecordView(document.first_child()); }

    std::string bytes;
    bool parsed = false;
    pugi::xml_document document;
};

std::string Serialize(const Record& record)
{
    pugi::xml_document document;
    document.append_copy(record.View().Node());
    return SerializeXml(document);
}

} // namespace

class tst_Record : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void text_positionsCountElementsOnly()
    {
        const Stored stored(
            "<tarno><!-- first --><TarnoNo>7</TarnoNo><?in it?><StartDate>2003-02-05</StartDate>"
            "text<EndDate/></tarno>");
        QVERIFY(stored.parsed);
        QCOMPARE(static_cast<int>(stored.View().Count()), 3);
        QCOMPARE(stored.View().Text(0), "7"s);
        QCOMPARE(stored.View().Text(1), "2003-02-05"s);
        QCOMPARE(stored.View().Text(2), ""s);
    }

    void text_concatenatesAllTextOfTheChild_data()
    {
        QTest::addColumn<QByteArray>("child");
        QTest::addColumn<std::string>("text");
        QTest::newRow("plain") << QByteArray("<a>Snapper</a>") << "Snapper"s;
        QTest::newRow("blanks") << QByteArray("<a>  x  y </a>") << "  x  y "s;
        QTest::newRow("blanks only") << QByteArray("<a>   </a>") << "   "s;
        QTest::newRow("line ends") << QByteArray("<a>x\r\ny\n</a>") << "x\ny\n"s;
        QTest::newRow("carriage return as a reference") << QByteArray("<a>x&#13;\ny</a>") << "x\r\ny"s;
        QTest::newRow("references") << QByteArray("<a>&lt;&#233;&amp;</a>") << "<\u00E9&"s;
        QTest::newRow("section") << QByteArray("<a><![CDATA[<b> & ]]></a>") << "<b> & "s;
        QTest::newRow("text and section") << QByteArray("<a>x<![CDATA[y]]>z</a>") << "xyz"s;
        QTest::newRow("comment between") << QByteArray("<a>x<!-- no --><?no no?>y</a>") << "xy"s;
        QTest::newRow("elements inside") << QByteArray("<a>x<b>y<c>z</c></b></a>") << "xyz"s;
    }

    void text_concatenatesAllTextOfTheChild()
    {
        QFETCH(QByteArray, child);
        const Stored stored(("<tarno><TarnoNo>1</TarnoNo>" + child + "</tarno>").toStdString());
        QVERIFY(stored.parsed);
        QTEST(stored.View().Text(1), "text");
        QTEST(Record(stored.View()).Text(1), "text");
    }

    void text_missingPosition_isEmptyInAListAndObjectNotSetInACopy()
    {
        const Stored stored("<tarno><TarnoNo>1</TarnoNo></tarno>");
        QCOMPARE(stored.View().Text(1), ""s);
        QCOMPARE(RaisedNumber([&] { Record(stored.View()).Text(1); }), 91);
        QCOMPARE(RaisedNumber([&] { Record(stored.View()).Text(36); }), 91);
    }

    void key_isTheFirstChildOrZero()
    {
        QCOMPARE(Stored("<tarno><TarnoNo>70000</TarnoNo></tarno>").View().Key(), 70000);
        QCOMPARE(Stored("<tarno/>").View().Key(), 0);
        QCOMPARE(RaisedNumber([] { Stored("<tarno><TarnoNo/></tarno>").View().Key(); }), 13);
    }

    void setText_replacesTheValue_data()
    {
        QTest::addColumn<std::string>("value");
        QTest::newRow("none") << "<a/>"s;
        QTest::newRow("text") << "<a>x</a>"s;
        QTest::newRow("blanks") << "<a>  </a>"s;
        QTest::newRow("section") << "<a><![CDATA[y]]></a>"s;
        QTest::newRow("text after a comment") << "<a><!-- c -->x</a>"s;
        QTest::newRow("several texts") << "<a>x<!-- c --><![CDATA[y]]>z<b>w</b></a>"s;
    }

    void setText_replacesTheValue()
    {
        QFETCH(const std::string, value);
        const Stored stored("<tarno><TarnoNo>1</TarnoNo>" + value + "<b>z</b></tarno>");
        // read from a data file, and as the history of changes stores it
        for (Record record : {Record(stored.View()), Record::FromXml(SerializeXml(stored.View().Node()))}) {
            for (const std::string& text : {"new"s, "newer"s, ""s, "new"s}) {
                record.SetText(1, text);
                QCOMPARE(record.Text(1), text);
                QCOMPARE(record.Text(2), "z"s);
                QCOMPARE(Serialize(record), "<tarno>\n\t<TarnoNo>1</TarnoNo>\n\t" +
                                                (text.empty() ? "<a />" : "<a>" + text + "</a>") +
                                                "\n\t<b>z</b>\n</tarno>\n");
            }
        }
    }

    void setText_invalidText_becomesReplacementCharacters()
    {
        const Stored stored("<tarno><TarnoNo>1</TarnoNo></tarno>");
        Record record(stored.View());
        record.SetText(0, "a\x01\0b\uFFFE\xED\xA0\x80\xFF"s);
        QCOMPARE(record.Text(0), "a\uFFFD\uFFFDb\uFFFD\uFFFD\uFFFD"s);
    }

    void setText_markup_roundTrips()
    {
        const Stored stored("<tarno><TarnoNo>1</TarnoNo></tarno>");
        for (const std::string& text : {"<b>&amp;]]></b>"s, R"( 'a' "b" )"s, "\t\n"s, "\r\n"s, "\u9BDB"s}) {
            Record record(stored.View());
            record.SetText(0, text);
            pugi::xml_document again;
            QVERIFY(ParseXml(Serialize(record), again));
            QCOMPARE(RecordView(again.first_child()).Text(0), text);
        }
    }

    void setText_missingPosition_isObjectNotSetAndChangesNothing()
    {
        const Stored stored("<tarno><TarnoNo>1</TarnoNo></tarno>");
        Record record(stored.View());
        const std::string before = Serialize(record);
        QCOMPARE(RaisedNumber([&] { record.SetText(1, "x"); }), 91);
        QCOMPARE(Serialize(record), before);
    }

    void copy_changed_doesNotAffectTheStoredRecord()
    {
        const Stored stored("<tarno><TarnoNo>1</TarnoNo><a><!-- kept -->x</a></tarno>");
        Record record(stored.View());
        QCOMPARE(Serialize(record), SerializeXml(stored.document));
        record.SetText(1, "y");
        QCOMPARE(stored.View().Text(1), "x"s);
    }

    void copy_ofACopy_isIndependent()
    {
        const Stored stored("<tarno><TarnoNo>1</TarnoNo></tarno>");
        Record one(stored.View());
        Record other(one);
        other.SetText(0, "2");
        Record third;
        third = other;
        third.SetText(0, "3");
        const Record& itself = third;
        third = itself;
        QCOMPARE(one.Text(0), "1"s);
        QCOMPARE(other.Text(0), "2"s);
        QCOMPARE(third.Text(0), "3"s);
        const Record moved = std::move(third);
        QCOMPARE(moved.Text(0), "3"s);
    }

    void record_withoutValues_hasNone()
    {
        Record record;
        QCOMPARE(static_cast<int>(record.Count()), 0);
        QCOMPARE(RaisedNumber([&] { record.Text(0); }), 91);
        QCOMPARE(RaisedNumber([&] { record.SetText(0, "1"); }), 91);
        const Record copy(record);
        QCOMPARE(static_cast<int>(copy.Count()), 0);
    }

    void recordAt_returnsTheRecordAtThePosition()
    {
        const Stored first("<tarno><TarnoNo>7</TarnoNo></tarno>");
        const Stored second("<tarno><TarnoNo>3</TarnoNo></tarno>");
        const RecordList list{first.View(), second.View()};
        QCOMPARE(RecordAt(list, 0).Text(0), "7"s);
        QCOMPARE(RecordAt(list, 1).Text(0), "3"s);
    }

    void recordAt_outsideTheList_isSubscriptOutOfRange_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<qint64>("position");
        QTest::newRow("empty list") << 0 << qint64{0};
        QTest::newRow("after the last") << 2 << qint64{2};
        QTest::newRow("before the first") << 2 << qint64{-1};
        QTest::newRow("largest") << 2 << std::numeric_limits<qint64>::max();
        QTest::newRow("smallest") << 2 << std::numeric_limits<qint64>::min();
    }

    void recordAt_outsideTheList_isSubscriptOutOfRange()
    {
        QFETCH(int, size);
        QFETCH(qint64, position);
        const Stored stored("<tarno><TarnoNo>7</TarnoNo></tarno>");
        const RecordList list(static_cast<std::size_t>(size), stored.View());
        QCOMPARE(RaisedNumber([&] { RecordAt(list, position); }), 9);
    }
};

TEST_CLASS(tst_Record)
#include "tst_Record.moc"
