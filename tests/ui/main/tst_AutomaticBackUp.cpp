// The back-up that the program makes when it ends.

#include "backup/BackUp.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "ui/main/AutomaticBackUp.h"

#include <QApplication>
#include <QProgressDialog>
#include <QTimer>
#include <QtTest>

#include <algorithm>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

constexpr const char* firstBackUp = "tarno-2003-02-05-2107-automatic.zip";

class BackUpProgram : public TestProgram
{
public:
    BackUpProgram() { Start(); }

    void End() { BackUpAutomatically(program, nullptr); }

    /// Chooses the folder for back-ups.
    void Choose(const char* name)
    {
        windows.SetBackUpFolder(FromUtf8(programFolder.GetAppPath()), FromUtf8(folder.PathOf(name)));
    }

    Texts BackUps() const
    {
        Texts names = NamesIn(folder.PathOf("backups"));
        std::sort(names.begin(), names.end());
        return names;
    }

    void ExpectFailure(const char* folder, const char* reason)
    {
        messages.ExpectInformation(
            QStringLiteral("Your log is saved, but it could not be backed up to this folder:\r\n\r\n") +
                FromUtf8(this->folder.PathOf(folder)) + QStringLiteral("\r\n\r\n") + QLatin1String(reason) +
                QStringLiteral("\r\n\r\nFile > Back Up in the log lets you choose another folder."),
            QStringLiteral("Back-Up"));
    }
};

} // namespace

class tst_AutomaticBackUp : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void unchangedLog_isNotBackedUp()
    {
        BackUpProgram program;
        program.End();
        QCOMPARE(program.BackUps(), Texts());
    }

    void changedLog_isBackedUp()
    {
        BackUpProgram program;
        program.AddLocation("Pittwater");
        program.End();
        QCOMPARE(program.BackUps(), Texts{firstBackUp});
        program.clock.timeOfDay += std::chrono::minutes(1);
        program.End(); // nothing has changed since
        QCOMPARE(program.BackUps(), Texts{firstBackUp});
        program.AddLocation("Reef");
        program.End();
        QCOMPARE(program.BackUps(), (Texts{firstBackUp, "tarno-2003-02-05-2108-automatic.zip"}));
    }

    void chosenFolder_getsTheBackUp()
    {
        BackUpProgram program;
        program.AddLocation("Pittwater");
        program.folder.MakeFolder("stick");
        program.Choose("stick");
        program.End();
        QCOMPARE(NamesIn(program.folder.PathOf("stick")), Texts{firstBackUp});
    }

    void failure_isToldOnceADay()
    {
        BackUpProgram program;
        program.AddLocation("Pittwater");
        program.folder.MakeFolder("drive");
        program.Choose("drive/gone");
        program.ExpectFailure("drive/gone", "The folder does not exist. Its drive may not be connected.");
        program.End();
        program.End();
        program.clock.today = std::chrono::year(2003) / 2 / 6;
        program.ExpectFailure("drive/gone", "The folder does not exist. Its drive may not be connected.");
        program.End();
        QCOMPARE(NamesIn(program.folder.PathOf("drive")), Texts());
    }

    void fullDisk_isExplained()
    {
        BackUpProgram program;
        program.AddLocation("Pittwater");
        program.operations.Fail("sync file", ErrorNumber::DiskFull);
        program.ExpectFailure("backups", "The disk is full.");
        program.End();
    }

    void cancelledBackUp_leavesNothing()
    {
        BackUpProgram program;
        program.AddLocation("Pittwater");
        program.clock.step = std::chrono::seconds(1);
        QTimer::singleShot(0, qApp, [] {
            auto* const dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            dialog->cancel();
        });
        program.End();
        QCOMPARE(program.BackUps(), Texts());
    }
};

TEST_CLASS(tst_AutomaticBackUp)
#include "tst_AutomaticBackUp.moc"
