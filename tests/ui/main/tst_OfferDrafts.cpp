#include "MainTest.h"
#include "support/DraftTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// The questions about drafts after a crash, and what the answers do.

namespace
{

using Kind = RecordTitle::Kind;

Question DraftQuestion(const char* text)
{
    return {.text = QString::fromUtf8(text),
            .title = QStringLiteral("Changes Not Saved"),
            .icon = Icon::Question,
            .buttons = Buttons::ContinueDiscardLater,
            .byDefault = Button::Continue};
}

constexpr const char* editing =
    "You were editing the trip of 2003-02-05 at Pittwater when Tarno ended. Continue?";

/// A log with one location and one trip, and their drafts.
class ProgramWithDrafts : public TestProgram
{
public:
    ProgramWithDrafts()
    {
        Start();
        AddLocation("Pittwater");
        trip = AddEntry({{EntryField::StartDate, "2003-02-05"},
                         {EntryField::EndDate, "2003-02-06"},
                         {EntryField::LocNo, "1"}});
    }

    StoredTexts LocationTexts() const { return Stored("location.xml").front(); }

    /// Writes a draft of the trip, in which the date and the tide have changed.
    Draft WriteTripDraft()
    {
        const StoredTexts before = StoredEntry(trip);
        Draft draft{Kind::Trip, std::to_string(trip), LogOfDrafts(program), "2003-02-05 21:00", before,
                    before};
        draft.values[EntryField::LowTideHt] = "0.9";
        draft.values[EntryField::StartDate] = "2003-02-04";
        drafts.Write(draft);
        return draft;
    }

    Draft WriteNew(Kind kind, StoredTexts values)
    {
        values[0] = "0";
        const Draft draft{kind, "0", LogOfDrafts(program), "2003-02-05 21:01", std::move(values), {}};
        drafts.Write(draft);
        return draft;
    }

    int trip = 0;
};

void SaveAndClose(const QWidget& editor)
{
    Click(editor, "cmdOK");
    Click(editor, "cmdCancel");
}

/// Expects the question and answers "Later".
void ExpectLater(ProgramWithDrafts& program, const char* text)
{
    program.messages.Expect(DraftQuestion(text), Button::Later);
}

} // namespace

class tst_OfferDrafts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void noDraft_asksNothing()
    {
        ProgramWithDrafts program;
        ShownLog log(program);
        WithoutWindow([&] { log.OfferDrafts(); });
    }

    void later_keepsTheDraft()
    {
        ProgramWithDrafts program;
        const Draft draft = program.WriteTripDraft();
        ShownLog log(program);
        for (int start = 0; start < 2; ++start) {
            ExpectLater(program, editing);
            WithoutWindow([&] { log.OfferDrafts(); });
            QVERIFY(OnlyDraft(program) == draft);
        }
    }

    void discard_removesTheDraft()
    {
        ProgramWithDrafts program;
        program.WriteTripDraft();
        const auto before = program.StoredEntry(program.trip);
        ShownLog log(program);
        program.messages.Expect(DraftQuestion(editing), Button::Discard);
        WithoutWindow([&] { log.OfferDrafts(); });
        QVERIFY(DraftsOf(program).empty());
        QVERIFY(program.StoredEntry(program.trip) == before);
    }

    void continue_opensTheEditor()
    {
        ProgramWithDrafts program;
        program.WriteTripDraft();
        ShownLog log(program);
        program.messages.Expect(DraftQuestion(editing), Button::Continue);
        WhileOpen(
            "fEntry", [&] { log.OfferDrafts(); },
            [&](QDialog& editor) {
                QCOMPARE(Find<QLineEdit>(editor, "txtStart").text(), QStringLiteral("2003-02-04"));
                SaveAndClose(editor);
            });
        QCOMPARE(program.StoredEntry(program.trip, EntryField::LowTideHt), "0.9");
        QVERIFY(DraftsOf(program).empty());
        QCOMPARE(ColumnTexts(log, Column::From), std::vector<std::string>{"2003-02-04"});
        QVERIFY(List(log).isEnabled());
    }

    void continue_editorThatCannotOpen_keepsTheDraft()
    {
        ProgramWithDrafts program;
        const Draft draft = program.WriteNew(Kind::Trip, program.StoredEntry(program.trip));
        program.sql.EntryDelete(static_cast<std::int16_t>(program.trip));
        program.sql.LocationDelete(1);
        ShownLog log(program);
        program.messages.Expect(
            DraftQuestion("You were adding a trip (2003-02-05) when Tarno ended. Continue?"),
            Button::Continue);
        program.messages.ExpectInformation(
            QStringLiteral("You need to add some locations prior to adding log entries!"),
            QStringLiteral("No Locations Entered!"));
        WithoutWindow([&] { log.OfferDrafts(); });
        QVERIFY(OnlyDraft(program) == draft);
    }

    void changedSince_isSaid()
    {
        ProgramWithDrafts program;
        program.WriteTripDraft();
        Record trip;
        program.sql.EntryGet(static_cast<std::int16_t>(program.trip), trip);
        trip.SetText(EntryField::HighTideHt, "2");
        program.sql.EntryUpdate(trip);
        ShownLog log(program);
        ExpectLater(program,
                    "You were editing the trip of 2003-02-05 at Pittwater when Tarno ended. This trip was "
                    "changed after that. If you continue and save, your version replaces it. Continue?");
        log.OfferDrafts();
    }

    void secondDraftOfARecord_hasItsTime()
    {
        ProgramWithDrafts program;
        Draft draft = program.WriteTripDraft();
        draft.number = 2;
        draft.written = "2003-02-05 21:05";
        program.drafts.Write(draft);
        ShownLog log(program);
        ExpectLater(program, editing);
        ExpectLater(program,
                    "You were editing the trip of 2003-02-05 at Pittwater when Tarno ended. This draft is "
                    "from 2003-02-05 21:05. Continue?");
        log.OfferDrafts();
    }

    void deleted_isSaid()
    {
        ProgramWithDrafts program;
        program.WriteTripDraft();
        program.sql.EntryDelete(static_cast<std::int16_t>(program.trip));
        ShownLog log(program);
        program.messages.Expect(
            DraftQuestion("You were editing the trip of 2003-02-05 at Pittwater when Tarno ended. This trip "
                          "was deleted after that. If you continue and save, it is added again. Continue?"),
            Button::Continue);
        WhileOpen(
            "fEntry", [&] { log.OfferDrafts(); }, [](QDialog& editor) { SaveAndClose(editor); });
        QCOMPARE(program.Stored("tarno.xml").size(), std::size_t{1});
        QVERIFY(DraftsOf(program).empty());
    }

    void saved_isRemovedWithoutAQuestion()
    {
        ProgramWithDrafts program;
        Draft draft = program.WriteTripDraft();
        draft.values = draft.before;
        program.drafts.Write(draft);
        ShownLog log(program);
        WithoutWindow([&] { log.OfferDrafts(); });
        QVERIFY(DraftsOf(program).empty());
    }

    void eachKind_isNamed()
    {
        ProgramWithDrafts program;
        program.WriteNew(Kind::Trip, program.StoredEntry(program.trip));
        StoredTexts place = program.LocationTexts();
        Draft edited{Kind::Location, "1", LogOfDrafts(program.program), "2003-02-05 21:02", place, place};
        edited.values[LocationField::LocName] = "Reef";
        program.drafts.Write(edited);
        program.WriteNew(Kind::Location, edited.values);
        ShownLog log(program);
        ExpectLater(program, "You were adding a trip (2003-02-05, Pittwater) when Tarno ended. Continue?");
        ExpectLater(program, "You were adding a location (Reef) when Tarno ended. Continue?");
        ExpectLater(program, "You were editing the location Pittwater when Tarno ended. Continue?");
        WithoutWindow([&] { log.OfferDrafts(); });
        for (const Draft& draft : DraftsOf(program)) {
            program.drafts.Remove(draft);
        }
        place[LocationField::LocName].clear();
        program.WriteNew(Kind::Location, place);
        program.messages.Expect(DraftQuestion("You were adding a location when Tarno ended. Continue?"),
                                Button::Continue);
        WhileOpen(
            "dlgLocMaint", [&] { log.OfferDrafts(); },
            [](QDialog& window) {
                Type(window, "Reef");
                SaveAndClose(window);
            });
        QCOMPARE(program.Stored("location.xml").back()[LocationField::LocName], "Reef");
        QVERIFY(DraftsOf(program).empty());
    }

    void damagedDraftAndOtherLog_areLeftOut()
    {
        ProgramWithDrafts program;
        Draft other = program.WriteTripDraft();
        program.drafts.Remove(other);
        other.dataFolder = "/another/log";
        program.drafts.Write(other);
        program.stateFolder.Write("drafts/draft-trip-1.xml", "<draft><kind>trip</kind>");
        ShownLog log(program);
        WithoutWindow([&] { log.OfferDrafts(); });
        QCOMPARE(program.stateFolder.Read("drafts/draft-trip-1.xml.damaged"), "<draft><kind>trip</kind>");
        QVERIFY(program.drafts.List(other.dataFolder) == std::vector<Draft>{other});
    }

    void draftsOfARunningProgram_areNotOffered()
    {
        ProgramWithDrafts program;
        const Draft draft = program.WriteTripDraft();
        ShownLog log(program);
        {
            Drafts running(program.stateFolder.PathOf("drafts"), program.draftOperations);
            QVERIFY(running.Claim(draft.dataFolder));
            WithoutWindow([&] { log.OfferDrafts(); });
        }
        ExpectLater(program, editing);
        WithoutWindow([&] { log.OfferDrafts(); });
        QVERIFY(OnlyDraft(program) == draft);
    }

    void unreadableLog_keepsTheDrafts()
    {
        ProgramWithDrafts program;
        const Draft draft = program.WriteTripDraft();
        program.folder.Write("location.xml", "<data>");
        program.sql.Init();
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet); // by the window itself
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        fTarno log(program.program);
        WithoutWindow([&] { log.OfferDrafts(); });
        QVERIFY(OnlyDraft(program) == draft);
    }
};

TEST_CLASS(tst_OfferDrafts)
#include "tst_OfferDrafts.moc"
