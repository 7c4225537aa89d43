// Saved reports in the report builder: selecting and deleting them, and reloading after fields were
// customised.

#include "support/TestClass.h"
#include "ui/reports/SavedReportTest.h"

using namespace Tarno;

namespace
{

const Question deleteQuestion{.text = QStringLiteral("Are you sure you want to delete this custom report"),
                              .title = QStringLiteral("Remove Custom Report"),
                              .icon = Icon::Question,
                              .buttons = Buttons::YesNoCancel,
                              .byDefault = Button::No};

} // namespace

class tst_SavedReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void chosen_isLoadedInItsOrder_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("lists");
        QTest::addColumn<QByteArray>("caption");
        QTest::newRow("first") << 0 << QByteArray("2,3,4,5 -> 6,1") << QByteArray("Sort by Tide Desc");
        QTest::newRow("second") << 1 << QByteArray("1,3,6 -> 4,2,5") << QByteArray("Sort by End Desc");
        QTest::newRow("third") << 2 << QByteArray(" -> 1,2,3,4,5,6") << QByteArray("Sort by Date Desc");
    }

    void chosen_isLoadedInItsOrder()
    {
        QFETCH(int, row);
        QFETCH(QByteArray, lists);
        QFETCH(QByteArray, caption);
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [&](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", row);
            QCOMPARE(FieldNumbers(builder), lists.toStdString());
            QCOMPARE(Caption(builder, "chkDesc"), caption.toStdString());
            QCOMPARE(Disabled(builder), "");
            QCOMPARE(Chosen(builder, "cboSaved"), threeReports[std::size_t(row)][1]);
        });
    }

    void chosen_again_replacesUnsavedMoves()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            Click(builder, "cmdMoveAll");
            Choose(builder, "cboSaved", 1);
            QCOMPARE(FieldNumbers(builder), "1,3,6 -> 4,2,5");
            Click(builder, "cmdBackAll");
            Choose(builder, "cboSaved", 1);
            QCOMPARE(FieldNumbers(builder), "1,3,6 -> 4,2,5");
        });
    }

    void chosen_byKeyboard_isLoaded()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Find<QWidget>(builder, "chkSaved").setFocus();
            Press(builder, Qt::Key_Space);
            QVERIFY(IsTicked(builder, "chkSaved"));
            Press(builder, Qt::Key_Tab);
            Press(builder, Qt::Key_Down);
            Press(builder, Qt::Key_Down);
            QCOMPARE(Chosen(builder, "cboSaved"), "Ends");
            QCOMPARE(FieldNumbers(builder), "1,3,6 -> 4,2,5");
        });
    }

    void chosen_withoutTick_leavesTheTickAlone()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(FieldNumbers(builder), "2,3,4,5 -> 6,1");
            QCOMPARE(Disabled(builder), "");
            Tick(builder);
            QCOMPARE(Chosen(builder, "cboSaved"), "Tides");
            QCOMPARE(FieldNumbers(builder), "2,3,4,5 -> 6,1");
        });
    }

    void tick_enablesTheListOnly()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Tick(builder);
            QVERIFY(IsTicked(builder, "chkSaved"));
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QCOMPARE(Disabled(builder), "cmdDelete");
        });
    }

    void untick_showsTheDefaultReport()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", 1);
            Tick(builder);
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QCOMPARE(Caption(builder, "chkDesc"), "Sort by Date Desc");
            QCOMPARE(Disabled(builder), "cmdDelete cboSaved");
            Tick(builder);
            QCOMPARE(Disabled(builder), "cmdDelete");
        });
    }

    void untick_byKeyboard_disablesTheList()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Press(builder, Qt::Key_U, Qt::AltModifier);
            Await([&] { return IsTicked(builder, "chkSaved"); }, "the mnemonic ticks nothing");
            Click(builder, "cmdMoveAll");
            PressMnemonic(builder, Qt::Key_U, "chkSaved");
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QVERIFY(!IsEnabled(builder, "cboSaved"));
            QCOMPARE(FieldNumbers(builder), defaultLists);
        });
    }

    void chosen_withoutFields_isEmpty()
    {
        ProgramWithSixFields program({{"1", "Nothing", "", ""}});
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(FieldNumbers(builder), "1,2,3,4,5,6 -> ");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc");
            QCOMPARE(Caption(builder, "chkDesc"), "");
        });
    }

    void chosen_namingUnknownFields_skipsThem_data()
    {
        QTest::addColumn<QByteArray>("names");
        QTest::addColumn<QByteArray>("numbers");
        QTest::addColumn<QByteArray>("lists");
        QTest::newRow("no longer in the file") << QByteArray("Gone,TideStart,Gone2,StartDate")
                                               << QByteArray("40,6,7,1") << QByteArray("2,3,4,5 -> 6,1");
        QTest::newRow("not numbers") << QByteArray("a,b,c,d,e") << QByteArray("x,,-1,2,0")
                                     << QByteArray("1,3,4,5,6 -> 2");
    }

    void chosen_namingUnknownFields_skipsThem()
    {
        QFETCH(QByteArray, names);
        QFETCH(QByteArray, numbers);
        QFETCH(QByteArray, lists);
        ProgramWithSixFields program({{"1", "Old", names.toStdString(), numbers.toStdString()}});
        ShowBuilder(program, [&](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(FieldNumbers(builder), lists.toStdString());
        });
    }

    void chosen_afterFieldsWereAdded_offersThem()
    {
        TestProgram program;
        std::vector<Line> fields = sixFields;
        fields.push_back({"7", "TideEnd", "Later", "Later", "20", "8", "0", "1"});
        WriteFields(program, fields);
        WriteReports(program, threeReports);
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(FieldNumbers(builder), "2,4,6 -> 1,3,5,7");
            Choose(builder, "cboSaved", 2);
            QCOMPARE(FieldNumbers(builder), "7 -> 1,2,3,4,5,6");
            QCOMPARE(Items(builder, "lstAvail"), "Later");
        });
    }

    void chosen_deletedReport_isReportedAndKeepsTheLists()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [&](QDialog& builder) {
            program.sql.ReportDelete(2);
            program.reports.Expect("cSQL", "ReportGet", ErrorNumber::ObjectNotSet);
            Choose(builder, "cboSaved", 1);
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QVERIFY(IsEnabled(builder, "cmdDelete"));
        });
    }

    void chosen_numberTooLarge_isReported()
    {
        ProgramWithSixFields program({{"70000", "Far", "StartDate", "1"}});
        program.reports.Expect("fRptLog", "LoadCustomReport", ErrorNumber::Overflow);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QVERIFY(IsEnabled(builder, "cmdPreview"));
        });
    }

    void chosen_withTooFewValues_hasNoFields()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("Rpt.xml",
                             "<data><report><RptNo>1</RptNo><RptName>Short</RptName></report></data>");
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(FieldNumbers(builder), "1,2,3,4,5,6 -> ");
            QVERIFY(!IsEnabled(builder, "cmdPreview"));
        });
    }

    void deleted_confirmed_isGone()
    {
        ProgramWithSixFields program(threeReports);
        program.messages.Expect(deleteQuestion, Button::Yes);
        ShowBuilder(program, [](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", 1);
            Click(builder, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|All");
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QCOMPARE(Disabled(builder), "cmdDelete");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 2U);
        QCOMPARE(StoredReport(program, 1),
                 "3/All/StartDate,EndDate,StartTime,EndTime,LocNo,TideStart/1,2,3,4,5,6");
    }

    void deleted_declined_reloadsAll_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("No") << int(Button::No);
        QTest::newRow("Cancel") << int(Button::Cancel);
    }

    void deleted_declined_reloadsAll()
    {
        QFETCH(int, answer);
        ProgramWithSixFields program(threeReports);
        const std::string before = program.folder.Read("Rpt.xml");
        program.messages.Expect(deleteQuestion, static_cast<Button>(answer));
        ShowBuilder(program, [](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", 1);
            Click(builder, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All");
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QCOMPARE(Disabled(builder), "cmdDelete");
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), before);
    }

    void deleted_theLast_leavesNoChoice()
    {
        ProgramWithSixFields program({{"1", "Only", "TideStart", "6"}});
        program.messages.Expect(deleteQuestion, Button::Yes);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            Click(builder, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "");
            QCOMPARE(FieldNumbers(builder), defaultLists);
            QCOMPARE(Disabled(builder), "cmdDelete chkSaved cboSaved");
            OpenFrame(builder);
            QVERIFY(IsTicked(builder, "chkNew"));
            QVERIFY(!IsEnabled(builder, "chkNew"));
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 0U);
    }

    void deleted_byKeyboard_isGone()
    {
        ProgramWithSixFields program(threeReports);
        program.messages.Expect(deleteQuestion, Button::Yes);
        ShowBuilder(program, [](QDialog& builder) {
            Press(builder, Qt::Key_D, Qt::AltModifier); // still disabled
            Find<QWidget>(builder, "cboSaved").setFocus();
            Press(builder, Qt::Key_Down);
            PressMnemonic(builder, Qt::Key_D, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Ends|All");
        });
    }

    void notDeleted_leavesTheWindowAsItIs()
    {
        ProgramWithSixFields program(threeReports);
        const std::string before = program.folder.Read("Rpt.xml");
        program.messages.Expect(deleteQuestion, Button::Yes);
        program.messages.Expect(deleteQuestion, Button::Yes);
        ShowBuilder(program, [&](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", 1);
            ChangeSomething(builder);
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "ReportDelete", ErrorNumber::DiskFull);
            Click(builder, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All");
            QCOMPARE(Chosen(builder, "cboSaved"), "Ends");
            QVERIFY(IsTicked(builder, "chkSaved"));
            QCOMPARE(FieldNumbers(builder), "1,3,6 -> 2,4,5");
            QCOMPARE(Disabled(builder), "");
            QCOMPARE(program.folder.Read("Rpt.xml"), before);
            Click(builder, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|All");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 2U);
    }

    void customised_reloadsTheReport_data()
    {
        QTest::addColumn<bool>("tick");
        QTest::addColumn<int>("choose");
        QTest::addColumn<QByteArray>("lists");
        QTest::newRow("no saved report") << false << -1 << QByteArray(defaultLists);
        QTest::newRow("tick alone") << true << -1 << QByteArray(defaultLists);
        QTest::newRow("chosen without the tick") << false << 1 << QByteArray(defaultLists);
        QTest::newRow("chosen and ticked") << true << 1 << QByteArray("1,3,6 -> 4,2,5");
    }

    void customised_reloadsTheReport()
    {
        QFETCH(bool, tick);
        QFETCH(int, choose);
        QFETCH(QByteArray, lists);
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [&](QDialog& builder) {
            if (tick) {
                Tick(builder);
            }
            if (choose >= 0) {
                Choose(builder, "cboSaved", choose);
            }
            Click(builder, "cmdBackAll"); // an unsaved change, which is replaced
            const std::string chosen = Chosen(builder, "cboSaved");
            WhileOpen(
                "fCustom", [&] { Click(builder, "cmdCustom"); },
                [](QDialog& custom) { Click(custom, "cmdOK"); });
            QCOMPARE(FieldNumbers(builder), lists.toStdString());
            QCOMPARE(Chosen(builder, "cboSaved"), chosen);
            QCOMPARE(IsTicked(builder, "chkSaved"), tick);
            QVERIFY(IsEnabled(builder, "cmdPreview"));
            QVERIFY(IsEnabled(builder, "chkDesc"));
            QCOMPARE(IsEnabled(builder, "cmdDelete"), choose >= 0);
        });
    }

    void customised_showsChangedDescriptions()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            WhileOpen(
                "fCustom", [&] { PressShortcut(builder, Qt::Key_T, Qt::AltModifier, "cmdCustom"); },
                [](QDialog& custom) {
                    Retype(custom, "txtDesc", "Day & date");
                    ClickItem(custom, "lstField", 1);
                    Retype(custom, "txtDesc", "Finish");
                    Click(custom, "cmdOK");
                });
            QCOMPARE(Items(builder, "lstRpt"), "Day & date|Time|Place");
            QCOMPARE(Items(builder, "lstAvail"), "Finish|End|Tide");
            QCOMPARE(Caption(builder, "chkDesc"), "Sort by Day & date Desc");
            QVERIFY(IsEnabled(builder, "cmdSave"));
        });
    }
};

TEST_CLASS(tst_SavedReports)
#include "tst_SavedReports.moc"
