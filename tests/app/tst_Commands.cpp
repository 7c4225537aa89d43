// The list of trips and the forecast on the command line, and what all commands have in common.

#include "CommandTest.h"
#include "support/TestClass.h"

#include <algorithm>

using namespace Tarno;

class tst_Commands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void list_printsATripPerLineInTheOrderOfTheLog()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--list"}), Done);
        QCOMPARE(test.Out(), std::string("2003-02-05\tPittwater, Barrenjoey\tGood\tBream 30 cm; Squid; x 3\n"
                                         "2002-12-24\tLake East bank\t\t\n"
                                         "2003-03-01\tPittwater, Barrenjoey\tSlow\tFlathead\n"));
        QCOMPARE(test.Err(), std::string());
    }

    void list_query_printsTheTripsFound()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--list", "place:pittwater date:>=2003-03"}), Done);
        QCOMPARE(test.Out(), std::string("2003-03-01\tPittwater, Barrenjoey\tSlow\tFlathead\n"));
        QCOMPARE(test.Run({"--list", "marlin"}), Done);
        QCOMPARE(test.Out() + test.Err(), std::string());
    }

    void faultyQuery_isWrongUsage()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--list", "bream fish:bream \"open"}), WrongUsage);
        QCOMPARE(test.Out(), std::string());
        QCOMPARE(test.Err(),
                 std::string("\u201Cfish\u201D is not a field. To search for \u201Cfish:bream\u201D, put it "
                             "in quotation marks.\n\u201C\"open\u201D has no closing quotation mark.\n"));
    }

    void unreadableFile_isNamed()
    {
        CommandTest test;
        test.program.folder.Write("tarno.xml", "<data>\n<tarno>");
        QCOMPARE(test.Run({"--list"}), NotDone);
        QCOMPARE(test.Out(), std::string());
        QCOMPARE(test.Err(),
                 test.PathOf("tarno.xml") +
                     " cannot be read: Line 2, column 7: Start-end tags mismatch.\n"
                     "Nothing was changed. Restore each file from a copy, or correct it in a text editor.\n");
        QCOMPARE(test.program.folder.Read("tarno.xml"), std::string("<data>\n<tarno>"));
    }

    void unreadableOutput_isReported()
    {
        CommandTest test;
        test.UseSmallLog();
        test.out.setstate(std::ios::badbit);
        QCOMPARE(test.Run({"--list"}), NotDone);
        QCOMPARE(test.Err(), std::string("The output could not be written completely.\n"));
    }

    void forecast_printsALinePerDay()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--forecast", "PITTWATER", "--days", "2"}), Done); // the clock says 2003-02-05
        QCOMPARE(
            test.Out(),
            std::string("Wednesday 5 February 2003, rating Best, moon 21 % waxing, majors 02:31 and 14:57; "
                        "sun rises 05:20, sets 18:57; moon rises 08:35, sets 21:19; minors 08:44, 21:09\n"
                        "Thursday 6 February 2003, rating Good, moon 27 % waxing, majors 03:12 and 15:38; "
                        "sun rises 05:21, sets 18:57; moon rises 09:32, sets 21:45; minors 09:25, 21:50\n"));
        QCOMPARE(test.Err(), std::string());
        QCOMPARE(test.Run({"--forecast", "Pittwater, Barrenjoey", "--from", "9999-12-31"}), Done);
        QCOMPARE(static_cast<int>(std::count(test.out.view().begin(), test.out.view().end(), '\n')), 1);
    }

    void forecast_withoutCoordinates_saysSo()
    {
        CommandTest test;
        test.UseSmallLog();
        QCOMPARE(test.Run({"--forecast", "lake east bank", "--days", "1"}), Done);
        QCOMPARE(test.Out(), std::string("Wednesday 5 February 2003, rating Best, moon 21 % waxing\n"));
        QCOMPARE(
            test.Err(),
            std::string("The times of sun and moon need a location with coordinates and a time zone.\n"));
    }

    void forecast_unknownPlace_listsThePlaces()
    {
        CommandTest test;
        QCOMPARE(test.Run({"--forecast", "Lake"}), NotDone);
        QCOMPARE(test.Err(), std::string("No location has the name \"Lake\". The log has no locations.\n"));
        test.UseSmallLog();
        QCOMPARE(test.Run({"--forecast", "Ocean"}), NotDone);
        QCOMPARE(test.Out(), std::string());
        QCOMPARE(test.Err(), std::string("No location has the name \"Ocean\". The locations are:\n"
                                         "  Pittwater, Barrenjoey\n  Lake East bank\n"));
        QCOMPARE(test.Run({"--forecast", "t"}), NotDone);
        QCOMPARE(test.Err(), std::string("Several locations have \"t\" in their names. The locations are:\n"
                                         "  Pittwater, Barrenjoey\n  Lake East bank\n"));
    }

    void readingCommands_writeNothing()
    {
        CommandTest test;
        test.UseSmallLog();
        const auto names = test.program.folder.Names();
        const int created = test.program.operations.Count("create");
        test.Run({"--list"});
        test.Run({"--forecast", "lake"});
        test.Run({"--export", "-"});
        QCOMPARE(test.program.folder.Names(), names);
        QCOMPARE(test.program.operations.Count("create"), created);
    }
};

TEST_CLASS(tst_Commands)
#include "tst_Commands.moc"
