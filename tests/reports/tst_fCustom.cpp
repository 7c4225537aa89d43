// The window in which the fields of the log report are customised: what it shows, when it stores, what fails.

#include "reports/BuilderTest.h"
#include "reports/engine/ReportFonts.h"
#include "reports/fCustom.h"
#include "support/TestClass.h"

#include <QGroupBox>

#include <algorithm>
#include <map>

namespace
{

/// Opens the window and takes `steps` in it, which have to close it.
template <typename Steps>
void ShowCustom(TestProgram& program, Steps&& steps)
{
    WhileOpen(
        "fCustom", [&] { fCustom(program.program, nullptr).exec(); }, std::forward<Steps>(steps));
}

void Choose(QWidget& custom, int row)
{
    ClickItem(custom, "lstField", row);
}

void Ok(QWidget& custom)
{
    Click(custom, "cmdOK");
}

/// What the four boxes show, "/" between them.
std::string Boxes(const QWidget& custom)
{
    return BoxText(custom, "txtDesc") + "/" + BoxText(custom, "txtLabel") + "/" +
           BoxText(custom, "txtWidth") + "/" + BoxText(custom, "txtFont");
}

/// All values of a stored field, "/" between them.
std::string Stored(const TestProgram& program, std::size_t position)
{
    const Line field = program.Stored("field.xml").at(position);
    std::string joined;
    for (const std::string& value : field) {
        joined += (joined.empty() ? "" : "/") + value;
    }
    return joined;
}

/// How often a data file has been written.
std::ptrdiff_t Saves(const TestProgram& program)
{
    const auto& steps = program.operations.Steps();
    return std::count(steps.begin(), steps.end(), "exchange");
}

} // namespace

class tst_fCustom : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void captions_areAsKnown()
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
            QCOMPARE(Stored(program, 0), "1/StartDate/Date/From/20/8/0/1");
            Choose(custom, 2);
            QCOMPARE(Items(custom, "lstField"), "Date of trip|Until|Time|End|Place|Tide");
            QCOMPARE(Stored(program, 0), "1/StartDate/Date of trip/From/20/8/0/1");
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
            QCOMPARE(Stored(program, 1), stored.toStdString());
            QCOMPARE(Stored(program, 0), "1/StartDate/Date/From/20/8/0/1");
            Press(custom, Qt::Key_Escape);
        });
    }

    void edited_once_everyChoiceStores()
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

    void edited_back_countsAsEdited()
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
        QCOMPARE(Stored(program, 0), "1/StartDate/Date/From/20/8/0/1");
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
        QCOMPARE(Stored(program, 0), "1/StartDate/Date/From/30/8/7/yes/kept");
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
        QCOMPARE(Stored(program, 5), "6/TideStart/Tide/Stream/20/8/0/0");
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
        QCOMPARE(Stored(program, 1), "2/EndDate/Until/To/20/8/0/0");
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
        QCOMPARE(Stored(program, 0), "1/StartDate/Date/Day/20/8/0/1");
        QCOMPARE(Stored(program, 1), "2/EndDate/Until/To/20/8/0/0");
        ShowCustom(program, [](QDialog& custom) {
            Choose(custom, 1);
            QCOMPARE(Boxes(custom), "Until/To/20/8"); // nor does the program keep it
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
        QCOMPARE(Stored(program, 2), "3/StartTime/Clock/Start/15/10/0/1");
        QCOMPARE(Stored(program, 5), "6/TideStart/Tide/Sea/20/8/0/0");
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
        QCOMPARE(Stored(program, 0), "1/StartDate/Date/Day/20/8/0/1");
    }

    void notStored_choosing_staysWithTheField()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [&](QDialog& custom) {
            Choose(custom, 1);
            Retype(custom, "txtLabel", "Finish");
            program.operations.Fail("write", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::DiskFull);
            Choose(custom, 4);
            QTRY_COMPARE_WITH_TIMEOUT(SelectedRow(custom, "lstField"), 1, patience);
            QCOMPARE(Boxes(custom), "Until/Finish/20/8");
            QCOMPARE(program.folder.Read("field.xml"), before);
            Choose(custom, 4);
            QCOMPARE(SelectedRow(custom, "lstField"), 4);
            QCOMPARE(Boxes(custom), "Place/Where/40/8");
            QCOMPARE(Stored(program, 1), "2/EndDate/Until/Finish/20/8/0/0");
            Press(custom, Qt::Key_Escape);
        });
    }

    void notStored_ok_keepsTheWindow()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            program.operations.Fail("exchange", ErrorNumber::PermissionDenied);
            program.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::PermissionDenied);
            Ok(custom);
            QVERIFY(custom.isVisible());
            QCOMPARE(Boxes(custom), "Date/Day/20/8");
            QCOMPARE(program.folder.Read("field.xml"), before);
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(Stored(program, 0), "1/StartDate/Date/Day/20/8/0/1");
    }

    void notStored_closed_leavesTheFile()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            program.operations.Fail("sync", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::DiskFull);
            Ok(custom);
            Press(custom, Qt::Key_Escape);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(program.folder.Read("field.xml"), before);
        QCOMPARE(program.sql.UnsavedFiles(), std::vector<std::string>{"field.xml"});
    }

    void noFields_nothingIsStored()
    {
        TestProgram program;
        WriteFields(program, {});
        program.Start();
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Items(custom, "lstField"), "");
            QCOMPARE(Boxes(custom), "///");
            Retype(custom, "txtDesc", "Nothing");
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(Saves(program), 0);
        QCOMPARE(program.Stored("field.xml").size(), 0U);
    }

    void fileDamaged_isReportedAndNeverWritten()
    {
        TestProgram program;
        program.folder.Write("field.xml", "<data><field>");
        program.Start();
        program.reports.Expect("cSQL", "FieldList", ErrorNumber::ObjectNotSet);
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Items(custom, "lstField"), "");
            Retype(custom, "txtDesc", "Nothing");
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(program.folder.Read("field.xml"), "<data><field>");
    }

    void gap_showsTheFieldAtThePosition()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[2], sixFields[3]}); // numbers 1, 3, 4
        program.Start();
        ShowCustom(program, [](QDialog& custom) {
            Choose(custom, 1); // field 3, which is the third of the file
            QCOMPARE(Boxes(custom), "End/Stop/20/8");
            Retype(custom, "txtLabel", "Finish");
            Ok(custom);
        });
        QCOMPARE(Stored(program, 1), "3/StartTime/Time/Start/20/8/0/1");
        QCOMPARE(Stored(program, 2), "4/EndTime/End/Finish/20/8/0/0");
    }

    void gap_fieldBehindTheEnd_isReported_data()
    {
        QTest::addColumn<bool>("edited");
        QTest::newRow("unchanged") << false;
        QTest::newRow("edited") << true;
    }

    void gap_fieldBehindTheEnd_isReported()
    {
        QFETCH(bool, edited);
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[1], sixFields[3]}); // numbers 1, 2, 4
        program.Start();
        ShowCustom(program, [&](QDialog& custom) {
            if (edited) {
                Retype(custom, "txtLabel", "Day");
            }
            program.reports.Expect("fCustom", "lstField_Click", ErrorNumber::SubscriptOutOfRange);
            Choose(custom, 2);
            QTRY_COMPARE_WITH_TIMEOUT(SelectedRow(custom, "lstField"), 0, patience);
            QCOMPARE(Boxes(custom), edited ? "Date/Day/20/8" : "Date/From/20/8");
            Choose(custom, 1);
            QCOMPARE(Boxes(custom), "Until/To/20/8");
            Ok(custom);
        });
        QCOMPARE(Stored(program, 0),
                 edited ? "1/StartDate/Date/Day/20/8/0/1" : "1/StartDate/Date/From/20/8/0/1");
        QCOMPARE(Stored(program, 2), "4/EndTime/End/Stop/20/8/0/0");
    }

    void gap_firstFieldBehindTheEnd_isReported()
    {
        TestProgram program;
        WriteFields(program, {sixFields[5]});
        program.Start();
        const std::string before = program.folder.Read("field.xml");
        program.reports.Expect("fCustom", "lstField_Click", ErrorNumber::SubscriptOutOfRange);
        ShowCustom(program, [](QDialog& custom) {
            QCOMPARE(Items(custom, "lstField"), "Tide");
            QCOMPARE(Boxes(custom), "///");
            Retype(custom, "txtLabel", "Lost");
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(program.folder.Read("field.xml"), before);
    }

    void gap_typedWithoutAField_isNotStored()
    {
        TestProgram program;
        WriteFields(program, {sixFields[5], sixFields[0]});
        program.Start();
        const std::string before = program.folder.Read("field.xml");
        program.reports.Expect("fCustom", "lstField_Click", ErrorNumber::SubscriptOutOfRange);
        ShowCustom(program, [](QDialog& custom) {
            Retype(custom, "txtLabel", "Lost");
            Choose(custom, 1); // number 1: the first in the file
            QVERIFY(Boxes(custom).starts_with("Tide/"));
            custom.reject();
        });
        QCOMPARE(program.folder.Read("field.xml"), before);
    }

    void fieldNumber_thatIsNone_isReported()
    {
        TestProgram program;
        WriteFields(program, {{"one", "StartDate", "Date", "From", "20", "8", "0", "1"}});
        program.Start();
        program.reports.Expect("fCustom", "Form_Load", ErrorNumber::TypeMismatch);
        ShowCustom(program, [](QDialog& custom) {
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
    }

    void fieldWithTooFewValues_isReported()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], {"2", "EndDate", "Until", "To"}});
        program.Start();
        ShowCustom(program, [&](QDialog& custom) {
            program.reports.Expect("fCustom", "lstField_Click", ErrorNumber::ObjectNotSet);
            Choose(custom, 1);
            QTRY_COMPARE_WITH_TIMEOUT(SelectedRow(custom, "lstField"), 0, patience);
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(Saves(program), 0);
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
        QCOMPARE(Stored(program, 999), "1000/Name1000/The last/H1000/10/8/0/0");
        QCOMPARE(program.Stored("field.xml").size(), 1000U);
    }
};

TEST_CLASS(tst_fCustom)
#include "tst_fCustom.moc"
