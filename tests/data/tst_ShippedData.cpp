#include "astro/Forecast.h"
#include "core/Conversions.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "store/cSQL.h"
#include "support/ExpectedReports.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <cmath>
#include <map>
#include <memory>
#include <set>

using namespace Tarno;

// The shipped data files and the sample log.

namespace
{

using Texts = std::vector<std::string>;

/// The shipped data files or those of the sample, loaded by the program.
class Shipped
{
public:
    explicit Shipped(bool sample = false)
    {
        Copy(TARNO_SHIPPED_DATA);
        if (sample) {
            Copy(TARNO_SHIPPED_DATA "/sample");
        }
        sql.Init();
    }

    RecordList Entries() const { return Listed(&cSQL::EntryList); }

    RecordList Locations() const { return Listed(&cSQL::LocationList); }

    RecordList Fields() const { return Listed(&cSQL::FieldList); }

    RecordList Reports() const { return Listed(&cSQL::ReportList); }

    TemporaryFolder folder;
    ExpectedReports reports; // none
    std::unique_ptr<FileOperations> operations = SystemFileOperations();
    ProgramFolder programFolder{folder.Path()};
    cSQL sql{programFolder, *operations};

private:
    void Copy(const std::string& from) const
    {
        for (const auto& entry : std::filesystem::directory_iterator(ToPath(from))) {
            if (entry.is_regular_file()) {
                folder.Write(FromPath(entry.path().filename()), ReadWholeFile(FromPath(entry.path())));
            }
        }
    }

    RecordList Listed(Status (cSQL::*list)(RecordList&) const) const
    {
        RecordList records;
        (sql.*list)(records);
        return records;
    }
};

Texts Names(const RecordView& record)
{
    Texts names;
    for (const pugi::xml_node& child : record.Node().children()) {
        names.emplace_back(child.name());
    }
    return names;
}

Texts Split(const std::string& text)
{
    Texts parts;
    for (const QString& part : QString::fromStdString(text).split(QLatin1Char(','))) {
        parts.push_back(part.toStdString());
    }
    return parts;
}

const Texts entryNames{
    "TarnoNo",      "StartDate",   "EndDate",         "StartTime",     "EndTime",   "LocNo",     "TideStart",
    "TideEnd",      "HighTide",    "HighTideHt",      "LowTide",       "LowTideHt", "SunRise",   "SunSet",
    "MoonRise",     "MoonSet",     "MoonPhase",       "Prediction",    "AirTemp",   "WaterTemp", "WindDir",
    "WindStrength", "Weather",     "WaterClarity",    "TargetSpecies", "BaitUsed",  "Method",    "FishAction",
    "FishCaught",   "AirPressure", "PressureReading", "Obbos",         "Major1",    "Major2",    "Minor1",
    "Minor2",       "Picture"};

std::string ShippedPath(const std::string& name)
{
    return TARNO_SHIPPED_DATA "/" + name;
}

/// Returns the values that the program calculates for the entry, by position.
std::map<std::size_t, std::string> Calculated(const cSQL& sql, const RecordView& entry)
{
    Record location;
    sql.LocationGet(ToInt16(entry.Text(EntryField::LocNo)), location);
    const DayForecast day =
        Forecast({location.Text(LocationField::LocLatt), location.Text(LocationField::LocLong),
                  location.Text(LocationField::LocGMT), location.Text(LocationField::LocDST)},
                 ToDate(entry.Text(EntryField::StartDate)));
    return {{EntryField::SunRise, day.riseSet.sunRise},
            {EntryField::SunSet, day.riseSet.sunSet},
            {EntryField::MoonRise, day.riseSet.moonRise},
            {EntryField::MoonSet, day.riseSet.moonSet},
            {EntryField::Major1, day.riseSet.major1},
            {EntryField::Major2, day.riseSet.major2},
            {EntryField::Minor1, day.riseSet.minor1},
            {EntryField::Minor2, day.riseSet.minor2},
            {EntryField::MoonPhase, day.moon.SignedPhase()},
            {EntryField::Prediction, std::to_string(day.moon.prediction)}};
}

bool IsTime(const std::string& text)
{
    static const QRegularExpression time(QStringLiteral("^([01][0-9]|2[0-3]):[0-5][0-9]$"));
    return time.match(QString::fromStdString(text)).hasMatch();
}

} // namespace

class tst_ShippedData : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void template_hasOneEmptyRecord_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("count");
        QTest::newRow("entry") << "tarnoblank.xml" << 37;
        QTest::newRow("location") << "locationblank.xml" << 10;
        QTest::newRow("report") << "RptBlank.xml" << 5;
    }

    void template_hasOneEmptyRecord()
    {
        QFETCH(QString, file);
        QFETCH(int, count);
        const std::string bytes = ReadWholeFile(ShippedPath(file.toStdString()));
        pugi::xml_document document;
        QVERIFY(document.load_buffer(bytes.data(), bytes.size(), pugi::parse_full));
        const auto records = document.child("data").children();
        QCOMPARE(std::distance(records.begin(), records.end()), 1);
        const RecordView record(*records.begin());
        QCOMPARE(record.Count(), static_cast<std::size_t>(count));
        QCOMPARE(record.Text(0), "0");
        for (std::size_t position = 1; position < record.Count(); ++position) {
            QCOMPARE(record.Text(position), "");
        }
    }

    void entryTemplate_isInTheOrderOfTheLayout()
    {
        const Shipped shipped;
        Record entry;
        QCOMPARE(shipped.sql.EntryGet(0, entry), succeeded);
        QCOMPARE(entry.Count(), std::size_t(EntryField::Count));
        QCOMPARE(Names(entry.View()), entryNames);
    }

    void locationTemplate_isInTheOrderOfTheLayout()
    {
        const Shipped shipped;
        Record location;
        QCOMPARE(shipped.sql.LocationGet(0, location), succeeded);
        QCOMPARE(location.Count(), std::size_t(LocationField::Count));
        QCOMPARE(Names(location.View()),
                 (Texts{"LocNo", "LocName", "LocDirections", "LocDescription", "LocAccess", "LocLatt",
                        "LocLong", "LocGMT", "LocDST", "LocPicture"}));
    }

    void reportTemplate_isInTheOrderOfTheLayout()
    {
        const Shipped shipped;
        Record report;
        QCOMPARE(shipped.sql.ReportGet(0, report), succeeded);
        QCOMPARE(report.Count(), std::size_t(ReportField::Count));
        QCOMPARE(Names(report.View()), (Texts{"RptNo", "RptName", "Fields", "FieldKeys", "Options"}));
    }

    void emptyFiles_haveNoRecords_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("entries") << "tarno.xml";
        QTest::newRow("locations") << "location.xml";
        QTest::newRow("reports") << "Rpt.xml";
    }

    void emptyFiles_haveNoRecords()
    {
        QFETCH(QString, file);
        const std::string bytes = ReadWholeFile(ShippedPath(file.toStdString()));
        pugi::xml_document document;
        QVERIFY(document.load_buffer(bytes.data(), bytes.size(), pugi::parse_full));
        QCOMPARE(std::string(document.first_child().name()), "data");
        QVERIFY(document.first_child().first_child().empty());
    }

    void everyFile_startsWithData_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("record");
        for (const char* folder : {"", "sample/"}) {
            QTest::addRow("%sentries", folder)
                << (QLatin1String(folder) + QLatin1String("tarno.xml")) << "tarno";
            QTest::addRow("%slocations", folder)
                << (QLatin1String(folder) + QLatin1String("location.xml")) << "location";
            QTest::addRow("%sreports", folder)
                << (QLatin1String(folder) + QLatin1String("Rpt.xml")) << "report";
        }
        QTest::newRow("fields") << "field.xml"
                                << "field";
        QTest::newRow("blank entry") << "tarnoblank.xml"
                                     << "tarno";
        QTest::newRow("blank location") << "locationblank.xml"
                                        << "location";
        QTest::newRow("blank report") << "RptBlank.xml"
                                      << "report";
    }

    void everyFile_startsWithData()
    {
        QFETCH(QString, file);
        QFETCH(QString, record);
        const std::string bytes = ReadWholeFile(ShippedPath(file.toStdString()));
        QVERIFY(IsXmlText(bytes));
        pugi::xml_document document;
        QVERIFY(document.load_buffer(bytes.data(), bytes.size(), pugi::parse_full, pugi::encoding_utf8));
        QCOMPARE(std::string(document.first_child().name()), "data"); // no declaration before it
        QVERIFY(document.first_child().next_sibling().empty());
        for (const pugi::xml_node& child : document.first_child().children()) {
            QCOMPARE(std::string(child.name()), record.toStdString());
        }
    }

    void fields_areNumberedConsecutively()
    {
        const Shipped shipped;
        const RecordList fields = shipped.Fields();
        QCOMPARE(fields.size(), 36U);
        for (std::size_t index = 0; index < fields.size(); ++index) {
            QCOMPARE(fields[index].Text(FieldField::FieldNo), std::to_string(index + 1));
            QCOMPARE(Names(fields[index]), (Texts{"FieldNo", "FieldName", "Desc", "Label", "Width", "Font",
                                                  "Grow", "DefaultFlag"}));
        }
    }

    void fields_haveTheNamesOfTheEntrysValues()
    {
        const Shipped shipped;
        Texts names{"TarnoNo"}; // the key is not a column
        for (const RecordView& field : shipped.Fields()) {
            names.push_back(field.Text(FieldField::FieldName));
        }
        QCOMPARE(names, entryNames);
    }

    void fields_haveNumbersWhereNumbersAreNeeded()
    {
        const Shipped shipped;
        for (const RecordView& field : shipped.Fields()) {
            const auto isWhole = [&field](FieldField::Position position) {
                return std::to_string(ToInt16(field.Text(position))) == field.Text(position);
            };
            for (const auto position :
                 {FieldField::Width, FieldField::Font, FieldField::Grow, FieldField::DefaultFlag}) {
                QVERIFY2(isWhole(position), field.Text(FieldField::FieldName).c_str());
            }
            QVERIFY(ToInt16(field.Text(FieldField::Width)) > 0);
            QVERIFY(ToInt16(field.Text(FieldField::Font)) >= 6);
            for (const auto position : {FieldField::Grow, FieldField::DefaultFlag}) {
                QVERIFY(field.Text(position) == "0" || field.Text(position) == "1");
            }
        }
    }

    void fields_ofTheDefaultReport_fitOnThePage()
    {
        // Letter in landscape with margins of 20 mm; reports use 57 twips per millimetre
        constexpr int roomInMillimetres = 238;
        const Shipped shipped;
        int width = 0;
        int columns = 0;
        for (const RecordView& field : shipped.Fields()) {
            if (field.Text(FieldField::DefaultFlag) != "0") {
                width += ToInt16(field.Text(FieldField::Width));
                ++columns;
            }
        }
        QVERIFY(columns > 0);
        QVERIFY2(width <= roomInMillimetres, std::to_string(width).c_str());
    }

    void fields_haveUniqueDescriptions()
    {
        const Shipped shipped;
        std::set<std::string> descriptions;
        for (const RecordView& field : shipped.Fields()) {
            QVERIFY(!field.Text(FieldField::Desc).empty());
            QVERIFY(!field.Text(FieldField::Label).empty());
            descriptions.insert(field.Text(FieldField::Desc));
        }
        QCOMPARE(descriptions.size(), shipped.Fields().size()); // users distinguish fields by it
    }

    void pickList_hasWindowsLineEnds_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("baits") << "Bait.txt";
        QTest::newRow("species") << "Species.txt";
        QTest::newRow("methods") << "Methods.txt";
    }

    void pickList_hasWindowsLineEnds()
    {
        QFETCH(QString, file);
        const std::string bytes = ReadWholeFile(ShippedPath(file.toStdString()));
        QVERIFY(IsXmlText(bytes));
        QVERIFY(bytes.ends_with("\r\n"));
        std::set<std::string> lines;
        std::size_t count = 0;
        for (std::size_t begin = 0; begin < bytes.size(); ++count) {
            const std::size_t end = bytes.find('\n', begin);
            QVERIFY(end != std::string::npos && end > begin && bytes[end - 1] == '\r');
            const std::string line = bytes.substr(begin, end - 1 - begin);
            QVERIFY(!line.empty() && line == Trimmed(line));
            lines.insert(line);
            begin = end + 1;
        }
        QVERIFY(count >= 10);
        QCOMPARE(lines.size(), count); // no duplicates
    }

    void sample_keysAreConsecutive_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("entries") << "entries";
        QTest::newRow("locations") << "locations";
        QTest::newRow("reports") << "reports";
    }

    void sample_keysAreConsecutive()
    {
        QFETCH(QString, file);
        const Shipped sample(true);
        const RecordList records = file == QLatin1String("entries")     ? sample.Entries()
                                   : file == QLatin1String("locations") ? sample.Locations()
                                                                        : sample.Reports();
        QVERIFY(!records.empty());
        for (std::size_t index = 0; index < records.size(); ++index) {
            QCOMPARE(records[index].Text(0), std::to_string(index + 1));
        }
    }

    void sample_isLargeEnoughToShowTheProgram()
    {
        const Shipped sample(true);
        QVERIFY(sample.Entries().size() >= 60);
        QCOMPARE(sample.Locations().size(), 6U);
        std::set<std::string> visited;
        for (const RecordView& entry : sample.Entries()) {
            QCOMPARE(entry.Count(), std::size_t(EntryField::Count));
            QCOMPARE(Names(entry), entryNames);
            visited.insert(entry.Text(EntryField::LocNo));
        }
        QCOMPARE(visited, (std::set<std::string>{"1", "2", "3", "4", "5", "6"}));
    }

    void sample_locations_areOfDifferentKinds()
    {
        const Shipped sample(true);
        int withoutDaylightSaving = 0;
        int halfHours = 0;
        for (const RecordView& location : sample.Locations()) {
            QVERIFY(std::abs(ToDouble(location.Text(LocationField::LocLatt))) <= 90);
            QVERIFY(std::abs(ToDouble(location.Text(LocationField::LocLong))) <= 180);
            const double hours = ToDouble(location.Text(LocationField::LocGMT));
            QVERIFY(std::abs(hours) <= 14);
            halfHours += hours != std::trunc(hours) ? 1 : 0;
            const std::string flag = location.Text(LocationField::LocDST);
            QVERIFY(flag == "0" || flag == "1");
            withoutDaylightSaving += flag == "0" ? 1 : 0;
            QVERIFY((std::set<std::string>{"0", "1", "2"}.contains(location.Text(LocationField::LocAccess))));
        }
        QVERIFY(withoutDaylightSaving >= 1);
        QVERIFY(halfHours >= 1);
    }

    void sample_codes_areValidOptionIndexes()
    {
        const std::map<std::size_t, int> counts{
            {EntryField::TideStart, 4},    {EntryField::TideEnd, 4},      {EntryField::Prediction, 4},
            {EntryField::WindDir, 8},      {EntryField::WindStrength, 4}, {EntryField::Weather, 7},
            {EntryField::WaterClarity, 3}, {EntryField::FishAction, 4},   {EntryField::AirPressure, 2}};
        const Shipped sample(true);
        for (const RecordView& entry : sample.Entries()) {
            for (const auto& [position, count] : counts) {
                const std::string code = entry.Text(position);
                QVERIFY2(code.empty() || (code.size() == 1 && code[0] >= '0' && code[0] < '0' + count),
                         (entry.Text(0) + ' ' + entryNames.at(position)).c_str());
            }
        }
    }

    void sample_dates_areDatesInOrder()
    {
        const Shipped sample(true);
        for (const RecordView& entry : sample.Entries()) {
            const auto start = ToDate(entry.Text(EntryField::StartDate));
            const auto end = ToDate(entry.Text(EntryField::EndDate));
            QCOMPARE(FromDate(start), entry.Text(EntryField::StartDate));
            QCOMPARE(FromDate(end), entry.Text(EntryField::EndDate));
            QVERIFY2(start <= end, entry.Text(0).c_str());
        }
    }

    void sample_times_areTimes()
    {
        const Shipped sample(true);
        for (const RecordView& entry : sample.Entries()) {
            QVERIFY2(IsTime(entry.Text(EntryField::StartTime)), entry.Text(0).c_str());
            QVERIFY2(IsTime(entry.Text(EntryField::EndTime)), entry.Text(0).c_str());
            for (const auto position : {EntryField::HighTide, EntryField::LowTide}) {
                QVERIFY2(entry.Text(position).empty() || IsTime(entry.Text(position)), entry.Text(0).c_str());
            }
        }
    }

    void sample_pictures_exist()
    {
        const Shipped sample(true);
        Texts pictures;
        for (const RecordView& entry : sample.Entries()) {
            pictures.push_back(entry.Text(EntryField::Picture));
        }
        for (const RecordView& location : sample.Locations()) {
            pictures.push_back(location.Text(LocationField::LocPicture));
        }
        std::erase(pictures, std::string());
        QVERIFY(pictures.size() >= 3);
        for (const std::string& picture : pictures) {
            const std::string bytes = ReadWholeFile(ShippedPath("sample/" + picture));
            QVERIFY2(bytes.starts_with("\x89PNG"), picture.c_str());
        }
    }

    void sample_calculatedValues_matchTheProgram()
    {
        const Shipped sample(true);
        Texts overwritten;
        for (const RecordView& entry : sample.Entries()) {
            for (const auto& [position, text] : Calculated(sample.sql, entry)) {
                if (entry.Text(position) != text) {
                    overwritten.push_back(entry.Text(0) + ' ' + entryNames.at(position));
                }
            }
        }
        // the values that the sample's author has corrected by hand
        QCOMPARE(overwritten, (Texts{"2 SunRise", "2 SunSet", "30 Prediction", "58 Major2"}));
    }

    void sample_savedReports_nameTheirColumns()
    {
        const Shipped sample(true);
        std::map<std::string, std::string> nameOfKey;
        for (const RecordView& field : sample.Fields()) {
            nameOfKey[field.Text(FieldField::FieldNo)] = field.Text(FieldField::FieldName);
        }
        for (const RecordView& report : sample.Reports()) {
            QVERIFY(!report.Text(ReportField::RptName).empty());
            Texts names;
            for (const std::string& key : Split(report.Text(ReportField::FieldKeys))) {
                names.push_back(nameOfKey[key]);
            }
            QVERIFY(!names.empty());
            QCOMPARE(names, Split(report.Text(ReportField::Fields)));
        }
    }

    void sample_savedAgain_isTheSameFile_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("entries") << "tarno.xml";
        QTest::newRow("locations") << "location.xml";
        QTest::newRow("reports") << "Rpt.xml";
        QTest::newRow("fields") << "field.xml";
    }

    void sample_savedAgain_isTheSameFile()
    {
        QFETCH(QString, file);
        const std::string name = file.toStdString();
        Shipped sample(true);
        const std::string before = sample.folder.Read(name);
        sample.folder.Write(name, before + "\n");
        Record record;
        if (name == "tarno.xml") {
            sample.sql.EntryGet(30, record);
            sample.sql.EntryUpdate(record);
        } else if (name == "location.xml") {
            sample.sql.LocationGet(3, record);
            sample.sql.LocationUpdate(record);
        } else if (name == "Rpt.xml") {
            sample.sql.ReportGet(2, record);
            sample.sql.ReportUpdate(record);
        } else {
            sample.sql.FieldUpdate(Record(sample.Fields().at(5)));
        }
        QVERIFY(sample.folder.Read(name) == before);
    }
};

TEST_CLASS(tst_ShippedData)
#include "tst_ShippedData.moc"
