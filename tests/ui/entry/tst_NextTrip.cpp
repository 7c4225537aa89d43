#include "PickListTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::chrono_literals;

// Ctrl+Enter in the entry editor: it saves the trip and continues with a new one on the next day.

namespace
{

void SaveAndAddNext(const QWidget& editor)
{
    Press(editor, Qt::Key_Return, Qt::ControlModifier);
}

} // namespace

class tst_NextTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void ctrlEnter_savesAndContinues_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Return") << static_cast<int>(Qt::Key_Return) << static_cast<int>(Qt::ControlModifier);
        QTest::newRow("Enter") << static_cast<int>(Qt::Key_Enter)
                               << static_cast<int>(Qt::ControlModifier | Qt::KeypadModifier);
    }

    void ctrlEnter_savesAndContinues()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        ProgramWithPlace program;
        program.AddLocation("Albany");
        const int first = program.AddCompleteEntry({{EntryField::LocNo, "2"}});
        Edit(program, first, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            Press(editor, static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
            QCOMPARE(program.StoredEntry(first, EntryField::LowTideHt), "0.9");
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-06");
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-02-06");
            QCOMPARE(BoxText(editor, "txtTStart"), "06:30");
            QCOMPARE(BoxText(editor, "txtTEnd"), "11:45");
            QCOMPARE(Place(editor), "Albany");
            QCOMPARE(BoxText(editor, "txtTideLowHt"), "");
            QCOMPARE(LinesText(editor, "txtTarget"), "");
            QCOMPARE(LinesText(editor, "txtObbos"), "");
            QCOMPARE(Chosen(editor, "optAction"), -1);
            QCOMPARE(Pages(editor).currentIndex(), 0);
            Close(editor); // asks nothing
        });
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t{1});
    }

    void ctrlEnter_onEveryPage_data()
    {
        QTest::addColumn<QString>("control");
        for (const char* control : {"txtStart", "cboLocation", "txtTStart", "optTideSt_2", "txtAirTemp",
                                    "optWeather_3", "txtTarget", "txtObbos", "cmdOK"}) {
            QTest::newRow(control) << control;
        }
    }

    void ctrlEnter_onEveryPage()
    {
        QFETCH(QString, control);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::TargetSpecies, ""}, {EntryField::Obbos, ""}});
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            ShowPageOf(editor, Find<QWidget>(editor, control.toLatin1()));
            Find<QWidget>(editor, control.toLatin1()).setFocus();
            SaveAndAddNext(editor);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-06");
            QCOMPARE(Pages(editor).currentIndex(), 0);
            QCOMPARE(Focused(editor), "txtStart");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.9");
        QCOMPARE(program.StoredEntry(key, EntryField::TargetSpecies), "");
        QCOMPARE(program.StoredEntry(key, EntryField::Obbos), "");
    }

    void ctrlEnter_savesTheFocusedBox()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::BaitUsed, ""}});
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtBait", "Worm");
            SaveAndAddNext(editor);
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::BaitUsed), "Worm");
    }

    void ctrlEnter_openPickList_takesItsLines()
    {
        ProgramWithLists program;
        Edit(program, program.entry, [&](QDialog& editor) {
            OpenAndPick(editor, "lblDDBait", {"Squid"});
            SaveAndAddNext(editor);
            QVERIFY(!IsOpen(editor));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::BaitUsed), "Squid");
    }

    void series_savesEveryTrip()
    {
        ProgramWithPlace program;
        program.clock.today = 2004y / 2 / 28;
        Edit(program, 0, [](QDialog& editor) {
            for (const char* height : {"1", "2", "3"}) {
                Enter(editor, "txtTideLowHt", height);
                SaveAndAddNext(editor);
            }
            Close(editor);
        });
        std::vector<std::string> saved;
        for (const auto& trip : program.Stored("tarno.xml")) {
            saved.push_back(trip[EntryField::TarnoNo] + " " + trip[EntryField::StartDate] + " " +
                            trip[EntryField::EndDate] + " " + trip[EntryField::LowTideHt]);
        }
        QCOMPARE(saved, (std::vector<std::string>{"1 2004-02-28 2004-02-28 1", "2 2004-02-29 2004-02-29 2",
                                                  "3 2004-03-01 2004-03-01 3"}));
    }

    void nextTrip_isCalculatedForItsDate()
    {
        ProgramWithPlace program;
        program.clock.today = 2004y / 6 / 15;
        Edit(program, 0, [](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            SaveAndAddNext(editor);
            Enter(editor, "txtTideLowHt", "1");
            SaveAndClose(editor);
        });
        program.clock.today = 2004y / 6 / 16;
        Edit(program, 0, [](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            SaveAndClose(editor);
        });
        std::vector<std::string> next = program.StoredEntry(2);
        std::vector<std::string> usual = program.StoredEntry(3);
        next[0] = usual[0];
        QCOMPARE(next, usual);
    }

    void nextTrip_changed_closeAsks()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, Button::Yes);
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            SaveAndAddNext(editor);
            Enter(editor, "txtTideLowHt", "2");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key + 1, EntryField::LowTideHt), "2");
    }

    void unchangedTrip_isSavedIfItIsNew()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string log = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            SaveAndAddNext(editor);
            QCOMPARE(program.folder.Read("tarno.xml"), log);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-06");
            SaveAndAddNext(editor);
            QCOMPARE(program.StoredEntry(key + 1, EntryField::StartDate), "2003-02-06");
            QCOMPARE(program.StoredEntry(key + 1, EntryField::StartTime), "06:30");
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-07");
            Close(editor); // asks nothing
        });
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t{2});
    }

    void refusedBox_nothingIsSaved()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string log = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            TypeRefusedDate(editor);
            SaveAndAddNext(editor);
            QVERIFY(IsRefused(editor, "txtStart"));
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-31");
            QCOMPARE(program.folder.Read("tarno.xml"), log);
            Enter(editor, "txtStart", "2003-02-05");
            SaveAndAddNext(editor);
            QVERIFY(!IsRefused(editor, "txtStart"));
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-06");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "1");
    }

    void failedSave_staysAtTheTrip()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
            SaveAndAddNext(editor);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-05");
            QCOMPARE(BoxText(editor, "txtTideLowHt"), "1");
            QVERIFY(IsSaveEnabled(editor));
            SaveAndAddNext(editor); // works now
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-06");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "1");
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t{1});
    }

    void lastDayOfTheCalendar_continuesWithToday()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry(
            {{EntryField::StartDate, "9999-12-31"}, {EntryField::EndDate, "9999-12-31"}});
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            SaveAndAddNext(editor);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-05");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "1");
    }

    void storedDateThatIsNone_continuesWithToday()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::StartDate, "last summer"}});
        Edit(program, key, [&](QDialog& editor) {
            Find<QWidget>(editor, "txtTideLowHt").setFocus();
            Press(editor, Qt::Key_A, Qt::ControlModifier);
            Type(editor, "1");
            SaveAndAddNext(editor);
            QCOMPARE(BoxText(editor, "txtStart"), "2003-02-05");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "1");
    }

    void picture_isNotTakenOver()
    {
        ProgramWithPlace program;
        program.folder.Write("fish.png", Pictures::Png(4, 4));
        const int key = program.AddCompleteEntry({{EntryField::Picture, "fish.png"}});
        program.messages.Expect(saveQuestion, Button::Yes);
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            SaveAndAddNext(editor);
            Enter(editor, "txtTideLowHt", "2");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), "fish.png");
        QCOMPARE(program.StoredEntry(key + 1, EntryField::Picture), "");
    }

    void placesWithoutCoordinates_areExplainedOnce()
    {
        ProgramWithPlace program; // the first location has coordinates, the second has none
        program.AddLocation("Albany", {{LocationField::LocLatt, ""}});
        const int key = program.AddCompleteEntry({{EntryField::LocNo, "2"}});
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            program.messages.ExpectInformation(dataMissingText, dataMissingTitle);
            SaveAndAddNext(editor);
            QCOMPARE(Place(editor), "Albany");
            QCOMPARE(BoxText(editor, "txtSunRise"), "");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::SunRise), "06:11");
    }

    void missingTemplate_closesTheEditor()
    {
        ProgramWithPlace program;
        program.AddLocation("Albany");
        const int key = program.AddCompleteEntry({{EntryField::LocNo, "2"}});
        program.folder.Write("tarnoblank.xml", "<data>");
        program.Start();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
            SaveAndAddNext(editor);
            QVERIFY(!editor.isVisible());
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "1");
        QCOMPARE(program.StoredEntry(key, EntryField::LocNo), "2");
    }

    void vanishedLocations_areExplained()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "1");
            program.sql.LocationDelete(1);
            program.messages.ExpectInformation(
                QStringLiteral("You need to add some locations prior to adding log entries!"),
                QStringLiteral("No Locations Entered!"));
            SaveAndAddNext(editor);
            QVERIFY(!editor.isVisible());
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "1");
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t{1});
    }
};

TEST_CLASS(tst_NextTrip)
#include "tst_NextTrip.moc"
