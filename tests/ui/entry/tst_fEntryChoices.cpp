#include "EntryTest.h"
#include "support/TestClass.h"

#include <QLabel>

using namespace Tarno;

// Choosing the options of an entry and its location.

namespace
{

void AddGroups()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("count");
    const auto row = [](const char* group, EntryField::Position position, int count) {
        QTest::newRow(group) << group << static_cast<int>(position) << count;
    };
    row("optTideSt", EntryField::TideStart, 4);
    row("optTideEnd", EntryField::TideEnd, 4);
    row("optPrediction", EntryField::Prediction, 4);
    row("optWindDir", EntryField::WindDir, 8);
    row("optWindStr", EntryField::WindStrength, 4);
    row("optWeather", EntryField::Weather, 7);
    row("optClarity", EntryField::WaterClarity, 3);
    row("optAction", EntryField::FishAction, 4);
    row("optPressure", EntryField::AirPressure, 2);
}

QByteArray OptionName(const QString& group, int index)
{
    return (group + QLatin1Char('_') + QString::number(index)).toLatin1();
}

} // namespace

class tst_fEntryChoices : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void option_isCaptionedWithTheWordOfItsCode_data() { AddGroups(); }

    void option_isCaptionedWithTheWordOfItsCode()
    {
        QFETCH(QString, group);
        QFETCH(int, position);
        QFETCH(int, count);
        const FieldInfo& field = entryFields.at(static_cast<std::size_t>(position));
        QCOMPARE(static_cast<int>(field.words.size()), count);
        ProgramWithPlace program;
        Edit(program, 0, [&](QDialog& editor) {
            for (int code = 0; code < count; ++code) {
                QString caption = Find<QAbstractButton>(editor, OptionName(group, code)).text();
                QCOMPARE(ToUtf8(caption.remove(QLatin1Char('&'))),
                         CodeWord(field.position, std::to_string(code)));
            }
            Close(editor);
        });
    }

    void option_clicked_storesItsIndexOnly_data() { AddGroups(); }

    void option_clicked_storesItsIndexOnly()
    {
        QFETCH(QString, group);
        QFETCH(int, position);
        QFETCH(int, count);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{static_cast<std::size_t>(position), ""}});
        std::vector<std::string> expected = program.StoredEntry(key);
        for (int index = 0; index < count; ++index) {
            Edit(program, key, [&](QDialog& editor) {
                GoTo(editor, OptionName(group, index));
                QCOMPARE(Chosen(editor, group.toLatin1()), index);
                SaveAndClose(editor);
            });
            expected.at(static_cast<std::size_t>(position)) = std::to_string(index);
            QCOMPARE(program.StoredEntry(key), expected);
        }
    }

    void option_firstOfAnUnsetGroup_isAChange_data() { AddGroups(); }

    void option_firstOfAnUnsetGroup_isAChange()
    {
        QFETCH(QString, group);
        QFETCH(int, position);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{static_cast<std::size_t>(position), ""}});
        program.messages.Expect(saveQuestion, Button::Yes);
        Edit(program, key, [&](QDialog& editor) {
            LeaveUnchanged(editor);
            GoTo(editor, OptionName(group, 0));
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, static_cast<std::size_t>(position)), "0");
    }

    void option_chosenOneClickedAgain_isNoChange()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            GoTo(editor, "optTideSt_3");
            QVERIFY(!IsSaveEnabled(editor));
            GoTo(editor, "optTideEnd_0");
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void option_storedInAnotherSpelling_clickedAgain_isNoChange_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("leading zero") << "03";
        QTest::newRow("blanks around") << " 3 ";
    }

    void option_storedInAnotherSpelling_clickedAgain_isNoChange()
    {
        QFETCH(QString, code);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::TideStart, code.toStdString()}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(Chosen(editor, "optTideSt"), 3);
            GoTo(editor, "optTideSt_3");
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor); // asks no question
        });
        QCOMPARE(program.StoredEntry(key, EntryField::TideStart), code.toStdString());
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "optTideSt_2");
            QVERIFY(IsSaveEnabled(editor));
            GoTo(editor, "optTideSt_3");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::TideStart), "3");
    }

    void option_ofAGroupWithAnUnknownCode_isAChange()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::TideStart, "9"}});
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "optTideSt_1");
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::TideStart), "1");
    }

    void option_byArrowKey_isStored()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "optTideSt_3");
            Press(editor, Qt::Key_Up);
            QCOMPARE(Chosen(editor, "optTideSt"), 2);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::TideStart), "2");
    }

    void option_focusAlone_choosesNothing()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::TideStart, ""}});
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "txtTEnd");
            Press(editor, Qt::Key_Tab);
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Focused(editor), "optTideSt_0");
            QCOMPARE(Chosen(editor, "optTideSt"), -1);
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void location_chosen_storesItsNumber()
    {
        ProgramWithPlace program;
        program.AddLocation("Zeehan");
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            LeaveUnchanged(editor);
            Find<QWidget>(editor, "cboLocation").setFocus();
            Press(editor, Qt::Key_Down);
            QCOMPARE(Place(editor), "Zeehan");
            QVERIFY(!IsSaveEnabled(editor));
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LocNo), "2");
    }

    void location_leftUnchanged_isNoChange()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [](QDialog& editor) {
            Find<QWidget>(editor, "cboLocation").setFocus();
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void location_listOpen_escClosesTheListOnly()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            GoTo(editor, "cboLocation");
            QWidget* list = QApplication::activePopupWidget();
            QVERIFY(list != nullptr);
            QTest::keyClick(list->windowHandle(), Qt::Key_Escape); // the open list receives the keys
            QVERIFY(!list->isVisible());
            QVERIFY(editor.isVisible());
            Close(editor);
        });
    }

    void location_noneSelected_cannotBeLeft_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Tab") << int(Qt::Key_Tab);
        QTest::newRow("Shift+Tab") << int(Qt::Key_Backtab);
        QTest::newRow("Esc") << int(Qt::Key_Escape);
        QTest::newRow("click") << 0;
    }

    void location_noneSelected_cannotBeLeft()
    {
        QFETCH(int, key);
        ProgramWithPlace program;
        const int entry = program.AddCompleteEntry({{EntryField::LocNo, "7"}});
        Edit(program, entry, [&](QDialog& editor) {
            Find<QWidget>(editor, "cboLocation").setFocus();
            if (key != 0) {
                Press(editor, static_cast<Qt::Key>(key));
            } else {
                Click(editor, "txtAirTemp");
                Click(editor, "txtTStart");
                Click(editor, "cmdCancel");
            }
            QVERIFY(editor.isVisible());
            QCOMPARE(Focused(editor), "cboLocation");
            const auto& note = Find<QLabel>(editor, "lblRefusal");
            QVERIFY(note.isVisible());
            QCOMPARE(note.text(), QStringLiteral("This location no longer exists. Choose another one."));
            Press(editor, Qt::Key_Down);
            QVERIFY(!note.isVisible());
            Press(editor, Qt::Key_Tab);
            QVERIFY(Focused(editor) != "cboLocation");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(entry, EntryField::LocNo), "1");
    }

    void location_noneSelectedAndNotFocused_blocksNothing()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::LocNo, "7"}});
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtTEnd", "2200");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndTime), "22:00");
        QCOMPARE(program.StoredEntry(key, EntryField::LocNo), "7");
    }
};

TEST_CLASS(tst_fEntryChoices)
#include "tst_fEntryChoices.moc"
