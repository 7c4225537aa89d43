#include "FindTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// Completion in the find bar.

namespace
{

std::string Query(const QWidget& window)
{
    return ToUtf8(FindBox(window).text());
}

void OpenBar(const QWidget& window)
{
    Press(window, Qt::Key_F, Qt::ControlModifier);
}

enum class Taking { Tab, Return, Click };

/// Takes the first proposal.
void Take(QWidget& window, Taking way)
{
    if (way == Taking::Click) {
        ClickProposal(window, 0);
        return;
    }
    Press(window, Qt::Key_Down);
    Press(window, way == Taking::Tab ? Qt::Key_Tab : Qt::Key_Return);
}

} // namespace

Q_DECLARE_METATYPE(Taking)

class tst_FindCompletion : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void typing_proposes_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Texts>("proposed");
        QTest::newRow("field name") << "cau" << Texts{"caught:"};
        QTest::newRow("excluded field name") << "-cau" << Texts{"caught:"};
        QTest::newRow("second term") << "squid cau" << Texts{"caught:"};
        QTest::newRow("value") << "bait:s" << Texts{"Squid"};
        QTest::newRow("value of several words") << "place:l" << Texts{"\"Lake Eucumbene\""};
        QTest::newRow("within quotation marks") << "place:\"la" << Texts{"\"Lake Eucumbene\""};
        QTest::newRow("nothing") << "xyz" << Texts{};
        QTest::newRow("complete") << "bait:squid" << Texts{};
    }

    void typing_proposes()
    {
        QFETCH(QString, typed);
        QFETCH(Texts, proposed);
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, qPrintable(typed));
        QCOMPARE(ProposedTexts(window), proposed);
        if (!proposed.empty()) {
            QCOMPARE(SelectedProposal(window), -1); // none is selected yet
        }
    }

    void taken_isPartOfTheQuery_data()
    {
        QTest::addColumn<Taking>("way");
        QTest::newRow("Tab") << Taking::Tab;
        QTest::newRow("Return") << Taking::Return;
        QTest::newRow("click") << Taking::Click;
    }

    void taken_isPartOfTheQuery()
    {
        QFETCH(Taking, way);
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "bai");
        Take(window, way);
        QCOMPARE(Query(window), "bait:");
        QCOMPARE(window.focusWidget(), &FindBox(window));
        Type(window, "wo"); // typing goes on
        Take(window, way);
        QCOMPARE(Query(window), "bait:Worm");
        QCOMPARE(Keys(window), Texts{"K2"});
        QVERIFY(Proposals(window) == nullptr);
    }

    void taken_withQuotationMarks()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "trout place:\"lak");
        Take(window, Taking::Tab);
        QCOMPARE(Query(window), "trout place:\"Lake Eucumbene\"");
        QCOMPARE(Keys(window), Texts{"K2"});
    }

    void taken_behindTextsThatAreNotAscii()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        FindBox(window).setText(QStringLiteral(u"-\u00E9\U0001F41F "));
        Type(window, "bait:wo");
        Take(window, Taking::Tab);
        QCOMPARE(FindBox(window).text(), QStringLiteral(u"-\u00E9\U0001F41F bait:Worm"));
    }

    void enter_withoutSelection_goesToTheList()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "bait:s");
        QVERIFY(Proposals(window) != nullptr);
        WithoutWindow([&] { Press(window, Qt::Key_Return); });
        QCOMPARE(Query(window), "bait:s");
        QCOMPARE(window.focusWidget(), &List(window));
        QVERIFY(Proposals(window) == nullptr);
    }

    void up_selectsTheLastProposal()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "b");
        const Texts proposed = ProposedTexts(window);
        QVERIFY(!proposed.empty());
        Press(window, Qt::Key_Up);
        QCOMPARE(SelectedProposal(window), static_cast<int>(proposed.size()) - 1);
    }

    void escape_closesProposalsThenTheBarThenAsks()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "bait:s");
        Press(window, Qt::Key_Escape);
        QVERIFY(Proposals(window) == nullptr);
        QVERIFY(IsBarOpen(window));
        QCOMPARE(Query(window), "bait:s");
        Press(window, Qt::Key_Escape);
        QVERIFY(!IsBarOpen(window));
        program.messages.Expect(exitQuestion, Button::No);
        Press(window, Qt::Key_Escape);
    }

    void tab_withoutSelection_leavesTheBox()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "bait:s");
        Press(window, Qt::Key_Tab);
        QCOMPARE(Query(window), "bait:s");
        QVERIFY(window.focusWidget() != &FindBox(window));
        QVERIFY(Proposals(window) == nullptr);
    }

    void del_whileProposalsAreOpen_touchesNoTrip()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "bait:s");
        WithoutWindow([&] { Press(window, Qt::Key_Delete); });
        QCOMPARE(List(window).RowCount(), 2);
    }

    void closedByItsButton_leavesNoProposals()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "bait:s");
        Click(window, "cmdFindClose");
        QVERIFY(Proposals(window) == nullptr);
        QVERIFY(!IsBarOpen(window));
        OpenBar(window);
        QVERIFY(Proposals(window) == nullptr);
    }

    void renamedLocation_isProposed()
    {
        FourTrips program;
        ShownLog window(program);
        OpenBar(window);
        Type(window, "place:p");
        QCOMPARE(ProposedTexts(window), Texts{"Pittwater"});
        CloseProposals(window);
        WhileOpen(
            "fLocs", [&] { window.Locations(); },
            [&](QDialog& listing) {
                Record place;
                program.sql.LocationGet(1, place);
                place.SetText(LocationField::LocName, "Palm Beach");
                program.sql.LocationUpdate(place);
                listing.close();
            });
        OpenBar(window);
        Type(window, "place:p");
        QCOMPARE(ProposedTexts(window), Texts{"\"Palm Beach\""});
    }
};

TEST_CLASS(tst_FindCompletion)
#include "tst_FindCompletion.moc"
