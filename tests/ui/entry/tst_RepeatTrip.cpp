#include "EntryTest.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::chrono_literals;

// A new trip that repeats another one: which values it takes over, and that it can be saved as it is.

namespace
{

/// Opens the editor for a trip that repeats the trip `key` and runs `steps`, which must close it.
template <typename Steps>
void Repeat(TestProgram& program, int key, Steps&& steps)
{
    Record trip;
    QCOMPARE(program.sql.EntryGet(static_cast<std::int16_t>(key), trip), succeeded);
    WhileOpen(
        "fEntry", [&] { fEntry(program.program, nullptr).RepeatTrip(trip); }, std::forward<Steps>(steps));
}

} // namespace

class tst_RepeatTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void repeated_keepsPlaceTimesAndMethods()
    {
        ProgramWithPlace program;
        program.AddLocation("Albany");
        const int key = program.AddCompleteEntry({{EntryField::LocNo, "2"}});
        program.clock.today = 2004y / 6 / 15;
        Repeat(program, key, [](QDialog& editor) {
            QCOMPARE(Place(editor), "Albany");
            QCOMPARE(BoxText(editor, "txtStart"), "2004-06-15");
            QCOMPARE(BoxText(editor, "txtEnd"), "2004-06-15");
            QCOMPARE(BoxText(editor, "txtTStart"), "06:30");
            QCOMPARE(BoxText(editor, "txtTEnd"), "11:45");
            QCOMPARE(LinesText(editor, "txtTarget"), "Flathead\nSquid");
            SaveAndClose(editor);
        });
    }

    void repeated_everyOtherValueIsThatOfANewTrip()
    {
        ProgramWithPlace program;
        program.folder.Write("fish.png", "");
        const int key = program.AddCompleteEntry({{EntryField::Picture, "fish.png"}});
        program.clock.today = 2004y / 6 / 15;
        Edit(program, 0, [](QDialog& editor) { // for comparison
            Enter(editor, "txtTideLowHt", "1");
            SaveAndClose(editor);
        });
        Repeat(program, key, [](QDialog& editor) { SaveAndClose(editor); });
        const std::vector<std::string> original = program.StoredEntry(key);
        const std::vector<std::string> usual = program.StoredEntry(key + 1);
        const std::vector<std::string> repeated = program.StoredEntry(key + 2);
        QCOMPARE(repeated.size(), std::size_t{EntryField::Count});
        for (const FieldInfo& field : entryFields) {
            switch (field.position) {
            case EntryField::TarnoNo:
            case EntryField::LowTideHt:
                continue;
            case EntryField::LocNo:
            case EntryField::StartTime:
            case EntryField::EndTime:
            case EntryField::TargetSpecies:
            case EntryField::BaitUsed:
            case EntryField::Method:
                QCOMPARE(repeated[field.position], original[field.position]);
                break;
            default:
                QVERIFY2(repeated[field.position] == usual[field.position], std::string(field.name).c_str());
            }
        }
        QCOMPARE(repeated[EntryField::LowTideHt], "");
        QCOMPARE(program.StoredEntry(key), original);
    }

    void repeated_savesAtOnce()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Repeat(program, key, [&](QDialog& editor) {
            QVERIFY(IsSaveEnabled(editor));
            Save(editor);
            QVERIFY(!IsSaveEnabled(editor));
            QCOMPARE(program.StoredEntry(key + 1, EntryField::StartTime), "06:30");
            Close(editor); // asks nothing
        });
    }

    void repeated_leftUnchanged_canStillBeSaved()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Repeat(program, key, [&](QDialog& editor) {
            for (int tab = 0; tab < 5; ++tab) {
                Press(editor, Qt::Key_Tab);
            }
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QVERIFY(!program.StoredEntry(key + 1).empty());
    }

    void repeated_closeAsks_data()
    {
        QTest::addColumn<bool>("saves");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void repeated_closeAsks()
    {
        QFETCH(bool, saves);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, saves ? Button::Yes : Button::No);
        Repeat(program, key, [](QDialog& editor) { Close(editor); });
        QCOMPARE(program.StoredEntry(key + 1).empty(), !saves);
    }

    void repeated_vanishedLocation_theFirstOneIsSelected_data()
    {
        QTest::addColumn<std::string>("location");
        QTest::newRow("deleted") << std::string("9");
        QTest::newRow("none") << std::string();
        QTest::newRow("no number") << std::string("Pittwater");
        QTest::newRow("beyond 32 bits") << std::string("99999999999");
    }

    void repeated_vanishedLocation_theFirstOneIsSelected()
    {
        QFETCH(std::string, location);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::LocNo, location}});
        Repeat(program, key, [](QDialog& editor) {
            QCOMPARE(Place(editor), "Pittwater");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key + 1, EntryField::LocNo), "1");
    }

    void repeated_shortRecord_hasTheValuesThatExist()
    {
        ProgramWithPlace program;
        program.folder.Write("tarno.xml", "<data><tarno><TarnoNo>1</TarnoNo><StartDate>2003-02-05</StartDate>"
                                          "<EndDate/><StartTime>05:00</StartTime></tarno></data>");
        program.Start();
        Repeat(program, 1, [](QDialog& editor) {
            QCOMPARE(Place(editor), "Pittwater");
            QCOMPARE(BoxText(editor, "txtTStart"), "05:00");
            QCOMPARE(BoxText(editor, "txtTEnd"), "");
            QCOMPARE(LinesText(editor, "txtBait"), "");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(2).size(), std::size_t{EntryField::Count});
    }

    void repeated_oddTexts_areTakenOverVerbatim_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<std::string>("text");
        const std::vector<std::pair<const char*, std::string>> texts{
            {"marks", "<b> & \"quoted\" 'single' &amp; ]]>"},
            {"lines", "one~CL~~CL~ two ~CL~"},
            {"tilde", "~CL ~ CL~ ~"},
            {"tab", "a\tb"},
            {"accents", "Nud\xC3\xA9l \xE9\xAF\x9B \xF0\x9F\x90\x9F"}};
        for (const int field : {EntryField::TargetSpecies, EntryField::BaitUsed, EntryField::Method}) {
            for (const auto& [name, text] : texts) {
                QTest::addRow("%s, %d", name, field) << field << text;
            }
        }
        for (const int field : {EntryField::StartTime, EntryField::EndTime}) {
            for (const char* text : {"", "dawn", "6:30", "06.30", "25:99", "06:30:00", " 06:30", "<&>"}) {
                QTest::addRow("\"%s\", %d", text, field) << field << std::string(text);
            }
        }
    }

    void repeated_oddTexts_areTakenOverVerbatim()
    {
        QFETCH(int, field);
        QFETCH(std::string, text);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{static_cast<std::size_t>(field), text}});
        Repeat(program, key, [](QDialog& editor) { SaveAndClose(editor); });
        QVERIFY(!program.StoredEntry(key + 1).empty());
        QCOMPARE(program.StoredEntry(key + 1, static_cast<std::size_t>(field)), text);
    }

    void repeated_plainLineBreaks_areTakenOver()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry({{EntryField::BaitUsed, "Prawn\nSquid"}});
        Repeat(program, key, [](QDialog& editor) {
            QCOMPARE(LinesText(editor, "txtBait"), "Prawn\nSquid");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key + 1, EntryField::BaitUsed),
                 program.StoredEntry(key, EntryField::BaitUsed));
    }

    void repeated_withoutLocations_isRefused()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.sql.LocationDelete(1);
        Record trip;
        QCOMPARE(program.sql.EntryGet(static_cast<std::int16_t>(key), trip), succeeded);
        program.messages.ExpectInformation(
            QStringLiteral("You need to add some locations prior to adding log entries!"),
            QStringLiteral("No Locations Entered!"));
        WithoutWindow([&] { fEntry(program.program, nullptr).RepeatTrip(trip); });
    }

    void repeated_withoutTemplate_isReportedOnce()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.folder.Write("tarnoblank.xml", "<data>");
        program.Start();
        Record trip;
        QCOMPARE(program.sql.EntryGet(static_cast<std::int16_t>(key), trip), succeeded);
        program.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { fEntry(program.program, nullptr).RepeatTrip(trip); });
    }
};

TEST_CLASS(tst_RepeatTrip)
#include "tst_RepeatTrip.moc"
