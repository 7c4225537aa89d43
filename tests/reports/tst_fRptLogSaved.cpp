// Saved reports in the report builder: choosing, saving under a name, deleting, and what goes wrong with
// them.

#include "reports/BuilderTest.h"
#include "support/TestClass.h"

#include <QFrame>

namespace
{

/// Three saved reports over the six fields.
const std::vector<Line> threeReports{
    {"1", "Tides", "TideStart,StartDate", "6,1"},
    {"2", "Ends", "EndTime,EndDate,LocNo", "4,2,5"},
    {"3", "All", "StartDate,EndDate,StartTime,EndTime,LocNo,TideStart", "1,2,3,4,5,6"}};

const Question deleteQuestion{.text = QStringLiteral("Are you sure you want to delete this custom report"),
                              .title = QStringLiteral("Remove Custom Report"),
                              .icon = Icon::Question,
                              .buttons = Buttons::YesNoCancel,
                              .byDefault = Button::No};

const char* const defaultLists = "2,4,6 -> 1,3,5";

std::string Lists(const QWidget& builder)
{
    return Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt");
}

/// A stored report: number, name, data names and field numbers with "/" between them.
std::string Stored(const TestProgram& program, std::size_t position)
{
    const auto reports = program.Stored("Rpt.xml");
    if (position >= reports.size()) {
        return "(no such report)";
    }
    const Line& report = reports[position];
    return report.at(0) + "/" + report.at(1) + "/" + report.at(2) + "/" + report.at(3);
}

bool IsFrameOpen(const QWidget& builder)
{
    return Find<QWidget>(builder, "frSaved").isVisible();
}

/// Makes the first change that there is to make, so that "Save" is enabled.
void ChangeSomething(QWidget& builder)
{
    ClickItem(builder, "lstRpt", 0);
    Click(builder, "cmdDn");
}

/// Opens the frame for saving.
void OpenFrame(QWidget& builder)
{
    if (!IsEnabled(builder, "cmdSave")) {
        ChangeSomething(builder);
    }
    Click(builder, "cmdSave");
}

/// Saves the report that is shown as a new one.
void SaveNew(QWidget& builder, const std::string& name)
{
    OpenFrame(builder);
    if (!IsTicked(builder, "chkNew")) {
        Click(builder, "chkNew");
    }
    Retype(builder, "txtSaved", name);
    Click(builder, "cmdSavedOK");
}

void Tick(const QWidget& builder)
{
    Click(builder, "chkSaved");
}

} // namespace

class tst_fRptLogSaved : public QObject
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
            QCOMPARE(Lists(builder), lists.toStdString());
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
            QCOMPARE(Lists(builder), "1,3,6 -> 4,2,5");
            Click(builder, "cmdBackAll");
            Choose(builder, "cboSaved", 1);
            QCOMPARE(Lists(builder), "1,3,6 -> 4,2,5");
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
            QCOMPARE(Lists(builder), "1,3,6 -> 4,2,5");
        });
    }

    void chosen_withoutTick_leavesTheTickAlone()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(Lists(builder), "2,3,4,5 -> 6,1");
            QCOMPARE(Disabled(builder), "");
            Tick(builder);
            QCOMPARE(Chosen(builder, "cboSaved"), "Tides");
            QCOMPARE(Lists(builder), "2,3,4,5 -> 6,1");
        });
    }

    void tick_enablesTheListOnly()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Tick(builder);
            QVERIFY(IsTicked(builder, "chkSaved"));
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QCOMPARE(Lists(builder), defaultLists);
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
            QCOMPARE(Lists(builder), defaultLists);
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
            QCOMPARE(Lists(builder), defaultLists);
        });
    }

    void chosen_withoutFields_isEmpty()
    {
        ProgramWithSixFields program({{"1", "Nothing", "", ""}});
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(Lists(builder), "1,2,3,4,5,6 -> ");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc");
            QCOMPARE(Caption(builder, "chkDesc"), "");
        });
    }

    void chosen_namingVanishedFields_losesThem()
    {
        ProgramWithSixFields program({{"1", "Old", "Gone,TideStart,Gone2,StartDate", "40,6,7,1"}});
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(Lists(builder), "2,3,4,5 -> 6,1");
        });
    }

    void chosen_namingOddNumbers_losesThem()
    {
        ProgramWithSixFields program({{"1", "Odd", "a,b,c,d,e", "x,,-1,2,0"}});
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(Lists(builder), "1,3,4,5,6 -> 2");
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
            QCOMPARE(Lists(builder), "2,4,6 -> 1,3,5,7");
            Choose(builder, "cboSaved", 2);
            QCOMPARE(Lists(builder), "7 -> 1,2,3,4,5,6");
            QCOMPARE(Items(builder, "lstAvail"), "Later");
        });
    }

    void chosen_isGone_keepsTheLists()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [&](QDialog& builder) {
            program.sql.ReportDelete(2);
            program.reports.Expect("cSQL", "ReportGet", ErrorNumber::ObjectNotSet);
            Choose(builder, "cboSaved", 1);
            QCOMPARE(Lists(builder), defaultLists);
            QVERIFY(IsEnabled(builder, "cmdDelete"));
        });
    }

    void chosen_numberTooLarge_isReported()
    {
        ProgramWithSixFields program({{"70000", "Far", "StartDate", "1"}});
        program.reports.Expect("fRptLog", "LoadCustomReport", ErrorNumber::Overflow);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 0);
            QCOMPARE(Lists(builder), defaultLists);
            QVERIFY(IsEnabled(builder, "cmdPreview"));
        });
    }

    void save_opensTheFrameOverTheWindow()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            QVERIFY(!IsFrameOpen(builder));
            OpenFrame(builder);
            QVERIFY(IsFrameOpen(builder));
            QCOMPARE(
                Disabled(builder),
                "cmdPreview chkDesc cmdSave cmdDelete cmdCustom cmdClose chkSaved cboSaved lstAvail lstRpt");
            QCOMPARE(Focused(builder), "txtSaved");
            const auto& frame = Find<QWidget>(builder, "frSaved");
            const QPoint middle = frame.mapTo(&builder, frame.rect().center());
            QWidget* there = builder.childAt(middle);
            QVERIFY(there == &frame || frame.isAncestorOf(there));
            QVERIFY(builder.rect().contains(QRect(frame.mapTo(&builder, QPoint()), frame.size())));
        });
    }

    void save_withoutSavedReports_canOnlyBeNew()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            QVERIFY(IsTicked(builder, "chkNew"));
            QVERIFY(!IsEnabled(builder, "chkNew"));
            QVERIFY(!IsEnabled(builder, "cmdSavedOK"));
            QVERIFY(IsEnabled(builder, "cmdSavedCancel"));
            QCOMPARE(BoxText(builder, "txtSaved"), "");
        });
    }

    void save_withSavedReports_isNoNewOneAtFirst()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            QVERIFY(!IsTicked(builder, "chkNew"));
            QVERIFY(IsEnabled(builder, "chkNew"));
            QCOMPARE(BoxText(builder, "txtSaved"), "");
            QVERIFY(!IsEnabled(builder, "cmdSavedOK"));
            Click(builder, "chkNew");
            Click(builder, "cmdSavedCancel");
            OpenFrame(builder);
            QVERIFY(!IsTicked(builder, "chkNew"));
        });
    }

    void save_withSelectedReport_offersItsName()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 1);
            OpenFrame(builder);
            QVERIFY(!IsTicked(builder, "chkNew"));
            QCOMPARE(BoxText(builder, "txtSaved"), "Ends");
            QVERIFY(IsEnabled(builder, "cmdSavedOK"));
        });
    }

    void save_afterTheFirstReport_canOverwrite()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            SaveNew(builder, "First");
            OpenFrame(builder);
            QVERIFY(!IsTicked(builder, "chkNew"));
            QVERIFY(IsEnabled(builder, "chkNew"));
        });
    }

    void chkNew_ticked_keepsTheName()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 1);
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Ends and more");
            Click(builder, "chkNew");
            QVERIFY(IsTicked(builder, "chkNew"));
            QCOMPARE(BoxText(builder, "txtSaved"), "Ends and more");
            QCOMPARE(Chosen(builder, "cboSaved"), "Ends");
        });
    }

    void chkNew_unticked_bringsTheNameBack()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            Choose(builder, "cboSaved", 1);
            OpenFrame(builder);
            Click(builder, "chkNew");
            Retype(builder, "txtSaved", "");
            QVERIFY(!IsEnabled(builder, "cmdSavedOK"));
            Click(builder, "chkNew");
            QCOMPARE(BoxText(builder, "txtSaved"), "Ends");
            QVERIFY(IsEnabled(builder, "cmdSavedOK"));
        });
    }

    void chkNew_unticked_withoutSelection_keepsTheName()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Click(builder, "chkNew");
            Retype(builder, "txtSaved", "Mine");
            Click(builder, "chkNew");
            QVERIFY(!IsTicked(builder, "chkNew"));
            QCOMPARE(BoxText(builder, "txtSaved"), "Mine");
        });
    }

    void description_empty_disablesOK()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            QVERIFY(!IsEnabled(builder, "cmdSavedOK"));
            Type(builder, "a");
            QVERIFY(IsEnabled(builder, "cmdSavedOK"));
            Press(builder, Qt::Key_Backspace);
            QVERIFY(!IsEnabled(builder, "cmdSavedOK"));
            Click(builder, "cmdSavedOK");
            QVERIFY(IsFrameOpen(builder));
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 0U);
    }

    void description_blank_isAName()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, " ");
            QVERIFY(IsEnabled(builder, "cmdSavedOK"));
        });
    }

    void frame_holdsTheKeyboard()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "ab");
            QCOMPARE(TabOrder(builder), "txtSaved chkNew cmdSavedOK cmdSavedCancel");
            const std::string before = Lists(builder);
            for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
                Press(builder, key, Qt::ControlModifier);
                Press(builder, key, Qt::ControlModifier | Qt::ShiftModifier);
            }
            for (const Qt::Key key :
                 {Qt::Key_F, Qt::Key_O, Qt::Key_L, Qt::Key_U, Qt::Key_S, Qt::Key_T, Qt::Key_P, Qt::Key_C}) {
                Press(builder, key, Qt::AltModifier);
                QCOMPARE(Focused(builder), "txtSaved");
            }
            QCOMPARE(Lists(builder), before);
            QVERIFY(IsFrameOpen(builder));
            QVERIFY(builder.isVisible());
        });
    }

    void frame_Enter_isOK()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "Mine");
            Press(builder, Qt::Key_Return);
            QVERIFY(!IsFrameOpen(builder));
            QVERIFY(builder.isVisible());
        });
        QCOMPARE(Stored(program, 0), "1/Mine/StartTime,StartDate,LocNo/3,1,5");
    }

    void frame_EnterWithoutName_doesNothing()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            WithoutWindow([&] { Press(builder, Qt::Key_Return); });
            QVERIFY(IsFrameOpen(builder));
            QVERIFY(builder.isVisible());
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 0U);
    }

    void frame_mnemonics_pressItsButtons()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            ChangeSomething(builder);
            PressMnemonic(builder, Qt::Key_S, "cmdSave");
            QVERIFY(IsFrameOpen(builder));
            Type(builder, "Mine");
            PressMnemonic(builder, Qt::Key_N, "chkNew");
            QVERIFY(IsTicked(builder, "chkNew"));
            Press(builder, Qt::Key_E, Qt::AltModifier);
            QCOMPARE(Focused(builder), "txtSaved");
            PressMnemonic(builder, Qt::Key_A, "cmdSavedCancel");
            QVERIFY(!IsFrameOpen(builder));
            PressMnemonic(builder, Qt::Key_S, "cmdSave");
            Type(builder, "Mine");
            PressMnemonic(builder, Qt::Key_K, "cmdSavedOK");
            QVERIFY(!IsFrameOpen(builder));
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All|Mine");
        });
    }

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
            QCOMPARE(Lists(builder), "4,5,6 -> 3,1,2");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 4U);
        QCOMPARE(Stored(program, 3), "4/Mine/StartTime,StartDate,EndDate/3,1,2");
        QCOMPARE(Stored(program, 0), "1/Tides/TideStart,StartDate/6,1");
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
        QCOMPARE(Stored(program, 3), "4/Mine/StartTime,StartDate,LocNo/3,1,5");
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
        QCOMPARE(Stored(program, 1), "2/Ends/EndTime,LocNo,EndDate/4,5,2");
        QCOMPARE(Stored(program, 2), "3/All/StartDate,EndDate,StartTime,EndTime,LocNo,TideStart/1,2,3,4,5,6");
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
        QCOMPARE(Stored(program, 0), "1/Water/TideStart,StartDate/6,1");
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
        QCOMPARE(Stored(program, 0), "1/Tides/TideStart,StartDate/6,1");
        QCOMPARE(Stored(program, 3), "4/Tides/TideStart,StartDate/6,1");
    }

    void saved_emptyReport_storesEmptyTexts()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdBackAll");
            SaveNew(builder, "Nothing");
        });
        QCOMPARE(Stored(program, 0), "1/Nothing//");
    }

    void saved_keepsWhatElseTheRecordHolds()
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
        QCOMPARE(Stored(program, 0), "1/" + typed + "/StartTime,StartDate,LocNo/3,1,5");
        program.sql.Init(); // as the next start reads it
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
            QCOMPARE(Lists(builder), defaultLists);
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

    void cancelled_storesNothing_data()
    {
        QTest::addColumn<QByteArray>("by");
        for (const char* by : {"button", "Esc", "close box"}) {
            QTest::newRow(by) << QByteArray(by);
        }
    }

    void cancelled_storesNothing()
    {
        QFETCH(QByteArray, by);
        ProgramWithSixFields program(threeReports);
        const std::string before = program.folder.Read("Rpt.xml");
        ShowBuilder(program, [&](QDialog& builder) {
            Tick(builder);
            Choose(builder, "cboSaved", 1);
            ChangeSomething(builder);
            OpenFrame(builder);
            Retype(builder, "txtSaved", "Other");
            if (by == "button") {
                Click(builder, "cmdSavedCancel");
            } else if (by == "Esc") {
                Press(builder, Qt::Key_Escape);
            } else {
                builder.close();
            }
            QVERIFY(!IsFrameOpen(builder));
            QVERIFY(builder.isVisible());
            QCOMPARE(Disabled(builder), "");
            QCOMPARE(Lists(builder), "1,3,6 -> 2,4,5"); // the unsaved order is still there
            QVERIFY(IsTicked(builder, "chkSaved"));
            QCOMPARE(Chosen(builder, "cboSaved"), "Ends");
            Press(builder, Qt::Key_Escape); // closes the window now
            QVERIFY(!builder.isVisible());
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), before);
    }

    void cancelled_opensEmptyAgain()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "Mine");
            Click(builder, "cmdSavedCancel");
            OpenFrame(builder);
            QCOMPARE(BoxText(builder, "txtSaved"), "");
            QVERIFY(!IsEnabled(builder, "cmdSavedOK"));
        });
    }

    void notSaved_keepsTheFrame_data()
    {
        QTest::addColumn<QByteArray>("step");
        QTest::addColumn<int>("number");
        QTest::newRow("full disk") << QByteArray("write") << int(ErrorNumber::DiskFull);
        QTest::newRow("no room for the file") << QByteArray("create") << int(ErrorNumber::PathFileAccess);
        QTest::newRow("file held by another") << QByteArray("exchange") << int(ErrorNumber::PermissionDenied);
        QTest::newRow("not synchronised") << QByteArray("sync") << int(ErrorNumber::DeviceInputOutput);
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
        QCOMPARE(Stored(program, 1), "2/Mine/EndTime,EndDate,LocNo/4,2,5");
    }

    void notSaved_new_savedAgain_isOneReport()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "cmdSave");
            Type(builder, "Mine");
            program.operations.Fail("write", ErrorNumber::DiskFull);
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
            program.operations.Fail("write", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "ReportUpdate", ErrorNumber::DiskFull);
            Click(builder, "cmdSavedOK");
            Click(builder, "cmdSavedCancel");
            QVERIFY(!IsFrameOpen(builder));
            QCOMPARE(Lists(builder), "2,4,6 -> 3,1,5");
            QVERIFY(IsEnabled(builder, "cmdPreview"));
            QVERIFY(IsEnabled(builder, "cmdSave"));
            QCOMPARE(program.sql.UnsavedFiles(), std::vector<std::string>{"Rpt.xml"});
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
            QCOMPARE(Lists(builder), "4 -> 1,3");
            SaveNew(builder, "Shifted");
        });
        QCOMPARE(Stored(program, 0), "1/Shifted/EndTime,StartDate/3,1"); // field 3 is the third of the file
    }

    void fieldFileWithAGap_fieldBehindTheEnd_isReported()
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
            QCOMPARE(Lists(builder), " -> 3,1");
            QVERIFY(IsEnabled(builder, "cmdPreview"));
        });
        QCOMPARE(program.folder.Read("Rpt.xml"), before);
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
            QCOMPARE(Lists(builder), defaultLists);
            QCOMPARE(Disabled(builder), "cmdDelete");
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 2U);
        QCOMPARE(Stored(program, 1), "3/All/StartDate,EndDate,StartTime,EndTime,LocNo,TideStart/1,2,3,4,5,6");
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
            QCOMPARE(Lists(builder), defaultLists);
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
            QCOMPARE(Lists(builder), defaultLists);
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
            Press(builder, Qt::Key_D, Qt::AltModifier); // disabled yet
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
            program.operations.Fail("sync", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "ReportDelete", ErrorNumber::DiskFull);
            Click(builder, "cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|All");
            QCOMPARE(Chosen(builder, "cboSaved"), "Ends");
            QVERIFY(IsTicked(builder, "chkSaved"));
            QCOMPARE(Lists(builder), "1,3,6 -> 2,4,5");
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
            QCOMPARE(Lists(builder), lists.toStdString());
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

TEST_CLASS(tst_fRptLogSaved)
#include "tst_fRptLogSaved.moc"
