// Export and import of trips on the command line.

#include "CommandTest.h"
#include "exchange/Gpx.h"
#include "exchange/TripTable.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <filesystem>

using namespace Tarno;

namespace
{

const std::string headings = "StartDate,StartTime,EndTime,Location,Latitude,Longitude,FishCaught,Boat\n";
const std::string known = "2003-02-05,06:00,10:00,\"Pittwater, Barrenjoey\",,,Bream,\n";
const std::string atPittwater = "2003-04-01,06:00,10:00,\"PITTWATER, Barrenjoey\",,,Tailor,Dinghy\n";
const std::string refused = "tomorrow,06:00,10:00,Reef,,,,\n";
const std::string atReef = "2003-04-02,06:00,10:00,Reef,-33.7,151.3,Snapper,\n";
const std::string atUnknownPlace = "2003-04-03,06:00,10:00,Somewhere,,,,\n";

/// Three way points, of which the log has two, and what cannot be imported.
const std::string wayPoints = "<gpx version='1.1'>"
                              "<wpt lat='-33.7' lon='151.3'><name>Reef</name><desc>11 m</desc></wpt>"
                              "<wpt lat='-33.80003' lon='151.25'><name>001</name></wpt>"
                              "<wpt lat='1' lon='2'><name>lake east BANK</name></wpt>"
                              "<wpt lat='91' lon='2'><name>Nowhere</name></wpt>"
                              "<trk><trkseg/></trk></gpx>";

/// The small log and a file beside it.
struct ImportTest : CommandTest {
    explicit ImportTest(const std::string& rows) : ImportTest("trips.csv", headings + rows) {}

    ImportTest(const char* name, const std::string& bytes) : path(PathOf(name))
    {
        UseSmallLog();
        program.folder.Write(name, bytes);
        before = Stored();
    }

    ExitStatus Import(std::vector<std::string> options = {})
    {
        options.insert(options.end(), {"--import", path});
        return Run(options);
    }

    std::string Stored() const
    {
        return program.folder.Read("tarno.xml") + program.folder.Read("location.xml");
    }

    std::string path;
    std::string before;
};

} // namespace

class tst_TransferCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void export_writesTheTableOfTheWindow()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--export", test.PathOf("t.csv")}), Done);
        QCOMPARE(test.Out(), "Exported 3 trips to " + test.PathOf("t.csv") + '\n');
        RecordList trips;
        RecordList locations;
        test.program.sql.EntryList(trips);
        test.program.sql.LocationList(locations);
        QCOMPARE(test.program.folder.Read("t.csv"), WriteCsv(TripRows(trips, locations)));
    }

    void export_query_writesTheTripsFoundToTheOutput()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--export", "-", "--find", "flathead"}), Done);
        const CsvFile file = ReadCsv(test.Out());
        QCOMPARE(static_cast<int>(file.rows.size()), 2);
        QCOMPARE(file.rows.at(1).at(0), std::string("3"));
        QCOMPARE(test.Run({"--export", "-", "--find", "fish:flathead"}), WrongUsage);
        QCOMPARE(test.Out(), std::string());
    }

    void export_noTripFound_writesNothing()
    {
        CommandTest test;
        test.UseSmallLog();
        for (const std::string& target : {test.PathOf("t.csv"), std::string("-")}) {
            QCOMPARE(test.Run({"--export", target, "--find", "nosuchfish"}), NotDone);
            QCOMPARE(test.Out(), std::string());
            QCOMPARE(test.Err(), std::string("No trip is found, so there is nothing to export. Nothing was "
                                             "written.\n"));
        }
        QVERIFY(!std::filesystem::exists(ToPath(test.PathOf("t.csv"))));
    }

    void export_emptyLog_writesTheHeadings()
    {
        CommandTest test;
        QCOMPARE(test.Run({"--export", "-"}), Done);
        QCOMPARE(static_cast<int>(ReadCsv(test.Out()).rows.size()), 1);
    }

    void export_toAFileOfTheLog_isRefused()
    {
        CommandTest test;
        test.UseSmallLog();
        test.program.folder.MakeFolder("pictures");
        const std::string before = test.program.folder.Read("tarno.xml");
        for (const char* name : {"tarno.xml", "TARNO.XML", "Tarno.log", "pictures/x.png"}) {
            QCOMPARE(test.Run({"--export", test.PathOf(name)}), NotDone);
            QCOMPARE(test.Err(), "This file may belong to the log: " + test.PathOf(name) +
                                     "\nNothing was written. Choose a name that ends with .csv.\n");
            QCOMPARE(test.Out(), std::string());
        }
        QCOMPARE(test.program.folder.Read("tarno.xml"), before);
    }

    void export_toAMissingFolder_isReported()
    {
        CommandTest test;
        test.UseSmallLog();
        const std::string path = test.PathOf("missing/t.csv");
        QCOMPARE(test.Run({"--export", path}), NotDone);
        QCOMPARE(test.Out(), std::string());
        QCOMPARE(test.Err(),
                 "The file could not be written: " + path + "\nPath not found. Your log is unchanged.\n");
    }

    void import_addsTheNewTrips()
    {
        ImportTest test(known + atPittwater + atReef);
        QCOMPARE(test.Import(), Done);
        QCOMPARE(test.Out(), std::string("2 new trips, 1 already there, 0 refused\n"
                                         "Ignored columns: Boat\n"
                                         "New location: Reef, 1 trip\n"
                                         "Imported 2 trips and 1 location.\n"));
        QCOMPARE(test.Err(), std::string());
        QCOMPARE(static_cast<int>(test.program.Stored("tarno.xml").size()), 5);
        QCOMPARE(test.program.StoredEntry(4, EntryField::LocNo), std::string("1"));
        QCOMPARE(test.program.StoredEntry(5, EntryField::LocNo), std::string("3"));
        QCOMPARE(test.program.StoredEntry(5, EntryField::FishCaught), std::string("Snapper"));
        QCOMPARE(test.Import(), Done); // once more
        QCOMPARE(test.Out(), std::string("0 new trips, 3 already there, 0 refused\n"
                                         "Ignored columns: Boat\nNothing was imported.\n"));
    }

    void import_readsStandardInput()
    {
        CommandTest test;
        test.UseSmallLog();
        test.in.str(headings + known + atPittwater);
        QCOMPARE(test.Run({"--import", "-"}), Done);
        QCOMPARE(test.Out(), std::string("1 new trip, 1 already there, 0 refused\n"
                                         "Ignored columns: Boat\nImported 1 trip.\n"));
    }

    void import_longStandardInput_isReadCompletely()
    {
        CommandTest test;
        test.UseSmallLog();
        std::string rows;
        for (int row = 0; row < 2000; ++row) {
            rows += known;
        }
        test.in.str(headings + rows + atPittwater);
        QCOMPARE(test.Run({"--import", "-", "--dry-run"}), Done);
        QVERIFY(test.Out().starts_with("1 new trip, 2000 already there, 0 refused\n"));
    }

    void import_device_isRead()
    {
        NOT_ON_WINDOWS("devices");
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--import", "/dev/zero"}), NotDone);
        QVERIFY2(test.Err().find("\nThe file is larger than 100 MB.\n") != std::string::npos,
                 test.Err().c_str());
    }

    void import_controlCharacters_doNotReachTheTerminal()
    {
        CommandTest test;
        test.UseSmallLog();
        test.program.folder.Write("t.csv", "Date,\x1B[31mBoat\xC2\x9B\xC2\xA0x\n\xC2\x9B\x1B[2J,\n");
        QCOMPARE(test.Run({"--import", test.PathOf("t.csv")}), NotDone);
        QCOMPARE(test.Out(), std::string("0 new trips, 0 already there, 1 refused\n"
                                         "Ignored columns: \uFFFD[31mBoat\uFFFD\u00A0x\n"
                                         "Nothing was imported.\n"));
        QCOMPARE(test.Err(), std::string("Line 2 is refused: The start date \"\uFFFD\" is not a date.\n"));
    }

    void import_savesEachFileOnce()
    {
        ImportTest test(atPittwater + atReef);
        const int saved = test.program.operations.Count("create");
        QCOMPARE(test.Import(), Done);
        QCOMPARE(test.program.operations.Count("create"), saved + 2);
    }

    void import_refusedRows_areNamedAndTheOthersImported()
    {
        ImportTest test(atPittwater + refused);
        QCOMPARE(test.Import(), NotDone);
        QCOMPARE(test.Out(), std::string("1 new trip, 0 already there, 1 refused\n"
                                         "Ignored columns: Boat\nImported 1 trip.\n"));
        QCOMPARE(test.Err(), std::string("Line 3 is refused: The start date \"tomorrow\" is not a date.\n"));
        QCOMPARE(static_cast<int>(test.program.Stored("tarno.xml").size()), 4);
    }

    void import_dryRun_changesNothing()
    {
        ImportTest test(known + atPittwater + atReef);
        QCOMPARE(test.Import({"--dry-run"}), Done);
        QCOMPARE(test.Out(), std::string("2 new trips, 1 already there, 0 refused\n"
                                         "Ignored columns: Boat\n"
                                         "New location: Reef, 1 trip\n"
                                         "Dry run: nothing was changed.\n"));
        QCOMPARE(test.Stored(), test.before);
    }

    void import_placeWithoutCoordinates_needsAnOption()
    {
        ImportTest test(atPittwater + atUnknownPlace);
        for (const std::vector<std::string>& options : {std::vector<std::string>(), {"--dry-run"}}) {
            QCOMPARE(test.Import(options), NotDone);
            QCOMPARE(test.Err(), std::string("The table has no coordinates for these locations:\n"
                                             "  Somewhere\n"
                                             "Nothing was changed. Use --add-places to add them without "
                                             "coordinates.\n"));
            QCOMPARE(test.Stored(), test.before);
        }
        QCOMPARE(test.Import({"--add-places"}), Done);
        QCOMPARE(static_cast<int>(test.program.Stored("location.xml").size()), 3);
    }

    void import_unusableFile_isReported_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("message");
        QTest::newRow("no GPX") << std::string("<kml/>")
                                << std::string("This file cannot be imported: PATH\nThis is not a GPX "
                                               "file: its first element is \"kml\".\n"
                                               "Nothing was changed.\n");
        QTest::newRow("open quotation") << std::string("StartDate\n\"2003")
                                        << std::string("This file cannot be imported: PATH\nLine 2, column "
                                                       "1: This quotation mark is not closed.\n"
                                                       "Nothing was changed.\n");
        QTest::newRow("unknown headings")
            << std::string("a,b\n1,2\n")
            << std::string("No column of this file is known: PATH\nIts first row must have headings such as "
                           "StartDate and Location. Nothing was changed.\n");
        QTest::newRow("empty") << std::string()
                               << std::string("This file cannot be imported: PATH\nThe file is empty.\n"
                                              "Nothing was changed.\n");
    }

    void import_unusableFile_isReported()
    {
        QFETCH(std::string, bytes);
        QFETCH(std::string, message);
        CommandTest test;
        test.UseSmallLog();
        const char* name = bytes.starts_with('<') ? "bad.gpx" : "bad.csv";
        test.program.folder.Write(name, bytes);
        QCOMPARE(test.Run({"--import", test.PathOf(name)}), NotDone);
        QCOMPARE(test.Err(), message.replace(message.find("PATH"), 4, test.PathOf(name)));
    }

    void export_gpx_writesTheLocations()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--export", test.PathOf("t.GPX")}), Done);
        QCOMPARE(test.Out(), "Ignored: 1 location without valid coordinates\nExported 1 location to " +
                                 test.PathOf("t.GPX") + '\n');
        RecordList locations;
        test.program.sql.LocationList(locations);
        QCOMPARE(test.program.folder.Read("t.GPX"), WriteGpx(WayPointsOf(locations)));
    }

    void gpx_optionsOfTables_areWrongUsage()
    {
        ImportTest test("t.gpx", wayPoints);
        QCOMPARE(test.Run({"--export", test.path, "--find", "bream"}), WrongUsage);
        QCOMPARE(test.Err(), "--find is only for tables of trips. This file is for locations: " + test.path +
                                 "\nNothing was changed.\n");
        QCOMPARE(test.Import({"--add-places"}), WrongUsage);
        QCOMPARE(test.Err(), "--add-places is only for tables of trips. This file is for locations: " +
                                 test.path + "\nNothing was changed.\n");
        QCOMPARE(test.program.folder.Read("t.gpx"), wayPoints);
        QCOMPARE(test.Stored(), test.before);
    }

    void import_gpx_addsTheNewLocations()
    {
        const std::string shown = "1 new location, 2 already there\n"
                                  "Ignored: 1 track, 1 way point without a valid position\n"
                                  "New location: Reef at -33.7, 151.3\n"
                                  "Already there: 001 is Pittwater, Barrenjoey\n"
                                  "Already there: lake east BANK is Lake East bank\n";
        ImportTest test("marks.Gpx", wayPoints);
        QCOMPARE(test.Import({"--dry-run"}), Done);
        QCOMPARE(test.Out(), shown + "Dry run: nothing was changed.\n");
        QCOMPARE(test.Stored(), test.before);
        const std::string trips = test.program.folder.Read("tarno.xml");
        QCOMPARE(test.Import(), Done);
        QCOMPARE(test.Out(), shown + "Imported 1 location.\n");
        QCOMPARE(test.Err(), std::string());
        const auto stored = test.program.Stored("location.xml");
        QCOMPARE(static_cast<int>(stored.size()), 3);
        QCOMPARE(test.program.sql.LocationNameGet("3"), std::string("Reef"));
        QCOMPARE(test.program.folder.Read("tarno.xml"), trips);
        QCOMPARE(test.Import(), Done); // once more
        QVERIFY(test.Out().ends_with("Already there: lake east BANK is Lake East bank\n"
                                     "Nothing was imported.\n"));
        QCOMPARE(static_cast<int>(test.program.Stored("location.xml").size()), 3);
    }

    void import_gpxWithoutNames_isShownByPosition()
    {
        ImportTest test("t.gpx", "<gpx><wpt lat='-0.5' lon='0'/><wpt lat='1' lon='2'/></gpx>");
        QCOMPARE(test.Import(), Done);
        QCOMPARE(test.Out(), std::string("2 new locations, 0 already there\n"
                                         "New location: -0.5, 0 at -0.5, 0\n"
                                         "New location: 1, 2 at 1, 2\n"
                                         "Imported 2 locations.\n"));
    }

    void import_ofTooManyTrips_isRefused()
    {
        std::string table = "StartDate,Location\n";
        for (int row = 0; row <= 32767; ++row) {
            table += "2026-11-20,Pittwater\n";
        }
        ImportTest test("t.csv", table);
        QCOMPARE(test.Import({"--dry-run", "--add-places"}), NotDone);
        QVERIFY(
            test.Err().find("The log has too few numbers left for so many trips or locations. The highest "
                            "number is 32767. Nothing was changed.") != std::string::npos);
        QCOMPARE(test.Stored(), test.before);
    }

    void import_failedSaveOfLocations_isReported()
    {
        ImportTest test("t.gpx", wayPoints);
        test.program.operations.Fail("create", ErrorNumber::DiskFull);
        test.program.reports.Expect("cSQL", "Import", ErrorNumber::DiskFull);
        QCOMPARE(test.Import(), NotDone);
        QCOMPARE(test.Err(),
                 std::string("The locations could not be saved. Remove the cause, then import "
                             "the file again. What the log already has is not imported twice.\n"));
        QCOMPARE(test.Stored(), test.before);
    }

    void import_missingFile_isReported()
    {
        CommandTest test;
        QCOMPARE(test.Run({"--import", test.PathOf("none.csv")}), NotDone);
        QCOMPARE(test.Err(), "This file cannot be imported: " + test.PathOf("none.csv") +
                                 "\nFile not found.\nNothing was changed.\n");
    }

    void import_failedSave_isReported()
    {
        ImportTest test(atPittwater);
        test.program.operations.Fail("create", ErrorNumber::DiskFull);
        test.program.reports.Expect("cSQL", "Import", ErrorNumber::DiskFull);
        QCOMPARE(test.Import(), NotDone);
        QCOMPARE(test.Err(), std::string("The trips could not be saved. Remove the cause, then import the "
                                         "table again. What the log already has is not imported twice.\n"));
        QCOMPARE(test.Stored(), test.before);
    }
};

TEST_CLASS(tst_TransferCommands)
#include "tst_TransferCommands.moc"
