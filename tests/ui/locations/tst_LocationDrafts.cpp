#include "LocationTest.h"
#include "support/DraftTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// The draft of the location in its window.

class tst_LocationDrafts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void changed_isWritten()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [&](QDialog& window) {
            HoldDraft(window);
            Retype(window, "txtLatt", "-33.9");
            PassDraftTime(window);
            QCOMPARE(DraftValue(program, LocationField::LocLatt), "-33.9");
            ClickMark(window, "chkDST");
            PassDraftTime(window);
            QCOMPARE(DraftValue(program, LocationField::LocDST), "0");
            Retype(window, "txtDescription", "Shallow");
            PassDraftTime(window);
            QCOMPARE(DraftValue(program, LocationField::LocDescription), "Shallow");
            QVERIFY(OnlyDraft(program).before == StoredLocation(program, 1));
            Click(window, "cmdOK");
            QVERIFY(DraftsOf(program).empty());
            Click(window, "cmdCancel");
        });
    }

    void unchanged_writesNothing()
    {
        ProgramWithLocation program;
        EditLocation(program, 0, [&](QDialog& window) {
            Press(window, Qt::Key_Tab);
            QVERIFY(!DraftTimer(window).isActive());
            Click(window, "cmdCancel");
        });
        program.messages.Expect(deleteLocationQuestion, Button::Yes);
        WithoutWindow([&] { dlgLocMaint(program.program, nullptr).SetData(1, true); });
        QVERIFY(program.draftOperations.Steps().empty());
    }

    void continued_showsTheDraftAsChanged_data()
    {
        QTest::addColumn<bool>("isNew");
        QTest::newRow("new") << true;
        QTest::newRow("changed") << false;
    }

    void continued_showsTheDraftAsChanged()
    {
        QFETCH(bool, isNew);
        ProgramWithLocation program;
        StoredTexts values = StoredLocation(program, 1);
        Draft draft{
            RecordTitle::Kind::Location,   isNew ? "0" : "1", LogOfDrafts(program.program), "", values,
            isNew ? StoredTexts() : values};
        draft.values[LocationField::LocName] = "Reef~CL~north";
        draft.values[LocationField::LocAccess] = "2";
        draft.values[0] = draft.key;
        program.drafts.Write(draft);
        WhileOpen(
            "dlgLocMaint", [&] { dlgLocMaint(program.program, nullptr).ContinueDraft(draft); },
            [&](QDialog& window) {
                QCOMPARE(LinesText(window, "txtLocName"), "Reef\nnorth");
                QVERIFY(IsChecked(window, "optAccess_2"));
                QVERIFY(IsChecked(window, "chkDST"));
                QCOMPARE(Focused(window), "txtLocName");
                Click(window, "cmdOK");
                Click(window, "cmdCancel");
            });
        draft.values[0] = isNew ? "2" : "1";
        QVERIFY(StoredLocation(program, isNew ? 2 : 1) == draft.values);
        QVERIFY(DraftsOf(program).empty());
    }
};

TEST_CLASS(tst_LocationDrafts)
#include "tst_LocationDrafts.moc"
