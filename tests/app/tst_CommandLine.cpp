// The arguments of the program.

#include "app/CommandLine.h"
#include "core/Conversions.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <sstream>

using namespace Tarno;

namespace
{

using Arguments = std::vector<std::string>;

/// Returns everything that was parsed, without values that have their defaults.
std::string Described(const CommandLine& line)
{
    const CommandLine unset;
    std::ostringstream text;
    text << static_cast<int>(line.action);
    const auto add = [&](const char* name, const std::string& value) {
        if (!value.empty()) {
            text << ' ' << name << '=' << value;
        }
    };
    add("folder", line.folder.value_or(""));
    add("subject", line.subject);
    add("query", line.query);
    add("location", line.location);
    add("output", line.output);
    add("format", line.format == unset.format ? "" : std::to_string(static_cast<int>(line.format)));
    add("dry", line.isDryRun ? "yes" : "");
    add("places", line.addsPlaces ? "yes" : "");
    add("from", line.from ? FromDate(*line.from) : "");
    add("days", line.days == unset.days ? "" : std::to_string(line.days));
    add("month", line.month == unset.month ? "" : FromDate(line.month / 1));
    return text.str();
}

} // namespace

class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void arguments_areParsed_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::addColumn<std::string>("expected");
        const auto row = [](const char* name, const Arguments& arguments, Action action, const char* values) {
            QTest::newRow(name) << arguments << std::to_string(static_cast<int>(action)) + values;
        };
        row("none", {}, Action::OpenWindow, "");
        row("folder", {"--folder", "my log"}, Action::OpenWindow, " folder=my log");
        row("folder with =", {"--folder=a=b"}, Action::OpenWindow, " folder=a=b");
        row("help", {"--help"}, Action::ShowHelp, "");
        row("-h", {"-h"}, Action::ShowHelp, "");
        row("all options", {"--help-all"}, Action::ShowHelp, "");
        row("help and a command", {"--check", "--help"}, Action::ShowHelp, "");
        row("version", {"--version"}, Action::ShowVersion, "");
        row("-v", {"-v"}, Action::ShowVersion, "");
        row("list", {"--list"}, Action::List, "");
        row("list with a query", {"--list", "caught:bream date:2024", "--folder", "d"}, Action::List,
            " folder=d subject=caught:bream date:2024 query=caught:bream date:2024");
        row("list with an exclusion", {"--list", "-caught:"}, Action::List,
            " subject=-caught: query=-caught:");
        row("list before an option", {"--list", "--folder", "d"}, Action::List, " folder=d");
        row("list with =", {"--list=--"}, Action::List, " subject=-- query=--");
        row("export", {"--export", "t.csv"}, Action::Export, " subject=t.csv");
        row("export to the output", {"--export", "-", "--find", "bream"}, Action::Export,
            " subject=- query=bream");
        row("import", {"--import", "t.csv"}, Action::Import, " subject=t.csv");
        row("import with options", {"--dry-run", "--add-places", "--import", "t.csv"}, Action::Import,
            " subject=t.csv dry=yes places=yes");
        row("check", {"--check"}, Action::Check, "");
        row("forecast", {"--forecast", "Pittwater"}, Action::Forecast, " subject=Pittwater");
        row("forecast of a range", {"--forecast", "Lake", "--from", "2026-3-1", "--days", "3660"},
            Action::Forecast, " subject=Lake from=2026-03-01 days=3660");
        row("report", {"--report", "default", "--output", "r.PDF"}, Action::Report,
            " subject=default output=r.PDF");
        row("report with options",
            {"--report", "a b", "--output", "r.rtf", "--location", "Lake", "--find", "x"}, Action::Report,
            " subject=a b query=x location=Lake output=r.rtf format=1");
        row("calendar", {"--calendar", "Lake", "--month", "2026-11", "--output", "c.ics"}, Action::Calendar,
            " subject=Lake output=c.ics format=2 month=2026-11-01");
        row("back-up", {"--backup", "b.ZIP", "--folder", "d"}, Action::BackUp, " folder=d subject=b.ZIP");
        row("restore", {"--restore", "b"}, Action::Restore, " subject=b");
        row("end of the options", {"--"}, Action::OpenWindow, "");
        row("end of the options after a command", {"--list", "--"}, Action::List, "");
        row("options of Qt", {"-style", "fusion", "--platform=offscreen", "-reverse", "--folder", "d"},
            Action::OpenWindow, " folder=d");
    }

    void arguments_areParsed()
    {
        QFETCH(Arguments, arguments);
        QFETCH(std::string, expected);
        const CommandLine line = ParseCommandLine(arguments);
        QCOMPARE(line.problem, std::string());
        QCOMPARE(Described(line), expected);
    }

    void wrongUsage_isExplained_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::addColumn<std::string>("problem");
        const auto row = [](const Arguments& arguments, const char* problem) {
            std::string name;
            for (const std::string& argument : arguments) {
                name += (name.empty() ? "" : " ") + argument;
            }
            QTest::newRow(("> " + name).c_str()) << arguments << std::string(problem);
        };
        row({"trips.csv"}, "The argument \"trips.csv\" does not belong to an option.");
        row({""}, "The argument \"\" does not belong to an option.");
        row({"--check", "now"}, "The argument \"now\" does not belong to an option.");
        row({"--lst"}, "The option --lst does not exist.");
        row({"--lst=bream"}, "The option --lst does not exist.");
        row({"-x"}, "The option -x does not exist.");
        row({"--", "trips.csv"}, "The argument \"trips.csv\" does not belong to an option.");
        row({"--list", "--", "-style", "fusion"}, "The argument \"-style\" does not belong to an option.");
        row({"--check", "--", "--"}, "The argument \"--\" does not belong to an option.");
        row({"--folder"}, "--folder needs a value: --folder DIR");
        row({"--folder="}, "--folder needs a value: --folder DIR");
        row({"--export", "--find", "x"}, "--export needs a value: --export FILE.csv");
        row({"--forecast"}, "--forecast needs a value: --forecast PLACE");
        row({"--check=all"}, "--check has no value.");
        row({"--folder", "a", "--folder", "b"}, "--folder is given twice.");
        row({"--list", "--check"}, "--list and --check cannot be used together.");
        row({"--check", "--list", "--export", "x"}, "--list, --export and --check cannot be used together.");
        row({"--find", "x"}, "--find can only be used with --export or --report.");
        row({"--list", "--find", "x"}, "--find can only be used with --export or --report.");
        row({"--check", "--dry-run"}, "--dry-run can only be used with --import.");
        row({"--report", "default"}, "--report also needs --output FILE.");
        row({"--calendar", "Lake", "--output", "a.pdf"}, "--calendar also needs --month YYYY-MM.");
        row({"--calendar", "Lake", "--month", "2026-11"}, "--calendar also needs --output FILE.");
        row({"--forecast", "Lake", "--from", "31.3."},
            "--from needs a date such as 2026-03-31, not \"31.3.\".");
        row({"--forecast", "Lake", "--days", "0"}, "--days needs a number from 1 to 3660, not \"0\".");
        row({"--forecast", "Lake", "--days", "3661"}, "--days needs a number from 1 to 3660, not \"3661\".");
        row({"--forecast", "Lake", "--days", "99999999999"},
            "--days needs a number from 1 to 3660, not \"99999999999\".");
        row({"--forecast", "Lake", "--days", "1e2"}, "--days needs a number from 1 to 3660, not \"1e2\".");
        row({"--calendar", "Lake", "--month", "2026-13", "--output", "a.pdf"},
            "--month needs a month such as 2026-03, not \"2026-13\".");
        row({"--report", "default", "--output", "a.ics"},
            "--output needs a file name that ends with .pdf or .rtf, not \"a.ics\".");
        row({"--report", "default", "--output", ".pdf"},
            "--output needs a file name that ends with .pdf or .rtf, not \".pdf\".");
        row({"--backup", "tarno.xml"}, "--backup needs a file name that ends with .zip, not \"tarno.xml\".");
        row({"--backup"}, "--backup needs a value: --backup FILE.zip");
        row({"--restore", "b.zip", "--dry-run"}, "--dry-run can only be used with --import.");
        row({"--calendar", "Lake", "--month", "2026-11", "--output", "a.rtf"},
            "--output needs a file name that ends with .pdf or .ics, not \"a.rtf\".");
    }

    void wrongUsage_isExplained()
    {
        QFETCH(Arguments, arguments);
        QFETCH(std::string, problem);
        QCOMPARE(ParseCommandLine(arguments).problem, problem);
    }

    void help_namesEveryOptionInLinesOf80()
    {
        std::istringstream help(HelpText());
        std::string all;
        for (std::string line; std::getline(help, line); all += line + '\n') {
            QVERIFY2(line.size() <= 80, line.c_str());
        }
        for (const char* option : {"--folder DIR",      "--find QUERY",
                                   "--dry-run",         "--add-places",
                                   "--from DATE",       "--days N",
                                   "--location PLACE",  "--month YYYY-MM",
                                   "--output FILE",     "--help",
                                   "--version",         "--list [QUERY]",
                                   "--export FILE.csv", "--import FILE.csv",
                                   "--export FILE.gpx", "--import FILE.gpx",
                                   "--check",           "--forecast PLACE",
                                   "--report NAME",     "--calendar PLACE"}) {
            QVERIFY2(all.find(option) != std::string::npos, option);
        }
    }
};

TEST_CLASS(tst_CommandLine)
#include "tst_CommandLine.moc"
