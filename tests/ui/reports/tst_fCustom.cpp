// The window that customises the fields of the log report: what it shows, and what it stores when.

#include "reports/engine/ReportFonts.h"
#include "support/TestClass.h"
#include "ui/reports/CustomTest.h"

#include <QGroupBox>

#include <algorithm>
#include <map>

using namespace Tarno;

class tst_fCustom : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void captions_areAsExpected()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(custom.windowTitle(), QStringLiteral("Customise Report Components"));
            QCOMPARE(Find<QGroupBox>(custom, "frProperties").title(),
                     QStringLiteral("Change it's report properties:"));
            const std::map<const char*, std::string> captions{
                {"lblField", "Select a component:"},
                {"lblDesc", "List Description"},
                {"lblLabel", "Report Heading"},
                {"lblWidth", "Report Width (mm)"},
                {"lblFont", "Report Font Size"},
                {"cmdOK", "OK"},
                {"lblPrecious", "When setting this information, please remember that space on the report is "
                                "precious - if you "
                                "make the column too wide, or use too large a font, the amount of "
                                "information you will be able "
                                "to fit across the page will be reduced substantially."},
                {"lblStored",
                 "Note: If you change information for a component, it will be saved in the field "
                 "definition file!"}};
            for (const auto& [name, caption] : captions) {
                QCOMPARE(Caption(custom, name), caption);
            }
            Ok(custom);
        });
    }

    void notes_areInTahoma()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            for (const char* note : {"lblPrecious", "lblStored"}) {
                QCOMPARE(Find<QLabel>(custom, note).font().family(),
                         AvailableFamily(QStringLiteral("Tahoma")));
            }
            Ok(custom);
        });
    }

    void mnemonics_areUnambiguous()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            const std::string letters = Mnemonics(custom);
            QCOMPARE(letters.size(), 6U);
            QVERIFY2(std::adjacent_find(letters.begin(), letters.end()) == letters.end(), letters.c_str());
            Ok(custom);
        });
    }

    void opened_showsTheFirstField()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Items(custom, "lstField"), "Date|Until|Time|End|Place|Tide");
            QCOMPARE(Numbers(custom, "lstField"), "1,2,3,4,5,6");
            QCOMPARE(SelectedRow(custom, "lstField"), 0);
            QCOMPARE(Boxes(custom), "Date/From/20/8");
            Ok(custom);
        });
    }

    void chosen_showsItsValues()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            Choose(custom, 4);
            QCOMPARE(Boxes(custom), "Place/Where/40/8");
            Choose(custom, 1);
            QCOMPARE(Boxes(custom), "Until/To/20/8");
            Choose(custom, 0);
            QCOMPARE(Boxes(custom), "Date/From/20/8");
            Ok(custom);
        });
    }

    void chosen_unchanged_storesNothing()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            for (int row = 5; row >= 0; --row) {
                Choose(custom, row);
                for (const char* box : {"txtDesc", "txtLabel", "txtWidth", "txtFont"}) {
                    Click(custom, box);
                }
            }
            Ok(custom);
        });
        QCOMPARE(Saves(program), 0);
    }

    void listText_isShownAsItIs()
    {
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "R&D <b>x</b>~CL~🐟", "&From", "20", "8", "0", "1"}});
        program.Start();
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Items(custom, "lstField"), "R&D <b>x</b>~CL~🐟");
            QCOMPARE(Boxes(custom), "R&D <b>x</b>~CL~🐟/&From/20/8");
            Ok(custom);
        });
    }

    void edited_choosingAnother_storesAndRenames()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [&](QDialog& custom) {
            Click(custom, "txtDesc");
            Press(custom, Qt::Key_End);
            Type(custom, " of trip");
            QCOMPARE(Items(custom, "lstField"), "Date|Until|Time|End|Place|Tide");
            QCOMPARE(StoredField(program, 0), "1/StartDate/Date/From/20/8/0/1");
            Choose(custom, 2);
            QCOMPARE(Items(custom, "lstField"), "Date of trip|Until|Time|End|Place|Tide");
            QCOMPARE(StoredField(program, 0), "1/StartDate/Date of trip/From/20/8/0/1");
            QCOMPARE(Boxes(custom), "Time/Start/20/8");
            QCOMPARE(SelectedRow(custom, "lstField"), 2);
            Press(custom, Qt::Key_Escape);
        });
    }

    void edited_value_isStoredInItsPlace_data()
    {
        QTest::addColumn<QByteArray>("box");
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("description") << QByteArray("txtDesc") << QByteArray("2/EndDate/77/To/20/8/0/0");
        QTest::newRow("heading") << QByteArray("txtLabel") << QByteArray("2/EndDate/Until/77/20/8/0/0");
        QTest::newRow("width") << QByteArray("txtWidth") << QByteArray("2/EndDate/Until/To/77/8/0/0");
        QTest::newRow("font size") << QByteArray("txtFont") << QByteArray("2/EndDate/Until/To/20/77/0/0");
    }

    void edited_value_isStoredInItsPlace()
    {
        QFETCH(QByteArray, box);
        QFETCH(QByteArray, stored);
        ProgramWithSixFields program;
        ShowCustom(program, [&](QDialog& custom) {
            Choose(custom, 1);
            Retype(custom, box.constData(), "77");
            Choose(custom, 0);
            QCOMPARE(StoredField(program, 1), stored.toStdString());
            QCOMPARE(StoredField(program, 0), "1/StartDate/Date/From/20/8/0/1");
            Press(custom, Qt::Key_Escape);
        });
    }

    void edited_once_everyLaterSelectionSaves()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [&](QDialog& custom) {
            Choose(custom, 1);
            QCOMPARE(Saves(program), 0);
            Retype(custom, "txtWidth", "21");
            QCOMPARE(Saves(program), 0);
            for (int row = 2; row < 6; ++row) {
                Choose(custom, row);
                QCOMPARE(Saves(program), row - 1);
            }
            Ok(custom);
        });
        QCOMPARE(Saves(program), 5);
        for (std::size_t field = 0; field < 6; ++field) {
            Line expected = sixFields[field];
            expected[4] = field == 1 ? "21" : expected[4];
            QCOMPARE(program.Stored("field.xml").at(field), expected);
        }
    }

    void edited_andRestored_isSavedAnyway()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            Click(custom, "txtLabel");
            Press(custom, Qt::Key_End);
            Type(custom, "x");
            Press(custom, Qt::Key_Backspace);
            Ok(custom);
        });
        QCOMPARE(Saves(program), 1);
        QCOMPARE(StoredField(program, 0), "1/StartDate/Date/From/20/8/0/1");
    }

    void edited_value_isStoredAsTyped_data()
    {
        QTest::addColumn<QByteArray>("typed");
        QTest::newRow("word") << QByteArray("wide");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("blanks") << QByteArray("  ");
        QTest::newRow("negative") << QByteArray("-5");
        QTest::newRow("too large") << QByteArray("99999999999");
        QTest::newRow("broken number") << QByteArray("1,5");
        QTest::newRow("markup") << QByteArray("<a href=\"x\">&amp;'</a>]]>");
        QTest::newRow("umlauts") << QByteArray("Größe");
        QTest::newRow("other scripts") << QByteArray("釣り рыба صيد");
        QTest::newRow("emoji") << QByteArray("🐟");
        QTest::newRow("line break mark") << QByteArray("a~CL~b");
        QTest::newRow("long") << QByteArray(5000, 'w');
    }

    void edited_value_isStoredAsTyped()
    {
        QFETCH(QByteArray, typed);
        const std::string text = typed.toStdString();
        ProgramWithSixFields program;
        ShowCustom(program, [&](QDialog& custom) {
            for (const char* box : {"txtDesc", "txtLabel", "txtWidth", "txtFont"}) {
                Retype(custom, box, text);
            }
            Choose(custom, 1);
            QCOMPARE(ToUtf8(List(custom, "lstField").item(0)->text()), text);
            Choose(custom, 0);
            QCOMPARE(Boxes(custom), text + "/" + text + "/" + text + "/" + text);
            Ok(custom);
        });
        QCOMPARE(program.Stored("field.xml").at(0),
                 (Line{"1", "StartDate", text, text, text, text, "0", "1"}));
    }

    void edited_shownAgain_hasTheNewValues()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            Retype(custom, "txtFont", "9");
            Choose(custom, 5);
            Choose(custom, 0);
            QCOMPARE(Boxes(custom), "Date/Day/20/9");
            Ok(custom);
        });
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Boxes(custom), "Date/Day/20/9");
            Ok(custom);
        });
    }

    void stored_keepsFileAndOtherValues()
    {
        TestProgram program;
        program.folder.Write("field.xml", "<data><!-- mine --><field><FieldNo>1</FieldNo><FieldName>StartDate"
                                          "</FieldName><Desc>Date</Desc><Label>From</Label><Width>20</Width>"
                                          "<Font>8</Font><Grow>7</Grow><DefaultFlag>yes</DefaultFlag>"
                                          "<More>kept</More></field></data>");
        program.Start();
        const std::vector<std::string> names = program.folder.Names();
        ShowCustom(program, [](QDialog& custom) {
            Retype(custom, "txtWidth", "30");
            Ok(custom);
        });
        QCOMPARE(StoredField(program, 0), "1/StartDate/Date/From/30/8/7/yes/kept");
        QVERIFY(program.folder.Read("field.xml").find("<!-- mine -->") != std::string::npos);
        QCOMPARE(program.folder.Names(), names);
    }

    void ok_storesTheFieldInView()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            Choose(custom, 5);
            Retype(custom, "txtLabel", "Stream");
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(StoredField(program, 5), "6/TideStart/Tide/Stream/20/8/0/0");
        QCOMPARE(Saves(program), 1);
    }

    void ok_unchanged_storesNothing()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [](QDialog& custom) {
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(Saves(program), 0);
        QCOMPARE(program.folder.Read("field.xml"), before);
    }

    void ok_afterAnEarlierEdit_storesTheFieldInView()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtWidth", "21");
            Choose(custom, 1);
            QCOMPARE(Saves(program), 1);
            Ok(custom);
        });
        QCOMPARE(Saves(program), 2);
        QCOMPARE(StoredField(program, 1), "2/EndDate/Until/To/20/8/0/0");
    }

    void closed_losesTheEditInView_data()
    {
        QTest::addColumn<bool>("esc");
        QTest::newRow("close box") << false;
        QTest::newRow("Esc") << true;
    }

    void closed_losesTheEditInView()
    {
        QFETCH(bool, esc);
        ProgramWithSixFields program;
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            Choose(custom, 1);
            Retype(custom, "txtLabel", "Lost");
            if (esc) {
                Press(custom, Qt::Key_Escape);
            } else {
                custom.close();
            }
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(StoredField(program, 0), "1/StartDate/Date/Day/20/8/0/1");
        QCOMPARE(StoredField(program, 1), "2/EndDate/Until/To/20/8/0/0");
        ShowCustom(program, [](QDialog& custom) {
            Choose(custom, 1);
            QCOMPARE(Boxes(custom), "Until/To/20/8"); // the edit is not kept in memory either
            Ok(custom);
        });
    }

    void keyboardAlone_customises()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Focused(custom), "lstField");
            Press(custom, Qt::Key_Down);
            Press(custom, Qt::Key_Down);
            QCOMPARE(Boxes(custom), "Time/Start/20/8");
            Press(custom, Qt::Key_W, Qt::AltModifier);
            QCOMPARE(Focused(custom), "txtWidth");
            Press(custom, Qt::Key_A, Qt::ControlModifier);
            Type(custom, "15");
            Press(custom, Qt::Key_F, Qt::AltModifier);
            Press(custom, Qt::Key_A, Qt::ControlModifier);
            Type(custom, "10");
            Press(custom, Qt::Key_D, Qt::AltModifier);
            Press(custom, Qt::Key_A, Qt::ControlModifier);
            Type(custom, "Clock");
            Press(custom, Qt::Key_S, Qt::AltModifier);
            QCOMPARE(Focused(custom), "lstField");
            Press(custom, Qt::Key_End);
            QCOMPARE(Items(custom, "lstField"), "Date|Until|Clock|End|Place|Tide");
            Press(custom, Qt::Key_H, Qt::AltModifier);
            Press(custom, Qt::Key_A, Qt::ControlModifier);
            Type(custom, "Sea");
            PressMnemonic(custom, Qt::Key_O, "cmdOK");
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(StoredField(program, 2), "3/StartTime/Clock/Start/15/10/0/1");
        QCOMPARE(StoredField(program, 5), "6/TideStart/Tide/Sea/20/8/0/0");
    }

    void tab_goesThroughTheWindow()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(TabOrder(custom), "lstField txtDesc txtLabel txtWidth txtFont cmdOK");
            Ok(custom);
        });
    }

    void enter_inABox_isOK()
    {
        ProgramWithSixFields program;
        ShowCustom(program, [](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            Press(custom, Qt::Key_Return);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(StoredField(program, 0), "1/StartDate/Date/Day/20/8/0/1");
    }

    void thousandFields_lastIsStored()
    {
        std::vector<Line> fields;
        for (int number = 1; number <= 1000; ++number) {
            const std::string text = std::to_string(number);
            fields.push_back({text, "Name" + text, "Field " + text, "H" + text, "10", "8", "0", "0"});
        }
        TestProgram program;
        WriteFields(program, fields);
        program.Start();
        ShowCustom(program, [](QDialog& custom) {
            Press(custom, Qt::Key_End);
            QCOMPARE(Boxes(custom), "Field 1000/H1000/10/8");
            Retype(custom, "txtDesc", "The last");
            Press(custom, Qt::Key_S, Qt::AltModifier);
            Press(custom, Qt::Key_Home);
            QCOMPARE(ToUtf8(List(custom, "lstField").item(999)->text()), "The last");
            Ok(custom);
        });
        QCOMPARE(StoredField(program, 999), "1000/Name1000/The last/H1000/10/8/0/0");
        QCOMPARE(program.Stored("field.xml").size(), 1000U);
    }
};

TEST_CLASS(tst_fCustom)
#include "tst_fCustom.moc"
