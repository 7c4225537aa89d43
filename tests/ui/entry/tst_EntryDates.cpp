#include "EntryTest.h"
#include "support/TestClass.h"

#include <QLabel>

using namespace Tarno;

// The start and end date of an entry: their order, and the labels and keys that step them by one day.

class tst_EntryDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void longTrip_hasANoteBesideItsDates()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::StartDate, "2003-05-07"}, {EntryField::EndDate, "2003-05-22"}});
        Edit(program, key, [](QDialog& editor) {
            const auto& note = Find<QLabel>(editor, "lblDuration");
            const auto& group = Find<QWidget>(editor, "frWhen");
            QVERIFY(note.isVisible());
            QCOMPARE(note.text(), QStringLiteral("16 days"));
            QCOMPARE(group.accessibleDescription(), QStringLiteral("16 days"));
            Enter(editor, "txtEnd", "2003-05-08");
            Press(editor, Qt::Key_Tab);
            QVERIFY(!note.isVisible());
            QCOMPARE(group.accessibleDescription(), QString());
            Click(editor, "lblEndPlus");
            QCOMPARE(note.text(), QStringLiteral("3 days"));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-05-09"); // the note refuses nothing
    }

    void newTrip_withAnEarlierStart_hasANote()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, 0, [](QDialog& editor) {
            const auto& note = Find<QLabel>(editor, "lblDuration");
            QVERIFY(!note.isVisible());
            for (int day = 0; day < 2; ++day) {
                Click(editor, "lblStMinus");
            }
            QCOMPARE(note.text(), QStringLiteral("3 days"));
            QVERIFY(note.isVisible());
            Close(editor);
        });
    }

    void order_startAfterEnd_movesTheEndBox()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::StartDate, "2003-05-07"}, {EntryField::EndDate, "2003-05-08"}});
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtStart", "2003-05-10");
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-05-08");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-05-10");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-05-10");
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-05-08"); // the user never left its box
    }

    void order_startAfterEnd_storesTheEndWhenItsBoxIsLeft()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtStart", "2003-05-10");
            GoTo(editor, "txtEnd");
            Press(editor, Qt::Key_Tab);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-05-10");
    }

    void order_endBeforeStart_isStoredAtOnce()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtEnd", "2003-1-1");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-05");
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-05");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-02-05");
        QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-02-05");
    }

    void order_isAppliedEvenIfTheTextIsUnchanged()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::EndDate, "2003-01-01"}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-01-01");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-05");
            QVERIFY(!IsSaveEnabled(editor)); // only the box has changed
            GoTo(editor, "txtEnd");
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-02-05");
    }

    void order_invalidEnd_staysUnchanged()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::EndDate, "later"}});
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtStart", "2003-05-10");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtEnd"), "later");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "later");
    }

    void order_equalDates_areInOrder()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry({{EntryField::EndDate, "2003-2-5"}}), [](QDialog& editor) {
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-2-5");
            Close(editor);
        });
    }

    void step_movesTheDateByOneDay_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        const auto row = [](const char* label, const char* from, const char* to) {
            QTest::addRow("%s on %s", label, from) << label << from << to;
        };
        row("lblStPlus", "2003-12-31", "2004-01-01");
        row("lblStPlus", "2003-02-28", "2003-03-01");
        row("lblStPlus", "2004-02-28", "2004-02-29");
        row("lblStPlus", "1900-02-28", "1900-03-01");
        row("lblStPlus", "2003-05-07", "2003-05-08");
        row("lblStMinus", "2004-01-01", "2003-12-31");
        row("lblStMinus", "2004-03-01", "2004-02-29");
        row("lblStMinus", "0001-01-02", "0001-01-01");
        row("lblEndPlus", "2003-12-31", "2004-01-01");
        row("lblEndPlus", "9999-12-30", "9999-12-31");
        row("lblEndMinus", "2004-03-01", "2004-02-29");
        row("lblEndMinus", "2003-10-01", "2003-09-30");
    }

    void step_movesTheDateByOneDay()
    {
        QFETCH(QString, label);
        QFETCH(QString, from);
        QFETCH(QString, to);
        const bool start = label.startsWith(QLatin1String("lblSt"));
        const char* box = start ? "txtStart" : "txtEnd";
        ProgramWithPlace program;
        const int key =
            program.AddCompleteEntry({{EntryField::StartDate, start ? from.toStdString() : "1850-01-01"},
                                      {EntryField::EndDate, start ? "9999-12-31" : from.toStdString()}});
        Edit(program, key, [&](QDialog& editor) {
            Click(editor, label.toLatin1());
            QCOMPARE(BoxText(editor, box), to.toStdString());
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, start ? EntryField::StartDate : EntryField::EndDate),
                 to.toStdString());
    }

    void step_isStoredAndRecalculatesAtOnce()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::StartDate, "2003-01-17"}, {EntryField::EndDate, "2003-01-31"}});
        Edit(program, key, [&](QDialog& editor) {
            Click(editor, "lblStPlus");
            QCOMPARE(BoxText(editor, "txtMoon"), "98");
            QVERIFY(BoxText(editor, "txtSunRise") != "06:11");
            QVERIFY(BoxText(editor, "txtMajor1") != "04:01");
            // the user saves without leaving the box
            Find<QAbstractButton>(editor, "cmdOK").click();
            QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-01-18");
            QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), "-98");
            Close(editor);
        });
    }

    void step_startBeyondEnd_movesTheEndBox()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::EndDate, "2003-02-05"}});
        Edit(program, key, [](QDialog& editor) {
            Click(editor, "lblStPlus");
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-06");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-02-05");
    }

    void step_endBeforeStart_movesTheEndToTheStart()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::EndDate, "2003-02-05"}});
        Edit(program, key, [](QDialog& editor) {
            Click(editor, "lblEndMinus");
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-05");
            Click(editor, "lblEndPlus");
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-06");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-02-06");
    }

    void step_startsFromTheTypedDate()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::EndDate, "2003-12-31"}});
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtStart", "2003-9-30");
            Click(editor, "lblStPlus");
            QCOMPARE(BoxText(editor, "txtStart"), "2003-10-01");
            QCOMPARE(Focused(editor), "txtStart");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-10-01");
    }

    void step_onAnInvalidDate_isReportedAndChangesNothing_data()
    {
        QTest::addColumn<QString>("label");
        for (const char* label : {"lblStPlus", "lblStMinus", "lblEndPlus", "lblEndMinus"}) {
            QTest::newRow(label) << label;
        }
    }

    void step_onAnInvalidDate_isReportedAndChangesNothing()
    {
        QFETCH(QString, label);
        ProgramWithPlace program;
        const int key =
            program.AddCompleteEntry({{EntryField::StartDate, "soon"}, {EntryField::EndDate, "later"}});
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            program.reports.Expect("fEntry", label.toStdString() + "_Click", ErrorNumber::TypeMismatch);
            Click(editor, label.toLatin1());
            QCOMPARE(BoxText(editor, "txtStart"), "soon");
            QCOMPARE(BoxText(editor, "txtEnd"), "later");
            QVERIFY(!IsRefused(editor, "txtStart"));
            Close(editor);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void step_beyondTheCalendar_isReportedAndChangesNothing_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("date");
        QTest::newRow("before the first day") << "lblStMinus"
                                              << "0001-01-01";
        QTest::newRow("after the last day") << "lblEndPlus"
                                            << "9999-12-31";
    }

    void step_beyondTheCalendar_isReportedAndChangesNothing()
    {
        QFETCH(QString, label);
        QFETCH(QString, date);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::StartDate, date.toStdString()}, {EntryField::EndDate, date.toStdString()}});
        Edit(program, key, [&](QDialog& editor) {
            program.reports.Expect("fEntry", label.toStdString() + "_Click", ErrorNumber::Overflow);
            Click(editor, label.toLatin1());
            QCOMPARE(BoxText(editor, "txtStart"), date.toStdString());
            QCOMPARE(BoxText(editor, "txtEnd"), date.toStdString());
            Close(editor);
        });
    }

    void step_keepsTheFocusAndRunsNoCheckOfTheFocusedBox()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtTStart", "99");
            Click(editor, "lblEndPlus");
            QCOMPARE(Focused(editor), "txtTStart");
            QVERIFY(!IsRefused(editor, "txtTStart"));
            QCOMPARE(BoxText(editor, "txtTStart"), "99");
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-07");
            Enter(editor, "txtTStart", "9:9");
            SaveAndClose(editor);
        });
    }

    void step_byArrowKeys()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Press(editor, Qt::Key_Down);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-04");
            GoTo(editor, "txtEnd");
            Press(editor, Qt::Key_Up);
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-07");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-02-04");
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-02-07");
    }

    void step_restoresARefusedBox()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            TypeRefusedDate(editor);
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsRefused(editor, "txtStart"));
            Enter(editor, "txtStart", "2003-02-28");
            Click(editor, "lblStMinus");
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-27");
            QVERIFY(!IsRefused(editor, "txtStart"));
            SaveAndClose(editor);
        });
    }

    void longTrip_leavesTheDatesTheirRoom()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::StartDate, "2008-08-08"}, {EntryField::EndDate, "2028-08-08"}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(Find<QLabel>(editor, "lblDuration").text(), QStringLiteral("7306 days"));
            const auto& box = Find<QLineEdit>(editor, "txtStart");
            QVERIFY(box.width() >= box.fontMetrics().horizontalAdvance(box.text()) + 4);
            Close(editor);
        });
    }
};

TEST_CLASS(tst_EntryDates)
#include "tst_EntryDates.moc"
