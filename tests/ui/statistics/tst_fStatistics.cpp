// The statistics: their pages, their query, and the way back to the log.

#include "support/Lists.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "ui/common/QueryBar.h"
#include "ui/statistics/StatisticsRows.h"
#include "ui/statistics/fStatistics.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

enum Page { Groups, Forecast, Year, Lines };

/// A log with trips in two years, at two places.
class ProgramWithTrips : public TestProgram
{
public:
    explicit ProgramWithTrips(int count = 6)
    {
        Start();
        AddLocation("Pittwater");
        AddLocation("Lake Eucumbene");
        const std::vector<Values> trips{
            Trip("2025-10-04", "1", "3", "Flathead 41 and 52 cm (kept)~CL~boots"),
            Trip("2025-11-10", "1", "0", ""),
            Trip("2026-11-02", "2", "2", "flatheads x 3"),
            Trip("2026-11-03", "1", "1", "Squid"),
            Trip("2026-12-01", "1", "2", "Squid, small"),
            Trip("2026-12-05", "1", "-1", "boots"),
        };
        for (int trip = 0; trip < count; ++trip) {
            AddEntry(trips.at(static_cast<std::size_t>(trip)));
        }
    }

private:
    static Values Trip(const char* date, const char* place, const char* action, const char* caught)
    {
        return {{EntryField::StartDate, date},    {EntryField::EndDate, date},
                {EntryField::StartTime, "06:00"}, {EntryField::EndTime, "08:30"},
                {EntryField::LocNo, place},       {EntryField::FishAction, action},
                {EntryField::FishCaught, caught}, {EntryField::Prediction, "2"}};
    }
};

/// The statistics on the screen.
class ShownStatistics : public fStatistics
{
public:
    explicit ShownStatistics(const TestProgram& program, const char* query = "")
        : fStatistics(program.program, QLatin1String(query), nullptr)
    {
        show();
        AwaitActive(*this);
    }
};

void GoTo(const QWidget& window, Page page)
{
    Find<QTabWidget>(window, "tabStatistics").setCurrentIndex(page);
}

void GroupBy(const QWidget& window, const char* title)
{
    auto& box = Find<QComboBox>(window, "cboGrouping");
    box.setCurrentIndex(box.findText(QLatin1String(title)));
}

std::string QueryText(const QWidget& window)
{
    return ToUtf8(Find<QLineEdit>(window, "txtFind").text());
}

} // namespace

class tst_fStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opening_showsAllTripsByMonth()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        QCOMPARE(ToUtf8(Find<QComboBox>(window, "cboGrouping").currentText()), "Month"s);
        QCOMPARE(
            Rows(window, "lvwGroups"),
            (Texts{"October | 1 (few) | 2.5 | 0 | Hot! 1 | 100 % (21 to 100 %) | 2025-10-04",
                   "November | 3 (few) | 7.5 | 1 | Slow 1, Fair 1, Good 1 | 33 % (6 to 79 %) | 2026-11-03",
                   "December | 2 (few) | 5.0 | 0 | Good 1 | 100 % (21 to 100 %) | 2026-12-05"}));
        QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "lvwGroups"));
        QVERIFY(!Find<QWidget>(window, "queryBar").isVisible());
        QVERIFY(!Find<QWidget>(window, "lblLeftOut").isVisible());
    }

    void grouping_isChosen()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        GroupBy(window, "Place");
        QCOMPARE(Rows(window, "lvwGroups").size(), std::size_t{2});
        QVERIFY(Rows(window, "lvwGroups")[0].starts_with("Pittwater | 5 | 12.5 | 1 | "));
        QVERIFY(Rows(window, "lvwGroups")[1].starts_with("Lake Eucumbene | 1 (few) | "));
        QCOMPARE(Find<QComboBox>(window, "cboGrouping").count(), 18);
    }

    void query_restrictsTheTrips()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program, "date:2025");
        QVERIFY(Find<QWidget>(window, "queryBar").isVisible());
        QCOMPARE(QueryText(window), "date:2025"s);
        QCOMPARE(LabelText(window, "lblFound"), "2 of 6 trips"s);
        QCOMPARE(Rows(window, "lvwGroups").size(), std::size_t{2});
        Press(window, Qt::Key_Escape);
        QVERIFY(window.isVisible());
        QVERIFY(!Find<QWidget>(window, "queryBar").isVisible());
        QCOMPARE(Rows(window, "lvwGroups").size(), std::size_t{3});
    }

    void find_opensTheBar()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "txtFind"));
        QTest::keyClicks(window.focusWidget(), QStringLiteral("nowhere"));
        QCOMPARE(Rows(window, "lvwGroups"), Texts());
        QVERIFY(!Find<QPushButton>(window, "cmdShowTrips").isEnabled());
        QCOMPARE(ToUtf8(Find<QWidget>(window, "lvwGroups").accessibleDescription()),
                 "No trip is found. Press Esc to show all trips again."s);
    }

    void find_leadsToTheListOfThePage_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("list");
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Groups, Enter") << int(Groups) << "lvwGroups" << Qt::Key_Return;
        QTest::newRow("Year, Down") << int(Year) << "lvwYear" << Qt::Key_Down;
        QTest::newRow("Lines, Esc") << int(Lines) << "lvwLines" << Qt::Key_Escape;
    }

    void find_leadsToTheListOfThePage()
    {
        QFETCH(int, page);
        QFETCH(QString, list);
        QFETCH(Qt::Key, key);
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        GoTo(window, static_cast<Page>(page));
        Press(window, Qt::Key_F, Qt::ControlModifier);
        Press(window, key);
        QCOMPARE(window.focusWidget()->objectName(), list);
    }

    void row_narrowsTheLog_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("wanted");
        QTest::newRow("no query") << ""
                                  << "caught:=";
        QTest::newRow("query") << "date:2026"
                               << "date:2026 caught:=";
        QTest::newRow("open quotation") << "date:2026  \"lake eu"
                                        << "date:2026 caught:=";
    }

    void row_narrowsTheLog()
    {
        QFETCH(QString, query);
        QFETCH(QString, wanted);
        const ProgramWithTrips program;
        ShownStatistics window(program, ToUtf8(query).c_str());
        GroupBy(window, "Species caught");
        QVERIFY(!window.WantedQuery());
        DoubleClickRow(window, "lvwGroups", 0);
        QVERIFY(!window.isVisible());
        QVERIFY2(window.WantedQuery().value_or(QString()).startsWith(wanted),
                 qPrintable(window.WantedQuery().value_or(QString())));
    }

    void showTrips_narrowsTheLogToTheSelectedRow()
    {
        const ProgramWithTrips program;
        ShownStatistics window(program);
        Press(window, Qt::Key_Down);
        Click(window, "cmdShowTrips");
        QVERIFY(!window.isVisible());
        QCOMPARE(ToUtf8(window.WantedQuery().value_or(QString())), "month:november"s);
    }

    void closing_narrowsNothing()
    {
        const ProgramWithTrips program;
        ShownStatistics window(program, "date:2025");
        Click(window, "cmdClose");
        QVERIFY(!window.isVisible());
        QVERIFY(!window.WantedQuery());
    }

    void tripsLeftOut_areCounted()
    {
        ProgramWithTrips program(1);
        program.AddEntry({{EntryField::StartDate, "2026-01-01"},
                          {EntryField::EndDate, "2026-01-05"},
                          {EntryField::StartTime, "06:00"},
                          {EntryField::EndTime, "06:00"},
                          {EntryField::LocNo, "1"}});
        const ShownStatistics window(program);
        QCOMPARE(LabelText(window, "lblLeftOut"), "The hours leave out 1 trip of more than 48 hours."s);
        QVERIFY(Find<QWidget>(window, "lblLeftOut").isVisible());
    }

    void forecast_saysWhatTheNumbersCanTell()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        GoTo(window, Forecast);
        QCOMPARE(Rows(window, "lvwCheck"), (Texts{"Poor | 0 | 0 | 0 | 0 | 0", "Fair | 0 | 0 | 0 | 0 | 0",
                                                  "Good | 1 | 1 | 2 | 1 | 5", "Best | 0 | 0 | 0 | 0 | 0"}));
        QVERIFY(LabelText(window, "lblVerdict").starts_with("Too few trips to tell"));
        QVERIFY(!Find<QWidget>(window, "lblTau").isVisible());
        const std::string ofAll =
            "There are four comparisons. One of them can look like a connection by chance alone.";
        QCOMPARE(LabelText(window, "lblCheckNote"),
                 "The rating is the one that is stored with the trip. You may have changed it by hand. " +
                     ofAll);
        auto& box = Find<QComboBox>(window, "cboCheck");
        QCOMPARE(box.count(), 4);
        box.setCurrentIndex(3);
        QCOMPARE(Rows(window, "lvwCheck").size(), std::size_t{2});
        QCOMPARE(LabelText(window, "lblCheckNote"), ofAll);
    }

    void year_isBesideTheYearBefore()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        GoTo(window, Year);
        auto& box = Find<QComboBox>(window, "cboYear");
        QCOMPARE(ToUtf8(box.currentText()), "2026"s);
        const Texts rows = Rows(window, "lvwYear");
        QCOMPARE(rows[0], "Trips | 4 | 2"s);
        QCOMPARE(rows[1], "Hours | 10.0 | 5.0"s);
        QCOMPARE(rows[2], "Days on the water | 4 | 2"s);
        QCOMPARE(rows[3], "Places | 2 | 1"s);
        QVERIFY(std::count(rows.begin(), rows.end(), "Trips with Squid | 2 | 0") == 1);
        box.setCurrentIndex(1);
        QCOMPARE(Rows(window, "lvwYear")[0], "Trips | 2 | 0"s);
    }

    void year_isKeptWhenTheQueryChanges()
    {
        const ProgramWithTrips program;
        const ShownStatistics window(program);
        GoTo(window, Year);
        Find<QComboBox>(window, "cboYear").setCurrentIndex(1);
        Find<QueryBar>(window, "queryBar").Search(QStringLiteral("place:pittwater"));
        QCOMPARE(ToUtf8(Find<QComboBox>(window, "cboYear").currentText()), "2025"s);
    }

    void yearSheet_isPreviewed()
    {
        const ProgramWithTrips program;
        ShownStatistics window(program);
        GoTo(window, Year);
        bool isShown = false;
        WhileOpen(
            "fPreview", [&] { Click(window, "cmdYearSheet"); },
            [&](QDialog& preview) {
                isShown = true;
                preview.reject();
            });
        QVERIFY(isShown);
    }

    void unmatchedLines_areListed()
    {
        const ProgramWithTrips program;
        ShownStatistics window(program);
        GoTo(window, Lines);
        const Texts rows = Rows(window, "lvwLines");
        QCOMPARE(rows[0], "boots | Caught | 2"s);
        Click(window, "cmdCopyLine");
        QCOMPARE(ToUtf8(QApplication::clipboard()->text()), "boots"s);
    }

    void pickList_ofTheLine_isOpened()
    {
        ProgramWithTrips program;
        ShownStatistics window(program);
        GoTo(window, Lines);
        program.programs.ExpectEditText(FromUtf8(program.folder.PathOf("Species.txt")));
        Click(window, "cmdOpenList");
    }

    void unreadableLog_saysSo()
    {
        ProgramWithTrips program(1);
        program.folder.Write("tarno.xml", "<data>");
        program.Start();
        const ShownStatistics window(program);
        QVERIFY(ToUtf8(Find<QWidget>(window, "lvwGroups").accessibleDescription()).find("tarno.xml") !=
                std::string::npos);
    }

    void emptyLog_saysSo()
    {
        const ProgramWithTrips program(0);
        const ShownStatistics window(program);
        for (const auto& [page, list] :
             {std::pair(Groups, "lvwGroups"), std::pair(Year, "lvwYear"), std::pair(Lines, "lvwLines")}) {
            GoTo(window, page);
            QCOMPARE(Rows(window, list), Texts());
            QCOMPARE(ToUtf8(Find<QWidget>(window, list).accessibleDescription()),
                     "There are no trips in your log yet."s);
        }
        for (const char* button : {"cmdShowTrips", "cmdYearSheet", "cmdCopyLine", "cmdOpenList"}) {
            QVERIFY2(!Find<QPushButton>(window, button).isEnabled(), button);
        }
        GoTo(window, Forecast);
        QVERIFY(LabelText(window, "lblVerdict").starts_with("Too few trips to tell"));
    }
};

TEST_CLASS(tst_fStatistics)
#include "tst_fStatistics.moc"
