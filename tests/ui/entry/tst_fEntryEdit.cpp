#include "EntryTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// Editing the boxes of an entry and its moon phase.

namespace
{

void AddBoxes()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char* box, EntryField::Position position, const char* typed,
                        const char* stored) {
        QTest::newRow(box) << box << static_cast<int>(position) << typed << stored;
    };
    row("txtEnd", EntryField::EndDate, "2003-2-9", "2003-02-09");
    row("txtTStart", EntryField::StartTime, "0715", "07:15");
    row("txtTEnd", EntryField::EndTime, "13:5", "13:05");
    row("txtTideHigh", EntryField::HighTide, "1:2", "01:02");
    row("txtTideHighHt", EntryField::HighTideHt, "1.8", "1.8");
    row("txtTideLow", EntryField::LowTide, "2359", "23:59");
    row("txtTideLowHt", EntryField::LowTideHt, "low", "low");
    row("txtSunRise", EntryField::SunRise, "0600", "06:00");
    row("txtSunSet", EntryField::SunSet, "1800", "18:00");
    row("txtMoonRise", EntryField::MoonRise, "0000", "00:00");
    row("txtMoonSet", EntryField::MoonSet, "12:12", "12:12");
    row("txtAirTemp", EntryField::AirTemp, "warm", "warm");
    row("txtWaterTemp", EntryField::WaterTemp, "19", "19");
    row("txtPressure", EntryField::PressureReading, "1020", "1020");
    row("txtMajor1", EntryField::Major1, "noon", "noon");
    row("txtMajor2", EntryField::Major2, "1:1", "1:1");
    row("txtMinor1", EntryField::Minor1, ":", ":");
    row("txtMinor2", EntryField::Minor2, "25:00", "25:00");
}

void AddLines()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("position");
    const auto row = [](const char* box, EntryField::Position position) {
        QTest::newRow(box) << box << static_cast<int>(position);
    };
    row("txtTarget", EntryField::TargetSpecies);
    row("txtBait", EntryField::BaitUsed);
    row("txtMethods", EntryField::Method);
    row("txtCaught", EntryField::FishCaught);
    row("txtObbos", EntryField::Obbos);
}

} // namespace

class tst_fEntryEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void box_leftWithAnotherText_changesItsValueOnly_data() { AddBoxes(); }

    void box_leftWithAnotherText_changesItsValueOnly()
    {
        QFETCH(QString, box);
        QFETCH(int, position);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        std::vector<std::string> expected = program.StoredEntry(key);
        expected.at(static_cast<std::size_t>(position)) = stored.toStdString();
        Edit(program, key, [&](QDialog& editor) {
            LeaveUnchanged(editor);
            Enter(editor, box.toLatin1(), typed.toLatin1());
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, box.toLatin1()), stored.toStdString());
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key), expected);
    }

    void box_leftWithTheSameText_changesNothing_data() { AddBoxes(); }

    void box_leftWithTheSameText_changesNothing()
    {
        QFETCH(QString, box);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            const std::string text = BoxText(editor, box.toLatin1());
            Enter(editor, box.toLatin1(), text.c_str());
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void box_withoutACheck_takesAnyText_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<int>("position");
        const auto row = [](const char* box, EntryField::Position position) {
            QTest::newRow(box) << box << static_cast<int>(position);
        };
        row("txtTideHighHt", EntryField::HighTideHt);
        row("txtTideLowHt", EntryField::LowTideHt);
        row("txtAirTemp", EntryField::AirTemp);
        row("txtWaterTemp", EntryField::WaterTemp);
        row("txtPressure", EntryField::PressureReading);
        row("txtMajor1", EntryField::Major1);
        row("txtMajor2", EntryField::Major2);
        row("txtMinor1", EntryField::Minor1);
        row("txtMinor2", EntryField::Minor2);
    }

    void box_withoutACheck_takesAnyText()
    {
        QFETCH(QString, box);
        QFETCH(int, position);
        for (const char* text : {"12.5", "warm", "-3 <b>&amp;</b> \"x\"", " "}) {
            ProgramWithPlace program;
            const int key = program.AddCompleteEntry();
            Edit(program, key, [&](QDialog& editor) {
                Enter(editor, box.toLatin1(), text);
                Press(editor, Qt::Key_Tab);
                QVERIFY(!IsRefused(editor, box.toLatin1()));
                SaveAndClose(editor);
            });
            QCOMPARE(program.StoredEntry(key, static_cast<std::size_t>(position)), text);
            Edit(program, key, [&](QDialog& editor) {
                QCOMPARE(BoxText(editor, box.toLatin1()), text);
                Close(editor);
            });
        }
    }

    void box_emptied_storesTheEmptyText()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtTideHigh", "");
            Enter(editor, "txtAirTemp", "");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::HighTide), "");
        QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), "");
    }

    void box_leftAndTypedBack_keepsTheFlag()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "9");
            Press(editor, Qt::Key_Tab);
            Enter(editor, "txtTideLowHt", "0.4");
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void saveEnabled_followsTheFlagWhenABoxIsLeft()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            LeaveUnchanged(editor);
            Enter(editor, "txtTideLowHt", "9");
            QVERIFY(!IsSaveEnabled(editor));
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsSaveEnabled(editor));
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void lines_leftWithAnotherText_changeTheirValueOnly_data() { AddLines(); }

    void lines_leftWithAnotherText_changeTheirValueOnly()
    {
        QFETCH(QString, box);
        QFETCH(int, position);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        std::vector<std::string> expected = program.StoredEntry(key);
        expected.at(static_cast<std::size_t>(position)) = "a~CL~b~CL~~CL~c ~CL~";
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, box.toLatin1(), "a");
            Press(editor, Qt::Key_Return);
            Type(editor, "b");
            Press(editor, Qt::Key_Return);
            Press(editor, Qt::Key_Enter);
            Type(editor, "c ");
            Press(editor, Qt::Key_Return);
            Press(editor, Qt::Key_Tab);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key), expected);
        Edit(program, key, [&](QDialog& editor) {
            QCOMPARE(LinesText(editor, box.toLatin1()), "a\nb\n\nc \n");
            Close(editor);
        });
    }

    void lines_everyKeystroke_enablesSave_data() { AddLines(); }

    void lines_everyKeystroke_enablesSave()
    {
        QFETCH(QString, box);
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            LeaveUnchanged(editor);
            GoTo(editor, box.toLatin1());
            QVERIFY(!IsSaveEnabled(editor));
            Type(editor, "x");
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void lines_leftByTheirPageTab_areWrittenBack_data() { AddLines(); }

    void lines_leftByTheirPageTab_areWrittenBack()
    {
        QFETCH(QString, box);
        QFETCH(int, position);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, box.toLatin1(), "x");
            ClickPage(editor, 0);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, static_cast<std::size_t>(position)), "x");
    }

    void lines_writtenByHandWithLineFeeds_stayUntilChanged()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::Obbos, "one\ntwo"}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(LinesText(editor, "txtObbos"), "one\ntwo");
            GoTo(editor, "txtObbos");
            ClickPage(editor, 0);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Obbos), "one\ntwo");
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "txtObbos");
            Press(editor, Qt::Key_End, Qt::ControlModifier);
            Type(editor, "!");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Obbos), "one~CL~two!");
    }

    void lines_withTheEncodingTyped_areReadBackAsALineBreak()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtObbos", "a~CL~b");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Obbos), "a~CL~b");
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(LinesText(editor, "txtObbos"), "a\nb");
            Close(editor);
        });
    }

    void lines_withUnusualSpaces_stayUntilChanged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("changed");
        QTest::newRow("no-break space") << "6\u00A0kg"
                                        << "6\u00A0kg!";
        QTest::newRow("line separator") << "one\u2028two"
                                        << "one~CL~two!";
        QTest::newRow("paragraph separator") << "one\u2029two"
                                             << "one~CL~two!";
        QTest::newRow("carriage return") << "one\rtwo"
                                         << "one~CL~two!";
        QTest::newRow("tabulator and blanks") << " one\t two  "
                                              << " one\t two  !";
    }

    void lines_withUnusualSpaces_stayUntilChanged()
    {
        QFETCH(QString, text);
        QFETCH(QString, changed);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::Obbos, ToUtf8(text)}});
        const std::vector<std::string> before = program.StoredEntry(key);
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "txtObbos");
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key), before);
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "txtObbos");
            Press(editor, Qt::Key_End, Qt::ControlModifier);
            Type(editor, "!");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Obbos), ToUtf8(changed));
    }

    void phase_waxingTicked_storesThePositiveValue()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            LeaveUnchanged(editor);
            GoTo(editor, "chkMoon");
            QVERIFY(IsChecked(editor, "chkMoon"));
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "45");
    }

    void phase_waxingUnticked_storesTheNegativeValue()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::MoonPhase, "60"}});
        Edit(program, key, [](QDialog& editor) {
            GoTo(editor, "chkMoon");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-60");
    }

    void phase_typed_isStoredAtEveryKeystroke()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            LeaveUnchanged(editor);
            GoTo(editor, "txtMoon");
            Press(editor, Qt::Key_A, Qt::ControlModifier);
            Type(editor, "7");
            QVERIFY(IsSaveEnabled(editor));
            Type(editor, "8");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-78");
    }

    void phase_emptied_storesTheEmptyText_data()
    {
        QTest::addColumn<QString>("phase");
        QTest::newRow("waxing") << "45";
        QTest::newRow("waning") << "-45";
    }

    void phase_emptied_storesTheEmptyText()
    {
        QFETCH(QString, phase);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::MoonPhase, phase.toStdString()}});
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtMoon", "");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "");
    }

    void phase_takesDigitsOnly()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtMoon", "-a6.:5%");
            QCOMPARE(BoxText(editor, "txtMoon"), "65");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-65");
    }

    void phase_waningZeroTyped_isMinusZero()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtMoon", "0");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-0");
    }
};

TEST_CLASS(tst_fEntryEdit)
#include "tst_fEntryEdit.moc"
