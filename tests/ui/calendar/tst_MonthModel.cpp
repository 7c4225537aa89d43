// The days of a month in weeks.

#include "MonthTest.h"
#include "support/TestClass.h"
#include "ui/calendar/MonthModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using namespace Tarno;

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

namespace
{

constexpr int monday = 1;
constexpr int sunday = 7;

/// A model that shows the month of a day, which is today.
class ShownMonth : public MonthModel
{
public:
    explicit ShownMonth(year_month_day today, int firstDayOfWeek = monday, const TripDays& trips = {},
                        const std::string& place = "1")
        : MonthModel(firstDayOfWeek, nullptr)
    {
        SetMonth(today.year() / today.month(), pittwater, place, trips, today);
    }

    /// Returns the date of a cell, or "-" if it is empty.
    std::string At(int row, int column) const
    {
        const MonthCell* cell = CellAt(index(row, column));
        return cell == nullptr ? "-" : Text(cell->day.date);
    }

    const MonthCell& Cell(year_month_day date) const { return *CellAt(IndexOf(date)); }
};

/// Returns the number of rows with a day of the month.
int Weeks(const MonthModel& month)
{
    int weeks = 0;
    for (int row = 0; row < month.rowCount(); ++row) {
        bool isInMonth = false;
        for (int column = 0; column < month.columnCount(); ++column) {
            const MonthCell* cell = month.CellAt(month.index(row, column));
            isInMonth = isInMonth || (cell != nullptr && cell->isInMonth);
        }
        weeks += isInMonth ? 1 : 0;
    }
    return weeks;
}

} // namespace

class tst_MonthModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void weeks_startWithTheFirstDayOfTheWeek_data()
    {
        QTest::addColumn<int>("firstDay");
        for (int day = monday; day <= sunday; ++day) {
            QTest::addRow("%d", day) << day;
        }
    }

    /// Compared with Qt's calendar in every month of some years.
    void weeks_startWithTheFirstDayOfTheWeek()
    {
        QFETCH(int, firstDay);
        for (int month = 0; month < 48; ++month) {
            const year_month_day first = Date(2023 + month / 12, static_cast<unsigned>(month) % 12 + 1, 1);
            const ShownMonth shown(first, firstDay);
            const auto column = shown.IndexOf(first).column();
            QCOMPARE(shown.IndexOf(first).row(), 0);
            const QDate date(static_cast<int>(first.year()), month % 12 + 1, 1);
            QCOMPARE((firstDay - 1 + column) % 7 + 1, date.dayOfWeek());
            for (int cell = 0; cell < MonthModel::weeks * MonthModel::daysOfWeek; ++cell) {
                const QDate expected = date.addDays(cell - column);
                QCOMPARE(shown.At(cell / 7, cell % 7), ToUtf8(expected.toString(Qt::ISODate)));
                QCOMPARE(shown.CellAt(shown.index(cell / 7, cell % 7))->isInMonth,
                         expected.month() == date.month());
            }
        }
    }

    void headings_areTheDaysOfTheWeek()
    {
        const ShownMonth fromMonday(Date(2026, 11, 22));
        QCOMPARE(fromMonday.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Mon"));
        QCOMPARE(fromMonday.headerData(6, Qt::Horizontal, Qt::AccessibleTextRole).toString(),
                 QStringLiteral("Sunday"));
        const ShownMonth fromSunday(Date(2026, 11, 22), sunday);
        QCOMPARE(fromSunday.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Sun"));
        QCOMPARE(fromSunday.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Mon"));
        QVERIFY(!fromSunday.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    }

    void months_haveFourToSixWeeks_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("weeks");
        QTest::newRow("28 days from Monday") << 2027 << 2 << 4;
        QTest::newRow("30 days from Sunday") << 2026 << 11 << 6;
        QTest::newRow("31 days from Friday") << 2026 << 5 << 5;
        QTest::newRow("31 days from Saturday") << 2026 << 8 << 6;
        QTest::newRow("leap February") << 2028 << 2 << 5;
    }

    void months_haveFourToSixWeeks()
    {
        QFETCH(int, year);
        QFETCH(int, month);
        QFETCH(int, weeks);
        const ShownMonth shown(Date(year, static_cast<unsigned>(month), 1));
        QCOMPARE(Weeks(shown), weeks);
    }

    void february_hasItsLeapDay()
    {
        for (const auto& [year, hasLeapDay] :
             {std::pair(2024, true), std::pair(2026, false), std::pair(1900, false), std::pair(2000, true)}) {
            const ShownMonth shown(Date(year, 2, 1));
            const QModelIndex after = shown.IndexOf(Date(year, 2, 28)).siblingAtColumn(0);
            QVERIFY(after.isValid());
            const year_month_day next(sys_days(Date(year, 2, 28)) + days(1));
            QCOMPARE(shown.Cell(next).isInMonth, hasLeapDay);
        }
    }

    void cellsBeforeTheYearOne_areEmpty()
    {
        const ShownMonth shown(Date(1, 1, 1), sunday); // a Monday
        QCOMPARE(shown.At(0, 0), "-");
        QCOMPARE(shown.At(0, 1), "0001-01-01");
        const QModelIndex empty = shown.index(0, 0);
        QVERIFY(!empty.data().isValid());
        QVERIFY(!empty.data(Qt::AccessibleTextRole).isValid());
        QCOMPARE(shown.flags(empty), Qt::ItemFlags(Qt::NoItemFlags));
        QVERIFY(shown.flags(shown.index(0, 1)).testFlag(Qt::ItemIsSelectable));
    }

    void cellsAfterTheYear9999_areEmpty()
    {
        const ShownMonth shown(Date(9999, 12, 31));
        const QModelIndex last = shown.IndexOf(Date(9999, 12, 31));
        QCOMPARE(last.column(), 4); // a Friday
        QCOMPARE(shown.At(last.row(), 4), "9999-12-31");
        QCOMPARE(shown.At(last.row(), 5), "-");
        QCOMPARE(shown.At(5, 6), "-");
    }

    void today_isOneCell()
    {
        const year_month_day today = Date(2026, 11, 30);
        for (const unsigned month : {10U, 11U, 12U}) {
            MonthModel shown(monday, nullptr);
            shown.SetMonth(std::chrono::year(2026) / std::chrono::month(month), pittwater, "1", {}, today);
            std::vector<std::string> found;
            for (int cell = 0; cell < MonthModel::weeks * MonthModel::daysOfWeek; ++cell) {
                const MonthCell* at = shown.CellAt(shown.index(cell / 7, cell % 7));
                if (at != nullptr && at->isToday) {
                    found.push_back(Text(at->day.date));
                }
            }
            // also as a day of the week that December starts with
            QCOMPARE(found,
                     month == 10 ? std::vector<std::string>() : std::vector<std::string>{"2026-11-30"});
        }
    }

    void trips_areCountedInAllAndHere()
    {
        const TripDays trips =
            LoggedTrips({{"2026-11-22", "1"}, {"2026-11-22", "2"}, {"2026-11-22", "1"}, {"2026-12-01", "2"}});
        const ShownMonth shown(Date(2026, 11, 1), monday, trips);
        QCOMPARE(shown.Cell(Date(2026, 11, 22)).trips, 3);
        QCOMPARE(shown.Cell(Date(2026, 11, 22)).tripsHere, 2);
        QCOMPARE(shown.Cell(Date(2026, 11, 23)).trips, 0);
        QCOMPARE(shown.Cell(Date(2026, 12, 1)).trips, 1); // a day of the next month
        QCOMPARE(shown.Cell(Date(2026, 12, 1)).tripsHere, 0);
    }

    void sentence_describesTheDay()
    {
        const TripDays trips = LoggedTrips({{"2026-11-22", "2"}});
        const ShownMonth shown(Date(2026, 11, 1), monday, trips);
        const QModelIndex day = shown.IndexOf(Date(2026, 11, 22));
        const QString sentence =
            QStringLiteral("Sunday 22 November 2026, rating Fair, moon 85 % waxing, majors 09:50 and 22:16, "
                           "1 trip");
        QCOMPARE(day.data(Qt::AccessibleTextRole).toString(), sentence);
        QCOMPARE(day.data(Qt::ToolTipRole).toString(), sentence);
        QCOMPARE(day.data().toString(), QStringLiteral("22"));
        QVERIFY(!day.data(Qt::DecorationRole).isValid());
    }

    void model_isConsistent()
    {
        MonthModel model(sunday, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(model.CellAt(model.index(0, 0)) == nullptr); // before the first month
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        for (const year_month_day month : {Date(1, 1, 1), Date(2026, 11, 1), Date(9999, 12, 1)}) {
            model.SetMonth(month.year() / month.month(), pittwater, "1", {}, month);
            QCOMPARE(model.Month(), month.year() / month.month());
        }
        QCOMPARE(reset.count(), 3);
        QCOMPARE(model.rowCount(model.index(0, 1)), 0);
        QCOMPARE(model.columnCount(model.index(0, 1)), 0);
        QVERIFY(model.CellAt({}) == nullptr);
    }
};

TEST_CLASS(tst_MonthModel)
#include "tst_MonthModel.moc"
