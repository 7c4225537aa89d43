#include "safety/ChildProgram.h"
#include "support/DraftTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// What is typed survives a kill.

class tst_DraftKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void killedWhileTyping_leavesADraft()
    {
        TestProgram program;
        program.UseSample();
        program.Start();
        ChildProgram typist({TARNO_TYPIST, program.folder.Path(), program.stateFolder.PathOf("drafts")});
        QCOMPARE(typist.Line(), std::optional<std::string>("written"));
        typist.Kill();
        const Draft draft = OnlyDraft(program);
        QVERIFY(StateOf(draft, program.sql) == DraftState::Unchanged);
        QCOMPARE(DraftValue(program, EntryField::Obbos), "A great day");
        QVERIFY(draft.before == program.StoredEntry(1));
    }
};

TEST_CLASS(tst_DraftKills)
#include "tst_DraftKills.moc"
