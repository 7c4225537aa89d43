// A restore that fails or is killed at any operation leaves the old log or the new one.

#include "LogFolder.h"
#include "support/DyingFileOperations.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Death = DyingFileOperations::Death;

/// A back-up of the sample log, the folder into which it is restored, and what that contains before and
/// after.
struct Trial {
    Trial()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.Replace("location.xml", "pictures/pittwater.png", log.folder.PathOf("pictures/pittwater.png"));
        log.BackUpTo(Path());
        LogFolder here;
        before = here.State();
        here.Restore(Path());
        after = here.State();
    }

    std::string Path() const { return folder.PathOf("b.zip"); }

    TemporaryFolder folder;
    Contents before;
    Contents after;
};

} // namespace

class tst_RestoreFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void failedAnywhere_theLogIsOldOrNew_data()
    {
        QTest::addColumn<int>("death");
        QTest::newRow("one operation fails") << static_cast<int>(Death::Once);
        QTest::newRow("killed before an operation") << static_cast<int>(Death::ForGood);
        QTest::newRow("killed after an operation") << static_cast<int>(Death::HalfDone);
    }

    void failedAnywhere_theLogIsOldOrNew()
    {
        QFETCH(int, death);
        const Trial trial;
        const auto system = SystemFileOperations();
        std::map<FinishedRestore, int> finished;
        int isNew = 0;
        bool hasFailed = true;
        int operations = 0;
        for (; hasFailed; ++operations) {
            LogFolder here;
            DyingFileOperations dying(operations, static_cast<Death>(death));
            try {
                RestoreBackUp(trial.Path(), here.program, dying, testTime, "Tarno");
            } catch (const RestoreInterrupted&) { // completed below
            } catch (const Error&) {
                if (static_cast<Death>(death) == Death::Once) {
                    QVERIFY2(here.State() == trial.before, "a restore that failed has changed something");
                }
            }
            hasFailed = dying.HasFailed();
            const FinishedRestore result = FinishRestore(here.program, *system);
            ++finished[result];
            const Contents now = here.State();
            QVERIFY2(now == trial.before || now == trial.after, std::to_string(operations).c_str());
            isNew += now == trial.after ? 1 : 0;
            if (result != FinishedRestore::Nothing) {
                QCOMPARE(now == trial.after, result == FinishedRestore::Completed);
            }
            QVERIFY(FinishRestore(here.program, *system) == FinishedRestore::Nothing);
        }
        QVERIFY(operations > 40);
        QVERIFY(finished[FinishedRestore::Completed] > 10);
        QVERIFY(isNew > 10 && isNew < operations - 10);
    }

    void finishKilledAnywhere_canBeRepeated_data()
    {
        QTest::addColumn<int>("killedAt");
        QTest::newRow("before it is irrevocable") << 0;
        QTest::newRow("afterwards") << 1;
    }

    void finishKilledAnywhere_canBeRepeated()
    {
        QFETCH(int, killedAt);
        const Trial trial;
        const auto system = SystemFileOperations();
        // finds an operation at which a killed restore is to be discarded or to be completed
        const FinishedRestore wanted =
            killedAt == 0 ? FinishedRestore::Discarded : FinishedRestore::Completed;
        int kill = 12;
        const auto restore = [&](const LogFolder& here) {
            DyingFileOperations dying(kill, Death::ForGood);
            try {
                RestoreBackUp(trial.Path(), here.program, dying, testTime, "Tarno");
            } catch (const Error&) { // NOLINT(bugprone-empty-catch): killed
            }
        };
        for (FinishedRestore result = FinishedRestore::Nothing; result != wanted; ++kill) {
            LogFolder here;
            restore(here);
            result = FinishRestore(here.program, *system);
        }
        ++kill; // one or two more
        bool hasFailed = true;
        for (int operations = 0; hasFailed; ++operations) {
            LogFolder here;
            restore(here);
            DyingFileOperations dying(operations, Death::ForGood);
            try {
                FinishRestore(here.program, dying);
            } catch (const Error&) { // NOLINT(bugprone-empty-catch): killed
            }
            hasFailed = dying.HasFailed();
            FinishRestore(here.program, *system);
            QVERIFY(here.State() == (killedAt == 0 ? trial.before : trial.after));
        }
    }

    void otherProgramHoldsAFile_restoreIsInterruptedAndCompletedLater()
    {
        const Trial trial;
        LogFolder here;
        // the archive, the marker and three pictures are put in place before the first data file
        constexpr int before = 5;
        here.operations.Fail("replace", ErrorNumber::PermissionDenied, ScriptedFileOperations::always,
                             before);
        QVERIFY_THROWS_EXCEPTION(RestoreInterrupted, here.Restore(trial.Path()));
        QVERIFY_THROWS_EXCEPTION(RestoreInterrupted, FinishRestore(here.program, here.operations));
        here.operations.ClearFailures();
        QVERIFY(FinishRestore(here.program, here.operations) == FinishedRestore::Completed);
        QVERIFY(here.State() == trial.after);
    }

    void finish_waitsForTheLock()
    {
        LogFolder here;
        here.folder.MakeFolder("tarno-restore.tarno-tmp");
        here.folder.Write("tarno-restore.tarno-tmp/tarno.xml", "half");
        here.operations.Fail("lock", ErrorNumber::PermissionDenied, ScriptedFileOperations::always);
        QVERIFY_THROWS_EXCEPTION(Error, FinishRestore(here.program, here.operations));
        here.operations.ClearFailures();
        QVERIFY(FinishRestore(here.program, here.operations) == FinishedRestore::Discarded);
        QVERIFY(!here.operations.GetState(here.folder.PathOf("tarno-restore.tarno-tmp")).exists);
    }

    void folderWithoutRestore_isNotTouched()
    {
        LogFolder here;
        QVERIFY(FinishRestore(here.program, here.operations) == FinishedRestore::Nothing);
        QVERIFY(here.operations.Steps().empty());
    }
};

TEST_CLASS(tst_RestoreFaults)
#include "tst_RestoreFaults.moc"
