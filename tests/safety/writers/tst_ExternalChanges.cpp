#include "SharedLog.h"
#include "safety/Form.h"
#include "support/TestClass.h"
#include "support/TestStore.h"
#include "support/UnsavedFiles.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
namespace fs = std::filesystem;

Status Save(cSQL& sql, std::int16_t key, const std::string& value)
{
    Record trip;
    sql.EntryGet(key, trip);
    trip.SetText(1, value);
    return sql.EntryUpdate(trip);
}

/// A log of two trips that Tarno has open while another program writes it without locking.
struct OpenLog : TestStore {
    OpenLog()
    {
        WriteDataFiles(folder, OldTrips(2));
        sql.SetShowConflict([this](const ConflictNotice& conflict) { kept.push_back(conflict.keptAs); });
        sql.Init();
    }

    fs::path Path() const { return ToPath(folder.PathOf("tarno.xml")); }

    std::string Bytes() const { return folder.Read("tarno.xml"); }

    /// Returns the values of the trips, each preceded by a blank.
    std::string Values() const
    {
        std::string values;
        for (const Trip& trip : TripsIn(Bytes()).value_or(Trips{{0, "damaged"}})) {
            values += ' ' + trip.value;
        }
        return values;
    }

    /// Returns the log with one more trip.
    std::string WithTheirs() const
    {
        Trips trips = TripsIn(Bytes()).value();
        trips.push_back({trips.back().key + 1, "theirs"});
        return LogOf(trips);
    }

    /// Replaces the log by another file, as synchronisation tools do.
    void Replace(const std::string& bytes) const
    {
        folder.Write("received", bytes);
        fs::rename(ToPath(folder.PathOf("received")), Path());
    }

    /// Adds a trip by writing to the log in place: truncates it first, as cp and scp do, or overwrites it if
    /// `mode` is "in", as rsync --inplace does. Writes the second half after `pauses` pauses of Tarno.
    void WriteFor(int pauses, std::ios::openmode mode = std::ios::trunc)
    {
        const std::string bytes = WithTheirs();
        const auto file = std::make_shared<std::ofstream>(Path(), std::ios::out | std::ios::binary | mode);
        *file << bytes.substr(0, bytes.size() / 2) << std::flush;
        operations.Before(
            "pause", [=] { *file << bytes.substr(bytes.size() / 2) << std::flush; }, pauses);
    }

    Texts kept; ///< files named in notices
};

using Action = std::function<void(OpenLog&)>;

Action Replaced(const std::string& bytes)
{
    return [=](OpenLog& log) { log.Replace(bytes); };
}

Action Written(const std::string& bytes)
{
    return [=](OpenLog& log) { log.folder.Write("tarno.xml", bytes); };
}

void Touch(OpenLog& log)
{
    fs::last_write_time(log.Path(), fs::file_time_type::clock::now() - std::chrono::hours(1));
}

void Remove(OpenLog& log)
{
    fs::remove(log.Path());
}

} // namespace

// Changes that a synchronisation tool or a manual copy makes to the log between and during saves.
class tst_ExternalChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void changedDuringSaves_theLogHasAllTripsAndNoNoticeIsShown()
    {
        struct Change {
            const char* name;
            Action make;
            bool addsTrip;
        };

        const std::vector<Change> changes{
            {"touched", Touch, false},
            {"removed", Remove, false},
            {"the same bytes", [](OpenLog& log) { log.Replace(log.Bytes()); }, false},
            {"the same bytes in place", [](OpenLog& log) { Written(log.Bytes())(log); }, false},
            {"one more trip", [](OpenLog& log) { log.Replace(log.WithTheirs()); }, true},
            {"one more trip in place", [](OpenLog& log) { log.WriteFor(0); }, true},
            {"one more trip over the old bytes", [](OpenLog& log) { log.WriteFor(0, std::ios::in); }, true},
            {"one more trip in place, slowly", [](OpenLog& log) { log.WriteFor(1); }, true},
            {"one more trip in place, very slowly", [](OpenLog& log) { log.WriteFor(90); }, true}};
        // the steps up to Tarno's last check of the log
        const std::vector<std::pair<std::string, int>> moments{
            {"lock", 0}, {"get state", 0}, {"get state", 1}, {"create", 0}, {"get state", 2}};
        std::mt19937 random(20260509);
        for (int round = Times(40, 2000); round > 0; --round) {
            OpenLog log;
            std::string expected = log.Values();
            for (int save = 0; save < 50; ++save) {
                const auto& [name, make, addsTrip] = changes.at(random() % changes.size());
                const auto& [step, before] = moments.at(random() % moments.size());
                log.operations.Before(
                    step, [&, &make = make] { make(log); }, before);
                QCOMPARE(Save(log.sql, 0, "ours"), succeeded);
                expected += addsTrip ? " theirs ours" : " ours";
                QVERIFY2(log.Values() == expected && log.kept.empty(), (name + " before "s + step).c_str());
            }
        }
    }

    void olderCopy_missingTripsAreDeletedWithoutNotice()
    {
        OpenLog log;
        QCOMPARE(Save(log.sql, 0, "A"), succeeded);
        log.Replace(LogOf(OldTrips(2)));
        QCOMPARE(Save(log.sql, 0, "B"), succeeded);
        QCOMPARE(log.Values(), " old-1 old-2 B"s);
        QCOMPARE(log.kept, Texts());
    }

    void alternatingSaves_onlyVersionsOfTheSameTripAreKept()
    {
        OpenLog log;
        cSQL other(log.programFolder, log.operations);
        QCOMPARE(other.Init(), succeeded);
        Trips expected = OldTrips(2);
        for (int key = 3; key < 73; key += 2) {
            QCOMPARE(Save(log.sql, 0, "ours"), succeeded);
            QCOMPARE(Save(other, 0, "theirs"), succeeded);
            expected.insert(expected.end(), {{key, "ours"}, {key + 1, "theirs"}});
        }
        QCOMPARE(log.Bytes(), LogOf(expected));
        QCOMPARE(log.kept, Texts());
        QCOMPARE(Save(other, 1, "A"), succeeded);
        QCOMPARE(Save(other, 0, "A-73"), succeeded);
        QCOMPARE(Save(log.sql, 1, "B"), succeeded);
        expected.front().value = "B";
        expected.push_back({73, "A-73"});
        QCOMPARE(log.Bytes(), LogOf(expected));
        QCOMPARE(log.folder.Read("tarno-kept-1.xml"), LogOf({{1, "A"}}));
        QCOMPARE(log.kept, Texts{log.folder.PathOf("tarno-kept-1.xml")});
    }

    void invalidLog_saveFailsUntilItIsRepaired_data()
    {
        QTest::addColumn<Action>("make");
        QTest::addColumn<Action>("repair");
        QTest::addColumn<std::string>("values");
        const Action remove = Remove;
        const Action restore = Replaced(LogOf(OldTrips(2)));
        const std::string ours = " old-1 old-2 A B";
        const std::string theirs = LogOf({{1, "old-1"}, {2, "old-2"}, {3, "theirs"}});
        QTest::newRow("half of a copy, in place")
            << Written(theirs.substr(0, theirs.size() / 2)) << Written(theirs) << " old-1 old-2 theirs A B"s;
        QTest::newRow("empty") << Replaced("") << remove << ours;
        QTest::newRow("empty, in place") << Written("") << restore << ours;
        QTest::newRow("torn") << Replaced("<data>\n\t<tarno>\n\t\t<TarnoNo>1</Tar") << restore << ours;
        QTest::newRow("zero bytes, in place") << Written(std::string(4096, '\0')) << remove << ours;
        QTest::newRow("of another program") << Replaced("<html><body/></html>") << restore << ours;
        QTest::newRow("a folder") << Action([](OpenLog& log) {
            Remove(log);
            log.folder.MakeFolder("tarno.xml");
        }) << remove << ours;
    }

    void invalidLog_saveFailsUntilItIsRepaired()
    {
        QFETCH(Action, make);
        QFETCH(Action, repair);
        QFETCH(std::string, values);
        OpenLog log;
        make(log);
        const FileState found = log.operations.GetState(log.folder.PathOf("tarno.xml"));
        const Texts names = log.folder.Names();
        const std::string words =
            "Another program has changed " + log.folder.PathOf("tarno.xml") +
            ". The file is damaged, incomplete or cannot be read.\r\nNothing was written. Your changes are "
            "kept while Tarno is open. Restore that file or move it away, then save again.";
        log.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::PathFileAccess,
                           fs::is_directory(log.Path()) ? Describe(ErrorNumber::PathFileAccess) : words);
        QCOMPARE(Save(log.sql, 0, "A"), failed);
        QVERIFY(log.operations.GetState(log.folder.PathOf("tarno.xml")) == found);
        QCOMPARE(log.folder.Names(), names);
        QCOMPARE(UnsavedFiles(log.sql), Texts{"tarno.xml"});
        repair(log);
        QCOMPARE(Save(log.sql, 0, "B"), succeeded);
        QCOMPARE(log.Values(), values);
        QCOMPARE(UnsavedFiles(log.sql), Texts());
    }
};

TEST_CLASS(tst_ExternalChanges)
#include "tst_ExternalChanges.moc"
