// The interval of a proportion.

#include "TestTable.h"
#include "analysis/Proportion.h"
#include "support/TestClass.h"

#include <cmath>

using namespace Tarno;

class tst_Proportion : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void interval_isThatOfSciPy()
    {
        const auto rows = TestTable("intervals.tsv");
        QVERIFY(rows.size() > 90);
        for (const QStringList& row : rows) {
            const auto interval = WilsonInterval(row.at(0).toInt(), row.at(1).toInt());
            QVERIFY(interval);
            QVERIFY2(std::abs(interval->low - row.at(2).toDouble()) < 1e-6, qPrintable(row.join(u' ')));
            QVERIFY2(std::abs(interval->high - row.at(3).toDouble()) < 1e-6, qPrintable(row.join(u' ')));
        }
    }

    void interval_ofNoTrials_isAbsent() { QVERIFY(!WilsonInterval(0, 0)); }

    void interval_staysBetween0And1AndContainsTheProportion()
    {
        for (int trials = 1; trials <= 200; ++trials) {
            for (int successes = 0; successes <= trials; ++successes) {
                const auto interval = WilsonInterval(successes, trials);
                const double part = static_cast<double>(successes) / trials;
                QVERIFY(0 <= interval->low && interval->low <= part + 1e-12);
                QVERIFY(part - 1e-12 <= interval->high && interval->high <= 1);
            }
        }
    }
};

TEST_CLASS(tst_Proportion)
#include "tst_Proportion.moc"
