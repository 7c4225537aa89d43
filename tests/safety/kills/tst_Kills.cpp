#include "core/SafeWriter.h"
#include "safety/Form.h"
#include "safety/writers/SharedLog.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <QFileInfo>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// Returns a folder in memory, if the system has one, because a hundred thousand saves on a disk take hours.
QString MemoryFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
}

} // namespace

// A program that is killed at any moment of a save leaves the old log or the new one. The next start removes
// any temporary file.
class tst_Kills : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void killedAnywhere_theLogIsCompleteAndTheNextStartCleansUp_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<int>("trips");
        QTest::addColumn<int>("kills");
        // starting a program takes a fifth of a second on Windows
        const int oneOf = (isWindows ? 10 : 1) * (IsQuickForm() ? 4 : 1);
        const auto kills = [&](int shortForm, int longForm) {
            return std::max(Times(shortForm, longForm) / oneOf, std::min(shortForm, 20));
        };
        const QString memory = MemoryFolder();
        QTest::newRow("1 KB") << memory << 1 << kills(1290, 64500);
        QTest::newRow("1 KB, on the disk") << QDir::tempPath() << 1 << kills(50, 2500);
        QTest::newRow("200 KB") << memory << 220 << kills(600, 31300);
        QTest::newRow("200 KB, on the disk") << QDir::tempPath() << 220 << kills(30, 1300);
        QTest::newRow("14 MB") << memory << 15300 << kills(20, 380);
        QTest::newRow("14 MB, on the disk") << QDir::tempPath() << 15300 << kills(12, 20);
    }

    void killedAnywhere_theLogIsCompleteAndTheNextStartCleansUp()
    {
        QFETCH(QString, place);
        QFETCH(int, trips);
        QFETCH(int, kills);
        SharedLog log(OldTrips(trips, std::string(900, '.')), place);
        const int changedTrip = trips / 2 + 1;
        log.Start("edit", changedTrip);
        std::mt19937 random(20260314);
        std::map<std::string, int> states;
        int killed = 0;
        // continues until enough kills have hit a save
        for (int temporaries = 0; killed < kills || temporaries <= kills / 20; ++killed) {
            constexpr int endless = 1'000'000'000;
            log.Begin(endless, 0);
            log.KillFirst(2, random);
            const auto left = log.ChangedNames(); // at most one temporary, which the next start removes
            const std::string temporary = left.empty() ? "" : log.Read(left.front());
            QVERIFY(left.empty() ||
                    (left.size() == 1 && left.front().ends_with(SafeWriter::temporarySuffix)));
            const int saves = log.Saves();
            log.Start("edit", changedTrip);
            QCOMPARE(log.Fault(), ""s);
            temporaries += static_cast<int>(left.size());
            ++states[log.Saves() > saves  ? "replaced"
                     : left.empty()       ? "no temporary"
                     : temporary.empty()  ? "an empty temporary"
                     : TripsIn(temporary) ? "a whole temporary"
                                          : "a part of a temporary"];
        }
        QString text;
        for (const auto& [state, count] : states) {
            text += QStringLiteral("; %1: %2").arg(QString::fromStdString(state)).arg(count);
        }
        qInfo("%d kills%s", killed, qPrintable(text));
    }

    void anotherProgramIsSaving_itsTemporaryStays()
    {
        TestStore store;
        const auto shipped = store.folder.Names();
        const std::string log = store.folder.PathOf("tarno.xml");
        const auto operations = SystemFileOperations();
        FolderLock lock = SafeWriter(*operations).LockFolder(FolderOf(log));
        operations->Create(log + ".1.tarno-tmp", "half of a lo", log);
        QCOMPARE(store.sql.Init(), succeeded);
        QVERIFY(operations->GetState(log + ".1.tarno-tmp").exists);
        lock.reset();
        QCOMPARE(store.sql.Init(), succeeded);
        QCOMPARE(store.folder.Names(), shipped);
    }
};

TEST_CLASS(tst_Kills)
#include "tst_Kills.moc"
