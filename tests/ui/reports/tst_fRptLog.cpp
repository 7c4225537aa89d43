// The window of the report builder: what it shows when it opens, its locations, how it closes, and damaged
// data files.

#include "support/TestClass.h"
#include "ui/reports/BuilderTest.h"

#include <algorithm>
#include <map>

using namespace Tarno;

class tst_fRptLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void captions_areAsExpected()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(builder.windowTitle(), QStringLiteral("Log Reporting"));
            const std::map<const char*, std::string> captions{
                {"lblAvail", "Select the fields for the report:"},
                {"lblRpt", "Order of fields on report:"},
                {"lblLocation", "Location:"},
                {"chkSaved", "Use a Saved Report ==>"},
                {"cmdSave", "Save"},
                {"cmdDelete", "Delete"},
                {"cmdCustom", "Customise"},
                {"cmdPreview", "Preview"},
                {"cmdClose", "Close"},
                {"lblSavedCaption", "Save Custom Report"},
                {"lblSaved", "Description"},
                {"chkNew", "Save this set of fields as a new custom report"},
                {"cmdSavedOK", "OK"},
                {"cmdSavedCancel", "Cancel"}};
            for (const auto& [name, caption] : captions) {
                QCOMPARE(Caption(builder, name), caption);
            }
        });
    }

    void toolTips_areAsExpected()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            const std::map<const char*, QString> tips{
                {"lstRpt", QStringLiteral("Report will sort by the first field in the list")},
                {"cmdUp", QStringLiteral("Move selected field up")},
                {"cmdDn", QStringLiteral("Move selected field down")},
                {"cmdSave", QStringLiteral("Save custom report")},
                {"cmdCustom", QStringLiteral("Customise report components")}};
            for (const auto& [name, tip] : tips) {
                QCOMPARE(Find<QWidget>(builder, name).toolTip(), tip);
            }
        });
    }

    void mnemonics_areUnambiguous()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            const std::string letters = Mnemonics(builder);
            QVERIFY(letters.size() >= 12);
            QVERIFY2(std::adjacent_find(letters.begin(), letters.end()) == letters.end(), letters.c_str());
        });
    }

    void buttonsWithPictures_haveOneAndAName()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            for (const char* name : {"cmdMove", "cmdMoveAll", "cmdBack", "cmdBackAll", "cmdUp", "cmdDn"}) {
                const auto& button = Find<QAbstractButton>(builder, name);
                QVERIFY2(!button.icon().isNull(), name);
                QVERIFY2(!button.accessibleName().isEmpty(), name);
            }
        });
    }

    void opened_showsTheDefaultReport()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Numbers(builder, "lstAvail"), "2,4,6");
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,5");
            QCOMPARE(SelectedRow(builder, "lstAvail"), -1);
            QCOMPARE(SelectedRow(builder, "lstRpt"), -1);
            QCOMPARE(SortCaption(builder), "Sort by Date Desc");
            QVERIFY(!IsTicked(builder, "chkDesc"));
            QVERIFY(!Find<QWidget>(builder, "frSaved").isVisible());
        });
    }

    void opened_shippedFields_areSplitByTheirFlag()
    {
        TestProgram program;
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Numbers(builder, "lstRpt"), "1,3,4,5,6,7,16,17,25,27,28");
            QCOMPARE(List(builder, "lstAvail").count(), 25);
            QCOMPARE(SortCaption(builder), "Sort by Date the trip started Desc");
        });
    }

    void opened_field_isInTheListForItsFlag_data()
    {
        QTest::addColumn<QByteArray>("flag");
        QTest::addColumn<bool>("onReport");
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("2") << QByteArray("2") << true;
        QTest::newRow("empty") << QByteArray("") << true;
        QTest::newRow("word") << QByteArray("no") << true;
        QTest::newRow("two digits") << QByteArray("00") << true;
        QTest::newRow("with a blank") << QByteArray("0 ") << true;
    }

    void opened_field_isInTheListForItsFlag()
    {
        QFETCH(QByteArray, flag);
        QFETCH(bool, onReport);
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "Date", "From", "20", "8", "0", flag.toStdString()}});
        program.Start();
        ShowBuilder(program,
                    [&](QDialog& builder) { QCOMPARE(Lists(builder), onReport ? " -> Date" : "Date -> "); });
    }

    void opened_withoutSavedReports_enablesTheRest()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete chkSaved cboSaved");
            QCOMPARE(Choices(builder, "cboSaved"), "");
            QVERIFY(!IsTicked(builder, "chkSaved"));
        });
    }

    void opened_withSavedReports_offersThem()
    {
        ProgramWithSixFields program({{"1", "Zebra", "EndTime", "4"}, {"4", "Apple", "EndDate", "2"}});
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete");
            QCOMPARE(Choices(builder, "cboSaved"), "Zebra|Apple");
            const auto& saved = Find<QComboBox>(builder, "cboSaved");
            QCOMPARE(saved.itemData(0).toInt(), 1);
            QCOMPARE(saved.itemData(1).toInt(), 4);
            QCOMPARE(Chosen(builder, "cboSaved"), "(none)");
            QVERIFY(!IsTicked(builder, "chkSaved"));
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
        });
    }

    void opened_withoutFields_offersNoReport()
    {
        TestProgram program;
        WriteFields(program, {});
        program.Start();
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), " -> ");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc cmdSave cmdDelete chkSaved cboSaved");
            QCOMPARE(SortCaption(builder), "");
        });
    }

    void locations_areInFileOrderAfterAll()
    {
        ProgramWithSixFields program;
        program.AddLocation("Zeehan");
        program.AddLocation("Rock & Reef");
        program.AddLocation("Victor Harbor~CL~Granite Island");
        program.AddLocation("albany");
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Choices(builder, "cboLocation"),
                     "All Locations|Zeehan|Rock & Reef|Victor Harbor Granite Island|albany");
            QCOMPARE(Chosen(builder, "cboLocation"), "All Locations");
            const auto& box = Find<QComboBox>(builder, "cboLocation");
            for (int row = 0; row < box.count(); ++row) {
                QCOMPARE(box.itemData(row).toInt(), row);
            }
            Choose(builder, "cboLocation", 2);
            QCOMPARE(Chosen(builder, "cboLocation"), "Rock & Reef");
            QVERIFY(!IsEnabled(builder, "cmdSave"));
        });
    }

    void locations_withoutAny_isAllOnly()
    {
        ProgramWithSixFields program;
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
            QCOMPARE(Chosen(builder, "cboLocation"), "All Locations");
        });
    }

    void tab_goesThroughTheWindow()
    {
        ProgramWithSixFields program({{"1", "One", "EndTime", "4"}});
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(TabOrder(builder),
                     "lstAvail cmdMove cmdMoveAll cmdBack cmdBackAll lstRpt cmdUp cmdDn chkDesc cboLocation "
                     "chkSaved cboSaved cmdCustom cmdPreview cmdClose");
        });
    }

    void window_closes_data()
    {
        QTest::addColumn<QByteArray>("by");
        for (const char* by : {"button", "mnemonic", "Esc", "close box"}) {
            QTest::newRow(by) << QByteArray(by);
        }
    }

    void window_closes()
    {
        QFETCH(QByteArray, by);
        ProgramWithSixFields program;
        WhileOpen(
            "fRptLog", [&] { fRptLog(program.program, nullptr).exec(); },
            [&](QDialog& builder) {
                ClickItem(builder, "lstRpt", 0);
                Click(builder, "cmdBack"); // the unsaved change is discarded without a question
                if (by == "button") {
                    Click(builder, "cmdClose");
                } else if (by == "mnemonic") {
                    Press(builder, Qt::Key_C, Qt::AltModifier);
                    Await([&] { return !builder.isVisible(); }, "the window stays open");
                } else if (by == "Esc") {
                    Press(builder, Qt::Key_Escape);
                } else {
                    builder.close();
                }
                QVERIFY(!builder.isVisible());
            });
    }

    void reopened_showsTheDefaultReport()
    {
        ProgramWithSixFields program;
        program.AddLocation("Zeehan");
        const std::vector<std::string> steps = program.operations.Steps();
        ShowBuilder(program, [](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "chkDesc");
            Choose(builder, "cboLocation", 1);
            Click(builder, "cmdClose");
        });
        QCOMPARE(program.operations.Steps(), steps);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QVERIFY(!IsTicked(builder, "chkDesc"));
            QCOMPARE(Chosen(builder, "cboLocation"), "All Locations");
        });
    }

    void fieldFileDamaged_isReportedAndTheWindowIsUsable()
    {
        TestProgram program;
        program.folder.Write("field.xml", "<data><field>");
        program.Start();
        program.AddLocation("Zeehan");
        program.reports.Expect("cSQL", "FieldList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), " -> ");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations|Zeehan");
            QCOMPARE(Disabled(builder), "cmdPreview chkDesc cmdSave cmdDelete chkSaved cboSaved");
            Click(builder, "cmdClose");
            QVERIFY(!builder.isVisible());
        });
        QCOMPARE(program.folder.Read("field.xml"), "<data><field>");
    }

    void reportFileDamaged_isReportedAndTheFieldsAreThere()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("Rpt.xml", "no XML");
        program.Start();
        program.reports.Expect("cSQL", "ReportList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Disabled(builder), "cmdSave cmdDelete chkSaved cboSaved");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
        });
    }

    void locationFileDamaged_isReportedAndTheFieldsAreThere()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        program.folder.Write("location.xml", "");
        program.Start();
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Choices(builder, "cboLocation"), "");
            QVERIFY(IsEnabled(builder, "cmdPreview"));
        });
    }

    void fieldDefinition_numberInWords_isReported()
    {
        TestProgram program;
        WriteFields(program, {sixFields[0], {"two", "EndDate", "Until", "To", "20", "8", "0", "1"}});
        program.Start();
        program.reports.Expect("fRptLog", "LoadDefaultReport", ErrorNumber::TypeMismatch);
        ShowBuilder(program, [&](QDialog& builder) {
            QVERIFY(builder.isVisible());
            QCOMPARE(Lists(builder), " -> Date|Until");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
        });
    }

    void fieldDefinition_withTooFewValues_isListedLikeTheOthers()
    {
        TestProgram program;
        WriteFields(program, {{"1", "StartDate", "Date"}, sixFields[1]});
        program.Start();
        ShowBuilder(program, [&](QDialog& builder) { QCOMPARE(Lists(builder), "Until -> Date"); });
    }

    void reportNumber_inWords_isReported()
    {
        TestProgram program;
        WriteFields(program, sixFields);
        WriteReports(program, {{"one", "One", "EndTime", "4"}});
        program.Start();
        program.reports.Expect("fRptLog", "LoadSavedReports", ErrorNumber::TypeMismatch);
        ShowBuilder(program, [](QDialog& builder) {
            QCOMPARE(Lists(builder), "Until|End|Tide -> Date|Time|Place");
            QCOMPARE(Choices(builder, "cboLocation"), "All Locations");
        });
    }
};

TEST_CLASS(tst_fRptLog)
#include "tst_fRptLog.moc"
