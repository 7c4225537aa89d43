// The comparison of forecast and conditions with the action, and its result in words.

#include "SmallLog.h"
#include "analysis/ForecastCheck.h"
#include "support/TestClass.h"

using namespace Tarno;
using namespace EntryField;

using namespace std::string_literals;

namespace
{

/// The codes of a field and of the action of a trip.
using Pair = std::pair<const char*, const char*>;
using Pairs = std::vector<Pair>;

enum Relation : std::size_t { Rating, Moon, Tide, Pressure };

ForecastCheck Checked(Position field, Relation relation, const Pairs& pairs)
{
    std::vector<Values> trips;
    for (const auto& [value, action] : pairs) {
        trips.push_back({{field, value}, {FishAction, action}});
    }
    const SmallLog log(trips, {});
    return CheckForecasts(log.Trips()).at(relation);
}

std::string Sentence(Position field, Relation relation, const Pairs& pairs)
{
    return Checked(field, relation, pairs).sentence;
}

/// Returns `count` trips that take turns.
Pairs Repeated(const Pairs& pairs, std::size_t count)
{
    Pairs repeated;
    while (repeated.size() < count) {
        repeated.push_back(pairs[repeated.size() % pairs.size()]);
    }
    return repeated;
}

const Pairs ordered{{"0", "0"}, {"1", "1"}, {"2", "2"}, {"3", "3"}};
const Pairs reversed{{"0", "3"}, {"1", "2"}, {"2", "1"}, {"3", "0"}};
const Pairs independent{{"0", "0"}, {"0", "1"}, {"0", "2"}, {"0", "3"}, {"1", "0"}, {"1", "1"},
                        {"1", "2"}, {"1", "3"}, {"2", "0"}, {"2", "1"}, {"2", "2"}, {"2", "3"},
                        {"3", "0"}, {"3", "1"}, {"3", "2"}, {"3", "3"}};

} // namespace

class tst_ForecastCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void fewTrips_tellNothing_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<std::string>("sentence");
        const auto row = [](int count, const std::string& have) {
            QTest::addRow("%d", count)
                << count << "Too few trips to tell: " + have + " both a rating and an action.";
        };
        row(0, "none has");
        row(1, "1 has");
        row(4, "4 have");
        row(5, "5 have");
        row(9, "9 have");
    }

    void fewTrips_tellNothing()
    {
        QFETCH(int, count);
        const ForecastCheck check =
            Checked(Prediction, Rating, Repeated(ordered, static_cast<std::size_t>(count)));
        QTEST(check.sentence, "sentence");
        QCOMPARE(check.trips, count);
        QVERIFY(!check.correlation);
    }

    void tripsWithoutOneOfTheValues_doNotCount()
    {
        Pairs pairs = Repeated(ordered, 9);
        pairs.insert(pairs.end(), {{"", "1"}, {"1", ""}, {"4", "1"}, {"1", "9"}, {"", ""}});
        QCOMPARE(Checked(Prediction, Rating, pairs).trips, 9);
    }

    void orderedTrips_areConnected()
    {
        for (const std::size_t count : {std::size_t{10}, std::size_t{30}}) {
            const ForecastCheck check = Checked(Prediction, Rating, Repeated(ordered, count));
            QCOMPARE(check.correlation->tau, 1.0);
            QCOMPARE(check.sentence, "With " + std::to_string(count) +
                                         " trips, better ratings went with better action; chance alone would "
                                         "do this in fewer than 1 of 100 logs.");
        }
    }

    void reversedTrips_areConnected()
    {
        QCOMPARE(Sentence(Prediction, Rating, Repeated(reversed, 30)),
                 "With 30 trips, better ratings went with worse action; chance alone would do this in fewer "
                 "than 1 of 100 logs."s);
    }

    void independentTrips_areNotConnected()
    {
        const ForecastCheck check = Checked(Prediction, Rating, Repeated(independent, 32));
        QCOMPARE(check.correlation->tau, 0.0);
        QCOMPARE(check.sentence, "With 32 trips, no connection between rating and action is visible; chance "
                                 "alone would show as much in about 100 of 100 logs."s);
    }

    /// By the hypergeometric distribution, the probabilities are 20.6 and 2.3 percent. The standard
    /// deviations of the permutation test are 0.9 and 0.3 percent.
    void weakConnections_areStatedAsWhatTheyAre()
    {
        const Pairs rising{{"1", "0"}, {"1", "0"}, {"1", "0"}, {"1", "0"}, {"1", "2"},
                           {"0", "0"}, {"0", "2"}, {"0", "2"}, {"0", "2"}, {"0", "2"}};
        QCOMPARE(Sentence(AirPressure, Pressure, rising),
                 "With 10 trips, no connection between the pressure trend and action is visible; chance "
                 "alone would show as much in about 20 of 100 logs."s);
        QCOMPARE(
            Sentence(AirPressure, Pressure, Repeated(rising, 20)),
            "With 20 trips, rising pressure went with better action; chance alone would do this in about "
            "2 of 100 logs."s);
    }

    void equalTrips_cannotBeCompared()
    {
        QCOMPARE(Sentence(Prediction, Rating, Repeated({{"1", "0"}, {"1", "2"}}, 10)),
                 "All 10 trips have the same rating, so there is nothing to compare."s);
        QCOMPARE(Sentence(Prediction, Rating, Repeated({{"1", "2"}, {"3", "2"}}, 12)),
                 "All 12 trips have the same action, so there is nothing to compare."s);
        QCOMPARE(Sentence(Prediction, Rating, Repeated({{"1", "2"}}, 12)),
                 "All 12 trips have the same action, so there is nothing to compare."s);
        QCOMPARE(Sentence(TideStart, Tide, Repeated({{"0", "0"}, {"2", "2"}}, 10)),
                 "All 10 trips have the same kind of tide at the start, slack or running, so there is "
                 "nothing to compare."s);
    }

    void moon_isComparedByItsLitPart()
    {
        const ForecastCheck check = Checked(EntryField::MoonPhase, Moon,
                                            {{"0", "0"},
                                             {"24", "0"},
                                             {"-25", "0"},
                                             {"49", "0"},
                                             {"-50", "0"},
                                             {"74", "0"},
                                             {"75", "0"},
                                             {"-100", "0"},
                                             {"", "0"},
                                             {"full", "0"}});
        for (const ForecastCheck::Row& row : check.rows) {
            QCOMPARE(row.actions, (std::array{2, 0, 0, 0}));
        }
        QCOMPARE(check.sentence, "Too few trips to tell: 8 have both a moon phase and an action."s);
        QCOMPARE(Sentence(EntryField::MoonPhase, Moon, Repeated({{"10", "3"}, {"-90", "0"}}, 20)),
                 "With 20 trips, a fuller moon went with worse action; chance alone would do this in fewer "
                 "than 1 of 100 logs."s);
    }

    void tide_isComparedAsSlackOrRunning()
    {
        const Pairs running{{"0", "0"}, {"1", "2"}, {"2", "0"}, {"3", "2"}};
        const ForecastCheck check = Checked(TideStart, Tide, Repeated(running, 20));
        QCOMPARE(check.rows.size(), std::size_t(4));
        QCOMPARE(check.correlation->tau, 1.0);
        QCOMPARE(check.sentence, "With 20 trips, running water (Run Out or Run In) went with better action; "
                                 "chance alone would do this in fewer than 1 of 100 logs."s);
    }

    void checks_areNamed()
    {
        std::string text;
        for (const ForecastCheck& check : CheckForecasts({})) {
            text += check.title + ":";
            for (const ForecastCheck::Row& row : check.rows) {
                text += " " + row.name + ",";
            }
            text.back() = '\n';
        }
        QCOMPARE(text, "Rating and action: Poor, Fair, Good, Best\n"
                       "Moon and action: 0 to 24 % lit, 25 to 49 % lit, 50 to 74 % lit, 75 to 100 % lit\n"
                       "Tide at the start and action: Top, Run Out, Bottom, Run In\n"
                       "Air pressure and action: Falling, Rising\n"s);
    }
};

TEST_CLASS(tst_ForecastCheck)
#include "tst_ForecastCheck.moc"
