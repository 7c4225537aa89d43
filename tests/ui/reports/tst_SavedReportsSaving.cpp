// Saving a report in the report builder: what is stored, and what happens when it cannot be stored.

#include "support/TestClass.h"
#include "support/UnsavedFiles.h"
#include "ui/reports/SavedReportTest.h"

#include <algorithm>

using namespace Tarno;

class tst_SavedReportsSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void saved_new_isAppended()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdBackAll"); // 2,4,6,1,3,5
            for (const int row : {4, 3, 0}) {
                ClickItem(builder, "lstAvail", row);
                Click(builder, "cmdMove");
            }
            SaveNew(builder, "Mine");
            QVERIFY(!IsFrameOpen(builder));
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All|Mine");
            Choose(builder, "cboSaved", 3);
            QCOMPARE(FieldNumbers(builder), "4,5,6 -> 3,1,2");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 4U);
        QCOMPARE(StoredReport(program, 3), "4/Mine/StartTime,StartDate,EndDate/3,1,2");
        QCOMPARE(StoredReport(program, 0), "1/Tides/TideStart,StartDate/6,1");
    }

    void saved_noneSelected_isNewWithoutTheTick()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Mine");
            QVERIFY(!IsTicked(builder, "chkNew"));
            Click(builder, "cmdSavedOK");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 4U);
        QCOMPARE(StoredReport(program, 3), "4/Mine/StartTime,StartDate,LocNo/3,1,5");
    }

    void saved_overwrites_theSelectedReport()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 1); // 4,2,5
            ClickItem(builder, "lstRpt", 2);
            Click(builder, "cmdUp");
            OpenFrame(builder);
            Click(builder, "cmdSavedOK");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 3U);
        QCOMPARE(StoredReport(program, 1), "2/Ends/EndTime,LocNo,EndDate/4,5,2");
        QCOMPARE(StoredReport(program, 2),
                 "3/All/StartDate,EndDate,StartTime,EndTime,LocNo,TideStart/1,2,3,4,5,6");
    }

    void saved_overwrites_underAnotherName()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Water");
            Click(builder, "cmdSavedOK");
            QCOMPARE(Choices(builder, "cboSaved"), "Water|Ends|All");
        });
        QCOMPARE(StoredReport(program, 0), "1/Water/TideStart,StartDate/6,1");
    }

    void saved_selectedButTicked_isNew()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            OpenFrame(builder);
            Click(builder, "chkNew");
            Click(builder, "cmdSavedOK");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All|Tides");
        });
        QCOMPARE(StoredReport(program, 0), "1/Tides/TideStart,StartDate/6,1");
        QCOMPARE(StoredReport(program, 3), "4/Tides/TideStart,StartDate/6,1");
    }

    void saved_emptyReport_storesEmptyTexts()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdBackAll");
            SaveNew(builder, "Nothing");
        });
        QCOMPARE(StoredReport(program, 0), "1/Nothing//");
    }

    void saved_keepsOtherValuesOfTheRecord()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("Rpt.xml", "<data><!-- mine --><report><RptNo>1</RptNo><RptName>Tides</RptName>"
                                        "<Fields>TideStart</Fields><FieldKeys>6</FieldKeys>"
                                        "<Options>kept</Options><More>too</More></report></data>");
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Water");
            Click(builder, "cmdSavedOK");
        });
        const std::string file = program.folder.Read("Rpt.xml");
        for (const char* text :
             {"<!-- mine -->", "<RptName>Water</RptName>", "<Options>kept</Options>", "<More>too</More>"}) {
            QVERIFY2(file.find(text) != std::string::npos, text);
        }
    }

    void saved_name_isStoredAsTyped_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("markup") << QByteArray("<b>&amp;\"'</b> ]]>");
        QTest::newRow("ampersand") << QByteArray("Bait & lure");
        QTest::newRow("umlauts") << QByteArray("Fänge am Fluß");
        QTest::newRow("other scripts") << QByteArray("釣り рыба صيد");
        QTest::newRow("emoji") << QByteArray("🐟👨‍👩‍👧");
        QTest::newRow("blanks around it") << QByteArray("  Mine  ");
        QTest::newRow("one blank") << QByteArray(" ");
        QTest::newRow("commas") << QByteArray("a,b,c");
        QTest::newRow("place holder") << QByteArray("%1 %n ~CL~ \\n");
        QTest::newRow("number") << QByteArray("0");
        QTest::newRow("long") << QByteArray(5000, 'x');
    }

    void saved_name_isStoredAsTyped()
    {
        QFETCH(QByteArray, name);
        const std::string typed = name.toStdString();
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            SaveNew(builder, typed);
            QCOMPARE(Choices(builder, "cboSaved"), typed);
            Choose(builder, "cboSaved", 0);
            QCOMPARE(Chosen(builder, "cboSaved"), typed);
            OpenFrame(builder);
            QCOMPARE(BoxText(builder, "txtSaved"), typed);
            Click(builder, "cmdSavedOK");
        });
        QCOMPARE(StoredReport(program, 0), "1/" + typed + "/StartTime,StartDate,LocNo/3,1,5");
        program.sql.Init(); // simulates the next start
        ShowBuilder(program, [&](QDialog& builder) { QCOMPARE(Choices(builder, "cboSaved"), typed); });
    }

    void saved_sameNameTwice_isTwoReports()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            SaveNew(builder, "Mine");
            SaveNew(builder, "Mine");
            QCOMPARE(Choices(builder, "cboSaved"), "Mine|Mine");
            Choose(builder, "cboSaved", 1);
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Yours");
            Click(builder, "cmdSavedOK");
            QCOMPARE(Choices(builder, "cboSaved"), "Mine|Yours");
        });
    }

    void saved_showsTheDefaultReportAndDisablesSave()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", 1);
            OpenFrame(builder);
            Click(builder, "cmdSavedOK");
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete");
            ChangeSomething(builder);
            QVERIFY(IsEnabled(builder, "cmdSave"));
        });
    }

    void saved_isThereWhenTheWindowOpensAgain()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) { SaveNew(builder, "Mine"); });
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Choices(builder, "cboSaved"), "Mine");
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete");
        });
    }

    void saved_thousandFields_areAllStored()
    {
        std::vector<Line> fields;
        for (int number = 1; number <= 1000; ++number) {
            const std::string text = std::to_string(number);
            fields.push_back({text, "Name" + text, "Field " + text, "H" + text, "10", "8", "0", "0"});
        }
        TestProgram program;
        WriteFields(program, fields);
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            SaveNew(builder, "All");
            Choose(builder, "cboSaved", 0);
            QCOMPARE(List(builder, "lstRpt").count(), 1000);
            QCOMPARE(List(builder, "lstAvail").count(), 0);
        });
        const Line report = program.Stored("Rpt.xml").at(0);
        QCOMPARE(std::count(report[2].begin(), report[2].end(), ','), 999);
        QVERIFY(FromUtf8(report[2]).endsWith(QStringLiteral(",Name999,Name1000")));
        QVERIFY(FromUtf8(report[3]).endsWith(QStringLiteral(",999,1000")));
    }

    void notSaved_keepsTheFrame_data()
    {
        QTest::addColumn<QByteArray>("step");
        QTest::addColumn<int>("number");
        QTest::newRow("full disk") << QByteArray("create") << int(ErrorNumber::DiskFull);
        QTest::newRow("no room for the file") << QByteArray("create") << int(ErrorNumber::PathFileAccess);
        QTest::newRow("file not replaced") << QByteArray("replace") << int(ErrorNumber::PathFileAccess);
    }

    void notSaved_keepsTheFrame()
    {
        QFETCH(QByteArray, step);
        QFETCH(int, number);
        ProgramWithSixFields program(threeReports);
        const std::string before = program.folder.Read("Rpt.xml");
        ShowBuilder(program, [&](QDialog& builder) {
            Choose(builder, "cboSaved", 1);
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Mine");
            program.operations.Fail(step.toStdString(), static_cast<ErrorNumber>(number));
            program.reports.Expect("cSQL", "ReportUpdate", static_cast<ErrorNumber>(number));
            Click(builder, "cmdSavedOK");
            QVERIFY(IsFrameOpen(builder));
            QCOMPARE(BoxText(builder, "txtSaved"), "Mine");
            QVERIFY(IsEnabled(builder, "cmdSavedOK"));
            QVERIFY(IsEnabled(builder, "cmdSavedCancel"));
            QCOMPARE(program.folder.Read("Rpt.xml"), before);
            Click(builder, "cmdSavedOK");
            QVERIFY(!IsFrameOpen(builder));
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Mine|All");
        });
        QCOMPARE(StoredReport(program, 1), "2/Mine/EndTime,EndDate,LocNo/4,2,5");
    }

    void notSaved_new_savedAgain_isOneReport()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "cmdSave");
            Type(builder, "Mine");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "ReportUpdate", ErrorNumber::DiskFull);
            Click(builder, "cmdSavedOK");
            Click(builder, "cmdSavedOK");
            QCOMPARE(Choices(builder, "cboSaved"), "Mine");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 1U);
    }

    void notSaved_cancelled_leavesTheWindowUsable()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "Mine");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "ReportUpdate", ErrorNumber::DiskFull);
            Click(builder, "cmdSavedOK");
            Click(builder, "cmdSavedCancel");
            QVERIFY(!IsFrameOpen(builder));
            QCOMPARE(FieldNumbers(builder), "2,4,6 -> 3,1,5");
            QVERIFY(IsEnabled(builder, "cmdPreview"));
            QVERIFY(IsEnabled(builder, "cmdSave"));
            QCOMPARE(UnsavedFiles(program.sql), std::vector<std::string>{"Rpt.xml"});
        });
    }

    void template_missing_keepsTheFrame()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("RptBlank.xml", "<data/>");
        program.Start();
        const std::string before = program.folder.Read("Rpt.xml");
        program.reports.Expect("cSQL", "ReportGet", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "Mine");
            Click(builder, "cmdSavedOK");
            QVERIFY(IsFrameOpen(builder));
            QCOMPARE(BoxText(builder, "txtSaved"), "Mine");
            Click(builder, "cmdSavedCancel");
            QVERIFY(!IsFrameOpen(builder));
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), before);
    }

    void template_withTooFewValues_isReported()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("RptBlank.xml", "<data><report><RptNo>0</RptNo><RptName/></report></data>");
        program.Start();
        const std::string before = program.folder.Read("Rpt.xml");
        program.reports.Expect("fRptLog", "cmdSavedOK_Click", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "Mine");
            Click(builder, "cmdSavedOK");
            QVERIFY(IsFrameOpen(builder));
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), before);
    }

    void reportFileDamaged_nothingIsWritten()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("Rpt.xml", "<data>");
        program.Start();
        program.reports.Expect("cSQL", "ReportList", ErrorNumber::ObjectNotSet);
        program.reports.Expect("cSQL", "ReportUpdate", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            QVERIFY(IsTicked(builder, "chkNew"));
            Type(builder, "Mine");
            Click(builder, "cmdSavedOK");
            QVERIFY(IsFrameOpen(builder));
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), "<data>");
    }

    void selectedReport_isGone_keepsTheFrame()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [&](QDialog& builder) {
            Choose(builder, "cboSaved", 1);
            program.sql.ReportDelete(2);
            OpenFrame(builder);
            program.reports.Expect("cSQL", "ReportGet", ErrorNumber::ObjectNotSet);
            Click(builder, "cmdSavedOK");
            QVERIFY(IsFrameOpen(builder));
            Click(builder, "chkNew");
            Click(builder, "cmdSavedOK");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|All|Ends");
        });
    }

    void fieldFileWithAGap_savesTheFieldAtThePosition()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[2], sixFields[3]}); // numbers 1, 3, 4
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(FieldNumbers(builder), "4 -> 1,3");
            SaveNew(builder, "Shifted");
        });
        QCOMPARE(StoredReport(program, 0),
                 "1/Shifted/EndTime,StartDate/3,1"); // field 3 is the third in the file
    }

    void fieldFileWithAGap_fieldBeyondTheEnd_isReported()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[2]}); // numbers 1, 3
        program.Start();
        const std::string before = program.folder.Read("Rpt.xml");
        program.reports.Expect("fRptLog", "cmdSavedOK_Click", ErrorNumber::SubscriptOutOfRange);
        ShowBuilder(program, [](QDialog& builder) {
            SaveNew(builder, "Beyond");
            QVERIFY(IsFrameOpen(builder));
            Click(builder, "cmdSavedCancel");
            QCOMPARE(FieldNumbers(builder), " -> 3,1");
            QVERIFY(IsEnabled(builder, "cmdPreview"));
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), before);
    }
};

TEST_CLASS(tst_SavedReportsSaving)
#include "tst_SavedReportsSaving.moc"
