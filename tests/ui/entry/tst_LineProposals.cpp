#include "PickListTest.h"
#include "support/Proposals.h"
#include "support/TestClass.h"

using namespace Tarno;

// The lines that are proposed while the user types on the page "Comments".

namespace
{

using Texts = std::vector<std::string>;

/// A program with short pick lists and several trips.
class ProgramWithLines : public ProgramWithLists
{
public:
    ProgramWithLines()
    {
        AddEntry({{EntryField::LocNo, "1"}, {EntryField::BaitUsed, "Squid strips~CL~Prawn"}});
        AddEntry({{EntryField::LocNo, "1"}, {EntryField::BaitUsed, "Prawn~CL~Peeled prawn"}});
        AddEntry({{EntryField::LocNo, "1"}, {EntryField::BaitUsed, "  ~CL~Pipi"}});
        AddEntry({{EntryField::LocNo, "1"},
                  {EntryField::TargetSpecies, "Nud\xC3\xA9l"},
                  {EntryField::FishCaught, "3 bream"},
                  {EntryField::Method, "Anchored"}});
    }

    /// Opens the editor for the entry whose boxes are empty and focuses `box`.
    template <typename Steps>
    void EditBox(const char* box, Steps&& steps)
    {
        Edit(*this, entry, [&](QDialog& editor) {
            GoTo(editor, box);
            steps(editor);
            if (editor.isVisible()) {
                messages.Expect(saveQuestion, Button::No);
                Close(editor);
            }
        });
    }
};

/// Returns what is proposed for `typed` in `box`.
Texts ProposedFor(ProgramWithLines& program, const char* box, const char* typed)
{
    Texts proposed;
    program.EditBox(box, [&](QDialog& editor) {
        Type(editor, typed);
        proposed = ProposedTexts(editor);
        CloseProposals(editor);
    });
    return proposed;
}

} // namespace

class tst_LineProposals : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void proposals_forABox_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Texts>("proposed");
        // frequent lines first, then the others in alphabetical order, then those that only contain the text
        QTest::newRow("frequent first") << "txtBait"
                                        << "p" << Texts{"Prawn", "Peeled prawn", "Pipi", "Squid strips"};
        QTest::newRow("starts before contains") << "txtBait"
                                                << "pr" << Texts{"Prawn", "Peeled prawn"};
        QTest::newRow("pick list after trips") << "txtBait"
                                               << "squ" << Texts{"Squid strips", "Squid"};
        QTest::newRow("complete line") << "txtBait"
                                       << "prawn" << Texts{};
        QTest::newRow("complete, nothing else") << "txtBait"
                                                << "pipi" << Texts{};
        QTest::newRow("upper case") << "txtBait"
                                    << "PIP" << Texts{"Pipi"};
        QTest::newRow("accents") << "txtTarget"
                                 << "nude" << Texts{"Nud\xC3\xA9l"};
        QTest::newRow("pick list only") << "txtTarget"
                                        << "sna" << Texts{"Snapper"};
        QTest::newRow("caught") << "txtCaught"
                                << "bre" << Texts{"Bream", "3 bream"};
        QTest::newRow("methods") << "txtMethods"
                                 << "an" << Texts{"Anchored"};
        QTest::newRow("unknown") << "txtBait"
                                 << "xyz" << Texts{};
        QTest::newRow("blanks") << "txtBait"
                                << "  " << Texts{};
        QTest::newRow("leading blanks") << "txtBait"
                                        << "  pip" << Texts{"Pipi"};
    }

    void proposals_forABox()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(Texts, proposed);
        ProgramWithLines program;
        QCOMPARE(ProposedFor(program, box.toLatin1(), typed.toLatin1()), proposed);
    }

    void sameLine_isProposedOnce()
    {
        ProgramWithLines program;
        program.folder.Write("Bait.txt", "PIPI\r\n  Pipi  \r\nPipis\r\n");
        QCOMPARE(ProposedFor(program, "txtBait", "pip"), (Texts{"Pipi", "Pipis"}));
    }

    void manyLines_areLimited()
    {
        ProgramWithLines program;
        std::string lines;
        for (int line = 100; line < 150; ++line) {
            lines += "Lure " + std::to_string(line) + "\r\n";
        }
        program.folder.Write("Bait.txt", lines);
        QCOMPARE(ProposedFor(program, "txtBait", "lure").size(), std::size_t{20});
    }

    void missingPickList_proposesTheLinesOfTrips()
    {
        ProgramWithLines program;
        QVERIFY(QFile::remove(FromUtf8(program.folder.PathOf("Bait.txt"))));
        QCOMPARE(ProposedFor(program, "txtBait", "squ"), Texts{"Squid strips"});
    }

    void textWithinTheLine_proposesNothing()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "qui");
            QVERIFY(Proposals(editor) != nullptr);
            Press(editor, Qt::Key_Home);
            Type(editor, "s");
            QVERIFY(Proposals(editor) == nullptr);
            QCOMPARE(LinesText(editor, "txtBait"), "squi");
        });
    }

    void emptyLine_proposesNothing()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "p");
            Press(editor, Qt::Key_Backspace);
            QVERIFY(Proposals(editor) == nullptr);
            Type(editor, "x");
        });
    }

    void taken_replacesTheLine_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Tab") << static_cast<int>(Qt::Key_Tab);
        QTest::newRow("Return") << static_cast<int>(Qt::Key_Return);
        QTest::newRow("click") << 0;
    }

    void taken_replacesTheLine()
    {
        QFETCH(int, key);
        ProgramWithLines program;
        Edit(program, program.entry, [&](QDialog& editor) {
            GoTo(editor, "txtBait");
            Type(editor, "Worm");
            Press(editor, Qt::Key_Return);
            Type(editor, "squ");
            if (key == 0) {
                ClickProposal(editor, 1);
            } else {
                Press(editor, Qt::Key_Down);
                Press(editor, Qt::Key_Down);
                Press(editor, static_cast<Qt::Key>(key));
            }
            QCOMPARE(LinesText(editor, "txtBait"), "Worm\nSquid");
            QCOMPARE(Focused(editor), "txtBait");
            Press(editor, Qt::Key_Return);
            Type(editor, "x");
            CloseProposals(editor);
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::BaitUsed), "Worm~CL~Squid~CL~x");
    }

    void enter_withoutSelection_startsANewLine()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "pr");
            QVERIFY(Proposals(editor) != nullptr);
            Press(editor, Qt::Key_Return);
            QCOMPARE(LinesText(editor, "txtBait"), "pr\n");
            QVERIFY(Proposals(editor) == nullptr);
        });
    }

    void escape_closesTheListOnly()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "pr");
            Press(editor, Qt::Key_Escape);
            QVERIFY(Proposals(editor) == nullptr);
            QVERIFY(editor.isVisible());
            QCOMPARE(LinesText(editor, "txtBait"), "pr");
        });
    }

    void tab_withoutSelection_leavesTheBox()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "pr");
            Press(editor, Qt::Key_Tab);
            QVERIFY(Proposals(editor) == nullptr);
            QVERIFY(Focused(editor) != "txtBait");
            QCOMPARE(LinesText(editor, "txtBait"), "pr");
        });
    }

    void altDown_opensThePickList()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "pr");
            QVERIFY(Proposals(editor) != nullptr);
            Press(editor, Qt::Key_Down, Qt::AltModifier);
            QVERIFY(Proposals(editor) == nullptr);
            QVERIFY(IsOpen(editor));
            Press(editor, Qt::Key_Escape);
            QVERIFY(!IsOpen(editor));
        });
    }

    void clickElsewhere_closesTheList()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "pr");
            Click(editor, "txtMethods");
            QVERIFY(Proposals(editor) == nullptr);
            Click(editor, "txtBait");
            Type(editor, "a");
            QVERIFY(Proposals(editor) != nullptr);
            ClickPage(editor, 0);
            QVERIFY(Proposals(editor) == nullptr);
        });
    }

    void nextTrip_knowsTheLinesOfTheOneBefore()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [](QDialog& editor) {
            Type(editor, "Bloodworm");
            Press(editor, Qt::Key_Return, Qt::ControlModifier);
            GoTo(editor, "txtBait");
            Type(editor, "blo");
            QCOMPARE(ProposedTexts(editor), Texts{"Bloodworm"});
            CloseProposals(editor);
        });
        QCOMPARE(program.StoredEntry(program.entry, EntryField::BaitUsed), "Bloodworm");
    }

    void everyBox_hasItsOwnLines()
    {
        ProgramWithLines program;
        program.EditBox("txtBait", [&](QDialog& editor) {
            Type(editor, "cas");
            QCOMPARE(ProposedTexts(editor), Texts{});
            GoTo(editor, "txtMethods");
            Type(editor, "cas");
            QCOMPARE(ProposedTexts(editor), Texts{"Casting"});
            CloseProposals(editor);
        });
    }

    void otherBoxes_proposeNothing()
    {
        ProgramWithLines program;
        program.EditBox("txtObbos", [](QDialog& editor) {
            Press(editor, Qt::Key_End, Qt::ControlModifier);
            Press(editor, Qt::Key_Return);
            Type(editor, "pr");
            QVERIFY(Proposals(editor) == nullptr);
        });
    }
};

TEST_CLASS(tst_LineProposals)
#include "tst_LineProposals.moc"
