#include "RecordFamily.h"
#include "support/PlainUser.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using std::filesystem::perms;

} // namespace

// A change whose saving failed stays in memory and goes with the next save.
class tst_FailedSaves : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyStep_leavesTheFileAndKeepsTheChange_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<std::string>("step");
        for (int kind = 0; kind < 3; ++kind) {
            for (const char* step : {"lock", "look", "create", "replace"}) {
                QTest::addRow("%s, %s", RecordFamilies().at(static_cast<std::size_t>(kind)).name.c_str(),
                              step)
                    << kind << std::string(step);
            }
        }
    }

    void everyStep_leavesTheFileAndKeepsTheChange()
    {
        QFETCH(int, kind);
        QFETCH(std::string, step);
        const RecordFamily& family = RecordFamilies().at(static_cast<std::size_t>(kind));
        TestStore store;
        store.folder.Write(family.file, RecordFamily::File({family.Made("1", "a"), family.Made("2", "b")}));
        const std::string before = store.folder.Read(family.file);
        const Texts names = store.folder.Names();
        QCOMPARE(store.sql.Init(), succeeded);
        Record record;
        QCOMPARE((store.sql.*family.get)(1, record), succeeded);
        record.SetText(1, "new");
        store.operations.Fail(step, ErrorNumber::DiskFull);
        store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::DiskFull);
        QCOMPARE((store.sql.*family.update)(record), failed);
        QCOMPARE(store.folder.Read(family.file), before);
        QCOMPARE(store.folder.Names(), names);
        QCOMPARE(store.sql.UnsavedFiles(), Texts{family.file});

        Record stored;
        QCOMPARE((store.sql.*family.get)(1, stored), succeeded);
        QCOMPARE(stored.Text(1), "new"s);
        QCOMPARE((store.sql.*family.remove)(2), succeeded);
        QCOMPARE(store.folder.Read(family.file), RecordFamily::File({family.Made("1", "new")}));
        QCOMPARE(store.sql.UnsavedFiles(), Texts());
    }

    void append_keepsTheNewKey_andIsNotAppendedTwice()
    {
        for (const RecordFamily& family : RecordFamilies()) {
            TestStore store;
            QCOMPARE(store.sql.Init(), succeeded);
            Record record;
            QCOMPARE((store.sql.*family.get)(0, record), succeeded);
            store.operations.Fail("replace", ErrorNumber::PathFileAccess);
            store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::PathFileAccess);
            QCOMPARE((store.sql.*family.update)(record), failed);
            QCOMPARE(record.Text(0), "1"s);
            QCOMPARE(store.folder.Read(family.file), "<data />\n"s);

            QCOMPARE((store.sql.*family.update)(record), succeeded);
            RecordList list;
            QCOMPARE((store.sql.*family.list)(list), succeeded);
            QCOMPARE(KeysOf(list), Texts{"1"});
            QCOMPARE(store.sql.Init(), succeeded);
            QCOMPARE((store.sql.*family.get)(1, record), succeeded);
        }
    }

    void remove_isWrittenByTheNextSave()
    {
        for (const RecordFamily& family : RecordFamilies()) {
            TestStore store;
            const Texts records{family.Made("1", "a"), family.Made("2", "b")};
            store.folder.Write(family.file, RecordFamily::File(records));
            QCOMPARE(store.sql.Init(), succeeded);
            store.operations.Fail("create", ErrorNumber::DeviceInputOutput);
            store.reports.Expect("cSQL", family.name + "Delete", ErrorNumber::DeviceInputOutput);
            QCOMPARE((store.sql.*family.remove)(1), failed);
            QCOMPARE(store.folder.Read(family.file), RecordFamily::File(records));
            Record record;
            QCOMPARE((store.sql.*family.get)(2, record), succeeded);
            QCOMPARE((store.sql.*family.update)(record), succeeded);
            QCOMPARE(store.folder.Read(family.file), RecordFamily::File({family.Made("2", "b")}));
        }
    }

    void fieldUpdate_isReportedAndKept()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        const std::string before = store.folder.Read("field.xml");
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        Record field(fields.front());
        field.SetText(3, "a new heading");
        store.operations.Fail("create", ErrorNumber::DiskFull);
        store.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::DiskFull);
        QCOMPARE(store.sql.FieldUpdate(field), failed);
        QCOMPARE(store.folder.Read("field.xml"), before);
        QCOMPARE(store.sql.UnsavedFiles(), Texts{"field.xml"});
        RecordList again;
        QCOMPARE(store.sql.FieldList(again), succeeded);
        QCOMPARE(again.front().Text(3), "a new heading"s);
        QCOMPARE(store.sql.FieldUpdate(Record(again.back())), succeeded);
        QVERIFY(store.folder.Read("field.xml").find("a new heading") != std::string::npos);
        QCOMPARE(store.sql.UnsavedFiles(), Texts());
    }

    void save_afterManyFailures_succeeds()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        Record record;
        QCOMPARE(store.sql.EntryGet(0, record), succeeded);
        for (int failure = 0; failure < 40; ++failure) {
            record.SetText(1, "attempt " + std::to_string(failure));
            store.operations.Fail("replace", ErrorNumber::DeviceInputOutput);
            store.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DeviceInputOutput);
            QCOMPARE(store.sql.EntryUpdate(record), failed);
        }
        QCOMPARE(store.sql.EntryUpdate(record), succeeded);
        QVERIFY(store.folder.Read("tarno.xml").find("attempt 39") != std::string::npos);
    }

    void unsavedFiles_areNamedUntilTheyAreSaved()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        QCOMPARE(store.sql.UnsavedFiles(), Texts());
        for (const RecordFamily& family : RecordFamilies()) {
            store.operations.Fail("create", ErrorNumber::PathFileAccess);
            store.reports.Expect("cSQL", family.name + "Delete", ErrorNumber::PathFileAccess);
            QCOMPARE((store.sql.*family.remove)(1), failed);
        }
        QCOMPARE(store.sql.UnsavedFiles(), (Texts{"tarno.xml", "location.xml", "Rpt.xml"}));
        QCOMPARE(store.sql.LocationDelete(1), succeeded);
        QCOMPARE(store.sql.UnsavedFiles(), (Texts{"tarno.xml", "Rpt.xml"}));
        QCOMPARE(store.sql.ReportDelete(1), succeeded);
        QCOMPARE(store.sql.EntryDelete(1), succeeded);
        QCOMPARE(store.sql.UnsavedFiles(), Texts());
    }

    void deInit_dropsWhatIsUnsaved()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        const std::string before = store.folder.Read("tarno.xml");
        Record record;
        QCOMPARE(store.sql.EntryGet(0, record), succeeded);
        store.operations.Fail("create", ErrorNumber::DiskFull);
        store.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
        QCOMPARE(store.sql.EntryUpdate(record), failed);
        QCOMPARE(store.sql.DeInit(), succeeded);
        QCOMPARE(store.sql.UnsavedFiles(), Texts());
        QCOMPARE(store.folder.Read("tarno.xml"), before);
    }

    void readOnlyFile_isReportedAndLeft()
    {
        TestStore store;
        std::filesystem::permissions(ToPath(store.folder.PathOf("tarno.xml")), perms::owner_read);
        const std::string before = store.folder.Read("tarno.xml");
        const PlainUser user(store.folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        QCOMPARE(store.sql.Init(), succeeded);
        store.reports.Expect("cSQL", "EntryDelete", ErrorNumber::PathFileAccess);
        QCOMPARE(store.sql.EntryDelete(1), failed);
        QCOMPARE(store.folder.Read("tarno.xml"), before);
    }

    void readOnlyFolder_isReportedAndLeft()
    {
        TestStore store;
        const Texts names = store.folder.Names();
        std::filesystem::permissions(ToPath(store.folder.Path()), perms::owner_read | perms::owner_exec);
        const PlainUser user(store.folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        QCOMPARE(store.sql.Init(), succeeded);
        store.reports.Expect("cSQL", "EntryDelete", ErrorNumber::PathFileAccess);
        QCOMPARE(store.sql.EntryDelete(1), failed);
        std::filesystem::permissions(ToPath(store.folder.Path()), perms::owner_all);
        QCOMPARE(store.folder.Names(), names);
        QCOMPARE(store.sql.EntryDelete(1), succeeded);
    }
};

TEST_CLASS(tst_FailedSaves)
#include "tst_FailedSaves.moc"
