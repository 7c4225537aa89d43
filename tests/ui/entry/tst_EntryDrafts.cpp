#include "EntryTest.h"
#include "support/DraftTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::chrono_literals;

// The draft of the trip in the editor: when it is written and removed, and what is in it.

namespace
{

/// Like Edit, but a draft is written only when the test wants it.
template <typename Steps>
void EditHeld(TestProgram& program, int key, Steps&& steps)
{
    Edit(program, key, [&](QDialog& editor) {
        HoldDraft(editor);
        steps(editor);
    });
}

void ExpectNoToSaving(TestProgram& program)
{
    program.messages.Expect(saveQuestion, Button::No);
}

/// Closes without saving.
void CloseChanged(TestProgram& program, QWidget& editor)
{
    ExpectNoToSaving(program);
    Close(editor);
}

/// Ends the window as a crash does: nothing of it runs any more.
void Crash(TestProgram& program, QDialog& editor)
{
    const std::vector<Draft> drafts = DraftsOf(program);
    editor.done(QDialog::Rejected);
    for (const Draft& draft : drafts) {
        program.drafts.Write(draft);
    }
}

template <typename Steps>
void Continue(TestProgram& program, const Draft& draft, Steps&& steps)
{
    WhileOpen(
        "fEntry", [&] { fEntry(program.program, nullptr).ContinueDraft(draft); },
        [&](QDialog& editor) {
            HoldDraft(editor);
            steps(editor);
        });
}

/// Types into a trip and crashes; returns the draft.
Draft CrashedDraft(TestProgram& program, int key, const char* box = "txtTideLowHt", const char* text = "0.9")
{
    EditHeld(program, key, [&](QDialog& editor) {
        Enter(editor, box, text);
        PassDraftTime(editor);
        Crash(program, editor);
    });
    return OnlyDraft(program);
}

} // namespace

class tst_EntryDrafts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void timer_waitsTwentySecondsAfterTheFirstChange()
    {
        ProgramWithPlace program;
        Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            QTimer& timer = DraftTimer(editor);
            QCOMPARE(timer.intervalAsDuration(), std::chrono::milliseconds(20s));
            QVERIFY(timer.isSingleShot());
            HoldDraft(editor);
            Press(editor, Qt::Key_Tab);
            ClickPage(editor, 2);
            QVERIFY(!timer.isActive());
            Enter(editor, "txtTideLowHt", "0.9");
            QVERIFY(timer.isActive());
            PassDraftTime(editor);
            QVERIFY(!timer.isActive());
            CloseChanged(program, editor);
        });
    }

    void changed_isWrittenWithTheTextInTheFocusedBox()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.clock.timeOfDay = 18h + 5min;
        EditHeld(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideHighHt", "1.9");
            Enter(editor, "txtTideLowHt", "0.9");
            QVERIFY(DraftsOf(program).empty());
            PassDraftTime(editor);
            const Draft draft = OnlyDraft(program);
            StoredTexts expected = program.StoredEntry(key);
            QVERIFY(draft.before == expected);
            expected[EntryField::HighTideHt] = "1.9";
            expected[EntryField::LowTideHt] = "0.9";
            QVERIFY(draft.values == expected);
            QCOMPARE(draft.key, std::to_string(key));
            QCOMPARE(draft.written, "2003-02-05 18:05");
            // nothing of this is visible
            QCOMPARE(Focused(editor), "txtTideLowHt");
            QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.4");

            Type(editor, "5");
            QCOMPARE(DraftValue(program, EntryField::LowTideHt), "0.9");
            PassDraftTime(editor);
            QCOMPARE(DraftValue(program, EntryField::LowTideHt), "0.95");
            CloseChanged(program, editor);
        });
        QVERIFY(program.draftOperations.HasWritten());
    }

    void everyKindOfControl_isInTheDraft()
    {
        ProgramWithPlace program;
        EditHeld(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtObbos", "typed");
            Press(editor, Qt::Key_Return);
            Type(editor, "on");
            PassDraftTime(editor);
            QCOMPARE(DraftValue(program, EntryField::Obbos), "typed~CL~on");
            GoTo(editor, "optAction_1");
            PassDraftTime(editor);
            QCOMPARE(DraftValue(program, EntryField::FishAction), "1");
            Find<QLineEdit>(editor, "txtMoon").setText(QStringLiteral("33"));
            PassDraftTime(editor);
            QCOMPARE(DraftValue(program, EntryField::MoonPhase), "-33");
            CloseChanged(program, editor);
        });
    }

    void refusedText_isLeftOut_data()
    {
        QTest::addColumn<std::string>("box");
        QTest::addColumn<std::string>("text");
        QTest::addColumn<int>("field");
        QTest::addColumn<std::string>("kept");
        const auto row = [](const char* name, const char* box, const char* text, EntryField::Position field,
                            const char* kept) {
            QTest::newRow(name) << std::string(box) << std::string(text) << static_cast<int>(field)
                                << std::string(kept);
        };
        row("date", "txtEnd", "2003-02-3", EntryField::EndDate, "2003-02-03");
        row("no date", "txtEnd", "2003-02-31", EntryField::EndDate, "2003-02-06");
        row("time", "txtTEnd", "7:5", EntryField::EndTime, "07:05");
        row("time without minutes", "txtTEnd", "07:", EntryField::EndTime, "11:45");
        row("time that is no number", "txtTEnd", ".:.", EntryField::EndTime, "11:45");
    }

    void refusedText_isLeftOut()
    {
        QFETCH(std::string, box);
        QFETCH(std::string, text);
        QFETCH(int, field);
        QFETCH(std::string, kept);
        ProgramWithPlace program;
        EditHeld(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtTideHighHt", "1.9");
            Enter(editor, box.c_str(), text.c_str());
            PassDraftTime(editor); // reports nothing
            QCOMPARE(DraftValue(program, static_cast<std::size_t>(field)), kept);
            QCOMPARE(DraftValue(program, EntryField::HighTideHt), "1.9");
            QCOMPARE(BoxText(editor, box.c_str()), text);
            QVERIFY(!IsRefused(editor, box.c_str()));
            Enter(editor, box.c_str(), field == EntryField::EndTime ? "08:00" : "2003-02-07");
            CloseChanged(program, editor);
        });
    }

    void unchanged_writesNothing()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        EditHeld(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.5");
            Enter(editor, "txtTideLowHt", "0.4"); // as before
            PassDraftTime(editor);
            QVERIFY(DraftsOf(program).empty());
            Close(editor);
        });
        EditHeld(program, 0, [&](QDialog& editor) {
            Press(editor, Qt::Key_Tab);
            QVERIFY(!DraftTimer(editor).isActive());
            Close(editor);
        });
        program.messages.Expect(deleteQuestion, Button::Yes);
        WithoutWindow(
            [&] { fEntry(program.program, nullptr).SetData(static_cast<std::int16_t>(key), true); });
        QVERIFY(program.draftOperations.Steps().empty());
    }

    void changedBack_removesTheDraft()
    {
        ProgramWithPlace program;
        EditHeld(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.5");
            PassDraftTime(editor);
            Enter(editor, "txtTideLowHt", "0.4");
            PassDraftTime(editor);
            QVERIFY(DraftsOf(program).empty());
            Close(editor);
        });
    }

    void savedOrClosed_removesTheDraft()
    {
        ProgramWithPlace program;
        for (const int key : {program.AddCompleteEntry(), 0}) {
            EditHeld(program, key, [&](QDialog& editor) {
                Enter(editor, "txtTideLowHt", "0.9");
                PassDraftTime(editor);
                QCOMPARE(OnlyDraft(program).key, std::to_string(key));
                QCOMPARE(OnlyDraft(program).before.empty(), key == 0);
                Save(editor);
                QVERIFY(DraftsOf(program).empty());
                Enter(editor, "txtTideLowHt", "1.0");
                PassDraftTime(editor);
                QVERIFY(OnlyDraft(program).key != "0");
                QCOMPARE(OnlyDraft(program).before[EntryField::LowTideHt], "0.9");
                CloseChanged(program, editor);
            });
            QVERIFY(DraftsOf(program).empty());
        }
    }

    void nextTrip_hasADraftOfItsOwn()
    {
        ProgramWithPlace program;
        EditHeld(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            PassDraftTime(editor);
            Press(editor, Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(DraftsOf(program).empty());
            Enter(editor, "txtTideLowHt", "1.1");
            PassDraftTime(editor);
            QCOMPARE(OnlyDraft(program).key, "0");
            CloseChanged(program, editor);
        });
        QVERIFY(DraftsOf(program).empty());
    }

    void failedSave_keepsTheDraft()
    {
        ProgramWithPlace program;
        EditHeld(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.9");
            PassDraftTime(editor);
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
            Save(editor);
            QCOMPARE(DraftValue(program, EntryField::LowTideHt), "0.9");
            Save(editor);
            QVERIFY(DraftsOf(program).empty());
            Close(editor);
        });
    }

    void draftThatCannotBeWritten_isNotReported()
    {
        ProgramWithPlace program;
        EditHeld(program, program.AddCompleteEntry(), [&](QDialog& editor) {
            program.draftOperations.Fail("create", ErrorNumber::DiskFull);
            Enter(editor, "txtTideLowHt", "0.9");
            PassDraftTime(editor);
            QVERIFY(DraftsOf(program).empty());
            program.draftOperations.ClearFailures();
            Type(editor, "5");
            PassDraftTime(editor);
            QCOMPARE(DraftValue(program, EntryField::LowTideHt), "0.95");
            program.draftOperations.Fail("remove", ErrorNumber::PermissionDenied);
            CloseChanged(program, editor);
        });
    }

    void draftOfAnEarlierRun_isKept()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const Draft earlier = CrashedDraft(program, key);
        EditHeld(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "0.7");
            PassDraftTime(editor);
            QCOMPARE(DraftsOf(program).size(), std::size_t{2});
            CloseChanged(program, editor);
        });
        QVERIFY(OnlyDraft(program) == earlier);
    }

    void draftsOfTwoLogs_areApart()
    {
        ProgramWithPlace first;
        ProgramWithPlace second;
        const Program sharing{second.programFolder, second.sql,        second.descs,   second.settings,
                              second.clock,         second.messages,   second.files,   second.programs,
                              second.printers,      second.operations, second.windows, first.drafts};
        const int key = first.AddCompleteEntry();
        QCOMPARE(second.AddCompleteEntry(), key);
        CrashedDraft(first, key);
        WhileOpen(
            "fEntry", [&] { fEntry(sharing, nullptr).SetData(static_cast<std::int16_t>(key), false); },
            [&](QDialog& editor) {
                HoldDraft(editor);
                Enter(editor, "txtTideLowHt", "0.7");
                PassDraftTime(editor);
                QCOMPARE(first.drafts.List(LogOfDrafts(sharing)).size(), std::size_t{1});
                CloseChanged(second, editor);
            });
        QCOMPARE(DraftValue(first, EntryField::LowTideHt), "0.9");
    }

    void continued_showsTheDraftAsChanged()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const Draft draft = CrashedDraft(program, key, "txtObbos", "typed");
        QCOMPARE(program.StoredEntry(key, EntryField::Obbos), "First~CL~~CL~Last");
        Continue(program, draft, [&](QDialog& editor) {
            QCOMPARE(LinesText(editor, "txtObbos"), "typed");
            QCOMPARE(BoxText(editor, "txtTideLowHt"), "0.4");
            QVERIFY(IsSaveEnabled(editor));
            QCOMPARE(Focused(editor), "txtStart");
            Enter(editor, "txtTideLowHt", "0.9");
            PassDraftTime(editor);
            QCOMPARE(DraftValue(program, EntryField::LowTideHt), "0.9"); // replaced
            SaveAndClose(editor);
        });
        StoredTexts expected = draft.values;
        expected[EntryField::LowTideHt] = "0.9";
        QVERIFY(program.StoredEntry(key) == expected);
        QVERIFY(DraftsOf(program).empty());
    }

    void continued_closed_asksAndRemovesTheDraft()
    {
        ProgramWithPlace program;
        const Draft draft = CrashedDraft(program, program.AddCompleteEntry());
        Continue(program, draft, [&](QDialog& editor) { CloseChanged(program, editor); });
        QVERIFY(DraftsOf(program).empty());
    }

    void continued_newTrip_canBeSavedAsItIs()
    {
        ProgramWithPlace program;
        program.AddLocation("Albany");
        EditHeld(program, 0, [&](QDialog& editor) {
            Enter(editor, "txtTEnd", "11:00");
            Enter(editor, "txtCaught", "3 bream");
            ClickPage(editor, 0);
            Find<QComboBox>(editor, "cboLocation").setFocus();
            Press(editor, Qt::Key_Down); // not left yet
            PassDraftTime(editor);
            Crash(program, editor);
        });
        const Draft draft = OnlyDraft(program);
        Continue(program, draft, [&](QDialog& editor) {
            QCOMPARE(Place(editor), "Albany");
            QCOMPARE(BoxText(editor, "txtTEnd"), "11:00");
            QCOMPARE(LinesText(editor, "txtCaught"), "3 bream");
            QVERIFY(IsSaveEnabled(editor));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(1, EntryField::LocNo), "2");
        QCOMPARE(program.StoredEntry(1, EntryField::FishCaught), "3 bream");
        QVERIFY(!program.StoredEntry(1, EntryField::Major1).empty());
        QVERIFY(DraftsOf(program).empty());
    }

    void continued_deletedTrip_isANewOne()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const int other = program.AddCompleteEntry();
        const Draft draft = CrashedDraft(program, key);
        program.sql.EntryDelete(static_cast<std::int16_t>(key));
        Continue(program, draft, [&](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtTideLowHt"), "0.9");
            Enter(editor, "txtTideLowHt", "1.0");
            PassDraftTime(editor);
            QCOMPARE(OnlyDraft(program).key, std::to_string(key)); // still the draft of the deleted trip
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(other + 1, EntryField::LowTideHt), "1.0");
        QVERIFY(DraftsOf(program).empty());
    }

    void continued_changedTrip_replacesIt()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const Draft draft = CrashedDraft(program, key);
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideHighHt", "2.2");
            SaveAndClose(editor);
        });
        Continue(program, draft, [&](QDialog& editor) {
            QCOMPARE(BoxText(editor, "txtTideHighHt"), "1.6 m");
            SaveAndClose(editor);
        });
        QVERIFY(program.StoredEntry(key) == draft.values);
    }

    void dateInTheFocusedBox_isCalculatedWhenContinued()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        std::vector<std::string> expected;
        Edit(program, key, [&](QDialog& editor) { // without a crash
            Enter(editor, "txtStart", "2003-02-04");
            SaveAndClose(editor);
            expected = program.StoredEntry(key);
        });
        const int second = program.AddCompleteEntry();
        const Draft draft = CrashedDraft(program, second, "txtStart", "2003-02-04");
        QCOMPARE(draft.values[EntryField::StartDate], "2003-02-04");
        Continue(program, draft, [&](QDialog& editor) { SaveAndClose(editor); });
        expected[0] = std::to_string(second);
        QVERIFY(program.StoredEntry(second) == expected);
    }
};

TEST_CLASS(tst_EntryDrafts)
#include "tst_EntryDrafts.moc"
