// The check of the data files.

#include "CommandTest.h"
#include "app/DataCheck.h"
#include "core/Text.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <filesystem>

using namespace Tarno;

namespace
{

using Texts = std::vector<std::string>;

/// A sample log with a change in one file.
struct CheckedLog : CommandTest {
    CheckedLog()
    {
        program.UseSample();
        program.folder.MakeFolder("pictures");
        for (const char* name : {"pictures/snapper.png", "pictures/trout.png", "pictures/pittwater.png"}) {
            program.folder.Write(name, "a picture");
        }
    }

    void Replace(const char* file, std::string_view from, std::string_view to)
    {
        std::string bytes = program.folder.Read(file);
        const auto at = bytes.find(from);
        QVERIFY2(at != std::string::npos, "the text to replace is missing");
        program.folder.Write(file, bytes.replace(at, from.size(), to));
    }

    /// Returns the faults as lines.
    Texts Faults()
    {
        Texts lines;
        for (const DataFault& fault : CheckData(program.programFolder, program.operations).faults) {
            lines.push_back(fault.file + ": " + fault.text);
        }
        return lines;
    }
};

} // namespace

class tst_DataCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void shippedFiles_haveNoFaults()
    {
        CommandTest empty;
        QCOMPARE(empty.Run({"--check"}), Done);
        QCOMPARE(empty.Out(), std::string("Checked 0 trips and 0 locations: no problems\n"));
        CheckedLog sample;
        QCOMPARE(sample.Run({"--check"}), Done);
        QCOMPARE(sample.Out(), std::string("Checked 72 trips and 6 locations: no problems\n"));
        QCOMPARE(sample.Err(), std::string());
    }

    void fault_isFound_data()
    {
        QTest::addColumn<std::string>("file");
        QTest::addColumn<std::string>("from");
        QTest::addColumn<std::string>("to");
        QTest::addColumn<std::string>("fault");
        const auto row = [](const char* name, const char* file, const char* from, const char* to,
                            const char* fault) {
            QTest::newRow(name) << std::string(file) << std::string(from) << std::string(to)
                                << std::string(fault);
        };
        row("not closed", "tarno.xml", "</TarnoNo>", "</TarnoN>",
            "Line 3, column 15: Start-end tags mismatch");
        row("declaration", "location.xml", "<data>", "<?xml version=\"1.0\"?><data>",
            "Something precedes the element \"data\", for example a declaration or a comment");
        row("missing value", "tarno.xml", "<Picture />", "",
            "Line 2, column 2: The trip 1 has only 36 of 37 values");
        row("key", "tarno.xml", "<TarnoNo>2<", "<TarnoNo>two<",
            "Line 42, column 3: The number \"two\" is not a whole number from 1 to 32767");
        row("key with zero", "tarno.xml", "<TarnoNo>2<", "<TarnoNo>02<",
            "Line 42, column 3: The number \"02\" is not a whole number from 1 to 32767");
        row("duplicate", "tarno.xml", "<TarnoNo>2<", "<TarnoNo>1<",
            "Line 42, column 3: Another trip also has the number 1");
        row("start date", "tarno.xml", "<StartDate>2024-10-05<", "<StartDate>2024-02-30<",
            "Line 4, column 3: The start date \"2024-02-30\" of trip 1 is not a date");
        row("end date", "tarno.xml", "<EndDate>2024-10-05<", "<EndDate>soon<",
            "Line 5, column 3: The end date \"soon\" of trip 1 is not a date");
        row("end before start", "tarno.xml", "<EndDate>2024-10-05<", "<EndDate>2024-10-04<",
            "Line 5, column 3: The trip 1 ends before it starts");
        row("unknown location", "tarno.xml", "<LocNo>1<", "<LocNo>99<",
            "Line 8, column 3: The location \"99\" of trip 1 is not the number of a location in "
            "location.xml");
        row("start time", "tarno.xml", "<StartTime>05:30<", "<StartTime>25:30<",
            "Line 6, column 3: The start time \"25:30\" of trip 1 is not a time");
        row("end time", "tarno.xml", "<EndTime>10:30<", "<EndTime>~=noon<",
            "Line 7, column 3: The end time \"~=noon\" of trip 1 is not a time");
        row("tide time", "tarno.xml", "<HighTide>09:30<", "<HighTide>high<",
            "Line 11, column 3: The high tide time \"high\" of trip 1 is not a time");
        row("sunrise", "tarno.xml", "<SunRise>05:27<", "<SunRise>early<",
            "Line 15, column 3: The sunrise \"early\" of trip 1 is not a time");
        row("moon phase in words", "tarno.xml", "<MoonPhase>16<", "<MoonPhase>Waxing, 16%<",
            "Line 19, column 3: The moon phase \"Waxing, 16%\" of trip 1 is not a number from -100 to 100");
        row("moon phase too large", "tarno.xml", "<MoonPhase>16<", "<MoonPhase>-101<",
            "Line 19, column 3: The moon phase \"-101\" of trip 1 is not a number from -100 to 100");
        row("word instead of a code", "tarno.xml", "<TideStart>3<", "<TideStart>Run In<",
            "Line 9, column 3: The tide at the start \"Run In\" of trip 1 is not a whole number");
        row("fraction instead of a code", "tarno.xml", "<FishAction>2<", "<FishAction>2.5<",
            "Line 30, column 3: The action \"2.5\" of trip 1 is not a whole number");
        row("missing picture", "tarno.xml", "<Picture />", "<Picture>pictures/gone.png</Picture>",
            "Line 39, column 3: The picture \"pictures/gone.png\" of trip 1 is not an existing file");
        row("picture that is a folder", "location.xml", "<LocPicture>pictures/pittwater.png<",
            "<LocPicture>pictures<",
            "Line 12, column 3: The picture \"pictures\" of location 1 is not an existing file");
        row("latitude", "location.xml", "<LocLatt>-33.59<", "<LocLatt>33S<",
            "Line 8, column 3: The latitude \"33S\" of location 1 is not a number from -90 to 90");
        row("longitude", "location.xml", "<LocLong>151.32<", "<LocLong>251.32<",
            "Line 9, column 3: The longitude \"251.32\" of location 1 is not a number from -180 to 180");
        row("time zone", "location.xml", "<LocGMT>10<", "<LocGMT>ten<",
            "Line 10, column 3: The time zone \"ten\" of location 1 is not a number from -24 to 24");
        row("width", "field.xml", "<Width>18<", "<Width>wide<",
            "Line 7, column 3: The width \"wide\" of column 1 is not a number");
        row("unknown column", "Rpt.xml", "<FieldKeys>1,5,", "<FieldKeys>1,55,",
            "Line 2, column 2: The report 1 prints the column \"55\", which field.xml does not have");
        row("lists of different lengths", "Rpt.xml", "<FieldKeys>1,5,", "<FieldKeys>1,",
            "Line 2, column 2: The report 1 has 6 names of columns, but 5 numbers");
    }

    void fault_isFound()
    {
        QFETCH(std::string, file);
        QFETCH(std::string, from);
        QFETCH(std::string, to);
        QFETCH(std::string, fault);
        CheckedLog log;
        log.Replace(file.c_str(), from, to);
        const std::string bytes = log.program.folder.Read(file);
        const Texts names = log.program.folder.Names();
        const Texts faults = log.Faults();
        QCOMPARE(faults, Texts{file + ": " + fault});
        QCOMPARE(log.Run({"--check"}), NotDone);
        QVERIFY(log.Out().starts_with(faults.front() + "\nChecked "));
        QCOMPARE(log.Err(), "There are problems in " + log.program.programFolder.GetAppPath() +
                                "\nNothing was changed. Restore the files from a copy or correct them in a "
                                "text editor.\n");
        QCOMPARE(log.program.folder.Read(file), bytes);
        QCOMPARE(log.program.folder.Names(), names);
    }

    void valuesOfTheProgram_areNoFaults_data()
    {
        QTest::addColumn<std::string>("from");
        QTest::addColumn<std::string>("to");
        const auto row = [](const char* from, const char* to) {
            QTest::newRow(to) << std::string(from) << std::string(to);
        };
        for (const char* phase : {"<MoonPhase><", "<MoonPhase>-0<", "<MoonPhase>-100<", "<MoonPhase>07<"}) {
            row("<MoonPhase>16<", phase);
        }
        for (const char* rise : {"<SunRise><", "<SunRise>never<", "<SunRise>:<", "<SunRise>24:00<"}) {
            row("<SunRise>05:27<", rise);
        }
        row("<SunSet>18:00<", "<SunSet>sets<");
        row("<SunSet>18:00<", "<SunSet>rises<");
        row("<LowTide>03:06<", "<LowTide>never<"); // the editor accepts it
        row("<Major1>00:53<", "<Major1>00:53 to 02:53<");
        for (const char* code : {"<TideStart><", "<TideStart>9<", "<TideStart>-1<"}) {
            row("<TideStart>3<", code);
        }
    }

    void valuesOfTheProgram_areNoFaults()
    {
        QFETCH(std::string, from);
        QFETCH(std::string, to);
        CheckedLog log;
        log.Replace("tarno.xml", from, to);
        QCOMPARE(log.Faults(), Texts());
    }

    void absolutePathOfAPicture_isFound()
    {
        CheckedLog log;
        log.Replace("tarno.xml", "<Picture />",
                    "<Picture>" + log.PathOf("pictures/trout.png") + "</Picture>");
        QCOMPARE(log.Faults(), Texts());
    }

    void check_onlyLooksAtFiles()
    {
        CheckedLog log;
        log.program.folder.Write("tarno.xml.123-4.tarno-tmp", "an orphaned temporary");
        const Texts names = log.program.folder.Names();
        QCOMPARE(log.Run({"--check"}), Done);
        QCOMPARE(log.program.folder.Names(), names);
        for (const std::string& step : log.program.operations.Steps()) {
            QCOMPARE(step, std::string("get state"));
        }
    }

    void missingFiles_areNamed()
    {
        CheckedLog log;
        for (const char* name : {"location.xml", "Bait.txt"}) {
            std::filesystem::remove(ToPath(log.PathOf(name)));
        }
        QCOMPARE(log.Faults(),
                 (Texts{"location.xml: The file does not exist", "Bait.txt: The file does not exist"}));
    }

    void emptyTemplate_isAFault()
    {
        CheckedLog log;
        log.program.folder.Write("RptBlank.xml", "<data />");
        QCOMPARE(log.Faults(), Texts{"RptBlank.xml: The file has no record"});
    }

    void namesInOtherCase_areFound()
    {
        NOT_ON_WINDOWS("names that differ in case only");
        CheckedLog log;
        std::filesystem::rename(ToPath(log.PathOf("Rpt.xml")), ToPath(log.PathOf("rpt.XML")));
        QCOMPARE(log.Faults(), Texts());
    }
};

TEST_CLASS(tst_DataCheck)
#include "tst_DataCheck.moc"
