// The window that restores a back-up.

#include "BackUpTest.h"
#include "support/TestClass.h"
#include "ui/backup/RestoreLog.h"

#include <QPushButton>
#include <QRadioButton>

using namespace Tarno;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace
{

using Kind = RestoreOutcome::Kind;

/// The files that a restore renames before it replaces those of the log: the back-up of the present log, and
/// the marker.
constexpr int replacesBeforePlacing = 2;

/// A log that has changed since its back-up: one trip was deleted, one trip and one location were added.
class ChangedLog : public ProgramWithPicture
{
public:
    ChangedLog()
    {
        folder.MakeFolder("backups");
        MakeBackUp();
        sql.EntryDelete(1);
        std::filesystem::remove(ToPath(folder.PathOf("pictures/snapper.jpg")));
        AddLocation("Lake Eucumbene");
        AddTrip("2026-11-20", "");
    }

    void MakeBackUp()
    {
        std::filesystem::remove(ToPath(path));
        BackUp(programFolder, operations, path,
               {.time = {std::chrono::year(2026) / 11 / 4, 18h + 5min}, .program = "Tarno"});
    }

    void ExpectOpen(const std::string& file)
    {
        files.ExpectOpen({.title = QStringLiteral("Restore"),
                          .filter = QStringLiteral("Back-ups (*.zip);;All files (*)"),
                          .folder = windows.BackUpFolder(Log()),
                          .fileName = {}},
                         FromUtf8(file));
    }

    void ExpectReplaceQuestion(Button answer, const std::string& unsaved = {})
    {
        messages.Expect(
            {.text = QStringLiteral("Your log will be replaced by the back-up. The present log is "
                                    "backed up first, to the folder:\r\n") +
                     FromUtf8(folder.PathOf("backups") + unsaved) +
                     QStringLiteral("\r\n\r\nReplace your log?"),
             .title = QStringLiteral("Replace Log"),
             .icon = Icon::Question,
             .buttons = Buttons::YesNo,
             .byDefault = Button::No},
            answer);
    }

    void ExpectUnusable(const std::string& file, const std::string& reason)
    {
        ExpectProblem("This back-up cannot be restored: " + file + "\r\n" + reason +
                          "\r\nNothing was changed.",
                      "Restore Error");
    }

    /// Opens the back-up and runs `use` on the window.
    RestoreOutcome Restore(const std::function<void(QDialog& window)>& use)
    {
        ExpectOpen(path);
        RestoreOutcome outcome;
        WhileOpen(
            "fRestore", [&] { outcome = RestoreLog(program, nullptr); }, use);
        return outcome;
    }

    /// Returns the start dates of the stored trips.
    Texts Dates() const
    {
        Texts dates;
        for (const auto& trip : Stored("tarno.xml")) {
            dates.push_back(trip.at(EntryField::StartDate));
        }
        return dates;
    }

    std::string path = FromPath(ToPath(folder.PathOf("backups")) / "tarno-2026-11-04-1805.zip");
    std::string before =
        FromPath(ToPath(folder.PathOf("backups")) / "tarno-2003-02-05-2107-before-restore.zip");
};

} // namespace

class tst_fRestore : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_comparesTheBackUpWithTheLog()
    {
        ChangedLog program;
        const RestoreOutcome outcome = program.Restore([](QDialog& window) {
            QCOMPARE(LabelText(window, "lblFile"), "tarno-2026-11-04-1805.zip"s);
            QCOMPARE(LabelText(window, "lblMade"), "Made on 2026-11-04 18:05"s);
            QCOMPARE(Rows(window, "lvwContents"),
                     (Texts{"Trips | 2 | 2", "Last trip | 2026-11-03 | 2026-11-20", "Locations | 1 | 2",
                            "Pictures | 1 | 0", "Missing here | 1 trip | "}));
            QCOMPARE(LabelText(window, "lblNote"),
                     "Your log becomes what it was then. The present one is backed up first."s);
            Click(window, "optAdd");
            QCOMPARE(LabelText(window, "lblNote"),
                     "Your trips and locations stay as they are. Edit > Undo takes "
                     "the added ones back."s);
            Click(window, "cmdClose");
        });
        QCOMPARE(outcome.kind, Kind::Nothing);
        QCOMPARE(program.Dates(), (Texts{"2026-11-03", "2026-11-20"}));
    }

    void replace_restoresTheLog_andNamesTheFormerOne()
    {
        ChangedLog program;
        program.ExpectReplaceQuestion(Button::Yes);
        program.ExpectInformation(
            "Restored 2 trips, 1 location, 1 picture.\r\n\r\nThe log as it was before is "
            "in:\r\n" +
            program.before);
        const RestoreOutcome outcome = program.Restore([](QDialog& window) { Click(window, "cmdRestore"); });
        QCOMPARE(outcome.kind, Kind::Replaced);
        QCOMPARE(program.Dates(), (Texts{"2026-11-02", "2026-11-03"}));
        QCOMPARE(program.folder.Read("pictures/snapper.jpg"), "a snapper"s);
        RecordList trips;
        program.sql.EntryList(trips);
        QCOMPARE(trips.front().Text(EntryField::StartDate), "2026-11-02"s);
        QVERIFY(!program.sql.NextUndo().has_value());
        QCOMPARE(BackUpArchive(program.before).Locations().size(), std::size_t{2});
    }

    void replace_answeredNo_changesNothing()
    {
        ChangedLog program;
        program.ExpectReplaceQuestion(Button::No);
        program.Restore([](QDialog& window) {
            Click(window, "cmdRestore");
            QVERIFY(window.isVisible());
            Click(window, "cmdClose");
        });
        QCOMPARE(program.Dates(), (Texts{"2026-11-03", "2026-11-20"}));
    }

    void replace_namesUnsavedChangesAndMissingPictures()
    {
        ChangedLog program;
        program.AddTrip("2026-11-21", "pictures/gone.jpg");
        program.MakeBackUp();
        program.operations.Fail("create", ErrorNumber::DiskFull);
        program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
        program.AddTrip("2026-11-22", "");
        program.ExpectReplaceQuestion(Button::Yes,
                                      "\r\n\r\nChanges that could not be saved yet will be lost.");
        program.ExpectInformation(
            "Restored 3 trips, 2 locations, 0 pictures.\r\n\r\nThe log as it was before "
            "is in:\r\n" +
            program.before +
            "\r\n\r\nThese pictures do not exist or cannot be read, so the restored log "
            "does not show them:\r\npictures/gone.jpg");
        program.Restore([](QDialog& window) { Click(window, "cmdRestore"); });
        QVERIFY(program.sql.UnsavedChanges().empty());
    }

    void replace_failure_isExplained()
    {
        ChangedLog program;
        program.ExpectReplaceQuestion(Button::Yes);
        program.ExpectUnusable(program.path, "The disk is full.");
        const RestoreOutcome outcome = program.Restore([&](QDialog& window) {
            program.operations.Fail("sync file", ErrorNumber::DiskFull);
            Click(window, "cmdRestore");
            QVERIFY(window.isVisible());
            Click(window, "cmdClose");
        });
        QCOMPARE(outcome.kind, Kind::Nothing);
        QCOMPARE(program.Dates(), (Texts{"2026-11-03", "2026-11-20"}));
    }

    void replace_cancelled_changesNothing()
    {
        ChangedLog program;
        program.ExpectReplaceQuestion(Button::Yes);
        program.Restore([&](QDialog& window) {
            program.clock.step = 1s; // the progress appears at once
            WhileOpen(
                "dlgWait", [&] { Click(window, "cmdRestore"); },
                [](QDialog& wait) { Press(wait, Qt::Key_Escape); });
            QVERIFY(window.isVisible());
            Click(window, "cmdClose");
        });
        QCOMPARE(program.Dates(), (Texts{"2026-11-03", "2026-11-20"}));
    }

    void replace_interrupted_isReported()
    {
        ChangedLog program;
        program.ExpectReplaceQuestion(Button::Yes);
        program.ExpectProblem(
            "The log was restored only in part: Permission denied.\nClose all programs that "
            "use the log and start Tarno again. It then completes the restore.\r\n\r\nTarno "
            "ends now.",
            "Restore Error");
        const RestoreOutcome outcome = program.Restore([&](QDialog& window) {
            program.operations.Fail("replace", ErrorNumber::PermissionDenied, ScriptedFileOperations::always,
                                    replacesBeforePlacing);
            Click(window, "cmdRestore");
            QVERIFY(!window.isVisible());
        });
        QCOMPARE(outcome.kind, Kind::Interrupted);
        program.operations.ClearFailures();
        QCOMPARE(FinishRestore(program.programFolder, program.operations), FinishedRestore::Completed);
        QCOMPARE(program.Dates(), (Texts{"2026-11-02", "2026-11-03"}));
    }

    void add_addsWhatIsMissing_asOneStep()
    {
        ChangedLog program;
        program.ExpectInformation("Added 1 trip. Edit > Undo takes them back.");
        const RestoreOutcome outcome = program.Restore([](QDialog& window) {
            Click(window, "optAdd");
            Click(window, "cmdRestore");
        });
        QCOMPARE(outcome.kind, Kind::Added);
        QCOMPARE(static_cast<int>(outcome.added.size()), 1);
        QCOMPARE(program.StoredEntry(std::stoi(outcome.added.front()), EntryField::StartDate), "2026-11-02"s);
        QCOMPARE(program.folder.Read("pictures/snapper.jpg"), "a snapper"s);
        QCOMPARE(static_cast<int>(program.Dates().size()), 3);
        program.sql.Undo();
        QCOMPARE(program.Dates(), (Texts{"2026-11-03", "2026-11-20"}));
    }

    void add_failure_isExplained()
    {
        ChangedLog program;
        program.ExpectUnusable(program.path, "The disk is full.");
        program.Restore([&](QDialog& window) {
            program.operations.Fail("create", ErrorNumber::DiskFull);
            Click(window, "optAdd");
            Click(window, "cmdRestore");
            QVERIFY(window.isVisible());
            Click(window, "cmdClose");
        });
        QCOMPARE(program.Dates(), (Texts{"2026-11-03", "2026-11-20"}));
    }

    void nothingMissing_canOnlyBeReplaced()
    {
        ChangedLog program;
        program.sql.Undo(); // the trip
        program.sql.Undo(); // the location
        program.sql.Undo(); // the deletion
        program.Restore([](QDialog& window) {
            QVERIFY(!Find<QRadioButton>(window, "optAdd").isEnabled());
            QCOMPARE(Rows(window, "lvwContents").back(), "Missing here | nothing | "s);
            QCOMPARE(LabelText(window, "lblNote"),
                     "Your log becomes what it was then. The present one is backed up first. It has all "
                     "trips and locations of the back-up already."s);
            Click(window, "cmdClose");
        });
    }

    void unreadableLog_canBeReplaced()
    {
        ChangedLog program;
        program.folder.Write("tarno.xml", "<data>");
        program.Start();
        program.ExpectReplaceQuestion(Button::Yes);
        program.ExpectInformation(
            "Restored 2 trips, 1 location, 1 picture.\r\n\r\nThe log as it was before is "
            "in:\r\n" +
            program.before);
        program.Restore([](QDialog& window) {
            QCOMPARE(Rows(window, "lvwContents"),
                     (Texts{"Trips | 2 | cannot be read", "Last trip | 2026-11-03 | cannot be read",
                            "Locations | 1 | cannot be read", "Pictures | 1 | cannot be read"}));
            QVERIFY(!Find<QRadioButton>(window, "optAdd").isEnabled());
            QCOMPARE(LabelText(window, "lblNote"),
                     "Your log becomes what it was then. The present one is backed up first. Nothing can be "
                     "added to it, because it cannot be read."s);
            Click(window, "cmdRestore");
        });
        QVERIFY(program.sql.CanAddEntries());
    }

    void unusableFile_isExplained_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("reason");
        QTest::newRow("no archive") << "<data/>"s
                                    << "This is not a zip archive."s;
        QTest::newRow("truncated") << "PK\3\4"s
                                   << "The archive is incomplete: its end is missing."s;
    }

    void unusableFile_isExplained()
    {
        QFETCH(std::string, bytes);
        QFETCH(std::string, reason);
        ChangedLog program;
        const std::string file = program.folder.PathOf("club.zip");
        program.folder.Write("club.zip", bytes);
        program.ExpectOpen(file);
        program.ExpectUnusable(file, reason);
        QCOMPARE(RestoreLog(program.program, nullptr).kind, Kind::Nothing);
    }

    void missingFile_isExplained()
    {
        ChangedLog program;
        const std::string file = program.folder.PathOf("gone.zip");
        program.ExpectOpen(file);
        program.ExpectUnusable(file, "The file does not exist.");
        QCOMPARE(RestoreLog(program.program, nullptr).kind, Kind::Nothing);
    }

    void fileQuestion_startsInTheLog_ifThereAreNoBackUps()
    {
        ProgramWithPicture program;
        program.files.ExpectOpen({.title = QStringLiteral("Restore"),
                                  .filter = QStringLiteral("Back-ups (*.zip);;All files (*)"),
                                  .folder = program.Log(),
                                  .fileName = {}},
                                 std::nullopt);
        QCOMPARE(RestoreLog(program.program, nullptr).kind, Kind::Nothing);
    }
};

TEST_CLASS(tst_fRestore)
#include "tst_fRestore.moc"
