#pragma once

#include "ShownWindow.h"
#include "backup/BackUp.h"
#include "ui/backup/RestoreLog.h"
#include "ui/transfer/LocationTransfer.h"
#include "ui/transfer/dlgExport.h"
#include "ui/transfer/fImport.h"

namespace Tarno
{

// The windows that export, import, back up and restore the log.

/// The export of the trips that a query has found.
inline void Export(const Visit& visit)
{
    SampleProgram world;
    dlgExport window(world.program,
                     TripsFound{.keys = {"6", "12"}, .query = QStringLiteral("caught:kingfish")}, nullptr);
    ShowModeless(window, asOpened, visit);
}

/// The import of a table with new, known and refused rows.
inline std::function<void(const Visit&)> Import(Step prepare = asOpened)
{
    return [prepare = std::move(prepare)](const Visit& visit) {
        SampleProgram world;
        fImport window(world.program,
                       ReadCsv("StartDate,StartTime,EndTime,Location,FishCaught,Crew\n"
                               "2026-11-14,05:45,10:15,\"Pittwater, Barrenjoey\",Kingfish 66 cm,Ana\n"
                               "2024-10-05,05:30,10:30,\"Pittwater, Barrenjoey\",Flathead,\n"
                               "last week,06:00,09:00,\"Pittwater, Barrenjoey\",Tailor,Ben\n"
                               "2026-11-15,16:30,19:00,Palm Beach,Whiting,Ana\n"),
                       QStringLiteral("/home/angler/club.csv"), nullptr);
        window.Plan();
        ShowModeless(window, prepare, visit);
    };
}

/// The export of the locations of a log.
template <typename World = SampleProgram>
void LocationExport(const Visit& visit)
{
    World world;
    ShowModally(
        "fWayPoints", [&] { ExportLocations(world.program, nullptr); }, asOpened, visit);
}

/// The import of way points, one of which is already a location.
inline void LocationImport(const Visit& visit)
{
    SampleProgram world;
    world.folder.Write("plotter.gpx",
                       "<gpx version='1.1'>"
                       "<wpt lat='-33.5984' lon='151.3243'><name>Palm Beach</name></wpt>"
                       "<wpt lat='-33.61' lon='151.30'><name>Pittwater, Barrenjoey</name></wpt>"
                       "<wpt lat='-34.0' lon='151.5'><name>12 Mile Reef</name></wpt>"
                       "<rte/><trk/><trk/></gpx>");
    world.files.ExpectOpen({.title = QStringLiteral("Import Locations"),
                            .filter = QStringLiteral("GPX (*.gpx);;All files (*)"),
                            .folder = FromUtf8(world.programFolder.GetAppPath() + '/'),
                            .fileName = {}},
                           FromUtf8(world.folder.PathOf("plotter.gpx")));
    ShowModally(
        "fWayPoints", [&] { ImportLocations(world.program, nullptr); }, asOpened, visit);
}

/// The sample log with several back-ups.
class ProgramWithBackUps : public SampleProgram
{
public:
    ProgramWithBackUps()
    {
        folder.MakeFolder("backups");
        constexpr int size = 2'100'000;
        folder.Write("backups/tarno-2026-11-20-1905.zip", std::string(size, 'x'));
        folder.Write("backups/tarno-2026-11-21-0712-automatic.zip", std::string(size / 2, 'x'));
        folder.Write("backups/tarno-2026-11-22-1830-before-restore.zip", std::string(size / 100, 'x'));
        windows.SetBackUpFolder(FromUtf8(folder.Path()), FromUtf8(folder.PathOf("backups")));
    }
};

/// A back-up of the sample log, restored to a log that may have changed since.
inline std::function<void(const Visit&)> Restored(const std::function<void(TestProgram& world)>& change,
                                                  const Step& prepare = asOpened)
{
    return [change, prepare](const Visit& visit) {
        SampleProgram world;
        world.folder.MakeFolder("backups");
        const std::string path = world.folder.PathOf("backups/tarno-2026-11-22-1830.zip");
        BackUp(world.programFolder, world.operations, path,
               {.time = {std::chrono::year(2026) / 11 / 22, std::chrono::minutes(18 * 60 + 30)},
                .program = "Tarno"});
        change(world);
        world.files.ExpectOpen({.title = QStringLiteral("Restore"),
                                .filter = QStringLiteral("Back-ups (*.zip);;All files (*)"),
                                .folder = FromUtf8(world.folder.PathOf("backups")),
                                .fileName = {}},
                               FromUtf8(path));
        ShowModally(
            "fRestore", [&] { RestoreLog(world.program, nullptr); }, prepare, visit);
    };
}

inline void DeleteSomeTrips(TestProgram& world)
{
    for (const std::int16_t key : {3, 4, 5}) {
        world.sql.EntryDelete(key);
    }
}

inline void ChooseAdding(QWidget& window)
{
    Click(window, "optAdd");
}

/// The sample log with pictures elsewhere and nowhere.
class ProgramWithScatteredPictures : public SampleProgram
{
public:
    ProgramWithScatteredPictures()
    {
        constexpr int size = 2'100'000;
        m_camera.Write("IMG_0412.jpg", std::string(size, 'x'));
        m_camera.Write("reef.png", std::string(size / 3, 'x'));
        AddEntry(
            {{EntryField::StartDate, "2026-11-20"}, {EntryField::Picture, m_camera.PathOf("IMG_0412.jpg")}});
        AddEntry({{EntryField::StartDate, "2026-11-21"}, {EntryField::Picture, m_camera.PathOf("reef.png")}});
        AddEntry({{EntryField::StartDate, "2026-11-22"}, {EntryField::Picture, "/media/stick/eel.jpg"}});
    }

private:
    TemporaryFolder m_camera;
};

} // namespace Tarno
