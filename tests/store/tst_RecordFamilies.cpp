#include "RecordFamily.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// The data access with `records` of the kind.
struct Opened : TestStore {
    Opened(const RecordFamily& kind, const Texts& records) : family(kind)
    {
        folder.Write(family.file, RecordFamily::File(records));
        sql.Init();
    }

    Texts Keys() const
    {
        RecordList list;
        (sql.*family.list)(list);
        return KeysOf(list);
    }

    /// Adds a copy of the template with the value and returns its key.
    std::string Add(const std::string& value)
    {
        Record record;
        (sql.*family.get)(0, record);
        record.SetText(1, value);
        (sql.*family.update)(record);
        return record.Text(0);
    }

    std::string Bytes() const { return folder.Read(family.file); }

    const RecordFamily& family;
};

} // namespace

// The common behaviour of entries, locations and saved reports. Each slot runs for all three.
class tst_RecordFamilies : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase_data() { AddRecordFamilies(); }

    void list_allRecords_inFileOrder()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const Opened store(family, {family.RecordXml("3", "a"), "<!-- c -->", family.RecordXml("1", "b"),
                                    family.RecordXml("2", "c")});
        RecordList list;
        QCOMPARE((store.sql.*family.list)(list), succeeded);
        QCOMPARE(KeysOf(list), (Texts{"3", "1", "2"}));
        QCOMPARE(list.at(1).Text(1), "b"s);
    }

    void list_noRecords_leavesTheArgumentUnchanged()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const Opened store(family, {});
        RecordList list;
        QCOMPARE((store.sql.*family.list)(list), succeeded);
        QVERIFY(list.empty());
        list.emplace_back(pugi::xml_node());
        QCOMPARE((store.sql.*family.list)(list), succeeded);
        QCOMPARE(static_cast<int>(list.size()), 1);
    }

    void get_zero_returnsACopyOfTheTemplate()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const Opened store(family, {family.RecordXml("0", "a stored zero"), family.RecordXml("1", "b")});
        Record record;
        QCOMPARE((store.sql.*family.get)(0, record), succeeded);
        QCOMPARE(record.Text(0), "0"s);
        QCOMPARE(record.Text(1), ""s);
        QVERIFY(record.Count() >= 5);
        record.SetText(1, "changed");
        Record again;
        QCOMPARE((store.sql.*family.get)(0, again), succeeded);
        QCOMPARE(again.Text(1), ""s);
    }

    void get_returnsADeepCopy()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const Opened store(
            family, {family.RecordXml("1", "a"), family.RecordXml("12", "b"), family.RecordXml("-5", "c")});
        Record record;
        QCOMPARE((store.sql.*family.get)(12, record), succeeded);
        QCOMPARE(record.Text(0), "12"s);
        QCOMPARE(record.Text(1), "b"s);
        record.SetText(1, "changed");
        Record again;
        QCOMPARE((store.sql.*family.get)(12, again), succeeded);
        QCOMPARE(again.Text(1), "b"s);
        QCOMPARE((store.sql.*family.get)(-5, again), succeeded);
        QCOMPARE(again.Text(1), "c"s);
    }

    void get_missingKey_isReported()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("012", "a")});
        Record record;
        for (const std::int16_t key : {std::int16_t{12}, std::int16_t{1}}) {
            store.reports.Expect("cSQL", family.name + "Get", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.get)(key, record), failed);
        }
    }

    void get_missingKey_leavesTheArgumentUnchanged()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("1", "a")});
        Record record;
        QCOMPARE((store.sql.*family.get)(1, record), succeeded);
        store.reports.Expect("cSQL", family.name + "Get", ErrorNumber::ObjectNotSet);
        QCOMPARE((store.sql.*family.get)(2, record), failed);
        QCOMPARE(record.Text(1), "a"s);
    }

    void get_zeroWithoutTemplate_isReported()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        for (const char* bytes :
             {"<data/>", "<data><!-- none --></data>", "<data>", "<?xml version='1.0'?><data/>"}) {
            TestStore store;
            store.folder.Write(family.blank, bytes);
            store.sql.Init();
            Record record;
            store.reports.Expect("cSQL", family.name + "Get", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.get)(0, record), failed);
        }
    }

    void update_newRecord_getsLastKeyPlusOne()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("1", "a"), family.RecordXml("2", "b")});
        QCOMPARE(store.Add("new"), "3"s);
        QCOMPARE(store.Keys(), (Texts{"1", "2", "3"}));
        Record stored;
        QCOMPARE((store.sql.*family.get)(3, stored), succeeded);
        QCOMPARE(stored.Text(1), "new"s);
        const std::string bytes = store.Bytes();
        const std::string before =
            RecordFamily::File({family.RecordXml("1", "a"), family.RecordXml("2", "b")});
        const std::string records = before.substr(0, before.find("</data>"));
        QVERIFY(bytes.starts_with(records + "\t<" + family.record + ">\n\t\t<" + family.key + ">3</"));
        QVERIFY(bytes.ends_with("\t</" + family.record + ">\n</data>\n"));
    }

    void update_firstRecord_getsKeyOne()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {});
        QCOMPARE(store.Add("first"), "1"s);
        QCOMPARE(store.Add("second"), "2"s);
        QCOMPARE(store.Keys(), (Texts{"1", "2"}));
    }

    void update_afterTheLastWasDeleted_reusesItsKey()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family,
                     {family.RecordXml("1", "a"), family.RecordXml("2", "b"), family.RecordXml("3", "c")});
        QCOMPARE((store.sql.*family.remove)(3), succeeded);
        QCOMPARE(store.Add("new"), "3"s);
        QCOMPARE(store.Keys(), (Texts{"1", "2", "3"}));
    }

    void update_afterAnotherWasDeleted_getsLastKeyPlusOne()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family,
                     {family.RecordXml("1", "a"), family.RecordXml("2", "b"), family.RecordXml("3", "c")});
        QCOMPARE((store.sql.*family.remove)(2), succeeded);
        QCOMPARE(store.Add("new"), "4"s);
        QCOMPARE(store.Keys(), (Texts{"1", "3", "4"}));
    }

    void update_reorderedRecords_getsKeyOfTheLastPlusOne()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("9", "a"), family.RecordXml("4", "b"), "<!-- 20 -->"});
        QCOMPARE(store.Add("new"), "5"s);
        QCOMPARE(store.Keys(), (Texts{"9", "4", "5"}));
    }

    void update_lastKeyNotANumber_isReported()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("1", "a"), family.RecordXml("x", "b")});
        const std::string before = store.Bytes();
        store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::TypeMismatch);
        QCOMPARE(store.Add("new"), "0"s);
        QCOMPARE(store.Keys(), (Texts{"1", "x"}));
        QCOMPARE(store.Bytes(), before);
    }

    void update_lastKeyIsTheLargestNumber_isReported()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("2147483646", "a")});
        QCOMPARE(store.Add("new"), "2147483647"s);
        store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::Overflow);
        QCOMPARE(store.Add("one too many"), "0"s);
        QCOMPARE(store.Keys(), (Texts{"2147483646", "2147483647"}));
    }

    void update_storedRecord_replacesItInPlace()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family,
                     {family.RecordXml("1", "a"), family.RecordXml("2", "b"), family.RecordXml("3", "c")});
        Record record;
        QCOMPARE((store.sql.*family.get)(2, record), succeeded);
        record.SetText(1, "new");
        QCOMPARE((store.sql.*family.update)(record), succeeded);
        QCOMPARE(record.Text(0), "2"s);
        QCOMPARE(store.Bytes(), RecordFamily::File({family.RecordXml("1", "a"), family.RecordXml("2", "new"),
                                                    family.RecordXml("3", "c")}));
    }

    void update_missingKey_isReportedAndSavesNothing()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("1", "a")});
        Record record;
        QCOMPARE((store.sql.*family.get)(1, record), succeeded);
        for (const char* key : {"2", "01", "00", ""}) {
            record.SetText(0, key);
            store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.update)(record), failed);
            QCOMPARE(record.Text(0), std::string(key));
        }
        QVERIFY(!store.operations.HasWritten());
        QCOMPARE(store.Keys(), Texts{"1"});
    }

    void update_recordWithoutChildren_isReported()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {"<" + family.record + "/>", family.RecordXml("1", "a")});
        RecordList list;
        QCOMPARE((store.sql.*family.list)(list), succeeded);
        QCOMPARE(static_cast<int>(list.size()), 2);
        Record record(list.front());
        store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::ObjectNotSet);
        QCOMPARE((store.sql.*family.update)(record), failed);
        QVERIFY(!store.operations.HasWritten());
    }

    void update_recordChangedLater_isNotSaved()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("1", "a")});
        Record record;
        QCOMPARE((store.sql.*family.get)(1, record), succeeded);
        record.SetText(1, "saved");
        QCOMPARE((store.sql.*family.update)(record), succeeded);
        record.SetText(1, "dropped");
        store.Add("new");
        QVERIFY(store.Bytes().find("saved") != std::string::npos);
        QVERIFY(store.Bytes().find("dropped") == std::string::npos);
    }

    void update_anyText_roundTripsThroughTheFile()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {});
        const Texts texts{"a~CL~b",         "  blanks around  ", "   ",
                          "<b>&amp;]]>\"'", "one\r\ntwo",        "\ttab\n",
                          "\u9BDB \u00E9",  "~CL~~CL~CL~",       ""};
        for (const std::string& text : texts) {
            store.Add(text);
        }
        const std::string before = store.Bytes();
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList list;
        QCOMPARE((store.sql.*family.list)(list), succeeded);
        Texts stored;
        for (const RecordView& record : list) {
            stored.push_back(record.Text(1));
        }
        QCOMPARE(stored, texts);
        QCOMPARE((store.sql.*family.remove)(1000), succeeded);
        QCOMPARE(store.Bytes(), before);
    }

    void delete_removesTheRecordFromTheFile()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family,
                     {family.RecordXml("1", "a"), family.RecordXml("2", "b"), family.RecordXml("3", "c")});
        QCOMPARE((store.sql.*family.remove)(2), succeeded);
        QCOMPARE(store.Bytes(), RecordFamily::File({family.RecordXml("1", "a"), family.RecordXml("3", "c")}));
        QCOMPARE((store.sql.*family.remove)(1), succeeded);
        QCOMPARE((store.sql.*family.remove)(3), succeeded);
        QCOMPARE(store.Bytes(), RecordFamily::File({}));
    }

    void delete_missingKey_savesTheUnchangedFile()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("1", "a"), family.RecordXml("05", "b")});
        const std::string before = store.Bytes();
        for (const std::int16_t key : {std::int16_t{5}, std::int16_t{0}, std::int16_t{-1}}) {
            QCOMPARE((store.sql.*family.remove)(key), succeeded);
        }
        const Texts& steps = store.operations.Steps();
        QCOMPARE(static_cast<int>(std::count(steps.begin(), steps.end(), "replace")), 3);
        QCOMPARE(store.Bytes(), before);
    }

    void keysAbove16Bits_areAssignedButNeitherFetchedNorDeleted()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {family.RecordXml("32767", "a")});
        QCOMPARE(store.Add("new"), "32768"s);
        Record record;
        QCOMPARE((store.sql.*family.get)(32767, record), succeeded);
        store.reports.Expect("cSQL", family.name + "Get", ErrorNumber::ObjectNotSet);
        QCOMPARE((store.sql.*family.get)(std::int16_t(-32768), record), failed);
        QCOMPARE((store.sql.*family.remove)(std::int16_t(-32768)), succeeded);
        QCOMPARE(store.Keys(), (Texts{"32767", "32768"}));

        // but it can be listed and changed
        RecordList list;
        QCOMPARE((store.sql.*family.list)(list), succeeded);
        Record large(list.back());
        large.SetText(1, "changed");
        QCOMPARE((store.sql.*family.update)(large), succeeded);
        QVERIFY(store.Bytes().find("changed") != std::string::npos);
    }

    void comments_betweenRecords_surviveSaves()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const std::string comment = "\t<!-- the one that got away -->\n";
        const std::string instruction = "\t<?mine it?>\n";
        Opened store(family,
                     {comment, family.RecordXml("1", "a"), instruction, family.RecordXml("2", "b"), comment});
        QCOMPARE((store.sql.*family.remove)(1), succeeded);
        QCOMPARE(store.Bytes(),
                 RecordFamily::File({comment, instruction, family.RecordXml("2", "b"), comment}));
        QCOMPARE(store.Add("new"), "3"s);
        QCOMPARE(store.Keys(), (Texts{"2", "3"}));
    }

    void templates_areNeverWritten()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        Opened store(family, {});
        const std::string before = store.folder.Read(family.blank);
        const Texts names = store.folder.Names();
        store.Add("new");
        QCOMPARE((store.sql.*family.remove)(1), succeeded);
        QCOMPARE(store.folder.Read(family.blank), before);
        QCOMPARE(store.folder.Names(), names);
    }
};

TEST_CLASS(tst_RecordFamilies)
#include "tst_RecordFamilies.moc"
