// The grid of days: keys, mouse and wheel.

#include "MonthTest.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/calendar/MonthGrid.h"

#include <QWheelEvent>
#include <QtTest>

using namespace Tarno;

using std::chrono::year_month_day;

namespace
{

const year_month_day today = Date(2026, 11, 22);

/// A grid on the screen that shows the wanted days, like the calendar.
class ShownGrid : public MonthGrid
{
public:
    explicit ShownGrid(year_month_day date)
    {
        SetToday(today);
        connect(this, &MonthGrid::DateWanted, this, [this](year_month_day wanted) {
            ++wishes;
            ShowMonth(wanted, pittwater, "1", {});
        });
        connect(this, &MonthGrid::Activated, this, [this] { ++activations; });
        ShowMonth(date, pittwater, "1", {});
        show();
        AwaitActive(*this);
    }

    QPoint PointOf(year_month_day date) const { return visualRect(Month().IndexOf(date)).center(); }

    void DoubleClick(year_month_day date, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPoint point = PointOf(date);
        QTest::mouseClick(viewport(), button, {}, point);
        QTest::mouseDClick(viewport(), button, {}, point);
    }

    int wishes = 0;
    int activations = 0;
};

void Wheel(MonthGrid& grid, int delta)
{
    const QPointF position = grid.viewport()->rect().center();
    QWheelEvent event(position, grid.viewport()->mapToGlobal(position), {}, {0, delta}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(grid.viewport(), &event);
}

} // namespace

class tst_MonthGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void key_movesTheSelection_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("ctrl");
        QTest::addColumn<QString>("to");
        const auto row = [](const char* name, const char* from, Qt::Key key, bool ctrl, const char* to) {
            QTest::newRow(name) << QString::fromLatin1(from) << int(key) << ctrl << QString::fromLatin1(to);
        };
        row("Left", "2026-11-22", Qt::Key_Left, false, "2026-11-21");
        row("Right", "2026-11-22", Qt::Key_Right, false, "2026-11-23");
        row("Up", "2026-11-22", Qt::Key_Up, false, "2026-11-15");
        row("Down", "2026-11-22", Qt::Key_Down, false, "2026-11-29");
        row("Left into the month before", "2026-11-01", Qt::Key_Left, false, "2026-10-31");
        row("Right into the next year", "2026-12-31", Qt::Key_Right, false, "2027-01-01");
        row("Up into the month before", "2026-11-03", Qt::Key_Up, false, "2026-10-27");
        row("Down into the month after", "2026-11-29", Qt::Key_Down, false, "2026-12-06");
        row("Page Up", "2026-11-22", Qt::Key_PageUp, false, "2026-10-22");
        row("Page Down", "2026-11-22", Qt::Key_PageDown, false, "2026-12-22");
        row("Page Down to a shorter month", "2026-01-31", Qt::Key_PageDown, false, "2026-02-28");
        row("Page Down to a leap February", "2028-01-31", Qt::Key_PageDown, false, "2028-02-29");
        row("Page Up to a shorter month", "2026-12-31", Qt::Key_PageUp, false, "2026-11-30");
        row("Page Down into the next year", "2026-12-15", Qt::Key_PageDown, false, "2027-01-15");
        row("Ctrl+Page Up", "2026-11-22", Qt::Key_PageUp, true, "2025-11-22");
        row("Ctrl+Page Down", "2026-11-22", Qt::Key_PageDown, true, "2027-11-22");
        row("Ctrl+Page Down from a leap day", "2028-02-29", Qt::Key_PageDown, true, "2029-02-28");
        row("Home", "2019-03-04", Qt::Key_Home, false, "2026-11-22");
        row("first day: Left", "0001-01-01", Qt::Key_Left, false, "0001-01-01");
        row("first day: Up", "0001-01-01", Qt::Key_Up, false, "0001-01-01");
        row("first week: Up", "0001-01-07", Qt::Key_Up, false, "0001-01-07");
        row("first month: Page Up", "0001-01-31", Qt::Key_PageUp, false, "0001-01-31");
        row("first year: Ctrl+Page Up", "0001-12-31", Qt::Key_PageUp, true, "0001-12-31");
        row("first year: Page Down", "0001-01-31", Qt::Key_PageDown, false, "0001-02-28");
        row("last day: Right", "9999-12-31", Qt::Key_Right, false, "9999-12-31");
        row("last day: Down", "9999-12-31", Qt::Key_Down, false, "9999-12-31");
        row("last month: Page Down", "9999-12-01", Qt::Key_PageDown, false, "9999-12-01");
        row("last year: Ctrl+Page Down", "9999-01-01", Qt::Key_PageDown, true, "9999-01-01");
        row("last day: Left", "9999-12-31", Qt::Key_Left, false, "9999-12-30");
        row("another key", "9999-12-31", Qt::Key_F5, false, "9999-12-31");
    }

    void key_movesTheSelection()
    {
        QFETCH(QString, from);
        QFETCH(int, key);
        QFETCH(bool, ctrl);
        QFETCH(QString, to);
        ShownGrid grid(ToDate(ToUtf8(from)));
        Press(grid, static_cast<Qt::Key>(key), ctrl ? Qt::ControlModifier : Qt::NoModifier);
        QCOMPARE(Text(grid.Date()), ToUtf8(to));
        QCOMPARE(Text(grid.Selected().day.date), ToUtf8(to));
        QCOMPARE(grid.currentIndex(), grid.Month().IndexOf(grid.Date()));
        QCOMPARE(grid.selectionModel()->selectedIndexes(), QModelIndexList{grid.currentIndex()});
        QVERIFY(grid.Selected().isInMonth);
        QCOMPARE(grid.wishes, from == to ? 0 : 1);
    }

    /// Keys that a table has by default must not leave the selected day.
    void otherKeys_keepTheDay()
    {
        ShownGrid grid(Date(2026, 11, 10));
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_Space, Qt::Key_2, Qt::Key_Tab, Qt::Key_A}) {
            for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier}) {
                Press(grid, key, modifiers);
                QCOMPARE(grid.currentIndex(), grid.Month().IndexOf(grid.Date()));
                QCOMPARE(grid.selectionModel()->selectedIndexes(), QModelIndexList{grid.currentIndex()});
            }
        }
        QCOMPARE(Text(grid.Date()), "2026-11-10");
    }

    void enter_activatesTheDay()
    {
        ShownGrid grid(today);
        Press(grid, Qt::Key_Return);
        Press(grid, Qt::Key_Enter);
        QCOMPARE(grid.activations, 2);
        QCOMPARE(grid.wishes, 0);
    }

    void click_selectsADayOfTheMonth()
    {
        ShownGrid grid(today);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.PointOf(Date(2026, 11, 5)));
        QCOMPARE(Text(grid.Date()), "2026-11-05");
        QCOMPARE(grid.activations, 0);
    }

    void click_onADayOfAnotherMonth_goesThere()
    {
        ShownGrid grid(Date(2026, 5, 15));
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.PointOf(Date(2026, 6, 1)));
        QCOMPARE(Text(grid.Date()), "2026-06-01");
        QCOMPARE(grid.Month().Month(), std::chrono::year(2026) / 6);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.PointOf(Date(2026, 7, 5)));
        QCOMPARE(Text(grid.Date()), "2026-07-05");
    }

    void click_onAnEmptyCell_doesNothing()
    {
        ShownGrid grid(Date(9999, 12, 31));
        const QModelIndex empty = grid.Month().index(5, 6);
        QVERIFY(grid.Month().CellAt(empty) == nullptr);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(empty).center());
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(empty).center());
        QCOMPARE(grid.wishes, 0);
        QCOMPARE(grid.activations, 0);
        QCOMPARE(Text(grid.Date()), "9999-12-31");
    }

    void drag_keepsTheDayOfThePress()
    {
        ShownGrid grid(today);
        QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, grid.PointOf(Date(2026, 11, 5)));
        QTest::mouseMove(grid.viewport(), grid.PointOf(Date(2026, 11, 12)));
        QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, grid.PointOf(Date(2026, 11, 12)));
        QCOMPARE(Text(grid.Date()), "2026-11-05");
        QCOMPARE(grid.selectionModel()->selectedIndexes(),
                 QModelIndexList{grid.Month().IndexOf(grid.Date())});
    }

    void doubleClick_activatesTheDay()
    {
        ShownGrid grid(today);
        grid.DoubleClick(Date(2026, 11, 5));
        QCOMPARE(Text(grid.Date()), "2026-11-05");
        QCOMPARE(grid.activations, 1);
        grid.DoubleClick(Date(2026, 11, 5), Qt::RightButton);
        QCOMPARE(grid.activations, 1);
    }

    /// The first click shows the other month, so the second one is above another day.
    void doubleClick_onADayOfAnotherMonth_activatesThatDay()
    {
        ShownGrid grid(Date(2026, 5, 15));
        grid.DoubleClick(Date(2026, 6, 3));
        QCOMPARE(Text(grid.Date()), "2026-06-03");
        QCOMPARE(grid.activations, 1);
    }

    void wheel_movesByMonths()
    {
        ShownGrid grid(Date(2026, 1, 31));
        Wheel(grid, -120);
        QCOMPARE(Text(grid.Date()), "2026-02-28");
        Wheel(grid, 240);
        QCOMPARE(Text(grid.Date()), "2025-12-28");
    }

    void wheel_stopsAtTheEnds()
    {
        ShownGrid grid(Date(1, 1, 31));
        Wheel(grid, 120);
        QCOMPARE(Text(grid.Date()), "0001-01-31");
        grid.ShowMonth(Date(9999, 12, 1), pittwater, "1", {});
        Wheel(grid, -120);
        QCOMPARE(Text(grid.Date()), "9999-12-01");
    }

    /// Touch pads send many small steps.
    void wheel_smallSteps_addUp()
    {
        ShownGrid grid(today);
        for (int step = 0; step < 8; ++step) {
            QCOMPARE(Text(grid.Date()), "2026-11-22");
            Wheel(grid, -15);
        }
        QCOMPARE(Text(grid.Date()), "2026-12-22");
    }
};

TEST_CLASS(tst_MonthGrid)
#include "tst_MonthGrid.moc"
