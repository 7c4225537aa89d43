#include "PickListTest.h"
#include "support/TestClass.h"
#include "ui/common/LeaveGuard.h"
#include "ui/common/RecordBinder.h"
#include "ui/entry/EntryCommentsPage.h"

#include <QFocusEvent>
#include <QVBoxLayout>

#include <functional>
#include <map>

using namespace Tarno;

// Selecting items in an open pick list, closing the list, and the lines that it appends to its box.

namespace
{

/// Clicks the background of the page, which takes no focus.
void ClickBackground(QWidget& editor)
{
    const auto& page = Find<QWidget>(editor, "pageComments");
    QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {}, page.mapTo(&editor, QPoint(2, 2)));
}

} // namespace

class tst_PickedItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void click_selectsAndUnselects()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Bream", "Flathead"});
            QCOMPARE(SelectedItems(editor),
                     (QStringList{QStringLiteral("Bream"), QStringLiteral("Flathead")}));
            Pick(editor, "Bream");
            QCOMPARE(SelectedItems(editor), QStringList{QStringLiteral("Flathead")});
            Click(editor, "txtBait");
            QCOMPARE(LinesText(editor, "txtTarget"), "Flathead");
            SaveAndClose(editor);
        });
    }

    void space_selectsAndUnselects()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            Press(editor, Qt::Key_Space);
            Press(editor, Qt::Key_Down);
            Press(editor, Qt::Key_Space);
            Press(editor, Qt::Key_Down);
            Press(editor, Qt::Key_Space);
            Press(editor, Qt::Key_Up);
            Press(editor, Qt::Key_Space);
            QCOMPARE(SelectedItems(editor),
                     (QStringList{QStringLiteral("Bream"), QStringLiteral("Flathead")}));
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsOpen(editor));
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream\nFlathead");
            SaveAndClose(editor);
        });
    }

    void letters_moveToALineWithoutSelecting()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            Pick(editor, "Bream");
            Type(editor, "fl");
            QCOMPARE(SelectedItems(editor), QStringList{QStringLiteral("Bream")});
            Press(editor, Qt::Key_Space);
            QCOMPARE(SelectedItems(editor),
                     (QStringList{QStringLiteral("Bream"), QStringLiteral("Flathead")}));
            Press(editor, Qt::Key_Escape);
            SaveAndClose(editor);
        });
    }

    void arrows_selectNothing()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            Press(editor, Qt::Key_Down);
            Press(editor, Qt::Key_End);
            QCOMPARE(List(editor).currentRow(), 2);
            QCOMPARE(SelectedItems(editor), QStringList());
            Close(editor);
        });
    }

    void pickedItems_areAppendedInFileOrder()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Snapper", "Bream"});
            Click(editor, "txtBait");
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream\nSnapper");
            OpenAndPick(editor, "lblDDTarget", {"Flathead"});
            Click(editor, "txtBait");
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream\nSnapper\nFlathead");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::TargetSpecies),
                 "Bream~CL~Snapper~CL~Flathead");
    }

    void separator_dependsOnTheEndOfTheBox_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("empty") << ""
                               << "Prawn~CL~Squid";
        QTest::newRow("text") << "Worm"
                              << "Worm~CL~Prawn~CL~Squid";
        QTest::newRow("line break at the end") << "Worm~CL~"
                                               << "Worm~CL~Prawn~CL~Squid";
        QTest::newRow("two line breaks") << "Worm~CL~~CL~"
                                         << "Worm~CL~~CL~Prawn~CL~Squid";
        QTest::newRow("a blank at the end") << "Worm "
                                            << "Worm ~CL~Prawn~CL~Squid";
        QTest::newRow("a line break alone") << "~CL~"
                                            << "~CL~Prawn~CL~Squid";
    }

    void separator_dependsOnTheEndOfTheBox()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        ProgramWithLists program;
        const int key = program.AddCompleteEntry({{EntryField::BaitUsed, before.toStdString()}});
        Edit(program, key, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDBait", {"Prawn", "Squid"});
            Click(editor, "txtTarget");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::BaitUsed), after.toStdString());
    }

    void itemPickedAgain_isAppendedAgain()
    {
        ProgramWithLists program;
        program.folder.Write("Bait.txt", "Prawn\r\nPrawn\r\n");
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDBait");
            QCOMPARE(Items(editor).size(), 2);
            Pick(editor, "Prawn");
            Click(editor, "txtTarget");
            OpenAndPick(editor, "lblDDBait", {"Prawn"});
            Click(editor, "txtTarget");
            QCOMPARE(LinesText(editor, "txtBait"), "Prawn\nPrawn");
            SaveAndClose(editor);
        });
    }

    void trailingBlanks_ofAnItem_areKept()
    {
        ProgramWithLists program;
        program.folder.Write("Bait.txt", "  Prawn  \r\n");
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDBait", {"  Prawn  "});
            Click(editor, "txtTarget");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::BaitUsed), "  Prawn  ");
    }

    void pickedItems_reachTheirOwnBox_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("position");
        QTest::newRow("target") << "lblDDTarget"
                                << "Snapper" << int(EntryField::TargetSpecies);
        QTest::newRow("caught") << "lblDDCaught"
                                << "Snapper" << int(EntryField::FishCaught);
        QTest::newRow("bait") << "lblDDBait"
                              << "Squid" << int(EntryField::BaitUsed);
        QTest::newRow("methods") << "lblDDMethods"
                                 << "Trolling" << int(EntryField::Method);
    }

    void pickedItems_reachTheirOwnBox()
    {
        QFETCH(QString, label);
        QFETCH(QString, item);
        QFETCH(int, position);
        ProgramWithLists program;
        std::vector<std::string> expected = program.StoredEntry(program.entry);
        expected[std::size_t(position)] = item.toStdString();
        Edit(program, program.entry, [&](QDialog& editor) {
            OpenAndPick(editor, label.toLatin1(), {item.toLatin1().constData()});
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry), expected);
    }

    void nothingPicked_changesNothing()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            Click(editor, "txtBait");
            QVERIFY(!IsSaveEnabled(editor));
            QCOMPARE(LinesText(editor, "txtTarget"), "");
            Close(editor); // asks no question
        });
    }

    void picked_enablesSave()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            QVERIFY(!IsSaveEnabled(editor));
            Pick(editor, "Bream");
            QVERIFY(!IsSaveEnabled(editor));
            Press(editor, Qt::Key_Escape);
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
    }

    void pickList_closesOnEveryWayToLeaveIt_data()
    {
        QTest::addColumn<QString>("reason");
        QTest::addColumn<int>("page"); ///< index of the page shown afterwards
        QTest::newRow("a box") << "box" << 2;
        QTest::newRow("the background of the page") << "background" << 2;
        QTest::newRow("an edit label") << "edit label" << 2;
        QTest::newRow("Tab") << "tab" << 2;
        QTest::newRow("Shift+Tab") << "backtab" << 2;
        QTest::newRow("Esc") << "escape" << 2;
        QTest::newRow("Enter") << "enter" << 2;
        QTest::newRow("a page tab") << "page tab" << 1;
        QTest::newRow("Ctrl+Tab") << "control tab" << 3;
    }

    void pickList_closesOnEveryWayToLeaveIt()
    {
        QFETCH(QString, reason);
        QFETCH(int, page);
        ProgramWithLists program;
        if (reason == QLatin1String("edit label")) {
            program.programs.ExpectEditText(FromUtf8(program.folder.PathOf("Methods.txt")));
        }
        const std::map<QString, std::function<void(QDialog&)>> actions{
            {QStringLiteral("box"), [](QDialog& editor) { Click(editor, "txtMethods"); }},
            {QStringLiteral("background"), [](QDialog& editor) { ClickBackground(editor); }},
            {QStringLiteral("edit label"), [](QDialog& editor) { Click(editor, "lblEditMethods"); }},
            {QStringLiteral("tab"), [](QDialog& editor) { Press(editor, Qt::Key_Tab); }},
            {QStringLiteral("backtab"),
             [](QDialog& editor) { Press(editor, Qt::Key_Tab, Qt::ShiftModifier); }},
            {QStringLiteral("escape"), [](QDialog& editor) { Press(editor, Qt::Key_Escape); }},
            {QStringLiteral("enter"), [](QDialog& editor) { Press(editor, Qt::Key_Return); }},
            {QStringLiteral("page tab"), [](QDialog& editor) { ClickPage(editor, 1); }},
            {QStringLiteral("control tab"),
             [](QDialog& editor) { Press(editor, Qt::Key_Tab, Qt::ControlModifier); }},
        };
        Edit(program, program.entry, [&](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Bream", "Snapper"});
            actions.at(reason)(editor);
            QVERIFY(List(editor).isHidden());
            QVERIFY(editor.isVisible());
            QCOMPARE(Pages(editor).currentIndex(), page);
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream\nSnapper");
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::TargetSpecies), "Bream~CL~Snapper");
    }

    void closedList_returnsTheFocusToItsBox()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDBait");
            ClickBackground(editor);
            QCOMPARE(Focused(editor), "txtBait");
            GoTo(editor, "lblDDBait");
            Press(editor, Qt::Key_Return);
            QCOMPARE(Focused(editor), "txtBait");
            GoTo(editor, "lblDDBait");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Focused(editor), "txtMethods");
            GoTo(editor, "lblDDBait");
            Press(editor, Qt::Key_Tab, Qt::ShiftModifier);
            QCOMPARE(Focused(editor), "txtCaught");
            Close(editor);
        });
    }

    void escape_closesTheListOnly()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDCaught");
            Press(editor, Qt::Key_Escape);
            QVERIFY(!IsOpen(editor));
            QVERIFY(editor.isVisible());
            QCOMPARE(Focused(editor), "txtCaught");
            Press(editor, Qt::Key_Escape);
            QVERIFY(!editor.isVisible());
        });
    }

    void anotherLabel_appendsTheLinesToTheFirstBox()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Bream"});
            OpenAndPick(editor, "lblDDCaught", {"Snapper"});
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream");
            OpenAndPick(editor, "lblDDBait", {"Squid"});
            QCOMPARE(LinesText(editor, "txtCaught"), "Snapper");
            OpenAndPick(editor, "lblDDMethods", {"Casting"});
            QCOMPARE(LinesText(editor, "txtBait"), "Squid");
            SaveAndClose(editor);
        });
        const std::vector<std::string> entry = program.StoredEntry(program.entry);
        QCOMPARE(entry[EntryField::TargetSpecies], "Bream");
        QCOMPARE(entry[EntryField::FishCaught], "Snapper");
        QCOMPARE(entry[EntryField::BaitUsed], "Squid");
        QCOMPARE(entry[EntryField::Method], "Casting");
    }

    void sameLabel_appendsAndOpensAgain()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Bream"});
            GoTo(editor, "lblDDTarget");
            QVERIFY(IsOpen(editor));
            QCOMPARE(SelectedItems(editor), QStringList());
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::TargetSpecies), "Bream");
    }

    void list_staysOpenWhileAnotherProgramHasTheFocus()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Bream"});
            QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
            QCoreApplication::sendEvent(&List(editor), &away);
            QVERIFY(IsOpen(editor));
            QCOMPARE(LinesText(editor, "txtTarget"), "");
            QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
            QCoreApplication::sendEvent(&List(editor), &back);
            Pick(editor, "Flathead");
            Click(editor, "txtBait");
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream\nFlathead");
            SaveAndClose(editor);
        });
    }

    void altDown_inABox_opensItsList()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "txtBait");
            Press(editor, Qt::Key_Down, Qt::AltModifier);
            QVERIFY(IsOpen(editor));
            Press(editor, Qt::Key_Space);
            Press(editor, Qt::Key_Return);
            QCOMPARE(LinesText(editor, "txtBait"), "Prawn");
            QCOMPARE(Focused(editor), "txtBait");
            SaveAndClose(editor);
        });
    }

    void openingTheList_writesTheFocusedBoxBack()
    {
        ProgramWithLists program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.entry, [](QDialog& editor) {
            Enter(editor, "txtMethods", "Drifting");
            GoTo(editor, "lblDDMethods");
            Pick(editor, "Casting");
            Press(editor, Qt::Key_Escape);
            QCOMPARE(LinesText(editor, "txtMethods"), "Drifting\nCasting");
            Close(editor);
        });
    }

    void refusedBox_keepsTheListClosed()
    {
        TestProgram program;
        QDialog window;
        QVBoxLayout layout(&window);
        EntryCommentsPage page;
        QLineEdit date;
        layout.addWidget(&date);
        layout.addWidget(&page);
        LeaveGuard guard(&window);
        bool mayLeave = false;
        guard.Add(&date, [&] { return mayLeave; });
        program.Start();
        Record entry;
        QCOMPARE(program.sql.EntryGet(0, entry), succeeded);
        EditedRecord record;
        record.Begin(entry);
        RecordBinder binder(&window, record, guard);
        page.Attach(program.program, binder, guard);
        window.show();
        AwaitActive(window);
        date.setFocus();

        Click(window, "lblDDBait");
        QVERIFY(List(window).isHidden());
        QVERIFY(date.hasFocus());

        mayLeave = true;
        Click(window, "lblDDBait");
        QVERIFY(IsOpen(window));
    }

    void openList_saved_keepsThePickedLines_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("click") << false;
        QTest::newRow("Alt+S") << true;
    }

    void openList_saved_keepsThePickedLines()
    {
        QFETCH(bool, byKey);
        ProgramWithLists program;
        Edit(program, program.entry, [&](QDialog& editor) {
            OpenAndPick(editor, "lblDDBait", {"Squid"});
            QVERIFY(!IsSaveEnabled(editor));
            if (byKey) {
                Press(editor, Qt::Key_S, Qt::AltModifier);
            } else {
                Save(editor);
            }
            QVERIFY(!IsOpen(editor));
            // a mnemonic animates the button before it acts
            QTRY_COMPARE_WITH_TIMEOUT(program.StoredEntry(program.entry, EntryField::BaitUsed), "Squid",
                                      awaitTimeout);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void openList_closed_asksAboutThePickedLines_data()
    {
        QTest::addColumn<QString>("by");
        QTest::addColumn<bool>("yes");
        QTest::newRow("Close, Yes") << "click" << true;
        QTest::newRow("Close, No") << "click" << false;
        QTest::newRow("Alt+C, Yes") << "key" << true;
        QTest::newRow("close box, Yes") << "close box" << true;
    }

    void openList_closed_asksAboutThePickedLines()
    {
        QFETCH(QString, by);
        QFETCH(bool, yes);
        ProgramWithLists program;
        program.messages.Expect(saveQuestion, yes ? Button::Yes : Button::No);
        Edit(program, program.entry, [&](QDialog& editor) {
            OpenAndPick(editor, "lblDDMethods", {"Trolling"});
            if (by == QLatin1String("click")) {
                Close(editor);
            } else if (by == QLatin1String("key")) {
                Press(editor, Qt::Key_C, Qt::AltModifier);
            } else {
                editor.close();
            }
            QTRY_VERIFY_WITH_TIMEOUT(!editor.isVisible(), awaitTimeout);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::Method), yes ? "Trolling" : "");
    }
};

TEST_CLASS(tst_PickedItems)
#include "tst_PickedItems.moc"
