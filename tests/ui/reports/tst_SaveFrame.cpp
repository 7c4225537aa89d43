// The frame in which the user names a report: opening, filling in and cancelling it.

#include "support/TestClass.h"
#include "ui/reports/SaveFrame.h"
#include "ui/reports/SavedReportTest.h"

#include <QtTest/QSignalSpy>

using namespace Tarno;

class tst_SaveFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opened_controlsDependOnTheSavedReports_data()
    {
        QTest::addColumn<bool>("isSelected");
        QTest::addColumn<bool>("anySaved");
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<QString>("description");
        QTest::newRow("nothing saved") << false << false << true << QString();
        QTest::newRow("none selected") << false << true << false << QString();
        QTest::newRow("selected") << true << true << false << QStringLiteral("Ends");
    }

    void opened_controlsDependOnTheSavedReports()
    {
        QFETCH(bool, isSelected);
        QFETCH(bool, anySaved);
        QFETCH(bool, isNew);
        QFETCH(QString, description);
        QDialog window;
        SaveFrame frame(&window);
        window.show();
        AwaitActive(window);
        QVERIFY(!frame.isVisible());
        frame.Open(isSelected ? std::optional(QStringLiteral("Ends")) : std::nullopt, anySaved);
        QVERIFY(frame.isVisible());
        QCOMPARE(frame.IsNew(), isNew);
        QCOMPARE(IsEnabled(frame, "chkNew"), anySaved);
        QCOMPARE(frame.Description(), description);
        QCOMPARE(IsEnabled(frame, "cmdSavedOK"), isSelected);
    }

    void answered_emitsItsSignal()
    {
        QDialog window;
        SaveFrame frame(&window);
        window.show();
        AwaitActive(window);
        const QSignalSpy confirmed(&frame, &SaveFrame::Confirmed);
        const QSignalSpy cancelled(&frame, &SaveFrame::Cancelled);
        frame.Open(std::nullopt, false);
        Type(window, "Mine");
        QCOMPARE(frame.Description(), QStringLiteral("Mine"));
        frame.Cancel();
        QCOMPARE(cancelled.count(), 1);
        QCOMPARE(confirmed.count(), 0);
        QTest::mouseClick(&Find<QWidget>(frame, "cmdSavedOK"), Qt::LeftButton);
        QCOMPARE(confirmed.count(), 1);
        QVERIFY(frame.isVisible()); // its owner closes it
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

    void save_withSavedReports_isNotNewAtFirst()
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

    void frame_keepsTheFocus()
    {
        ProgramWithSixFields program(threeReports);
        ShowBuilder(program, [](QDialog& builder) {
            OpenFrame(builder);
            Type(builder, "ab");
            QCOMPARE(TabOrder(builder), "txtSaved chkNew cmdSavedOK cmdSavedCancel");
            const std::string before = FieldNumbers(builder);
            for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
                Press(builder, key, Qt::ControlModifier);
                Press(builder, key, Qt::ControlModifier | Qt::ShiftModifier);
            }
            for (const Qt::Key key :
                 {Qt::Key_F, Qt::Key_O, Qt::Key_L, Qt::Key_U, Qt::Key_S, Qt::Key_T, Qt::Key_P, Qt::Key_C}) {
                Press(builder, key, Qt::AltModifier);
                QCOMPARE(Focused(builder), "txtSaved");
            }
            QCOMPARE(FieldNumbers(builder), before);
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
        QCOMPARE(StoredReport(program, 0), "1/Mine/StartTime,StartDate,LocNo/3,1,5");
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
            QCOMPARE(FieldNumbers(builder), "1,3,6 -> 2,4,5"); // the unsaved order is still there
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
};

TEST_CLASS(tst_SaveFrame)
#include "tst_SaveFrame.moc"
