#include "RecordFamily.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using Values = std::vector<std::pair<std::size_t, std::string>>;

/// A log with one trip at one location.
struct Log : TestStore {
    Log()
    {
        sql.SetShowConflict([this](const ConflictNotice& notice) { notices.push_back(notice); });
        sql.Init();
        AddLocation(sql, "Old Pier");
        AddTrip("2026-05-03", "1");
    }

    static Record AddLocation(cSQL& to, const std::string& name)
    {
        Record location;
        to.LocationGet(0, location);
        location.SetText(LocationField::LocName, name);
        to.LocationUpdate(location);
        return location;
    }

    Record AddTrip(const std::string& date, const std::string& location)
    {
        Record trip;
        sql.EntryGet(0, trip);
        trip.SetText(EntryField::StartDate, date);
        trip.SetText(EntryField::LocNo, location);
        sql.EntryUpdate(trip);
        return trip;
    }

    /// Runs `change` in another program first and then in this one.
    void ChangeInBoth(const std::function<void(cSQL&, const std::string&)>& change)
    {
        const auto operations = SystemFileOperations();
        cSQL other(programFolder, *operations);
        other.Init();
        change(other, "theirs");
        change(sql, "ours");
    }

    Record Trip(std::int16_t key) const
    {
        Record trip;
        sql.EntryGet(key, trip);
        return trip;
    }

    std::vector<ConflictNotice> notices;
};

using Kind = RecordTitle::Kind;

/// Changes a value of record 1.
void Edit(cSQL& sql, const RecordFamily& family, std::size_t position, const std::string& value)
{
    Record record;
    (sql.*family.get)(1, record);
    record.SetText(position, value);
    (sql.*family.update)(record);
}

} // namespace

// Notices about conflicts with another program, and trips whose location gets a new key.
class tst_Conflicts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void trip_isNamedByDateAndLocation()
    {
        Log log;
        log.ChangeInBoth([](cSQL& sql, const std::string& value) {
            Edit(sql, RecordFamilies()[0], EntryField::AirTemp, value);
        });
        QCOMPARE(log.notices.size(), std::size_t{1});
        QVERIFY(log.notices[0].record.kind == Kind::Trip);
        QCOMPARE(log.notices[0].record.date, "2026-05-03"s);
        QCOMPARE(log.notices[0].record.name, "Old Pier"s);
        QVERIFY(!log.notices[0].isDeletedHere);
        QCOMPARE(log.notices[0].keptAs, log.folder.PathOf("tarno-kept-1.xml"));
    }

    void tripOfADeletedLocation_hasNoName()
    {
        Log log;
        QCOMPARE(log.sql.LocationDelete(1), succeeded);
        log.ChangeInBoth([](cSQL& sql, const std::string& value) {
            Record trip;
            sql.EntryGet(1, trip);
            trip.SetText(EntryField::AirTemp, value);
            value == "ours" ? sql.EntryDelete(1) : sql.EntryUpdate(trip);
        });
        QCOMPARE(log.notices.size(), std::size_t{1});
        QCOMPARE(log.notices[0].record.date, "2026-05-03"s);
        QCOMPARE(log.notices[0].record.name, ""s);
        QVERIFY(log.notices[0].isDeletedHere);
    }

    void locationReportAndColumn_areNamed()
    {
        Log log;
        log.ChangeInBoth([](cSQL& sql, const std::string& value) {
            Edit(sql, RecordFamilies()[1], LocationField::LocName, value);
        });
        Record report;
        log.sql.ReportGet(0, report);
        report.SetText(ReportField::RptName, "Summer");
        log.sql.ReportUpdate(report);
        log.ChangeInBoth([](cSQL& sql, const std::string& value) {
            Edit(sql, RecordFamilies()[2], ReportField::Options, value);
        });
        std::string description;
        log.ChangeInBoth([&](cSQL& sql, const std::string& value) {
            RecordList fields;
            sql.FieldList(fields);
            Record field(fields.front());
            description = field.Text(FieldField::Desc);
            field.SetText(FieldField::Label, value);
            sql.FieldUpdate(field);
        });
        QCOMPARE(log.notices.size(), std::size_t{3});
        QVERIFY(log.notices[0].record.kind == Kind::Location);
        QCOMPARE(log.notices[0].record.name, "ours"s);
        QVERIFY(log.notices[1].record.kind == Kind::Report);
        QCOMPARE(log.notices[1].record.name, "Summer"s);
        QVERIFY(log.notices[2].record.kind == Kind::Column);
        QCOMPARE(log.notices[2].record.name, description);
        QVERIFY(!description.empty());
    }

    void recordWithTooFewValues_isReportedToo()
    {
        Log log;
        log.folder.Write("tarno.xml", "<data><tarno><TarnoNo>1</TarnoNo></tarno></data>");
        log.sql.Init();
        log.ChangeInBoth([](cSQL& sql, const std::string& value) {
            if (value == "ours") {
                sql.EntryDelete(1);
            } else {
                Record trip;
                sql.EntryDelete(1);
                sql.EntryGet(0, trip);
                sql.EntryUpdate(trip);
            }
        });
        QCOMPARE(log.notices.size(), std::size_t{1});
        QVERIFY(log.notices[0].record.kind == Kind::Trip);
    }

    // Saving the new location fails, and another program then assigns its key to a different location.
    void tripsOfThisRun_referToTheNewKeyOfTheirLocation()
    {
        Log log;
        const auto operations = SystemFileOperations();
        log.operations.Fail("create", ErrorNumber::DiskFull);
        log.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::DiskFull);
        Record jetty = Log::AddLocation(log.sql, "Jetty");
        QCOMPARE(jetty.Text(0), "2"s);
        QCOMPARE(log.AddTrip("2026-05-04", "2").Text(0), "2"s);
        QCOMPARE(log.AddTrip("2026-05-05", "1").Text(0), "3"s);

        cSQL other(log.programFolder, *operations);
        QCOMPARE(other.Init(), succeeded);
        QCOMPARE(Log::AddLocation(other, "Reef").Text(0), "2"s);
        Record trip;
        QCOMPARE(other.EntryGet(0, trip), succeeded);
        trip.SetText(EntryField::LocNo, "2");
        QCOMPARE(other.EntryUpdate(trip), succeeded);

        QCOMPARE(log.sql.LocationUpdate(jetty), succeeded);
        QCOMPARE(jetty.Text(0), "3"s);
        QCOMPARE(log.sql.LocationNameGet("2"), "Reef"s);
        QCOMPARE(log.sql.LocationNameGet("3"), "Jetty"s);
        QCOMPARE(log.sql.Init(), succeeded); // as at the next start
        QCOMPARE(log.Trip(1).Text(EntryField::LocNo), "1"s);
        QCOMPARE(log.Trip(2).Text(EntryField::LocNo), "3"s);
        QCOMPARE(log.Trip(3).Text(EntryField::LocNo), "1"s);
        QCOMPARE(log.Trip(4).Text(EntryField::LocNo), "2"s);
        QVERIFY(log.notices.empty());
    }

    void unsavedTrip_withANewKey_refersToTheNewKeyOfItsLocation()
    {
        Log log;
        const auto operations = SystemFileOperations();
        log.operations.Fail("create", ErrorNumber::DiskFull, 2);
        log.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::DiskFull);
        log.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::DiskFull);
        Record jetty = Log::AddLocation(log.sql, "Jetty");
        Record trip = log.AddTrip("2026-05-04", "2");

        cSQL other(log.programFolder, *operations);
        QCOMPARE(other.Init(), succeeded);
        Log::AddLocation(other, "Reef");
        Record theirs;
        QCOMPARE(other.EntryGet(0, theirs), succeeded);
        QCOMPARE(other.EntryUpdate(theirs), succeeded);

        QCOMPARE(log.sql.EntryUpdate(trip), succeeded);
        QCOMPARE(trip.Text(0), "3"s);
        QCOMPARE(log.sql.LocationUpdate(jetty), succeeded);
        QCOMPARE(log.Trip(3).Text(EntryField::LocNo), "3"s);
    }
};

TEST_CLASS(tst_Conflicts)
#include "tst_Conflicts.moc"
