// Back-ups on the command line.

#include "CommandTest.h"
#include "backup/Archive.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

int LinesOf(const std::string& text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

/// The small log with a picture, and a folder for its back-up.
struct BackUpTest : CommandTest {
    BackUpTest()
    {
        UseSmallLog();
        program.folder.Write("catch.jpg", "picture");
        program.AddEntry({{EntryField::StartDate, "2003-03-02"}, {EntryField::Picture, PathOf("catch.jpg")}});
    }

    std::string Path() const { return folder.PathOf("b.zip"); }

    std::string Stored() const
    {
        return program.folder.Read("tarno.xml") + program.folder.Read("location.xml");
    }

    TemporaryFolder folder;
};

} // namespace

class tst_BackUpCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void backUp_isWritten()
    {
        BackUpTest test;
        QCOMPARE(test.Run({"--backup", test.Path()}), Done);
        QCOMPARE(test.Out(), "Backed up the log with 1 picture to " + test.Path() + '\n');
        QCOMPARE(test.Err(), ""s);
        const ArchiveReader archive(test.Path());
        QVERIFY(archive.Find("tarno.xml") != nullptr && archive.Find("pictures/catch.jpg") != nullptr);
    }

    void backUp_namesMissingPictures()
    {
        BackUpTest test;
        test.program.AddEntry({{EntryField::Picture, "/no/such.jpg"}});
        QCOMPARE(test.Run({"--backup", test.Path()}), Done);
        QCOMPARE(test.Err(), "This picture does not exist or cannot be read: /no/such.jpg\n"s);
    }

    void backUp_failure_isReported()
    {
        BackUpTest test;
        const std::string path = test.folder.PathOf("none/b.zip");
        QCOMPARE(test.Run({"--backup", path}), NotDone);
        QCOMPARE(test.Out(), ""s);
        QCOMPARE(test.Err(), "The back-up could not be written: " + path + "\nPath not found.\n");
        test.program.folder.Write("Rpt.xml", "<data>");
        QCOMPARE(test.Run({"--backup", test.Path()}), NotDone);
        QCOMPARE(test.Err(), "The back-up could not be written: " + test.Path() +
                                 "\nRpt.xml cannot be read: Line 1, column 6: Start-end tags mismatch."
                                 "\nNothing was backed up.\n");
        QVERIFY(test.folder.Names().empty());
    }

    void restore_replacesTheLog()
    {
        BackUpTest test;
        QCOMPARE(test.Run({"--backup", test.Path()}), Done);
        CommandTest here;
        here.program.Start();
        here.program.AddLocation("Reef");
        QCOMPARE(here.Run({"--restore", test.Path()}), Done);
        QCOMPARE(here.Out(), "Restored 4 trips, 2 locations and 1 picture to " + here.program.folder.Path() +
                                 "\nThe files that were there before are in " +
                                 here.PathOf("backups/tarno-2003-02-05-2107-before-restore.zip") + '\n');
        QCOMPARE(here.Err(), ""s);
        QCOMPARE(here.program.folder.Read("pictures/catch.jpg"), "picture"s);
        QCOMPARE(here.Run({"--list"}), Done);
        QCOMPARE(LinesOf(here.Out()), 4);
    }

    void restore_unsuitableFile_isExplained()
    {
        BackUpTest test;
        const std::string before = test.Stored();
        test.folder.Write("b.zip", "no archive");
        QCOMPARE(test.Run({"--restore", test.Path()}), NotDone);
        QCOMPARE(test.Err(), "This back-up cannot be restored: " + test.Path() +
                                 "\nThis is not a zip archive.\nNothing was changed.\n");
        const std::string missing = test.folder.PathOf("none.zip");
        QCOMPARE(test.Run({"--restore", missing}), NotDone);
        QCOMPARE(test.Err(),
                 "This back-up cannot be restored: " + missing + "\nFile not found.\nNothing was changed.\n");
        QCOMPARE(test.Stored(), before);
    }

    void restore_fullDisk_changesNothing()
    {
        BackUpTest test;
        QCOMPARE(test.Run({"--backup", test.Path()}), Done);
        const std::string before = test.Stored();
        test.program.operations.Fail("create", ErrorNumber::DiskFull);
        QCOMPARE(test.Run({"--restore", test.Path()}), NotDone);
        QCOMPARE(test.Err(),
                 "This back-up cannot be restored: " + test.Path() + "\nDisk full.\nNothing was changed.\n");
        QCOMPARE(test.Stored(), before);
    }

    void interruptedRestore_isFinishedByTheNextCommand()
    {
        BackUpTest test;
        QCOMPARE(test.Run({"--backup", test.Path()}), Done);
        CommandTest here;
        here.program.Start();
        // the archive, the marker and the picture are put in place first
        constexpr int before = 3;
        here.program.operations.Fail("replace", ErrorNumber::PermissionDenied, ScriptedFileOperations::always,
                                     before);
        const std::string problem = "The log was restored only in part: Permission denied.\nClose all "
                                    "programs that use the log and start Tarno again. It then completes the "
                                    "restore.\n";
        QCOMPARE(here.Run({"--restore", test.Path()}), NotDone);
        QCOMPARE(here.Err(), problem);
        QCOMPARE(here.Run({"--list"}), NotDone);
        QCOMPARE(here.Err(), problem);
        here.program.operations.ClearFailures();
        QCOMPARE(here.Run({"--list"}), Done);
        QCOMPARE(here.Err(), "A restore that was interrupted is now complete.\n"s);
        QCOMPARE(LinesOf(here.Out()), 4);
    }

    void unfinishedRestore_isDiscarded()
    {
        BackUpTest test;
        test.program.folder.MakeFolder("tarno-restore.tarno-tmp");
        test.program.folder.Write("tarno-restore.tarno-tmp/tarno.xml", "half");
        test.Run({"--check"}); // changes nothing
        QCOMPARE(test.program.folder.Read("tarno-restore.tarno-tmp/tarno.xml"), "half"s);
        QCOMPARE(test.Run({"--backup", test.Path()}), Done);
        QCOMPARE(test.Err(), "A restore was interrupted before it changed the log. It was discarded.\n"s);
    }
};

TEST_CLASS(tst_BackUpCommands)
#include "tst_BackUpCommands.moc"
