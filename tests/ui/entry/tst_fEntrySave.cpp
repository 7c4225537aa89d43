#include "EntryTest.h"
#include "support/TestClass.h"
#include "support/UnsavedFiles.h"

using namespace Tarno;

namespace
{

enum class Way { Button, Mnemonic, CloseBox, Escape };

void CloseBy(QDialog& editor, Way way)
{
    switch (way) {
    case Way::Button:
        Close(editor);
        break;
    case Way::Mnemonic:
        PressMnemonic(editor, Qt::Key_C, "cmdCancel");
        break;
    case Way::CloseBox:
        editor.close();
        break;
    case Way::Escape:
        Press(editor, Qt::Key_Escape);
        break;
    }
}

void AddWays()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("button") << Way::Button;
    QTest::newRow("mnemonic") << Way::Mnemonic;
    QTest::newRow("close box") << Way::CloseBox;
    QTest::newRow("Esc") << Way::Escape;
}

void SaveByMnemonic(QDialog& editor)
{
    PressMnemonic(editor, Qt::Key_S, "cmdOK");
}

void Remove(TestProgram& program, int key)
{
    WithoutWindow([&] { fEntry(program.program, nullptr).SetData(static_cast<std::int16_t>(key), true); });
}

} // namespace

Q_DECLARE_METATYPE(Way)

class tst_fEntrySave : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void save_keepsTheWindowOpenAndDisablesItself()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "30");
            Press(editor, Qt::Key_Tab);
            QVERIFY(IsSaveEnabled(editor));
            Save(editor);
            QVERIFY(editor.isVisible());
            QVERIFY(!IsSaveEnabled(editor));
            QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), "30");
            Close(editor);
        });
    }

    void save_writesTheValueOfTheBoxWithTheFocus()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.9");
    }

    void save_byItsMnemonic_writesTheValueOfTheBoxWithTheFocus()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            SaveByMnemonic(editor);
            QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.9");
            Close(editor);
        });
    }

    void save_byEnterInABox_writes()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            Press(editor, Qt::Key_Return);
            QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.9");
            QVERIFY(editor.isVisible());
            Close(editor);
        });
    }

    void save_boxOfSeveralLines_isWrittenWithoutLeavingIt()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtObbos", "Mullet");
            // assistive tools set a text and press a button without moving the focus
            Find<QPlainTextEdit>(editor, "txtBait").setPlainText(QStringLiteral("Squid\nPrawn"));
            Find<QAbstractButton>(editor, "cmdOK").click();
            QCOMPARE(program.StoredEntry(key, EntryField::Obbos), "Mullet");
            QCOMPARE(program.StoredEntry(key, EntryField::BaitUsed), "Squid~CL~Prawn");
            Close(editor);
        });
    }

    void save_disabled_storesTheBoxAndThenSaves_data()
    {
        QTest::addColumn<bool>("byMnemonic");
        QTest::newRow("click") << false;
        QTest::newRow("mnemonic") << true;
    }

    void save_disabled_storesTheBoxAndThenSaves()
    {
        QFETCH(bool, byMnemonic);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Press(editor, Qt::Key_Tab);
            Enter(editor, "txtTEnd", "1215");
            QVERIFY(!IsSaveEnabled(editor));
            byMnemonic ? SaveByMnemonic(editor) : Save(editor);
            QCOMPARE(program.StoredEntry(key, EntryField::EndTime), "12:15");
            QCOMPARE(BoxText(editor, "txtTEnd"), "12:15");
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void save_disabledAndNothingTyped_writesNothing_data() { save_disabled_storesTheBoxAndThenSaves_data(); }

    void save_disabledAndNothingTyped_writesNothing()
    {
        QFETCH(bool, byMnemonic);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::size_t stepsBefore = program.operations.Steps().size();
        Edit(program, key, [&](QDialog& editor) {
            Press(editor, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(editor));
            byMnemonic ? SaveByMnemonic(editor) : Save(editor);
            QVERIFY(!IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.operations.Steps().size(), stepsBefore);
    }

    void save_keepsOtherValuesByteForByte()
    {
        ProgramWithPlace program;
        // blanks, plain line feeds and special characters in a hand-written file
        const int key = program.AddCompleteEntry({{EntryField::TargetSpecies, "one\ntwo ~CL~ three  "},
                                                  {EntryField::Obbos, " \xE6\xB5\x9C & <b> "},
                                                  {EntryField::HighTideHt, "  1.6 m "}});
        std::vector<std::string> expected = program.StoredEntry(key);
        Edit(program, key, [](QDialog& editor) {
            for (int page : {1, 2, 3, 0}) {
                ClickPage(editor, page);
                for (int tab = 0; tab < 30; ++tab) {
                    Press(editor, Qt::Key_Tab);
                }
            }
            Enter(editor, "txtTideLowHt", "0.9");
            SaveAndClose(editor);
        });
        expected[EntryField::LowTideHt] = "0.9";
        QCOMPARE(program.StoredEntry(key), expected);
    }

    void save_controlCharacter_isKeptAsTheReplacementCharacter()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [](QWidget& editor) {
            GoTo(editor, "txtAirTemp");
            Find<QLineEdit>(editor, "txtAirTemp").setText(QStringLiteral("2\x01"));
            SaveAndClose(editor); // no question, because everything is saved
        });
        QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), std::string("2\uFFFD"));
    }

    void save_failed_keepsWindowAndFlag()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
            Save(editor);
            QVERIFY(editor.isVisible());
            QVERIFY(IsSaveEnabled(editor));
            QCOMPARE(program.folder.Read("tarno.xml"), before);
            Save(editor);
            QVERIFY(!IsSaveEnabled(editor));
            QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.9");
            Close(editor);
        });
    }

    void save_newEntryFailedAndRetried_isStoredOnce()
    {
        ProgramWithPlace program;
        Edit(program, 0, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            program.operations.Fail("replace", ErrorNumber::PathFileAccess);
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::PathFileAccess);
            Save(editor);
            QVERIFY(program.Stored("tarno.xml").empty());
            SaveAndClose(editor);
        });
        QCOMPARE(program.Stored("tarno.xml").size(), 1U);
        QCOMPARE(program.StoredEntry(1, EntryField::LowTideHt), "0.9");
    }

    void save_deletedRecord_isReported()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, key, [&](QDialog& editor) {
            program.sql.EntryDelete(static_cast<std::int16_t>(key));
            Enter(editor, "txtTideLowHt", "0.9");
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::ObjectNotSet);
            Save(editor);
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void close_unchanged_asksNothing_data() { AddWays(); }

    void close_unchanged_asksNothing()
    {
        QFETCH(Way, way);
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            CloseBy(editor, way);
            QVERIFY(!editor.isVisible());
        });
    }

    void close_changed_asks_data()
    {
        QTest::addColumn<Way>("way");
        QTest::addColumn<bool>("yes");
        QTest::newRow("button, yes") << Way::Button << true;
        QTest::newRow("button, no") << Way::Button << false;
        QTest::newRow("mnemonic, yes") << Way::Mnemonic << true;
        QTest::newRow("close box, yes") << Way::CloseBox << true;
        QTest::newRow("close box, no") << Way::CloseBox << false;
        QTest::newRow("Esc, yes") << Way::Escape << true;
        QTest::newRow("Esc, no") << Way::Escape << false;
    }

    void close_changed_asks()
    {
        QFETCH(Way, way);
        QFETCH(bool, yes);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, yes ? Button::Yes : Button::No);
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "30");
            Press(editor, Qt::Key_Tab);
            CloseBy(editor, way);
            QVERIFY(!editor.isVisible());
        });
        QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), yes ? "30" : "24.5");
    }

    void close_valueOfTheBoxWithTheFocus_isAskedAbout()
    {
        for (const Way way : {Way::Button, Way::Mnemonic, Way::CloseBox, Way::Escape}) {
            ProgramWithPlace program;
            const int key = program.AddCompleteEntry();
            program.messages.Expect(saveQuestion, Button::Yes);
            Edit(program, key, [&](QDialog& editor) {
                Enter(editor, "txtTEnd", "1215");
                CloseBy(editor, way);
            });
            QCOMPARE(program.StoredEntry(key, EntryField::EndTime), "12:15");
        }
    }

    void close_textOfSeveralLines_isAskedAboutAndSaved()
    {
        for (const Way way : {Way::Button, Way::CloseBox, Way::Escape}) {
            ProgramWithPlace program;
            const int key = program.AddCompleteEntry();
            program.messages.Expect(saveQuestion, Button::Yes);
            Edit(program, key, [&](QDialog& editor) {
                Enter(editor, "txtCaught", "nothing");
                CloseBy(editor, way);
            });
            QCOMPARE(program.StoredEntry(key, EntryField::FishCaught), "nothing");
        }
    }

    void close_textOfSeveralLinesReverted_isStillAskedAbout()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, program.AddCompleteEntry(), [](QDialog& editor) {
            Enter(editor, "txtCaught", "2 flatheads");
            Press(editor, Qt::Key_Backspace);
            QCOMPARE(LinesText(editor, "txtCaught"), "2 flathead");
            Close(editor);
        });
    }

    void close_no_changesNothingInTheList()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, key, [](QDialog& editor) {
            Enter(editor, "txtAirTemp", "30");
            Close(editor);
        });
        RecordList entries;
        QCOMPARE(program.sql.EntryList(entries), succeeded);
        QCOMPARE(entries.at(0).Text(EntryField::AirTemp), "24.5");
    }

    void close_yesAndFailing_closesAndKeepsTheChangeForTheNextSave()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, Button::Yes);
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "30");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
            Close(editor);
            QVERIFY(!editor.isVisible());
        });
        QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), "24.5");
        QCOMPARE(UnsavedFiles(program.sql), std::vector<std::string>{"tarno.xml"});
        program.AddCompleteEntry();
        QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), "30");
    }

    void close_afterFailedSave_asksAgain()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "30");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
            Save(editor);
            program.messages.Expect(saveQuestion, Button::Yes);
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::AirTemp), "30");
    }

    void delete_yes_removesTheRecordAndSaves()
    {
        ProgramWithPlace program;
        program.AddCompleteEntry();
        program.AddCompleteEntry();
        program.messages.Expect(deleteQuestion, Button::Yes);
        Remove(program, 1);
        QCOMPARE(program.Stored("tarno.xml").size(), 1U);
        QVERIFY(program.StoredEntry(1).empty());
    }

    void delete_noOrCancel_keepsTheRecord_data()
    {
        QTest::addColumn<bool>("no");
        QTest::newRow("no") << true;
        QTest::newRow("cancel") << false;
    }

    void delete_noOrCancel_keepsTheRecord()
    {
        QFETCH(bool, no);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        program.messages.Expect(deleteQuestion, no ? Button::No : Button::Cancel);
        Remove(program, key);
        QCOMPARE(program.folder.Read("tarno.xml"), before);
        RecordList entries;
        program.sql.EntryList(entries);
        QCOMPARE(entries.size(), 1U);
    }

    void delete_failing_isReported()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        program.messages.Expect(deleteQuestion, Button::Yes);
        program.operations.Fail("create", ErrorNumber::PathFileAccess);
        program.reports.Expect("cSQL", "EntryDelete", ErrorNumber::PathFileAccess);
        Remove(program, key);
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void delete_oneOfTwoWithTheSameKey_removesTheFirst()
    {
        ProgramWithPlace program;
        program.AddCompleteEntry({{EntryField::AirTemp, "1"}});
        program.AddCompleteEntry({{EntryField::AirTemp, "2"}});
        std::string bytes = program.folder.Read("tarno.xml");
        bytes.replace(bytes.find("<TarnoNo>2<"), 11, "<TarnoNo>1<");
        program.folder.Write("tarno.xml", bytes);
        program.Start();
        program.messages.Expect(deleteQuestion, Button::Yes);
        Remove(program, 1);
        QCOMPARE(program.Stored("tarno.xml").size(), 1U);
        QCOMPARE(program.StoredEntry(1, EntryField::AirTemp), "2");
    }

    void delete_entryWithFewerValues_isRemoved_data()
    {
        QTest::addColumn<int>("values"); // after the key
        QTest::newRow("key only") << 0;
        QTest::newRow("all but the last") << 35;
    }

    void delete_entryWithFewerValues_isRemoved()
    {
        QFETCH(int, values);
        ProgramWithPlace program;
        std::string entry = "<tarno><TarnoNo>1</TarnoNo>";
        for (int value = 0; value < values; ++value) {
            entry += "<v>1</v>";
        }
        program.folder.Write("tarno.xml", "<data>" + entry + "</tarno></data>");
        program.Start();
        program.messages.Expect(deleteQuestion, Button::No);
        Remove(program, 1);
        QCOMPARE(program.Stored("tarno.xml").size(), 1U);
        program.messages.Expect(deleteQuestion, Button::Yes);
        Remove(program, 1);
        QCOMPARE(program.Stored("tarno.xml").size(), 0U);
    }
};

TEST_CLASS(tst_fEntrySave)
#include "tst_fEntrySave.moc"
