// The table of the log report: which entries become rows, and how values are shown.

#include "core/ShellSort.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <algorithm>
#include <map>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
/// Values of an entry by position. All others are empty.
using Values = std::map<int, std::string>;

constexpr int lastPosition = 36;

std::string EntryXml(int number, const Values& values)
{
    std::string xml = "<tarno><TarnoNo>" + std::to_string(number) + "</TarnoNo>";
    for (int position = 1; position <= lastPosition; ++position) {
        const auto value = values.find(position);
        xml += "<v>" + (value == values.end() ? ""s : value->second) + "</v>";
    }
    return xml + "</tarno>";
}

/// A log with `entries`, numbered from 1, and the locations 1 "Reef" and 5 "Wharf".
struct Log : TestStore {
    explicit Log(const std::vector<Values>& entries)
    {
        std::string file = "<data>";
        for (const Values& values : entries) {
            file += EntryXml(++count, values);
        }
        folder.Write("tarno.xml", file + "</data>");
        folder.Write("location.xml", "<data><location><LocNo>1</LocNo><LocName>Reef</LocName></location>"
                                     "<location><LocNo>5</LocNo><LocName>Wharf</LocName></location></data>");
        Load();
    }

    void Load()
    {
        if (sql.Init() != succeeded) {
            qFatal("the log cannot be loaded");
        }
    }

    /// Returns the rows of the table with "|" between the cells.
    Texts Rows()
    {
        Texts rows;
        for (const ReportRow& row : sql.ReportGrid()) {
            std::string joined;
            for (const std::string& cell : row) {
                joined += (&cell == &row.front() ? "" : "|") + cell;
            }
            rows.push_back(joined);
        }
        return rows;
    }

    /// Runs a report and returns its rows.
    Texts Report(const std::string& names, const std::string& keys, std::int16_t location = 0)
    {
        return sql.ReportLogData(names, keys, location) == succeeded ? Rows() : Texts{"(failed)"};
    }

    /// Runs a report that must fail with `number`.
    void ExpectFailure(const std::string& names, const std::string& keys, ErrorNumber number,
                       std::int16_t location = 0)
    {
        reports.Expect("cSQL", "ReportLogData", number);
        QCOMPARE(sql.ReportLogData(names, keys, location), failed);
    }

    int count = 0;
};

/// Returns entries with these locations and their numbers at position 18.
std::vector<Values> EntriesAt(const Texts& locations)
{
    std::vector<Values> entries;
    for (const std::string& location : locations) {
        entries.push_back({{5, location}, {18, std::to_string(entries.size() + 1)}});
    }
    return entries;
}

/// Returns one entry per value, with the value at `position`.
std::vector<Values> EntriesWith(int position, const Texts& values)
{
    std::vector<Values> entries;
    for (const std::string& value : values) {
        entries.push_back({{position, value}});
    }
    return entries;
}

} // namespace

class tst_ReportLogData : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void reportGrid_beforeAnyReport_isEmpty()
    {
        Log log(EntriesAt({"1"}));
        QCOMPARE(log.Rows(), Texts());
    }

    void rows_filter_keepsTheFirstRowForTheFirstEntry_data()
    {
        QTest::addColumn<Texts>("locations");
        QTest::addColumn<int>("filter");
        QTest::addColumn<Texts>("rows");
        QTest::newRow("all, in file order") << Texts{"5", "1", "5"} << 0 << Texts{"1", "2", "3"};
        QTest::newRow("all, one entry") << Texts{"5"} << 0 << Texts{"1"};
        QTest::newRow("first matches") << Texts{"5", "1", "5"} << 5 << Texts{"1", "3"};
        QTest::newRow("only the first matches") << Texts{"5", "1", "1"} << 5 << Texts{"1"};
        QTest::newRow("only the second matches") << Texts{"5", "1", "5"} << 1 << Texts{"", "2"};
        QTest::newRow("all but the first match")
            << Texts{"5", "1", "1", "1"} << 1 << Texts{"", "2", "3", "4"};
        QTest::newRow("only the last matches") << Texts{"5", "5", "5", "1"} << 1 << Texts{"", "4"};
        QTest::newRow("none matches") << Texts{"5", "1", "5"} << 7 << Texts{""};
        QTest::newRow("no entries") << Texts{} << 0 << Texts{""};
        QTest::newRow("no entries, with a filter") << Texts{} << 5 << Texts{""};
        QTest::newRow("largest filter") << Texts{"1", "32767"} << 32767 << Texts{"", "2"};
        QTest::newRow("smallest filter") << Texts{"-32768", "1"} << -32768 << Texts{"1"};
    }

    void rows_filter_keepsTheFirstRowForTheFirstEntry()
    {
        QFETCH(Texts, locations);
        QFETCH(int, filter);
        Log log(EntriesAt(locations));
        QTEST(log.Report("AirTemp", "18", static_cast<std::int16_t>(filter)), "rows");
    }

    void rows_noMatch_isOneEmptyRow()
    {
        Log log(EntriesAt({"1", "1"}));
        QCOMPARE(log.Report("TideStart,LocNo,MoonPhase,Obbos", "6,5,16,31", 5), (Texts{"|||"}));
    }

    void columns_followTheOrderOfTheKeys()
    {
        Log log({{{1, "2003-02-05"}, {18, "21"}, {36, "trout.png"}}});
        QCOMPARE(log.Report("StartDate,AirTemp,Picture", "1,18,36"), (Texts{"2003-02-05|21|trout.png"}));
        QCOMPARE(log.Report("Picture,StartDate,AirTemp", "36,1,18"), (Texts{"trout.png|2003-02-05|21"}));
        QCOMPARE(log.Report("TarnoNo,AirTemp,AirTemp", "0,18,18"), (Texts{"1|21|21"}));
        QCOMPARE(log.Report("AirTemp", "18"), (Texts{"21"}));
    }

    void columns_moreNamesThanKeys_ignoresTheRest()
    {
        Log log({{{1, "2003-02-05"}, {18, "21"}}});
        QCOMPARE(log.Report("StartDate,AirTemp,Picture", "1,18"), (Texts{"2003-02-05|21"}));
    }

    void codes_areShownAsWords_withTheCodeInTheFirstColumnOfFiveFields_data()
    {
        QTest::addColumn<std::string>("name");
        QTest::addColumn<int>("position");
        QTest::addColumn<Texts>("words");
        QTest::addColumn<bool>("showsCode");
        const auto row = [](const char* name, int position, const Texts& words, bool showsCode) {
            QTest::newRow(name) << std::string(name) << position << words << showsCode;
        };
        row("TideStart", 6, {"Top", "Run Out", "Bottom", "Run In"}, true);
        row("TideEnd", 7, {"Top", "Run Out", "Bottom", "Run In"}, true);
        row("Prediction", 17, {"Poor", "Fair", "Good", "Best"}, true);
        row("FishAction", 27, {"Slow", "Fair", "Good", "Hot!"}, true);
        row("Weather", 22, {"Stormy", "Rainy", "Showery", "Overcast", "Cloudy", "Few Clouds", "Clear"}, true);
        row("WindDir", 20, {"N", "NE", "E", "SE", "S", "SW", "W", "NW"}, false);
        row("WindStrength", 21, {"Calm", "Light", "Moderate", "Strong"}, false);
        row("WaterClarity", 23, {"Clear", "Cloudy", "Muddy"}, false);
        row("AirPressure", 29, {"Rising", "Falling"}, false);
        row("MoonPhase", 16, {"Waxing, 00%", "Waxing, 01%", "Waxing, 02%"}, false);
    }

    void codes_areShownAsWords_withTheCodeInTheFirstColumnOfFiveFields()
    {
        QFETCH(std::string, name);
        QFETCH(int, position);
        QFETCH(Texts, words);
        QFETCH(bool, showsCode);
        Texts codes;
        for (const std::string& word : words) {
            codes.push_back(std::to_string(&word - words.data()));
        }
        const bool isMoon = name == "MoonPhase";
        for (const std::string& unset : isMoon ? Texts{""} : Texts{"", "-1", "9", "03", " 1"}) {
            codes.push_back(unset);
            words.emplace_back("Not Set");
        }
        Texts first;
        Texts later;
        for (std::size_t entry = 0; entry < codes.size(); ++entry) {
            first.push_back((showsCode ? codes[entry] + "-" : "") + words[entry]);
            later.push_back("|" + words[entry]);
        }
        Log log(EntriesWith(position, codes));
        const std::string key = std::to_string(position);
        QCOMPARE(log.Report(name, key), first);
        QCOMPARE(log.Report("Picture," + name, "36," + key), later);
    }

    void codes_areShownInTheFirstColumnOnly()
    {
        Log log({{{6, "3"}, {7, "1"}, {17, "3"}, {22, "6"}, {27, "0"}}});
        QCOMPARE(log.Report("TideStart,TideEnd,Prediction,FishAction,Weather,TideStart", "6,7,17,27,22,6"),
                 (Texts{"3-Run In|Run Out|Best|Slow|Clear|Run In"}));
    }

    void moonPhase_isShownInWordsInEveryColumn()
    {
        Log log(EntriesWith(16, {"-45", "7", "0", "100", "-100", "-3", "-0", ""}));
        QCOMPARE(log.Report("MoonPhase,MoonPhase", "16,16"),
                 (Texts{"Waning, 45%|Waning, 45%", "Waxing, 07%|Waxing, 07%", "Waxing, 00%|Waxing, 00%",
                        "Waxing, 00%|Waxing, 00%", "Waning, 00%|Waning, 00%", "Waning, 03%|Waning, 03%",
                        "Waning, 00%|Waning, 00%", "Not Set|Not Set"}));
    }

    void moonPhase_notANumber_failsTheReport_data()
    {
        QTest::addColumn<std::string>("phase");
        QTest::addColumn<int>("number");
        QTest::newRow("word") << "full"s << 13;
        QTest::newRow("blank") << " "s << 13;
        QTest::newRow("sign alone") << "-"s << 13;
        QTest::newRow("too large") << "32768"s << 6;
    }

    void moonPhase_notANumber_failsTheReport()
    {
        QFETCH(std::string, phase);
        QFETCH(int, number);
        Log log(EntriesWith(16, {"12", phase}));
        log.ExpectFailure("AirTemp,MoonPhase", "18,16", static_cast<ErrorNumber>(number));
        // a report without the column succeeds
        QCOMPARE(log.Report("AirTemp", "18"), (Texts{"", ""}));
    }

    void words_dependOnTheNameNotThePosition()
    {
        Log log({{{6, "3"}, {20, "3"}, {24, "a~CL~b"}}});
        QCOMPARE(log.Report("StartDate,AirTemp", "6,20"), (Texts{"3|3"}));
        QCOMPARE(log.Report("WindDir,TideStart,Prediction", "6,20,20"), (Texts{"SE|Run In|Best"}));
        QCOMPARE(log.Report("Picture,Obbos", "24,24"), (Texts{"a~CL~b|a\r\nb"}));
    }

    void lineBreaks_ofTheFiveTextFields_areDecoded_data()
    {
        QTest::addColumn<std::string>("name");
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("decoded");
        const auto row = [](const char* name, int position, bool decoded) {
            QTest::newRow(name) << std::string(name) << position << decoded;
        };
        row("TargetSpecies", 24, true);
        row("BaitUsed", 25, true);
        row("Method", 26, true);
        row("FishCaught", 28, true);
        row("Obbos", 31, true);
        row("StartDate", 1, false);
        row("HighTideHt", 9, false);
        row("SunRise", 12, false);
        row("PressureReading", 30, false);
        row("Major1", 32, false);
        row("Picture", 36, false);
    }

    void lineBreaks_ofTheFiveTextFields_areDecoded()
    {
        QFETCH(std::string, name);
        QFETCH(int, position);
        QFETCH(bool, decoded);
        const std::string stored = "one~CL~~CL~two~CL~";
        const std::string shown = decoded ? "one\r\n\r\ntwo\r\n" : stored;
        Log log(EntriesWith(position, {stored}));
        const std::string key = std::to_string(position);
        QCOMPARE(log.Report(name + ",AirTemp," + name, key + ",18," + key), (Texts{shown + "||" + shown}));
    }

    void location_isShownByName()
    {
        Log log(EntriesAt({"5", "1", "5"}));
        QCOMPARE(log.Report("LocNo,AirTemp,LocNo", "5,18,5"),
                 (Texts{"Wharf|1|Wharf", "Reef|2|Reef", "Wharf|3|Wharf"}));
        QCOMPARE(log.Report("LocNo", "5", 5), (Texts{"Wharf", "Wharf"}));
    }

    void location_lineBreakInTheName_isDecoded()
    {
        Log log(EntriesAt({"1"}));
        log.folder.Write("location.xml",
                         "<data><location><LocNo>1</LocNo><LocName>Big~CL~Rock</LocName></location></data>");
        log.Load();
        QCOMPARE(log.Report("LocNo", "5"), (Texts{"Big\r\nRock"}));
    }

    void location_missing_isReportedOnceAndShownAsOne()
    {
        Log log(EntriesAt({"7", "1", "7", "8", "7", "8"}));
        for (int run = 0; run < 2; ++run) { // each report looks the names up again
            log.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
            QCOMPARE(log.Report("LocNo,LocNo", "5,5"),
                     (Texts{"1|1", "Reef|Reef", "1|1", "1|1", "1|1", "1|1"}));
        }
    }

    void location_notANumber_withoutFilter_isReportedAsMissing()
    {
        Log log(EntriesAt({"reef", "1", ""}));
        log.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        QCOMPARE(log.Report("LocNo", "5"), (Texts{"1", "Reef", "1"}));
    }

    void location_notANumber_withoutFilterAndColumn_isIgnored()
    {
        Log log(EntriesAt({"reef", ""}));
        QCOMPARE(log.Report("AirTemp", "18"), (Texts{"1", "2"}));
    }

    void location_notANumber_withFilter_isTypeMismatch_data()
    {
        QTest::addColumn<Texts>("locations");
        QTest::newRow("word") << Texts{"1", "reef"};
        QTest::newRow("empty") << Texts{"", "1"};
        QTest::newRow("after the last match") << Texts{"1", "5", "5 m"};
    }

    void location_notANumber_withFilter_isTypeMismatch()
    {
        QFETCH(Texts, locations);
        Log log(EntriesAt(locations));
        log.ExpectFailure("AirTemp", "18", ErrorNumber::TypeMismatch, 1);
    }

    void location_filter_comparesNumbers()
    {
        Log log(EntriesAt({"5.0", " 5", "05", "5.4", "-5", "55", "5"}));
        QCOMPARE(log.Report("AirTemp", "18", 5), (Texts{"1", "2", "3", "7"}));
    }

    void location_inAnotherSpelling_matchesButHasNoName()
    {
        Log log(EntriesAt({"5.0", "5", " 5"}));
        log.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        QCOMPARE(log.Report("LocNo", "5", 5), (Texts{"1", "Wharf", "1"}));
    }

    void key_invalidPosition_failsTheReport_data()
    {
        QTest::addColumn<std::string>("keys");
        QTest::addColumn<int>("number");
        QTest::newRow("one too large") << "1,37"s << 91;
        QTest::newRow("much too large") << "1,40000"s << 91;
        QTest::newRow("negative") << "1,-1"s << 91;
        QTest::newRow("above 32 bits") << "1,2147483648"s << 6;
        QTest::newRow("word") << "1,LocNo"s << 13;
        QTest::newRow("nothing after the comma") << "1,"s << 13;
        QTest::newRow("nothing before the comma") << ",1"s << 13;
        QTest::newRow("another separator") << "1;2"s << 13;
    }

    void key_invalidPosition_failsTheReport()
    {
        QFETCH(std::string, keys);
        QFETCH(int, number);
        Log log(EntriesAt({"1", "5"}));
        log.ExpectFailure("StartDate,EndDate", keys, static_cast<ErrorNumber>(number));
    }

    void names_fewerThanKeys_isSubscriptOutOfRange()
    {
        Log log(EntriesAt({"1"}));
        log.ExpectFailure("StartDate,EndDate", "1,2,3", ErrorNumber::SubscriptOutOfRange);
        log.ExpectFailure("", "1", ErrorNumber::SubscriptOutOfRange);
    }

    void columns_withoutEntries_areNotChecked()
    {
        Log log({});
        QCOMPARE(log.Report("StartDate,EndDate", "1,x"), (Texts{"|"}));
        QCOMPARE(log.Report("StartDate", "1,2"), (Texts{"|"}));
    }

    void entry_withTooFewValues_hasEmptyCells()
    {
        Log log({});
        log.folder.Write("tarno.xml",
                         "<data><tarno><TarnoNo>1</TarnoNo><StartDate>2003-02-05</StartDate></tarno>"
                         "<tarno><TarnoNo>2</TarnoNo><a>2003-02-06</a><b/><c/><d/><LocNo>1</LocNo></tarno>"
                         "</data>");
        log.Load();
        QCOMPARE(log.Report("StartDate,MoonPhase,Weather", "1,16,22"),
                 (Texts{"2003-02-05|Not Set|Not Set", "2003-02-06|Not Set|Not Set"}));
        // an entry without a location passes no filter
        QCOMPARE(log.Report("StartDate,AirTemp", "1,18", 1), (Texts{"|", "2003-02-06|"}));
    }

    void entries_notLoaded_isObjectNotSet()
    {
        Log log(EntriesAt({"1"}));
        log.folder.Write("tarno.xml", "<data><tarno>");
        log.Load();
        log.ExpectFailure("StartDate", "1", ErrorNumber::ObjectNotSet);
    }

    void grid_afterAFailure_isKeptUntilTheNextReport()
    {
        Log log(EntriesAt({"1", "5", "5"}));
        const Texts before = log.Report("AirTemp,LocNo", "18,5", 5);
        QCOMPARE(before, (Texts{"|", "2|Wharf", "3|Wharf"}));
        log.ExpectFailure("AirTemp,Picture", "18,37", ErrorNumber::ObjectNotSet);
        QCOMPARE(log.Rows(), before);
        QCOMPARE(log.Report("AirTemp", "18", 1), (Texts{"1"}));
        QCOMPARE(log.Report("AirTemp,StartDate,LocNo", "18,1,5", 7), (Texts{"||"}));
    }

    void grid_sorted_movesWholeRows()
    {
        constexpr int count = 10000;
        std::vector<Values> entries;
        for (int number = 1; number <= count; ++number) {
            const int mixed = static_cast<int>(static_cast<std::int64_t>(number) * 7919 % 10007);
            entries.push_back({{18, std::to_string(mixed)}, {24, "fish " + std::to_string(number)}});
        }
        Log log(entries);
        const Texts inFileOrder = log.Report("AirTemp,TarnoNo,TargetSpecies", "18,0,24");
        QCOMPARE(static_cast<int>(inFileOrder.size()), count);
        ReportTable& grid = log.sql.ReportGrid();
        for (const bool descending : {false, true}) {
            mMain::ShellSort(grid, {.column = 0, .descending = descending});
            QVERIFY(
                std::is_sorted(grid.begin(), grid.end(), [&](const ReportRow& one, const ReportRow& other) {
                    return descending ? one[0] > other[0] : one[0] < other[0];
                }));
            QCOMPARE(grid.front()[0], descending ? "9999"s : "1"s);
            QVERIFY(std::all_of(grid.begin(), grid.end(),
                                [](const ReportRow& row) { return row[2] == "fish " + row[1]; }));
            Texts rows = log.Rows();
            std::sort(rows.begin(), rows.end());
            Texts expected = inFileOrder;
            std::sort(expected.begin(), expected.end());
            QCOMPARE(rows, expected);
        }
    }
};

TEST_CLASS(tst_ReportLogData)
#include "tst_ReportLogData.moc"
