// The figures of a year.

#include "SmallLog.h"
#include "analysis/YearSummary.h"
#include "support/TestClass.h"

using namespace Tarno;
using namespace EntryField;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

Values Trip(const char* start, const char* end, const char* action = "", const char* caught = "",
            const char* place = "")
{
    return {{StartDate, start}, {EndDate, end},       {StartTime, "06:00"}, {EndTime, "08:00"},
            {LocNo, place},     {FishAction, action}, {FishCaught, caught}};
}

YearSummary Summary(const std::vector<Values>& trips, int year, const Texts& places = {})
{
    const SmallLog log(trips, places);
    LogContext context;
    context.places = log.Places();
    context.species = LineItems({"Bream", "Squid"});
    return SummarizeYear(log.Trips(), year, context);
}

Texts Best(const YearFigures& figures)
{
    Texts texts;
    for (const BestTrip& trip : figures.best) {
        texts.push_back(trip.key + ": " + trip.date + ", " + trip.place + ", " + trip.action + ", " +
                        trip.caught);
    }
    return texts;
}

} // namespace

class tst_YearSummary : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void years_areDescending()
    {
        const SmallLog log({Trip("2024-05-06", ""), Trip("2026-01-01", ""), Trip("2024-12-31", "2025-01-02"),
                            Trip("5.6.2023", "2023-06-05"), Trip("", "")},
                           {});
        QCOMPARE(YearsOf(log.Trips()), (std::vector{2026, 2024}));
        QCOMPARE(YearsOf({}), std::vector<int>());
    }

    void figures_areThoseOfTheTripsThatStartInTheYear()
    {
        const std::vector<Values> trips{
            Trip("2023-12-31", "2024-01-02", "3"), Trip("2024-01-01", "2024-01-01", "2", "Bream"),
            Trip("2024-12-30", "2025-01-02", "0"), Trip("2025-02-01", "2025-02-01"),
            Trip("5.6.2024", "2024-06-05", "1")};
        const YearSummary summary = Summary(trips, 2024);
        QCOMPARE(summary.year, 2024);
        QCOMPARE(summary.figures.trips, 2);
        QCOMPARE(summary.figures.Hours(), 2.0);
        QCOMPARE(summary.figures.longTrips, 1);
        QCOMPARE(summary.figures.tripsWithoutCatch, 1);
        QCOMPARE(summary.figures.actions, (std::array{1, 0, 1, 0}));
        QCOMPARE(summary.figures.months[0], (YearFigures::MonthActions{0, 0, 1, 0, 0}));
        QCOMPARE(summary.figures.months[11], (YearFigures::MonthActions{1, 0, 0, 0, 0}));
        QCOMPARE(summary.before.trips, 1);
        QCOMPARE(summary.before.longTrips, 1);
        QCOMPARE(summary.before.months[11], (YearFigures::MonthActions{0, 0, 0, 1, 0}));
        QCOMPARE(Summary(trips, 2025).figures.months[1], (YearFigures::MonthActions{0, 0, 0, 0, 1}));
    }

    void days_areThoseInTheYear()
    {
        const std::vector<Values> trips{Trip("2023-12-31", "2024-01-02"), // 1 and 2 January
                                        Trip("2024-01-02", "2024-01-03"), // and the 3rd
                                        Trip("2024-01-03", "2024-01-01"), // ends before its start
                                        Trip("2024-05-01", "soon"), Trip("2024-12-31", "9999-12-31")};
        QCOMPARE(Summary(trips, 2024).figures.days, 5);
        QCOMPARE(Summary(trips, 2024).before.days, 1);
        QCOMPARE(Summary(trips, 2025).figures.days, 365);
        QCOMPARE(Summary(trips, 2028).figures.days, 366);
        QCOMPARE(Summary(trips, 2028).figures.trips, 0);
    }

    void places_areCountedByName()
    {
        const Texts places{"Reef", "REEF", "Wharf", " "};
        const std::vector<Values> trips{
            Trip("2024-01-01", "", "", "", "1"), Trip("2024-01-02", "", "", "", "2"),
            Trip("2024-01-03", "", "", "", "3"), Trip("2024-01-03", "", "", "", "4"),
            Trip("2024-01-03", "", "", "", "9"), Trip("2023-01-03", "", "", "", "3")};
        QCOMPARE(Summary(trips, 2024, places).figures.places, 2);
        QCOMPARE(Summary(trips, 2024, places).before.places, 1);
    }

    void bestTrips_areHotThenGoodThenNewest()
    {
        const std::vector<Values> trips{Trip("2024-01-01", "", "3", "3 bream~CL~Squid x 4~CL~bream 40", "1"),
                                        Trip("2024-02-01", "", "2"),
                                        Trip("2024-03-01", "", "1"),
                                        Trip("2024-04-01", "", "2", "Tailor 5", "9"),
                                        Trip("2024-05-01", "", "3"),
                                        Trip("2024-06-01", "", "2"),
                                        Trip("2024-07-01", ""),
                                        Trip("2024-08-01", "", "2"),
                                        Trip("2023-08-01", "", "3")};
        const YearSummary summary = Summary(trips, 2024, {"Reef"});
        QCOMPARE(
            Best(summary.figures),
            (Texts{"5: 2024-05-01, , Hot!, ", "1: 2024-01-01, Reef, Hot!, Bream, Squid",
                   "8: 2024-08-01, , Good, ", "6: 2024-06-01, , Good, ", "4: 2024-04-01, , Good, Tailor"}));
        QCOMPARE(Best(summary.before), (Texts{"9: 2023-08-01, , Hot!, "}));
    }

    void species_areCountedOncePerTrip()
    {
        const std::vector<Values> trips{Trip("2024-01-01", "", "", "3 bream~CL~BREAM x 2~CL~Tailor 4"),
                                        Trip("2024-02-01", "", "", "br\u00E9ams~CL~Squid~CL~ "),
                                        Trip("2024-03-01", "", "", "TAILOR, small~CL~albacore"),
                                        Trip("2024-04-01", "", "", "Bream"),
                                        Trip("2023-04-01", "", "", "Bream")};
        Texts names;
        for (const CountedName& species : Summary(trips, 2024).figures.species) {
            names.push_back(species.name + " " + std::to_string(species.trips));
        }
        QCOMPARE(names, (Texts{"Bream 3", "Tailor 2", "albacore 1", "Squid 1"}));
        QCOMPARE(Summary(trips, 2024).before.species.size(), std::size_t(1));
    }

    void yearsOutsideTheCalendar_areEmpty()
    {
        const std::vector<Values> trips{Trip("0001-01-01", "", "2"), Trip("9999-12-31", "", "2")};
        QCOMPARE(Summary(trips, 1).figures.trips, 1);
        QCOMPARE(Summary(trips, 1).before.trips, 0);
        QCOMPARE(Summary(trips, 9999).figures.days, 1);
        QCOMPARE(Summary(trips, 10000).figures.trips, 0);
        QCOMPARE(Summary(trips, 10000).before.trips, 1);
        QCOMPARE(Summary({}, 2024).figures.days, 0);
    }
};

TEST_CLASS(tst_YearSummary)
#include "tst_YearSummary.moc"
