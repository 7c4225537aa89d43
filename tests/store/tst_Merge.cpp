#include "core/Xml.h"
#include "store/Merge.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <functional>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Returns a file with `records`, each given as "key value".
std::string Xml(const Texts& records)
{
    std::string bytes = "<data>";
    for (const std::string& record : records) {
        const auto blank = record.find(' ');
        bytes += "<tarno><TarnoNo>" + record.substr(0, blank) + "</TarnoNo><Value>" +
                 record.substr(blank + 1) + "</Value></tarno>";
    }
    return bytes + "</data>";
}

std::string Describe(const Record& record)
{
    return record.Count() == 0 ? "deleted" : record.Text(0) + ' ' + record.Text(1);
}

/// The log in memory of one of two programs.
struct Log {
    explicit Log(const std::string& bytes)
    {
        if (!ParseXml(bytes, document)) {
            qFatal("not well-formed");
        }
        table.Rebuild();
    }

    Texts Records() const
    {
        Texts records;
        for (const RecordView& record : table.List()) {
            records.push_back(record.Text(0) + ' ' + record.Text(1));
        }
        return records;
    }

    void Edit(const std::string& key, const std::string& value)
    {
        Record record(table.Get(key));
        record.SetText(1, value);
        table.Replace(record);
    }

    std::string Add(const std::string& value)
    {
        const Log made(Xml({"0 " + value}));
        Record record(made.table.First());
        table.Append(record);
        return record.Text(0);
    }

    pugi::xml_document document;
    RecordTable table{document, {"tarno", "TarnoNo"}};
};

using Steps = std::function<void(Log&)>;

/// Runs steps in two programs that have loaded the same file. The other program saves first.
struct Merged {
    Merged(const Texts& base, const Steps& ourSteps, const Steps& theirSteps)
        : ours(Xml(base)), theirs(Xml(base))
    {
        ourSteps(ours);
        theirSteps(theirs);
        theirs.table.ForgetChanges(); // they are saved
        result = MergeChanges(ours.table, theirs.table);
        for (const Conflict& conflict : result.conflicts) {
            conflicts.push_back(Describe(conflict.ours) + " / " + Describe(conflict.theirs));
        }
    }

    Log ours;
    Log theirs;
    MergeResult result;
    Texts conflicts;
};

const Texts base{"1 a", "2 b", "3 c"};

} // namespace

class tst_Merge : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void merge_data()
    {
        QTest::addColumn<Steps>("ours");
        QTest::addColumn<Steps>("theirs");
        QTest::addColumn<Texts>("records");
        QTest::addColumn<Texts>("conflicts");
        QTest::addColumn<KeyMap>("newKeys");
        const auto row = [](const char* name, const Steps& ours, const Steps& theirs, const Texts& records,
                            const Texts& conflicts = {}, const KeyMap& newKeys = {}) {
            QTest::newRow(name) << ours << theirs << records << conflicts << newKeys;
        };
        const auto edit = [](const char* key, const char* value) {
            return [=](Log& log) { log.Edit(key, value); };
        };
        const auto remove = [](const char* key) { return [=](Log& log) { log.table.Remove(key); }; };
        const auto add = [](const char* value) { return [=](Log& log) { log.Add(value); }; };
        const auto both = [](const Steps& first, const Steps& second) {
            return [=](Log& log) {
                first(log);
                second(log);
            };
        };
        const auto nothing = [](Log&) {};

        row("no changes", nothing, nothing, base);
        row("only theirs", nothing, both(edit("1", "A"), both(remove("2"), add("d"))), {"1 A", "3 c", "4 d"});
        row("only ours", both(edit("1", "A"), both(remove("2"), add("d"))), nothing, {"1 A", "3 c", "4 d"});
        row("different records", edit("1", "ours"), edit("3", "theirs"), {"1 ours", "2 b", "3 theirs"});
        row("ours edited, another deleted", edit("1", "ours"), remove("3"), {"1 ours", "2 b"});
        row("ours deleted, another edited", remove("1"), edit("3", "theirs"), {"2 b", "3 theirs"});
        row("both add", add("ours"), add("theirs"), {"1 a", "2 b", "3 c", "4 theirs", "5 ours"}, {},
            {{"4", "5"}});
        row("both add several", both(add("ours"), add("ours too")), both(add("theirs"), add("theirs too")),
            {"1 a", "2 b", "3 c", "4 theirs", "5 theirs too", "6 ours", "7 ours too"}, {},
            {{"4", "6"}, {"5", "7"}});
        row("ours added, last one deleted there", add("ours"), remove("3"), {"1 a", "2 b", "3 ours"}, {},
            {{"4", "3"}});
        row("ours added and edited", both(add("ours"), edit("4", "edited")), add("theirs"),
            {"1 a", "2 b", "3 c", "4 theirs", "5 edited"}, {}, {{"4", "5"}});
        row("ours added and deleted", both(add("ours"), remove("4")), add("theirs"),
            {"1 a", "2 b", "3 c", "4 theirs"});
        row("key of a deleted record reused", both(remove("3"), add("ours")), edit("1", "theirs"),
            {"1 theirs", "2 b", "3 ours"});
        row("ours is already in their file", add("same"), add("same"), {"1 a", "2 b", "3 c", "4 same"});
        row("same edit", edit("2", "same"), edit("2", "same"), {"1 a", "2 same", "3 c"});
        row("same deletion", remove("2"), remove("2"), {"1 a", "3 c"});
        row("edited and changed back", both(edit("2", "x"), edit("2", "b")), edit("2", "theirs"),
            {"1 a", "2 theirs", "3 c"});

        row("same record edited", edit("2", "ours"), edit("2", "theirs"), {"1 a", "2 ours", "3 c"},
            {"2 ours / 2 theirs"});
        row("conflict among other changes", both(edit("2", "ours"), add("ours")),
            both(edit("2", "theirs"), both(edit("1", "theirs"), add("theirs"))),
            {"1 theirs", "2 ours", "3 c", "4 theirs", "5 ours"}, {"2 ours / 2 theirs"}, {{"4", "5"}});
        row("deleted here, edited there", remove("2"), edit("2", "theirs"), {"1 a", "3 c"},
            {"deleted / 2 theirs"});
        row("edited here, deleted there", edit("2", "ours"), remove("2"), {"1 a", "2 ours", "3 c"},
            {"2 ours / deleted"});
        row("first one edited here, deleted there", edit("1", "ours"), both(remove("1"), remove("2")),
            {"1 ours", "3 c"}, {"1 ours / deleted"});
    }

    void merge()
    {
        QFETCH(Steps, ours);
        QFETCH(Steps, theirs);
        const Merged merged(base, ours, theirs);
        QTEST(merged.theirs.Records(), "records");
        QTEST(merged.conflicts, "conflicts");
        QTEST(merged.result.newKeys, "newKeys");
    }

    // after a failed save the result is merged with the file again
    void merge_again_changesNothing()
    {
        const auto ours = [](Log& log) {
            log.Edit("1", "ours");
            log.table.Remove("2");
            log.Add("ours");
        };
        const auto theirs = [](Log& log) {
            log.Edit("1", "theirs");
            log.Add("theirs");
        };
        const Merged once(base, ours, theirs);
        Log file(Xml({"1 theirs", "2 b", "3 c", "4 theirs", "5 more"}));
        const MergeResult again = MergeChanges(once.theirs.table, file.table);
        QCOMPARE(file.Records(), (Texts{"1 ours", "3 c", "4 theirs", "5 more", "6 ours"}));
        QVERIFY(again.conflicts.empty());
        QCOMPARE(again.newKeys, (KeyMap{{"5", "6"}}));
    }

    void merge_restoredRecord_data()
    {
        QTest::addColumn<Steps>("theirs");
        QTest::addColumn<Texts>("records");
        QTest::addColumn<KeyMap>("newKeys");
        QTest::newRow("unchanged") << Steps([](Log&) {}) << Texts{"1 a", "3 c", "4 d"} << KeyMap();
        QTest::newRow("its key was taken") << Steps([](Log& log) { log.Add("theirs"); })
                                           << Texts{"1 a", "3 c", "4 theirs", "5 d"} << KeyMap{{"4", "5"}};
        QTest::newRow("a record with a smaller key was added") << Steps([](Log& log) {
            log.table.Remove("3");
            log.Add("theirs");
        }) << Texts{"1 a", "2 theirs", "4 d"} << KeyMap();
        QTest::newRow("it is there already")
            << Steps([](Log& log) { log.Add("d"); }) << Texts{"1 a", "3 c", "4 d"} << KeyMap();
    }

    // the record was deleted and saved, and has been restored here since
    void merge_restoredRecord()
    {
        QFETCH(Steps, theirs);
        const auto restore = [](Log& log) {
            const Log made(Xml({"4 d"}));
            log.table.Restore(Record(made.table.First()), {.previous = "3", .others = 0, .next = {}});
        };
        const Merged merged({"1 a", "3 c"}, restore, theirs);
        QTEST(merged.theirs.Records(), "records");
        QTEST(merged.result.newKeys, "newKeys");
        QCOMPARE(merged.conflicts, Texts());
    }

    // the next key depends on the last record, not on the largest key
    void merge_ourNewKeyExistsAlready_keepsBoth()
    {
        const Merged merged(
            {"4 a", "3 b"}, [](Log& log) { log.Add("ours"); }, [](Log& log) { log.Edit("3", "theirs"); });
        QCOMPARE(merged.theirs.Records(), (Texts{"4 a", "3 theirs", "4 ours"}));
    }

    void merge_reformattedFile_isNoConflict()
    {
        Log ours(Xml(base));
        ours.Edit("2", "ours");
        Log theirs("<data>\r\n  <!-- by hand -->\r\n  <tarno>\r\n    <TarnoNo>1</TarnoNo>\r\n    "
                   "<Value>a</Value>\r\n"
                   "  </tarno>\r\n  <tarno >\r\n    <TarnoNo>2</TarnoNo>\r\n    <Value>b</Value>\r\n  "
                   "</tarno>\r\n</data>");
        const MergeResult result = MergeChanges(ours.table, theirs.table);
        QVERIFY(result.conflicts.empty());
        QCOMPARE(theirs.Records(), (Texts{"1 a", "2 ours"}));
        QVERIFY(SerializeXml(theirs.document).find("by hand") != std::string::npos);
    }

    void merge_changesOfTheResult_areThoseMissingInTheFile()
    {
        const Merged merged(
            base,
            [](Log& log) {
                log.Edit("1", "ours");
                log.Add("ours");
            },
            [](Log& log) { log.Edit("1", "theirs"); });
        QCOMPARE(merged.theirs.table.Changed(),
                 (RecordTable::Changes{{"1", "<tarno><TarnoNo>1</TarnoNo><Value>theirs</Value></tarno>"}}));
        QCOMPARE(merged.theirs.table.Appended().size(), std::size_t{1});
    }
};

TEST_CLASS(tst_Merge)
#include "tst_Merge.moc"
