#include "SharedLog.h"
#include "safety/Form.h"
#include "support/TestClass.h"

#include <chrono>
#include <random>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

#ifdef __SANITIZE_ADDRESS__
constexpr int changes = 30;
#else
constexpr int changes = 100;
#endif

constexpr unsigned seed = 20260411;

/// Where the values ended that the writers were told to be saved.
struct Figures {
    int saved = 0;
    int inLog = 0;
    int inKept = 0;
    int failed = 0;
    int keptFiles = 0;
    int unnamed = 0; ///< kept files whose writer was killed before it could name them

    QString Text() const
    {
        return QStringLiteral(
                   "%1 saved: %2 in the log, %3 in a kept file only; %4 failed; %5 kept files, %6 of "
                   "them not named")
            .arg(saved)
            .arg(inLog)
            .arg(inKept)
            .arg(failed)
            .arg(keptFiles)
            .arg(unnamed);
    }
};

/// The last of an editor's values replaces its earlier ones, so only that one is to be found.
Texts ToBeFound(const SharedLog& log, const Texts& tasks)
{
    std::map<char, std::string> last;
    Texts values;
    for (const std::string& value : log.Noted("saved")) {
        if (tasks.at(static_cast<std::size_t>(value.front() - 'A')) == "edit") {
            last[value.front()] = value;
        } else {
            values.push_back(value);
        }
    }
    for (const auto& [name, value] : last) {
        values.push_back(value);
    }
    return values;
}

/// Looks whether all is there that should be, adding to the figures; returns what is wrong.
std::string Fault(const SharedLog& log, const Texts& tasks, bool wasKilled, Figures& figures)
{
    const std::string bytes = log.folder.Read("tarno.xml");
    const auto entries = SharedLog::Entries(bytes);
    if (!entries) {
        return "the log is not whole";
    }
    std::set<std::string> keys;
    for (const SharedLog::Entry& entry : *entries) {
        if (!keys.insert(entry.key).second) {
            return "two entries " + entry.key;
        }
    }
    const std::set<std::string> named = log.NamedFiles();
    Texts kept;
    for (const std::string& name : log.KeptFiles()) {
        kept.push_back(log.folder.Read(name));
        // a program that is killed while it keeps something leaves a part of the file, and the whole where it
        // was
        const bool mayBeAPart = wasKilled && !named.contains(log.folder.PathOf(name));
        if (!SharedLog::Entries(kept.back()) && !mayBeAPart) {
            return name + " is not whole";
        }
        if (!named.contains(log.folder.PathOf(name))) {
            ++figures.unnamed;
            if (!wasKilled) {
                return name + " is not named";
            }
        }
    }
    if (!log.Names("", ".tarno-tmp").empty()) {
        return "a temporary is left";
    }
    const std::set<std::string> inLog = SharedLog::Values({bytes});
    const std::set<std::string> inKept = SharedLog::Values(kept);
    const Texts values = ToBeFound(log, tasks);
    for (const std::string& value : values) {
        figures.inLog += inLog.contains(value) ? 1 : 0;
        figures.inKept += !inLog.contains(value) && inKept.contains(value) ? 1 : 0;
        if (!inLog.contains(value) && !inKept.contains(value)) {
            return value + " is lost";
        }
    }
    const Texts deleted = log.Noted("deleted");
    for (int key = 1; key <= changes + 1; ++key) {
        const std::string old = "old-" + std::to_string(key);
        const bool isChanged = key == 1 && std::find(tasks.begin(), tasks.end(), "edit") != tasks.end();
        if (!inLog.contains(old) && !inKept.contains(old) && !isChanged &&
            std::find(deleted.begin(), deleted.end(), std::to_string(key)) == deleted.end()) {
            return old + " is lost";
        }
    }
    figures.saved += static_cast<int>(values.size());
    figures.failed += static_cast<int>(log.Noted("failed").size());
    figures.keptFiles += static_cast<int>(kept.size());
    return {};
}

/// Each program makes a change after the other, until all are made.
void TakeTurns(SharedLog& log, const Texts& tasks)
{
    for (const std::string& task : tasks) {
        log.Start(task, changes);
    }
    for (int turn = 0; turn < changes; ++turn) {
        for (std::size_t writer = 0; writer < tasks.size(); ++writer) {
            log.Writer(writer).Tell("one");
            QCOMPARE(log.Writer(writer).Line().value_or("ended"), "done"s);
        }
    }
}

} // namespace

// Several programs that write the same log at the same time lose nothing.
class tst_TwoPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void atTheSameTime_allIsInTheLogOrKept_data()
    {
        QTest::addColumn<Texts>("tasks");
        QTest::newRow("two add") << Texts{"add", "add"};
        QTest::newRow("three add") << Texts{"add", "add", "add"};
        QTest::newRow("one adds, one edits, one deletes") << Texts{"add", "edit", "delete"};
        QTest::newRow("two edit the same entry") << Texts{"edit", "edit"};
        QTest::newRow("one is started again and again") << Texts{"add", "restart"};
        QTest::newRow("two are started again and again") << Texts{"add", "add", "restart", "restart"};
    }

    void atTheSameTime_allIsInTheLogOrKept()
    {
        QFETCH(Texts, tasks);
        Figures figures;
        for (int round = Times(1, 20); round > 0; --round) {
            SharedLog log(changes + 1);
            for (const std::string& task : tasks) {
                log.Start(task, changes);
            }
            for (std::size_t writer = 0; writer < tasks.size(); ++writer) {
                log.Writer(writer).Tell("all");
            }
            for (std::size_t writer = 0; writer < tasks.size(); ++writer) {
                QCOMPARE(log.Writer(writer).Line().value_or("ended"), "done"s);
            }
            const std::string fault = Fault(log, tasks, false, figures);
            QVERIFY2(fault.empty(), fault.c_str());
        }
        qInfo("%s", qPrintable(figures.Text()));
    }

    void takingTurns_additions_areAllInTheLogAndNothingIsSaid()
    {
        const Texts tasks{"add", "add", "restart"};
        SharedLog log(changes + 1);
        TakeTurns(log, tasks);
        if (QTest::currentTestFailed()) {
            return;
        }
        Figures figures;
        QCOMPARE(Fault(log, tasks, false, figures), ""s);
        QCOMPARE(log.Noted("told"), Texts());
        QCOMPARE(figures.inLog, static_cast<int>(tasks.size()) * changes);
        QCOMPARE(log.KeptFiles(), Texts());
    }

    void takingTurns_editsAndDeletions_leaveTheAdditionsInTheLog()
    {
        const Texts tasks{"add", "edit", "delete"};
        SharedLog log(changes + 1);
        TakeTurns(log, tasks);
        if (QTest::currentTestFailed()) {
            return;
        }
        Figures figures;
        QCOMPARE(Fault(log, tasks, false, figures), ""s);
        QCOMPARE(figures.failed, 0);
        QCOMPARE(figures.inLog, changes + 1);
        QCOMPARE(SharedLog::Entries(log.folder.Read("tarno.xml"))->size(),
                 static_cast<std::size_t>(changes) + 1);
    }

    void oneIsKilled_allIsInTheLogOrKept_data()
    {
        QTest::addColumn<Texts>("tasks");
        QTest::newRow("of two that add") << Texts{"add", "add"};
        QTest::newRow("of three that add") << Texts{"add", "add", "add"};
        QTest::newRow("beside one that edits") << Texts{"add", "edit"};
    }

    void oneIsKilled_allIsInTheLogOrKept()
    {
        QFETCH(Texts, tasks);
        constexpr int changesOfOne = 20;
        constexpr int longest = 8000; // microseconds, some saves
        Figures figures;
        std::mt19937 random(seed);
        for (int round = Times(20, 400); round > 0; --round) {
            SharedLog log(changes + 1);
            for (const std::string& task : tasks) {
                log.Start(task, changesOfOne);
            }
            for (std::size_t writer = 0; writer < tasks.size(); ++writer) {
                log.Writer(writer).Tell("all");
            }
            const auto end = std::chrono::steady_clock::now() +
                             std::chrono::microseconds(std::uniform_int_distribution(0, longest)(random));
            while (std::chrono::steady_clock::now() < end) {
            }
            log.Writer(0).Kill();
            for (std::size_t writer = 1; writer < tasks.size(); ++writer) {
                QCOMPARE(log.Writer(writer).Line().value_or("ended"), "done"s);
            }
            Texts all = tasks;
            all.emplace_back("add");
            log.Start(all.back(), 1).Tell("one"); // what was killed is started again
            QCOMPARE(log.Writer(tasks.size()).Line().value_or("ended"), "done"s);
            const std::string fault = Fault(log, all, true, figures);
            QVERIFY2(fault.empty(), qPrintable(QStringLiteral("seed %1, %2 rounds before the last: %3")
                                                   .arg(seed)
                                                   .arg(round)
                                                   .arg(QString::fromStdString(fault))));
        }
        qInfo("%s", qPrintable(figures.Text()));
    }
};

TEST_CLASS(tst_TwoPrograms)
#include "tst_TwoPrograms.moc"
