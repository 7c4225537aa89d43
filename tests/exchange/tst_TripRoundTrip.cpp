#include "TripTableTest.h"
#include "core/Xml.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <pugixml.hpp>

#include <random>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Texts that a table could lose or confuse with each other.
const Texts awkwardTexts{"",
                         " ",
                         "\t",
                         "plain",
                         "say \"hot\"",
                         "\"",
                         "a,b;c",
                         "a~CL~b",
                         "~CL~",
                         "~CL~CL~",
                         "~CL",
                         "real\nline break",
                         "real\r\nline break~CL~and mark",
                         "\r",
                         "a~C\nL~b",
                         "  blanks  ",
                         "007",
                         "0",
                         "-0",
                         "-1",
                         "1",
                         "3",
                         "9",
                         "-45",
                         "100",
                         "101",
                         "1.5",
                         "18,5 C",
                         "=1+1",
                         "@x",
                         "+3",
                         "Run In",
                         "run in",
                         "Not Set",
                         "Waning, 45%",
                         "~=x",
                         "~=",
                         "2024-02-29",
                         "2023-02-29",
                         "2024-2-9",
                         "5/10/2024",
                         "06:30",
                         "6:30",
                         "24:00",
                         "25:00",
                         ":",
                         "never",
                         "Never",
                         "yes",
                         "true",
                         "-33,59",
                         "-33.59",
                         "91",
                         "1e2",
                         "\xF0\x9F\x90\x9F",
                         "\xEF\xBB\xBF mark",
                         "R\xC3\xADo",
                         "RIO",
                         "\xEF\xBF\xBD"};

class Choices
{
public:
    explicit Choices(unsigned seed) : m_numbers(seed) {}

    std::size_t Below(std::size_t count) { return m_numbers() % count; }

    const std::string& Text() { return awkwardTexts[Below(awkwardTexts.size())]; }

private:
    std::mt19937 m_numbers;
};

/// Returns a file with `count` records of random texts and ascending keys with gaps.
std::string RandomFile(Choices& choices, const char* element, std::size_t count, std::size_t values)
{
    pugi::xml_document document;
    pugi::xml_node data = document.append_child("data");
    std::size_t key = 0;
    for (; count > 0; --count) {
        key += 1 + choices.Below(3);
        pugi::xml_node record = data.append_child(element);
        for (std::size_t value = 0; value < values; ++value) {
            const bool isPlace = values == EntryField::Count && value == EntryField::LocNo;
            const std::string text = value == 0                         ? std::to_string(key)
                                     : isPlace && choices.Below(4) != 0 ? std::to_string(choices.Below(12))
                                                                        : choices.Text();
            const std::string name = value > 0                     ? "v" + std::to_string(value)
                                     : values == EntryField::Count ? "TarnoNo"s
                                                                   : "LocNo"s;
            pugi::xml_node child = record.append_child(name.c_str());
            if (!text.empty()) {
                child.append_child(pugi::node_pcdata).set_value(text.c_str());
            }
        }
    }
    return SerializeXml(document);
}

/// Returns the values of a trip and of its location that a table has.
Texts ValuesOf(const RecordView& trip, const std::map<std::string, RecordView>& places)
{
    Texts values;
    for (std::size_t value = 0; value < EntryField::Count; ++value) {
        values.push_back(trip.Text(value));
    }
    const auto place = places.find(trip.Text(EntryField::LocNo));
    if (place != places.end() && !place->second.Text(LocationField::LocName).empty()) {
        for (const auto value : {LocationField::LocName, LocationField::LocLatt, LocationField::LocLong,
                                 LocationField::LocGMT, LocationField::LocDST}) {
            values.push_back(place->second.Text(value));
        }
    }
    return values;
}

std::vector<Texts> ContentsOf(const cSQL& sql)
{
    std::map<std::string, RecordView> places;
    for (const RecordView& location : LocationsOf(sql)) {
        places.emplace(location.Text(0), location);
    }
    std::vector<Texts> contents;
    for (const RecordView& trip : TripsOf(sql)) {
        contents.push_back(ValuesOf(trip, places));
    }
    return contents;
}

} // namespace

// A log that is exported as a table and imported into an empty log is the same, value by value.
class tst_TripRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sampleLog_comesBack()
    {
        TestStore log;
        for (const char* file : {"tarno.xml", "location.xml"}) {
            log.folder.Write(file, ReadWholeFile(TARNO_SHIPPED_DATA "/sample/"s + file));
        }
        Check(log, ',');
        QCOMPARE(
            PlanOf(TripRows(TripsOf(log.sql), LocationsOf(log.sql)), log.sql).Count(RowStatus::AlreadyThere),
            TripsOf(log.sql).size());
    }

    void randomLogs_comeBack_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 30; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    void randomLogs_comeBack()
    {
        QFETCH(unsigned, seed);
        Choices choices(seed);
        TestStore log;
        log.folder.Write("location.xml", RandomFile(choices, "location", 6, LocationField::Count));
        log.folder.Write("tarno.xml", RandomFile(choices, "tarno", 30, EntryField::Count));
        constexpr std::array separators{',', ';', '\t'};
        Check(log, separators.at(choices.Below(separators.size())));
    }

    // A second export of the imported log is the same file.
    void everyTextInEveryField_comesBack()
    {
        TestStore log;
        pugi::xml_document document;
        pugi::xml_node data = document.append_child("data");
        for (std::size_t text = 0; text < awkwardTexts.size(); ++text) {
            pugi::xml_node trip = data.append_child("tarno");
            trip.append_child("TarnoNo").text().set(std::to_string(text + 1).c_str());
            for (std::size_t value = 1; value < EntryField::Count; ++value) {
                pugi::xml_node child = trip.append_child("v");
                if (!awkwardTexts[text].empty()) {
                    child.append_child(pugi::node_pcdata).set_value(awkwardTexts[text].c_str());
                }
            }
        }
        log.folder.Write("tarno.xml", SerializeXml(document));
        Check(log, ',');
    }

private:
    static void Check(TestStore& log, char separator)
    {
        QCOMPARE(log.sql.Init(), succeeded);
        const std::string exported = WriteCsv(TripRows(TripsOf(log.sql), LocationsOf(log.sql)), separator);
        const CsvFile file = ReadCsv(exported);
        QVERIFY(!file.problem);
        TestStore empty;
        QCOMPARE(empty.sql.Init(), succeeded);
        ImportPlan plan = PlanOf(file.rows, empty.sql);
        QCOMPARE(plan.Count(RowStatus::New), TripsOf(log.sql).size());
        QCOMPARE(plan.rows.size(), TripsOf(log.sql).size());
        QCOMPARE(empty.sql.Import(plan.batch), succeeded);
        const auto expected = ContentsOf(log.sql);
        const auto actual = ContentsOf(empty.sql);
        QCOMPARE(actual.size(), expected.size());
        for (std::size_t trip = 0; trip < expected.size(); ++trip) {
            QCOMPARE(actual[trip], expected[trip]);
        }
    }
};

TEST_CLASS(tst_TripRoundTrip)
#include "tst_TripRoundTrip.moc"
