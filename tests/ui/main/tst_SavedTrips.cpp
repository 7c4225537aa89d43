#include "FindTest.h"
#include "support/TestClass.h"

#include <QPlainTextEdit>
#include <QTabWidget>

using namespace Tarno;

// Trips that are saved while a query restricts the list, and the selection after saving.

namespace
{

/// Replaces the bait of the trip in the editor by typing.
void EnterBait(QDialog& editor, const char* bait)
{
    Find<QTabWidget>(editor, "sstEntry").setCurrentIndex(2);
    Find<QPlainTextEdit>(editor, "txtBait").setFocus();
    Press(editor, Qt::Key_A, Qt::ControlModifier);
    Press(editor, Qt::Key_Backspace);
    Type(editor, bait);
    CloseProposals(editor);
}

void SaveWithBait(QDialog& editor, const char* bait)
{
    EnterBait(editor, bait);
    Click(editor, "cmdOK");
    Click(editor, "cmdCancel");
}

const QString remark = QStringLiteral("You have just saved this trip. The search does not find it.");

} // namespace

class tst_SavedTrips : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void editedTrip_notFound_staysShown()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WhileOpen(
            "fEntry", [&] { Press(window, Qt::Key_F2); },
            [](QDialog& editor) { SaveWithBait(editor, "prawn"); });
        QCOMPARE(program.StoredEntry(1, EntryField::BaitUsed), "prawn");
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
        QCOMPARE(MarkedKeys(window), Texts{"K1"});
        QCOMPARE(Selected(window), "K1");
        QCOMPARE(Count(window), "1 of 4 trips, and 1 just saved");
        const QModelIndex marked = List(window).model()->index(0, Column::Location);
        QCOMPARE(marked.data(Qt::ToolTipRole).toString(), remark);
        QCOMPARE(marked.data(Qt::AccessibleDescriptionRole).toString(), remark);
        QVERIFY(!marked.siblingAtRow(1).data(Qt::ToolTipRole).isValid());
    }

    void editedTrip_found_isNotMarked()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WhileOpen(
            "fEntry", [&] { Press(window, Qt::Key_F2); },
            [](QDialog& editor) { SaveWithBait(editor, "old squid"); });
        QCOMPARE(MarkedKeys(window), Texts());
        QCOMPARE(Count(window), "2 of 4 trips");
    }

    /// The calendar is closed after a trip was saved there that the query does not find.
    void tripSavedInTheCalendar_staysShown()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WhileOpen(
            "fCalendar", [&] { Press(window, Qt::Key_K, Qt::ControlModifier); },
            [](QDialog& calendar) {
                WhileOpen(
                    "fEntry", [&] { Click(calendar, "cmdNewTrip"); },
                    [](QDialog& editor) {
                        Click(editor, "cmdOK");
                        Click(editor, "cmdCancel");
                    });
                Click(calendar, "cmdClose");
            });
        QCOMPARE(Keys(window), (Texts{"K1", "K3", "K5"}));
        QCOMPARE(MarkedKeys(window), Texts{"K5"});
        QCOMPARE(Selected(window), "K5");
    }

    void savedTrip_isHiddenWhenTheQueryChanges()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squi");
        WhileOpen(
            "fEntry", [&] { window.Edit(); }, [](QDialog& editor) { SaveWithBait(editor, "prawn"); });
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
        Press(window, Qt::Key_F, Qt::ControlModifier);
        Press(window, Qt::Key_End);
        Type(window, "d");
        QCOMPARE(Keys(window), Texts{"K3"});
        QCOMPARE(Count(window), "1 of 4 trips");
        Press(window, Qt::Key_Backspace);
        QCOMPARE(Keys(window), Texts{"K3"});
    }

    void addedTrip_notFound_isShownAndSelected()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WhileOpen(
            "fEntry", [&] { window.Add(); }, [](QDialog& editor) { SaveWithBait(editor, "prawn"); });
        QCOMPARE(Keys(window), (Texts{"K1", "K3", "K5"}));
        QCOMPARE(MarkedKeys(window), Texts{"K5"});
        QCOMPARE(Selected(window), "K5");
        QCOMPARE(Count(window), "2 of 5 trips, and 1 just saved");
    }

    void repeatedTrip_notFound_isShownAndSelected()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "date:2003-03-07");
        WhileOpen(
            "fEntry", [&] { Press(window, Qt::Key_D, Qt::ControlModifier); },
            [](QDialog& editor) {
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(MarkedKeys(window), Texts{"K5"});
        QCOMPARE(Selected(window), "K5");
        QCOMPARE(program.StoredEntry(5, EntryField::BaitUsed), "Squid");
    }

    void series_notFound_isShownAndTheLastOneSelected()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "trout");
        WhileOpen(
            "fEntry", [&] { window.Add(); },
            [](QDialog& editor) {
                for (const char* bait : {"one", "two"}) {
                    EnterBait(editor, bait);
                    Press(editor, Qt::Key_Return, Qt::ControlModifier);
                }
                SaveWithBait(editor, "three");
            });
        QCOMPARE(Keys(window), (Texts{"K2", "K5", "K6", "K7"}));
        QCOMPARE(MarkedKeys(window), (Texts{"K5", "K6", "K7"}));
        QCOMPARE(Selected(window), "K7");
        QCOMPARE(Count(window), "1 of 7 trips, and 3 just saved");
    }

    void seriesAfterAnEditedTrip_selectsTheLastOne()
    {
        FourTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { window.Edit(); },
            [](QDialog& editor) {
                EnterBait(editor, "one");
                Press(editor, Qt::Key_Return, Qt::ControlModifier);
                SaveWithBait(editor, "two");
            });
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4", "K5"}));
        QCOMPARE(Selected(window), "K5");
    }

    void cancelledTrip_isNotShown()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WhileOpen(
            "fEntry", [&] { window.Add(); }, [](QDialog& editor) { Click(editor, "cmdCancel"); });
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
        QCOMPARE(Count(window), "2 of 4 trips");
    }

    void deletedTrip_isCounted()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        DeleteSelected(program, window);
        QCOMPARE(Keys(window), Texts{"K3"});
        QCOMPARE(Selected(window), "K3");
        QCOMPARE(Count(window), "1 of 3 trips");
    }

    void completion_knowsSavedTrips()
    {
        FourTrips program;
        ShownLog window(program);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        Type(window, "bait:f");
        QCOMPARE(ProposedTexts(window), Texts{"Fly"});
        CloseProposals(window);
        WhileOpen(
            "fEntry", [&] { window.Add(); }, [](QDialog& editor) { SaveWithBait(editor, "Fritter"); });
        Press(window, Qt::Key_F, Qt::ControlModifier);
        Type(window, "bait:fr");
        QCOMPARE(ProposedTexts(window), Texts{"Fritter"});
    }
};

TEST_CLASS(tst_SavedTrips)
#include "tst_SavedTrips.moc"
