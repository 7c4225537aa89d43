#include "EveryWindow.h"

#include "ui/common/ScreenFit.h"
#include "ui/common/SortableList.h"
#include "ui/entry/fEntry.h"
#include "ui/help/fHelp.h"
#include "ui/locations/dlgLocMaint.h"
#include "ui/locations/fLocs.h"
#include "ui/main/fSplash.h"
#include "ui/main/fTarno.h"
#include "ui/reports/BuilderTest.h"
#include "ui/reports/ExportedFile.h"
#include "ui/reports/fCustom.h"

#include <QHeaderView>
#include <QTabWidget>
#include <QToolBar>

namespace Tarno
{

namespace
{

enum Trip { NewTrip = 0, PlainTrip = 1, TripWithPicture = 22 };

enum Place { NewPlace = 0, PlaceWithPicture = 1 };

using Step = std::function<void(QWidget& window)>;

const Step asOpened = [](QWidget& /*window*/) {};

QSize screenSize(1920, 1080);

/// The program with the sample log, including pictures.
class SampleProgram : public TestProgram
{
public:
    SampleProgram()
    {
        UseSample();
        folder.MakeFolder("pictures");
        for (const char* picture : {"pittwater", "snapper", "trout"}) {
            const std::string name = std::string("pictures/") + picture + ".png";
            folder.Write(name, ReadWholeFile(TARNO_SHIPPED_DATA "/sample/" + name));
        }
        Start();
    }
};

class EmptyProgram : public TestProgram
{
public:
    EmptyProgram() { Start(); }
};

/// Processes events until the layouts are stable. A layout that changes posts an event to its parent.
void Settle()
{
    constexpr int nesting = 8; // more than the deepest nesting of layouts
    for (int round = 0; round < nesting; ++round) {
        QCoreApplication::processEvents();
    }
}

void ShowModeless(QWidget& window, const Step& prepare, const Visit& visit)
{
    const ScreenFit screenFit(screenSize);
    window.show();
    AwaitActive(window);
    prepare(window);
    Settle();
    visit(window);
}

/// Calls `open`, which shows the modal window `name`, then prepares, visits and closes that window.
template <typename Open>
void ShowModally(const char* name, Open&& open, const Step& prepare, const Visit& visit)
{
    const ScreenFit screenFit(screenSize);
    WhileOpen(name, std::forward<Open>(open), [&](QDialog& window) {
        prepare(window);
        Settle();
        visit(window);
        window.setFocus(); // leaves a refused box, which would keep the window open
        window.done(QDialog::Rejected);
    });
}

template <typename World>
std::function<void(const Visit&)> Log(Step prepare = asOpened)
{
    return [prepare = std::move(prepare)](const Visit& visit) {
        World world;
        fTarno window(world.program);
        ShowModeless(window, prepare, visit);
    };
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

void ShowExportedFile(QWidget& window)
{
    window.findChild<ExportedFile*>()->ShowFile(QStringLiteral("/home/angler/Documents/Trips of 2026.pdf"));
}

void Manual(const Visit& visit)
{
    fHelp window(nullptr);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.ShowPage({});
    ShowModeless(window, asOpened, visit);
}

Step Page(int index)
{
    return [index](QWidget& window) { window.findChild<QTabWidget*>()->setCurrentIndex(index); };
}

/// Opens the pick list of the label `name` on the page "Comments".
Step PickList(const char* name)
{
    return [name](QWidget& window) {
        Page(2)(window);
        Click(window, name);
    };
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
        {"splash", Splash(&fSplash::ShowSplash)},
        {"about", Splash(&fSplash::ShowAbout)},
        {"trip, general", Entry(PlainTrip, asOpened)},
        {"trip, weather", Entry(PlainTrip, Page(1))},
        {"trip, comments", Entry(PlainTrip, Page(2))},
        {"trip, pick list of species", Entry(PlainTrip, PickList("lblDDTarget")), 2, false},
        {"trip, pick list of caught", Entry(PlainTrip, PickList("lblDDCaught")), 2, false},
        {"trip, pick list of methods", Entry(PlainTrip, PickList("lblDDMethods")), 2, false},
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
        {"manual", Manual, 1, false},
        {"preview of locations", PreviewBy<fLocs>("cmdPrint")},
        {"preview of the log", PreviewBy<fRptLog>("cmdPreview")},
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
