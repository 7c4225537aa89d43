#include "TripTableTest.h"
#include "core/Conversions.h"
#include "exchange/Gpx.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <QFile>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

std::string Bytes(const char* name)
{
    QFile file(QStringLiteral(TARNO_TEST_DATA "/gpx/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

std::string Shown(const WayPoint& point)
{
    return point.name + '|' + FromDouble(point.position.latitude) + '|' +
           FromDouble(point.position.longitude) + '|' + point.description + '|' + point.comment;
}

Texts Read(const std::string& bytes)
{
    const GpxFile file = ReadGpx(bytes);
    Texts shown;
    for (const WayPoint& point : file.points) {
        shown.push_back(Shown(point));
    }
    if (!file.problem.empty()) {
        shown.push_back(file.problem);
    }
    return shown;
}

std::string File(const std::string& contents)
{
    return "<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\">" + contents + "</gpx>";
}

struct Log : TestStore {
    explicit Log(const std::vector<WayPoint>& points)
    {
        sql.Init();
        ImportBatch batch;
        for (const WayPoint& point : points) {
            batch.locations.push_back(LocationOf(point));
        }
        sql.Import(batch);
    }
};

} // namespace

class tst_Gpx : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void filesOfDevices_areRead()
    {
        QCOMPARE(Read(Bytes("handheld-1.1.gpx")),
                 (Texts{"001|-33.590123|151.320456|Reef edge, 11 m|05-OCT-24 15:31:00",
                        "R\xC3\xADo & Co|-33.6|151.3||"}));
        QCOMPARE(ReadGpx(Bytes("handheld-1.1.gpx")).Ignored(), "1 route, 2 tracks"s);
        QCOMPARE(Read(Bytes("plotter-1.0.gpx")),
                 (Texts{"M\xC3\xB6ltenort|54.32|10.14|Mole <b>links</b>\nDorsch & Butt|",
                        "-54.4, -180|-54.4|-180||"}));
        QCOMPARE(ReadGpx(Bytes("plotter-1.0.gpx")).Ignored(), "3 way points without a valid position"s);
        QCOMPARE(Read(Bytes("prefixed.gpx")),
                 Texts{"\xE5\xBC\x81\xE5\xA4\xA9\xE5\xB3\xB6|34.69|137.6|two\nlines|"});
        QCOMPARE(ReadGpx(Bytes("prefixed.gpx")).Ignored(), ""s);
    }

    void entities_areNotExpanded()
    {
        for (const char* file : {"billion-laughs.gpx", "external-entity.gpx"}) {
            const GpxFile read = ReadGpx(Bytes(file));
            QVERIFY(read.points.empty());
            QVERIFY2(read.problem.ends_with(": Invalid character reference."), read.problem.c_str());
        }
        QCOMPARE(Read(Bytes("doctype.gpx")), Texts{"Pier|1|2||"});
    }

    void malformedFiles_areRefused_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("problem");
        const auto row = [](const char* name, const std::string& bytes, const char* problem) {
            QTest::newRow(name) << bytes << std::string(problem);
        };
        row("nothing", "", "The file cannot be read. Line 1, column 1: No element.");
        row("other root", "<kml/>", "This is not a GPX file: its first element is \"kml\".");
        row("long root", (("<" + std::string(59, 'k')) + "\xC3\xA9/>").c_str(),
            ("This is not a GPX file: its first element is \"" + std::string(59, 'k') + "\xEF\xBF\xBD\".")
                .c_str());
        row("open element", "<gpx>\n<wpt>",
            "The file cannot be read. Line 2, column 5: Start-end tags mismatch.");
        row("control character", "<gpx>\x01</gpx>",
            "The file cannot be read. Line 1, column 6: Character that XML does not allow.");
        row("half a unit", "\xFF\xFE<\0g"s,
            "The file begins with a Unicode mark, but does not contain such text.");
        std::string deep;
        for (int level = 0; level < 100'000; ++level) {
            deep += "<a>";
        }
        row("deep", deep, "");
    }

    void malformedFiles_areRefused()
    {
        QFETCH(std::string, bytes);
        QFETCH(std::string, problem);
        const GpxFile file = ReadGpx(bytes);
        QVERIFY(!file.problem.empty() && file.points.empty());
        if (!problem.empty()) {
            QCOMPARE(file.problem, problem);
        }
    }

    void hugeFiles_areRefused()
    {
        QCOMPARE(Read(std::string(GpxLimits::bytes + 1, ' ')), Texts{"The file is larger than 100 MB."});
        std::string points;
        for (std::size_t count = 0; count <= GpxLimits::points; ++count) {
            points += "<wpt lat='1' lon='2'><name>" + std::to_string(count) + "</name></wpt>";
        }
        QCOMPARE(Read(File(points)), Texts{"The file has more than 32767 way points."});
    }

    void positions_outOfRange_areIgnored()
    {
        for (const char* position :
             {"lat='90.1' lon='0'", "lat='0' lon='-180.1'", "lat='' lon=''", "lat='x' lon='1'",
              "lat='1e999' lon='1'", "lat='nan' lon='1'", "lat='inf' lon='1'", ""}) {
            const GpxFile file = ReadGpx(File("<wpt "s + position + "/>"));
            QCOMPARE(file.points.size(), 0U);
            QCOMPARE(file.Ignored(), "1 way point without a valid position"s);
        }
        QCOMPARE(Read(File("<wpt lat=' -90 ' lon='+1.80e2'/>")), Texts{"-90, 180|-90|180||"});
    }

    void missingName_becomesThePosition()
    {
        QCOMPARE(Read(File("<wpt lat='-33.70' lon='151.3'><name> </name></wpt>")),
                 Texts{"-33.7, 151.3|-33.7|151.3||"});
    }

    void repeatedPoints_areIgnored()
    {
        const GpxFile file = ReadGpx(File("<wpt lat='1' lon='2'><name>a</name><desc>first</desc></wpt>"
                                          "<wpt lat='1.0' lon='2'><name>a</name></wpt>"
                                          "<wpt lat='1' lon='2'><name>b</name></wpt>"
                                          "<wpt lat='1' lon='3'><name>a</name></wpt>"));
        QCOMPARE(file.points.size(), 3U);
        QCOMPARE(file.points.front().description, "first"s);
        QCOMPARE(file.Ignored(), "1 way point of the same name and position"s);
    }

    void utf16_isRead()
    {
        std::string bytes = "\xFF\xFE";
        for (const char letter : File("<wpt lat='1' lon='2'><name>a</name></wpt>")) {
            bytes += letter;
            bytes += '\0';
        }
        QCOMPARE(Read(bytes), Texts{"a|1|2||"});
    }

    void written_isReadUnchanged()
    {
        const std::vector<WayPoint> points{{"Pier", {-33.59, 151.32}, "a <b>\n& \"c\"", "]]> first\n\nthird"},
                                           {"\xF0\x9F\x90\x9F =1+1", {0, -0.000001}, "", ""},
                                           {"Pole", {90, 179.999999}, "~CL", ""}};
        const std::string bytes = WriteGpx(points);
        const GpxFile file = ReadGpx(bytes);
        QCOMPARE(file.points.size(), points.size());
        for (std::size_t index = 0; index < points.size(); ++index) {
            QCOMPARE(Shown(file.points[index]), Shown(points[index]));
        }
        QCOMPARE(WriteGpx({{"Edge", {1, 180}}}),
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<gpx version=\"1.1\" creator=\"Tarno\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
                 "\t<wpt lat=\"1\" lon=\"-180\">\n\t\t<name>Edge</name>\n\t</wpt>\n</gpx>\n"s);
    }

    void locations_makeARoundTrip()
    {
        TestStore sample;
        sample.folder.Write("location.xml", ReadWholeFile(TARNO_SHIPPED_DATA "/sample/location.xml"));
        QCOMPARE(sample.sql.Init(), succeeded);
        const auto points = WayPointsOf(LocationsOf(sample.sql));
        QCOMPARE(points.size(), LocationsOf(sample.sql).size());
        QCOMPARE(points[2].name, "Victor Harbor Granite Island"s);
        const Log log(ReadGpx(WriteGpx(points)).points);
        const auto again = WayPointsOf(LocationsOf(log.sql));
        QCOMPARE(again.size(), points.size());
        for (std::size_t index = 0; index < points.size(); ++index) {
            QCOMPARE(Shown(again[index]), Shown(points[index]));
        }
        QCOMPARE(LocationsOf(log.sql)[0].Text(LocationField::LocLatt), "-33.59"s);
        QCOMPARE(LocationsOf(log.sql)[0].Text(LocationField::LocGMT), "10"s);
    }

    void locationsWithoutPosition_areNoWayPoints()
    {
        Log log({{"a", {1, 2}}, {"b", {3, 4}}});
        Record location(LocationsOf(log.sql)[0]);
        for (const char* latitude : {"", "33S", "91"}) {
            location.SetText(LocationField::LocLatt, latitude);
            QCOMPARE(log.sql.LocationUpdate(location), succeeded);
            QCOMPARE(WayPointsOf(LocationsOf(log.sql)).size(), 1U);
        }
    }

    void knownPoints_areMarked()
    {
        const Log log({{"Pier", {-33.59, 151.32}},
                       {"R\xC3\xADo Tigre", {-34.4, -58.6}},
                       {"", {10, 20}},
                       {"Twin", {-33.5901, 151.32}}});
        // a degree of latitude has 111.19 km
        QCOMPARE(MarkKnown({{"x", {-33.59044, 151.32}},
                            {"x", {-33.58954, 151.32}},
                            {"x", {-33.58956, 151.32}},
                            {"x", {-33.59009, 151.32}},
                            {"RIO tigre", {0, 0}},
                            {"Pier", {-34.4, -58.6}},
                            {"", {0, 0}},
                            {"", {10, 20}}},
                           LocationsOf(log.sql)),
                 (Texts{"4", "", "1", "4", "2", "2", "", "3"}));
    }

    void offset_isTheNearestHour()
    {
        QCOMPARE(ProposedOffset(151.32), "10"s);
        QCOMPARE(ProposedOffset(-71.07), "-5"s);
        QCOMPARE(ProposedOffset(-7.4), "0"s);
        QCOMPARE(ProposedOffset(7.6), "1"s);
        QCOMPARE(ProposedOffset(180), "12"s);
        QCOMPARE(ProposedOffset(-180), "-12"s);
    }
};

TEST_CLASS(tst_Gpx)
#include "tst_Gpx.moc"
