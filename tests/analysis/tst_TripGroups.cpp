// Groups of trips, their figures, and the queries that find them.

#include "RandomLog.h"
#include "SmallLog.h"
#include "analysis/TripGroups.h"
#include "support/TestClass.h"

#include <set>

using namespace Tarno;
using namespace EntryField;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

LogContext ContextOf(const SmallLog& log)
{
    LogContext context;
    context.places = log.Places();
    context.species = LineItems({"Bream", "Black bream", "Squid, strips", "Squid jig", "x 7"});
    context.baits = context.species;
    return context;
}

/// Returns the groups as "name (trips): query".
Texts Groups(const std::vector<Values>& trips, Grouping grouping, const Texts& places = {})
{
    const SmallLog log(trips, places);
    Texts texts;
    for (const TripGroup& group : GroupTrips(log.Trips(), grouping, ContextOf(log))) {
        texts.push_back(group.name + " (" + std::to_string(group.trips) + "): " + group.query);
    }
    return texts;
}

std::vector<Values> Trips(Position field, const Texts& values)
{
    std::vector<Values> trips;
    for (const std::string& value : values) {
        trips.push_back({{field, value}});
    }
    return trips;
}

/// Groups each trip alone. Returns the indices of the trips by folded name of the group.
std::map<std::string, std::set<std::size_t>> Members(const RecordList& trips, Grouping grouping,
                                                     const LogContext& context)
{
    std::map<std::string, std::set<std::size_t>> members;
    for (std::size_t trip = 0; trip < trips.size(); ++trip) {
        for (const TripGroup& group : GroupTrips({trips[trip]}, grouping, context)) {
            members[Fold(group.name)].insert(trip);
        }
    }
    return members;
}

Values Trip(const char* startDate, const char* endDate, const char* startTime, const char* endTime)
{
    return {{StartDate, startDate}, {EndDate, endDate}, {StartTime, startTime}, {EndTime, endTime}};
}

const QStringList tricky{
    QStringLiteral("Bream"),
    QStringLiteral("BR\u00C9AM 41 cm (kept)"),
    QStringLiteral("3 breams"),
    QStringLiteral("black bream x 2"),
    QStringLiteral("Squid"),
    QStringLiteral("squid, whole"),
    QStringLiteral("Squid, strips"),
    QStringLiteral("Squid strips 4"),
    QStringLiteral("squid X 4"),
    QStringLiteral("  squid  x 5 "),
    QStringLiteral("18"),
    QStringLiteral("18 bream"),
    QStringLiteral("18 of them"),
    QStringLiteral("06:30"),
    QStringLiteral("-2"),
    QStringLiteral("=squid"),
    QStringLiteral("==squid 3"),
    QStringLiteral(">5"),
    QStringLiteral("1..2"),
    QStringLiteral("a..b"),
    QStringLiteral("a|b 3"),
    QStringLiteral("a:b"),
    QStringLiteral("kind:new"),
    QStringLiteral("-squid"),
    QStringLiteral("R\u00EDo"),
    QStringLiteral("rio, 2"),
    QStringLiteral("Stra\u00DFe 5"),
    QStringLiteral("STRASSE"),
    QStringLiteral("\u30BA\u30AD 5"),
    QStringLiteral("\u30BA\u30AD\uFF085\uFF09"),
    QStringLiteral("\uFF15\uFF10"),
    QStringLiteral("\u00A0"),
    QStringLiteral(" \t"),
    QStringLiteral("Tail\tor"),
    QStringLiteral("(none)"),
    QStringLiteral(","),
    QStringLiteral("Not Set"),
    QStringLiteral("5 x"),
    QStringLiteral("x 7"),
};

} // namespace

class tst_TripGroups : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void groupings_haveTitles()
    {
        std::set<Grouping> groupings;
        std::set<std::string_view> titles;
        for (const GroupingTitle& each : Groupings()) {
            groupings.insert(each.grouping);
            titles.insert(each.title);
        }
        QCOMPARE(groupings.size(), std::size_t(18));
        QCOMPARE(titles.size(), std::size_t(18));
    }

    void groups_areInNaturalOrder_data();

    void groups_areInNaturalOrder()
    {
        QFETCH(std::vector<Values>, trips);
        QFETCH(Grouping, grouping);
        QTEST(Groups(trips, grouping, {"Reef, clear", "Old wharf", "REEF, CLEAR", "Reef"}), "groups");
    }

    /// The query of each group must find those trips that are in a group of this name when they are grouped
    /// alone, and no others.
    void query_findsTheTripsOfItsGroup()
    {
        Random random(20261122);
        const Texts names{"Reef", "Reef, clear", "R\u00CDO n\u00BA 7", "r\u00EDo n\u00BA 7"};
        int checked = 0;
        for (int round = 0; round < 60; ++round) {
            const QStringList& lines = round % 2 == 0 ? tricky : vocabulary;
            const SmallLog log(RandomTrips(random, lines), names);
            const RecordList trips = log.Trips();
            const LogContext context = ContextOf(log);
            for (const GroupingTitle& each : Groupings()) {
                const auto members = Members(trips, each.grouping, context);
                const auto groups = GroupTrips(trips, each.grouping, context);
                QCOMPARE(groups.size(), members.size());
                for (const TripGroup& group : groups) {
                    const Query query(group.query);
                    QVERIFY2(query.Faults().empty() && query.HasTerms(), group.query.c_str());
                    TripFigures figures;
                    std::set<std::size_t> found;
                    for (std::size_t trip = 0; trip < trips.size(); ++trip) {
                        if (query.Matches(log.Searched()[trip])) {
                            found.insert(trip);
                            figures.Add(FiguresOf(trips[trip]));
                        }
                    }
                    QVERIFY2(found == members.at(Fold(group.name)), group.query.c_str());
                    QVERIFY2(figures == TripFigures(group), group.query.c_str());
                    ++checked;
                }
            }
        }
        QVERIFY(checked > 5000);
    }

    void query_ofAnyMoonText_findsItsGroup()
    {
        Texts phases{"",     "-0",       "full", "waxing", "waning 20", "3.5",         "45%",
                     "-0.4", "97 or so", "500",  "-500",   "06:30",     "waxing 96.5", "about -5"};
        for (int percent = -100; percent <= 100; ++percent) {
            phases.push_back(std::to_string(percent));
        }
        const SmallLog log(Trips(EntryField::MoonPhase, phases), {});
        int trips = 0;
        for (const TripGroup& group : GroupTrips(log.Trips(), Grouping::Moon, {})) {
            const std::string keys = log.Matching(group.query);
            QCOMPARE(static_cast<int>(std::count(keys.begin(), keys.end(), ' ')) + 1, group.trips);
            trips += group.trips;
        }
        QCOMPARE(static_cast<std::size_t>(trips), phases.size());
    }

    void moonPhases_areOctants()
    {
        Texts phases;
        for (const int percent : {0, 3, 4, 30, 31, 69, 70, 96, 97, 100}) {
            phases.push_back(std::to_string(percent));
            phases.push_back(std::to_string(-percent - (percent == 0 ? 1 : 0)));
        }
        Texts names;
        const SmallLog log(Trips(EntryField::MoonPhase, phases), {});
        for (const TripGroup& group : GroupTrips(log.Trips(), Grouping::Moon, {})) {
            names.push_back(group.name + " " + std::to_string(group.trips));
        }
        QCOMPARE(names, (Texts{"New moon 4", "Waxing crescent 2", "First quarter 2", "Waxing gibbous 2",
                               "Full moon 4", "Waning gibbous 2", "Last quarter 2", "Waning crescent 2"}));
    }

    void seasons_areNamedByTheHemisphere()
    {
        const std::vector<Values> trips{{{StartDate, "2024-01-05"}, {LocNo, "1"}},
                                        {{StartDate, "2024-07-05"}, {LocNo, "2"}},
                                        {{StartDate, "2024-04-05"}, {LocNo, "3"}}};
        const SmallLog log(trips, {});
        const auto names = [&](const Positions& positions) {
            LogContext context;
            context.positions = positions;
            std::string text;
            for (const TripGroup& group : GroupTrips(log.Trips(), Grouping::Season, context)) {
                text += (text.empty() ? "" : "; ") + group.name;
            }
            return text;
        };
        const auto plain = "December to February; March to May; June to August"s;
        QCOMPARE(names({}), plain);
        QCOMPARE(names({{"1", {-33, 151}}, {"2", {67, 14}}}), plain);
        QCOMPARE(names({{"1", {0, 10}}}), plain);
        QCOMPARE(names({{"1", {-33, 151}}, {"9", {67, 14}}}), // no trip to 9
                 "Summer (December to February); Autumn (March to May); Winter (June to August)"s);
        QCOMPARE(names({{"1", {33, 151}}, {"2", {67, 14}}}),
                 "Winter (December to February); Spring (March to May); Summer (June to August)"s);
    }

    void figures_countWhatCanBeRead();
    void nameWithQuotationMark_isFoundByItsLongestPart();
};

void tst_TripGroups::figures_countWhatCanBeRead()
{
    std::vector<Values> trips{
        Trip("2024-10-05", "2024-10-05", "05:30", "10:45"), // 5:15
        Trip("2024-10-05", "2024-10-06", "22:00", "01:30"), // 3:30
        Trip("2024-10-05", "2024-10-07", "06:00", "06:00"), // 48:00
        Trip("2024-10-05", "2024-10-07", "06:00", "06:01"), // long
        Trip("2024-10-05", "", "06:00", "7:00"),            // 1:00
        Trip("2024-10-05", "soon", "06:00", "06:00"),       // 0:00
        Trip("2024-10-05", "2024-10-05", "06:00", "05:00"), // negative
        Trip("2024-10-05", "2024-10-04", "06:00", "07:00"), // negative
        Trip("2024-10-05", "2024-10-05", "", "07:00"),
        Trip("2024-10-05", "2024-10-05", "06:00", "24:00"),
        Trip("5.10.2024", "2024-10-05", "06:00", "07:00"),
    };
    trips[0][FishCaught] = "Bream~CL~Squid";
    trips[1][FishCaught] = " ~CL~ ";
    trips[2][StartDate] = "2024-11-1"; // after its end
    for (std::size_t trip = 0; trip < 6; ++trip) {
        trips[trip][FishAction] = std::to_string(trip); // the last two have no word
    }
    const SmallLog log(trips, {});
    TripFigures figures;
    for (const RecordView& trip : log.Trips()) {
        figures.Add(FiguresOf(trip));
    }
    QCOMPARE(figures.trips, 11);
    QCOMPARE(figures.minutes, std::int64_t{5 * 60 + 15 + 3 * 60 + 30 + 60});
    QCOMPARE(figures.Hours(), 9.75);
    QCOMPARE(figures.longTrips, 1);
    QCOMPARE(figures.untimedTrips, 6);
    QCOMPARE(figures.tripsWithoutCatch, 10);
    QCOMPARE(figures.actions, (std::array{1, 1, 1, 1}));
    QCOMPARE(figures.withoutAction, 7);
    QCOMPARE(figures.RatedTrips(), 4);
    QCOMPARE(figures.Successes(), 2);
    QCOMPARE(figures.lastDate, "2024-11-01"s);
    QVERIFY(!figures.IsFew());
}

void tst_TripGroups::nameWithQuotationMark_isFoundByItsLongestPart()
{
    QCOMPARE(Groups(Trips(BaitUsed, {"Jig 4\" long", "5\" long tail", "\""}), Grouping::Bait),
             (Texts{"\" (1): bait:\"\"", "5\" long tail (1): bait:\" long tail\"", "Jig (1): bait:=Jig"}));
}

void tst_TripGroups::groups_areInNaturalOrder_data()
{
    QTest::addColumn<std::vector<Values>>("trips");
    QTest::addColumn<Grouping>("grouping");
    QTest::addColumn<Texts>("groups");
    const auto row = [](const char* name, const std::vector<Values>& trips, Grouping grouping,
                        const Texts& groups) { QTest::newRow(name) << trips << grouping << groups; };
    const auto dates = Trips(StartDate, {"2025-11-02", "", "2024-02-29", "2024-11-30", "1.2.2024"});
    row("no trips", {}, Grouping::Month, {});
    row("month", dates, Grouping::Month,
        {"February (1): month:february", "November (2): month:november", "No date (2): -month:1..12"});
    row("year", dates, Grouping::Year,
        {"2024 (2): date:>=2024 -date:>=2025", "2025 (1): date:>=2025 -date:>=2026",
         "No date (2): -date:>=0001"});
    row("first and last year", Trips(StartDate, {"9999-12-31", "0001-01-01"}), Grouping::Year,
        {"0001 (1): date:>=0001 -date:>=0002", "9999 (1): date:>=9999"});
    row("season", dates, Grouping::Season,
        {"December to February (1): month:december..february",
         "September to November (2): month:september..november", "No date (2): -month:1..12"});
    row("hour", Trips(StartTime, {"23:59", "6:00", "06:59", "never", ""}), Grouping::StartHour,
        {"06:00 to 06:59 (2): start:06:00..06:59", "23:00 to 23:59 (1): start:23:00..23:59",
         "No time (2): -start:00:00..23:59"});
    row("tide", Trips(TideStart, {"3", "1", "", "3", "01"}), Grouping::TideStart,
        {"Run Out (1): tidestart:\"run out\"", "Run In (2): tidestart:\"run in\"",
         "Not set (2): -tidestart:top|\"run out\"|bottom|\"run in\""});
    row("wind", Trips(WindDir, {"1", "0", "1", "9"}), Grouping::WindDirection,
        {"N (1): wind:n", "NE (2): wind:ne", "Not set (1): -wind:n|ne|e|se|s|sw|w|nw"});
    row("clarity", Trips(WaterClarity, {"0"}), Grouping::Water, {"Clear (1): clarity:clear"});
    row("pressure", Trips(AirPressure, {"1", "0"}), Grouping::PressureTrend,
        {"Rising (1): trend:rising", "Falling (1): trend:falling"});
    row("place", Trips(LocNo, {"1", "2", "3", "9", "", "4"}), Grouping::Place,
        {"Reef, clear (2): place:==\"Reef, clear\"", "Old wharf (1): place:==\"Old wharf\"",
         "Reef (1): place:==Reef", "Unknown place (2): -place:"});
    row("caught",
        Trips(FishCaught,
              {"Tailor 5~CL~bream x 3~CL~BREAM 2", "br\u00E9ams", "TAILOR (small)", " ", "Tench"}),
        Grouping::Caught,
        {"Bream (2): caught:=bream|=br\u00E9ams", "Tailor (2): caught:=Tailor", "Tench (1): caught:=Tench",
         "None recorded (1): -caught:"});
    row("subject of several groups",
        Trips(BaitUsed, {"Squid, strips", "Squid", "squid x 3", "SQUID, strips"}), Grouping::Bait,
        {"Squid (2): bait:==Squid|==\"squid x 3\"", "Squid, strips (2): bait:==\"Squid, strips\""});
    row("a number", Trips(Method, {"18", "06:30", "18 rods"}), Grouping::Method,
        {"06:30 (1): method:==\"06:30\"", "18 (1): method:==18", "18 rods (1): method:=\"18 rods\""});
}

TEST_CLASS(tst_TripGroups)
#include "tst_TripGroups.moc"
