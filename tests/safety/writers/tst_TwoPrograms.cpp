#include "SharedLog.h"
#include "safety/Form.h"
#include "support/TestClass.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

#ifdef __SANITIZE_ADDRESS__
constexpr int changes = 30;
#else
constexpr int changes = 100;
#endif
constexpr int sharedTrip = 1; ///< all programs whose task is "edit" edit this one
/// The others have old trips of their own. The last one stays, as its key would be given again.
constexpr int oldTrips = sharedTrip + 4 * (changes + 1) + 1;

void Start(SharedLog& log, const Texts& tasks)
{
    int own = sharedTrip + 1;
    for (const std::string& task : tasks) {
        log.Start(task, task == "edit" ? sharedTrip : own);
        own += changes + 1;
    }
}

} // namespace

// Several programs change one log at the same time.
class tst_TwoPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void atTheSameTime_theLogHasAllChanges_data()
    {
        QTest::addColumn<Texts>("tasks");
        QTest::newRow("two add") << Texts{"add", "add"};
        QTest::newRow("three add") << Texts{"add", "add", "add"};
        QTest::newRow("four add, edit and delete") << Texts{"mixed", "mixed", "mixed", "mixed"};
        QTest::newRow("one adds, one edits, one deletes") << Texts{"add", "edit", "delete"};
        QTest::newRow("two edit the same trip") << Texts{"edit", "edit"};
        QTest::newRow("one is started again and again") << Texts{"add", "restart"};
        QTest::newRow("two are started again and again") << Texts{"add", "add", "restart", "restart"};
    }

    void atTheSameTime_theLogHasAllChanges()
    {
        QFETCH(Texts, tasks);
        int saves = 0;
        int keptFiles = 0;
        for (int round = Times(1, 50); round > 0; --round) {
            SharedLog log(OldTrips(oldTrips));
            Start(log, tasks);
            constexpr int longestPause = 2000; // some saves, so that most find changes of others
            log.Begin(changes, longestPause);
            log.End();
            QCOMPARE(log.Fault(), ""s);
            saves += log.Saves();
            keptFiles += log.KeptFiles();
        }
        QVERIFY(keptFiles == 0 || std::count(tasks.begin(), tasks.end(), "edit") > 1);
        qInfo("%d saves, %d kept files", saves, keptFiles);
    }

    void takingTurns_theLogHasAllChangesAndNothingIsKept()
    {
        SharedLog log(OldTrips(oldTrips));
        Start(log, {"add", "mixed", "restart", "delete"});
        for (int turn = 0; turn < changes; ++turn) {
            log.TakeTurns();
        }
        QCOMPARE(log.Fault(), ""s);
        QCOMPARE(log.KeptFiles(), 0);
    }

    void oneIsKilled_theLogHasAllSavedChanges_data()
    {
        QTest::addColumn<Texts>("tasks");
        QTest::newRow("of two that add") << Texts{"add", "add"};
        QTest::newRow("of three that add, edit and delete") << Texts{"mixed", "mixed", "mixed"};
    }

    void oneIsKilled_theLogHasAllSavedChanges()
    {
        QFETCH(Texts, tasks);
        std::mt19937 random(20260411);
        for (int round = Times(10, 400); round > 0; --round) {
            SharedLog log(OldTrips(oldTrips));
            Start(log, tasks);
            constexpr int changesOfOne = 20;
            log.Begin(changesOfOne, 0);
            log.KillFirst(changesOfOne - 1, random);
            log.End();
            log.Start("add", 0); // removes the temporary of the killed program
            log.Begin(1, 0);
            log.End();
            QCOMPARE(log.Fault(), ""s);
            QCOMPARE(log.KeptFiles(), 0);
        }
    }
};

TEST_CLASS(tst_TwoPrograms)
#include "tst_TwoPrograms.moc"
