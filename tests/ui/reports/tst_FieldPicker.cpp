// The two lists of fields of the report builder: what they show, moving fields, and the sort caption.

#include "core/Text.h"
#include "support/TestClass.h"
#include "ui/reports/BuilderTest.h"
#include "ui/reports/FieldPicker.h"

#include <QtTest/QSignalSpy>

#include <cstdint>
#include <utility>

using namespace Tarno;

namespace
{

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

/// A picker in a window of its own, with field definitions.
struct Picker {
    explicit Picker(const std::vector<Line>& definitions = sixFields)
    {
        WriteFields(program, definitions);
        program.Start();
        if (program.sql.FieldList(fields) != succeeded) {
            qFatal("no fields");
        }
        picker.show();
        AwaitActive(picker);
    }

    /// Returns the field numbers in both lists.
    std::string Shown() const { return Numbers(picker, "lstAvail") + " -> " + Numbers(picker, "lstRpt"); }

    TestProgram program;
    RecordList fields;
    FieldPicker picker;
};

} // namespace

class tst_FieldPicker : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void selection_isShownInItsOrder_data()
    {
        QTest::addColumn<QByteArray>("numbers");
        QTest::addColumn<QByteArray>("shown");
        QTest::newRow("some") << QByteArray("4,2,5") << QByteArray("1,3,6 -> 4,2,5");
        QTest::newRow("none") << QByteArray() << QByteArray("1,2,3,4,5,6 -> ");
        QTest::newRow("all") << QByteArray("6,5,4,3,2,1") << QByteArray(" -> 6,5,4,3,2,1");
        QTest::newRow("unknown ones") << QByteArray("40,6,7,1") << QByteArray("2,3,4,5 -> 6,1");
        QTest::newRow("not numbers") << QByteArray("x,,-1,2,0") << QByteArray("1,3,4,5,6 -> 2");
        QTest::newRow("other spellings") << QByteArray("01, 2,3.0") << QByteArray("1,2,3,4,5,6 -> ");
        QTest::newRow("one twice") << QByteArray("3,3") << QByteArray("1,2,4,5,6 -> 3,3");
    }

    void selection_isShownInItsOrder()
    {
        QFETCH(QByteArray, numbers);
        QFETCH(QByteArray, shown);
        Picker data;
        // the names do not matter
        data.picker.ShowSelection(data.fields,
                                  {.names = {"a"}, .numbers = Split(numbers.toStdString(), ',')});
        QCOMPARE(data.Shown(), shown.toStdString());
        data.picker.ShowDefault(data.fields);
        QCOMPARE(data.Shown(), "2,4,6 -> 1,3,5");
    }

    void chosen_areTheNumbersOnTheReport()
    {
        Picker data;
        QVERIFY(data.picker.Chosen().empty());
        data.picker.ShowDefault(data.fields);
        QCOMPARE(data.picker.Chosen(), (std::vector<std::int32_t>{1, 3, 5}));
        ClickItem(data.picker, "lstAvail", 1);
        Click(data.picker, "cmdMove");
        QCOMPARE(data.picker.Chosen(), (std::vector<std::int32_t>{1, 3, 5, 4}));
    }

    void changed_isEmittedForMovesOnly()
    {
        Picker data;
        const QSignalSpy changes(&data.picker, &FieldPicker::Changed);
        data.picker.ShowDefault(data.fields);
        data.picker.ShowSelection(data.fields, {.names = {}, .numbers = {"1", "2"}});
        for (const char* button : {"cmdMove", "cmdBack", "cmdUp", "cmdDn"}) {
            Click(data.picker, button); // nothing is selected
        }
        ClickItem(data.picker, "lstRpt", 0);
        Click(data.picker, "cmdUp");
        QCOMPARE(changes.count(), 0);
        int expected = 0;
        for (const char* button : {"cmdDn", "cmdUp", "cmdBack", "cmdMoveAll", "cmdBackAll"}) {
            Click(data.picker, button);
            QCOMPARE(changes.count(), ++expected);
        }
        DoubleClickItem(data.picker, "lstAvail", 0);
        QCOMPARE(changes.count(), ++expected);
    }

    void sortField_isShownOnDemand()
    {
        Picker data;
        const auto& order = Find<QAbstractButton>(data.picker, "chkDesc");
        data.picker.ShowSortField();
        QCOMPARE(SortCaption(data.picker), "");
        QCOMPARE(order.accessibleName(), QStringLiteral("Sort descending"));
        QVERIFY(!order.isEnabled());
        data.picker.ShowDefault(data.fields);
        QCOMPARE(SortCaption(data.picker), "");
        data.picker.ShowSortField();
        QCOMPARE(SortCaption(data.picker), "Sort by Date Desc");
        QCOMPARE(order.accessibleName(), QString());
        QVERIFY(order.isEnabled());
        QVERIFY(!data.picker.IsDescending());
        Click(data.picker, "chkDesc");
        QVERIFY(data.picker.IsDescending());
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

    void moveAll_appendsTheFields_data()
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

    void moveAll_appendsTheFields()
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
            Press(builder, Qt::Key_Tab); // gives the focus to each list once
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

    void order_atTheEnd_doesNothing_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<int>("row");
        QTest::newRow("first up") << QByteArray("cmdUp") << 0;
        QTest::newRow("last down") << QByteArray("cmdDn") << 2;
    }

    void order_atTheEnd_doesNothing()
    {
        QFETCH(QByteArray, button);
        QFETCH(int, row);
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            ClickItem(builder, "lstRpt", row);
            Click(builder, button.constData());
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,5");
            QCOMPARE(SelectedRow(builder, "lstRpt"), row);
            QVERIFY(!IsEnabled(builder, "cmdSave"));
        });
    }

    void order_movesAsFarAsTheEnds()
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

TEST_CLASS(tst_FieldPicker)
#include "tst_FieldPicker.moc"
