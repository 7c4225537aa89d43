// Makes every step of a save fail with every error, with and without changes by another program.

#include "safety/faults/FaultyLog.h"
#include "support/TestClass.h"
#include "support/UnsavedFiles.h"

#include <array>

using namespace Tarno;

namespace
{

/// The field definitions as a record family. They have no operations to get, update or remove by key.
const RecordFamily fieldFamily{"Field",          "field", "FieldNo", "field.xml", "",
                               &cSQL::FieldList, nullptr, nullptr,   nullptr};

/// A change that another program makes to the three records while this one changes the first or adds one.
struct OtherChange {
    const char* name;
    void (*make)(RecordValues&);
};

constexpr std::array<OtherChange, 6> otherChanges{{
    {"another record", [](RecordValues& values) { values[2] = "theirs"; }},
    {"the same record", [](RecordValues& values) { values[1] = "theirs"; }},
    {"all records", [](RecordValues& values) { values[1] = values[2] = values[3] = "theirs"; }},
    {"a record added", [](RecordValues& values) { values[4] = "theirs"; }},
    {"another record deleted", [](RecordValues& values) { values.erase(2); }},
    {"the same record deleted", [](RecordValues& values) { values.erase(1); }},
}};

/// When the other program makes the change. A file that is incomplete at first is completed while the save
/// waits.
enum Moment { BeforeTheSave, DuringTheSave, IncompleteAtFirst };

/// Returns the faults to inject into a save with the given steps.
std::vector<Fault> FaultsOf(const Texts& steps)
{
    std::vector<SaveStep> calls;
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        if (*step != "pause") {
            const bool isLast = step + 1 == steps.end(); // earlier ones synchronise kept files
            calls.push_back({*step, static_cast<int>(std::count(steps.begin(), step, *step)),
                             *step == "remove" ? GoesUnnoticed
                             : isLast          ? FailsButIsWritten
                                               : Fails});
        }
    }
    return AllFaults(calls, {ErrorNumber::PermissionDenied});
}

/// Checks that every kept file contains `version` and is named in a notice.
void CheckKeptFiles(const FaultyLog& log, const std::string& version)
{
    for (const std::string& name : log.FilesWith("-kept-")) {
        const auto namesIt = [&](const ConflictNotice& notice) {
            return notice.keptAs == log.folder.PathOf(name);
        };
        QVERIFY2(std::any_of(log.notices.begin(), log.notices.end(), namesIt), "a kept file is not named");
        QCOMPARE(log.folder.Read(name), version);
    }
}

} // namespace

class tst_ScriptedFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase_data()
    {
        AddRecordFamilies();
        QTest::newRow("Field") << fieldFamily;
    }

    void everyStep_leavesTheOldBytes_andTheNextSaveWritesAll()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        for (const Fault& fault : AllFaults(saveSteps, allErrors)) {
            FaultyLog log(family);
            const int attempts = fault.times == 1 ? 1 : 2;
            Outcome expected{fault.effect, fault.error};
            if (fault.step.name ==
                "remove") { // happens only after another failure, which is the one reported
                log.operations.Fail("replace", ErrorNumber::OutOfMemory, attempts);
                expected = {Fails, ErrorNumber::OutOfMemory, 1};
            }
            CheckSaves(
                log, expected, attempts, [&] { fault.Inject(log.operations); },
                [&] { log.operations.ClearFailures(); });
            if (QTest::currentTestFailed()) {
                QFAIL(fault.Description().c_str());
            }
        }
    }

    void otherProgram_everyStep_losesNothingOfEitherSide_data()
    {
        QTest::addColumn<OtherChange>("change");
        for (const OtherChange& change : otherChanges) {
            QTest::newRow(change.name) << change;
        }
    }

    void otherProgram_everyStep_losesNothingOfEitherSide()
    {
        for (const Moment moment : {BeforeTheSave, DuringTheSave, IncompleteAtFirst}) {
            for (const bool isAdding : {false, true}) {
                Texts steps;
                SaveWithFault(moment, isAdding, nullptr, &steps);
                for (const Fault& fault : FaultsOf(steps)) {
                    SaveWithFault(moment, isAdding, &fault, &steps);
                    if (QTest::currentTestFailed()) {
                        QFAIL(fault.Description().c_str());
                    }
                }
            }
        }
    }

private:
    /// Changes or adds a record while another program changes the file and `fault`, if any, occurs. Checks
    /// that the next save writes what is missing. Stores the steps of the first save in `steps`.
    static void SaveWithFault(Moment moment, bool isAdding, const Fault* fault, Texts* steps)
    {
        QFETCH_GLOBAL(RecordFamily, family);
        QFETCH(OtherChange, change);
        if (isAdding && family.update == nullptr) {
            return; // field definitions cannot be added
        }
        FaultyLog log(family);
        RecordValues theirs = log.values;
        change.make(theirs);
        const auto theirFirst = theirs.find(1);
        const bool isConflict = !isAdding && (theirFirst == theirs.end() || theirFirst->second == "theirs");
        const bool isKept = isConflict && theirFirst != theirs.end();
        const std::string version = isKept ? log.FileOf({*theirFirst}) : "";
        RecordValues merged = theirs;
        merged[isAdding ? theirs.rbegin()->first + 1 : 1] = "ours";

        const std::string theirFile = log.FileOf(theirs);
        std::string lastFile = log.OnDisk(); // the file before our save
        const auto write = [&](const std::string& bytes) {
            log.folder.Write(family.file, bytes);
            lastFile = bytes;
        };
        if (moment == DuringTheSave) {
            log.operations.Before("create", [&] { write(theirFile); });
        } else {
            write(moment == BeforeTheSave ? theirFile : theirFile.substr(0, theirFile.size() - 5));
        }
        if (moment == IncompleteAtFirst) {
            log.operations.Before(
                "pause", [&] { write(theirFile); }, 2);
        }
        if (fault != nullptr) {
            fault->Inject(log.operations);
        }
        const auto before = static_cast<std::ptrdiff_t>(log.operations.Steps().size());
        const bool isSaved = log.Save(isAdding ? 0 : 1, "ours") == succeeded;
        steps->assign(log.operations.Steps().begin() + before, log.operations.Steps().end());
        // kept files reach the disk before the log is replaced
        QVERIFY(!isSaved || std::count(steps->begin(), steps->end(), "sync folder") >= (isKept ? 2 : 1));
        const Effect effect = fault == nullptr ? GoesUnnoticed : fault->effect;
        QCOMPARE(isSaved, effect == GoesUnnoticed);
        QCOMPARE(log.reported, isSaved ? Texts() : log.ReportOf(fault->error));
        QCOMPARE(log.OnDisk(), effect == Fails ? lastFile : log.FileOf(merged));
        QCOMPARE(UnsavedFiles(log.sql), isSaved ? Texts() : Texts{family.file});
        const RecordValues inMemory = log.InMemory();
        QVERIFY(inMemory == log.values || inMemory == merged);
        QVERIFY(log.Temporaries().empty() || (fault != nullptr && fault->step.name == "remove"));
        CheckKeptFiles(log, version);

        log.operations.ClearFailures();
        // a save without a change; field definitions cannot be deleted
        QCOMPARE(family.remove == nullptr ? log.Save(1, log.InMemory()[1]) : (log.sql.*family.remove)(99),
                 succeeded);
        QCOMPARE(log.OnDisk(), log.FileOf(merged));
        QCOMPARE(UnsavedFiles(log.sql), Texts());
        QCOMPARE(log.notices.empty(), !isConflict);
        QCOMPARE(log.FilesWith("-kept-").empty(), !isKept);
        CheckKeptFiles(log, version);
        QCOMPARE(log.sql.Init(), succeeded); // the next start
        QVERIFY(log.InMemory() == merged);
        QCOMPARE(log.Temporaries(), Texts());
    }
};

TEST_CLASS(tst_ScriptedFaults)
#include "tst_ScriptedFaults.moc"
