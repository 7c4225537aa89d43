// Reports and sheets of the calendar on the command line.

#include "CommandTest.h"
#include "core/Text.h"
#include "reports/ReadRtf.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <algorithm>

using namespace Tarno;

namespace
{

using Texts = std::vector<std::string>;

/// A small log whose reports are read back.
struct PrintTest : CommandTest {
    PrintTest() { UseSmallLog(); }

    RtfReading Rtf() const
    {
        return RtfReader::Read(QByteArray::fromStdString(program.folder.Read("report.rtf")));
    }

    /// Runs the report and returns the first two columns of its rows.
    Texts Rows(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.end(), {"--output", PathOf("report.rtf")});
        const ExitStatus status = Run(arguments);
        if (status != Done) {
            return {Err()};
        }
        Texts rows;
        for (const RtfRow& row : Rtf().body) {
            rows.push_back(ToUtf8(row.cells.mid(0, 2).join(QLatin1Char('|'))));
        }
        return rows;
    }

    bool IsPdf() const { return program.folder.Read("out.pdf").starts_with("%PDF-"); }
};

} // namespace

class tst_ReportCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void defaultReport_hasTheDefaultColumnsAndAllTrips()
    {
        PrintTest test;
        QCOMPARE(test.Rows({"--report", "default"}),
                 (Texts{"2002-12-24|06:00", "2003-02-05|06:00", "2003-03-01|06:00"}));
        QCOMPARE(test.Out(), "Printed 3 trips to " + test.PathOf("report.rtf") + '\n');
    }

    void savedReport_hasItsColumns()
    {
        PrintTest test;
        test.program.folder.Write("Rpt.xml",
                                  "<data><report><RptNo>1</RptNo><RptName>Where &amp; what</RptName>"
                                  "<Fields>LocNo,FishCaught</Fields><FieldKeys>5,28</FieldKeys><Options/>"
                                  "</report></data>");
        QCOMPARE(test.Rows({"--report", "WHERE & what"}),
                 (Texts{"Lake\nEast bank|", "Pittwater, Barrenjoey|Bream 30 cm\nSquid\tx 3",
                        "Pittwater, Barrenjoey|Flathead"}));
        QCOMPARE(test.Rows({"--report", "What"}),
                 Texts{"No report has the name \"What\". The reports are:\n  default\n  Where & what\n"});
    }

    void report_isRestrictedToALocationAndAQuery()
    {
        PrintTest test;
        QCOMPARE(test.Rows({"--report", "default", "--location", "lake"}), Texts{"2002-12-24|06:00"});
        QCOMPARE(test.Rows({"--report", "default", "--location", "pittwater", "--find", "flathead"}),
                 Texts{"2003-03-01|06:00"});
        QCOMPARE(test.Rtf().footer.size(), 1);
        QCOMPARE(test.Rows({"--report", "default", "--location", "lake", "--find", "flathead"}),
                 Texts{"No trip is found, so there is nothing to print. No file was written.\n"});
        QCOMPARE(test.Rows({"--report", "default", "--location", "ocean"}).front().substr(0, 33),
                 std::string("No location has the name \"ocean\"."));
    }

    void report_isWrittenAsPdf()
    {
        PrintTest test;
        QCOMPARE(test.Run({"--report", "default", "--output", test.PathOf("out.pdf")}), Done);
        QVERIFY(test.IsPdf());
    }

    void report_unwritableFile_isReported()
    {
        PrintTest test;
        const std::string path = test.PathOf("missing/out.pdf");
        QCOMPARE(test.Run({"--report", "default", "--output", path}), NotDone);
        QCOMPARE(test.Err(),
                 "The file could not be written: " + path + "\nPath not found. Your log is unchanged.\n");
    }

    void linkToAFileOfTheLog_isRefused()
    {
        NOT_ON_WINDOWS("symbolic links");
        PrintTest test;
        const std::string before = test.program.folder.Read("tarno.xml");
        for (const char* name : {"t.pdf", "t.rtf", "t.ics"}) {
            test.program.folder.MakeLink(name, "tarno.xml");
        }
        const auto refuses = [&](std::vector<std::string> arguments, const char* name) {
            arguments.insert(arguments.end(), {"--output", test.PathOf(name)});
            return test.Run(arguments) == NotDone &&
                   test.Err() == "This file may belong to the log: " + test.PathOf(name) +
                                     "\nNothing was written. Choose a name that ends with .csv.\n";
        };
        QVERIFY(refuses({"--report", "default"}, "t.pdf"));
        QVERIFY(refuses({"--report", "default"}, "t.rtf"));
        QVERIFY(refuses({"--calendar", "pittwater", "--month", "2026-11"}, "t.pdf"));
        QVERIFY(refuses({"--calendar", "pittwater", "--month", "2026-11"}, "t.ics"));
        QCOMPARE(test.program.folder.Read("tarno.xml"), before);
    }

    void calendar_isWrittenAsPdf()
    {
        PrintTest test;
        for (const char* place : {"pittwater", "lake"}) {
            QCOMPARE(
                test.Run({"--calendar", place, "--month", "2026-11", "--output", test.PathOf("out.pdf")}),
                Done);
            QCOMPARE(test.Out(), "Printed the month to " + test.PathOf("out.pdf") + '\n');
            QVERIFY(test.IsPdf());
        }
    }

    void calendar_isWrittenAsEvents()
    {
        PrintTest test;
        QCOMPARE(
            test.Run({"--calendar", "pittwater", "--month", "2026-02", "--output", test.PathOf("m.ics")}),
            Done);
        const std::string bytes = test.program.folder.Read("m.ics");
        int events = 0;
        for (auto at = bytes.find("BEGIN:VEVENT"); at != std::string::npos;
             at = bytes.find("BEGIN:VEVENT", at + 1)) {
            ++events;
        }
        QCOMPARE(test.Out(),
                 "Exported " + std::to_string(events) + " events to " + test.PathOf("m.ics") + '\n');
        QVERIFY2(events > 90 && events <= 112, std::to_string(events).c_str());
        QVERIFY(bytes.find("UID:20260201-") != std::string::npos);
        QVERIFY(bytes.find("UID:20260228-") != std::string::npos);
        QVERIFY(bytes.find("UID:20260301-") == std::string::npos);
    }

    void events_needCoordinates()
    {
        PrintTest test;
        QCOMPARE(test.Run({"--calendar", "lake", "--month", "2026-11", "--output", test.PathOf("m.ics")}),
                 NotDone);
        QCOMPARE(test.Err(), std::string("The times of sun and moon need a location with coordinates and a "
                                         "time zone: Lake East bank\nNo file was written.\n"));
    }
};

TEST_CLASS(tst_ReportCommands)
#include "tst_ReportCommands.moc"
