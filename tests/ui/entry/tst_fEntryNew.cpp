#include "EntryTest.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::chrono_literals;

class tst_fEntryNew : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opened_hasTodaysDateAndTheUsualTimes()
    {
        ProgramWithPlace program;
        program.clock.today = 2004y / 2 / 29;
        Edit(program, 0, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtStart"), "2004-02-29");
            QCOMPARE(BoxText(editor, "txtEnd"), "2004-02-29");
            QCOMPARE(BoxText(editor, "txtTStart"), "06:00");
            QCOMPARE(BoxText(editor, "txtTEnd"), "12:00");
            Close(editor);
        });
    }

    void opened_theFirstLocationIsSelected()
    {
        ProgramWithPlace program;
        program.AddLocation("Albany");
        Edit(program, 0, [](QDialog& editor) {
            QCOMPARE(Place(editor), "Pittwater");
            Close(editor);
        });
    }

    void opened_nothingElseIsFilledIn_data()
    {
        QTest::addColumn<QString>("box");
        for (const char* box :
             {"txtTideHigh", "txtTideHighHt", "txtTideLow", "txtTideLowHt", "txtAirTemp", "txtWaterTemp",
              "txtPressure", "txtTarget", "txtCaught", "txtBait", "txtMethods", "txtObbos"}) {
            QTest::newRow(box) << box;
        }
    }

    void opened_nothingElseIsFilledIn()
    {
        QFETCH(QString, box);
        ProgramWithPlace program;
        Edit(program, 0, [&](QDialog& editor) {
            const auto& control = Find<QWidget>(editor, box.toLatin1());
            const char* property = qobject_cast<const QLineEdit*>(&control) != nullptr ? "text" : "plainText";
            QVERIFY(control.property(property).isValid());
            QCOMPARE(control.property(property).toString(), QString());
            Close(editor);
        });
    }

    void opened_noOptionButThePredictionIsChosen()
    {
        ProgramWithPlace program;
        program.clock.today = 2003y / 1 / 5; // a day with the best rating
        Edit(program, 0, [](QDialog& editor) {
            for (const char* group : {"optTideSt", "optTideEnd", "optWindDir", "optWindStr", "optWeather",
                                      "optClarity", "optAction", "optPressure"}) {
                QCOMPARE(Chosen(editor, group), -1);
            }
            QCOMPARE(Chosen(editor, "optPrediction"), 3);
            Close(editor);
        });
    }

    void opened_templateWithValues_showsNoneOfThem()
    {
        ProgramWithPlace program;
        std::string blank = program.folder.Read("tarnoblank.xml");
        blank.replace(blank.find("<AirTemp />"), 11, "<AirTemp>20</AirTemp>");
        blank.replace(blank.find("<Weather />"), 11, "<Weather>1</Weather>");
        program.folder.Write("tarnoblank.xml", blank);
        program.Start();
        Edit(program, 0, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtAirTemp"), "");
            QCOMPARE(Chosen(editor, "optWeather"), -1);
            Close(editor);
        });
    }

    void saved_placeWithoutCoordinates_hasNoCalculatedValueOfTheTemplate()
    {
        TestProgram program;
        std::string blank = program.folder.Read("tarnoblank.xml");
        for (const char* element : {"SunRise", "SunSet", "MoonRise", "MoonSet", "Major1", "Major2", "Minor1",
                                    "Minor2", "Picture"}) {
            const std::string empty = '<' + std::string(element) + " />";
            blank.replace(blank.find(empty), empty.size(),
                          '<' + std::string(element) + ">01:23</" + element + '>');
        }
        program.folder.Write("tarnoblank.xml", blank);
        program.Start();
        program.AddLocation("Somewhere", {{LocationField::LocLatt, ""}});
        program.messages.ExpectInformation(dataMissingText, dataMissingTitle);
        Edit(program, 0, [](QDialog& editor) {
            Enter(editor, "txtAirTemp", "24.5");
            SaveAndClose(editor);
        });
        for (const auto field : {EntryField::SunRise, EntryField::SunSet, EntryField::MoonRise,
                                 EntryField::MoonSet, EntryField::Major1, EntryField::Major2,
                                 EntryField::Minor1, EntryField::Minor2, EntryField::Picture}) {
            QCOMPARE(program.StoredEntry(1, field), "");
        }
    }

    void opened_templateWithPicture_showsAndSavesNoPicture()
    {
        ProgramWithPlace program;
        std::string blank = program.folder.Read("tarnoblank.xml");
        blank.replace(blank.find("<Picture />"), 11, "<Picture>boat.png</Picture>");
        program.folder.Write("tarnoblank.xml", blank);
        program.folder.Write("boat.png", "no picture, so loading it would show a message");
        program.Start();
        Edit(program, 0, [](QDialog& editor) {
            QVERIFY(Find<QWidget>(editor, "cmdLoad").isEnabled());
            QVERIFY(!Find<QWidget>(editor, "cmdRemove").isEnabled());
            Enter(editor, "txtAirTemp", "24.5");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(1, EntryField::Picture), "");
    }

    void untouched_closed_asksAndSavesNothing()
    {
        ProgramWithPlace program;
        const std::size_t stepsBefore = program.operations.Steps().size();
        Edit(program, 0, [](QDialog& editor) { Close(editor); });
        QCOMPARE(program.operations.Steps().size(), stepsBefore);
        QVERIFY(program.Stored("tarno.xml").empty());
    }

    void untouched_saved_writesNothing()
    {
        ProgramWithPlace program;
        Edit(program, 0, [](QDialog& editor) {
            QVERIFY(IsSaveEnabled(editor));
            Save(editor);
            QVERIFY(editor.isVisible());
            Close(editor);
        });
        QVERIFY(program.Stored("tarno.xml").empty());
    }

    void changedAndClosed_yes_addsTheWholeEntry()
    {
        ProgramWithPlace program;
        program.clock.today = 2003y / 1 / 18;
        program.messages.Expect(saveQuestion, Button::Yes);
        std::vector<std::string> shown;
        Edit(program, 0, [&](QDialog& editor) {
            for (const char* box : {"txtSunRise", "txtSunSet", "txtMoonRise", "txtMoonSet", "txtMajor1",
                                    "txtMajor2", "txtMinor1", "txtMinor2"}) {
                shown.push_back(BoxText(editor, box));
            }
            Enter(editor, "txtAirTemp", "24.5");
            Close(editor);
        });
        // values that the user did not enter are those of the template
        std::vector<std::string> expected(EntryField::Count);
        expected[EntryField::TarnoNo] = "1";
        expected[EntryField::StartDate] = "2003-01-18";
        expected[EntryField::EndDate] = "2003-01-18";
        expected[EntryField::StartTime] = "06:00";
        expected[EntryField::EndTime] = "12:00";
        expected[EntryField::LocNo] = "1";
        expected[EntryField::MoonPhase] = "-98";
        expected[EntryField::Prediction] = "2";
        expected[EntryField::AirTemp] = "24.5";
        std::size_t next = 0;
        for (const auto position :
             {EntryField::SunRise, EntryField::SunSet, EntryField::MoonRise, EntryField::MoonSet,
              EntryField::Major1, EntryField::Major2, EntryField::Minor1, EntryField::Minor2}) {
            QVERIFY(!shown.at(next).empty());
            expected[position] = shown.at(next++);
        }
        QCOMPARE(program.StoredEntry(1), expected);
    }

    void changedAndClosed_no_addsNothing()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, 0, [](QDialog& editor) {
            Enter(editor, "txtAirTemp", "24.5");
            Close(editor);
        });
        QVERIFY(program.Stored("tarno.xml").empty());
    }

    void saved_getsTheNextKey()
    {
        ProgramWithPlace program;
        program.AddCompleteEntry();
        program.AddCompleteEntry();
        Edit(program, 0, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "24.5");
            Save(editor);
            QVERIFY(editor.isVisible());
            QVERIFY(!IsSaveEnabled(editor));
            QCOMPARE(program.StoredEntry(3, EntryField::AirTemp), "24.5");
            Close(editor);
        });
        QCOMPARE(program.Stored("tarno.xml").size(), 3U);
    }

    void savedTwice_replacesItsRecord()
    {
        ProgramWithPlace program;
        Edit(program, 0, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "24.5");
            Save(editor);
            Enter(editor, "txtAirTemp", "25");
            Save(editor);
            QCOMPARE(program.StoredEntry(1, EntryField::AirTemp), "25");
            Close(editor);
        });
        QCOMPARE(program.Stored("tarno.xml").size(), 1U);
    }

    void savedThenUntouched_closesWithoutAQuestion()
    {
        ProgramWithPlace program;
        Edit(program, 0, [](QDialog& editor) {
            Enter(editor, "txtAirTemp", "24.5");
            SaveAndClose(editor);
            QVERIFY(!editor.isVisible());
        });
    }

    void locationWithoutCoordinates_showsAMessageAndOpensTheEntry()
    {
        TestProgram program;
        program.clock.today = 2003y / 1 / 18;
        program.Start();
        program.AddLocation("Somewhere", {{LocationField::LocLong, ""}});
        program.messages.ExpectInformation(dataMissingText, dataMissingTitle);
        Edit(program, 0, [](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtSunRise"), "");
            QCOMPARE(BoxText(editor, "txtMajor1"), "");
            QCOMPARE(BoxText(editor, "txtMoon"), "98");
            Enter(editor, "txtAirTemp", "24.5");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(1, EntryField::SunRise), "");
        QCOMPARE(program.StoredEntry(1, EntryField::MoonPhase), "-98");
    }

    void templateMissing_isReportedAndNothingOpens()
    {
        ProgramWithPlace program;
        std::filesystem::remove(ToPath(program.folder.PathOf("tarnoblank.xml")));
        program.Start();
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { fEntry(program.program, nullptr).SetData(0, false); });
    }
};

TEST_CLASS(tst_fEntryNew)
#include "tst_fEntryNew.moc"
