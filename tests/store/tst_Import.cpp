#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/TestClass.h"
#include "support/TestStore.h"
#include "support/UnsavedFiles.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

StoredTexts Location(const std::string& number, const std::string& name)
{
    StoredTexts values(LocationField::Count);
    values[LocationField::LocNo] = number;
    values[LocationField::LocName] = name;
    return values;
}

ImportedTrip Trip(const std::string& number, const std::string& date, const std::string& location)
{
    StoredTexts values(EntryField::Count);
    values[EntryField::TarnoNo] = number;
    values[EntryField::StartDate] = date;
    values[EntryField::LocNo] = location;
    return {values, {}};
}

ImportedTrip TripAtNew(const std::string& number, const std::string& date, std::size_t location)
{
    ImportedTrip trip = Trip(number, date, "");
    trip.newLocation = location;
    return trip;
}

/// Two locations and four trips for the log of the test.
ImportBatch SmallBatch()
{
    return {.locations = {Location("1", "Reef"), Location("4", "Jetty")},
            .trips = {TripAtNew("3", "three", 1), Trip("5", "taken", "1"), TripAtNew("9", "nine", 0),
                      Trip("x", "none", "77")}};
}

/// A batch of trips with the numbers from 1 on.
ImportBatch TripsUpTo(int number)
{
    ImportBatch batch;
    for (int trip = 1; trip <= number; ++trip) {
        batch.trips.push_back(Trip(std::to_string(trip), "2026-11-20", "1"));
    }
    return batch;
}

const Texts smallBatchStored{"1 Pier",    "4 Jetty",   "5 Reef",      "1 one @1",   "3 three @4",
                             "5 five @1", "9 nine @5", "10 taken @1", "11 none @77"};
const Texts nothingStored{"1 Pier", "1 one @1", "5 five @1"};

Texts RecordsOf(const cSQL& sql)
{
    Texts records;
    RecordList locations;
    sql.LocationList(locations);
    for (const RecordView& location : locations) {
        records.push_back(location.Text(0) + ' ' + location.Text(LocationField::LocName));
    }
    RecordList trips;
    sql.EntryList(trips);
    for (const RecordView& trip : trips) {
        records.push_back(trip.Text(0) + ' ' + trip.Text(EntryField::StartDate) + " @" +
                          trip.Text(EntryField::LocNo));
    }
    return records;
}

/// A log with the location "Pier" and the trips 1 and 5, and another program that works on it.
struct Log : TestStore {
    Log()
    {
        sql.Init();
        ImportBatch start{.locations = {Location("1", "Pier")},
                          .trips = {TripAtNew("1", "one", 0), TripAtNew("5", "five", 0)}};
        sql.Import(start);
        sql.Init();
        other.Init();
    }

    /// Returns the records in the files.
    Texts Stored()
    {
        cSQL reader(programFolder, *otherOperations);
        reader.Init();
        return RecordsOf(reader);
    }

    std::string Bytes() const { return folder.Read("location.xml") + folder.Read("tarno.xml"); }

    void EditTheirs(std::int16_t key, EntryField::Position field, const std::string& text)
    {
        Record trip;
        other.EntryGet(key, trip);
        trip.SetText(field, text);
        other.EntryUpdate(trip);
    }

    std::string AddTheirTrip(const std::string& date, const std::string& location)
    {
        Record trip;
        other.EntryGet(0, trip);
        trip.SetText(EntryField::StartDate, date);
        trip.SetText(EntryField::LocNo, location);
        other.EntryUpdate(trip);
        return trip.Text(0);
    }

    std::string AddTheirLocation(const std::string& name)
    {
        Record location;
        other.LocationGet(0, location);
        location.SetText(LocationField::LocName, name);
        other.LocationUpdate(location);
        return location.Text(0);
    }

    std::unique_ptr<FileOperations> otherOperations = SystemFileOperations();
    cSQL other{programFolder, *otherOperations};
};

} // namespace

// Adding locations and trips together.
class tst_Import : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void numbers_mustSuffice()
    {
        constexpr int last = 32767;
        Log log; // has the trips 1 and 5
        ImportBatch batch = TripsUpTo(last - 2);
        QVERIFY(log.sql.HasNumbersFor(batch));
        batch.trips.push_back(Trip("", "2026-11-20", "1"));
        QVERIFY(!log.sql.HasNumbersFor(batch));
        batch = {.locations = {Location("32767", "Reef"), Location("", "Jetty")}, .trips = {}};
        QVERIFY(!log.sql.HasNumbersFor(batch));
    }

    void changesOfOthers_canBeReadBeforeTheImport()
    {
        Log log;
        ImportBatch batch = SmallBatch();
        log.other.Import(batch);
        QCOMPARE(RecordsOf(log.sql), nothingStored);
        QCOMPARE(log.sql.ReadChangesOfOthers(), succeeded);
        QCOMPARE(RecordsOf(log.sql), smallBatchStored);
        QVERIFY(!log.sql.NextUndo());
    }

    void freeNumbers_areKept()
    {
        Log log;
        QCOMPARE(log.Stored(), nothingStored);
        ImportBatch batch = SmallBatch();
        QCOMPARE(log.sql.Import(batch), succeeded);
        QCOMPARE(log.Stored(), smallBatchStored);
        QCOMPARE(RecordsOf(log.sql), smallBatchStored);
        Texts keys;
        for (const ImportedTrip& trip : batch.trips) {
            keys.push_back(trip.values[EntryField::TarnoNo] + " @" + trip.values[EntryField::LocNo]);
        }
        QCOMPARE(keys, (Texts{"3 @4", "10 @1", "9 @5", "11 @77"}));
        QCOMPARE(batch.locations[0][0], "5"s);
        QCOMPARE(batch.locations[1][0], "4"s);
    }

    void numbers_thatAreNoKeys_areReplaced()
    {
        Log log;
        ImportBatch batch;
        for (const char* number :
             {"", "0", "-2", "07", " 2", "2 ", "32768", "99999999999", "2", "2", "1e1", "12"}) {
            batch.trips.push_back(Trip(number, number, ""));
        }
        QCOMPARE(log.sql.Import(batch), succeeded);
        QCOMPARE(log.Stored(), (Texts{"1 Pier", "1 one @1", "2 2 @", "5 five @1", "12 12 @", "13  @",
                                      "14 0 @", "15 -2 @", "16 07 @", "17  2 @", "18 2  @", "19 32768 @",
                                      "20 99999999999 @", "21 2 @", "22 1e1 @"}));
    }

    void eachFile_isWrittenOnce()
    {
        Log log;
        ImportBatch batch = SmallBatch();
        const int before = log.operations.Count("create");
        QCOMPARE(log.sql.Import(batch), succeeded);
        QCOMPARE(log.operations.Count("create"), before + 2);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.operations.Count("create"), before + 4);
        ImportBatch onlyTrips{.locations = {}, .trips = {Trip("2", "two", "1")}};
        QCOMPARE(log.sql.Import(onlyTrips), succeeded);
        QCOMPARE(log.operations.Count("create"), before + 5);
        ImportBatch nothing;
        QCOMPARE(log.sql.Import(nothing), succeeded);
        QCOMPARE(log.operations.Count("create"), before + 5);
    }

    void import_isOneStep()
    {
        Log log;
        QCOMPARE(log.sql.LocationDelete(9), succeeded);
        Record trip;
        log.sql.EntryGet(1, trip);
        trip.SetText(EntryField::StartDate, "edited");
        log.sql.EntryUpdate(trip);
        const std::string before = log.Bytes();
        ImportBatch batch = SmallBatch();
        QCOMPARE(log.sql.Import(batch), succeeded);
        const std::string after = log.Bytes();
        for (int round = 0; round < 2; ++round) {
            const auto title = log.sql.NextUndo();
            QVERIFY(title && title->kind == ChangeKind::Import);
            QCOMPARE(title->trips, 4U);
            QCOMPARE(title->locations, 2U);
            const UndoResult undone = log.sql.Undo();
            QVERIFY(undone.status == UndoStatus::Done);
            QCOMPARE(undone.key, ""s);
            QCOMPARE(log.Bytes(), before);
            QVERIFY(log.sql.NextUndo()->kind == ChangeKind::Edit);
            QVERIFY(log.sql.NextRedo()->kind == ChangeKind::Import);
            QCOMPARE(log.sql.NextRedo()->trips, 4U);
            const UndoResult redone = log.sql.Redo();
            QVERIFY(redone.status == UndoStatus::Done);
            QCOMPARE(redone.key, "3"s);
            QCOMPARE(log.Bytes(), after);
            QVERIFY(!log.sql.NextRedo());
        }
    }

    void twoImports_areTwoSteps()
    {
        Log log;
        ImportBatch first{.locations = {Location("", "Reef")}, .trips = {}};
        ImportBatch second{.locations = {}, .trips = {Trip("", "two", "1")}};
        QCOMPARE(log.sql.Import(first), succeeded);
        const std::string between = log.Bytes();
        QCOMPARE(log.sql.Import(second), succeeded);
        QCOMPARE(log.sql.NextUndo()->trips, 1U);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Bytes(), between);
        QCOMPARE(log.sql.NextUndo()->locations, 1U);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(), nothingStored);
        QVERIFY(!log.sql.NextUndo());
        QVERIFY(log.sql.Redo().status == UndoStatus::Done);
        QCOMPARE(log.Bytes(), between);
    }

    void impossibleImport_changesNothing_data()
    {
        QTest::addColumn<std::string>("fault");
        QTest::addColumn<int>("error");
        QTest::newRow("no such new location")
            << "location"s << static_cast<int>(ErrorNumber::SubscriptOutOfRange);
        QTest::newRow("no new location at all")
            << "none"s << static_cast<int>(ErrorNumber::SubscriptOutOfRange);
        QTest::newRow("too few values") << "few"s << static_cast<int>(ErrorNumber::SubscriptOutOfRange);
        QTest::newRow("too many values") << "values"s << static_cast<int>(ErrorNumber::ObjectNotSet);
        QTest::newRow("no key left") << "key"s << static_cast<int>(ErrorNumber::Overflow);
        QTest::newRow("damaged trips") << "damage"s << static_cast<int>(ErrorNumber::ObjectNotSet);
    }

    void impossibleImport_changesNothing()
    {
        QFETCH(std::string, fault);
        QFETCH(int, error);
        Log log;
        ImportBatch batch = SmallBatch();
        if (fault == "location") {
            batch.trips[0].newLocation = 2;
        } else if (fault == "none") {
            batch.locations.clear();
            batch.trips.resize(1);
            batch.trips[0].newLocation = 0;
        } else if (fault == "few") {
            batch.trips[1].values.resize(EntryField::LocNo);
        } else if (fault == "values") {
            batch.trips[2].values.resize(EntryField::Count + 1);
        } else if (fault == "key") {
            batch.trips[0].values[0] = "32767";
        } else {
            log.folder.Write("tarno.xml", "<data>");
            log.sql.Init();
        }
        const std::string before = log.Bytes();
        log.reports.Expect("cSQL", "Import", static_cast<ErrorNumber>(error));
        QCOMPARE(log.sql.Import(batch), failed);
        QCOMPARE(log.Bytes(), before);
        QCOMPARE(UnsavedFiles(log.sql), Texts());
        QVERIFY(!log.sql.NextUndo());
    }

    // Another program has taken some of the numbers since the files were read.
    void recordsOfOtherProgram_survive()
    {
        Log log;
        QCOMPARE(log.AddTheirTrip("theirs", "1"), "6"s);
        QCOMPARE(log.AddTheirLocation("Theirs"), "2"s);
        ImportBatch batch{
            .locations = {Location("2", "Reef"), Location("3", "Jetty")},
            .trips = {TripAtNew("6", "six", 0), TripAtNew("7", "seven", 1), Trip("4", "four", "1")}};
        QCOMPARE(log.sql.Import(batch), succeeded);
        QCOMPARE(log.Stored(), (Texts{"1 Pier", "2 Theirs", "3 Jetty", "4 Reef", "1 one @1", "4 four @1",
                                      "5 five @1", "6 theirs @1", "7 seven @3", "8 six @4"}));
        QCOMPARE(RecordsOf(log.sql), log.Stored());
        QCOMPARE(batch.trips[0].values[0], "8"s);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(), (Texts{"1 Pier", "2 Theirs", "1 one @1", "5 five @1", "6 theirs @1"}));
        QVERIFY(log.sql.Redo().status == UndoStatus::Done);
        QCOMPARE(RecordsOf(log.sql), log.Stored());
        QCOMPARE(log.Stored().size(), 10U);
    }

    void otherProgram_writesDuringEachSave()
    {
        for (const int locks : {0, 1}) {
            Log log;
            std::string theirs;
            log.operations.Before(
                "lock",
                [&] {
                    theirs = log.AddTheirLocation("Theirs");
                    log.AddTheirTrip("theirs", theirs);
                },
                locks);
            ImportBatch batch = SmallBatch();
            QCOMPARE(log.sql.Import(batch), succeeded);
            const Texts stored = log.Stored();
            QCOMPARE(stored.size(), smallBatchStored.size() + 2);
            QVERIFY(log.sql.Undo().status == UndoStatus::Done);
            QCOMPARE(log.Stored(),
                     (Texts{"1 Pier", theirs + " Theirs", "1 one @1", "5 five @1", "6 theirs @" + theirs}));
            QVERIFY(log.sql.Redo().status == UndoStatus::Done);
            QCOMPARE(log.Stored().size(), stored.size());
            QCOMPARE(UnsavedFiles(log.sql), Texts());
        }
    }

    void importChangedByOther_isKeptWhole()
    {
        Log log;
        ImportBatch batch = SmallBatch();
        QCOMPARE(log.sql.Import(batch), succeeded);
        log.other.Init();
        log.EditTheirs(9, EntryField::StartDate, "edited");
        const std::string before = log.Bytes();
        const UndoResult result = log.sql.Undo();
        QVERIFY(result.status == UndoStatus::ChangedByOther);
        QCOMPARE(result.change.record.key, "9"s);
        QCOMPARE(log.Bytes(), before);
        QVERIFY(!log.sql.NextUndo() && !log.sql.NextRedo());
    }

    void newLocationUsedByAnotherTrip_isNotRemoved()
    {
        Log log;
        ImportBatch batch = SmallBatch();
        QCOMPARE(log.sql.Import(batch), succeeded);
        log.other.Init();
        const std::string key = log.AddTheirTrip("theirs", "4");
        const std::string before = log.Bytes();
        const UndoResult result = log.sql.Undo();
        QVERIFY(result.status == UndoStatus::InUse);
        QCOMPARE(result.change.record.name, "Jetty"s);
        QCOMPARE(log.Bytes(), before);
        QCOMPARE(log.other.EntryDelete(static_cast<std::int16_t>(std::stoi(key))), succeeded);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(), nothingStored);
    }

    void redoneImport_withTakenKeys_getsNewOnes()
    {
        Log log;
        ImportBatch batch = SmallBatch();
        QCOMPARE(log.sql.Import(batch), succeeded);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        log.other.Init();
        for (const char* name : {"a", "b", "c"}) {
            log.AddTheirLocation(name); // 2 to 4
        }
        QCOMPARE(log.AddTheirTrip("theirs", "4"), "6"s);
        QVERIFY(log.sql.Redo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(),
                 (Texts{"1 Pier", "2 a", "3 b", "4 c", "5 Reef", "6 Jetty", "1 one @1", "3 three @6",
                        "5 five @1", "6 theirs @4", "9 nine @5", "10 taken @1", "11 none @77"}));
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(),
                 (Texts{"1 Pier", "2 a", "3 b", "4 c", "1 one @1", "5 five @1", "6 theirs @4"}));
    }

    // Each call of each step of the saves fails once. Nothing is lost: what is not in the files is in memory
    // and written by the next saves, and the trips never precede their locations.
    void failedSaves_areCompletedByTheNext_data()
    {
        QTest::addColumn<QString>("step");
        for (const char* step : {"create", "replace", "sync folder", "lock", "get state"}) {
            QTest::newRow(step) << QString::fromLatin1(step);
        }
    }

    void failedSaves_areCompletedByTheNext()
    {
        const std::string step = QString::fromLatin1(QTest::currentDataTag()).toStdString();
        for (int before = 0;; ++before) {
            Log log;
            ImportBatch count = SmallBatch();
            const int calls = log.operations.Count(step);
            QCOMPARE(log.sql.Import(count), succeeded);
            if (before == log.operations.Count(step) - calls) {
                QVERIFY(before >= 2);
                break;
            }
            QVERIFY(log.sql.Undo().status == UndoStatus::Done);
            log.operations.Fail(step, ErrorNumber::PathFileAccess, 1, before);
            log.reports.Expect("cSQL", "Import", ErrorNumber::PathFileAccess);
            ImportBatch batch = SmallBatch();
            QCOMPARE(log.sql.Import(batch), failed);
            QCOMPARE(RecordsOf(log.sql), smallBatchStored);
            const Texts stored = log.Stored();
            const auto has = [&](const char* record) {
                return std::find(stored.begin(), stored.end(), record) != stored.end();
            };
            QVERIFY(!has("9 nine @5") || has("5 Reef"));
            QVERIFY(stored == nothingStored || has("5 Reef"));
            QVERIFY(!UnsavedFiles(log.sql).empty());
            QCOMPARE(log.sql.LocationDelete(99), succeeded); // saves the file
            QCOMPARE(log.sql.EntryDelete(99), succeeded);
            QCOMPARE(log.Stored(), smallBatchStored);
            QCOMPARE(UnsavedFiles(log.sql), Texts());
            QVERIFY(log.sql.Undo().status == UndoStatus::Done);
            QCOMPARE(log.Stored(), nothingStored);
        }
    }

    void failedUndo_isCompleteInMemory()
    {
        Log log;
        ImportBatch batch = SmallBatch();
        QCOMPARE(log.sql.Import(batch), succeeded);
        for (const int before : {0, 1}) {
            log.operations.Fail("create", ErrorNumber::DiskFull, 1, before);
            log.reports.Expect("cSQL", "Undo", ErrorNumber::DiskFull);
            QVERIFY(log.sql.Undo().status == UndoStatus::Failed);
            QCOMPARE(RecordsOf(log.sql), nothingStored);
            QVERIFY(!log.sql.NextUndo());
            log.operations.Fail("create", ErrorNumber::DiskFull, 1, before);
            log.reports.Expect("cSQL", "Redo", ErrorNumber::DiskFull);
            QVERIFY(log.sql.Redo().status == UndoStatus::Failed);
            QCOMPARE(RecordsOf(log.sql), smallBatchStored);
        }
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(), nothingStored);
    }

    void tenThousandTrips_areOneImport()
    {
        Log log;
        constexpr int count = 10'000;
        ImportBatch batch{.locations = {Location("1", "Reef")}, .trips = {}};
        for (int trip = 0; trip < count; ++trip) { // half of them with free numbers, in descending order
            batch.trips.push_back(
                TripAtNew(trip % 2 == 0 ? std::to_string(count + 10 - trip) : "", "many", 0));
        }
        const std::string before = log.Bytes();
        log.operations.Before(
            "lock", [&] { log.AddTheirTrip("theirs", "1"); }, 1);
        QCOMPARE(log.sql.Import(batch), succeeded);
        const Texts stored = log.Stored();
        QCOMPARE(stored.size(), nothingStored.size() + count + 2);
        QCOMPARE(RecordsOf(log.sql), stored);
        RecordList trips;
        QCOMPARE(log.sql.EntryList(trips), succeeded);
        for (std::size_t index = 1; index < trips.size(); ++index) {
            QVERIFY(trips[index - 1].Key() < trips[index].Key());
        }
        QCOMPARE(log.sql.NextUndo()->trips, static_cast<std::size_t>(count));
        const std::string after = log.Bytes();
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(log.Stored(), (Texts{"1 Pier", "1 one @1", "5 five @1", "6 theirs @1"}));
        QVERIFY(log.sql.Redo().status == UndoStatus::Done);
        QVERIFY(log.Bytes() == after);
    }
};

TEST_CLASS(tst_Import)
#include "tst_Import.moc"
