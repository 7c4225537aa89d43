#include "RecordFamily.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

} // namespace

// If a save fails, the change stays in memory and is written by the next save.
class tst_FailedSaves : public QObject
{
    Q_OBJECT

private Q_SLOTS:

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

    void deInit_dropsUnsavedChanges()
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
};

TEST_CLASS(tst_FailedSaves)
#include "tst_FailedSaves.moc"
