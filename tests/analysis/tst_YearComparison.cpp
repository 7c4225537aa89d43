// The figures of a year beside those of the year before.

#include "analysis/YearComparison.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <QtTest>

using namespace Tarno;

class tst_YearComparison : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void figures_areInWords()
    {
        YearSummary summary{.year = 2026, .figures = {}, .before = {}};
        summary.figures.trips = 12;
        summary.figures.minutes = 15 * 41;
        summary.figures.days = 13;
        summary.figures.places = 3;
        summary.figures.tripsWithoutCatch = 2;
        summary.figures.actions = {1, 2, 3, 4};
        summary.figures.withoutAction = 2;
        summary.figures.species = {{"Squid", 5}, {"Tailor", 1}};
        summary.before.trips = 1;
        summary.before.actions = {0, 0, 0, 1};
        summary.before.species = {{"Bream", 1}, {"squid", 1}};
        std::vector<std::string> lines;
        for (const auto& figures : {CompareYears(summary), CompareSpecies(summary)}) {
            for (const ComparedFigure& figure : figures) {
                lines.push_back(figure.caption + ": " + figure.year + ", " + figure.before);
            }
        }
        QCOMPARE(lines, (std::vector<std::string>{
                            "Trips: 12, 1", "Hours: 10.3, 0.0", "Days on the water: 13, 0", "Places: 3, 0",
                            "Trips without a catch: 2, 0", "Trips with the action Hot!: 4, 1",
                            "Trips with the action Good: 3, 0", "Trips with the action Fair: 2, 0",
                            "Trips with the action Slow: 1, 0", "Trips without an action: 2, 0",
                            "Trips with Squid: 5, 1", "Trips with Tailor: 1, 0", "Trips with Bream: 0, 1"}));
    }
};

TEST_CLASS(tst_YearComparison)
#include "tst_YearComparison.moc"
