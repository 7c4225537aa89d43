#include "FindTest.h"
#include "support/TestClass.h"
#include "ui/common/QueryBar.h"

#include <QClipboard>
#include <QSignalSpy>
#include <QToolButton>

using namespace Tarno;

// The find bar of the main window: opening and closing it, filtering the list, faults, and its keys.

namespace
{

enum class Close { Escape, EscapeInList, Button };

} // namespace

Q_DECLARE_METATYPE(Close)

class tst_FindBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void bar_isHiddenAtTheStart()
    {
        FourTrips program;
        ShownLog window(program);
        QVERIFY(!IsBarOpen(window));
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void ctrlF_opensTheBarAndSelectsItsText()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "bream");
        Press(window, Qt::Key_Return);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(IsBarOpen(window));
        QCOMPARE(window.focusWidget(), &FindBox(window));
        QCOMPARE(FindBox(window).selectedText(), QStringLiteral("bream"));
    }

    void everyKey_filters()
    {
        FourTrips program;
        ShownLog window(program);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(Count(window), "4 of 4 trips");
        const std::vector<std::pair<const char*, Texts>> keys{{"t", {"K1", "K2", "K3"}}, // Pittwater
                                                              {"r", {"K2"}},
                                                              {"x", {}}};
        for (const auto& [key, found] : keys) {
            Type(window, key);
            QCOMPARE(Keys(window), found);
            QCOMPARE(Count(window), std::to_string(found.size()) + " of 4 trips");
        }
        Press(window, Qt::Key_Backspace);
        QCOMPARE(Keys(window), Texts{"K2"});
    }

    void sampleLog_isFiltered()
    {
        TestProgram program;
        program.UseSample();
        program.Start();
        ShownLog window(program);
        FindTrips(window, "caught:king");
        QCOMPARE(Count(window), "9 of 72 trips");
        QCOMPARE(List(window).RowCount(), 9);
    }

    void count_ofOneTrip()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::LocNo, "1"}});
        ShownLog window(program);
        FindTrips(window, "x");
        QCOMPARE(Count(window), "0 of 1 trip");
    }

    void filter_keepsTheSortOrder()
    {
        FourTrips program;
        ShownLog window(program);
        ClickHeading(window, Column::From);
        ClickHeading(window, Column::From);
        FindTrips(window, "squid");
        QCOMPARE(Keys(window), (Texts{"K3", "K1"}));
        Press(window, Qt::Key_Escape);
        QCOMPARE(Keys(window), (Texts{"K4", "K3", "K2", "K1"}));
    }

    void filter_keepsTheSelection()
    {
        FourTrips program;
        ShownLog window(program);
        ClickRow(window, 2);
        FindTrips(window, "squid");
        QCOMPARE(Selected(window), "K3");
        FindTrips(window, "trout");
        QCOMPARE(Selected(window), "K2");
        FindTrips(window, "nothing");
        QCOMPARE(Selected(window), "");
        FindTrips(window, "bream");
        QCOMPARE(Selected(window), "K3"); // shown again
        FindTrips(window, "trout");
        Press(window, Qt::Key_Escape);
        QCOMPARE(Selected(window), "K3");
    }

    void filter_anotherSelection_isKept()
    {
        FourTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        FindTrips(window, "squid"); // hides the selected trip
        Press(window, Qt::Key_Return);
        Press(window, Qt::Key_Down);
        QCOMPARE(Selected(window), "K3");
        Press(window, Qt::Key_Escape);
        QCOMPARE(Selected(window), "K3");
    }

    void fault_isExplainedAndTheOtherTermsFilter()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "trout");
        QVERIFY(!Find<QLabel>(window, "lblFindFault").isVisible());
        FindTrips(window, "foo:bar squid");
        QVERIFY(Find<QLabel>(window, "lblFindFault").isVisible());
        QVERIFY(!LabelText(window, "lblFindFault").empty());
        QVERIFY(LabelText(window, "lblFindFault").find("foo") != std::string::npos);
        QCOMPARE(FindBox(window).accessibleDescription(), Find<QLabel>(window, "lblFindFault").text());
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
        FindTrips(window, "squid");
        QVERIFY(!Find<QLabel>(window, "lblFindFault").isVisible());
        QVERIFY(FindBox(window).accessibleDescription().isEmpty());
    }

    void faults_areExplainedLineByLine()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "foo:bar date:never");
        const QString faults = Find<QLabel>(window, "lblFindFault").text();
        QCOMPARE(faults.count(QLatin1Char('\n')), 1);
        QCOMPARE(FindBox(window).accessibleDescription(),
                 QString(faults).replace(QLatin1Char('\n'), QLatin1Char(' ')));
        QCOMPARE(List(window).RowCount(), 4);
    }

    void closing_showsAllTrips_data()
    {
        QTest::addColumn<Close>("way");
        QTest::newRow("Esc") << Close::Escape;
        QTest::newRow("Esc in the list") << Close::EscapeInList;
        QTest::newRow("button") << Close::Button;
    }

    void closing_showsAllTrips()
    {
        QFETCH(Close, way);
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        if (way == Close::EscapeInList) {
            Press(window, Qt::Key_Return);
        }
        if (way == Close::Button) {
            Click(window, "cmdFindClose");
        } else {
            Press(window, Qt::Key_Escape);
        }
        QVERIFY(!IsBarOpen(window));
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QCOMPARE(window.focusWidget(), &List(window));
        program.messages.Expect(exitQuestion, Button::No);
        Press(window, Qt::Key_Escape);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(FindBox(window).text(), QString());
    }

    void key_goesToTheList_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << static_cast<int>(Qt::Key_Return);
        QTest::newRow("Enter") << static_cast<int>(Qt::Key_Enter);
        QTest::newRow("Down") << static_cast<int>(Qt::Key_Down);
    }

    void key_goesToTheList()
    {
        QFETCH(int, key);
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WithoutWindow([&] { Press(window, static_cast<Qt::Key>(key)); });
        QCOMPARE(window.focusWidget(), &List(window));
        QCOMPARE(Selected(window), "K1");
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
    }

    void editingKeys_editTheTextAndTouchNoTrip()
    {
        FourTrips program;
        ShownLog window(program);
        DeleteSelected(program, window); // something to undo
        const std::string log = program.folder.Read("tarno.xml");
        FindTrips(window, "squid x");
        const auto text = [&] { return ToUtf8(FindBox(window).text()); };
        Press(window, Qt::Key_Left);
        Press(window, Qt::Key_Delete);
        QCOMPARE(text(), "squid ");
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(text(), "squid x");
        Press(window, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(text(), "squid ");
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(text(), "squid x");
        Press(window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(text(), "squid ");
        Press(window, Qt::Key_A, Qt::ControlModifier);
        QApplication::clipboard()->setText(QStringLiteral("before"));
        Press(window, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("squid "));
        CloseProposals(window);
        Press(window, Qt::Key_End);
        Press(window, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("squid "));
        QCOMPARE(program.folder.Read("tarno.xml"), log);
    }

    void editingKeys_nothingLeftToEdit_touchNoTrip()
    {
        FourTrips program;
        ShownLog window(program);
        DeleteSelected(program, window);
        DeleteSelected(program, window);
        Press(window, Qt::Key_Z, Qt::ControlModifier); // in the list
        const std::string log = program.folder.Read("tarno.xml");
        Press(window, Qt::Key_F, Qt::ControlModifier);
        const std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys{
            {Qt::Key_Delete, {}},
            {Qt::Key_Z, Qt::ControlModifier},
            {Qt::Key_Y, Qt::ControlModifier},
            {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier}};
        for (const auto& [key, modifiers] : keys) {
            WithoutWindow([&, pressed = key, with = modifiers] { Press(window, pressed, with); });
            QCOMPARE(program.folder.Read("tarno.xml"), log);
        }
    }

    void nothingFound_theListSaysSo()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "nothing");
        QCOMPARE(List(window).accessibleDescription(),
                 QStringLiteral("No trip is found. Press Esc to show all trips again."));
        FindTrips(window, "trout");
        QCOMPARE(List(window).accessibleDescription(), QString());
    }

    void help_opensTheManual()
    {
        FourTrips program;
        ShownLog window(program);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        const QSignalSpy requests(&Find<QueryBar>(window, "queryBar"), &QueryBar::HelpRequested);
        Click(window, "cmdFindHelp");
        QCOMPARE(requests.size(), 1);
        auto& help = Find<QDialog>(window, "fHelp");
        QVERIFY(help.isVisible());
        help.close();
    }

    void vanishedLocation_typingReportsNothing()
    {
        FourTrips program;
        program.AddEntry({{EntryField::StartDate, "2003-04-01"}, {EntryField::LocNo, "9"}});
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        FindTrips(window, "place:pitt");
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
        FindTrips(window, "-place:");
        QCOMPARE(Keys(window), Texts{"K5"});
    }

    void renamedLocation_isFoundByItsNewName()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "place:lake"); // the texts of the trips are known now
        WhileOpen(
            "fLocs", [&] { window.Locations(); },
            [&](QDialog& listing) {
                Record place;
                program.sql.LocationGet(2, place);
                place.SetText(LocationField::LocName, "Thredbo");
                program.sql.LocationUpdate(place);
                listing.close();
            });
        FindTrips(window, "place:thredbo");
        QCOMPARE(Keys(window), (Texts{"K2", "K4"}));
    }

    void anotherProgram_changesTheLogMeanwhile()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        cSQL other(program.programFolder, program.operations);
        QCOMPARE(other.Init(), succeeded);
        QCOMPARE(other.EntryDelete(1), succeeded);
        Record theirs;
        QCOMPARE(other.EntryGet(3, theirs), succeeded);
        theirs.SetText(EntryField::BaitUsed, "Prawn");
        QCOMPARE(other.EntryUpdate(theirs), succeeded);
        // a save of this program merges their changes, although the list does not know them yet
        Record ours;
        QCOMPARE(program.sql.EntryGet(4, ours), succeeded);
        ours.SetText(EntryField::FishCaught, "5 squid");
        QCOMPARE(program.sql.EntryUpdate(ours), succeeded);
        FindTrips(window, "bait:prawn");
        FindTrips(window, "bream");
        WithoutWindow([&] {
            Press(window, Qt::Key_Return);
            Press(window, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        });
        Press(window, Qt::Key_Escape);
        QVERIFY(List(window).isEnabled());
    }
};

TEST_CLASS(tst_FindBar)
#include "tst_FindBar.moc"
