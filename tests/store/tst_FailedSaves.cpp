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

Texts DescribedChanges(const cSQL& sql)
{
    Texts described;
    for (const auto& [record, isDeletion, file] : sql.UnsavedChanges()) {
        described.push_back(file + ": " + (record.kind == RecordTitle::Kind::Trip ? "trip " : "location ") +
                            record.key + ", " + record.date + ", " + record.name +
                            (isDeletion ? ", deleted" : ""));
    }
    return described;
}

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

    void unsavedChanges_areDescribedUntilTheyAreSaved()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        Record pier;
        QCOMPARE(store.sql.LocationGet(0, pier), succeeded);
        pier.SetText(LocationField::LocName, "Pier");
        QCOMPARE(store.sql.LocationUpdate(pier), succeeded);
        QCOMPARE(DescribedChanges(store.sql), Texts());

        Record trip;
        QCOMPARE(store.sql.EntryGet(0, trip), succeeded);
        trip.SetText(EntryField::StartDate, "2026-05-03");
        trip.SetText(EntryField::LocNo, "1");
        store.operations.Fail("create", ErrorNumber::DiskFull);
        store.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
        QCOMPARE(store.sql.EntryUpdate(trip), failed);
        pier.SetText(LocationField::LocName, "Old Pier");
        store.operations.Fail("create", ErrorNumber::DiskFull);
        store.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::DiskFull);
        QCOMPARE(store.sql.LocationUpdate(pier), failed);
        QCOMPARE(DescribedChanges(store.sql),
                 (Texts{"tarno.xml: trip 1, 2026-05-03, Old Pier", "location.xml: location 1, , Old Pier"}));

        store.operations.Fail("create", ErrorNumber::DiskFull);
        store.reports.Expect("cSQL", "LocationDelete", ErrorNumber::DiskFull);
        QCOMPARE(store.sql.LocationDelete(1), failed);
        QCOMPARE(DescribedChanges(store.sql),
                 (Texts{"tarno.xml: trip 1, 2026-05-03, ", "location.xml: location 1, , Pier, deleted"}));
        QCOMPARE(store.sql.LocationDelete(7), succeeded); // saves the file
        QCOMPARE(store.sql.EntryUpdate(trip), succeeded);
        QCOMPARE(DescribedChanges(store.sql), Texts());
    }

    void failedDeletionOfNothing_isNoChange()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        for (const RecordFamily& family : RecordFamilies()) {
            store.operations.Fail("create", ErrorNumber::PathFileAccess);
            store.reports.Expect("cSQL", family.name + "Delete", ErrorNumber::PathFileAccess);
            QCOMPARE((store.sql.*family.remove)(1), failed);
        }
        QCOMPARE(UnsavedFiles(store.sql), Texts());
    }

    void problems_nameEachUnreadableFileAndWhy()
    {
        TestStore store;
        store.folder.Write("tarno.xml", "<data>\n<tarno>");
        store.folder.Write("location.xml", "<?xml version=\"1.0\"?>\n<data/>");
        store.folder.Write("Rpt.xml", "<log/>");
        std::filesystem::remove(store.folder.PathOf("RptBlank.xml"));
        QCOMPARE(store.sql.Init(), succeeded);
        Texts problems;
        for (const auto& [file, reason] : store.sql.FileProblems()) {
            problems.push_back(file + ": " + reason);
        }
        QCOMPARE(
            problems,
            (Texts{"tarno.xml: Line 2, column 7: Start-end tags mismatch",
                   "location.xml: Something precedes the element \"data\", for example a declaration or a "
                   "comment",
                   "Rpt.xml: Line 1, column 1: No element \"data\"",
                   "RptBlank.xml: The file does not exist"}));
        QVERIFY(!store.sql.CanAddEntries());
        QVERIFY(!store.sql.CanAddLocations());
        store.folder.Write("tarno.xml", "<data/>");
        QCOMPARE(store.sql.Init(), succeeded);
        QVERIFY(store.sql.CanAddEntries());
    }

    void problems_withoutTheFolder_sayThatItDoesNotExist()
    {
        TestStore store;
        const ProgramFolder gone(store.folder.PathOf("gone"));
        cSQL sql(gone, store.operations);
        QCOMPARE(sql.Init(), succeeded);
        QCOMPARE(sql.FileProblems().size(), 7U);
        QCOMPARE(sql.FileProblems().front().reason, "The folder does not exist"s);
    }

    void shortRecords_areNamed()
    {
        TestStore store;
        store.folder.Write("tarno.xml", "<data><tarno><TarnoNo>3</TarnoNo><StartDate>2026-05-03</StartDate>"
                                        "</tarno><tarno/></data>");
        store.folder.Write("location.xml",
                           "<data><location><LocNo>1</LocNo><LocName>Pier</LocName></location>"
                           "<location><a>2</a><b/><c/><d/><e/><f/><g/><h/><i/><j/></location>"
                           "</data>");
        QCOMPARE(store.sql.Init(), succeeded);
        Texts keys;
        for (const RecordTitle& record : store.sql.ShortRecords()) {
            keys.push_back(record.key + ", " + record.date + ", " + record.name);
        }
        QCOMPARE(keys, (Texts{"3, 2026-05-03, ", ", , ", "1, , Pier"}));
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
        QCOMPARE(UnsavedFiles(store.sql), Texts());
        QCOMPARE(store.folder.Read("tarno.xml"), before);
    }
};

TEST_CLASS(tst_FailedSaves)
#include "tst_FailedSaves.moc"
