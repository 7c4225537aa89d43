#include "CommandTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// The commands of the main window for entries, run by toolbar, menu, mouse and keyboard.

namespace
{

void SaveAndClose(QDialog& editor)
{
    Find<QWidget>(editor, "txtTideLowHt").setFocus();
    Type(editor, "1");
    Click(editor, "cmdOK");
    Click(editor, "cmdCancel");
}

} // namespace

class tst_fTarnoEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void add_opensANewEntry_data() { AddWays({Way::Toolbar, Way::Menu, Way::Key}); }

    void add_opensANewEntry()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { Run(window, way, "icoAdd", 0, Qt::Key_N, Qt::ControlModifier); },
            [](QDialog& editor) {
                QCOMPARE(ToUtf8(Find<QLineEdit>(editor, "txtTStart").text()), "06:00");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(Keys(window), (Texts{"K1", "K2"}));
        QCOMPARE(Selected(window), "K1");
    }

    void edit_opensTheSelectedEntry_data()
    {
        AddWays({Way::Toolbar, Way::Menu, Way::Key, Way::DoubleClick, Way::Enter});
    }

    void edit_opensTheSelectedEntry()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fEntry", [&] { Run(window, way, "icoEdit", 1, Qt::Key_F2); },
            [](QDialog& editor) {
                QCOMPARE(ToUtf8(Find<QLineEdit>(editor, "txtStart").text()), "2003-02-06");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(Selected(window), "K2");
        QCOMPARE(window.focusWidget(), &List(window)); // arrow keys work immediately
    }

    void edit_changedEntry_isShownInTheList()
    {
        TwoTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { window.Edit(); },
            [](QDialog& editor) {
                Find<QLineEdit>(editor, "txtTStart").setFocus();
                Type(editor, "0515");
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(ColumnTexts(window, Column::Start), (Texts{"05:15", ""}));
    }

    void edit_nothingSelected_doesNothing()
    {
        TwoTrips program;
        ShownLog window(program);
        List(window).selectionModel()->clear();
        WithoutWindow([&] {
            window.Edit();
            window.Delete();
            Press(window, Qt::Key_Return);
            QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window));
        });
        QVERIFY(List(window).isEnabled());
    }

    void doubleClick_onEmptySpace_editsTheSelectedEntry()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fEntry",
            [&] { QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window)); },
            [](QDialog& editor) {
                QCOMPARE(ToUtf8(Find<QLineEdit>(editor, "txtStart").text()), "2003-02-06");
                Click(editor, "cmdCancel");
            });
    }

    void doubleClick_inAnEmptyList_doesNothing()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        ShownLog window(program);
        WithoutWindow([&] {
            QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window));
            QApplication::processEvents();
        });
        QVERIFY(List(window).isEnabled());
    }

    void enter_inAnEmptyList_doesNothing()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        ShownLog window(program);
        WithoutWindow([&] {
            Press(window, Qt::Key_Return);
            Press(window, Qt::Key_F2);
            Press(window, Qt::Key_Delete);
        });
        QVERIFY(List(window).isEnabled());
    }

    void add_savedEntry_isSelected()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fEntry", [&] { window.Add(); }, SaveAndClose);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3"}));
        QCOMPARE(Selected(window), "K3");
    }

    void add_inALongSortedList_scrollsToTheNewEntry()
    {
        TwoTrips program;
        for (int trip = 0; trip < 100; ++trip) {
            program.AddEntry({{EntryField::StartDate, "1999-02-07"}, {EntryField::LocNo, "1"}});
        }
        ShownLog window(program);
        ClickHeading(window, Column::From);
        WhileOpen(
            "fEntry", [&] { window.Add(); }, SaveAndClose);
        QCOMPARE(Selected(window), "K103");
        QVERIFY(List(window).currentIndex().row() > 99);
        QVERIFY(
            List(window).viewport()->rect().contains(List(window).visualRect(List(window).currentIndex())));
    }

    void add_whileAnotherProgramAdds_selectsOurEntry()
    {
        TwoTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { window.Add(); },
            [&](QDialog& editor) {
                cSQL other(program.programFolder, program.operations);
                Record theirs;
                QCOMPARE(other.Init(), succeeded);
                QCOMPARE(other.EntryGet(0, theirs), succeeded);
                theirs.SetText(EntryField::LocNo, "1");
                QCOMPARE(other.EntryUpdate(theirs), succeeded);
                SaveAndClose(editor);
            });
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QCOMPARE(Selected(window), "K4");
        QVERIFY(RowText(window, 2).starts_with(" | "));
    }

    void delete_asksWithoutAWindowAndRemoves_data() { AddWays({Way::Toolbar, Way::Menu, Way::Key}); }

    void delete_asksWithoutAWindowAndRemoves()
    {
        QFETCH(Way, way);
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        bool greyed = false;
        program.messages.Expect(deleteQuestion, Button::Yes, [&] { greyed = !List(window).isEnabled(); });
        WithoutWindow([&] { Run(window, way, "icoDelete", 2, Qt::Key_Delete); });
        QVERIFY(greyed);
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Keys(window), Texts{"K1"});
        QCOMPARE(Selected(window), "K1");
        QVERIFY(program.StoredEntry(2).empty());
    }

    void delete_selectsTheNeighbour()
    {
        TwoTrips program;
        program.AddEntry({{EntryField::StartDate, "2003-02-04"}, {EntryField::LocNo, "1"}});
        ShownLog window(program);
        ClickHeading(window, Column::From); // K3, K1, K2
        ClickRow(window, 1);
        program.messages.Expect(deleteQuestion, Button::Yes);
        window.Delete();
        QCOMPARE(Selected(window), "K2");
        program.messages.Expect(deleteQuestion, Button::Yes);
        window.Delete();
        QCOMPARE(Selected(window), "K3");
    }

    void delete_no_leavesTheRow()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        program.messages.Expect(deleteQuestion, Button::No);
        window.Delete();
        QCOMPARE(Keys(window), (Texts{"K1", "K2"}));
        QCOMPARE(Selected(window), "K2");
    }

    void delete_last_leavesAnEmptyList()
    {
        TwoTrips program;
        ShownLog window(program);
        for (int entry = 0; entry < 2; ++entry) {
            program.messages.Expect(deleteQuestion, Button::Yes);
            window.Delete();
        }
        QCOMPARE(List(window).RowCount(), 0);
        QCOMPARE(Selected(window), "");
    }

    void list_isUsableAfterAnError()
    {
        TwoTrips program;
        ShownLog window(program);
        program.sql.EntryDelete(1); // without updating the list
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { window.Edit(); });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Keys(window), Texts{"K2"}); // updated now
        WhileOpen(
            "fEntry", [&] { window.Edit(); }, CloseWindow);
    }

    void keyBeyond16Bits_isReportedAsEdit_data()
    {
        QTest::addColumn<bool>("remove");
        QTest::newRow("Edit") << false;
        QTest::newRow("Delete") << true;
    }

    void keyBeyond16Bits_isReportedAsEdit()
    {
        QFETCH(bool, remove);
        TwoTrips program;
        std::string bytes = program.folder.Read("tarno.xml");
        bytes.replace(bytes.find("<TarnoNo>1<"), 11, "<TarnoNo>32768<");
        program.folder.Write("tarno.xml", bytes);
        program.Start();
        ShownLog window(program);
        QCOMPARE(Selected(window), "K32768");
        program.reports.Expect("fTarno", "Edit", ErrorNumber::Overflow);
        WithoutWindow([&] { remove ? window.Delete() : window.Edit(); });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(EnabledCommands(window), allCommands);
        QCOMPARE(program.folder.Read("tarno.xml"), bytes);
    }

    void rightClick_onARow_selectsItAndShowsTheMenu()
    {
        TwoTrips program;
        ShownLog window(program);
        auto& menu = Find<QMenu>(window, "popPopup");
        QCOMPARE(Selected(window), "K1");
        QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, PointInRow(window, 1));
        QCOMPARE(Selected(window), "K2");
        QVERIFY(menu.isVisible());
        menu.close();
    }

    void rightClick_onEmptySpace_keepsTheSelectionAndShowsTheMenu()
    {
        TwoTrips program;
        ShownLog window(program);
        auto& menu = Find<QMenu>(window, "popPopup");
        ClickRow(window, 1);
        QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, EmptySpace(window));
        QCOMPARE(Selected(window), "K2");
        QVERIFY(menu.isVisible());
        menu.close();
    }

    void rightClick_updatesTheMenuItems()
    {
        TestProgram program;
        program.Start();
        ShownLog window(program);
        program.AddLocation("Pittwater"); // without notifying the window
        QVERIFY(!MenuItem(window, 0).isEnabled());
        QTest::mouseClick(List(window).viewport(), Qt::RightButton, {}, EmptySpace(window));
        QCOMPARE(EnabledCommands(window), (Texts{"icoAdd", "Earth", "icoAbout", "icoTides"}));
        Find<QMenu>(window, "popPopup").close();
    }

    void leftClick_showsNoMenu()
    {
        TwoTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        QTest::mouseClick(List(window).viewport(), Qt::LeftButton, {}, EmptySpace(window));
        QCOMPARE(Selected(window), "K2");
        QVERIFY(!Find<QMenu>(window, "popPopup").isVisible());
    }
};

TEST_CLASS(tst_fTarnoEntries)
#include "tst_fTarnoEntries.moc"
