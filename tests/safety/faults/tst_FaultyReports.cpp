// The report builder and the customising window when saving fails: what was typed stays in the window.

#include "reports/BuilderTest.h"
#include "reports/fCustom.h"
#include "safety/faults/FaultyWindow.h"
#include "support/TestClass.h"

class tst_FaultyReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void savedReport_everyFault_keepsTheFrame_andStoresItOnceInTheEnd()
    {
        ProgramWithSixFields program({{"1", "Tides", "TideStart", "6"}, {"2", "Ends", "EndTime", "4"}});
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "cmdSave");
            Retype(builder, "txtSaved", "Mine");
            CheckFaultySaves(program, builder,
                             {"Rpt.xml", "ReportUpdate", "txtSaved", "cmdSavedOK",
                              [&] { return Find<QWidget>(builder, "frSaved").isVisible(); }, 3, 2, 1});
            QCOMPARE(Choices(builder, "cboSaved"), std::string("Tides|Ends|Mine"));
        });
    }

    void customised_everyFault_keepsTheField_andStoresItInTheEnd()
    {
        ProgramWithSixFields program;
        const auto steps = [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            CheckFaultySaves(program, custom,
                             {"field.xml", "FieldUpdate", "txtLabel", "cmdOK",
                              [&] { return custom.isVisible(); }, 6, 0, 3});
        };
        WhileOpen(
            "fCustom", [&] { fCustom(program.program, nullptr).exec(); }, steps);
    }
};

TEST_CLASS(tst_FaultyReports)
#include "tst_FaultyReports.moc"
