#include "EntryTest.h"
#include "support/TestClass.h"

#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLocale>
#include <QMimeData>

#include <initializer_list>
#include <utility>
#include <vector>

using namespace Tarno;

// The input rules of the date and time boxes, and the actions that a refused box blocks.

namespace
{

struct WayToLeave {
    const char* name;
    void (*act)(QDialog& editor);
};

/// Returns every way to leave a box that must run its check.
const std::vector<WayToLeave>& Ways()
{
    static const std::vector<WayToLeave> ways{
        {"Tab", [](QDialog& editor) { Press(editor, Qt::Key_Tab); }},
        {"Shift+Tab", [](QDialog& editor) { Press(editor, Qt::Key_Backtab, Qt::ShiftModifier); }},
        {"Enter", [](QDialog& editor) { Press(editor, Qt::Key_Return); }},
        {"Enter of the keypad", [](QDialog& editor) { Press(editor, Qt::Key_Enter); }},
        {"Esc", [](QDialog& editor) { Press(editor, Qt::Key_Escape); }},
        {"Ctrl+Tab", [](QDialog& editor) { Press(editor, Qt::Key_Tab, Qt::ControlModifier); }},
        {"Ctrl+Shift+Tab",
         [](QDialog& editor) { Press(editor, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier); }},
        {"click on Save", [](QDialog& editor) { Save(editor); }},
        {"click on Close", [](QDialog& editor) { Close(editor); }},
        {"Alt+S", [](QDialog& editor) { PressMnemonic(editor, Qt::Key_S, "cmdOK"); }},
        {"Alt+C", [](QDialog& editor) { PressMnemonic(editor, Qt::Key_C, "cmdCancel"); }},
        {"page tab", [](QDialog& editor) { ClickPage(editor, 2); }},
        {"close box", [](QDialog& editor) { editor.close(); }},
        {"another box", [](QDialog& editor) { Click(editor, "txtTideLow"); }},
        {"list of locations", [](QDialog& editor) { Click(editor, "cboLocation"); }},
        {"option", [](QDialog& editor) { Click(editor, "optTideSt_0"); }},
        {"check box", [](QDialog& editor) { Click(editor, "chkMoon"); }},
    };
    return ways;
}

/// Adds a row for each filtered box with the separator that its filter accepts.
void AddFilteredBoxes()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("separator");
    for (const char* box : {"txtStart", "txtEnd"}) {
        QTest::newRow(box) << box << "-";
    }
    for (const char* box : {"txtTStart", "txtTEnd", "txtTideHigh", "txtTideLow", "txtSunRise", "txtSunSet",
                            "txtMoonRise", "txtMoonSet"}) {
        QTest::newRow(box) << box << ":";
    }
}

void EmptyBox(QDialog& editor, const char* box)
{
    Enter(editor, box, "");
}

/// Closes the editor without saving, after replacing refused texts by valid ones.
void CloseWithoutSaving(QDialog& editor, ProgramWithPlace& program)
{
    for (const char* box : {"txtStart", "txtEnd"}) {
        if (Focused(editor) == box) {
            Enter(editor, box, "2003-02-05");
        }
    }
    program.messages.Expect(saveQuestion, Button::No);
    Enter(editor, "txtTideLowHt", "changed");
    Close(editor);
}

} // namespace

class tst_EntryRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void date_isRewrittenWhenLeft()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtStart", "2003-2-4");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-04");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-02-04");
    }

    void date_inTheLocalFormat_isRewritten()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtStart", "4.2.2003");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-04");
            SaveAndClose(editor);
        });
        QLocale::setDefault(QLocale::c());
        QCOMPARE(program.StoredEntry(key, EntryField::StartDate), "2003-02-04");
    }

    void time_isRewrittenWhenLeft_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::newRow("start") << "txtTStart"
                               << "0630"
                               << "06:30";
        QTest::newRow("end") << "txtTEnd"
                             << "6:5"
                             << "06:05";
        QTest::newRow("high tide") << "txtTideHigh"
                                   << "12:3.5"
                                   << "12:04";
        QTest::newRow("low tide") << "txtTideLow"
                                  << "0000"
                                  << "00:00";
    }

    void time_isRewrittenWhenLeft()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, box.toLatin1(), typed.toLatin1());
            Press(editor, Qt::Key_Tab);
            QCOMPARE(BoxText(editor, box.toLatin1()), text.toStdString());
            QVERIFY(Focused(editor) != box.toStdString());
            SaveAndClose(editor);
        });
    }

    void time_empty_isAccepted()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            for (const char* box : {"txtTStart", "txtTEnd", "txtTideHigh", "txtTideLow", "txtSunRise",
                                    "txtSunSet", "txtMoonRise", "txtMoonSet"}) {
                EmptyBox(editor, box);
                Press(editor, Qt::Key_Tab);
                QVERIFY(Focused(editor) != box);
            }
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::StartTime), "");
        QCOMPARE(program.StoredEntry(key, EntryField::MoonSet), "");
    }

    void date_empty_isRefused()
    {
        for (const char* box : {"txtStart", "txtEnd"}) {
            ProgramWithPlace program;
            Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
                EmptyBox(editor, box);
                Press(editor, Qt::Key_Tab);
                QCOMPARE(Focused(editor), box);
                QVERIFY(IsRefused(editor, box));
                CloseWithoutSaving(editor, program);
            });
        }
    }

    void time_partNotANumber_isReportedAndRefused()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTStart", ":");
            program.reports.Expect("fEntry", "CheckTimeFormat", ErrorNumber::TypeMismatch);
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Focused(editor), "txtTStart");
            QVERIFY(IsRefused(editor, "txtTStart"));
            EmptyBox(editor, "txtTStart");
            SaveAndClose(editor);
        });
    }

    void refused_blocksEveryAction_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("way");
        const std::initializer_list<std::pair<const char*, const char*>> texts{
            {"txtStart", "2003-02-31"}, {"txtEnd", "2003"},      {"txtTStart", "24:00"},  {"txtTEnd", "7:60"},
            {"txtTideHigh", "630"},     {"txtSunRise", "99999"}, {"txtMoonSet", "25.00"},
        };
        for (const auto& [box, typed] : texts) {
            for (std::size_t way = 0; way < Ways().size(); ++way) {
                QTest::addRow("%s, %s", box, Ways()[way].name) << box << typed << static_cast<int>(way);
            }
        }
    }

    void refused_blocksEveryAction()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(int, way);
        const QByteArray name = box.toLatin1();
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "pending"); // gives "Save" something to write
            Enter(editor, name, typed.toLatin1());
            for (int time = 0; time < 2; ++time) { // the second attempt is refused too
                Ways()[static_cast<std::size_t>(way)].act(editor);
                QVERIFY(editor.isVisible());
                QVERIFY(QApplication::activePopupWidget() == nullptr);
                QCOMPARE(Focused(editor), name.toStdString());
                QVERIFY(IsRefused(editor, name));
                QCOMPARE(BoxText(editor, name), typed.toStdString());
                QCOMPARE(Pages(editor).currentIndex(), 0);
                QCOMPARE(Chosen(editor, "optTideSt"), 3);
                QVERIFY(!IsChecked(editor, "chkMoon"));
                QVERIFY(IsSaveEnabled(editor));
                QCOMPARE(program.folder.Read("tarno.xml"), before);
            }
            // a valid text no longer blocks the box
            Enter(editor, name,
                  name.startsWith("txtT") || name == "txtSunRise" || name == "txtMoonSet" ? "06:30"
                                                                                          : "2003-02-06");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "pending");
    }

    void refused_saveDisabled_writesNothing()
    {
        for (const bool byMnemonic : {false, true}) {
            ProgramWithPlace program;
            const int key = program.AddCompleteEntry();
            const std::string before = program.folder.Read("tarno.xml");
            Edit(program, key, [&](QDialog& editor) {
                Press(editor, Qt::Key_Tab);
                TypeRefusedDate(editor);
                QVERIFY(!IsSaveEnabled(editor));
                if (byMnemonic) {
                    PressMnemonic(editor, Qt::Key_S, "cmdOK");
                } else {
                    Save(editor);
                }
                QVERIFY(!IsSaveEnabled(editor));
                QCOMPARE(Focused(editor), "txtStart");
                QVERIFY(IsRefused(editor, "txtStart"));
                QCOMPARE(BoxText(editor, "txtStart"), "2003-02-31");
                QCOMPARE(program.folder.Read("tarno.xml"), before);
                CloseWithoutSaving(editor, program);
            });
        }
    }

    void arrowKey_unfinishedDate_isRefusedWithoutAMessage()
    {
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            ProgramWithPlace program;
            Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
                Enter(editor, "txtStart", "2003-");
                Press(editor, key);
                QVERIFY(IsRefused(editor, "txtStart"));
                QCOMPARE(BoxText(editor, "txtStart"), "2003-");
                QVERIFY(Find<QLabel>(editor, "lblRefusal").isVisible());
                CloseWithoutSaving(editor, program);
            });
        }
    }

    void refusal_isExplainedUntilTheTextChanges()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            TypeRefusedDate(editor);
            Click(editor, "txtTideLow");
            const auto& note = Find<QLabel>(editor, "lblRefusal");
            QVERIFY(note.isVisible());
            QCOMPARE(note.text(),
                     QStringLiteral("This date does not exist. Use year-month-day, for example 2026-03-31."));
            Press(editor, Qt::Key_Backspace);
            QVERIFY(!note.isVisible());
            CloseWithoutSaving(editor, program);
        });
    }

    void refused_thenValid_isRestoredAndStored()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            const QPalette usual = Find<QWidget>(editor, "txtEnd").palette();
            Enter(editor, "txtEnd", "2003-02-31");
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsRefused(editor, "txtEnd"));
            Enter(editor, "txtEnd", "2003-02-28");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Focused(editor), "txtTEnd");
            QVERIFY(!IsRefused(editor, "txtEnd"));
            const QPalette restored = Find<QWidget>(editor, "txtEnd").palette();
            QCOMPARE(restored.color(QPalette::Base), usual.color(QPalette::Base));
            QCOMPARE(restored.color(QPalette::Text), usual.color(QPalette::Text));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::EndDate), "2003-02-28");
    }

    void refused_staysOrangeWhileTyping()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            TypeRefusedDate(editor);
            QVERIFY(!IsRefused(editor, "txtStart")); // the user has not left the box yet
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsRefused(editor, "txtStart"));
            Press(editor, Qt::Key_Backspace);
            QVERIFY(IsRefused(editor, "txtStart"));
            CloseWithoutSaving(editor, program);
        });
    }

    void refused_textIsReadable()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            QPalette dark;
            dark.setColor(QPalette::Base, Qt::black);
            dark.setColor(QPalette::Text, Qt::white);
            editor.setPalette(dark);
            TypeRefusedDate(editor);
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Find<QWidget>(editor, "txtStart").palette().color(QPalette::Text), QColor(Qt::black));
            CloseWithoutSaving(editor, program);
            QVERIFY(!IsRefused(editor, "txtStart"));
        });
    }

    void refused_otherBoxesKeepTheirColours()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            TypeRefusedDate(editor);
            Press(editor, Qt::Key_Tab);
            for (const char* box : {"txtEnd", "txtTStart", "txtMajor1"}) {
                QVERIFY(!IsRefused(editor, box));
            }
            CloseWithoutSaving(editor, program);
        });
    }

    void refused_keysOfTheBoxItself_doNotLeaveIt()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            TypeRefusedDate(editor);
            Press(editor, Qt::Key_F1);
            Press(editor, Qt::Key_Left);
            Press(editor, Qt::Key_A, Qt::ControlModifier);
            QVERIFY(!IsRefused(editor, "txtStart")); // editing keys do not leave the box
            QCOMPARE(Focused(editor), "txtStart");
            CloseWithoutSaving(editor, program);
        });
    }

    void keys_notAccepted_doNotAppear_data() { AddFilteredBoxes(); }

    void keys_notAccepted_doNotAppear()
    {
        QFETCH(QString, box);
        QFETCH(QString, separator);
        const QByteArray name = box.toLatin1();
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, name, "a1 /,2;x.-:3+Z");
            QCOMPARE(BoxText(editor, name), "12." + separator.toStdString() + "3");
            Press(editor, Qt::Key_Backspace);
            QCOMPARE(BoxText(editor, name), "12." + separator.toStdString());
            Press(editor, Qt::Key_Home);
            Type(editor, "x0");
            QCOMPARE(BoxText(editor, name), "012." + separator.toStdString());
            Enter(editor, name, separator == QLatin1String("-") ? "2003-02-05" : "0630");
            SaveAndClose(editor);
        });
    }

    void keys_withoutFilter_areAllAccepted()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            for (const char* box : {"txtMajor1", "txtMinor2", "txtTideLowHt", "txtTideHighHt", "txtAirTemp",
                                    "txtWaterTemp", "txtPressure"}) {
                Enter(editor, box, "a1 /,2;x.-:3+Z");
                QCOMPARE(BoxText(editor, box), "a1 /,2;x.-:3+Z");
            }
            SaveAndClose(editor);
        });
    }

    void pasted_textIsFiltered_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("text");
        QTest::newRow("date within words") << "txtStart"
                                           << "on 2003-02-07, early"
                                           << "2003-02-07";
        QTest::newRow("date with slashes") << "txtEnd"
                                           << "2003/02/07"
                                           << "20030207";
        QTest::newRow("time within words") << "txtTStart"
                                           << "at 06:45 pm"
                                           << "06:45";
        QTest::newRow("several lines") << "txtTideHigh"
                                       << "06\n:45\n"
                                       << "06:45";
        QTest::newRow("letters only") << "txtSunRise"
                                      << "sunrise"
                                      << "";
        QTest::newRow("other digits") << "txtMoonRise"
                                      << "\xD9\xA0\xD9\xA6:45"
                                      << ":45";
        QTest::newRow("moon") << "txtMoon"
                              << "45 %"
                              << "45";
    }

    void pasted_textIsFiltered()
    {
        QFETCH(QString, box);
        QFETCH(QString, pasted);
        QFETCH(QString, text);
        const QByteArray name = box.toLatin1();
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            EmptyBox(editor, name);
            QApplication::clipboard()->setText(pasted);
            Press(editor, Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(BoxText(editor, name), text.toStdString());
            Enter(editor, name, name == "txtStart" || name == "txtEnd" ? "2003-02-05" : "");
            Enter(editor, "txtTideLowHt", "changed");
            Close(editor);
        });
    }

    void dropped_textIsFiltered()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            EmptyBox(editor, "txtTEnd");
            auto& box = Find<QLineEdit>(editor, "txtTEnd");
            QMimeData data;
            data.setText(QStringLiteral("until 12:30"));
            QDragEnterEvent enter(box.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(&box, &enter);
            QDropEvent drop(box.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(&box, &drop);
            QCOMPARE(BoxText(editor, "txtTEnd"), "12:30");
            SaveAndClose(editor);
        });
    }

    void composed_textIsFiltered()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            EmptyBox(editor, "txtTEnd");
            for (const char* committed : {"1", "\xEF\xBC\x92", "2:", "\xE6\x99\x82", "a3"}) {
                QInputMethodEvent event;
                event.setCommitString(QString::fromUtf8(committed));
                QApplication::sendEvent(&Find<QLineEdit>(editor, "txtTEnd"), &event);
            }
            QCOMPARE(BoxText(editor, "txtTEnd"), "12:3");
            SaveAndClose(editor);
        });
    }

    void undo_neverRestoresUnfilteredText()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtTEnd", "x1y2z:30");
            const QString allowed = QStringLiteral("0123456789:.");
            for (const Qt::Key key : {Qt::Key_Z, Qt::Key_Z, Qt::Key_Z, Qt::Key_Y, Qt::Key_Y, Qt::Key_Y}) {
                Press(editor, key, Qt::ControlModifier);
                for (const QChar letter : FromUtf8(BoxText(editor, "txtTEnd"))) {
                    QVERIFY(allowed.contains(letter));
                }
            }
            Enter(editor, "txtTEnd", "12:30");
            SaveAndClose(editor);
        });
    }

    void wordShownByTheForecast_canBeEditedAndDeleted()
    {
        ProgramWithPlace program;
        const int key =
            program.AddCompleteEntry({{EntryField::SunRise, "never"}, {EntryField::SunSet, "sets"}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtSunRise"), "never");
            GoTo(editor, "txtSunRise");
            Press(editor, Qt::Key_End);
            Type(editor, "x");
            QCOMPARE(BoxText(editor, "txtSunRise"), "never");
            for (int letter = 0; letter < 5; ++letter) {
                Press(editor, Qt::Key_Backspace);
            }
            Type(editor, "0611");
            Enter(editor, "txtSunSet", "1900");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::SunRise), "06:11");
        QCOMPARE(program.StoredEntry(key, EntryField::SunSet), "19:00");
    }
};

TEST_CLASS(tst_EntryRules)
#include "tst_EntryRules.moc"
