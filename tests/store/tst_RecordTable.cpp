#include "core/Xml.h"
#include "store/RecordTable.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// A table of the location records in `bytes`.
struct Table {
    explicit Table(std::string_view bytes)
    {
        ParseXml(bytes, document);
        table.Rebuild();
    }

    /// Returns the keys in file order.
    Texts Keys() const
    {
        Texts keys;
        for (const RecordView& record : table.List()) {
            keys.push_back(record.Text(0));
        }
        return keys;
    }

    std::string Bytes() const { return SerializeXml(document); }

    pugi::xml_document document;
    RecordTable table{document, {"location", "LocNo"}};
};

std::string Location(const std::string& key, const std::string& name)
{
    return "<location><LocNo>" + key + "</LocNo><LocName>" + name + "</LocName></location>";
}

std::string Data(const std::string& records)
{
    return "<data>" + records + "</data>";
}

Record MakeRecord(const std::string& key, const std::string& name)
{
    pugi::xml_document document;
    document.load_string(Location(key, name).c_str());
    return Record(RecordView(document.first_child()));
}

} // namespace

class tst_RecordTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void list_elementsOnly_inFileOrder()
    {
        const Table test(Data("<!-- c -->" + Location("3", "a") + "<?in it?>text" + Location("1", "b") +
                              "<![CDATA[x]]>" + Location("2", "c") + "<!-- d -->"));
        QCOMPARE(test.Keys(), (Texts{"3", "1", "2"}));
    }

    void list_emptyData_isEmpty()
    {
        for (const char* bytes :
             {"<data/>", "<data></data>", "<data>\r\n</data>", "<data><!-- none --></data>"}) {
            QVERIFY(Table(bytes).table.List().empty());
        }
    }

    void list_afterADeclaration_isEmpty()
    {
        for (const char* before :
             {"<?xml version=\"1.0\"?>", "<!-- mine -->", "<?mine it?>", "<!DOCTYPE data>"}) {
            const Table test(before + Data(Location("1", "a")));
            QVERIFY(test.table.List().empty());
            QCOMPARE(test.table.Get("1").Text(1), "a"s);
        }
    }

    void get_comparesKeysAsText()
    {
        const Table test(Data(Location("12", "a") + Location("007", "b") + Location(" 8", "c")));
        QCOMPARE(test.table.Get("12").Text(1), "a"s);
        QCOMPARE(test.table.Get("007").Text(1), "b"s);
        for (const char* key : {"012", " 12", "12 ", "7", "8", "", "0"}) {
            QCOMPARE(RaisedNumber([&] { test.table.Get(key); }), 91);
        }
    }

    void get_duplicateKey_returnsTheFirst()
    {
        const Table test(Data(Location("1", "first") + Location("1", "second")));
        QCOMPARE(test.table.Get("1").Text(1), "first"s);
    }

    void get_ignoresOtherElements()
    {
        const Table test(Data("<tarno><LocNo>1</LocNo></tarno><location><Other>2</Other></location>"));
        QCOMPARE(RaisedNumber([&] { test.table.Get("1"); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Get("2"); }), 91);
        QCOMPARE(test.Keys(), (Texts{"1", "2"}));
    }

    void get_keyInSeveralNodes_isConcatenated()
    {
        const Table test(Data("<location><LocNo>1<!-- c -->2</LocNo><LocName>a</LocName></location>"
                              "<location><LocNo><![CDATA[3]]></LocNo><LocName>b</LocName></location>"));
        QCOMPARE(test.table.Get("12").Text(1), "a"s);
        QCOMPARE(test.table.Get("3").Text(1), "b"s);
    }

    void get_keyWithQuotes_isComparedLiterally()
    {
        const Table test(Data(Location("1", "a") + Location("x' or '1'='1", "b")));
        QCOMPARE(test.table.Get("x' or '1'='1").Text(1), "b"s);
        QCOMPARE(RaisedNumber([&] { test.table.Get("' or '1'='1"); }), 91);
    }

    void first_isTheFirstElement()
    {
        QCOMPARE(
            Table(Data("<!-- c -->" + Location("0", "blank") + Location("1", "b"))).table.First().Text(1),
            "blank"s);
        QCOMPARE(RaisedNumber([] { Table("<data/>").table.First(); }), 91);
    }

    void append_emptyFile_getsKeyOne_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("empty") << "<data/>"s;
        QTest::newRow("with a line end") << "<data>\r\n</data>"s;
        QTest::newRow("with a comment") << "<data><!-- none --></data>"s;
    }

    void append_emptyFile_getsKeyOne()
    {
        QFETCH(std::string, bytes);
        Table test(bytes);
        Record record = MakeRecord("0", "new");
        test.table.Append(record);
        QCOMPARE(record.Text(0), "1"s);
        QCOMPARE(test.Keys(), Texts{"1"});
        QCOMPARE(test.table.Get("1").Text(1), "new"s);
        QVERIFY(test.Bytes().ends_with("<location>\n\t\t<LocNo>1</LocNo>\n\t\t<LocName>new</LocName>\n"
                                       "\t</location>\n</data>\n"));
    }

    void append_getsKeyOfTheLastRecordPlusOne_data()
    {
        QTest::addColumn<Texts>("keys");
        QTest::addColumn<std::string>("next");
        QTest::newRow("in order") << Texts{"1", "2", "3"} << "4"s;
        QTest::newRow("a larger key before") << Texts{"9", "2"} << "3"s;
        QTest::newRow("above 16 bits") << Texts{"32767"} << "32768"s;
        QTest::newRow("negative") << Texts{"-1"} << "0"s;
        QTest::newRow("blanks around") << Texts{" 4 "} << "5"s;
        QTest::newRow("one below the largest number") << Texts{"2147483646"} << "2147483647"s;
    }

    void append_getsKeyOfTheLastRecordPlusOne()
    {
        QFETCH(Texts, keys);
        QFETCH(std::string, next);
        std::string records;
        for (const std::string& key : keys) {
            records += Location(key, "old");
        }
        Table test(Data(records + "<!-- after -->"));
        Record record = MakeRecord("0", "new");
        test.table.Append(record);
        QCOMPARE(record.Text(0), next);
        QCOMPARE(test.table.Get(next).Text(1), "new"s);
        keys.push_back(next);
        QCOMPARE(test.Keys(), keys);
    }

    void append_invalidLastKey_changesNothing_data()
    {
        QTest::addColumn<std::string>("key");
        QTest::addColumn<int>("number");
        QTest::newRow("not a number") << "abc"s << 13;
        QTest::newRow("empty") << ""s << 13;
        QTest::newRow("the largest number") << "2147483647"s << 6;
        QTest::newRow("above 32 bits") << "2147483648"s << 6;
    }

    void append_invalidLastKey_changesNothing()
    {
        QFETCH(std::string, key);
        Table test(Data(Location("1", "a") + Location(key, "b")));
        Record record = MakeRecord("0", "new");
        QTEST(RaisedNumber([&] { test.table.Append(record); }), "number");
        QCOMPARE(record.Text(0), "0"s);
        QCOMPARE(test.Keys(), (Texts{"1", key}));
    }

    void append_afterADeclaration_changesNothing()
    {
        Table test("<?xml version=\"1.0\"?>" + Data(Location("1", "a")));
        Record record = MakeRecord("0", "new");
        QCOMPARE(RaisedNumber([&] { test.table.Append(record); }), 91);
        QCOMPARE(record.Text(0), "0"s);
        QVERIFY(test.Bytes().find("new") == std::string::npos);
    }

    void append_storesACopy()
    {
        Table test("<data/>");
        Record record = MakeRecord("0", "new");
        test.table.Append(record);
        record.SetText(1, "changed later");
        QCOMPARE(test.table.Get("1").Text(1), "new"s);
    }

    void append_recordWithoutChildren_isObjectNotSet()
    {
        Table test("<data/>");
        Record record;
        QCOMPARE(RaisedNumber([&] { test.table.Append(record); }), 91);
        QVERIFY(test.table.List().empty());
    }

    void replace_keepsThePosition()
    {
        Table test(Data(Location("1", "a") + Location("2", "b") + Location("3", "c")));
        Record record(test.table.Get("2"));
        record.SetText(1, "new");
        test.table.Replace(record);
        record.SetText(1, "changed later");
        QCOMPARE(test.Keys(), (Texts{"1", "2", "3"}));
        QCOMPARE(test.table.Get("2").Text(1), "new"s);
        QCOMPARE(test.table.List().at(1).Text(1), "new"s);
    }

    void replace_duplicateKey_replacesTheFirst()
    {
        Table test(Data(Location("1", "first") + Location("1", "second")));
        test.table.Replace(MakeRecord("1", "new"));
        QCOMPARE(test.table.List().at(0).Text(1), "new"s);
        QCOMPARE(test.table.List().at(1).Text(1), "second"s);
    }

    void replace_firstValueIsNotTheKey_isFoundByItsKeyElement()
    {
        Table test(Data(Location("1", "first") + Location("2", "second") +
                        "<location><Number>1</Number><LocNo>2</LocNo></location>"));
        test.table.Replace(Record(test.table.List().at(2)));
        QCOMPARE(test.table.Get("2").Text(0), "1"s);
        QCOMPARE(RaisedNumber([&] { test.table.Get("1"); }), 91);
        test.table.Remove("2");
        QCOMPARE(test.Keys(), (Texts{"2", "1"}));
        QCOMPARE(test.table.Get("2").Text(1), "second"s);
    }

    void replace_missingKey_isObjectNotSet()
    {
        Table test(Data(Location("1", "a")));
        QCOMPARE(RaisedNumber([&] { test.table.Replace(MakeRecord("01", "new")); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Replace(MakeRecord("2", "new")); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Replace(Record()); }), 91);
        QCOMPARE(test.table.Get("1").Text(1), "a"s);
    }

    void remove_removesOnlyThatRecord()
    {
        Table test(Data(Location("1", "a") + Location("2", "b") + Location("3", "c")));
        test.table.Remove("2");
        QCOMPARE(test.Keys(), (Texts{"1", "3"}));
        QCOMPARE(RaisedNumber([&] { test.table.Get("2"); }), 91);
        QCOMPARE(test.table.Get("3").Text(1), "c"s);
    }

    void remove_duplicateKey_removesTheFirst()
    {
        Table test(Data(Location("1", "first") + Location("1", "second")));
        test.table.Remove("1");
        QCOMPARE(test.Keys(), Texts{"1"});
        QCOMPARE(test.table.Get("1").Text(1), "second"s);
    }

    void remove_missingKey_changesNothing()
    {
        Table test(Data(Location("1", "a")));
        test.table.Remove("2");
        test.table.Remove("01");
        QCOMPARE(test.Keys(), Texts{"1"});
    }

    void comments_betweenRecords_areKept()
    {
        Table test(Data("<!-- top -->" + Location("1", "a") + "<!-- below 1 --><?mine it?>" +
                        Location("2", "b") + Location("3", "c") + "<!-- end -->"));
        Record record = MakeRecord("0", "d");
        test.table.Append(record);
        test.table.Replace(MakeRecord("1", "new"));
        test.table.Remove("2");
        const auto location = [](const char* key, const char* name) {
            return "\t<location>\n\t\t<LocNo>"s + key + "</LocNo>\n\t\t<LocName>" + name +
                   "</LocName>\n\t</location>\n";
        };
        QCOMPARE(test.Bytes(), "<data>\n\t<!-- top -->\n" + location("1", "new") +
                                   "\t<!-- below 1 -->\n\t<?mine it?>\n" + location("3", "c") +
                                   "\t<!-- end -->\n" + location("4", "d") + "</data>\n");
    }

    void changes_untilForgotten_areTheDifferencesToTheFile()
    {
        Table test(Data(Location("1", "a") + Location("2", "b") + Location("3", "c")));
        test.table.Replace(MakeRecord("1", "new"));
        test.table.Replace(MakeRecord("1", "newer"));
        test.table.Remove("2");
        Record added = MakeRecord("0", "d");
        test.table.Append(added);
        test.table.Replace(MakeRecord("4", "changed"));
        Record dropped = MakeRecord("0", "e");
        test.table.Append(dropped);
        test.table.Remove("5");
        QCOMPARE(test.table.Changed(),
                 (RecordTable::Changes{{"1", Location("1", "a")}, {"2", Location("2", "b")}}));
        QCOMPARE(test.table.Appended().size(), std::size_t{1});
        QCOMPARE(RecordView(test.table.Appended().front()).Text(1), "changed"s);
        QVERIFY(test.table.IsAppended(test.table.Find("4")));
        QVERIFY(!test.table.IsAppended(test.table.Find("1")));
        test.table.ForgetChanges();
        QVERIFY(test.table.Changed().empty());
        QVERIFY(test.table.Appended().empty());
    }

    void changes_thatAreReverted_areForgotten()
    {
        Table test(Data(Location("1", "a") + Location("2", "b")));
        RecordChange edited = test.table.Replace(MakeRecord("1", "new")).Reversed();
        RecordChange removed = test.table.Remove("2").Reversed();
        QCOMPARE(test.table.Changed().size(), std::size_t{2});
        QVERIFY(test.table.Apply(removed));
        QVERIFY(test.table.Apply(edited));
        QCOMPARE(test.table.Changed(), RecordTable::Changes());
        RecordChange restored{.key = "3", .before = {}, .after = Location("3", "c")};
        QVERIFY(test.table.Apply(restored));
        QCOMPARE(test.table.Changed(), (RecordTable::Changes{{"3", ""}}));
        test.table.Remove("3");
        QCOMPARE(test.table.Changed(), RecordTable::Changes());
    }

    void apply_recordThatIsDifferent_changesNothing()
    {
        Table test(Data(Location("1", "a") + Location("2", "b")));
        const std::string before = test.Bytes();
        for (const RecordChange& change :
             {RecordChange{.key = "1", .before = Location("1", "b"), .after = Location("1", "c")},
              RecordChange{.key = "3", .before = Location("3", "b"), .after = {}},
              RecordChange{.key = "2", .before = {}, .after = Location("2", "b")}}) {
            RecordChange applied = change;
            QVERIFY(!test.table.Apply(applied));
        }
        QCOMPARE(test.Bytes(), before);
        QCOMPARE(test.table.Changed(), RecordTable::Changes());
    }

    void apply_takenKey_appendsTheRecord()
    {
        Table test(Data(Location("1", "a") + Location("2", "b")));
        RecordChange change{.key = "1", .before = {}, .after = Location("1", "c")};
        QVERIFY(test.table.Apply(change));
        QCOMPARE(change.key, "3"s);
        QCOMPARE(change.after, Location("3", "c"));
        QCOMPARE(test.Keys(), (Texts{"1", "2", "3"}));
    }

    void restore_insertsAtThePlace()
    {
        const std::string bytes = Table(Data("<!-- top -->" + Location("9", "a") + "<!-- c --><?mine it?>" +
                                             Location("2", "b") + "<other/>" + Location("9", "duplicate") +
                                             Location("2", "c") + Location("4", "d") + "<!-- end -->"))
                                      .Bytes();
        for (const char* key : {"9", "2", "4"}) {
            Table test(bytes);
            const Record record(test.table.Get(key));
            const RecordPlace place = test.table.Remove(key).place;
            test.table.Restore(record, place);
            QCOMPARE(test.Bytes(), bytes);
        }
    }

    // The next key depends on the last record, so a large key must not get before smaller ones.
    void restore_otherNeighbours_keepsTheOrderOfKeys()
    {
        Table test(Data("<!-- top -->" + Location("1", "a") + Location("x", "b") + "<!-- c -->" +
                        Location("9", "d") + "<!-- end -->"));
        const auto restore = [&](const char* key, const RecordPlace& place) {
            test.table.Restore(MakeRecord(key, "restored"), place);
        };
        restore("8", {.previous = "7", .others = 2, .next = "9"}); // without the one before
        restore("12", {.previous = "x", .others = 0, .next = {}}); // others were added at the end
        restore("0", {.previous = "7", .others = 0, .next = {}});  // the smallest
        restore("5", {.previous = "1", .others = 0, .next = "6"}); // without the one after
        restore("3", {.previous = {}, .others = 1, .next = "0"});  // unchanged neighbours, any order
        QCOMPARE(test.Keys(), (Texts{"3", "0", "1", "5", "8", "x", "9", "12"}));
    }

    void placeOf_countsTheNodesThatNoKeyFinds()
    {
        const Table test(Data("<!-- top -->" + Location("1", "a") + "<!-- c --><?mine it?>" +
                              Location("1", "second") + "<other/>" + Location("2", "b") +
                              Location("3", "c")));
        const auto placeOf = [&](const char* key) {
            const RecordPlace place = test.table.PlaceOf(test.table.Find(key));
            return place.previous.value_or("none") + " " + std::to_string(place.others) + " " +
                   place.next.value_or("none");
        };
        QCOMPARE(placeOf("1"), "none 1 2"s);
        QCOMPARE(placeOf("2"), "1 4 3"s);
        QCOMPARE(placeOf("3"), "2 0 none"s);
    }

    void restoreAll_keepsThePlacesAmongCommonRecords()
    {
        const std::string nodes =
            "<!-- top -->" + Location("9", "a") + "<!-- c --><?mine it?>" + Location("2", "b");
        const Table ours(
            Data(nodes + Location("9", "second") + Location("4", "c") + "<!-- end -->" + Location("5", "d")));
        Table theirs(Data("<!-- top -->" + Location("2", "b") + Location("9", "second") + "<!-- end -->" +
                          Location("7", "e")));
        theirs.table.Remove("9");
        theirs.table.RestoreAll({"4", "5", "9"}, ours.table);
        QCOMPARE(theirs.Keys(), (Texts{"9", "2", "4", "5", "7"}));
        QCOMPARE(theirs.table.Get("9").Text(1), "a"s);
        theirs.table.Remove("9");
        theirs.table.RestoreAll({"9"}, ours.table);
        QCOMPARE(theirs.Keys(), (Texts{"9", "2", "4", "5", "7"}));
    }

    void addAll_keepsFreeNumbersInOrder()
    {
        Table test(
            Data("<!-- top -->" + Location("2", "a") + "<!-- c -->" + Location("6", "b") + "<!-- end -->"));
        std::vector<StoredTexts> values;
        for (const char* key : {"9", "1", "2", "4", "", "3", "4", "0"}) {
            values.push_back({key, std::string("was ") + key});
        }
        std::vector<StoredTexts*> records;
        for (StoredTexts& value : values) {
            records.push_back(&value);
        }
        const auto changes = test.table.AddAll(MakeRecord("0", ""), records);
        QCOMPARE(test.Keys(), (Texts{"1", "2", "3", "4", "6", "9", "10", "11", "12", "13"}));
        QCOMPARE(test.table.Get("10").Text(1), "was 2"s);
        QCOMPARE(test.table.Get("13").Text(1), "was 0"s);
        QCOMPARE(test.table.Changed(), (RecordTable::Changes{{"1", ""}, {"3", ""}, {"4", ""}, {"9", ""}}));
        QCOMPARE(test.table.Appended().size(), std::size_t{4});
        for (std::size_t index = changes.size(); index-- > 0;) {
            QCOMPARE(changes[index].key, values[index][0]);
            RecordChange undo = changes[index].Reversed();
            QVERIFY(test.table.CanApply(undo));
            QVERIFY(test.table.Apply(undo));
        }
        QCOMPARE(test.Keys(), (Texts{"2", "6"}));
        QCOMPARE(test.table.Changed(), RecordTable::Changes());
        QVERIFY(test.table.Appended().empty());
    }

    void addAll_thatIsImpossible_changesNothing()
    {
        Table test(Data(Location("32766", "a")));
        const std::string before = test.Bytes();
        StoredTexts first{"32767", "b"};
        StoredTexts second{"", "c"};
        QCOMPARE(RaisedNumber([&] { test.table.AddAll(MakeRecord("0", ""), {&first, &second}); }), 6);
        first.push_back("too many");
        QCOMPARE(RaisedNumber([&] { test.table.AddAll(MakeRecord("0", ""), {&first}); }), 91);
        StoredTexts empty;
        QCOMPARE(RaisedNumber([&] { test.table.AddAll(MakeRecord("0", ""), {&empty}); }), 91);
        QCOMPARE(test.Bytes(), before);
        test.table.AddAll(MakeRecord("0", ""), {&second});
        QCOMPARE(second[0], "32767"s);
    }

    void emptyDocument_everyOperationIsObjectNotSet()
    {
        Table test("<data><location>");
        Record record = MakeRecord("0", "new");
        QCOMPARE(RaisedNumber([&] { test.table.List(); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Get("1"); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.First(); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Append(record); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Replace(MakeRecord("1", "new")); }), 91);
        QCOMPARE(RaisedNumber([&] { test.table.Remove("1"); }), 91);
    }

    void changedSince_hasTheKeysOfAllChanges()
    {
        Table test(Data(Location("1", "a") + Location("2", "b") + Location("3", "c")));
        const RecordTable::Revision first = test.table.CurrentRevision();
        QCOMPARE(test.table.ChangedSince(first), std::optional(std::set<std::string>()));
        test.table.Replace(MakeRecord("2", "B"));
        QVERIFY(test.table.CurrentRevision() != first);
        const RecordTable::Revision second = test.table.CurrentRevision();
        const RecordChange removed = test.table.Remove("3");
        test.table.ForgetChanges(); // a save
        Record added = MakeRecord("0", "d");
        test.table.Append(added);
        QCOMPARE(test.table.ChangedSince(second), std::optional(std::set{"3"s}));
        test.table.Remove("3");
        RecordChange restored = removed;
        std::swap(restored.before, restored.after);
        QVERIFY(test.table.Apply(restored));
        StoredTexts values{"7", "e"};
        test.table.AddAll(MakeRecord("0", ""), {&values});
        QCOMPARE(test.table.ChangedSince(second), std::optional(std::set{"3"s, "7"s}));
        QCOMPARE(test.table.ChangedSince(first), std::optional(std::set{"2"s, "3"s, "7"s}));
    }

    void changedSince_ofAnotherTable_isUnknown()
    {
        const std::string bytes = Data(Location("1", "a"));
        Table test(bytes);
        const RecordTable::Revision before = test.table.CurrentRevision();
        const Table other(bytes);
        QVERIFY(!other.table.ChangedSince(before));
        QVERIFY(!other.table.ChangedSince({}));
        ParseXml(bytes, test.document);
        test.table.Rebuild();
        QVERIFY(!test.table.ChangedSince(before));
    }

    void changedSince_inAnIrregularFile_isUnknown_data()
    {
        QTest::addColumn<std::string>("bytes");
        const std::string first = Location("1", "a");
        QTest::newRow("keys twice") << Data(first + first);
        QTest::newRow("no key") << Data(first + "<location><LocName>b</LocName></location>");
        QTest::newRow("key not first")
            << Data(first + "<location><LocName>b</LocName><LocNo>2</LocNo></location>");
        QTest::newRow("other element") << Data(first + "<tarno><LocNo>2</LocNo></tarno>");
        QTest::newRow("two roots") << "<other/>" + Data(first);
        QTest::newRow("empty") << ""s;
    }

    void changedSince_inAnIrregularFile_isUnknown()
    {
        QFETCH(std::string, bytes);
        const Table test(bytes);
        QVERIFY(!test.table.ChangedSince(test.table.CurrentRevision()));
    }
};

TEST_CLASS(tst_RecordTable)
#include "tst_RecordTable.moc"
