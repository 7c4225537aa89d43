// The report builder: its lists, what moves between and within them, the sort caption, the locations.

#include "reports/BuilderTest.h"
#include "support/TestClass.h"

#include <QFrame>

#include <algorithm>
#include <map>

namespace
{

/// What the two lists of the builder hold.
std::string Lists(const QWidget& builder)
{
    return Items(builder, "lstAvail") + " -> " + Items(builder, "lstRpt");
}

std::string SortCaption(const QWidget& builder)
{
    return Caption(builder, "chkDesc");
}

std::vector<Line> ManyFields(int count)
{
    std::vector<Line> fields;
    for (int number = 1; number <= count; ++number) {
        const std::string text = std::to_string(number);
        fields.push_back(
            {text, "Name" + text, "Field " + text, "H" + text, "10", "8", "0", number % 2 == 0 ? "1" : "0"});
    }
    return fields;
}

} // namespace

class tst_fRptLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void captions_areAsKnown()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(builder.windowTitle(), QStringLiteral("Log Reporting"));
            const std::map<const char*, std::string> captions{
                {"lblAvail", "Select the fields for the report:"},
                {"lblRpt", "Order of fields on report:"},
                {"lblLocation", "Location:"},
                {"chkSaved", "Use a Saved Report ==>"},
                {"cmdSave", "Save"},
                {"cmdDelete", "Delete"},
                {"cmdCustom", "Customise"},
                {"cmdPreview", "Preview"},
                {"cmdClose", "Close"},
                {"lblSavedCaption", "Save Custom Report"},
                {"lblSaved", "Description"},
                {"chkNew", "Save this set of fields as a new custom report"},
                {"cmdSavedOK", "OK"},
                {"cmdSavedCancel", "Cancel"}};
            for (const auto& [name, caption] : captions) {
                QCOMPARE(Caption(builder, name), caption);
            }
        });
    }

    void toolTips_areAsKnown()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            const std::map<const char*, QString> tips{
                {"lstRpt", QStringLiteral("Report will sort by the first field in the list")},
                {"cmdUp", QStringLiteral("Move selected field up")},
                {"cmdDn", QStringLiteral("Move selected field down")},
                {"cmdSave", QStringLiteral("Save custom report")},
                {"cmdCustom", QStringLiteral("Customise report components")}};
            for (const auto& [name, tip] : tips) {
                QCOMPARE(Find<QWidget>(builder, name).toolTip(), tip);
            }
        });
    }

    void mnemonics_areUnambiguous()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            const std::string letters = Mnemonics(builder);
            QVERIFY(letters.size() >= 12);
            QVERIFY2(std::adjacent_find(letters.begin(), letters.end()) == letters.end(), letters.c_str());
        });
    }

    void buttonsWithPictures_haveOneAndAName()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            for (const char* name : {"cmdMove", "cmdMoveAll", "cmdBack", "cmdBackAll", "cmdUp", "cmdDn"}) {
                const auto& button = Find<QAbstractButton>(builder, name);
                QVERIFY2(!button.icon().isNull(), name);
                QVERIFY2(!button.accessibleName().isEmpty(), name);
            }
        });
    }

    void opened_showsTheDefaultReport()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Numbers(builder, "lstAvail"), "2,4,6");
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,5");
            QCOMPARE(SelectedRow(builder, "lstAvail"), -1);
            QCOMPARE(SelectedRow(builder, "lstRpt"), -1);
            QCOMPARE(SortCaption(builder), "Sort by Date Desc");
            QVERIFY(!IsTicked(builder, "chkDesc"));
            QVERIFY(!Find<QWidget>(builder, "frSaved").isVisible());
        });
    }

    void opened_shippedFields_areSplitByTheirFlag()
    {
        TestProgram program;
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,4,5,6,7,16,17,25,27,28");
            QCOMPARE(List(builder, "lstAvail").count(), 25);
            QCOMPARE(SortCaption(builder), "Sort by Date the trip started Desc");
        });
    }

    void opened_field_standsWhereItsFlagPutsIt_data()
    {
        QTest::addColumn<QByteArray>("flag");
        QTest::addColumn<bool>("onReport");
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("2") << QByteArray("2") << true;
        QTest::newRow("empty") << QByteArray("") << true;
        QTest::newRow("word") << QByteArray("no") << true;
        QTest::newRow("two digits") << QByteArray("00") << true;
        QTest::newRow("with a blank") << QByteArray("0 ") << true;
    }

    void opened_field_standsWhereItsFlagPutsIt()
    {
        QFETCH(QByteArray, flag);
        QFETCH(bool, onReport);
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "Date", "From", "20", "8", "0", flag.toStdString()}});
        program.Start();
        ShowBuilder(program,
                    [&](QDialog& builder) { QCOMPARE(Lists(builder), onReport ? " -> Date" : "Date -> "); });
    }

    void opened_withoutSavedReports_enablesWhatThereIsToDo()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete chkSaved cboSaved");
            QCOMPARE(Choices(builder, "cboSaved"), "");
            QVERIFY(!IsTicked(builder, "chkSaved"));
        });
    }

    void opened_withSavedReports_offersThem()
    {
        ProgramWithSixFields program({{"1", "Zebra", "EndTime", "4"}, {"4", "Apple", "EndDate", "2"}});
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Zebra|Apple");
            const auto& saved = Find<QComboBox>(builder, "cboSaved");
            QCOMPARE(saved.itemData(0).toInt(), 1);
            QCOMPARE(saved.itemData(1).toInt(), 4);
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
        });
    }

    void opened_withoutFields_offersNoReport()
    {
        TestProgram program;
        WriteFields(program, {});
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), " -> ");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc cmdSave cmdDelete chkSaved cboSaved");
            QCOMPARE(SortCaption(builder), "");
        });
    }

    void move_putsTheFieldAtTheEnd_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("lists");
        const auto row = [](const char* name, const char* button, int row, const char* lists) {
            QTest::newRow(name) << QByteArray(button)
                                << QByteArray(button == QByteArray("cmdMove") ? "lstAvail" : "lstRpt") << row
                                << QByteArray(lists);
        };
        row("first to the report", "cmdMove", 0, "End|Tide -> Date|Time|Place|Until");
        row("second to the report", "cmdMove", 1, "Until|Tide -> Date|Time|Place|End");
        row("last to the report", "cmdMove", 2, "Until|End -> Date|Time|Place|Tide");
        row("first from the report", "cmdBack", 0, "Until|End|Tide|Date -> Time|Place");
        row("second from the report", "cmdBack", 1, "Until|End|Tide|Time -> Date|Place");
        row("last from the report", "cmdBack", 2, "Until|End|Tide|Place -> Date|Time");
    }

    void move_putsTheFieldAtTheEnd()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, list);
        QFETCH(int, row);
        QFETCH(QByteArray, lists);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            ClickItem(builder, list, row);
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            Click(builder, button.constData());
            QCOMPARE(Lists(builder), lists.toStdString());
        });
    }

    void move_severalInTurn_keepTheirNumbers()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            ClickItem(builder, "lstAvail", 2); // Tide
            Click(builder, "cmdMove");
            ClickItem(builder, "lstAvail", 0); // Until
            Click(builder, "cmdMove");
            ClickItem(builder, "lstRpt", 1); // Time
            Click(builder, "cmdBack");
            ClickItem(builder, "lstRpt", 2); // Tide
            Click(builder, "cmdBack");
            QCOMPARE(Lists(builder), "End|Time|Tide -> Date|Place|Until");
            QCOMPARE(Numbers(builder, "lstAvail"), "4,3,6");
            QCOMPARE(Numbers(builder, "lstRpt"), "1,5,2");
        });
    }

    void moveAll_landsBehindWhatIsThere_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("lists");
        QTest::addColumn<QByteArray>("numbers");
        QTest::newRow("to the report")
            << QByteArray("cmdMoveAll") << QByteArray(" -> Date|Time|Place|Until|End|Tide")
            << QByteArray(" -> 1,3,5,2,4,6");
        QTest::newRow("from the report")
            << QByteArray("cmdBackAll") << QByteArray("Until|End|Tide|Date|Time|Place -> ")
            << QByteArray("2,4,6,1,3,5 -> ");
    }

    void moveAll_landsBehindWhatIsThere()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, lists);
        QFETCH(QByteArray, numbers);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, button.constData());
            QCOMPARE(Lists(builder), lists.toStdString());
            QCOMPARE(Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt"),
                     numbers.toStdString());
            Click(builder, button.constData()); // nothing is left to move
            QCOMPARE(Lists(builder), lists.toStdString());
        });
    }

    void doubleClick_movesTheField()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            DoubleClickItem(builder, "lstAvail", 1);
            QCOMPARE(Lists(builder), "Until|Tide -> Date|Time|Place|End");
            DoubleClickItem(builder, "lstRpt", 0);
            QCOMPARE(Lists(builder), "Until|Tide|Date -> Time|Place|End");
            QCOMPARE(SortCaption(builder), "Sort by Time Desc");
        });
    }

    void doubleClick_onEmptySpace_movesNothing()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            for (const char* name : {"lstAvail", "lstRpt"}) {
                ClickItem(builder, name, 0);
                const QWidget* view = List(builder, name).viewport();
                QTest::mouseDClick(builder.windowHandle(), Qt::LeftButton, {},
                                   view->mapTo(&builder, QPoint(view->width() / 2, view->height() - 3)));
            }
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
        });
    }

    void withoutSelection_nothingMoves_data()
    {
        QTest::addColumn<QByteArray>("button");
        for (const char* button : {"cmdMove", "cmdBack", "cmdUp", "cmdDn"}) {
            QTest::newRow(button) << QByteArray(button);
        }
    }

    void withoutSelection_nothingMoves()
    {
        QFETCH(QByteArray, button);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            Press(builder, Qt::Key_Tab); // through the lists, so that each has had the focus
            List(builder, "lstRpt").setFocus();
            Click(builder, button.constData());
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QVERIFY(!IsEnabled(builder, "cmdSave"));
        });
    }

    void emptyList_moves_changeNothing()
    {
        TestProgram program;
        WriteFields(program, {});
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            for (const char* button : {"cmdMove", "cmdBack", "cmdMoveAll", "cmdBackAll", "cmdUp", "cmdDn"}) {
                Click(builder, button);
            }
            QCOMPARE(Lists(builder), " -> ");
            QVERIFY(!IsEnabled(builder, "cmdPreview"));
        });
    }

    void order_movesTheFieldByOne_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("numbers");
        QTest::addColumn<int>("selected");
        QTest::addColumn<QByteArray>("caption");
        QTest::newRow("second up") << QByteArray("cmdUp") << 1 << QByteArray("3,1,5") << 0
                                   << QByteArray("Sort by Time Desc");
        QTest::newRow("third up") << QByteArray("cmdUp") << 2 << QByteArray("1,5,3") << 1
                                  << QByteArray("Sort by Date Desc");
        QTest::newRow("first down") << QByteArray("cmdDn") << 0 << QByteArray("3,1,5") << 1
                                    << QByteArray("Sort by Time Desc");
        QTest::newRow("second down") << QByteArray("cmdDn") << 1 << QByteArray("1,5,3") << 2
                                     << QByteArray("Sort by Date Desc");
    }

    void order_movesTheFieldByOne()
    {
        QFETCH(QByteArray, button);
        QFETCH(int, row);
        QFETCH(QByteArray, numbers);
        QFETCH(int, selected);
        QFETCH(QByteArray, caption);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            ClickItem(builder, "lstRpt", row);
            const std::string moved = ToUtf8(List(builder, "lstRpt").item(row)->text());
            Click(builder, button.constData());
            QCOMPARE(Numbers(builder, "lstRpt"), numbers.toStdString());
            QCOMPARE(SelectedRow(builder, "lstRpt"), selected);
            QCOMPARE(ToUtf8(List(builder, "lstRpt").item(selected)->text()), moved);
            QCOMPARE(SortCaption(builder), caption.toStdString());
            QVERIFY(IsEnabled(builder, "lstRpt"));
            QCOMPARE(Items(builder, "lstAvail"), "Until|End|Tide");
        });
    }

    void cmdUp_onTheFirstItem_doesNothing()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdUp");
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,5");
            QCOMPARE(SelectedRow(builder, "lstRpt"), 0);
            QVERIFY(!IsEnabled(builder, "cmdSave"));
        });
    }

    void cmdDn_onTheLastItem_doesNothing()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            ClickItem(builder, "lstRpt", 2);
            Click(builder, "cmdDn");
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,5");
            QCOMPARE(SelectedRow(builder, "lstRpt"), 2);
            QVERIFY(!IsEnabled(builder, "cmdSave"));
        });
    }

    void order_movesOnAndOn()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            ClickItem(builder, "lstRpt", 2);
            for (int step = 0; step < 5; ++step) {
                Click(builder, "cmdUp");
            }
            QCOMPARE(Items(builder, "lstRpt"), "Place|Date|Time");
            for (int step = 0; step < 5; ++step) {
                Click(builder, "cmdDn");
            }
            QCOMPARE(Items(builder, "lstRpt"), "Date|Time|Place");
            QCOMPARE(SortCaption(builder), "Sort by Date Desc");
        });
    }

    void sortCaption_namesTheFirstField()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdBack");
            QCOMPARE(SortCaption(builder), "Sort by Time Desc");
            Click(builder, "cmdBackAll");
            ClickItem(builder, "lstAvail", 2);
            Click(builder, "cmdMove");
            QCOMPARE(SortCaption(builder), "Sort by Tide Desc");
            Click(builder, "cmdMoveAll");
            QCOMPARE(SortCaption(builder), "Sort by Tide Desc");
        });
    }

    void sortCaption_ofAnEmptyReport_isEmpty()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdBackAll");
            QCOMPARE(SortCaption(builder), "");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc cmdDelete chkSaved cboSaved");
            Click(builder, "cmdMoveAll");
            QCOMPARE(SortCaption(builder), "Sort by Until Desc");
            QCOMPARE(Disabled(builder), "cmdDelete chkSaved cboSaved");
        });
    }

    void sortCaption_showsTheDescriptionAsItIs_data()
    {
        QTest::addColumn<QByteArray>("description");
        QTest::newRow("ampersand") << QByteArray("Bait & lure");
        QTest::newRow("ampersand before a letter") << QByteArray("R&D");
        QTest::newRow("two ampersands") << QByteArray("a&&b");
        QTest::newRow("markup") << QByteArray("<b>bold</b> &amp;");
        QTest::newRow("other scripts") << QByteArray("Fänge 釣り 🐟");
        QTest::newRow("quotes and percent") << QByteArray("\"%1\" 'x'");
        QTest::newRow("empty") << QByteArray("");
    }

    void sortCaption_showsTheDescriptionAsItIs()
    {
        QFETCH(QByteArray, description);
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", description.toStdString(), "From", "20", "8", "0", "1"},
                              sixFields[1]});
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) {
            QCOMPARE(Items(builder, "lstRpt"), description.toStdString());
            QCOMPARE(SortCaption(builder), "Sort by " + description.toStdString() + " Desc");
            QVERIFY(Find<QAbstractButton>(builder, "chkDesc").shortcut().isEmpty());
            ClickItem(builder, "lstRpt", 0);
            Click(builder, "cmdBack");
            QCOMPARE(Items(builder, "lstAvail"), "Until|" + description.toStdString());
        });
    }

    void fieldNames_areShownAsTheyAre()
    {
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "a~CL~b", "From", "20", "8", "0", "1"},
                              {"2", "EndDate", "  edges  ", "To", "20", "8", "0", "0"}});
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "  edges   -> a~CL~b");
            QCOMPARE(SortCaption(builder), "Sort by a~CL~b Desc");
        });
    }

    void everyChange_enablesSave_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("list");
        for (const auto& [button, list] :
             {std::pair{"cmdMove", "lstAvail"}, std::pair{"cmdMoveAll", "lstAvail"},
              std::pair{"cmdBack", "lstRpt"}, std::pair{"cmdBackAll", "lstRpt"}, std::pair{"cmdUp", "lstRpt"},
              std::pair{"cmdDn", "lstRpt"}}) {
            QTest::newRow(button) << QByteArray(button) << QByteArray(list);
        }
    }

    void everyChange_enablesSave()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, list);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            ClickItem(builder, list.constData(), 1);
            QVERIFY(!IsEnabled(builder, "cmdSave"));
            Click(builder, button.constData());
            QVERIFY(IsEnabled(builder, "cmdSave"));
        });
    }

    void locations_standInFileOrderBehindAll()
    {
        ProgramWithSixFields program;
        program.AddLocation("Zeehan");
        program.AddLocation("Rock & Reef");
        program.AddLocation("Victor Harbor~CL~Granite Island");
        program.AddLocation("albany");
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Choices(builder, "cboLocation"),
                     "All Locations|Zeehan|Rock & Reef|Victor Harbor Granite Island|albany");
            QCOMPARE(Chosen(builder, "cboLocation"), "All Locations");
            const auto& box = Find<QComboBox>(builder, "cboLocation");
            for (int row = 0; row < box.count(); ++row) {
                QCOMPARE(box.itemData(row).toInt(), row);
            }
            Choose(builder, "cboLocation", 2);
            QCOMPARE(Chosen(builder, "cboLocation"), "Rock & Reef");
            QVERIFY(!IsEnabled(builder, "cmdSave"));
        });
    }

    void locations_withoutAny_isAllOnly()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
            QCOMPARE(Chosen(builder, "cboLocation"), "All Locations");
        });
    }

    void shortcuts_pressTheirButtons_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("shift");
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<QByteArray>("lists");
        const auto row = [](Qt::Key key, bool shift, const char* button, const char* list,
                            const char* lists) {
            QTest::newRow(button) << int(key) << shift << QByteArray(button) << QByteArray(list)
                                  << QByteArray(lists);
        };
        row(Qt::Key_Right, false, "cmdMove", "lstAvail", "Until|Tide -> Date|Time|Place|End");
        row(Qt::Key_Right, true, "cmdMoveAll", "lstAvail", " -> Date|Time|Place|Until|End|Tide");
        row(Qt::Key_Left, false, "cmdBack", "lstRpt", "Until|End|Tide|Time -> Date|Place");
        row(Qt::Key_Left, true, "cmdBackAll", "lstRpt", "Until|End|Tide|Date|Time|Place -> ");
        row(Qt::Key_Up, false, "cmdUp", "lstRpt", "Until|End|Tide -> Time|Date|Place");
        row(Qt::Key_Down, false, "cmdDn", "lstRpt", "Until|End|Tide -> Date|Place|Time");
    }

    void shortcuts_pressTheirButtons()
    {
        QFETCH(int, key);
        QFETCH(bool, shift);
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, list);
        QFETCH(QByteArray, lists);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            ClickItem(builder, list, 1);
            PressShortcut(builder, static_cast<Qt::Key>(key),
                          shift ? Qt::ControlModifier | Qt::ShiftModifier
                                : Qt::KeyboardModifiers(Qt::ControlModifier),
                          button.constData());
            QCOMPARE(Lists(builder), lists.toStdString());
        });
    }

    void keyboardAlone_buildsAReport()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            Press(builder, Qt::Key_F, Qt::AltModifier);
            QCOMPARE(Focused(builder), "lstAvail");
            Press(builder, Qt::Key_Home);
            Press(builder, Qt::Key_Down); // End
            PressShortcut(builder, Qt::Key_Right, Qt::ControlModifier, "cmdMove");
            QCOMPARE(Focused(builder), "lstAvail");
            Press(builder, Qt::Key_O, Qt::AltModifier);
            QCOMPARE(Focused(builder), "lstRpt");
            Press(builder, Qt::Key_End);
            for (int step = 0; step < 3; ++step) {
                PressShortcut(builder, Qt::Key_Up, Qt::ControlModifier, "cmdUp");
            }
            QCOMPARE(Lists(builder), "Until|Tide -> End|Date|Time|Place");
            QCOMPARE(Focused(builder), "lstRpt");
            Press(builder, Qt::Key_L, Qt::AltModifier);
            QCOMPARE(Focused(builder), "cboLocation");
        });
    }

    void tab_goesThroughTheWindow()
    {
        ProgramWithSixFields program({{"1", "One", "EndTime", "4"}});
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(TabOrder(builder),
                     "lstAvail cmdMove cmdMoveAll cmdBack cmdBackAll lstRpt cmdUp cmdDn chkDesc cboLocation "
                     "chkSaved cboSaved cmdCustom cmdPreview cmdClose");
        });
    }

    void window_closes_data()
    {
        QTest::addColumn<QByteArray>("by");
        for (const char* by : {"button", "mnemonic", "Esc", "close box"}) {
            QTest::newRow(by) << QByteArray(by);
        }
    }

    void window_closes()
    {
        QFETCH(QByteArray, by);
        ProgramWithSixFields program;
        WhileOpen(
            "fRptLog", [&] { fRptLog(program.program, nullptr).exec(); },
            [&](QDialog& builder) {
                ClickItem(builder, "lstRpt", 0);
                Click(builder, "cmdBack"); // an unsaved choice is dropped without a question
                if (by == "button") {
                    Click(builder, "cmdClose");
                } else if (by == "mnemonic") {
                    Press(builder, Qt::Key_C, Qt::AltModifier);
                    Await([&] { return !builder.isVisible(); }, "the window stays open");
                } else if (by == "Esc") {
                    Press(builder, Qt::Key_Escape);
                } else {
                    builder.close();
                }
                QVERIFY(!builder.isVisible());
            });
    }

    void closed_keepsNothing()
    {
        ProgramWithSixFields program;
        program.AddLocation("Zeehan");
        const std::vector<std::string> steps = program.operations.Steps();
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "chkDesc");
            Choose(builder, "cboLocation", 1);
            Click(builder, "cmdClose");
        });
        QCOMPARE(program.operations.Steps(), steps);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QVERIFY(!IsTicked(builder, "chkDesc"));
            QCOMPARE(Chosen(builder, "cboLocation"), "All Locations");
        });
    }

    void fieldFileDamaged_isReportedAndTheWindowIsUsable()
    {
        TestProgram program;
        program.folder.Write("field.xml", "<data><field>");
        program.Start();
        program.AddLocation("Zeehan");
        program.reports.Expect("cSQL", "FieldList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), " -> ");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations|Zeehan");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc cmdSave cmdDelete chkSaved cboSaved");
            Click(builder, "cmdClose");
            QVERIFY(!builder.isVisible());
        });
        QCOMPARE(program.folder.Read("field.xml"), "<data><field>");
    }

    void reportFileDamaged_isReportedAndTheFieldsAreThere()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("Rpt.xml", "no XML");
        program.Start();
        program.reports.Expect("cSQL", "ReportList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete chkSaved cboSaved");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
        });
    }

    void locationFileDamaged_isReportedAndTheFieldsAreThere()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("location.xml", "");
        program.Start();
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Choices(builder, "cboLocation"), "");
            QVERIFY(IsEnabled(builder, "cmdPreview"));
        });
    }

    void fieldNumber_thatIsNone_isReported()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], {"two", "EndDate", "Until", "To", "20", "8", "0", "1"}});
        program.Start();
        program.reports.Expect("fRptLog", "LoadDefaultReport", ErrorNumber::TypeMismatch);
        ShowBuilder(program, [](QDialog& builder) {
            QVERIFY(builder.isVisible());
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
        });
    }

    void fieldWithTooFewValues_isReported()
    {
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "Date", "From", "20", "8", "0"}});
        program.Start();
        program.reports.Expect("fRptLog", "LoadDefaultReport", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) { QCOMPARE(Lists(builder), " -> "); });
    }

    void reportNumber_thatIsNone_isReported()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        WriteReports(program, {{"one", "One", "EndTime", "4"}});
        program.Start();
        program.reports.Expect("fRptLog", "LoadSavedReports", ErrorNumber::TypeMismatch);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
        });
    }

    void thousandFields_areListedAndMoved()
    {
        TestProgram program;
        WriteFields(program, ManyFields(1000));
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(List(builder, "lstAvail").count(), 500);
            QCOMPARE(List(builder, "lstRpt").count(), 500);
            DoubleClickItem(builder, "lstAvail", 499);
            QCOMPARE(ToUtf8(List(builder, "lstRpt").item(500)->text()), "Field 999");
            Click(builder, "cmdBackAll");
            Click(builder, "cmdMoveAll");
            QCOMPARE(List(builder, "lstRpt").count(), 1000);
            QCOMPARE(SortCaption(builder), "Sort by Field 1 Desc");
            ClickItem(builder, "lstRpt", 999);
            Click(builder, "cmdUp");
            QCOMPARE(SelectedRow(builder, "lstRpt"), 998);
        });
    }
};

TEST_CLASS(tst_fRptLog)
#include "tst_fRptLog.moc"
