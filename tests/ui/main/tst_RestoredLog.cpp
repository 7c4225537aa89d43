// What the main window shows after a back-up was restored.

#include "FindTest.h"
#include "backup/BackUp.h"
#include "backup/Restore.h"
#include "support/TestClass.h"

#include <QSignalSpy>

using namespace Tarno;

namespace
{

/// A log with four trips, two of which have been deleted since its back-up.
class ChangedLog : public FourTrips
{
public:
    ChangedLog()
    {
        folder.MakeFolder("backups");
        BackUp(programFolder, operations, path, {.time = LocalTimeOf(clock), .program = "Tarno"});
        sql.EntryDelete(1);
        sql.EntryDelete(2);
    }

    /// Chooses the back-up in the window of the command.
    void Restore(const ShownLog& window, const std::function<void(QDialog& restore)>& use)
    {
        files.ExpectOpen({.title = QStringLiteral("Restore"),
                          .filter = QStringLiteral("Back-ups (*.zip);;All files (*)"),
                          .folder = windows.BackUpFolder(FromUtf8(programFolder.GetAppPath())),
                          .fileName = {}},
                         FromUtf8(path));
        WhileOpen(
            "fRestore", [&] { Press(window, Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier); }, use);
    }

    void ExpectReplaceQuestion()
    {
        messages.Expect(
            {.text = QStringLiteral("Your log will be replaced by the back-up. The present log is "
                                    "backed up first, to the folder:\r\n") +
                     FromUtf8(folder.PathOf("backups")) + QStringLiteral("\r\n\r\nReplace your log?"),
             .title = QStringLiteral("Replace Log"),
             .icon = Icon::Question,
             .buttons = Buttons::YesNo,
             .byDefault = Button::No},
            Button::Yes);
    }

    std::string path = FromPath(ToPath(folder.PathOf("backups")) / "log.zip");
};

void ClickRestore(QDialog& restore)
{
    Click(restore, "cmdRestore");
}

} // namespace

class tst_RestoredLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void replacedLog_isShownCompletely()
    {
        ChangedLog program;
        ShownLog window(program);
        FindTrips(window, "trout");
        QVERIFY(Command(window, "miUndo").isEnabled());
        program.ExpectReplaceQuestion();
        program.messages.ExpectInformation(
            QStringLiteral(
                "Restored 4 trips, 2 locations, 0 pictures.\r\n\r\nThe log as it was before is in:\r\n") +
                FromUtf8(FromPath(ToPath(program.folder.PathOf("backups")) /
                                  "tarno-2003-02-05-2107-before-restore.zip")),
            QStringLiteral("Tarno"));
        program.Restore(window, ClickRestore);
        QCOMPARE(List(window).RowCount(), 4);
        QVERIFY(!Find<QWidget>(window, "queryBar").isVisible());
        QVERIFY(!Command(window, "miUndo").isEnabled());
        QVERIFY(List(window).isEnabled());
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void addedTrips_areShownAndSelected_andUndoneAsOne()
    {
        ChangedLog program;
        ShownLog window(program);
        program.messages.ExpectInformation(QStringLiteral("Added 2 trips. Edit > Undo takes them back."),
                                           QStringLiteral("Tarno"));
        program.Restore(window, [](QDialog& restore) {
            Click(restore, "optAdd");
            ClickRestore(restore);
        });
        QCOMPARE(List(window).RowCount(), 4);
        QCOMPARE(ToUtf8(Command(window, "miUndo").text()), "&Undo Import of 2 trips");
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(List(window).RowCount(), 2);
    }

    void closedWindow_changesNothing()
    {
        ChangedLog program;
        ShownLog window(program);
        program.Restore(window, [](QDialog& restore) { Press(restore, Qt::Key_Escape); });
        QCOMPARE(List(window).RowCount(), 2);
        QVERIFY(Command(window, "miUndo").isEnabled());
    }

    void interruptedRestore_endsTheProgramWithoutAQuestion()
    {
        ChangedLog program;
        ShownLog window(program);
        const QSignalSpy ended(&window, &fTarno::ExitConfirmed);
        program.ExpectReplaceQuestion();
        program.messages.Expect(
            {.text = QStringLiteral("The log was restored only in part: Path/File access error.\nClose all "
                                    "programs that use the log and start Tarno again. It then completes the "
                                    "restore.\r\n\r\nTarno ends now."),
             .title = QStringLiteral("Restore Error"),
             .icon = Icon::Exclamation},
            Button::Ok);
        constexpr int replacesBeforePlacing = 2; // the back-up of the present log, and the marker
        program.operations.Fail("replace", ErrorNumber::PathFileAccess, ScriptedFileOperations::always,
                                replacesBeforePlacing);
        program.Restore(window, ClickRestore);
        program.operations.ClearFailures();
        QCOMPARE(ended.count(), 1);
        QVERIFY(window.close());
        QCOMPARE(FinishRestore(program.programFolder, program.operations), FinishedRestore::Completed);
        QCOMPARE(static_cast<int>(program.Stored("tarno.xml").size()), 4);
    }
};

TEST_CLASS(tst_RestoredLog)
#include "tst_RestoredLog.moc"
