#include "TripTableTest.h"
#include "exchange/PlaceName.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <QFile>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const TableColumn& Column(std::string_view heading)
{
    const auto& columns = TableColumns();
    return *std::find_if(columns.begin(), columns.end(),
                         [&](const TableColumn& column) { return column.heading == heading; });
}

/// Returns the stored text, or the refusal.
std::string Read(std::string_view heading, std::string_view cell, const TableForms& forms = {})
{
    const CellReading reading = ReadCell(Column(heading), cell, forms);
    return reading.refusal.empty() ? "[" + reading.stored + "]" : reading.refusal;
}

/// Returns the headings of the columns that the headings mean, "" for those that are ignored.
Texts Mapped(const CsvRow& headings, const RecordList& fields = {})
{
    Texts mapped;
    for (const auto& column : ProposeMapping(headings, fields)) {
        mapped.emplace_back(column ? TableColumns()[*column].heading : "");
    }
    return mapped;
}

struct Log : TestStore {
    Log()
    {
        sql.Init();
        ImportBatch batch;
        for (const char* name : {"Pier", "R\xC3\xADo", "Pier"}) {
            StoredTexts& place = batch.locations.emplace_back(LocationField::Count);
            place[LocationField::LocName] = name;
        }
        StoredTexts trip(EntryField::Count);
        trip[EntryField::StartDate] = "2024-10-05";
        trip[EntryField::StartTime] = "06:00";
        trip[EntryField::EndTime] = "09:00";
        batch.trips = {{trip, 2}};
        sql.Import(batch);
    }
};

/// Describes the rows and the new trips of a plan.
Texts Described(const ImportPlan& plan)
{
    Texts lines;
    std::size_t next = 0;
    for (const PlannedRow& row : plan.rows) {
        std::string line = std::to_string(row.row) + ' ';
        if (row.status == RowStatus::New) {
            const ImportedTrip& trip = plan.batch.trips.at(next++);
            line += "new at " + (trip.newLocation ? "new " + std::to_string(*trip.newLocation)
                                                  : trip.values[EntryField::LocNo]);
        } else {
            line += (row.status == RowStatus::Refused ? "refused: " : "is ") + row.reason;
        }
        lines.push_back(line);
    }
    return lines;
}

} // namespace

class tst_TripTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void columns_areTheCatalogueAndThePlace()
    {
        Texts headings;
        for (const TableColumn& column : TableColumns()) {
            headings.emplace_back(column.heading);
        }
        QCOMPARE(headings.size(), entryFields.size() + 5);
        const auto place = headings.begin() + EntryField::LocNo;
        QCOMPARE(Texts(place, place + 6),
                 (Texts{"LocNo", "Location", "Latitude", "Longitude", "GMT", "DST"}));
        headings.erase(place + 1, place + 6);
        for (const FieldInfo& field : entryFields) {
            QCOMPARE(headings[field.position], std::string(field.name));
        }
    }

    void headings_areRecognised()
    {
        Log log;
        QCOMPARE(
            Mapped({"startdate", " EndDate: ", "Tide-Start", "start", "TO", "colour", "", "Place", "place"}),
            (Texts{"StartDate", "EndDate", "TideStart", "StartTime", "", "", "", "Location", ""}));
        const RecordList fields = FieldsOf(log.sql);
        QCOMPARE(
            Mapped({"Date the trip started", "High Ht", "Moon phase (% lit)", "Sun Up", "Location"}, fields),
            (Texts{"StartDate", "HighTideHt", "MoonPhase", "SunRise", "Location"}));
        QCOMPARE(Mapped({"Date the trip started"}), Texts{""});
        Texts all;
        for (const TableColumn& column : TableColumns()) {
            all.emplace_back(column.heading);
        }
        QCOMPARE(Mapped(all, fields), all);
        for (const RecordView& field : fields) {
            for (const auto text : {FieldField::Desc, FieldField::Label}) {
                QVERIFY2(!Mapped({field.Text(text)}, fields).front().empty(), field.Text(text).c_str());
            }
        }
    }

    // The accessible names of the boxes of the editor, and the headings of the log, are headings too.
    void captionsOfWindows_areRecognised()
    {
        for (const char* heading :
             {"From", "To", "Location", "Start", "End", "Tide-Start", "Tide-End", "Rating", "Action"}) {
            QVERIFY2(!Mapped({heading}).front().empty(), heading);
        }
        int found = 0;
        for (const char* page : {"General", "Weather", "Comments"}) {
            QFile file(QStringLiteral(TARNO_SHIPPED_DATA "/../src/ui/entry/Entry%1Page.ui")
                           .arg(QLatin1String(page)));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QString text = QString::fromUtf8(file.readAll());
            const QString boxes = QStringLiteral("class=\"QLineEdit\"|class=\"QPlainTextEdit\"");
            for (const QString& box : boxes.split(QLatin1Char('|'))) {
                for (auto at = text.indexOf(box); at >= 0; at = text.indexOf(box, at + 1)) {
                    const auto name = text.indexOf(QStringLiteral("accessibleName"), at);
                    const auto start = text.indexOf(QStringLiteral("<string>"), name) + 8;
                    const QString caption = text.mid(start, text.indexOf(QLatin1Char('<'), start) - start);
                    QVERIFY2(!Mapped({caption.toStdString()}).front().empty(), qPrintable(caption));
                    ++found;
                }
            }
        }
        QVERIFY(found > 20);
    }

    void cells_areRead_data()
    {
        QTest::addColumn<std::string>("heading");
        QTest::addColumn<std::string>("cell");
        QTest::addColumn<std::string>("read");
        const auto row = [](const char* heading, const char* cell, const char* read) {
            QTest::addRow("%s %s", heading, cell)
                << std::string(heading) << std::string(cell) << std::string(read);
        };
        row("StartDate", "2025-12-31", "[2025-12-31]");
        row("StartDate", "2025-2-5", "[2025-02-05]");
        row("StartDate", "31/12/2025", "[2025-12-31]");
        row("StartDate", "1.2.25", "[2025-02-01]");
        row("StartDate", "1/2/30", "[1930-02-01]");
        row("StartDate", " 31. 12. 2025. ", "[2025-12-31]");
        row("StartDate", "", "[]");
        row("StartDate", "31/02/2025", "The start date \"31/02/2025\" is not a date.");
        row("StartDate", "12/31/2025", "The start date \"12/31/2025\" is not a date.");
        row("StartDate", "1/2.2025", "The start date \"1/2.2025\" is not a date.");
        row("StartDate", "1/2/025", "The start date \"1/2/025\" is not a date.");
        row("StartDate", "1/2/2025 6:00", "The start date \"1/2/2025 6:00\" is not a date.");
        row("EndDate", "yesterday", "The end date \"yesterday\" is not a date.");
        row("StartTime", "6:00", "[06:00]");
        row("StartTime", "06:00:00", "[06:00]");
        row("StartTime", "6:05 AM", "[06:05]");
        row("StartTime", "12:00am", "[00:00]");
        row("StartTime", "12:30 pm", "[12:30]");
        row("StartTime", "1:30 PM", "[13:30]");
        row("StartTime", "13:30 PM", "The start time \"13:30 PM\" is not a time.");
        row("StartTime", "25:00", "The start time \"25:00\" is not a time.");
        row("StartTime", "600", "The start time \"600\" is not a time.");
        row("StartTime", "6:5", "The start time \"6:5\" is not a time.");
        row("StartTime", "never", "The start time \"never\" is not a time.");
        row("MoonRise", "never", "[never]");
        row("MoonSet", "24:00", "[24:00]");
        row("MoonSet", "24:00:00", "[24:00]");
        row("MoonSet", "Sets", "[sets]");
        row("SunSet", ":", "[:]");
        row("TideStart", "RUN in", "[3]");
        row("TideStart", "3", "[3]");
        row("TideStart", "03", "[3]");
        row("TideStart", "7", "[7]");
        row("TideStart", "-1", "[-1]");
        row("TideStart", "not set", "[]");
        row("TideStart", "~=Sideways", "[Sideways]");
        row("TideStart", "Sideways",
            "The tide at the start \"Sideways\" is not Top, Run Out, Bottom or Run In.");
        row("TideStart", "007", "The tide at the start \"007\" is not Top, Run Out, Bottom or Run In.");
        row("AirPressure", "up", "The trend of the air pressure \"up\" is not Rising or Falling.");
        row("MoonPhase", "Waning, 05%", "[-5]");
        row("MoonPhase", "waxing 100 %", "[100]");
        row("MoonPhase", "Waning, 00%", "[-0]");
        row("MoonPhase", "-45", "[-45]");
        row("MoonPhase", "full",
            "The moon phase \"full\" is not a phase like \"Waning, 45%\", or a number from -100 to 100.");
        row("AirTemp", " 18,5 C", "[ 18,5 C]");
        row("Major1", "=1+1", "[=1+1]");
        row("Major1", "12:07:00 AM", "[00:07]");
        row("Minor2", "6:30", "[06:30]");
        row("Minor2", " 6:30 or later", "[ 6:30 or later]");
        row("Obbos", "one\ntwo\r\nthree\rfour~CL~five", "[one~CL~two~CL~three~CL~four~CL~five]");
        row("Latitude", "-33,59", "[-33.59]");
        row("Latitude", "91", "The latitude \"91\" is not a number from -90 to 90.");
        row("Longitude", "151.32", "[151.32]");
        row("Longitude", "1,234.5", "The longitude \"1,234.5\" is not a number from -180 to 180.");
        row("GMT", "9,5", "[9.5]");
        row("GMT", "15", "The offset from GMT \"15\" is not a number of hours from -14 to 14.");
        row("DST", "Yes", "[1]");
        row("DST", "0", "[0]");
        row("DST", "maybe", "The daylight saving time \"maybe\" is not \"yes\" or \"no\".");
    }

    void cells_areRead()
    {
        QFETCH(std::string, heading);
        QFETCH(std::string, cell);
        QTEST(Read(heading, cell), "read");
    }

    void dates_areReadInTheFormOfTheTable()
    {
        const TableForms american = TableForms::Of(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(Read("StartDate", "12/31/2025", american), "[2025-12-31]"s);
        QCOMPARE(Read("StartDate", "2025-12-31", american), "[2025-12-31]"s);
        const TableForms german = TableForms::Of(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(Read("StartDate", "31.12.2025", german), "[2025-12-31]"s);
        const TableForms australian = TableForms::Of(QLocale(QLocale::English, QLocale::Australia));
        QCOMPARE(Read("StartDate", "31/12/25", australian), "[2025-12-31]"s);
        const TableForms swedish = TableForms::Of(QLocale(QLocale::Swedish, QLocale::Sweden));
        QCOMPARE(Read("StartDate", "25/12/31", swedish), "[2025-12-31]"s);
        QCOMPARE(Read("StartDate", "31/12/25", TableForms{.firstYear = 1900}), "[1925-12-31]"s);
    }

    void dates_withTheYearInFront_areReadInEveryForm()
    {
        using Order = TableForms::DateOrder;
        for (const Order order : {Order::DayMonthYear, Order::MonthDayYear, Order::YearMonthDay}) {
            const TableForms forms{.dates = order};
            for (const char* date : {"2025/02/01", "2025.2.1", "2025. 2. 1.", "2025-2-1"}) {
                QCOMPARE(Read("StartDate", date, forms), "[2025-02-01]"s);
            }
            QCOMPARE(Read("StartDate", "1066/10/14", forms), "[1066-10-14]"s); // the editor accepts it too
            QCOMPARE(Read("StartDate", "2025/13/01", forms), "The start date \"2025/13/01\" is not a date."s);
            QCOMPARE(Read("StartDate", "2025/2.1", forms), "The start date \"2025/2.1\" is not a date."s);
        }
    }

    void longText_isShortenedInTheRefusal()
    {
        const std::string refusal = Read("StartDate", "first line\n" + std::string(100, 'x'));
        QCOMPARE(refusal, "The start date \"first line " + std::string(49, 'x') + "...\" is not a date.");
    }

    void storedTexts_areReadableWhereTheyComeBack()
    {
        QCOMPARE(CellOf(Column("TideStart"), "3"), "Run In"s);
        QCOMPARE(CellOf(Column("TideStart"), "9"), "9"s);
        QCOMPARE(CellOf(Column("TideStart"), "-1"), "-1"s);
        QCOMPARE(CellOf(Column("TideStart"), ""), ""s);
        QCOMPARE(CellOf(Column("StartDate"), ""), "~="s);
        QCOMPARE(CellOf(Column("LocNo"), ""), "~="s);
        QCOMPARE(CellOf(Column("TideStart"), "Run In"), "~=Run In"s);
        QCOMPARE(CellOf(Column("MoonPhase"), "-5"), "Waning, 05%"s);
        QCOMPARE(CellOf(Column("MoonPhase"), "0"), "Waxing, 00%"s);
        QCOMPARE(CellOf(Column("MoonPhase"), "-0"), "Waning, 00%"s);
        QCOMPARE(CellOf(Column("MoonPhase"), "05"), "~=05"s);
        QCOMPARE(CellOf(Column("Obbos"), "one~CL~two"), "one\ntwo"s);
        QCOMPARE(CellOf(Column("Obbos"), "one\ntwo"), "~=one\ntwo"s);
        QCOMPARE(CellOf(Column("StartDate"), "5/10/2024"), "~=5/10/2024"s);
        QCOMPARE(CellOf(Column("Major1"), "06:30"), "06:30"s);
        QCOMPARE(CellOf(Column("Major1"), "6:30 PM"), "~=6:30 PM"s);
        QCOMPARE(CellOf(Column("Major1"), ":"), ":"s);
    }

    void rows_areRead()
    {
        const CsvRows rows{{"Date", "unknown", "Location", "Bait"},
                           {"2024-10-05", "x", "Pier"},
                           {"", "", "", ""},
                           {},
                           {"~=", "", "Reef", "squid", ""},
                           {"2024-10-06", "", "", "", "too much"},
                           {"bad", "", "", ""},
                           {"", "", "Reef", "squid"},
                           {"2024-10-06", "", "", "squid"}};
        const auto candidates = ReadTrips(rows, ProposeMapping(rows.front(), {}), {});
        QCOMPARE(candidates.size(), 6U);
        QCOMPARE(candidates[0].row, 1U);
        QCOMPARE(candidates[0].trip[EntryField::StartDate], "2024-10-05"s);
        QCOMPARE(candidates[0].trip[EntryField::EndDate], "2024-10-05"s); // no column has it
        QCOMPARE(candidates[0].place[LocationField::LocName], "Pier"s);
        QCOMPARE(candidates[1].row, 4U);
        QCOMPARE(candidates[1].refusal, ""s); // the export of a trip without a date
        QCOMPARE(candidates[1].trip[EntryField::BaitUsed], "squid"s);
        QCOMPARE(candidates[2].refusal, "The row has more values than there are headings."s);
        QCOMPARE(candidates[3].refusal, "The start date \"bad\" is not a date."s);
        QCOMPARE(candidates[4].refusal, "The start date is missing."s);
        QCOMPARE(candidates[5].refusal, "The location is missing."s);
        QVERIFY(ReadTrips({}, {}, {}).empty());
    }

    void endDates_areThoseOfTheirColumn()
    {
        const CsvRows rows{
            {"Date", "To", "Place"}, {"2024-10-05", "2024-10-06", "Pier"}, {"2024-10-05", "", "Pier"}};
        const auto candidates = ReadTrips(rows, ProposeMapping(rows.front(), {}), {});
        QCOMPARE(candidates[0].trip[EntryField::EndDate], "2024-10-06"s);
        QCOMPARE(candidates[1].trip[EntryField::EndDate], ""s);
    }

    void reading_stopsWhenItIsCancelled()
    {
        const CsvRows rows{{"Date", "Place"}, {"2024-10-05", "a"}, {"2024-10-06", "b"}, {"2024-10-07", "c"}};
        int calls = 0;
        const auto candidates =
            ReadTrips(rows, ProposeMapping(rows.front(), {}), {}, [&calls] { return ++calls < 2; });
        QCOMPARE(candidates.size(), 2U);
    }

    void placeNames_areComparedWithoutBlanksAndLineBreaks()
    {
        QCOMPARE(ComparedName(" Port\t Hacking~CL~Creek "), ComparedName("PORT HACKING creek"));
        QVERIFY(ComparedName("Pitt water") != ComparedName("Pittwater"));
        QCOMPARE(ComparedName(" "), ""s);
    }

    void plan_findsPlacesByNumberAndName()
    {
        Log log;
        const CsvRows rows{{"LocNo", "Location", "StartDate", "Latitude"},
                           {"3", "pier", "2024-01-01"}, // the number tells which one
                           {"2", "Pier", "2024-01-02"}, // another place has the number
                           {"", "RIO", "2024-01-03"},
                           {"1", "", "2024-01-04"}, // by number alone
                           {"77", "", "2024-01-05"},
                           {"", "", "2024-01-06"},
                           {"1", "Reef", "2024-01-07"},         // new, although the number is known
                           {"", "reef", "2024-01-08", "-33.5"}, // completes it
                           {"8", "Reef", "2024-01-09"},         // another one of that name
                           {"bad", "Jetty", "date"}};
        const ImportPlan plan = PlanOf(rows, log.sql);
        QCOMPARE(Described(plan),
                 (Texts{"1 new at 3", "2 new at 1", "3 new at 2", "4 new at 1", "5 new at 77",
                        "6 refused: The location is missing.", "7 new at new 0", "8 new at new 0",
                        "9 new at new 1", "10 refused: The start date \"date\" is not a date."}));
        QCOMPARE(plan.places.size(), 2U);
        QCOMPARE(plan.places[0].name, "Reef"s);
        QCOMPARE(plan.places[0].latitude, "-33.5"s);
        QCOMPARE(plan.places[0].trips, 2U);
        QCOMPARE(plan.places[1].trips, 1U);
        QCOMPARE(plan.batch.locations[1][LocationField::LocNo], "8"s);
        QCOMPARE(plan.Count(RowStatus::New), 8U);
        QCOMPARE(plan.Count(RowStatus::Refused), 2U);
    }

    void plan_findsTripsThatAreThere()
    {
        Log log;
        const CsvRows rows{{"Location", "LocNo", "StartDate", "StartTime", "EndTime", "Bait"},
                           {"Pier", "3", "5/10/2024", "6:00", "9:00 AM", "other bait"},
                           {"", "3", "2024-10-05", "06:00", "09:00", ""},
                           {"Pier", "1", "2024-10-05", "06:00", "09:00", ""},
                           {"Pier", "3", "2024-10-05", "06:00", "", ""},
                           {"New", "3", "2024-10-05", "06:00", "09:00", ""}};
        const ImportPlan plan = PlanOf(rows, log.sql);
        QCOMPARE(Described(plan), (Texts{"1 is 1", "2 is 1", "3 new at 1", "4 new at 3", "5 new at new 0"}));
        QCOMPARE(plan.Count(RowStatus::AlreadyThere), 2U);
    }

    void plannedImport_isCarriedOut()
    {
        Log log;
        const CsvRows rows{{"TarnoNo", "Location", "StartDate", "Caught"},
                           {"1", "Reef", "2024-01-01", "Bream\nTailor"},
                           {"7", "Pier", "2024-01-02", "=1+1"}};
        ImportPlan plan = PlanOf(rows, log.sql);
        QCOMPARE(log.sql.Import(plan.batch), succeeded);
        const RecordList trips = TripsOf(log.sql);
        QCOMPARE(trips.size(), 3U);
        QCOMPARE(trips[1].Text(0), "7"s);
        QCOMPARE(trips[1].Text(EntryField::LocNo), "1"s);
        QCOMPARE(trips[1].Text(EntryField::FishCaught), "=1+1"s);
        QCOMPARE(trips[2].Text(0), "8"s);
        QCOMPARE(trips[2].Text(EntryField::LocNo), "4"s);
        QCOMPARE(trips[2].Text(EntryField::FishCaught), "Bream~CL~Tailor"s);
        QCOMPARE(log.sql.LocationNameGet("4"), "Reef"s);
        QCOMPARE(PlanOf(rows, log.sql).Count(RowStatus::AlreadyThere), 2U);
    }
};

TEST_CLASS(tst_TripTable)
#include "tst_TripTable.moc"
