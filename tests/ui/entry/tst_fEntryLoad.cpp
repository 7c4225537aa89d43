#include "EntryTest.h"
#include "support/TestClass.h"

using namespace Tarno;

class tst_fEntryLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void box_showsItsValue_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("text");
        QTest::newRow("start date") << "txtStart"
                                    << "2003-02-05";
        QTest::newRow("end date") << "txtEnd"
                                  << "2003-02-06";
        QTest::newRow("start time") << "txtTStart"
                                    << "06:30";
        QTest::newRow("end time") << "txtTEnd"
                                  << "11:45";
        QTest::newRow("high tide") << "txtTideHigh"
                                   << "09:10";
        QTest::newRow("high tide height") << "txtTideHighHt"
                                          << "1.6 m";
        QTest::newRow("low tide") << "txtTideLow"
                                  << "03:05";
        QTest::newRow("low tide height") << "txtTideLowHt"
                                         << "0.4";
        QTest::newRow("sunrise") << "txtSunRise"
                                 << "06:11";
        QTest::newRow("sunset") << "txtSunSet"
                                << "19:58";
        QTest::newRow("moonrise") << "txtMoonRise"
                                  << "10:21";
        QTest::newRow("moonset") << "txtMoonSet"
                                 << "21:43";
        QTest::newRow("moon phase") << "txtMoon"
                                    << "45";
        QTest::newRow("air temperature") << "txtAirTemp"
                                         << "24.5";
        QTest::newRow("water temperature") << "txtWaterTemp"
                                           << "21";
        QTest::newRow("pressure") << "txtPressure"
                                  << "1013";
        QTest::newRow("major 1") << "txtMajor1"
                                 << "04:01";
        QTest::newRow("major 2") << "txtMajor2"
                                 << "16:26";
        QTest::newRow("minor 1") << "txtMinor1"
                                 << "10:13";
        QTest::newRow("minor 2") << "txtMinor2"
                                 << "22:37";
    }

    void box_showsItsValue()
    {
        QFETCH(QString, box);
        QFETCH(QString, text);
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            QCOMPARE(BoxText(editor, box.toLatin1()), text.toStdString());
            Close(editor);
        });
    }

    void lines_showTheirDecodedValue_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("text");
        QTest::newRow("target") << "txtTarget"
                                << "Flathead\nSquid";
        QTest::newRow("bait") << "txtBait"
                              << "Prawn";
        QTest::newRow("methods") << "txtMethods"
                                 << "Drifting\nCasting";
        QTest::newRow("caught") << "txtCaught"
                                << "2 flathead";
        QTest::newRow("observations") << "txtObbos"
                                      << "First\n\nLast";
    }

    void lines_showTheirDecodedValue()
    {
        QFETCH(QString, box);
        QFETCH(QString, text);
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            QCOMPARE(LinesText(editor, box.toLatin1()), text.toStdString());
            Close(editor);
        });
    }

    void options_everyCode_choosesItsButton_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("group");
        QTest::addColumn<int>("count");
        QTest::newRow("tide at the start") << int(EntryField::TideStart) << "optTideSt" << 4;
        QTest::newRow("tide at the end") << int(EntryField::TideEnd) << "optTideEnd" << 4;
        QTest::newRow("prediction") << int(EntryField::Prediction) << "optPrediction" << 4;
        QTest::newRow("wind direction") << int(EntryField::WindDir) << "optWindDir" << 8;
        QTest::newRow("wind strength") << int(EntryField::WindStrength) << "optWindStr" << 4;
        QTest::newRow("weather") << int(EntryField::Weather) << "optWeather" << 7;
        QTest::newRow("clarity") << int(EntryField::WaterClarity) << "optClarity" << 3;
        QTest::newRow("action") << int(EntryField::FishAction) << "optAction" << 4;
        QTest::newRow("pressure") << int(EntryField::AirPressure) << "optPressure" << 2;
    }

    void options_everyCode_choosesItsButton()
    {
        QFETCH(int, position);
        QFETCH(QString, group);
        QFETCH(int, count);
        ProgramWithPlace program;
        for (int code = 0; code < count; ++code) {
            const int key = program.AddCompleteEntry({{position, std::to_string(code)}});
            Edit(program, key, [&](QDialog& editor) {
                QCOMPARE(Chosen(editor, group.toLatin1()), code);
                Close(editor);
            });
        }
    }

    void options_invalidCode_chooseNothingAndKeepIt_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("not set") << "";
        QTest::newRow("after the last") << "4";
        QTest::newRow("far out of range") << "70000";
        QTest::newRow("negative") << "-1";
        QTest::newRow("word") << "Top";
        QTest::newRow("blank") << " ";
    }

    void options_invalidCode_chooseNothingAndKeepIt()
    {
        QFETCH(QString, code);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::TideStart, code.toStdString()}, {EntryField::AirPressure, code.toStdString()}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(Chosen(editor, "optTideSt"), -1);
            QCOMPARE(Chosen(editor, "optPressure"), -1);
            Enter(editor, "txtTideLowHt", "0.5");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.5");
        QCOMPARE(program.StoredEntry(key, EntryField::TideStart), code.toStdString());
        QCOMPARE(program.StoredEntry(key, EntryField::AirPressure), code.toStdString());
    }

    void code_withLeadingZero_choosesItsButton()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry({{EntryField::Weather, "03"}}), [](QDialog& editor) {
            QCOMPARE(Chosen(editor, "optWeather"), 3);
            Close(editor);
        });
    }

    void locations_areInFileOrder()
    {
        ProgramWithPlace program;
        program.AddLocation("Zeehan");
        program.AddLocation("Albany");
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            const auto& list = Find<QComboBox>(editor, "cboLocation");
            QCOMPARE(list.count(), 3);
            QCOMPARE(ToUtf8(list.itemText(0)), "Pittwater");
            QCOMPARE(ToUtf8(list.itemText(1)), "Zeehan");
            QCOMPARE(ToUtf8(list.itemText(2)), "Albany");
            Close(editor);
        });
    }

    void locationName_ofSeveralLines_showsInOneLine()
    {
        ProgramWithPlace program;
        program.AddLocation("Victor Harbor~CL~Granite Island");
        Edit(program, program.AddCompleteEntry({{EntryField::LocNo, "2"}}), [](QDialog& editor) {
            QCOMPARE(Place(editor), "Victor Harbor Granite Island");
            Close(editor);
        });
    }

    void location_isSelectedByItsNumber_data()
    {
        QTest::addColumn<QString>("number");
        QTest::newRow("plain") << "2";
        QTest::newRow("leading zero") << "02";
        QTest::newRow("blanks around") << " 2 ";
        QTest::newRow("with a zero fraction") << "2.0";
    }

    void location_isSelectedByItsNumber()
    {
        QFETCH(QString, number);
        ProgramWithPlace program;
        program.AddLocation("Zeehan");
        Edit(program, program.AddCompleteEntry({{EntryField::LocNo, number.toStdString()}}),
             [](QDialog& editor) {
                 QCOMPARE(Place(editor), "Zeehan");
                 Close(editor);
             });
    }

    void location_deleted_selectsNoneAndKeepsTheNumber()
    {
        for (const char* number : {"7", "", "Pittwater"}) {
            ProgramWithPlace program;
            const int key = program.AddCompleteEntry({{EntryField::LocNo, number}});
            Edit(program, key, [](QDialog& editor) {
                QCOMPARE(Find<QComboBox>(editor, "cboLocation").currentIndex(), -1);
                Enter(editor, "txtTideLowHt", "0.5");
                SaveAndClose(editor);
            });
            QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.5");
            QCOMPARE(program.StoredEntry(key, EntryField::LocNo), number);
        }
    }

    void phase_showsPercentAndSign_data()
    {
        QTest::addColumn<QString>("phase");
        QTest::addColumn<QString>("percent");
        QTest::addColumn<bool>("waxing");
        QTest::newRow("waxing") << "45"
                                << "45" << true;
        QTest::newRow("waning") << "-45"
                                << "45" << false;
        QTest::newRow("new") << "0"
                             << "0" << true;
        QTest::newRow("new while waning") << "-0"
                                          << "0" << true;
        QTest::newRow("full") << "-100"
                              << "100" << false;
    }

    void phase_showsPercentAndSign()
    {
        QFETCH(QString, phase);
        QFETCH(QString, percent);
        QFETCH(bool, waxing);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::MoonPhase, phase.toStdString()}});
        Edit(program, key, [&](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtMoon"), percent.toStdString());
            QCOMPARE(IsChecked(editor, "chkMoon"), waxing);
            Close(editor);
        });
    }

    void phase_notANumber_leavesTheBoxEmptyAndIsKept_data()
    {
        QTest::addColumn<QString>("phase");
        QTest::newRow("word") << "full";
        QTest::newRow("with a percent sign") << "45%";
        QTest::newRow("too large") << "40000";
    }

    void phase_notANumber_leavesTheBoxEmptyAndIsKept()
    {
        QFETCH(QString, phase);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::MoonPhase, phase.toStdString()}});
        Edit(program, key, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtMoon"), "");
            Enter(editor, "txtTideLowHt", "0.5");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.5");
        QCOMPARE(program.StoredEntry(key, EntryField::MoonPhase), phase.toStdString());
    }

    void opened_hasNoChangeButSaveEnabled()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            QVERIFY(IsSaveEnabled(editor));
            Press(editor, Qt::Key_Tab); // leaving a box updates "Save"
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void opened_saveClicked_writesNothing()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::size_t stepsBefore = program.operations.Steps().size();
        Edit(program, key, [](QDialog& editor) {
            Save(editor);
            QVERIFY(editor.isVisible());
            Close(editor);
        });
        QCOMPARE(program.operations.Steps().size(), stepsBefore);
    }

    void opened_closed_asksNothing()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [](QDialog& editor) { Close(editor); });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void opened_focusIsInTheStartDate()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            QCOMPARE(Pages(editor).currentIndex(), 0);
            QCOMPARE(Focused(editor), "txtStart");
            Close(editor);
        });
    }

    void values_theTimeCheckWouldRefuse_canBeLeft_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("no event") << ":";
        QTest::newRow("end of the day") << "24:00";
        QTest::newRow("hand-written words") << "about noon";
    }

    void values_theTimeCheckWouldRefuse_canBeLeft()
    {
        QFETCH(QString, text);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::MoonRise, text.toStdString()}});
        Edit(program, key, [&](QDialog& editor) {
            GoTo(editor, "txtMoonRise");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(Focused(editor), "txtMoonSet");
            QVERIFY(!IsRefused(editor, "txtMoonRise"));
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::MoonRise), text.toStdString());
    }

    void noLocation_showsAMessageAndOpensNothing_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("remove");
        QTest::newRow("new entry") << 0 << false;
        QTest::newRow("existing entry") << 1 << false;
        QTest::newRow("deletion") << 1 << true;
    }

    void noLocation_showsAMessageAndOpensNothing()
    {
        QFETCH(int, key);
        QFETCH(bool, remove);
        TestProgram program;
        program.Start();
        program.AddEntry(CompleteEntry());
        const std::string before = program.folder.Read("tarno.xml");
        program.messages.ExpectInformation(
            QStringLiteral("You need to add some locations prior to adding log entries!"),
            QStringLiteral("No Locations Entered!"));
        WithoutWindow(
            [&] { fEntry(program.program, nullptr).SetData(static_cast<std::int16_t>(key), remove); });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void unknownEntry_isReportedAndOpensNothing()
    {
        ProgramWithPlace program;
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { fEntry(program.program, nullptr).SetData(7, false); });
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { fEntry(program.program, nullptr).SetData(7, true); });
    }

    void recordWithFewerChildren_isReportedAndNothingOpens()
    {
        TestProgram program;
        program.folder.Write("tarno.xml", "<data><tarno><TarnoNo>1</TarnoNo><StartDate/></tarno></data>");
        program.Start();
        program.AddLocation("Pittwater");
        program.reports.Expect("fEntry", "LoadTheForm", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { fEntry(program.program, nullptr).SetData(1, false); });
    }

    void locationWithoutName_canBeChosen()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.folder.Write("location.xml", "<data><location><LocNo>1</LocNo></location><location/>"
                                             "<location><LocNo>3</LocNo><LocName>Wharf</LocName></location>"
                                             "</data>");
        program.Start();
        Edit(program, key, [](QDialog& editor) {
            const auto& places = Find<QComboBox>(editor, "cboLocation");
            QCOMPARE(places.count(), 3);
            QCOMPARE(places.currentIndex(), 0);
            QCOMPARE(places.itemText(2), QStringLiteral("Wharf"));
            Close(editor);
        });
    }
};

TEST_CLASS(tst_fEntryLoad)
#include "tst_fEntryLoad.moc"
