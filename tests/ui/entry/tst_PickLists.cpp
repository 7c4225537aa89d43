#include "PickListTest.h"
#include "core/Twips.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"
#include "ui/entry/PickLists.h"

#include <QGroupBox>
#include <QLabel>

#include <filesystem>

using namespace Tarno;

// The pick lists, the labels that open and edit them, and the files that they are read from.

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
        QTest::newRow("UTF-8 with byte order mark")
            << QByteArray("\xEF\xBB\xBF"
                          "Nud\xC3\xA9l\r\nB")
            << QStringList{QStringLiteral(u"Nud\u00E9l"), QStringLiteral("B")};
        QTest::newRow("byte order mark alone") << QByteArray("\xEF\xBB\xBF") << QStringList{QString()};
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
        // the last byte would start a multi-byte sequence in UTF-8
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

    void dropDownLabel_showsTheLinesOfItsFile_data()
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

    void dropDownLabel_showsTheLinesOfItsFile()
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

    void list_isJustBelowItsLabel_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("opensToTheLeft");
        QTest::newRow("target") << "lblDDTarget" << false;
        QTest::newRow("caught") << "lblDDCaught" << true;
        QTest::newRow("bait") << "lblDDBait" << false;
        QTest::newRow("methods") << "lblDDMethods" << true;
    }

    void list_isJustBelowItsLabel()
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

            const QPoint before = shown.mapTo(&page, QPoint());
            editor.resize(editor.size() + QSize(160, 120));
            Await([&] { return shown.mapTo(&page, QPoint()) != before; }, "the label does not move");
            QVERIFY(list.isVisible());
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

    void fileNameInAnotherCase_isFound()
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
        const UnprivilegedUser user(program.folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        program.reports.Expect("fEntry", "lblDDBait_Click", ErrorNumber::PathFileAccess);
        Edit(program, program.entry, [](QDialog& editor) {
            GoTo(editor, "lblDDBait");
            QVERIFY(!IsOpen(editor));
            OpenAndPick(editor, "lblDDMethods", {"Casting"}); // the other lists still work
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

    void editLabel_missingFile_isPassedToTheEditor()
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

    void editLabel_keepsTheFocus()
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
