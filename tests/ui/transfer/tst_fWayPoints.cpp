// Exporting locations as way points, and importing way points as locations.

#include "TransferTest.h"
#include "exchange/Gpx.h"
#include "support/TestClass.h"
#include "ui/transfer/LocationTransfer.h"

#include <QDialog>
#include <QPushButton>
#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

const char* const plotter = "<gpx version='1.1'>"
                            "<wpt lat='-33.80001' lon='151.25'><name>Barrenjoey</name></wpt>"
                            "<wpt lat='-36.1' lon='148.7'><name>LAKE EUCUMBENE</name></wpt>"
                            "<wpt lat='-34.0' lon='151.5'><name>12 Mile Reef</name><desc>kings</desc></wpt>"
                            "<wpt lat='95' lon='0'><name>nowhere</name></wpt><rte/><trk/><trk/></gpx>";

/// A log with the location Pittwater at -33.8, 151.25, Lake Eucumbene elsewhere, and one without coordinates.
class TransferProgram : public TestProgram
{
public:
    TransferProgram()
    {
        Start();
        AddLocation("Pittwater");
        AddLocation("Lake Eucumbene", {{LocationField::LocLatt, "-36.2"}, {LocationField::LocLong, "148.6"}});
        AddLocation("Grandfather's creek", {{LocationField::LocLatt, ""}, {LocationField::LocLong, ""}});
    }

    void ExpectSave(bool chosen = true)
    {
        files.ExpectSave({.title = QStringLiteral("Export Locations"),
                          .filter = QStringLiteral("GPX (*.gpx)"),
                          .folder = FromUtf8(programFolder.GetAppPath() + '/'),
                          .fileName = QStringLiteral("locations.gpx"),
                          .suffix = QStringLiteral(".gpx")},
                         chosen ? std::optional(Path()) : std::nullopt);
    }

    void ExpectOpen(const std::string& contents)
    {
        folder.Write("locations.gpx", contents);
        files.ExpectOpen({.title = QStringLiteral("Import Locations"),
                          .filter = QStringLiteral("GPX (*.gpx);;All files (*)"),
                          .folder = FromUtf8(programFolder.GetAppPath() + '/'),
                          .fileName = {}},
                         Path());
    }

    void ExpectInformation(const QString& text) { messages.ExpectInformation(text, QStringLiteral("Tarno")); }

    QString Path() const { return FromUtf8(folder.PathOf("locations.gpx")); }

    /// Returns the names of the exported way points.
    Texts Exported() const
    {
        Texts names;
        for (const WayPoint& point : ReadGpx(folder.Read("locations.gpx")).points) {
            names.push_back(point.name);
        }
        return names;
    }

    /// Shows the window of the export, or of the import of `plotter`, and runs `use` on it.
    void Export(const std::function<void(QDialog& window)>& use)
    {
        WhileOpen(
            "fWayPoints", [this] { ExportLocations(program, nullptr); }, use);
    }

    void Import(const std::function<void(QDialog& window)>& use)
    {
        ExpectOpen(plotter);
        WhileOpen(
            "fWayPoints", [this] { ImportLocations(program, nullptr); }, use);
    }
};

std::string ButtonText(const QDialog& window)
{
    return ToUtf8(Find<QPushButton>(window, "cmdTransfer").text());
}

} // namespace

class tst_fWayPoints : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void export_offersTheLocationsWithCoordinates()
    {
        TransferProgram program;
        program.Export([](QDialog& window) {
            QCOMPARE(ToUtf8(window.windowTitle()), "Export Locations"s);
            QCOMPARE(Rows(window, "lvwPoints"),
                     (Texts{"Pittwater | -33.8 | 151.25", "Lake Eucumbene | -36.2 | 148.6"}));
            QCOMPARE(LabelText(window, "lblNote"),
                     "The locations become way points in a GPX file for chart plotters and maps. "
                     "Left out: 1 location without coordinates."s);
            QCOMPARE(ButtonText(window), "&Export 2 Locations"s);
            QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "lvwPoints"));
            Click(window, "cmdClose");
        });
    }

    void export_writesTheCheckedLocations()
    {
        TransferProgram program;
        program.ExpectSave();
        program.ExpectInformation(QStringLiteral("Exported 1 location to ") + program.Path());
        program.Export([](QDialog& window) {
            Press(window, Qt::Key_Space); // clears the first one
            QCOMPARE(ButtonText(window), "&Export 1 Location"s);
            Click(window, "cmdTransfer");
            QVERIFY(!window.isVisible());
        });
        QCOMPARE(program.Exported(), Texts{"Lake Eucumbene"});
    }

    void noLocationChecked_exportsNothing()
    {
        TransferProgram program;
        program.Export([](QDialog& window) {
            Click(window, "cmdNone");
            QCOMPARE(ButtonText(window), "&Export 0 Locations"s);
            QVERIFY(!Find<QPushButton>(window, "cmdTransfer").isEnabled());
            Click(window, "cmdAll");
            QCOMPARE(ButtonText(window), "&Export 2 Locations"s);
            Click(window, "cmdClose");
        });
    }

    void export_cancelledFileDialog_keepsTheWindow()
    {
        TransferProgram program;
        program.ExpectSave(false);
        program.Export([](QDialog& window) {
            Click(window, "cmdTransfer");
            QVERIFY(window.isVisible());
            Click(window, "cmdClose");
        });
    }

    void emptyLog_saysWhatToDo()
    {
        TestProgram program;
        program.Start();
        WhileOpen(
            "fWayPoints", [&] { ExportLocations(program.program, nullptr); },
            [](QDialog& window) {
                QCOMPARE(ToUtf8(Find<QWidget>(window, "lvwPoints").accessibleDescription()),
                         "No location has coordinates. Enter them in the list of locations (Ctrl+L)."s);
                QVERIFY(!Find<QPushButton>(window, "cmdAll").isEnabled());
                QVERIFY(!Find<QPushButton>(window, "cmdNone").isEnabled());
                QVERIFY(!Find<QPushButton>(window, "cmdTransfer").isEnabled());
                Click(window, "cmdClose");
            });
    }

    void import_marksWhatIsAlreadyThere()
    {
        TransferProgram program;
        program.Import([](QDialog& window) {
            QCOMPARE(ToUtf8(window.windowTitle()), "Import Locations"s);
            QCOMPARE(
                LabelText(window, "lblNote"),
                "locations.gpx: 3 way points. Ignored: 1 route, 2 tracks, 1 way point without a valid "
                "position. The hours from GMT are proposed from the longitude. You can change them later."s);
            QCOMPARE(Rows(window, "lvwPoints"), (Texts{"Barrenjoey | -33.80001 | 151.25 | 10 | Pittwater",
                                                       "LAKE EUCUMBENE | -36.1 | 148.7 | 10 | Lake Eucumbene",
                                                       "12 Mile Reef | -34 | 151.5 | 10 | "}));
            QCOMPARE(ButtonText(window), "&Import 1 Location"s);
            Click(window, "cmdClose");
        });
        QCOMPARE(program.Stored("location.xml").size(), std::size_t{3});
    }

    void import_addsTheCheckedOnesAsOneStep()
    {
        TransferProgram program;
        program.ExpectInformation(QStringLiteral("2 locations imported. Edit > Undo takes the import back."));
        program.Import([](QDialog& window) {
            Press(window, Qt::Key_Space); // checks the first one
            Click(window, "cmdTransfer");
            QVERIFY(!window.isVisible());
        });
        const auto stored = program.Stored("location.xml");
        QCOMPARE(stored.size(), std::size_t{5});
        QCOMPARE(stored[3].at(LocationField::LocName), "Barrenjoey"s);
        QCOMPARE(stored[4].at(LocationField::LocName), "12 Mile Reef"s);
        QCOMPARE(stored[4].at(LocationField::LocDescription), "kings"s);
        QCOMPARE(stored[4].at(LocationField::LocGMT), "10"s);
        QCOMPARE(program.sql.Undo().status, UndoStatus::Done);
        QCOMPARE(program.Stored("location.xml").size(), std::size_t{3});
    }

    void unreadableFile_isExplained_data()
    {
        QTest::addColumn<QString>("contents");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not GPX") << "<kml/>"
                                 << "This is not a GPX file: its first element is \"kml\".";
        QTest::newRow("damaged") << "<gpx>" << FromUtf8(ReadGpx("<gpx>").problem);
    }

    void unreadableFile_isExplained()
    {
        QFETCH(QString, contents);
        QFETCH(QString, reason);
        TransferProgram program;
        program.ExpectOpen(ToUtf8(contents));
        program.messages.Expect({.text = QStringLiteral("This file cannot be imported: ") + program.Path() +
                                         QStringLiteral("\r\n") + reason +
                                         QStringLiteral("\r\nNothing was changed."),
                                 .title = QStringLiteral("Import Error"),
                                 .icon = Icon::Exclamation},
                                Button::Ok);
        ImportLocations(program.program, nullptr);
    }

    void fileWithoutWayPoints_canOnlyBeClosed()
    {
        TransferProgram program;
        program.ExpectOpen("<gpx version='1.1'><trk/></gpx>");
        WhileOpen(
            "fWayPoints", [&] { ImportLocations(program.program, nullptr); },
            [](QDialog& window) {
                QCOMPARE(ToUtf8(Find<QWidget>(window, "lvwPoints").accessibleDescription()),
                         "The file has no way points with a valid position."s);
                QVERIFY(!Find<QPushButton>(window, "cmdTransfer").isEnabled());
                Click(window, "cmdClose");
            });
    }
};

TEST_CLASS(tst_fWayPoints)
#include "tst_fWayPoints.moc"
