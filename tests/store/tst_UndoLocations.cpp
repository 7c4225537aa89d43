#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// A log without trips and locations.
struct Log : TestStore {
    Log() { sql.Init(); }

    std::string AddLocation(const std::string& name) { return AddLocation(sql, name); }

    static std::string AddLocation(cSQL& to, const std::string& name)
    {
        Record location;
        to.LocationGet(0, location);
        location.SetText(LocationField::LocName, name);
        to.LocationUpdate(location);
        return location.Text(0);
    }

    std::string AddTrip(const std::string& date, const std::string& location)
    {
        return AddTrip(sql, date, location);
    }

    static std::string AddTrip(cSQL& to, const std::string& date, const std::string& location)
    {
        Record trip;
        to.EntryGet(0, trip);
        trip.SetText(EntryField::StartDate, date);
        trip.SetText(EntryField::LocNo, location);
        to.EntryUpdate(trip);
        return trip.Text(0);
    }

    /// Returns the location of a trip.
    std::string LocationOf(std::int16_t key) const
    {
        Record trip;
        sql.EntryGet(key, trip);
        return trip.Text(EntryField::LocNo);
    }

    std::unique_ptr<FileOperations> otherOperations = SystemFileOperations();
};

/// Describes a change like "Edit trip 2, 2024-10-05, Pittwater".
std::string Described(const std::optional<ChangeTitle>& title)
{
    if (!title) {
        return "none";
    }
    constexpr std::array kinds{"Add", "Edit", "Delete"};
    const auto& [kind, key, date, name] = title->record;
    return kinds.at(static_cast<std::size_t>(title->kind)) +
           (kind == RecordTitle::Kind::Trip ? " trip "s : " location "s) + key + ", " + date + ", " + name;
}

UndoStatus Undo(Log& log)
{
    return log.sql.Undo().status;
}

UndoStatus Redo(Log& log)
{
    return log.sql.Redo().status;
}

} // namespace

// Undo and redo of changes that concern both trips and locations.
class tst_UndoLocations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void changes_areNamed()
    {
        Log log;
        log.AddLocation("Pittwater");
        QCOMPARE(Described(log.sql.NextUndo()), "Add location 1, , Pittwater"s);
        log.AddTrip("2024-10-05", "1");
        QCOMPARE(Described(log.sql.NextUndo()), "Add trip 1, 2024-10-05, Pittwater"s);
        QCOMPARE(Described(log.sql.NextRedo()), "none"s);

        Record trip;
        log.sql.EntryGet(1, trip);
        trip.SetText(EntryField::StartDate, "2024-10-06");
        log.sql.EntryUpdate(trip);
        QCOMPARE(Described(log.sql.NextUndo()), "Edit trip 1, 2024-10-06, Pittwater"s);
        log.sql.EntryDelete(1);
        QCOMPARE(Described(log.sql.NextUndo()), "Delete trip 1, 2024-10-06, Pittwater"s);
        const UndoResult result = log.sql.Undo();
        QCOMPARE(Described(result.change), "Delete trip 1, 2024-10-06, Pittwater"s);
        QCOMPARE(Described(log.sql.NextRedo()), "Delete trip 1, 2024-10-06, Pittwater"s);
        log.sql.Undo();
        QCOMPARE(Described(log.sql.NextRedo()), "Edit trip 1, 2024-10-05, Pittwater"s);
        log.sql.Undo();
        QCOMPARE(Described(log.sql.NextRedo()), "Add trip 1, 2024-10-05, Pittwater"s);
        QCOMPARE(Described(log.sql.NextUndo()), "Add location 1, , Pittwater"s);
    }

    void addedLocation_inUse_isKept()
    {
        Log log;
        log.AddLocation("Pier");
        const std::string trip = log.AddTrip("2024-10-05", "1");
        log.AddLocation("Reef");
        // the location of the trip is changed in another program
        cSQL other(log.programFolder, *log.otherOperations);
        other.Init();
        Record theirs;
        other.EntryGet(1, theirs);
        theirs.SetText(EntryField::LocNo, "2");
        other.EntryUpdate(theirs);
        const std::string before = log.folder.Read("location.xml");
        QVERIFY(Undo(log) == UndoStatus::InUse);
        QCOMPARE(log.folder.Read("location.xml"), before);
        QCOMPARE(Described(log.sql.NextUndo()), "Add location 2, , Reef"s);

        other.EntryDelete(1);
        QVERIFY(Undo(log) == UndoStatus::Done);
        QCOMPARE(Described(log.sql.NextRedo()), "Add location 2, , Reef"s);
        QVERIFY(Undo(log) == UndoStatus::ChangedByOther); // the trip
        QVERIFY(Undo(log) == UndoStatus::Done);
        QCOMPARE(Described(log.sql.NextUndo()), "none"s);
        QCOMPARE(log.folder.Read("location.xml"), "<data />\n"s);
    }

    void deletedLocation_inUse_isNotDeletedAgain()
    {
        Log log;
        log.AddLocation("Pier");
        QCOMPARE(log.sql.LocationDelete(1), succeeded);
        QVERIFY(Undo(log) == UndoStatus::Done);
        cSQL other(log.programFolder, *log.otherOperations);
        other.Init();
        Log::AddTrip(other, "2024-10-05", "1");
        QVERIFY(Redo(log) == UndoStatus::InUse);
        QCOMPARE(log.sql.LocationNameGet("1"), "Pier"s);
        other.EntryDelete(1);
        QVERIFY(Redo(log) == UndoStatus::Done);
    }

    void changedLocation_inUse_isReportedAsChanged()
    {
        Log log;
        log.AddLocation("Pier");
        cSQL other(log.programFolder, *log.otherOperations);
        other.Init();
        Record theirs;
        other.LocationGet(1, theirs);
        theirs.SetText(LocationField::LocName, "Jetty");
        other.LocationUpdate(theirs);
        Log::AddTrip(other, "2024-10-05", "1");
        QVERIFY(Undo(log) == UndoStatus::ChangedByOther);
        QVERIFY(Undo(log) == UndoStatus::Nothing);
        QCOMPARE(log.sql.LocationNameGet("1"), "Jetty"s);
    }

    void locationWithADuplicate_canBeRemoved()
    {
        Log log;
        log.folder.Write("location.xml", "<data>\n\t<location>\n\t\t<LocNo>2</LocNo>\n\t</location>\n"
                                         "\t<location>\n\t\t<LocNo>1</LocNo>\n\t</location>\n</data>\n");
        log.AddTrip("2024-10-05", "2");
        QCOMPARE(log.sql.Init(), succeeded);
        const std::string before = log.folder.Read("location.xml");
        QCOMPARE(log.AddLocation("Pier"), "2"s);
        QVERIFY(Undo(log) == UndoStatus::Done);
        QCOMPARE(log.folder.Read("location.xml"), before);
    }

    void damagedTrips_doNotPreventUndo()
    {
        Log log;
        log.folder.Write("tarno.xml", "<data>");
        QCOMPARE(log.sql.Init(), succeeded);
        log.AddLocation("Pier");
        QVERIFY(Undo(log) == UndoStatus::Done);
        QCOMPARE(log.folder.Read("tarno.xml"), "<data>"s);
    }

    // Saving the new location fails, and another program then assigns its key to a different location.
    void restoredTrip_refersToTheNewKeyOfItsLocation()
    {
        Log log;
        log.AddLocation("Pier");
        log.operations.Fail("create", ErrorNumber::DiskFull);
        log.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::DiskFull);
        log.AddLocation("Jetty");
        log.AddTrip("2024-10-05", "2");
        QCOMPARE(log.sql.EntryDelete(1), succeeded);
        QVERIFY(Undo(log) == UndoStatus::Done);

        cSQL other(log.programFolder, *log.otherOperations);
        other.Init();
        QCOMPARE(Log::AddLocation(other, "Reef"), "2"s);
        QCOMPARE(log.sql.LocationDelete(9), succeeded); // saves the locations
        QCOMPARE(log.sql.LocationNameGet("3"), "Jetty"s);
        QCOMPARE(log.LocationOf(1), "3"s);
        QVERIFY(Redo(log) == UndoStatus::ChangedByOther); // the trip has changed
    }
};

TEST_CLASS(tst_UndoLocations)
#include "tst_UndoLocations.moc"
