// Trips on days like a given one.

#include "SmallLog.h"
#include "analysis/Similarity.h"
#include "support/TestClass.h"

#include <cmath>
#include <random>

using namespace Tarno;

using namespace EntryField;
using namespace std::string_literals;
using std::chrono::year;
using std::chrono::year_month_day;

namespace
{

using Texts = std::vector<std::string>;

const Positions positions{{"1", {-33.6, 151.3}}, {"2", {-33.9, 151.2}}, {"3", {67.2, 14.6}}};

Conditions Day(year_month_day date, double moonAge = 0.25, int rating = 2, const std::string& place = "1")
{
    return {.date = date, .moonAge = moonAge, .rating = rating, .place = place};
}

double DistanceOf(const Conditions& wanted, const Conditions& trip)
{
    return RankSimilar(wanted, {trip}, positions, 1).front().distance;
}

Texts ReasonsOf(const Conditions& wanted, const Conditions& trip)
{
    return RankSimilar(wanted, {trip}, positions, 1).front().reasons;
}

bool IsNear(double left, double right)
{
    return std::abs(left - right) < 0.005;
}

} // namespace

class tst_Similarity : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void equalConditions_haveNoDistance()
    {
        QCOMPARE(DistanceOf(Day(year(2026) / 11 / 22), Day(year(2025) / 11 / 22)), 0.0);
        QCOMPARE(ReasonsOf(Day(year(2026) / 11 / 22), Day(year(2024) / 11 / 22)),
                 (Texts{"same place", "moon waxing 50 %", "1 day apart in season",
                        "rated Good"})); // 2024 is a leap year
    }

    void oppositeConditions_haveTheGreatestDistance()
    {
        QVERIFY(IsNear(DistanceOf(Day(year(2026) / 1 / 1, 0.0, 0, "1"), Day(year(2026) / 7 / 2, 0.5, 3, "3")),
                       1));
        QCOMPARE(ReasonsOf(Day(year(2026) / 1 / 1, 0.0, 0, "1"), Day(year(2026) / 7 / 2, 0.5, 3, "3")),
                 Texts());
    }

    /// Each part alone, with its share of the weights 2 + 2 + 1 + 2.
    void parts_haveTheirWeights()
    {
        const Conditions wanted = Day(year(2026) / 1 / 1);
        QVERIFY(IsNear(DistanceOf(wanted, Day(year(2025) / 7 / 2)), 2.0 / 7));
        QVERIFY(IsNear(DistanceOf(wanted, Day(year(2026) / 1 / 1, 0.75)), 2.0 / 7));
        QVERIFY(IsNear(DistanceOf(wanted, Day(year(2026) / 1 / 1, 0.25, 1)), 1.0 / 3 / 7));
        QVERIFY(IsNear(DistanceOf(wanted, Day(year(2026) / 1 / 1, 0.25, 2, "3")), 2.0 / 7));
        QVERIFY(IsNear(DistanceOf(wanted, Day(year(2026) / 1 / 1, 0.25, 2, "2")), 1.0 / 7));  // near
        QVERIFY(IsNear(DistanceOf(wanted, Day(year(2026) / 1 / 1, 0.25, 2, "99")), 2.0 / 7)); // unknown
    }

    void seasonAndMoon_areCircles()
    {
        QVERIFY(DistanceOf(Day(year(2026) / 1 / 2), Day(year(2025) / 12 / 30)) <
                DistanceOf(Day(year(2026) / 1 / 2), Day(year(2025) / 1 / 10)));
        QVERIFY(DistanceOf(Day(year(2026) / 1 / 1, 0.98), Day(year(2026) / 1 / 1, 0.02)) <
                DistanceOf(Day(year(2026) / 1 / 1, 0.98), Day(year(2026) / 1 / 1, 0.90)));
    }

    void codes_countOnlyIfWanted()
    {
        Conditions trip = Day(year(2026) / 1 / 1);
        trip.codes = {{TideStart, 0}, {WindDir, 0}, {Weather, 0}};
        Conditions wanted = Day(year(2026) / 1 / 1);
        QCOMPARE(DistanceOf(wanted, trip), 0.0);
        wanted.codes = {{TideStart, 3}}; // a step in the circle of four, two are the most
        QVERIFY(IsNear(DistanceOf(wanted, trip), 0.5 / 8));
        wanted.codes = {{WindDir, 7}}; // a step in the circle of eight
        QVERIFY(IsNear(DistanceOf(wanted, trip), 0.25 / 8));
        wanted.codes = {{Weather, 6}}; // from end to end
        QVERIFY(IsNear(DistanceOf(wanted, trip), 1.0 / 8));
        wanted.codes = {{WaterClarity, 1}}; // unknown counts half
        QVERIFY(IsNear(DistanceOf(wanted, trip), 0.5 / 8));
        wanted.codes = {{TideStart, 0}, {Weather, 0}};
        QCOMPARE(ReasonsOf(wanted, trip), (Texts{"same place", "moon waxing 50 %", "same day of the year",
                                                 "rated Good", "Top", "Stormy"}));
    }

    void unknownValuesOfATrip_countHalf()
    {
        QVERIFY(IsNear(DistanceOf(Day(year(2026) / 1 / 1), {.place = "1"}), 0.5 * 5 / 7));
        QCOMPARE(ReasonsOf(Day(year(2026) / 1 / 1), {.place = "1"}), Texts{"same place"});
    }

    void nothingWanted_isEqualToEverything() { QCOMPARE(DistanceOf({}, Day(year(2026) / 1 / 1)), 0.0); }

    void nearPlaces_haveTheirDistanceAsReason()
    {
        QCOMPARE(ReasonsOf(Day(year(2026) / 1 / 1), Day(year(2025) / 7 / 1, 0.75, 0, "2")),
                 Texts{"35 km away"});
    }

    void distanceOnTheEarth_isGreatCircle()
    {
        QVERIFY(std::abs(DistanceInKilometres({0, 0}, {0, 180}) - 20015) < 1);
        QVERIFY(std::abs(DistanceInKilometres({90, 0}, {-90, 0}) - 20015) < 1);
        QVERIFY(std::abs(DistanceInKilometres({52.5, 13.4}, {48.85, 2.35}) - 878) < 5); // Berlin to Paris
        QCOMPARE(DistanceInKilometres({10, 20}, {10, 20}), 0.0);
    }

    void moonAge_runsFromNewToNew()
    {
        QCOMPARE(MoonAge(0, true), 0.0);
        QCOMPARE(MoonAge(50, true), 0.25);
        QCOMPARE(MoonAge(100, true), 0.5);
        QCOMPARE(MoonAge(100, false), 0.5);
        QCOMPARE(MoonAge(50, false), 0.75);
        QCOMPARE(MoonAge(130, false), 0.5);
    }

    void conditionsOfTrip_areRead()
    {
        const SmallLog log({{{StartDate, "2026-01-02"},
                             {LocNo, "2"},
                             {MoonPhase, "-40"},
                             {Prediction, "3"},
                             {TideStart, "1"},
                             {WindDir, "7"},
                             {Weather, "9"},
                             {WaterClarity, ""}},
                            {{StartDate, "2.1.2026"}, {MoonPhase, "half"}, {Prediction, "best"}},
                            {{MoonPhase, "0"}},
                            {{MoonPhase, "-0"}}},
                           {});
        std::vector<Conditions> trips;
        for (const RecordView& trip : log.Trips()) {
            trips.push_back(ConditionsOf(trip));
        }
        QVERIFY(trips[0].date == year_month_day(year(2026) / 1 / 2));
        QCOMPARE(trips[0].moonAge.value(), 0.8);
        QCOMPARE(trips[0].rating.value(), 3);
        QCOMPARE(trips[0].place, "2"s);
        QVERIFY(trips[0].codes == (std::map<EntryField::Position, int>{{TideStart, 1}, {WindDir, 7}}));
        QVERIFY(!trips[1].date && !trips[1].moonAge && !trips[1].rating && trips[1].codes.empty());
        QCOMPARE(trips[2].moonAge.value(), 0.0);
        QCOMPARE(trips[3].moonAge.value(), 1.0);
    }

    void ranking_isByDistanceThenOrder()
    {
        std::mt19937 random(20261122);
        std::vector<Conditions> trips;
        for (int trip = 0; trip < 200; ++trip) {
            trips.push_back(Day(year(2020 + trip % 6) / (1 + random() % 12) / (1 + random() % 28),
                                static_cast<double>(random() % 20) / 20, static_cast<int>(random() % 4),
                                std::to_string(1 + random() % 3)));
        }
        const Conditions wanted = Day(year(2026) / 11 / 22);
        const auto all = RankSimilar(wanted, trips, positions, trips.size());
        QCOMPARE(all.size(), trips.size());
        for (std::size_t rank = 1; rank < all.size(); ++rank) {
            QVERIFY(all[rank - 1].distance < all[rank].distance ||
                    (all[rank - 1].distance == all[rank].distance && all[rank - 1].index < all[rank].index));
            QVERIFY(all[rank].distance >= 0 && all[rank].distance <= 1);
        }
        const auto best = RankSimilar(wanted, trips, positions, 10);
        QCOMPARE(best.size(), std::size_t(10));
        for (std::size_t rank = 0; rank < best.size(); ++rank) {
            QCOMPARE(best[rank].index, all[rank].index);
        }
    }

    void fewOrNoTrips_areRanked()
    {
        QVERIFY(RankSimilar(Day(year(2026) / 1 / 1), {}, positions, 10).empty());
        QCOMPARE(RankSimilar(Day(year(2026) / 1 / 1), {Day(year(2026) / 1 / 1)}, positions, 10).size(),
                 std::size_t(1));
    }

    void positions_areReadWherePossible()
    {
        pugi::xml_document document;
        document.load_string("<data><l><n>1</n><a>A</a><d/><d/><d/><v>-33.5</v><v>151.2</v></l>"
                             "<l><n>2</n><a>B</a><d/><d/><d/><v>north</v><v>1</v></l><l><n>3</n></l></data>");
        RecordList locations;
        for (const pugi::xml_node& node : document.first_child().children()) {
            locations.emplace_back(node);
        }
        const Positions read = PositionsOf(locations);
        QCOMPARE(read.size(), std::size_t(1));
        QCOMPARE(read.at("1").latitude, -33.5);
        QCOMPARE(read.at("1").longitude, 151.2);
    }
};

TEST_CLASS(tst_Similarity)
#include "tst_Similarity.moc"
