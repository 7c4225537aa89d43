#include "SharedLog.h"
#include "safety/Form.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

constexpr int changes = 100;
constexpr int sharedTrip = 1; ///< edited by all programs whose task is "edit"
/// Each other program has old trips of its own. The last trip is never deleted, because its key would be used
/// again.
constexpr int oldTrips = sharedTrip + 4 * (changes + 1) + 1;
constexpr int longestPause =
    2000; ///< microseconds, long enough that most saves find changes of other programs

} // namespace

// Several programs change one log at the same time.
class tst_TwoPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void atTheSameTime_theLogHasAllSavedChanges_data()
    {
        QTest::addColumn<Texts>("tasks");
        QTest::addColumn<bool>("isOneKilled");
        QTest::newRow("two add") << Texts{"add", "add"} << false;
        QTest::newRow("three add") << Texts{"add", "add", "add"} << false;
        QTest::newRow("four add, edit and delete") << Texts{"mixed", "mixed", "mixed", "mixed"} << false;
        QTest::newRow("one adds, one edits, one deletes") << Texts{"add", "edit", "delete"} << false;
        QTest::newRow("two edit the same trip") << Texts{"edit", "edit"} << false;
        QTest::newRow("one is restarted repeatedly") << Texts{"add", "restart"} << false;
        QTest::newRow("two are restarted repeatedly") << Texts{"add", "add", "restart", "restart"} << false;
        QTest::newRow("two add, one is killed") << Texts{"add", "add"} << true;
        QTest::newRow("three add, edit and delete, one is killed")
            << Texts{"mixed", "mixed", "mixed"} << true;
    }

    void atTheSameTime_theLogHasAllSavedChanges()
    {
        QFETCH(Texts, tasks);
        QFETCH(bool, isOneKilled);
        std::mt19937 random(20260411);
        int saves = 0;
        int keptFiles = 0;
        for (int round = isOneKilled ? Times(10, 400) : Times(1, 50); round > 0; --round) {
            SharedLog log(OldTrips(oldTrips));
            int own = sharedTrip + 1;
            for (const std::string& task : tasks) {
                log.Start(task, task == "edit" ? sharedTrip : own);
                own += changes + 1;
            }
            log.Begin(changes, isOneKilled ? 0 : longestPause);
            if (isOneKilled) {
                log.KillFirst(changes / 4, random);
            }
            log.End();
            log.Start("add", 0); // removes the temporary of the killed program
            QCOMPARE(log.Fault(), ""s);
            saves += log.Saves();
            keptFiles += log.KeptFiles();
        }
        QVERIFY(keptFiles == 0 || std::count(tasks.begin(), tasks.end(), "edit") > 1);
        qInfo("%d saves, %d kept files", saves, keptFiles);
    }
};

TEST_CLASS(tst_TwoPrograms)
#include "tst_TwoPrograms.moc"
