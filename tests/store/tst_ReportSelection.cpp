// The fields of a log report: reading them from a saved report, storing them, and their definitions.

#include "core/Xml.h"
#include "store/RecordLayouts.h"
#include "store/ReportSelection.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <limits>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using Numbers = std::vector<std::int32_t>;

/// The records of a file with the contents `xml`.
struct Records {
    explicit Records(const std::string& xml)
    {
        if (!ParseXml("<data>" + xml + "</data>", document)) {
            qFatal("not well-formed");
        }
        for (const pugi::xml_node& node : document.first_child().children()) {
            list.emplace_back(node);
        }
    }

    pugi::xml_document document;
    RecordList list;
};

std::string ReportXml(const std::string& names, const std::string& numbers)
{
    return "<report><RptNo>1</RptNo><RptName>Mine</RptName><Fields>" + names + "</Fields><FieldKeys>" +
           numbers + "</FieldKeys><Options>kept</Options></report>";
}

/// Returns a file with the fields 1, 2 and 4.
const Records& ThreeFields()
{
    static const Records fields("<field><FieldNo>1</FieldNo><FieldName>StartDate</FieldName></field>"
                                "<field><FieldNo>2</FieldNo><FieldName>EndDate</FieldName></field>"
                                "<field><FieldNo>4</FieldNo><FieldName>EndTime</FieldName></field>");
    return fields;
}

} // namespace

class tst_ReportSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void selection_roundTrips_data()
    {
        QTest::addColumn<std::string>("storedNames");
        QTest::addColumn<std::string>("storedNumbers");
        QTest::addColumn<Texts>("names");
        QTest::addColumn<Texts>("numbers");
        QTest::newRow("empty") << ""s
                               << ""s << Texts{} << Texts{};
        QTest::newRow("one field") << "LocNo"s
                                   << "5"s << Texts{"LocNo"} << Texts{"5"};
        QTest::newRow("in given order")
            << "StartTime,StartDate,HighTideHt"s
            << "3,1,12"s << Texts{"StartTime", "StartDate", "HighTideHt"} << Texts{"3", "1", "12"};
        QTest::newRow("fewer names") << "LocNo"s
                                     << "5,6"s << Texts{"LocNo"} << Texts{"5", "6"};
        QTest::newRow("more names") << "LocNo,TideStart"s
                                    << "5"s << Texts{"LocNo", "TideStart"} << Texts{"5"};
        QTest::newRow("no names") << ""s
                                  << "5"s << Texts{} << Texts{"5"};
        QTest::newRow("no numbers") << "LocNo"s
                                    << ""s << Texts{"LocNo"} << Texts{};
        QTest::newRow("not numbers") << "a,,b"s
                                     << "x,,-1,"s << Texts{"a", "", "b"} << Texts{"x", "", "-1", ""};
    }

    void selection_roundTrips()
    {
        QFETCH(std::string, storedNames);
        QFETCH(std::string, storedNumbers);
        QFETCH(Texts, names);
        QFETCH(Texts, numbers);
        const Records saved(ReportXml(storedNames, storedNumbers));
        const ReportSelection selection = ReadSelection(saved.list.front());
        QCOMPARE(selection.names, names);
        QCOMPARE(selection.numbers, numbers);

        const Records other(ReportXml("Old", "0"));
        Record report(other.list.front());
        WriteSelection(selection, report);
        QCOMPARE(report.Text(ReportField::Fields), storedNames);
        QCOMPARE(report.Text(ReportField::FieldKeys), storedNumbers);
        QCOMPARE(report.Text(ReportField::RptName), "Mine"s);
        QCOMPARE(report.Text(ReportField::Options), "kept"s);
    }

    void selection_recordWithTooFewValues_isEmptyAndCannotBeWritten()
    {
        const Records saved("<report><RptNo>1</RptNo><RptName>Mine</RptName><Fields>LocNo</Fields></report>");
        QCOMPARE(ReadSelection(saved.list.front()).names, std::vector<std::string>{"LocNo"});
        QCOMPARE(ReadSelection(saved.list.front()).numbers, std::vector<std::string>{});
        Record report(saved.list.front());
        QCOMPARE(RaisedNumber([&] { WriteSelection({}, report); }), 91);
    }

    void definitionsOf_areLookedUpByPosition_data()
    {
        QTest::addColumn<Numbers>("chosen");
        QTest::addColumn<Texts>("names");
        QTest::addColumn<Texts>("numbers");
        QTest::newRow("none") << Numbers{} << Texts{} << Texts{};
        QTest::newRow("in given order") << Numbers{2, 1} << Texts{"EndDate", "StartDate"} << Texts{"2", "1"};
        QTest::newRow("repeated") << Numbers{1, 1} << Texts{"StartDate", "StartDate"} << Texts{"1", "1"};
        QTest::newRow("after a gap") << Numbers{3} << Texts{"EndTime"} << Texts{"3"};
    }

    void definitionsOf_areLookedUpByPosition()
    {
        QFETCH(Numbers, chosen);
        QFETCH(Texts, names);
        const RecordList& fields = ThreeFields().list;
        const ReportSelection selection = SelectionOf(chosen, fields);
        QCOMPARE(selection.names, names);
        QTEST(selection.numbers, "numbers");
        Texts defined;
        for (const RecordView& definition : DefinitionsOf(chosen, fields)) {
            defined.push_back(definition.Text(FieldField::FieldName));
        }
        QCOMPARE(defined, names);
    }

    void definitionsOf_missingPosition_isSubscriptOutOfRange()
    {
        for (const std::int32_t number : {0, 4, -1, std::numeric_limits<std::int32_t>::min()}) {
            QCOMPARE(RaisedNumber([&] { DefinitionsOf({number}, ThreeFields().list); }), 9);
            QCOMPARE(RaisedNumber([&] { SelectionOf({1, number}, ThreeFields().list); }), 9);
        }
    }
};

TEST_CLASS(tst_ReportSelection)
#include "tst_ReportSelection.moc"
