// Every figure of the statistics of the sample log, compared with scripts/sample-oracle.py.

#include "SampleRecords.h"
#include "TestTable.h"
#include "analysis/ForecastCheck.h"
#include "analysis/Query.h"
#include "analysis/TripGroups.h"
#include "analysis/YearSummary.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <pugixml.hpp>

#include <algorithm>
#include <map>

using namespace Tarno;

namespace
{

QStringList Cells(const TripFigures& figures)
{
    QStringList cells;
    for (const auto number : {std::int64_t{figures.trips}, figures.minutes, std::int64_t{figures.longTrips},
                              std::int64_t{figures.untimedTrips}, std::int64_t{figures.tripsWithoutCatch},
                              std::int64_t{figures.actions[0]}, std::int64_t{figures.actions[1]},
                              std::int64_t{figures.actions[2]}, std::int64_t{figures.actions[3]},
                              std::int64_t{figures.withoutAction}}) {
        cells += QString::number(number);
    }
    return cells << QString::fromStdString(figures.lastDate);
}

template <typename Numbers>
QString Joined(const Numbers& numbers)
{
    QStringList texts;
    for (const int number : numbers) {
        texts += QString::number(number);
    }
    return texts.join(QLatin1Char(' '));
}

LineItems PickList(const char* name)
{
    QFile file(QStringLiteral(TARNO_SHIPPED_DATA "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qFatal("cannot read %s", name);
    }
    std::vector<std::string> items;
    while (!file.atEnd()) {
        items.push_back(file.readLine().trimmed().toStdString());
    }
    return LineItems(items);
}

} // namespace

class tst_SampleStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        m_trips = SampleRecords(m_tripFile, "tarno.xml");
        const RecordList places = SampleRecords(m_placeFile, "location.xml");
        m_context = {PlaceNames(places), PositionsOf(places), PickList("Species.txt"), PickList("Bait.txt"),
                     PickList("Methods.txt")};
    }

    void groups_haveTheFiguresOfTheOracle()
    {
        std::vector<QStringList> rows;
        for (const auto& [grouping, title] : Groupings()) {
            for (const TripGroup& group : GroupTrips(m_trips, grouping, m_context)) {
                rows.push_back(QStringList{QString::fromUtf8(title.data(), static_cast<int>(title.size())),
                                           QString::fromStdString(group.name)} +
                               Cells(group));
            }
        }
        std::map<QString, std::vector<QStringList>> found;
        for (const QStringList& row : rows) {
            found[row.at(0)].push_back(row);
        }
        std::map<QString, std::vector<QStringList>> expected;
        for (const QStringList& row : TestTable("sample-groups.tsv")) {
            expected[row.at(0)].push_back(row);
        }
        QCOMPARE(found.size(), Groupings().size());
        for (const auto& [title, groups] : expected) {
            QCOMPARE(found[title].size(), groups.size());
            for (std::size_t group = 0; group < groups.size(); ++group) {
                QCOMPARE(found[title][group], groups[group]);
            }
        }
    }

    void queries_findTheGroups()
    {
        std::vector<SearchedTrip> searched;
        for (const RecordView& trip : m_trips) {
            searched.emplace_back(trip, m_context.places);
        }
        for (const auto& [grouping, title] : Groupings()) {
            for (const TripGroup& group : GroupTrips(m_trips, grouping, m_context)) {
                const Query query(group.query);
                QVERIFY2(query.Faults().empty(), group.query.c_str());
                const auto found =
                    std::count_if(searched.begin(), searched.end(),
                                  [&](const SearchedTrip& trip) { return query.Matches(trip); });
                QVERIFY2(found == group.trips, group.query.c_str());
            }
        }
    }

    void checks_haveTheCountsOfTheOracle()
    {
        std::vector<QStringList> rows;
        for (const ForecastCheck& check : CheckForecasts(m_trips)) {
            int row = 0;
            for (const ForecastCheck::Row& each : check.rows) {
                rows.push_back(QStringList{QString::fromStdString(check.title), QString::number(row++)} +
                               Joined(each.actions).split(QLatin1Char(' ')));
            }
        }
        QCOMPARE(rows, TestTable("sample-checks.tsv"));
    }

    void years_haveTheFiguresOfTheOracle()
    {
        std::vector<QStringList> rows;
        for (const int year : YearsOf(m_trips)) {
            const YearFigures figures = SummarizeYear(m_trips, year, m_context).figures;
            QStringList months;
            for (const YearFigures::MonthActions& month : figures.months) {
                months += Joined(month);
            }
            QStringList best;
            for (const BestTrip& trip : figures.best) {
                best += QString::fromStdString(trip.key);
            }
            QStringList species;
            for (const CountedName& each : figures.species) {
                species += QString::fromStdString(each.name) + QLatin1Char('=') + QString::number(each.trips);
            }
            rows.push_back(QStringList{QString::number(year)} + Cells(figures) +
                           QStringList{QString::number(figures.days), QString::number(figures.places),
                                       months.join(QLatin1Char(';')), best.join(QLatin1Char(' ')),
                                       species.join(QLatin1Char(';'))});
        }
        QCOMPARE(rows, TestTable("sample-years.tsv"));
    }

private:
    pugi::xml_document m_tripFile;
    pugi::xml_document m_placeFile;
    RecordList m_trips;
    LogContext m_context;
};

TEST_CLASS(tst_SampleStatistics)
#include "tst_SampleStatistics.moc"
