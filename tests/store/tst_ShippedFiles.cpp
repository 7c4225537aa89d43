#include "RecordFamily.h"
#include "core/Conversions.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <set>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const Texts entryChildren{
    "TarnoNo",      "StartDate",   "EndDate",         "StartTime",     "EndTime",   "LocNo",     "TideStart",
    "TideEnd",      "HighTide",    "HighTideHt",      "LowTide",       "LowTideHt", "SunRise",   "SunSet",
    "MoonRise",     "MoonSet",     "MoonPhase",       "Prediction",    "AirTemp",   "WaterTemp", "WindDir",
    "WindStrength", "Weather",     "WaterClarity",    "TargetSpecies", "BaitUsed",  "Method",    "FishAction",
    "FishCaught",   "AirPressure", "PressureReading", "Obbos",         "Major1",    "Major2",    "Minor1",
    "Minor2",       "Picture"};

Texts ChildNames(const Record& record)
{
    Texts names;
    for (const pugi::xml_node& child : record.View().Node().children()) {
        names.emplace_back(child.name());
    }
    return names;
}

} // namespace

// The shipped data files, read by the program.
class tst_ShippedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void templates_haveTheirChildrenInOrder()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        Record record;
        QCOMPARE(store.sql.EntryGet(0, record), succeeded);
        QCOMPARE(ChildNames(record), entryChildren);
        QCOMPARE(record.Count(), static_cast<std::size_t>(EntryField::Count));
        QCOMPARE(static_cast<int>(EntryField::Count), 37);
        QCOMPARE(store.sql.LocationGet(0, record), succeeded);
        QCOMPARE(ChildNames(record),
                 (Texts{"LocNo", "LocName", "LocDirections", "LocDescription", "LocAccess", "LocLatt",
                        "LocLong", "LocGMT", "LocDST", "LocPicture"}));
        QCOMPARE(static_cast<int>(LocationField::Count), 10);
        QCOMPARE(store.sql.ReportGet(0, record), succeeded);
        QCOMPARE(ChildNames(record), (Texts{"RptNo", "RptName", "Fields", "FieldKeys", "Options"}));
        QCOMPARE(static_cast<int>(ReportField::Count), 5);

        // the positions used by the program
        QCOMPARE(entryChildren.at(EntryField::LocNo), "LocNo"s);
        QCOMPARE(entryChildren.at(EntryField::MoonPhase), "MoonPhase"s);
        QCOMPARE(entryChildren.at(EntryField::WaterClarity), "WaterClarity"s);
        QCOMPARE(entryChildren.at(EntryField::PressureReading), "PressureReading"s);
        QCOMPARE(entryChildren.at(EntryField::Picture), "Picture"s);
    }

    void templates_areEmptyExceptForTheKey()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        for (const RecordFamily& family : RecordFamilies()) {
            Record record;
            QCOMPARE((store.sql.*family.get)(0, record), succeeded);
            QCOMPARE(record.Text(0), "0"s);
            for (std::size_t position = 1; position < record.Count(); ++position) {
                QCOMPARE(record.Text(position), ""s);
            }
        }
    }

    void dataFiles_areEmpty()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        for (const RecordFamily& family : RecordFamilies()) {
            RecordList list;
            QCOMPARE((store.sql.*family.list)(list), succeeded);
            QVERIFY(list.empty());
        }
    }

    void fields_areCompleteAndNameEntryChildren()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        std::set<std::string> keys;
        std::set<std::string> names;
        bool hasDefault = false;
        for (const RecordView& field : fields) {
            QCOMPARE(field.Count(), static_cast<std::size_t>(FieldField::Count));
            QVERIFY(ToInt16(field.Text(FieldField::FieldNo)) > 0);
            QVERIFY(keys.insert(field.Text(FieldField::FieldNo)).second);
            QVERIFY(names.insert(field.Text(FieldField::FieldName)).second);
            QVERIFY(std::find(entryChildren.begin() + 1, entryChildren.end(),
                              field.Text(FieldField::FieldName)) != entryChildren.end());
            QVERIFY(!field.Text(FieldField::Desc).empty());
            QVERIFY(!field.Text(FieldField::Label).empty());
            QVERIFY(ToDouble(field.Text(FieldField::Width)) > 0);
            QVERIFY(ToDouble(field.Text(FieldField::Font)) > 0);
            hasDefault = hasDefault || field.Text(FieldField::DefaultFlag) != "0";
        }
        QVERIFY(hasDefault);
    }

    void saving_keepsTheShippedFormatting()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        const std::string before = store.folder.Read("field.xml");
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        QCOMPARE(store.sql.FieldUpdate(Record(fields.front())), succeeded);
        QCOMPARE(store.folder.Read("field.xml"), before);
    }
};

TEST_CLASS(tst_ShippedFiles)
#include "tst_ShippedFiles.moc"
