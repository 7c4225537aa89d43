#include "EntryTest.h"
#include "support/PlainUser.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "ui/common/LeaveGuard.h"
#include "ui/common/Twips.h"
#include "ui/entry/EntryCommentsPage.h"
#include "ui/entry/PickLists.h"

#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace
{

/// A program with an entry whose comment boxes are empty, and short pick lists.
class ProgramWithLists : public ProgramWithPlace
{
public:
    ProgramWithLists()
    {
        folder.Write("Species.txt", "Bream\r\n\r\nSnapper\r\nFlathead\r\n");
        folder.Write("Bait.txt", "Prawn\r\nSquid\r\n");
        folder.Write("Methods.txt", "Casting\r\nTrolling\r\n");
        entry = AddCompleteEntry({{EntryField::TargetSpecies, ""},
                                  {EntryField::BaitUsed, ""},
                                  {EntryField::Method, ""},
                                  {EntryField::FishCaught, ""}});
    }

    int entry = 0;
};

QListWidget& List(const QWidget& editor)
{
    return Find<QListWidget>(editor, "lstList");
}

bool IsOpen(const QWidget& editor)
{
    return List(editor).isVisible();
}

QStringList Items(const QWidget& editor)
{
    QStringList items;
    for (int row = 0; row < List(editor).count(); ++row) {
        items.append(List(editor).item(row)->text());
    }
    return items;
}

QStringList SelectedItems(const QWidget& editor)
{
    QStringList items;
    for (int row = 0; row < List(editor).count(); ++row) {
        if (List(editor).item(row)->isSelected()) {
            items.append(List(editor).item(row)->text());
        }
    }
    return items;
}

/// Clicks the item `text` of the open list.
void Pick(QWidget& editor, const char* text)
{
    QListWidget& list = List(editor);
    const QList<QListWidgetItem*> found = list.findItems(QLatin1String(text), Qt::MatchExactly);
    QVERIFY2(!found.isEmpty(), text);
    list.scrollToItem(found.first());
    QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {},
                      list.viewport()->mapTo(&editor, list.visualItemRect(found.first()).center()));
}

/// Opens the list by its label and clicks the items.
void OpenAndPick(QWidget& editor, const char* label, std::initializer_list<const char*> items)
{
    GoTo(editor, label);
    QVERIFY(IsOpen(editor));
    for (const char* item : items) {
        Pick(editor, item);
    }
}

/// A click on a place of the page that takes no focus.
void ClickBackground(QWidget& editor)
{
    const auto& page = Find<QWidget>(editor, "pageComments");
    QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {}, page.mapTo(&editor, QPoint(2, 2)));
}

} // namespace

class tst_PickLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void lines_ofAFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const QStringList two{QStringLiteral("Bream"), QStringLiteral("Snapper")};
        QTest::newRow("CR LF") << QByteArray("Bream\r\nSnapper") << two;
        QTest::newRow("LF") << QByteArray("Bream\nSnapper") << two;
        QTest::newRow("a final line break")
            << QByteArray("Bream\r\nSnapper\r\n") << two + QStringList{QString()};
        QTest::newRow("mixed") << QByteArray("Bream\nSnapper\r\nCod")
                               << two + QStringList{QStringLiteral("Cod")};
        QTest::newRow("blank line") << QByteArray("Bream\r\n\r\nSnapper")
                                    << QStringList{two[0], QString(), two[1]};
        QTest::newRow("blanks") << QByteArray(" Bream  \r\n \r\nSnapper\t")
                                << QStringList{QStringLiteral(" Bream  "), QStringLiteral(" "),
                                               QStringLiteral("Snapper\t")};
        QTest::newRow("UTF-8") << QByteArray("Nud\xC3\xA9l\r\n\xE9\xAF\x9B")
                               << QStringList{QStringLiteral(u"Nud\u00E9l"), QStringLiteral(u"\u9BDB")};
        QTest::newRow("UTF-8 with its mark")
            << QByteArray("\xEF\xBB\xBF"
                          "Nud\xC3\xA9l\r\nB")
            << QStringList{QStringLiteral(u"Nud\u00E9l"), QStringLiteral("B")};
        QTest::newRow("the mark alone") << QByteArray("\xEF\xBB\xBF") << QStringList{QString()};
        QTest::newRow("comma and quotes") << QByteArray("\"Bream\", small; large")
                                          << QStringList{QStringLiteral("\"Bream\", small; large")};
        QTest::newRow("empty") << QByteArray() << QStringList{QString()};
    }

    void lines_ofAFile()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QCOMPARE(PickListLines(bytes), lines);
    }

    void lines_ofInvalidUtf8_areReadInTheAnsiCodePage()
    {
        const QStringList lines{QStringLiteral(u"Nud\u00E9l"), QStringLiteral(u"\u20AC 5 \u2019lure\u2019")};
        QCOMPARE(PickListLines("Nud\xE9l\r\n\x80 5 \x92lure\x92"), lines);
        // a last letter that in UTF-8 would be the first byte of one
        QCOMPARE(PickListLines("Paw\xE9"), QStringList(QStringLiteral(u"Paw\u00E9")));
    }

    void label_hasItsCaptionAndToolTip_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("toolTip");
        QTest::newRow("edit targets") << "lblEditTargets"
                                      << "!"
                                      << "Edit target species file";
        QTest::newRow("edit caught") << "lblEditCaught"
                                     << "!"
                                     << "Edit species caught file";
        QTest::newRow("edit bait") << "lblEditBait"
                                   << "!"
                                   << "Edit bait/lure/fly file";
        QTest::newRow("edit methods") << "lblEditMethods"
                                      << "!"
                                      << "Edit methods file";
        for (const char* label : {"lblDDTarget", "lblDDCaught", "lblDDBait", "lblDDMethods"}) {
            QTest::newRow(label) << label << ">"
                                 << "Open drop down list";
        }
    }

    void label_hasItsCaptionAndToolTip()
    {
        QFETCH(QString, label);
        QFETCH(QString, caption);
        QFETCH(QString, toolTip);
        ProgramWithLists program;
        Edit(program, program.entry, [&](QDialog& editor) {
            const auto& shown = Find<QLabel>(editor, label.toLatin1());
            QCOMPARE(shown.text(), caption);
            QCOMPARE(shown.toolTip(), toolTip);
            QCOMPARE(shown.font().family(), QStringLiteral("MS Sans Serif"));
            QVERIFY(shown.font().bold());
            Close(editor);
        });
    }

    void list_hasItsToolTip()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            QCOMPARE(List(editor).toolTip(), QStringLiteral("click item to select/unselect"));
            QVERIFY(List(editor).isHidden());
            Close(editor);
        });
    }

    void dropDownLabel_listsItsFile_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QStringList>("items");
        const QStringList species{QStringLiteral("Bream"), QStringLiteral("Snapper"),
                                  QStringLiteral("Flathead")};
        QTest::newRow("target") << "lblDDTarget" << species;
        QTest::newRow("caught") << "lblDDCaught" << species;
        QTest::newRow("bait") << "lblDDBait" << QStringList{QStringLiteral("Prawn"), QStringLiteral("Squid")};
        QTest::newRow("methods") << "lblDDMethods"
                                 << QStringList{QStringLiteral("Casting"), QStringLiteral("Trolling")};
    }

    void dropDownLabel_listsItsFile()
    {
        QFETCH(QString, label);
        QFETCH(QStringList, items);
        ProgramWithLists program;
        Edit(program, program.entry, [&](QDialog& editor) {
            GoTo(editor, label.toLatin1());
            QVERIFY(IsOpen(editor));
            QCOMPARE(Items(editor), items);
            Close(editor);
        });
    }

    void list_standsJustBelowItsLabel_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("opensToTheLeft");
        QTest::newRow("target") << "lblDDTarget" << false;
        QTest::newRow("caught") << "lblDDCaught" << true;
        QTest::newRow("bait") << "lblDDBait" << false;
        QTest::newRow("methods") << "lblDDMethods" << true;
    }

    void list_standsJustBelowItsLabel()
    {
        QFETCH(QString, label);
        QFETCH(bool, opensToTheLeft);
        ProgramWithLists program;
        Edit(program, program.entry, [&](QDialog& editor) {
            GoTo(editor, label.toLatin1());
            const auto& shown = Find<QLabel>(editor, label.toLatin1());
            const QWidget& frame = *shown.parentWidget();
            const QWidget& page = Find<QWidget>(editor, "pageComments");
            const QListWidget& list = List(editor);
            QVERIFY(qobject_cast<const QGroupBox*>(&frame) != nullptr);
            QCOMPARE(frame.parentWidget(), &page);
            QCOMPARE(list.parentWidget(), &page);
            QCOMPARE(list.y(), frame.y() + shown.y() + shown.height() + FromTwips(40));
            QCOMPARE(list.x(), opensToTheLeft ? frame.x() - list.width() + FromTwips(100) : shown.x());
            Close(editor);
        });
    }

    void list_opened_hasTheFocusOnItsFirstItem()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            QCOMPARE(Focused(editor), "lstList");
            QCOMPARE(List(editor).currentRow(), 0);
            QCOMPARE(SelectedItems(editor), QStringList());
            Close(editor);
        });
    }

    void list_staysWithinThePage()
    {
        ProgramWithLists program;
        QByteArray lines;
        for (int number = 1; number <= 200; ++number) {
            lines += "Item " + QByteArray::number(number) + "\r\n";
        }
        program.folder.Write("Species.txt", lines.toStdString());
        program.folder.Write("Bait.txt", lines.toStdString());
        program.folder.Write("Methods.txt", lines.toStdString());
        Edit(program, program.entry, [](QDialog& editor) {
            for (const char* label : {"lblDDTarget", "lblDDCaught", "lblDDBait", "lblDDMethods"}) {
                GoTo(editor, label);
                const QRect page(QPoint(), Find<QWidget>(editor, "pageComments").size());
                QVERIFY2(page.contains(List(editor).geometry()), label);
                QVERIFY2(List(editor).viewport()->height() >= 3 * List(editor).sizeHintForRow(0), label);
            }
            Close(editor);
        });
    }

    void blankLines_areSkippedButCounted()
    {
        ProgramWithLists program;
        program.folder.Write("Species.txt", "\r\nBream\r\n\r\n\r\nSnapper\r\n \r\n");
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            QCOMPARE(Items(editor),
                     (QStringList{QStringLiteral("Bream"), QStringLiteral("Snapper"), QStringLiteral(" ")}));
            QCOMPARE(List(editor).item(0)->data(Qt::UserRole).toInt(), 1);
            QCOMPARE(List(editor).item(1)->data(Qt::UserRole).toInt(), 4);
            QCOMPARE(List(editor).item(2)->data(Qt::UserRole).toInt(), 5);
            Close(editor);
        });
    }

    void fileOfAnotherLetterCase_isFound()
    {
        NOT_ON_WINDOWS("names of files that differ in case");
        ProgramWithLists program;
        std::filesystem::rename(program.folder.PathOf("Species.txt"), program.folder.PathOf("SPECIES.TXT"));
        program.programs.ExpectEditText(FromUtf8(program.folder.PathOf("SPECIES.TXT")));
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDTarget");
            QCOMPARE(Items(editor).size(), 3);
            Press(editor, Qt::Key_Escape);
            Click(editor, "lblEditTargets");
            Close(editor);
        });
    }

    void fiveThousandLines_areListed()
    {
        ProgramWithLists program;
        QStringList lines;
        for (int number = 1; number <= 5000; ++number) {
            lines.append(QStringLiteral("Fish %1").arg(number));
        }
        program.folder.Write("Species.txt", ToUtf8(lines.join(QLatin1String("\r\n"))));
        Edit(program, program.entry, [&](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Fish 5000", "Fish 2"});
            QCOMPARE(Items(editor), lines);
            Click(editor, "txtBait");
            QCOMPARE(LinesText(editor, "txtTarget"), "Fish 2\nFish 5000");
            SaveAndClose(editor);
        });
    }

    void fileChanged_isReadAtTheNextOpening()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [&](QDialog& editor) {
            GoTo(editor, "lblDDBait");
            program.folder.Write("Bait.txt", "Worm\r\n");
            QCOMPARE(Items(editor).size(), 2);
            GoTo(editor, "lblDDBait");
            QCOMPARE(Items(editor), QStringList{QStringLiteral("Worm")});
            Close(editor);
        });
    }

    void noItems_showNothing_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* kind : {"missing", "folder", "empty", "line breaks only", "mark only"}) {
            QTest::newRow(kind) << kind;
        }
    }

    void noItems_showNothing()
    {
        QFETCH(QString, kind);
        ProgramWithLists program;
        std::filesystem::remove(program.folder.PathOf("Methods.txt"));
        if (kind == QLatin1String("folder")) {
            program.folder.MakeFolder("Methods.txt");
        } else if (kind != QLatin1String("missing")) {
            program.folder.Write("Methods.txt", kind == QLatin1String("empty")       ? ""
                                                : kind == QLatin1String("mark only") ? "\xEF\xBB\xBF"
                                                                                     : "\r\n\r\n\n");
        }
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "txtMethods");
            GoTo(editor, "lblDDMethods");
            QVERIFY(!IsOpen(editor));
            QCOMPARE(List(editor).count(), 0);
            QCOMPARE(Focused(editor), "txtMethods");
            Type(editor, "x");
            QCOMPARE(LinesText(editor, "txtMethods"), "x");
            SaveAndClose(editor);
        });
    }

    void fileMissing_afterAListWasShown_leavesItHidden()
    {
        ProgramWithLists program;
        std::filesystem::remove(program.folder.PathOf("Methods.txt"));
        Edit(program, program.entry, [](QDialog& editor) {
            OpenAndPick(editor, "lblDDTarget", {"Bream"});
            GoTo(editor, "lblDDMethods");
            QVERIFY(!IsOpen(editor));
            QCOMPARE(LinesText(editor, "txtTarget"), "Bream");
            QCOMPARE(LinesText(editor, "txtMethods"), "");
            SaveAndClose(editor);
        });
    }

    void unreadableFile_isReported()
    {
        ProgramWithLists program;
        std::filesystem::permissions(program.folder.PathOf("Bait.txt"), std::filesystem::perms::none);
        const PlainUser user(program.folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        program.reports.Expect("fEntry", "lblDDBait_Click", ErrorNumber::PathFileAccess);
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDBait");
            QVERIFY(!IsOpen(editor));
            OpenAndPick(editor, "lblDDMethods", {"Casting"}); // the others still work
            Click(editor, "txtBait");
            QCOMPARE(LinesText(editor, "txtMethods"), "Casting");
            QCOMPARE(LinesText(editor, "txtBait"), "");
            SaveAndClose(editor);
        });
    }

    void pipeInPlaceOfTheFile_isReported()
    {
        NOT_ON_WINDOWS("pipes");
        ProgramWithLists program;
        std::filesystem::remove(program.folder.PathOf("Species.txt"));
        program.folder.MakePipe("Species.txt");
        program.reports.Expect("fEntry", "lblDDCaught_Click", ErrorNumber::PathFileAccess);
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDCaught");
            QVERIFY(!IsOpen(editor));
            Close(editor);
        });
    }

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

    void letters_goToALineAndSelectNone()
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

    void trailingBlanks_ofAnItemStay()
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
            Close(editor); // asks nothing
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

    void list_closesFor_data()
    {
        QTest::addColumn<QString>("reason");
        QTest::addColumn<int>("page"); ///< shown afterwards
        QTest::newRow("a box") << "box" << 2;
        QTest::newRow("the page beside its boxes") << "background" << 2;
        QTest::newRow("an edit label") << "edit label" << 2;
        QTest::newRow("Tab") << "tab" << 2;
        QTest::newRow("Shift+Tab") << "backtab" << 2;
        QTest::newRow("Esc") << "escape" << 2;
        QTest::newRow("Enter") << "enter" << 2;
        QTest::newRow("a page tab") << "page tab" << 1;
        QTest::newRow("Ctrl+Tab") << "control tab" << 3;
    }

    void list_closesFor()
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

    void closedList_givesTheFocusToItsBox()
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

    void anotherLabel_givesTheLinesToTheFirstBox()
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

    void list_staysWhileAnotherProgramHasTheFocus()
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

    void openingTheList_leavesTheBoxWithTheFocus()
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

    void boxThatMayNotBeLeft_refusesTheList()
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
        PickLists lists(&page, program.program, guard);
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
            // a key shows its button pressed for a moment
            QTRY_COMPARE_WITH_TIMEOUT(program.StoredEntry(program.entry, EntryField::BaitUsed), "Squid",
                                      patience);
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
            QTRY_VERIFY_WITH_TIMEOUT(!editor.isVisible(), patience);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::Method), yes ? "Trolling" : "");
    }

    void editLabel_opensItsFileInTheEditor_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("file");
        QTest::newRow("targets") << "lblEditTargets"
                                 << "Species.txt";
        QTest::newRow("caught") << "lblEditCaught"
                                << "Species.txt";
        QTest::newRow("bait") << "lblEditBait"
                              << "Bait.txt";
        QTest::newRow("methods") << "lblEditMethods"
                                 << "Methods.txt";
    }

    void editLabel_opensItsFileInTheEditor()
    {
        QFETCH(QString, label);
        QFETCH(QString, file);
        ProgramWithLists program;
        program.programs.ExpectEditText(FromUtf8(program.folder.PathOf(file.toStdString())));
        Edit(program, program.entry, [&](QDialog& editor) {
            GoTo(editor, label.toLatin1());
            QVERIFY(!IsOpen(editor));
            Close(editor);
        });
    }

    void editLabel_ofAMissingFile_stillNamesIt()
    {
        ProgramWithLists program;
        std::filesystem::remove(program.folder.PathOf("Bait.txt"));
        program.programs.ExpectEditText(FromUtf8(program.folder.PathOf("Bait.txt")));
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblEditBait");
            Close(editor);
        });
    }

    void editLabel_editorDoesNotStart_isReported_data() { editLabel_opensItsFileInTheEditor_data(); }

    void editLabel_editorDoesNotStart_isReported()
    {
        QFETCH(QString, label);
        QFETCH(QString, file);
        ProgramWithLists program;
        program.programs.ExpectEditText(FromUtf8(program.folder.PathOf(file.toStdString())), false);
        program.reports.Expect("fEntry", label.toStdString() + "_Click", ErrorNumber::FileNotFound);
        Edit(program, program.entry, [&](QDialog& editor) {
            GoTo(editor, label.toLatin1());
            QVERIFY(editor.isVisible());
            Close(editor);
        });
    }

    void editLabel_leavesTheFocusAlone()
    {
        ProgramWithLists program;
        program.programs.ExpectEditText(FromUtf8(program.folder.PathOf("Species.txt")));
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.entry, [](QDialog& editor) {
            Enter(editor, "txtBait", "Worm");
            Click(editor, "lblEditTargets");
            QCOMPARE(Focused(editor), "txtBait");
            Close(editor);
        });
    }
};

TEST_CLASS(tst_PickLists)
#include "tst_PickLists.moc"
