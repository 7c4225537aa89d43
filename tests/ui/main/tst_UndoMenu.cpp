#include "FindTest.h"
#include "support/TestClass.h"

#include <QPushButton>

#include <functional>

using namespace Tarno;

// Undoing and redoing changes of trips and locations in the main window.

namespace
{

std::string UndoText(const QWidget& window)
{
    return ToUtf8(Command(window, "miUndo").text());
}

std::string RedoText(const QWidget& window)
{
    return ToUtf8(Command(window, "miRedo").text());
}

void Undo(const QWidget& window)
{
    Press(window, Qt::Key_Z, Qt::ControlModifier);
}

void Redo(const QWidget& window)
{
    Press(window, Qt::Key_Y, Qt::ControlModifier);
}

bool IsBarShown(const QWidget& window)
{
    return Find<QWidget>(window, "barDeleted").isVisible();
}

/// Changes the start time of the selected trip.
void EditSelected(ShownLog& window)
{
    WhileOpen(
        "fEntry", [&] { window.Edit(); },
        [](QDialog& editor) {
            Find<QLineEdit>(editor, "txtTStart").setFocus();
            Press(editor, Qt::Key_A, Qt::ControlModifier);
            Press(editor, Qt::Key_Delete);
            Type(editor, "0515");
            Click(editor, "cmdOK");
            Click(editor, "cmdCancel");
        });
}

/// Runs `change` on the data as another program does.
void ChangeByOther(TestProgram& program, const std::function<void(cSQL&)>& change)
{
    cSQL other(program.programFolder, program.operations);
    QCOMPARE(other.Init(), succeeded);
    change(other);
}

/// A log whose changes before the window opened cannot be undone.
class LoadedTrips : public FourTrips
{
public:
    LoadedTrips() { sql.Init(); }
};

using Act = std::function<void(ShownLog&)>;

/// Commands in each way in which a user runs them. They leave the log as it is.
const std::map<std::string, Act>& NextCommands()
{
    static const std::map<std::string, Act> commands{
        {"key",
         [](ShownLog& window) {
             WhileOpen(
                 "fEntry", [&] { Press(window, Qt::Key_F2); }, CloseWindow);
         }},
        {"toolbar",
         [](ShownLog& window) {
             WhileOpen(
                 "fLocs", [&] { ClickCommand(window, "Earth"); }, CloseWindow);
         }},
        {"pop-up",
         [](ShownLog& window) {
             WhileOpen(
                 "fSplash", [&] { MenuItem(window, 5).trigger(); },
                 [](QDialog& about) { Click(about, "cmdOK"); });
         }},
        {"menu", [](ShownLog& window) { Command(window, "miCopy").trigger(); }},
        {"double click",
         [](ShownLog& window) {
             WhileOpen(
                 "fEntry",
                 [&] {
                     QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, PointInRow(window, 1));
                 },
                 CloseWindow);
         }},
        {"find", [](ShownLog& window) { Press(window, Qt::Key_F, Qt::ControlModifier); }},
        {"undo", [](ShownLog& window) { Undo(window); }}};
    return commands;
}

} // namespace

class tst_UndoMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void nothingToUndo_isDisabled()
    {
        LoadedTrips program;
        ShownLog window(program);
        QVERIFY(!Command(window, "miUndo").isEnabled());
        QVERIFY(!Command(window, "miRedo").isEnabled());
        QCOMPARE(UndoText(window), "&Undo");
        QCOMPARE(RedoText(window), "&Redo");
        const std::string log = program.folder.Read("tarno.xml");
        WithoutWindow([&] {
            Undo(window);
            Redo(window);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), log);
    }

    void deletion_isUndoneAndRedone()
    {
        LoadedTrips program;
        const std::string log = program.folder.Read("tarno.xml");
        ShownLog window(program);
        ClickRow(window, 1);
        DeleteSelected(program, window);
        QCOMPARE(UndoText(window), "&Undo Delete of 2003-02-06 Lake Eucumbene");
        QCOMPARE(RedoText(window), "&Redo");
        Undo(window);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QCOMPARE(Selected(window), "K2");
        QCOMPARE(program.folder.Read("tarno.xml"), log);
        QCOMPARE(UndoText(window), "&Undo");
        QCOMPARE(RedoText(window), "&Redo Delete of 2003-02-06 Lake Eucumbene");
        Redo(window);
        QCOMPARE(Keys(window), (Texts{"K1", "K3", "K4"}));
        QVERIFY(program.StoredEntry(2).empty());
    }

    void edit_isUndoneAndRedone()
    {
        LoadedTrips program;
        ShownLog window(program);
        ClickRow(window, 2);
        EditSelected(window);
        QCOMPARE(UndoText(window), "&Undo Edit of 2003-03-07 Pittwater");
        ClickRow(window, 0);
        Undo(window);
        QCOMPARE(Selected(window), "K3");
        QCOMPARE(ColumnTexts(window, Column::Start)[2], "06:00");
        Press(window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(ColumnTexts(window, Column::Start)[2], "05:15");
        QCOMPARE(program.StoredEntry(3, EntryField::StartTime), "05:15");
    }

    void addition_isUndoneAndRedone()
    {
        LoadedTrips program;
        ShownLog window(program);
        WhileOpen(
            "fEntry", [&] { window.Repeat(); },
            [](QDialog& editor) {
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QCOMPARE(UndoText(window), "&Undo Add of 2003-02-05 Pittwater");
        Undo(window);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QVERIFY(!Selected(window).empty());
        Redo(window);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4", "K5"}));
        QCOMPARE(Selected(window), "K5");
    }

    void location_isUndone()
    {
        LoadedTrips program;
        ShownLog window(program);
        WhileOpen(
            "fLocs", [&] { window.Locations(); },
            [&](QDialog& listing) {
                Record place;
                program.sql.LocationGet(1, place);
                place.SetText(LocationField::LocName, "Bream & Cod");
                program.sql.LocationUpdate(place);
                listing.close();
            });
        // the title is that before the change
        QCOMPARE(UndoText(window), "&Undo Edit of Bream && Cod");
        const std::string selected = Selected(window);
        Undo(window);
        QCOMPARE(RedoText(window), "&Redo Edit of Pittwater");
        QCOMPARE(ColumnTexts(window, Column::Location)[0], "Pittwater");
        QCOMPARE(Selected(window), selected);
    }

    void text_ampersandsAndLineBreaks()
    {
        LoadedTrips program;
        program.AddLocation("Fish && Chips~CL~Wharf");
        ShownLog window(program);
        QCOMPARE(UndoText(window), "&Undo Add of Fish &&&& Chips Wharf");
    }

    void text_tripWithoutDateAndPlace()
    {
        LoadedTrips program;
        program.AddEntry({});
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        QCOMPARE(UndoText(window), "&Undo Add of the trip number 5");
    }

    void barDeleted_isShownAfterADeletion()
    {
        LoadedTrips program;
        ShownLog window(program);
        QVERIFY(!IsBarShown(window));
        DeleteSelected(program, window);
        QVERIFY(IsBarShown(window));
        QCOMPARE(LabelText(window, "lblDeleted"), "Trip deleted.");
        Click(window, "cmdUndoDelete");
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QCOMPARE(Selected(window), "K1");
        QVERIFY(!IsBarShown(window));
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void barDeleted_byKeyboard()
    {
        LoadedTrips program;
        ShownLog window(program);
        DeleteSelected(program, window);
        PressMnemonic(window, Qt::Key_U, "cmdUndoDelete");
        Await([&] { return !IsBarShown(window); }, "the deletion is not undone");
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void barDeleted_hiddenWithTheFocus_theListGetsIt()
    {
        LoadedTrips program;
        ShownLog window(program);
        DeleteSelected(program, window);
        Find<QWidget>(window, "cmdUndoDelete").setFocus();
        Press(window, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!IsBarShown(window));
        QCOMPARE(window.focusWidget(), &List(window));
    }

    void barDeleted_answeredNo_isNotShown()
    {
        LoadedTrips program;
        ShownLog window(program);
        program.messages.Expect(deleteQuestion, Button::No);
        window.Delete();
        QVERIFY(!IsBarShown(window));
        DeleteSelected(program, window);
        program.messages.Expect(deleteQuestion, Button::No);
        Press(window, Qt::Key_Delete);
        QVERIFY(!IsBarShown(window));
    }

    void barDeleted_hidesAtTheNextCommand_data()
    {
        QTest::addColumn<std::string>("way");
        for (const auto& [way, act] : NextCommands()) {
            QTest::newRow(way.c_str()) << way;
        }
    }

    void barDeleted_hidesAtTheNextCommand()
    {
        QFETCH(std::string, way);
        LoadedTrips program;
        ShownLog window(program);
        DeleteSelected(program, window);
        QVERIFY(IsBarShown(window));
        ClickRow(window, 1); // is no command
        QVERIFY(IsBarShown(window));
        NextCommands().at(way)(window);
        QVERIFY(!IsBarShown(window));
    }

    void filteredList_showsTheUndoneTripMarked()
    {
        LoadedTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        DeleteSelected(program, window);
        FindTrips(window, "squid");
        Press(window, Qt::Key_Return);
        Undo(window);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3"}));
        QCOMPARE(MarkedKeys(window), Texts{"K2"});
        QCOMPARE(Selected(window), "K2");
        QCOMPARE(Count(window), "2 of 4 trips, and 1 just saved");
    }

    void changedByOther_isExplained()
    {
        LoadedTrips program;
        ShownLog window(program);
        EditSelected(window);
        ChangeByOther(program, [](cSQL& other) {
            Record trip;
            QCOMPARE(other.EntryGet(1, trip), succeeded);
            trip.SetText(EntryField::BaitUsed, "Prawn");
            QCOMPARE(other.EntryUpdate(trip), succeeded);
        });
        const std::string log = program.folder.Read("tarno.xml");
        program.messages.ExpectInformation(
            QStringLiteral(
                "\"Edit of 2003-02-05 Pittwater\" was not undone, because another program has changed "
                "or deleted the trip of 2003-02-05 at Pittwater since. Nothing was changed."),
            QStringLiteral("Tarno"));
        Undo(window);
        QCOMPARE(program.folder.Read("tarno.xml"), log);
        QVERIFY(!Command(window, "miUndo").isEnabled());
        QCOMPARE(ColumnTexts(window, Column::Start)[0], "05:15");
    }

    void changedByOther_redo_isExplained()
    {
        LoadedTrips program;
        ShownLog window(program);
        EditSelected(window);
        Undo(window);
        ChangeByOther(program, [](cSQL& other) { QCOMPARE(other.EntryDelete(1), succeeded); });
        program.messages.ExpectInformation(
            QStringLiteral(
                "\"Edit of 2003-02-05 Pittwater\" was not redone, because another program has changed "
                "or deleted the trip of 2003-02-05 at Pittwater since. Nothing was changed."),
            QStringLiteral("Tarno"));
        Redo(window);
        QCOMPARE(Keys(window), (Texts{"K2", "K3", "K4"})); // the list shows the deletion
    }

    void locationInUse_isExplained()
    {
        LoadedTrips program;
        program.AddLocation("Thredbo");
        ShownLog window(program);
        ChangeByOther(program, [](cSQL& other) {
            Record trip;
            QCOMPARE(other.EntryGet(1, trip), succeeded);
            trip.SetText(EntryField::LocNo, "3");
            QCOMPARE(other.EntryUpdate(trip), succeeded);
        });
        program.messages.ExpectInformation(
            QStringLiteral("\"Add of Thredbo\" was not undone, because a trip uses the location Thredbo."),
            QStringLiteral("Tarno"));
        Undo(window);
        QCOMPARE(program.Stored("location.xml").size(), std::size_t{3});
        QCOMPARE(UndoText(window), "&Undo Add of Thredbo"); // still possible later
        QCOMPARE(ColumnTexts(window, Column::Location)[0], "Thredbo");
    }

    void collectedPictures_areOneStep()
    {
        FourTrips program;
        const TemporaryFolder camera;
        camera.Write("bream.jpg", "a bream");
        program.AddEntry({{EntryField::StartDate, "2003-03-09"},
                          {EntryField::LocNo, "1"},
                          {EntryField::Picture, camera.PathOf("bream.jpg")}});
        program.AddLocation("Thredbo", {{LocationField::LocPicture, camera.PathOf("bream.jpg")}});
        ShownLog window(program);
        program.messages.ExpectInformation(
            QStringLiteral("1 picture collected. Edit > Undo takes the new names back; the copies stay."),
            QStringLiteral("Tarno"));
        WhileOpen(
            "fCollect", [&] { Command(window, "miCollect").trigger(); },
            [](QDialog& collect) { Click(collect, "cmdCollect"); });
        QCOMPARE(program.StoredEntry(5, EntryField::Picture), "pictures/bream.jpg");
        QCOMPARE(UndoText(window), "&Undo Edit of 2 records");
        Undo(window);
        QCOMPARE(program.StoredEntry(5, EntryField::Picture), camera.PathOf("bream.jpg"));
        QCOMPARE(RedoText(window), "&Redo Edit of 2 records");
    }

    void failedSave_isReportedOnce()
    {
        LoadedTrips program;
        ShownLog window(program);
        DeleteSelected(program, window);
        program.operations.Fail("create", ErrorNumber::DiskFull);
        program.reports.Expect("cSQL", "Undo", ErrorNumber::DiskFull);
        Undo(window);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"})); // in memory
        QVERIFY(program.StoredEntry(1).empty());
        Redo(window);
        QCOMPARE(Keys(window), (Texts{"K2", "K3", "K4"}));
        QVERIFY(program.StoredEntry(1).empty());
    }

    void undo_severalSteps()
    {
        LoadedTrips program;
        const std::string log = program.folder.Read("tarno.xml");
        ShownLog window(program);
        for (int trip = 0; trip < 4; ++trip) {
            DeleteSelected(program, window);
        }
        QCOMPARE(List(window).RowCount(), 0);
        for (int trip = 0; trip < 4; ++trip) {
            Undo(window);
        }
        QCOMPARE(program.folder.Read("tarno.xml"), log);
        QCOMPARE(Keys(window), (Texts{"K1", "K2", "K3", "K4"}));
        QVERIFY(Command(window, "icoEdit").isEnabled());
    }
};

TEST_CLASS(tst_UndoMenu)
#include "tst_UndoMenu.moc"
