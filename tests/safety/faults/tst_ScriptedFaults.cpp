// Every call of a save fails, one after the other, with every error, once and for ever.

#include "safety/Form.h"
#include "store/RecordFamily.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <functional>
#include <optional>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// The field definitions, as far as they are like the others.
const RecordFamily fieldFamily{"Field",          "field", "FieldNo", "field.xml", "",
                               &cSQL::FieldList, nullptr, nullptr,   nullptr};

std::vector<RecordFamily> AllFamilies()
{
    std::vector<RecordFamily> families(RecordFamilies().begin(), RecordFamilies().end());
    families.push_back(fieldFamily);
    return families;
}

/// How a call fails.
struct Fault {
    ErrorNumber error;
    int times;
};

/// Every error, once and for ever. In the short form one error is enough for ever, and where it `isBrief` one
/// once.
std::vector<Fault> Faults(bool isBrief)
{
    if (isBrief && !IsLongForm()) {
        return {{ErrorNumber::DiskFull, 1}};
    }
    std::vector<Fault> faults;
    for (const ErrorNumber error : {ErrorNumber::DiskFull, ErrorNumber::DeviceInputOutput,
                                    ErrorNumber::PermissionDenied, ErrorNumber::PathFileAccess}) {
        faults.push_back({error, 1});
        if (error == ErrorNumber::DiskFull || IsLongForm()) {
            faults.push_back({error, ScriptedFileOperations::always});
        }
    }
    return faults;
}

/// A call of a save: the name of its step, and how many calls of that step come before it.
struct Call {
    std::string step;
    int before;
};

/// The calls among `steps` that can fail.
std::vector<Call> CallsOf(const Texts& steps)
{
    std::vector<Call> calls;
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        if (*step != "drop") {
            calls.push_back({*step, static_cast<int>(std::count(steps.begin(), step, *step))});
        }
    }
    return calls;
}

/// A log with three records of one kind, which are changed one value at a time, and what is told about it.
class Log : public TestStore
{
public:
    explicit Log(const RecordFamily& family) : m_family(family)
    {
        for (std::size_t record = 0; record < m_values.size(); ++record) {
            m_values[record] = "as it was " + std::to_string(record);
        }
        folder.Write(m_family.file, File());
        if (sql.Init() != succeeded) {
            QTest::qFail("the log cannot be loaded", __FILE__, __LINE__);
        }
    }

    /// The file when all changes are in it.
    std::string File() const { return FileOf(m_values); }

    /// A file of the same records with other values.
    std::string FileOf(const Texts& values) const
    {
        Texts records;
        for (const std::string& value : values) {
            records.push_back(m_family.Made(std::to_string(records.size() + 1), value));
        }
        return RecordFamily::File(records);
    }

    std::string OnDisk() const { return folder.Read(m_family.file); }

    /// Changes the value of a record; returns what is told.
    Status Change(std::size_t record, const std::string& value)
    {
        RecordList list;
        (sql.*m_family.list)(list);
        Record changed(list.at(record));
        changed.SetText(1, value);
        m_values.at(record) = value;
        return m_family.update == nullptr ? sql.FieldUpdate(changed) : (sql.*m_family.update)(changed);
    }

    /// What is held in memory.
    Texts InMemory() const
    {
        Texts values;
        RecordList list;
        (sql.*m_family.list)(list);
        for (const RecordView& record : list) {
            values.push_back(record.Text(1));
        }
        return values;
    }

    const Texts& Values() const { return m_values; }

    bool IsUnsaved() const { return sql.UnsavedFiles() == Texts{m_family.file}; }

    void ExpectReport(ErrorNumber number) { reports.Expect("cSQL", m_family.name + "Update", number); }

    void ExpectWords(const std::string& words)
    {
        reports.ExpectWords("cSQL", m_family.name + "Update", words);
    }

    const RecordFamily& Family() const { return m_family; }

    /// Everything in the folder that is not one of the files which were there at first.
    Texts Others() const
    {
        Texts others;
        for (const std::string& name : folder.Names()) {
            if (!std::binary_search(m_names.begin(), m_names.end(), name)) {
                others.push_back(name);
            }
        }
        return others;
    }

private:
    RecordFamily m_family;
    Texts m_values = Texts(3);
    Texts m_names = folder.Names();
};

const std::string changed = "changed by the angler";

void AddFamilies()
{
    for (const RecordFamily& family : AllFamilies()) {
        QTest::newRow(family.name.c_str()) << family;
    }
}

/// A way in which another program's version meets ours.
struct Meeting {
    const char* name;
    bool atTheLastMoment; ///< it comes between our look and our writing
    bool exchanges;
    std::function<std::string(const Log&)> theirs;
};

const std::string theirWord = "written by the other program";

/// Another value in the record that is being changed here.
std::string SameRecord(const Log& log)
{
    Texts values = log.Values();
    values[0] = theirWord;
    return log.FileOf(values);
}

/// Another value in another record, in a file that lacks the last record.
std::string OneRecordLess(const Log& log)
{
    Texts values = log.Values();
    values[1] = theirWord;
    values.pop_back();
    return log.FileOf(values);
}

/// One record more.
std::string OneRecordMore(const Log& log)
{
    Texts values = log.Values();
    values.push_back(theirWord);
    return log.FileOf(values);
}

std::string Damaged(const Log& log)
{
    const std::string whole = SameRecord(log);
    return whole.substr(0, whole.size() - 5);
}

const std::vector<Meeting> meetings{
    {"the same record", false, true, SameRecord},
    {"the same record, no exchange", false, false, SameRecord},
    {"a record less", false, true, OneRecordLess},
    {"a record less, no exchange", false, false, OneRecordLess},
    {"a record more", false, true, OneRecordMore},
    {"damaged", false, true, Damaged},
    {"damaged, no exchange", false, false, Damaged},
    {"the last moment, the same record", true, true, SameRecord},
    {"the last moment, a record less", true, true, OneRecordLess},
    {"the last moment, damaged", true, true, Damaged},
};

/// Whether every one of `wanted` is in one of the files of the folder, or among `others`.
std::string Lost(const Log& log, const Texts& wanted, const Texts& others = {})
{
    std::string all;
    for (const std::string& name : log.folder.Names()) {
        if (name.find("kept") != std::string::npos || name.starts_with(log.Family().file)) {
            all += log.folder.Read(name) + '\n';
        }
    }
    for (const std::string& other : others) {
        all += other + '\n';
    }
    std::string lost;
    for (const std::string& text : wanted) {
        lost += all.find(text) == std::string::npos ? text + '\n' : "";
    }
    return lost;
}

/// Takes every report and counts them; any number of them may come.
class AnyReports
{
public:
    AnyReports()
    {
        ErrorReporter::Instance().SetShowMessage(
            [this](const std::string& text, const std::string& /*title*/) { m_shown.push_back(text); });
    }

    AnyReports(const AnyReports&) = delete;
    AnyReports& operator=(const AnyReports&) = delete;

    ~AnyReports() { ErrorReporter::Instance().Reset(); }

    const Texts& Shown() const { return m_shown; }

    int Failures() const
    {
        return static_cast<int>(std::count_if(m_shown.begin(), m_shown.end(), [](const std::string& text) {
            return text.find("error raised") != std::string::npos;
        }));
    }

private:
    Texts m_shown;
};

} // namespace

class tst_ScriptedFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyCall_leavesTheOldBytes_andTheNextSaveWritesAll_data()
    {
        QTest::addColumn<RecordFamily>("family");
        QTest::addColumn<bool>("exchanges");
        QTest::addColumn<int>("most");
        for (const RecordFamily& family : AllFamilies()) {
            for (const bool exchanges : {true, false}) {
                for (const int most : {1, 100, 100000}) {
                    if (most == 1 && family.name != "Entry" && !IsLongForm()) {
                        continue;
                    }
                    QTest::addRow("%s, %s, writes of %d bytes", family.name.c_str(),
                                  exchanges ? "exchange" : "replace", most)
                        << family << exchanges << most;
                }
            }
        }
    }

    void everyCall_leavesTheOldBytes_andTheNextSaveWritesAll()
    {
        QFETCH(RecordFamily, family);
        QFETCH(bool, exchanges);
        QFETCH(int, most);
        const auto prepare = [&](Log& log) {
            log.operations.TakeAtMost(static_cast<std::size_t>(most));
            if (!exchanges) {
                log.operations.ExchangeNothing();
            }
        };
        std::vector<Call> calls;
        {
            Log log(family);
            prepare(log);
            const std::size_t before = log.operations.Steps().size();
            QCOMPARE(log.Change(0, changed), succeeded);
            const Texts& steps = log.operations.Steps();
            calls = CallsOf({steps.begin() + static_cast<std::ptrdiff_t>(before), steps.end()});
            QCOMPARE(log.OnDisk(), log.File());
        }
        int atWrite = 0;
        for (const Call& call : calls) {
            // single bytes: the first few, then ever fewer of them
            if (most == 1 && call.step == "write" && call.before > 2 && ++atWrite % Times(50, 5) != 0) {
                continue;
            }
            for (const auto& [error, times] : Faults(family.name != "Entry" || most < 1000)) {
                ++m_faults;
                Log log(family);
                prepare(log);
                const std::string old = log.OnDisk();
                const int tries = times == 1 ? 1 : 2;
                // the script counts from now on: what came before the save has been done
                log.operations.Fail(call.step, error, times, call.before);
                const bool isWritten = call.step == "sync folder" || call.step == "remove";
                for (int tried = 0; tried < tries; ++tried) {
                    if (call.step != "remove") {
                        log.ExpectReport(error);
                    }
                    QCOMPARE(log.Change(0, changed), call.step == "remove" ? succeeded : failed);
                    QCOMPARE(log.OnDisk(), isWritten ? log.File() : old);
                    QCOMPARE(log.IsUnsaved(), call.step != "remove");
                    QCOMPARE(log.InMemory(), log.Values());
                    QCOMPARE(log.Others().size(), call.step == "remove" ? std::size_t(tried + 1) : 0U);
                }
                log.operations.Heal();
                QCOMPARE(log.Change(1, changed), succeeded);
                QCOMPARE(log.OnDisk(), log.File());
                QCOMPARE(log.sql.UnsavedFiles(), Texts());
                QCOMPARE(log.sql.Init(), succeeded);
                QCOMPARE(log.InMemory(), log.Values());
                QCOMPARE(log.Others(), Texts());
            }
        }
    }

    void everyCallAndItsRemoving_leavesALeftoverThatTheNextStartTakesAway_data()
    {
        QTest::addColumn<RecordFamily>("family");
        AddFamilies();
    }

    void everyCallAndItsRemoving_leavesALeftoverThatTheNextStartTakesAway()
    {
        QFETCH(RecordFamily, family);
        for (const char* step : {"write", "sync", "close", "size", "exchange", "replace"}) {
            for (const auto& [error, times] : Faults(family.name != "Entry")) {
                ++m_faults;
                Log log(family);
                if (step == "replace"s) {
                    log.operations.ExchangeNothing();
                }
                const std::string old = log.OnDisk();
                log.operations.Fail(step, error, times);
                log.operations.Fail("remove", ErrorNumber::PathFileAccess);
                log.ExpectReport(error); // the first failure, not the second
                QCOMPARE(log.Change(2, changed), failed);
                QCOMPARE(log.OnDisk(), old);
                QCOMPARE(log.Others().size(), std::size_t{1});
                QVERIFY(log.Others().front().ends_with(SafeWriter::temporarySuffix));
                log.operations.Heal();
                QCOMPARE(log.Change(1, changed), succeeded);
                QCOMPARE(log.OnDisk(), log.File());
                QCOMPARE(log.sql.Init(), succeeded);
                QCOMPARE(log.Others(), Texts());
                QCOMPARE(log.InMemory(), log.Values());
            }
        }
    }

    void otherVersion_everyCall_losesNothingOfEitherSide_data()
    {
        QTest::addColumn<RecordFamily>("family");
        QTest::addColumn<int>("meeting");
        for (const RecordFamily& family : AllFamilies()) {
            for (std::size_t meeting = 0; meeting < meetings.size(); ++meeting) {
                QTest::addRow("%s, %s", family.name.c_str(), meetings[meeting].name)
                    << family << static_cast<int>(meeting);
            }
        }
    }

    void otherVersion_everyCall_losesNothingOfEitherSide()
    {
        QFETCH(RecordFamily, family);
        QFETCH(int, meeting);
        const Meeting& met = meetings[static_cast<std::size_t>(meeting)];
        bool hasCome = false;
        const auto prepare = [&](Log& log) {
            const std::string theirs = met.theirs(log);
            if (!met.exchanges) {
                log.operations.ExchangeNothing();
            }
            if (met.atTheLastMoment) {
                log.operations.BeforeExchange([&, theirs] {
                    log.folder.Write(log.Family().file, theirs);
                    hasCome = true;
                });
            } else {
                log.folder.Write(log.Family().file, theirs);
            }
            hasCome = !met.atTheLastMoment;
            return theirs;
        };
        std::vector<Call> calls;
        {
            Log log(family);
            const AnyReports reports;
            const std::string theirs = prepare(log);
            const std::size_t before = log.operations.Steps().size();
            QCOMPARE(log.Change(0, changed), succeeded);
            const Texts& steps = log.operations.Steps();
            calls = CallsOf({steps.begin() + static_cast<std::ptrdiff_t>(before), steps.end()});
            QCOMPARE(reports.Failures(), 0);
        }
        for (const Call& call : calls) {
            for (const auto& [error, times] : Faults(family.name != "Entry")) {
                ++m_faults;
                Log log(family);
                const AnyReports reports;
                const Texts ours = log.Values();
                const std::string theirs = prepare(log);
                log.operations.Fail(call.step, error, times, call.before);
                const Status told = log.Change(0, changed);
                const std::string where = call.step + " " + std::to_string(call.before) + ", error " +
                                          std::to_string(static_cast<int>(error)) +
                                          (times < 0 ? " always" : "");
                const auto lost = [&](const Texts& wanted, const Texts& others = {}) {
                    const std::string texts = Lost(log, wanted, others);
                    return texts.empty() ? texts : where + ": " + texts;
                };
                // what is damaged has to be kept as it is, of anything else every record
                const bool isWhole = theirs.find("</data>") != std::string::npos;
                const std::string word = isWhole ? theirWord : theirs;
                QCOMPARE(lost(hasCome ? Texts{word} : Texts()), ""s);
                QCOMPARE(lost({changed, ours[1], ours[2]}, log.InMemory()), ""s);
                QCOMPARE(told == succeeded, call.step == "remove");
                QCOMPARE(reports.Failures(), told == succeeded ? 0 : 1);
                QCOMPARE(log.IsUnsaved(), told == failed);

                log.operations.Heal();
                QCOMPARE(log.Change(0, changed), succeeded);
                QCOMPARE(log.sql.UnsavedFiles(), Texts());
                QCOMPARE(lost({word, changed, ours[1], ours[2]}), ""s);
                QCOMPARE(log.sql.Init(), succeeded); // as at the next start
                QCOMPARE(lost({word, changed, ours[1], ours[2]}), ""s);
                QCOMPARE(log.InMemory().at(0), changed);
            }
        }
    }

    void cleanupTestCase() { qInfo("%d faults", m_faults); }

private:
    int m_faults = 0;
};

TEST_CLASS(tst_ScriptedFaults)
#include "tst_ScriptedFaults.moc"
