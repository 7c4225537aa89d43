// Kendall's tau-b of tables, and its probability.

#include "TestTable.h"
#include "analysis/RankCorrelation.h"
#include "support/TestClass.h"

#include <algorithm>
#include <cmath>

using namespace Tarno;

namespace
{

std::vector<int> Numbers(const QString& text)
{
    std::vector<int> numbers;
    for (const QString& number : text.split(QLatin1Char(' '))) {
        numbers.push_back(number.toInt());
    }
    return numbers;
}

std::vector<RankedRow> Table(const QString& levels, const QString& rows)
{
    const std::vector<int> ranks = Numbers(levels);
    std::vector<RankedRow> table;
    for (const QString& row : rows.split(QLatin1Char(';'))) {
        table.push_back({ranks.at(table.size()), Numbers(row)});
    }
    return table;
}

} // namespace

class tst_RankCorrelation : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void randomTables_haveTheTauOfSciPy()
    {
        const auto rows = TestTable("correlations.tsv");
        QVERIFY(rows.size() > 30);
        for (const QStringList& row : rows) {
            const auto found = KendallTauB(Table(row.at(0), row.at(1)));
            QVERIFY(found);
            QVERIFY2(std::abs(found->tau - row.at(2).toDouble()) < 1e-11, qPrintable(row.join(u' ')));
        }
    }

    /// The two estimates of a probability p from n and m permutations differ by a standard deviation of
    /// sqrt(p (1 - p) (1 / n + 1 / m)). Here they may differ by four of them, and by the permutation that
    /// counts the observed table.
    void randomTables_haveTheProbabilityOfManyPermutations()
    {
        for (const QStringList& row : TestTable("correlations.tsv")) {
            const double expected = row.at(3).toDouble();
            const double permutations = row.at(4).toDouble();
            const double p = std::max(expected, 1 / 2000.0);
            const double deviation =
                std::sqrt(p * (1 - p) * (1 / 1999.0 + (permutations > 0 ? 1 / permutations : 0)));
            const auto found = KendallTauB(Table(row.at(0), row.at(1)));
            QVERIFY2(std::abs(found->probability - expected) <= 4 * deviation + 1 / 2000.0,
                     qPrintable(row.join(u' ') + QString::number(found->probability, 'f', 4)));
        }
    }

    /// These numbers must not depend on the platform.
    void probability_isThatOfTheFixedSeed()
    {
        const auto found = KendallTauB({{0, {6, 3, 2, 1}}, {1, {2, 5, 4, 2}}, {2, {1, 3, 5, 4}}});
        QCOMPARE(qRound(found->probability * 2000), 12);
        QCOMPARE(KendallTauB({{0, {6, 3, 2, 1}}, {1, {2, 5, 4, 2}}, {2, {1, 3, 5, 4}}})->probability,
                 found->probability);
    }

    void orderedAndReversedTables_haveTau1()
    {
        QCOMPARE(KendallTauB({{0, {5, 0}}, {1, {0, 5}}})->tau, 1.0);
        QCOMPARE(KendallTauB({{0, {0, 5}}, {1, {5, 0}}})->tau, -1.0);
        QVERIFY(KendallTauB({{0, {5, 0}}, {1, {0, 5}}})->probability < 0.05);
    }

    void rowsOfOneLevel_countAsOneRow()
    {
        const auto apart = KendallTauB({{1, {1, 4}}, {0, {3, 1}}, {1, {0, 6}}, {0, {2, 2}}});
        const auto together = KendallTauB({{0, {5, 3}}, {1, {1, 10}}});
        QCOMPARE(apart->tau, together->tau);
        QCOMPARE(apart->probability, together->probability);
    }

    void equalRowsOrColumns_haveNone()
    {
        QVERIFY(!KendallTauB({}));
        QVERIFY(!KendallTauB({{0, {0, 0}}, {1, {0, 0}}}));
        QVERIFY(!KendallTauB({{0, {3, 4}}, {1, {0, 0}}}));
        QVERIFY(!KendallTauB({{0, {3, 4}}, {0, {2, 5}}}));
        QVERIFY(!KendallTauB({{0, {0, 4}}, {1, {0, 5}}}));
    }
};

TEST_CLASS(tst_RankCorrelation)
#include "tst_RankCorrelation.moc"
