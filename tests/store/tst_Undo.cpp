#include "RecordFamily.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/TestClass.h"
#include "support/TestStore.h"
#include "support/UnsavedFiles.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const std::string comment = "\t<!-- by hand -->\n";

std::string Name(UndoStatus status)
{
    constexpr std::array names{"Done", "Nothing", "ChangedByOther", "InUse", "Failed"};
    return names.at(static_cast<std::size_t>(status));
}

} // namespace

// Undo and redo of the changes of trips and locations. Each slot runs for both.
class tst_Undo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase_data()
    {
        QTest::addColumn<RecordFamily>("family");
        QTest::newRow("trips") << RecordFamilies()[0];
        QTest::newRow("locations") << RecordFamilies()[1];
    }

    void init()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        m_family = family;
        m_store = std::make_unique<TestStore>();
        Open({Xml("1", "one"), Xml("2", "two"), Xml("3", "three")});
    }

    void cleanup()
    {
        m_other.reset();
        m_store.reset();
    }

    void nothing_isUndoneAtTheStart()
    {
        QVERIFY(!m_store->sql.NextUndo());
        QVERIFY(!m_store->sql.NextRedo());
        QCOMPARE(Undo(), "Nothing"s);
        QCOMPARE(Redo(), "Nothing"s);
        QVERIFY(!m_store->operations.HasWritten());
    }

    void eachKind_isUndoneAndRedone_data()
    {
        QTest::addColumn<std::string>("change");
        QTest::addColumn<std::string>("undone");
        QTest::addColumn<std::string>("redone");
        const auto row = [](const char* change, const char* undone, const char* redone) {
            QTest::newRow(change) << std::string(change) << std::string(undone) << std::string(redone);
        };
        row("add", "Done", "Done 4");
        row("edit", "Done 2", "Done 2");
        row("delete", "Done 2", "Done");
    }

    void eachKind_isUndoneAndRedone()
    {
        QFETCH(std::string, change);
        const std::string before = Bytes();
        if (change == "add") {
            QCOMPARE(Add(m_store->sql, "new"), "4"s);
        } else {
            QCOMPARE(change == "edit" ? Edit(m_store->sql, 2, "new") : Remove(m_store->sql, 2), succeeded);
        }
        const std::string after = Bytes();
        QVERIFY(after != before);
        for (int round = 0; round < 2; ++round) {
            QTEST(Undo(), "undone");
            QCOMPARE(Bytes(), before);
            QVERIFY(!m_store->sql.NextUndo());
            QTEST(Redo(), "redone");
            QCOMPARE(Bytes(), after);
            QVERIFY(!m_store->sql.NextRedo());
        }
    }

    void firstAndOnlyRecord_comesBack()
    {
        Open({Xml("5", "only")});
        const std::string before = Bytes();
        QCOMPARE(Remove(m_store->sql, 5), succeeded);
        QCOMPARE(Bytes(), "<data />\n"s);
        QCOMPARE(Undo(), "Done 5"s);
        QCOMPARE(Bytes(), before);
    }

    void severalSteps_areUndoneInReverseOrder()
    {
        Texts states{Bytes()};
        QCOMPARE(Edit(m_store->sql, 2, "new"), succeeded);
        states.push_back(Bytes());
        QCOMPARE(Remove(m_store->sql, 3), succeeded);
        states.push_back(Bytes());
        QCOMPARE(Remove(m_store->sql, 2), succeeded);
        states.push_back(Bytes());
        QCOMPARE(Add(m_store->sql, "reuses the key"), "2"s);
        states.push_back(Bytes());
        for (std::size_t state = states.size() - 1; state-- > 0;) {
            QVERIFY(Undo().starts_with("Done"));
            QCOMPARE(Bytes(), states[state]);
        }
        for (std::size_t state = 1; state < states.size(); ++state) {
            QVERIFY(Redo().starts_with("Done"));
            QCOMPARE(Bytes(), states[state]);
        }
    }

    void newChange_dropsWhatCouldBeRedone()
    {
        QCOMPARE(Edit(m_store->sql, 2, "new"), succeeded);
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Edit(m_store->sql, 1, "one"), succeeded); // changes nothing
        QCOMPARE(Remove(m_store->sql, 9), succeeded);
        QVERIFY(m_store->sql.NextRedo());
        QVERIFY(!m_store->sql.NextUndo());
        QCOMPARE(Edit(m_store->sql, 1, "new"), succeeded);
        QVERIFY(!m_store->sql.NextRedo());
    }

    void failedChange_isNoStep()
    {
        Record record = Fetch(m_store->sql, 1);
        record.SetText(0, "9");
        m_store->reports.Expect("cSQL", m_family.name + "Update", ErrorNumber::ObjectNotSet);
        QCOMPARE((m_store->sql.*m_family.update)(record), failed);
        QVERIFY(!m_store->sql.NextUndo());
    }

    void reportsAndColumns_areNoSteps()
    {
        Record report;
        QCOMPARE(m_store->sql.ReportGet(0, report), succeeded);
        QCOMPARE(m_store->sql.ReportUpdate(report), succeeded);
        QCOMPARE(m_store->sql.ReportDelete(1), succeeded);
        RecordList fields;
        QCOMPARE(m_store->sql.FieldList(fields), succeeded);
        Record field(fields.front());
        field.SetText(FieldField::Label, "new");
        QCOMPARE(m_store->sql.FieldUpdate(field), succeeded);
        QVERIFY(!m_store->sql.NextUndo());
    }

    void nextStart_hasNoSteps()
    {
        QCOMPARE(Edit(m_store->sql, 2, "new"), succeeded);
        QCOMPARE(m_store->sql.Init(), succeeded);
        QVERIFY(!m_store->sql.NextUndo());
        QCOMPARE(Edit(m_store->sql, 2, "newer"), succeeded);
        QCOMPARE(m_store->sql.DeInit(), succeeded);
        QVERIFY(!m_store->sql.NextUndo());
    }

    void commentsAndDuplicateKeys_keepTheirPlaces_data()
    {
        QTest::addColumn<Texts>("records");
        const auto row = [](const char* name, const Texts& keys) { QTest::newRow(name) << keys; };
        row("comments", {"", "1", "", "", "2", "", "3", ""});
        row("duplicates side by side", {"1", "2", "2", "", "3"});
        row("identical duplicates", {"1", "2", "", "=2", "=2", "3"});
        row("duplicate of the first one", {"2", "1", "", "2", "3"});
        row("new key exists already", {"4", "2", "3", ""});
        row("not in order", {"9", "2", "x", "2", "3"});
    }

    void commentsAndDuplicateKeys_keepTheirPlaces()
    {
        QFETCH(Texts, records);
        Texts xml;
        for (const std::string& key : records) {
            xml.push_back(key.empty()            ? comment
                          : key.starts_with('=') ? Xml(key.substr(1), "same")
                                                 : Xml(key, "number " + std::to_string(xml.size())));
        }
        Open(xml);
        Texts states{Bytes()};
        for (const auto& change : std::vector<std::function<void()>>{
                 [&] { Edit(m_store->sql, 2, "new"); }, [&] { Add(m_store->sql, "added"); },
                 [&] { Remove(m_store->sql, 2); }, [&] { Remove(m_store->sql, 2); },
                 [&] { Remove(m_store->sql, 3); }, [&] { Add(m_store->sql, "added"); }}) {
            change();
            if (Bytes() != states.back()) {
                states.push_back(Bytes());
            }
        }
        for (int round = 0; round < 2; ++round) {
            for (std::size_t state = states.size() - 1; state-- > 0;) {
                QVERIFY(Undo().starts_with("Done"));
                QCOMPARE(Bytes(), states[state]);
            }
            QVERIFY(!m_store->sql.NextUndo());
            for (std::size_t state = 1; state < states.size(); ++state) {
                QVERIFY(Redo().starts_with("Done"));
                QCOMPARE(Bytes(), states[state]);
            }
            QVERIFY(!m_store->sql.NextRedo());
        }
    }

    void awkwardTexts_comeBack()
    {
        const std::string element = m_family.record;
        const std::string record =
            "\t<" + element + " a=\"1 &lt;&#10;2\">\n\t\t<" + m_family.key + ">2</" + m_family.key +
            ">\n\t\t<Value><![CDATA[<b> & ]]></Value>\n\t\t<!-- in -->\n" +
            "\t\t<Value>   </Value>\n\t\t<Value>a&#13;\nb &amp; c</Value>\n\t\t<?mine " +
            "it?>\n\t\t<Value />\n\t</" + element + ">\n";
        Open({Xml("1", "one"), record, comment});
        const std::string before = Bytes();
        QCOMPARE(Edit(m_store->sql, 2, "  <\t]]>\r\n"), succeeded);
        QCOMPARE(Remove(m_store->sql, 2), succeeded);
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Fetch(m_store->sql, 2).Text(1), "  <\t]]>\r\n"s);
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Bytes(), before);
    }

    void shortRecord_comesBack()
    {
        const std::string record = "\t<" + m_family.record + ">\n\t\t<" + m_family.key + ">2</" +
                                   m_family.key + ">\n\t</" + m_family.record + ">\n";
        Open({record, Xml("3", "three")});
        const std::string before = Bytes();
        QCOMPARE(Remove(m_store->sql, 2), succeeded);
        QCOMPARE(m_store->sql.NextUndo()->record.key, "2"s);
        QCOMPARE(m_store->sql.NextUndo()->record.name, ""s);
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Bytes(), before);
    }

    void failedSave_keepsTheChangeAndItsStep()
    {
        const std::string before = Bytes();
        m_store->operations.Fail("create", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", m_family.name + "Update", ErrorNumber::DiskFull);
        QCOMPARE(Edit(m_store->sql, 2, "new"), failed);
        QVERIFY(m_store->sql.NextUndo());
        m_store->operations.Fail("create", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", "Undo", ErrorNumber::DiskFull);
        QCOMPARE(Undo(), "Failed 2"s);
        QCOMPARE(Values(), (Texts{"1 one", "2 two", "3 three"}));
        QCOMPARE(UnsavedFiles(m_store->sql), Texts()); // the file contains the same
        QVERIFY(!m_store->sql.NextUndo());
        m_store->operations.Fail("create", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", "Redo", ErrorNumber::DiskFull);
        QCOMPARE(Redo(), "Failed 2"s);
        QCOMPARE(UnsavedFiles(m_store->sql), Texts{m_family.file});
        QCOMPARE(Bytes(), before);
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Redo(), "Done 2"s);
        QCOMPARE(UnsavedFiles(m_store->sql), Texts());
        QCOMPARE(Records(), (Texts{"1 one", "2 new", "3 three"}));
    }

    void failedSaves_ofDeletionsAndAdditions()
    {
        QCOMPARE(Add(m_store->sql, "new"), "4"s);
        QCOMPARE(Remove(m_store->sql, 2), succeeded);
        const std::string after = Bytes();
        for (const char* status : {"Failed 2", "Failed"}) {
            m_store->operations.Fail("create", ErrorNumber::DiskFull);
            m_store->reports.Expect("cSQL", "Undo", ErrorNumber::DiskFull);
            QCOMPARE(Undo(), std::string(status));
        }
        QCOMPARE(Values(), (Texts{"1 one", "2 two", "3 three"}));
        QCOMPARE(UnsavedFiles(m_store->sql), Texts{m_family.file});
        for (const char* status : {"Failed 4", "Failed"}) {
            m_store->operations.Fail("create", ErrorNumber::DiskFull);
            m_store->reports.Expect("cSQL", "Redo", ErrorNumber::DiskFull);
            QCOMPARE(Redo(), std::string(status));
        }
        QCOMPARE(UnsavedFiles(m_store->sql), Texts());
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Redo(), "Done"s);
        QCOMPARE(Bytes(), after);
    }

    // Nothing changes before the changes of other programs are known.
    void lockedFolder_changesNothing()
    {
        QCOMPARE(Edit(m_store->sql, 2, "new"), succeeded);
        FolderLock held = SystemFileOperations()->Lock(m_store->folder.Path());
        m_store->reports.Expect("cSQL", "Undo", ErrorNumber::PermissionDenied);
        QCOMPARE(Undo(), "Failed"s);
        QCOMPARE(Values(), (Texts{"1 one", "2 new", "3 three"}));
        held.reset();
        QCOMPARE(Undo(), "Done 2"s);
    }

    void otherRecordsOfOtherPrograms_survive()
    {
        QCOMPARE(Edit(m_store->sql, 2, "new"), succeeded);
        Remove(m_store->sql, 3);
        cSQL& other = StartOther();
        QCOMPARE(Edit(other, 1, "theirs"), succeeded);
        QCOMPARE(Undo(), "Done 3"s);
        QCOMPARE(Records(), (Texts{"1 theirs", "2 new", "3 three"}));
        QCOMPARE(Remove(other, 1), succeeded);
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Records(), (Texts{"2 two", "3 three"}));
        QCOMPARE(Kept(), Texts());
    }

    void changedByOther_isNotUndone_data()
    {
        QTest::addColumn<std::string>("change");
        QTest::addColumn<std::string>("theirs");
        for (const char* change : {"add", "edit"}) {
            for (const char* theirs : {"edit", "delete", "replace"}) {
                QTest::addRow("%s, they %s it", change, theirs) << std::string(change) << std::string(theirs);
            }
        }
    }

    void changedByOther_isNotUndone()
    {
        QFETCH(std::string, change);
        QFETCH(std::string, theirs);
        QCOMPARE(Edit(m_store->sql, 1, "new"), succeeded);
        const int key = change == "add" ? 4 : 3;
        change == "add" ? Add(m_store->sql, "new") : std::to_string(Edit(m_store->sql, 3, "new"));
        cSQL& other = StartOther();
        QCOMPARE(theirs == "edit" ? Edit(other, key, "theirs") : Remove(other, key), succeeded);
        if (theirs == "replace") {
            QCOMPARE(Add(other, "theirs"), std::to_string(key));
        }
        const std::string before = Bytes();
        QCOMPARE(Undo(), "ChangedByOther"s);
        QCOMPARE(Bytes(), before);
        QCOMPARE(Kept(), Texts());
        QVERIFY(!m_store->sql.NextRedo());
        QCOMPARE(Undo(), "Done 1"s); // the step before it
        QCOMPARE(Records().front(), "1 one"s);
    }

    void changedByOther_isNotRedone()
    {
        QCOMPARE(Edit(m_store->sql, 2, "new"), succeeded);
        QCOMPARE(Remove(m_store->sql, 1), succeeded);
        QCOMPARE(Undo(), "Done 1"s);
        QCOMPARE(Undo(), "Done 2"s);
        cSQL& other = StartOther();
        QCOMPARE(Edit(other, 2, "theirs"), succeeded);
        QCOMPARE(Redo(), "ChangedByOther"s);
        QCOMPARE(Redo(), "Done"s);
        QCOMPARE(Records(), (Texts{"2 theirs", "3 three"}));
    }

    void takenKey_recordAndItsStepsGetTheNextOne()
    {
        QCOMPARE(Edit(m_store->sql, 3, "new"), succeeded);
        QCOMPARE(Remove(m_store->sql, 3), succeeded);
        cSQL& other = StartOther();
        QCOMPARE(Add(other, "theirs"), "3"s);
        QCOMPARE(Undo(), "Done 4"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 theirs", "4 new"}));
        QCOMPARE(Undo(), "Done 4"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 theirs", "4 three"}));
        QCOMPARE(Redo(), "Done 4"s);
        QCOMPARE(Redo(), "Done"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 theirs"}));
        QCOMPARE(Undo(), "Done 4"s);
        QCOMPARE(Kept(), Texts());
    }

    void takenKey_ofARedoneAddition()
    {
        QCOMPARE(Add(m_store->sql, "new"), "4"s);
        QCOMPARE(Edit(m_store->sql, 4, "newer"), succeeded);
        QCOMPARE(Undo(), "Done 4"s);
        QCOMPARE(Undo(), "Done"s);
        QCOMPARE(Add(StartOther(), "theirs"), "4"s);
        QCOMPARE(Redo(), "Done 5"s);
        QCOMPARE(Redo(), "Done 5"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 three", "4 theirs", "5 newer"}));
    }

    void deletedRecord_thatIsThereAgain_isNotAddedTwice()
    {
        const std::string before = Bytes();
        QCOMPARE(Remove(m_store->sql, 2), succeeded);
        m_store->folder.Write(m_family.file, before);
        m_store->operations.Before("pause", [] {}); // a file that was written in place is read twice
        QCOMPARE(Undo(), "ChangedByOther"s);
        QCOMPARE(Bytes(), before);
    }

    void neighboursDeletedByOther_recordKeepsTheOrder()
    {
        QCOMPARE(Remove(m_store->sql, 3), succeeded);
        QCOMPARE(Remove(StartOther(), 2), succeeded);
        QCOMPARE(Undo(), "Done 3"s);
        QCOMPARE(Records(), (Texts{"1 one", "3 three"}));
    }

    // Saving gives the new record another key, because another program has added one.
    void additionMerged_isUndoneUnderItsNewKey()
    {
        QCOMPARE(Add(StartOther(), "theirs"), "4"s);
        QCOMPARE(Add(m_store->sql, "ours"), "5"s);
        QCOMPARE(m_store->sql.NextUndo()->record.key, "5"s);
        QCOMPARE(Undo(), "Done"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 three", "4 theirs"}));
        QCOMPARE(Redo(), "Done 5"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 three", "4 theirs", "5 ours"}));
    }

    // The record is back in memory only when another program gives its key to a record.
    void unsavedUndo_isMergedLikeANewRecord()
    {
        QCOMPARE(Remove(m_store->sql, 3), succeeded);
        m_store->operations.Fail("create", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", "Undo", ErrorNumber::DiskFull);
        QCOMPARE(Undo(), "Failed 3"s);
        QCOMPARE(Add(StartOther(), "theirs"), "3"s);
        QCOMPARE(Edit(m_store->sql, 1, "new"), succeeded);
        QCOMPARE(Records(), (Texts{"1 new", "2 two", "3 theirs", "4 three"}));
        QCOMPARE(Kept(), Texts());
        QCOMPARE(Undo(), "Done 1"s);
        QCOMPARE(Redo(), "Done 1"s);
    }

    void conflict_isKeptAndOursIsUndone()
    {
        std::vector<ConflictNotice> notices;
        m_store->sql.SetShowConflict([&](const ConflictNotice& notice) { notices.push_back(notice); });
        QCOMPARE(Edit(StartOther(), 2, "theirs"), succeeded);
        QCOMPARE(Edit(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(notices.size(), std::size_t{1});
        QCOMPARE(Undo(), "Done 2"s);
        QCOMPARE(Records(), (Texts{"1 one", "2 two", "3 three"}));
        QCOMPARE(Kept().size(), std::size_t{1});
        QCOMPARE(notices.size(), std::size_t{1});
    }

private:
    std::string Xml(const std::string& key, const std::string& value) const
    {
        return m_family.RecordXml(key, value);
    }

    void Open(const Texts& records)
    {
        m_store->folder.Write(m_family.file, RecordFamily::File(records));
        QCOMPARE(m_store->sql.Init(), succeeded);
    }

    /// Starts another program with the same folder.
    cSQL& StartOther()
    {
        m_other = std::make_unique<cSQL>(m_store->programFolder, *m_otherOperations);
        if (m_other->Init() != succeeded) {
            qFatal("the other program does not start");
        }
        return *m_other;
    }

    Record Fetch(cSQL& sql, int key) const
    {
        Record record;
        (sql.*m_family.get)(static_cast<std::int16_t>(key), record);
        return record;
    }

    Status Edit(cSQL& sql, int key, const std::string& value) const
    {
        Record record = Fetch(sql, key);
        record.SetText(1, value);
        return (sql.*m_family.update)(record);
    }

    std::string Add(cSQL& sql, const std::string& value) const
    {
        Record record = Fetch(sql, 0);
        record.SetText(1, value);
        return (sql.*m_family.update)(record) == succeeded ? record.Text(0) : "";
    }

    Status Remove(cSQL& sql, int key) const { return (sql.*m_family.remove)(static_cast<std::int16_t>(key)); }

    static std::string Described(const UndoResult& result)
    {
        return Name(result.status) + (result.key.empty() ? "" : " ") + result.key;
    }

    std::string Undo() { return Described(m_store->sql.Undo()); }

    std::string Redo() { return Described(m_store->sql.Redo()); }

    std::string Bytes() const { return m_store->folder.Read(m_family.file); }

    /// Returns "key value" of each record in `sql`.
    Texts ValuesIn(const cSQL& sql) const
    {
        RecordList list;
        (sql.*m_family.list)(list);
        Texts values;
        for (const RecordView& record : list) {
            values.push_back(record.Text(0) + ' ' + record.Text(1));
        }
        return values;
    }

    Texts Values() const { return ValuesIn(m_store->sql); }

    /// Returns "key value" of each record in the file, which must be the same as in memory.
    Texts Records() const
    {
        cSQL reader(m_store->programFolder, *m_otherOperations);
        reader.Init();
        return ValuesIn(reader) == Values() ? Values() : Texts{"memory and file differ"};
    }

    Texts Kept() const
    {
        Texts names = m_store->folder.Names();
        std::erase_if(names,
                      [](const std::string& name) { return name.find("-kept-") == std::string::npos; });
        return names;
    }

    RecordFamily m_family;
    std::unique_ptr<TestStore> m_store;
    std::unique_ptr<FileOperations> m_otherOperations = SystemFileOperations();
    std::unique_ptr<cSQL> m_other;
};

TEST_CLASS(tst_Undo)
#include "tst_Undo.moc"
