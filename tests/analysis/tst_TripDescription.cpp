// Descriptions of trips in words, and trips as text separated by tabs.

#include "SmallLog.h"
#include "analysis/TripDescription.h"
#include "core/Text.h"
#include "support/TestClass.h"

#include <QStringList>

using namespace Tarno;
using namespace EntryField;

namespace
{

/// Returns the lines of the description of a trip at "Reef", each as "caption: text".
std::vector<std::string> Described(const Values& values)
{
    const SmallLog log({values}, {"Reef", "Wharf,~CL~north side"});
    std::vector<std::string> lines;
    for (const DescribedValue& value : DescribeTrip(log.Trips().front(), log.Places())) {
        lines.push_back(value.caption + ": " + value.text);
    }
    return lines;
}

/// Returns the cells of the text separated by tabs, line by line.
QList<QStringList> Cells(const std::vector<Values>& trips)
{
    const SmallLog log(trips, {"Reef", "Wharf,~CL~north side"});
    QList<QStringList> lines;
    for (const QString& line :
         QString::fromStdString(TabSeparated(log.Trips(), log.Places())).split(QLatin1Char('\n'))) {
        lines << line.split(QLatin1Char('\t'));
    }
    return lines;
}

using Lines = std::vector<std::string>;

} // namespace

Q_DECLARE_METATYPE(Values)
Q_DECLARE_METATYPE(Lines)

class tst_TripDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void description_hasEveryValueInOrder()
    {
        const Lines lines = Described({{StartDate, "2003-02-05"},
                                       {EndDate, "2003-02-06"},
                                       {StartTime, "06:30"},
                                       {EndTime, "11:45"},
                                       {LocNo, "2"},
                                       {TideStart, "3"},
                                       {TideEnd, "0"},
                                       {HighTide, "09:10"},
                                       {HighTideHt, "1.6 m"},
                                       {LowTide, "03:05"},
                                       {LowTideHt, "0.4"},
                                       {SunRise, "06:11"},
                                       {SunSet, "19:58"},
                                       {MoonRise, "10:21"},
                                       {MoonSet, "21:43"},
                                       {MoonPhase, "-45"},
                                       {Prediction, "2"},
                                       {AirTemp, "24.5"},
                                       {WaterTemp, "21"},
                                       {WindDir, "7"},
                                       {WindStrength, "3"},
                                       {Weather, "6"},
                                       {WaterClarity, "2"},
                                       {TargetSpecies, "Flathead~CL~Squid"},
                                       {BaitUsed, "Prawn"},
                                       {Method, "Drifting"},
                                       {FishAction, "3"},
                                       {FishCaught, "2 flathead"},
                                       {AirPressure, "1"},
                                       {PressureReading, "1013"},
                                       {Obbos, "First~CL~Last"},
                                       {Major1, "04:01"},
                                       {Major2, "16:26"},
                                       {Minor1, "10:13"},
                                       {Minor2, "22:37"},
                                       {Picture, "fish.png"}});
        const auto word = [](Position field, const char* code) { return std::string(CodeWord(field, code)); };
        QCOMPARE(lines, (Lines{"Date: 2003-02-05 to 2003-02-06",
                               "Place: Wharf, north side",
                               "Time: 06:30 to 11:45",
                               "Action: Hot!",
                               "Caught: 2 flathead",
                               "Targeted: Flathead\nSquid",
                               "Bait: Prawn",
                               "Methods: Drifting",
                               "Tide: Run In to Top",
                               "High tide: 09:10, 1.6 m",
                               "Low tide: 03:05, 0.4",
                               "Weather: " + word(Weather, "6"),
                               "Wind: " + word(WindDir, "7") + ", " + word(WindStrength, "3"),
                               "Air: 24.5",
                               "Water: 21, " + word(WaterClarity, "2"),
                               "Air pressure: 1013, " + word(AirPressure, "1"),
                               "Observations: First\nLast",
                               "Rating: Good",
                               "Moon: Waning, 45%",
                               "Sunrise: 06:11",
                               "Sunset: 19:58",
                               "Moonrise: 10:21",
                               "Moonset: 21:43",
                               "Major periods: 04:01, 16:26",
                               "Minor periods: 10:13, 22:37"}));
    }

    void description_leavesOutWhatIsNotSet_data()
    {
        QTest::addColumn<Values>("values");
        QTest::addColumn<Lines>("lines");
        QTest::newRow("nothing") << Values{} << Lines{};
        QTest::newRow("picture only") << Values{{Picture, "fish.png"}} << Lines{};
        QTest::newRow("one day") << Values{{StartDate, "2003-02-05"}, {EndDate, "2003-02-05"}}
                                 << Lines{"Date: 2003-02-05"};
        QTest::newRow("start only") << Values{{StartDate, "2003-02-05"}} << Lines{"Date: 2003-02-05"};
        QTest::newRow("end only") << Values{{EndDate, "2003-02-05"}} << Lines{"Date: 2003-02-05"};
        QTest::newRow("unknown place") << Values{{LocNo, "3"}} << Lines{};
        QTest::newRow("unknown code") << Values{{TideStart, "9"}, {TideEnd, "0"}} << Lines{"Tide: Top"};
        QTest::newRow("same tide") << Values{{TideStart, "0"}, {TideEnd, "0"}} << Lines{"Tide: Top"};
        QTest::newRow("equal heights")
            << Values{{HighTide, "1"}, {HighTideHt, "1"}} << Lines{"High tide: 1, 1"};
        QTest::newRow("half a pair") << Values{{LowTideHt, "0.4"}, {WaterTemp, "21"}}
                                     << Lines{"Low tide: 0.4", "Water: 21"};
    }

    void description_leavesOutWhatIsNotSet()
    {
        QFETCH(Values, values);
        QTEST(Described(values), "lines");
    }

    void description_shortRecord()
    {
        pugi::xml_document document;
        document.load_string("<t><k>1</k><d>2003-02-05</d></t>");
        const auto values = DescribeTrip(RecordView(document.first_child()), PlaceNames());
        QCOMPARE(values.size(), std::size_t{1});
        QCOMPARE(values.front().text, "2003-02-05");
    }

    void tabSeparated_hasANameForEachValueButTheKey()
    {
        const QList<QStringList> lines = Cells({{{StartDate, "2003-02-05"}}});
        QCOMPARE(lines.size(), 2);
        QStringList names;
        for (const FieldInfo& field : entryFields) {
            names << QString::fromUtf8(field.name.data(), static_cast<qsizetype>(field.name.size()));
        }
        names.removeFirst();
        QCOMPARE(lines[0], names);
        QCOMPARE(lines[1].size(), names.size());
        QCOMPARE(lines[1][0], QStringLiteral("2003-02-05"));
    }

    void tabSeparated_showsWords()
    {
        const QList<QStringList> lines = Cells(
            {{{LocNo, "2"}, {TideStart, "3"}, {MoonPhase, "-45"}, {Picture, "fish.png"}}, {{LocNo, "1"}}});
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[1][LocNo - 1], QStringLiteral("Wharf, north side"));
        QCOMPARE(lines[1][TideStart - 1], QStringLiteral("Run In"));
        QCOMPARE(lines[1][MoonPhase - 1], QStringLiteral("Waning, 45%"));
        QCOMPARE(lines[1][Picture - 1], QStringLiteral("fish.png"));
        QCOMPARE(lines[2][LocNo - 1], QStringLiteral("Reef"));
    }

    void tabSeparated_keepsEachValueInItsCell_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<std::string>("stored");
        QTest::addColumn<QString>("cell");
        const auto row = [](const char* name, int field, const char* stored, const char* cell) {
            QTest::newRow(name) << field << std::string(stored) << QString::fromUtf8(cell);
        };
        row("lines", Obbos, "a~CL~b", "a; b");
        row("plain line breaks", Obbos, "a\nb\r\nc", "a; b; c");
        row("tab", Obbos, "a\tb", "a; b");
        row("line break in a line", AirTemp, "a\nb", "a; b");
        row("two characters for a line break", AirTemp, "a\r\nb", "a; b");
        row("carriage return", AirTemp, "a\rb", "a; b");
        row("quotation marks", Obbos, "\"a\"", "\"a\"");
        row("accents", Obbos, "Nud\xC3\xA9l", "Nud\xC3\xA9l");
    }

    void tabSeparated_keepsEachValueInItsCell()
    {
        QFETCH(int, field);
        QFETCH(std::string, stored);
        QFETCH(QString, cell);
        const QList<QStringList> lines = Cells({{{static_cast<Position>(field), stored}}});
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[1].size(), lines[0].size());
        QCOMPARE(lines[1][field - 1], cell);
    }

    void tabSeparated_noTrips_hasOnlyTheNames() { QCOMPARE(Cells({}).size(), 1); }
};

TEST_CLASS(tst_TripDescription)
#include "tst_TripDescription.moc"
