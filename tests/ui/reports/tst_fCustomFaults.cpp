// Customising the fields of the log report when a save fails, and with field files that are damaged, empty or
// incomplete.

#include "support/TestClass.h"
#include "support/UnsavedFiles.h"
#include "ui/reports/CustomTest.h"

using namespace Tarno;

class tst_fCustomFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void saveFailed_selectingAnotherField_keepsTheSelection()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [&](QDialog& custom) {
            Choose(custom, 1);
            Retype(custom, "txtLabel", "Finish");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::DiskFull);
            Choose(custom, 4);
            QTRY_COMPARE_WITH_TIMEOUT(SelectedRow(custom, "lstField"), 1, awaitTimeout);
            QCOMPARE(Boxes(custom), "Until/Finish/20/8");
            QCOMPARE(program.folder.Read("field.xml"), before);
            Choose(custom, 4);
            QCOMPARE(SelectedRow(custom, "lstField"), 4);
            QCOMPARE(Boxes(custom), "Place/Where/40/8");
            QCOMPARE(StoredField(program, 1), "2/EndDate/Until/Finish/20/8/0/0");
            Press(custom, Qt::Key_Escape);
        });
    }

    void notStored_ok_keepsTheWindow()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            program.operations.Fail("replace", ErrorNumber::PathFileAccess);
            program.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::PathFileAccess);
            Ok(custom);
            QVERIFY(custom.isVisible());
            QCOMPARE(Boxes(custom), "Date/Day/20/8");
            QCOMPARE(program.folder.Read("field.xml"), before);
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(StoredField(program, 0), "1/StartDate/Date/Day/20/8/0/1");
    }

    void notStored_closed_leavesTheFile()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::DiskFull);
            Ok(custom);
            Press(custom, Qt::Key_Escape);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(program.folder.Read("field.xml"), before);
        QCOMPARE(UnsavedFiles(program.sql), std::vector<std::string>{"field.xml"});
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

    void gapInFieldNumbers_showsTheFieldAtThePosition()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], sixFields[2], sixFields[3]}); // numbers 1, 3, 4
        program.Start();
        ShowCustom(program, [](QDialog& custom) {
            Choose(custom, 1); // field 3, which is the third in the file
            QCOMPARE(Boxes(custom), "End/Stop/20/8");
            Retype(custom, "txtLabel", "Finish");
            Ok(custom);
        });
        QCOMPARE(StoredField(program, 1), "3/StartTime/Time/Start/20/8/0/1");
        QCOMPARE(StoredField(program, 2), "4/EndTime/End/Finish/20/8/0/0");
    }

    void gapInFieldNumbers_fieldBeyondTheEnd_isReported_data()
    {
        QTest::addColumn<bool>("edited");
        QTest::newRow("unchanged") << false;
        QTest::newRow("edited") << true;
    }

    void gapInFieldNumbers_fieldBeyondTheEnd_isReported()
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
            QTRY_COMPARE_WITH_TIMEOUT(SelectedRow(custom, "lstField"), 0, awaitTimeout);
            QCOMPARE(Boxes(custom), edited ? "Date/Day/20/8" : "Date/From/20/8");
            Choose(custom, 1);
            QCOMPARE(Boxes(custom), "Until/To/20/8");
            Ok(custom);
        });
        QCOMPARE(StoredField(program, 0),
                 edited ? "1/StartDate/Date/Day/20/8/0/1" : "1/StartDate/Date/From/20/8/0/1");
        QCOMPARE(StoredField(program, 2), "4/EndTime/End/Stop/20/8/0/0");
    }

    void gapInFieldNumbers_firstFieldBeyondTheEnd_isReported()
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

    void gapInFieldNumbers_typedWithoutAField_isNotStored()
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

    void invalidFieldNumber_isReported()
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
            QTRY_COMPARE_WITH_TIMEOUT(SelectedRow(custom, "lstField"), 0, awaitTimeout);
            Ok(custom);
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(Saves(program), 0);
    }
};

TEST_CLASS(tst_fCustomFaults)
#include "tst_fCustomFaults.moc"
