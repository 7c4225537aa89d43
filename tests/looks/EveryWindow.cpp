#include "EveryWindow.h"

#include "DataWindows.h"
#include "ShownWindow.h"
#include "ui/backup/fBackUp.h"
#include "ui/backup/fCollect.h"
#include "ui/calendar/fCalendar.h"
#include "ui/common/SortableList.h"
#include "ui/entry/fEntry.h"
#include "ui/help/fHelp.h"
#include "ui/locations/dlgLocMaint.h"
#include "ui/locations/fLocs.h"
#include "ui/main/MainTest.h"
#include "ui/main/fSplash.h"
#include "ui/reports/BuilderTest.h"
#include "ui/reports/ExportedFile.h"
#include "ui/reports/fCustom.h"
#include "ui/statistics/fStatistics.h"

#include <QTabWidget>
#include <QTextDocument>
#include <QTextEdit>

namespace Tarno
{

namespace
{

enum Trip { NewTrip = 0, PlainTrip = 1, TripWithPicture = 22 };

enum Place { NewPlace = 0, PlaceWithPicture = 1 };

/// Days of the sample log.
constexpr std::chrono::year_month_day dayWithTrip = std::chrono::year(2025) / 10 / 4;
constexpr std::chrono::year_month_day dayInSummer = std::chrono::year(2025) / 6 / 29;

template <typename World>
std::function<void(const Visit&)> Log(Step prepare = asOpened)
{
    return [prepare = std::move(prepare)](const Visit& visit) {
        World world;
        fTarno window(world.program);
        ShowModeless(window, prepare, visit);
    };
}

/// Types a query in the find bar of the log.
Step Searched(const char* query)
{
    return [query](QWidget& window) {
        Press(window, Qt::Key_F, Qt::ControlModifier);
        Type(window, query);
        Await([&] { return Find<QLineEdit>(window, "txtFind").text() == QLatin1String(query); }, "no query");
    };
}

/// Like Searched, but closes the list of proposals.
Step Found(const char* query)
{
    return [query](QWidget& window) {
        Searched(query)(window);
        Settle();
        if (const auto* list = window.findChild<QWidget*>(QStringLiteral("lstProposals"));
            list != nullptr && list->isVisible()) {
            Press(window, Qt::Key_Escape);
        }
    };
}

/// Shows the details of a trip beside the log, and waits for its picture.
Step Details(Trip trip)
{
    return [trip](QWidget& window) {
        Command(window, "miDetails").trigger();
        List(window).SelectKey(QLatin1Char('K') + QString::number(trip));
        const QTextDocument* text = Find<QTextEdit>(window, "txtDetails").document();
        Await(
            [&] {
                return trip != TripWithPicture ||
                       text->toRawText().contains(QChar::ObjectReplacementCharacter);
            },
            "the details show no picture");
    };
}

/// The log after the first trip was deleted.
std::function<void(const Visit&)> LogAfterDeletion(Step prepare)
{
    return [prepare = std::move(prepare)](const Visit& visit) {
        SampleProgram world;
        fTarno window(world.program);
        const Step deleteFirst = [&](QWidget& log) {
            world.messages.Expect(deleteQuestion, Button::Yes);
            List(log).SelectKey(QStringLiteral("K1"));
            Command(log, "icoDelete").trigger();
            AwaitActive(log);
            prepare(log);
        };
        ShowModeless(window, deleteFirst, visit);
    };
}

/// Restores the deleted trip, which the query does not find.
void RestoreOneNotFound(QWidget& log)
{
    Found("caught:kingfish")(log);
    Command(log, "miUndo").trigger();
}

std::function<void(const Visit&)> Splash(void (fSplash::*show)())
{
    return [show](const Visit& visit) {
        QCoreApplication::setApplicationVersion(QStringLiteral("1.0.0"));
        fSplash window(QStringLiteral("/home/angler/Tarno"), nullptr);
        Find<QTimer>(window, "tShow").setInterval(awaitTimeout); // keeps it open during the visit
        ShowModally(
            "fSplash", [&] { (window.*show)(); }, asOpened, visit);
    };
}

std::function<void(const Visit&)> Entry(int key, Step prepare)
{
    return [key, prepare = std::move(prepare)](const Visit& visit) {
        SampleProgram world;
        fEntry window(world.program, nullptr);
        ShowModally(
            "fEntry", [&] { window.SetData(static_cast<std::int16_t>(key), false); }, prepare, visit);
    };
}

/// Opens a trip whose location no longer exists.
std::function<void(const Visit&)> EntryOfRemovedPlace()
{
    return [](const Visit& visit) {
        SampleProgram world;
        RecordList locations;
        world.sql.LocationList(locations); // without the next one
        world.AddLocation("Somewhere else");
        for (const RecordView& location : locations) {
            world.sql.LocationDelete(
                static_cast<std::int16_t>(std::stoi(location.Text(LocationField::LocNo))));
        }
        fEntry window(world.program, nullptr);
        ShowModally(
            "fEntry", [&] { window.SetData(PlainTrip, false); }, asOpened, visit);
    };
}

std::function<void(const Visit&)> Location(int key, Step prepare)
{
    return [key, prepare = std::move(prepare)](const Visit& visit) {
        SampleProgram world;
        dlgLocMaint window(world.program, nullptr);
        ShowModally(
            "dlgLocMaint", [&] { window.SetData(static_cast<std::int16_t>(key), false); }, prepare, visit);
    };
}

/// A window that needs no preparation after its construction.
template <typename Window, typename World = SampleProgram>
std::function<void(const Visit&)> Plain(Step prepare = asOpened)
{
    return [prepare = std::move(prepare)](const Visit& visit) {
        World world;
        Window window(world.program, nullptr);
        ShowModeless(window, prepare, visit);
    };
}

/// The preview that the button `name` of a window opens.
template <typename Window>
std::function<void(const Visit&)> PreviewBy(const char* name, const Step& step = asOpened)
{
    return [name, step](const Visit& visit) {
        SampleProgram world;
        Window window(world.program, nullptr);
        ShowModally(
            "fPreview", [&] { Find<QAbstractButton>(window, name).click(); }, step, visit);
    };
}

/// The sheet of a trip with a picture.
void TripSheet(const Visit& visit)
{
    SampleProgram world;
    fTarno window(world.program);
    window.show();
    List(window).SelectKey(QLatin1Char('K') + QString::number(TripWithPicture));
    ShowModally(
        "fPreview", [&] { Command(window, "miTripSheet").trigger(); }, asOpened, visit);
}

/// The preview of the log report with two trips that a query has found.
void FoundTripsReport(const Visit& visit)
{
    SampleProgram world;
    fRptLog window(world.program, nullptr,
                   TripsFound{.keys = {"6", "12"}, .query = QStringLiteral("caught:kingfish")});
    ShowModally(
        "fPreview", [&] { Find<QAbstractButton>(window, "cmdPreview").click(); }, asOpened, visit);
}

void ShowExportedFile(QWidget& window)
{
    window.findChild<ExportedFile*>()->ShowFile(QStringLiteral("/home/angler/Documents/Trips of 2026.pdf"));
}

Step Page(int index)
{
    return [index](QWidget& window) { window.findChild<QTabWidget*>()->setCurrentIndex(index); };
}

/// The calendar on a day.
template <typename World = SampleProgram>
std::function<void(const Visit&)> Calendar(std::chrono::year_month_day today, Step prepare = asOpened)
{
    return [today, prepare = std::move(prepare)](const Visit& visit) {
        World world;
        world.clock.today = today;
        fCalendar window(world.program, nullptr);
        ShowModeless(window, prepare, visit);
    };
}

/// The sample log with one more place, which has a name only.
class ProgramWithBarePlace : public SampleProgram
{
public:
    ProgramWithBarePlace()
    {
        AddLocation(
            "Somewhere on the river",
            {{LocationField::LocLatt, ""}, {LocationField::LocLong, ""}, {LocationField::LocGMT, ""}});
    }
};

Step ChosenPlace(int index)
{
    return [index](QWidget& window) { Choose(window, "cboPlace", index); };
}

/// Moves the selection away from today and shows the similar days.
void ShowSimilarDays(QWidget& calendar)
{
    Press(calendar, Qt::Key_Down);
    Page(1)(calendar);
}

/// The statistics with a query.
template <typename World = SampleProgram>
std::function<void(const Visit&)> Statistics(Step prepare = asOpened, const char* query = "")
{
    return [prepare = std::move(prepare), query](const Visit& visit) {
        World world;
        fStatistics window(world.program, QLatin1String(query), nullptr);
        ShowModeless(window, prepare, visit);
    };
}

/// Shows the groups of that grouping.
Step GroupedBy(const char* title)
{
    return [title](QWidget& window) {
        auto& box = Find<QComboBox>(window, "cboGrouping");
        box.setCurrentIndex(box.findText(QLatin1String(title)));
    };
}

/// A log with three trips, one of which is too long for the hours.
class ProgramWithThreeTrips : public TestProgram
{
public:
    ProgramWithThreeTrips()
    {
        Start();
        AddLocation("Pittwater");
        for (const char* day : {"2026-11-01", "2026-11-02", "2026-11-20"}) {
            AddEntry({{EntryField::StartDate, "2026-11-01"},
                      {EntryField::EndDate, day},
                      {EntryField::StartTime, "06:00"},
                      {EntryField::EndTime, "07:00"},
                      {EntryField::FishAction, "2"}});
        }
    }
};

/// The preview of the year sheet.
void YearSheet(const Visit& visit)
{
    SampleProgram world;
    fStatistics window(world.program, {}, nullptr);
    Page(2)(window);
    ShowModally(
        "fPreview", [&] { Find<QAbstractButton>(window, "cmdYearSheet").click(); }, asOpened, visit);
}

/// The window `name` that a button of the calendar opens.
std::function<void(const Visit&)> ByCalendar(const char* name, const char* button)
{
    return [name, button](const Visit& visit) {
        SampleProgram world;
        world.clock.today = dayWithTrip;
        fCalendar window(world.program, nullptr);
        ShowModally(
            name, [&] { Find<QAbstractButton>(window, button).click(); }, asOpened, visit);
    };
}

void Manual(const Visit& visit)
{
    fHelp window(nullptr);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.ShowPage({});
    ShowModeless(window, asOpened, visit);
}

/// Opens the pick list of the label `name` on the page "Comments".
Step PickList(const char* name)
{
    return [name](QWidget& window) {
        Page(2)(window);
        Click(window, name);
    };
}

/// Types "s" in the box for bait, so that lines are proposed.
void ProposeBait(QWidget& window)
{
    Page(2)(window);
    Find<QWidget>(window, "txtBait").setFocus();
    Press(window, Qt::Key_End, Qt::ControlModifier);
    Press(window, Qt::Key_Return);
    Type(window, "s");
}

/// Enters `text` in the box `name` of the first page.
Step Entered(const char* name, const char* text)
{
    return [name, text](QWidget& window) {
        auto& box = Find<QLineEdit>(window, name);
        box.setFocus();
        box.selectAll();
        box.insert(QLatin1String(text));
        Press(window, Qt::Key_Tab);
    };
}

/// Sorts the list by `column` in descending order.
Step Sorted(int column)
{
    return [column](QWidget& window) {
        QHeaderView* header = window.findChild<SortableList*>()->header();
        for (int click = 0; click < 2; ++click) {
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              QPoint(header->sectionViewportPosition(column) + 10, header->height() / 2));
        }
    };
}

void OpenSaveFrame(QWidget& builder)
{
    Click(builder, "cmdMoveAll"); // only a changed report can be saved
    Click(builder, "cmdSave");
}

void UseSavedReport(QWidget& builder)
{
    Click(builder, "chkSaved");
    Choose(builder, "cboSaved", 2);
}

void RemoveAllFields(QWidget& builder)
{
    Click(builder, "cmdBackAll");
}

} // namespace

const std::vector<WindowState>& EveryWindow()
{
    static const std::vector<WindowState> states{
        {"log", Log<SampleProgram>(), 0},
        {"log, sorted", Log<SampleProgram>(Sorted(7)), 0},
        {"log, empty", Log<EmptyProgram>(), 0},
        {"log, find bar", Log<SampleProgram>(Searched("")), 0},
        {"log, proposed fields", Log<SampleProgram>(Searched("p")), 0, false},
        {"log, found", Log<SampleProgram>(Found("caught:bream place:pittwater")), 0},
        {"log, found and proposed", Log<SampleProgram>(Searched("date:2024 caught:b")), 0, false},
        {"log, fault in the query", Log<SampleProgram>(Found("fish:bream caught:bream")), 0},
        {"log, faults in the query", Log<SampleProgram>(Found("fish:bream water:>warm place:<3 \"run in")),
         0},
        {"log, nothing found", Log<SampleProgram>(Found("caught:unicorn")), 0},
        {"log, details", Log<SampleProgram>(Details(PlainTrip)), 0},
        {"log, details with a picture", Log<SampleProgram>(Details(TripWithPicture)), 0},
        {"log, trip deleted", LogAfterDeletion(asOpened), 0},
        {"log, saved trip not found", LogAfterDeletion(RestoreOneNotFound), 0},
        {"splash", Splash(&fSplash::ShowSplash)},
        {"about", Splash(&fSplash::ShowAbout)},
        {"trip, general", Entry(PlainTrip, asOpened)},
        {"trip, weather", Entry(PlainTrip, Page(1))},
        {"trip, comments", Entry(PlainTrip, Page(2))},
        {"trip, pick list of species", Entry(PlainTrip, PickList("lblDDTarget")), 2, false},
        {"trip, pick list of caught", Entry(PlainTrip, PickList("lblDDCaught")), 2, false},
        {"trip, pick list of methods", Entry(PlainTrip, PickList("lblDDMethods")), 2, false},
        {"trip, proposed lines", Entry(PlainTrip, ProposeBait), 0, false},
        {"trip, picture", Entry(TripWithPicture, Page(3))},
        {"trip, no picture", Entry(PlainTrip, Page(3))},
        {"trip, refused date", Entry(PlainTrip, Entered("txtStart", "2026-13-45")), 0, false},
        {"trip, refused time", Entry(PlainTrip, Entered("txtTideLow", "99")), 0, false},
        {"trip, long", Entry(PlainTrip, Entered("txtEnd", "2024-10-20")), 0},
        {"trip, times of another place", EntryOfRemovedPlace(), 1, false},
        {"new trip, general", Entry(NewTrip, asOpened)},
        {"new trip, weather", Entry(NewTrip, Page(1))},
        {"new trip, comments", Entry(NewTrip, Page(2))},
        {"new trip, picture", Entry(NewTrip, Page(3))},
        {"locations", Plain<fLocs>()},
        {"locations, sorted", Plain<fLocs>(Sorted(3))},
        {"locations, empty", Plain<fLocs, EmptyProgram>()},
        {"location, data", Location(PlaceWithPicture, asOpened)},
        {"location, picture", Location(PlaceWithPicture, Page(1))},
        {"location, out of range", Location(PlaceWithPicture, Entered("txtLatt", "-93.59")), 0},
        {"new location, data", Location(NewPlace, asOpened)},
        {"new location, picture", Location(NewPlace, Page(1))},
        {"log report", Plain<fRptLog>()},
        {"log report, saved one", Plain<fRptLog>(UseSavedReport)},
        {"log report, no fields", Plain<fRptLog>(RemoveAllFields)},
        {"log report, saving", Plain<fRptLog>(OpenSaveFrame), 2},
        {"log report, none saved", Plain<fRptLog, EmptyProgram>()},
        {"report fields", Plain<fCustom>()},
        {"calendar", Calendar(dayWithTrip)},
        {"calendar, days like this", Calendar(dayWithTrip, ShowSimilarDays)},
        {"calendar, place without coordinates", Calendar<ProgramWithBarePlace>(dayWithTrip, ChosenPlace(6))},
        {"calendar, polar day", Calendar(dayInSummer, ChosenPlace(5))},
        {"calendar, no places", Calendar<EmptyProgram>(dayWithTrip)},
        {"export of peak times", ByCalendar("dlgPeaks", "cmdExport"), 1, false},
        {"month sheet", ByCalendar("fPreview", "cmdMonthSheet")},
        {"statistics", Statistics(GroupedBy("Place"))},
        {"statistics, caught", Statistics(GroupedBy("Species caught"))},
        {"statistics, found", Statistics(GroupedBy("Moon"), "date:2026"), 2},
        {"statistics, three trips", Statistics<ProgramWithThreeTrips>()},
        {"statistics, no trips", Statistics<EmptyProgram>()},
        {"statistics, forecast", Statistics(Page(1))},
        {"statistics, year", Statistics(Page(2))},
        {"statistics, unmatched lines", Statistics(Page(3), "place:pittwater"), 2},
        {"year sheet", YearSheet},
        {"export of trips", Export},
        {"import of trips", Import()},
        {"import of trips, columns", Import(Page(1))},
        {"export of locations", LocationExport<>},
        {"export of locations, none", LocationExport<EmptyProgram>},
        {"import of locations", LocationImport},
        {"back-ups", Plain<fBackUp, ProgramWithBackUps>()},
        {"back-ups, none", Plain<fBackUp>()},
        {"collected pictures", Plain<fCollect, ProgramWithScatteredPictures>()},
        {"collected pictures, none", Plain<fCollect>()},
        {"restore", Restored(DeleteSomeTrips), 1},
        {"restore, adding", Restored(DeleteSomeTrips, ChooseAdding), 1},
        {"restore, nothing missing", Restored([](TestProgram& /*world*/) {}), 1},
        {"manual", Manual, 1, false},
        {"preview of locations", PreviewBy<fLocs>("cmdPrint")},
        {"preview of the log", PreviewBy<fRptLog>("cmdPreview")},
        {"preview of found trips", FoundTripsReport},
        {"preview of a trip", TripSheet},
        {"preview of the log, exported", PreviewBy<fRptLog>("cmdPreview", ShowExportedFile)},
    };
    return states;
}

const WindowState& StateOf(const QString& name)
{
    for (const WindowState& state : EveryWindow()) {
        if (name == QLatin1String(state.name)) {
            return state;
        }
    }
    qFatal("unknown state %s", qPrintable(name));
}

void SetScreen(const QSize& size)
{
    screenSize = size;
}

void AddEveryWindow(const std::function<bool(const WindowState&)>& wanted)
{
    QTest::addColumn<QString>("state");
    for (const WindowState& state : EveryWindow()) {
        if (wanted(state)) {
            QTest::newRow(state.name) << QString::fromLatin1(state.name);
        }
    }
}

} // namespace Tarno
