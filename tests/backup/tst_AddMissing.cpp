// Adding what a back-up has and the log has not.

#include "LoadedLog.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Names = std::vector<std::string>;

ImportPlan Plan(const BackUpArchive& backUp, const LoadedLog& log)
{
    return PlanMissing(backUp, log.Trips(), log.Locations());
}

} // namespace

class tst_AddMissing : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sameLog_lacksNothing()
    {
        LoadedLog log(LogFolder::Log::Sample);
        log.AddTrip("2020-01-01", "99"); // a place that does not exist
        const TemporaryFolder folder;
        log.BackUpTo(folder.PathOf("b.zip"));
        const ImportPlan plan = Plan(BackUpArchive(folder.PathOf("b.zip")), log);
        QCOMPARE(static_cast<int>(plan.Count(RowStatus::AlreadyThere)), 73);
        QVERIFY(plan.batch.trips.empty() && plan.batch.locations.empty());
    }

    void emptyLog_getsEverything()
    {
        LoadedLog sample(LogFolder::Log::Sample);
        const TemporaryFolder folder;
        sample.BackUpTo(folder.PathOf("b.zip"));
        LoadedLog here;
        const BackUpArchive backUp(folder.PathOf("b.zip"));
        ImportPlan plan = Plan(backUp, here);
        QCOMPARE(AddMissing(backUp, plan, here.program, here.operations, here.sql), succeeded);
        QCOMPARE(here.folder.Read("tarno.xml"), sample.folder.Read("tarno.xml"));
        QCOMPARE(here.folder.Read("location.xml"), sample.folder.Read("location.xml"));
        QCOMPARE(ContentsOfFolder(here.folder.PathOf("pictures")),
                 ContentsOfFolder(sample.folder.PathOf("pictures")));
        QCOMPARE(static_cast<int>(here.sql.NextUndo()->trips), 72);
    }

    void placesAndTrips_getNewNumbers()
    {
        const TemporaryFolder card;
        card.Write("a.png", "archived");
        const TemporaryFolder folder;
        {
            LoadedLog archived;
            archived.AddPlace("Reef");
            archived.AddPlace("Lake");
            archived.AddPlace("Quiet bay", card.PathOf("a.png"));
            archived.AddPlace("");
            archived.AddTrip("2020-01-01", "1", card.PathOf("a.png"));
            archived.AddTrip("2020-01-02", "2");
            archived.AddTrip("2020-01-03", "4");
            archived.AddTrip("2020-01-04", "17");
            archived.BackUpTo(folder.PathOf("b.zip"));
        }
        LoadedLog here;
        here.AddPlace("LAKE");
        here.AddPlace("Somewhere");
        here.AddPlace("Nowhere");
        here.AddPlace("Elsewhere");
        here.AddTrip("2020-01-02", "1");
        here.folder.MakeFolder("pictures");
        here.folder.Write("pictures/a.png", "present");
        const BackUpArchive backUp(folder.PathOf("b.zip"));
        ImportPlan plan = Plan(backUp, here);
        QCOMPARE(static_cast<int>(plan.Count(RowStatus::AlreadyThere)), 1);
        QCOMPARE(AddMissing(backUp, plan, here.program, here.operations, here.sql), succeeded);
        QCOMPARE(here.PlaceNames(),
                 (Names{"LAKE", "Somewhere", "Nowhere", "Elsewhere", "Reef", "Quiet bay"}));
        Names trips;
        for (const RecordView& trip : here.Trips()) {
            trips.push_back(trip.Text(EntryField::StartDate) + ' ' + trip.Text(EntryField::LocNo) + ' ' +
                            trip.Text(EntryField::Picture));
        }
        // a place without a name says nothing here; a missing place stays missing
        QCOMPARE(trips,
                 (Names{"2020-01-02 1 ", "2020-01-03  ", "2020-01-04 17 ", "2020-01-01 5 pictures/a-2.png"}));
        QCOMPARE(here.Locations().back().Text(LocationField::LocPicture), "pictures/a-2.png"s);
        QCOMPARE(here.folder.Read("pictures/a-2.png"), "archived"s);
        QVERIFY(here.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(static_cast<int>(here.Trips().size()), 1);
        // once more: nothing is added twice
        QVERIFY(here.sql.Redo().status == UndoStatus::Done);
        const ImportPlan again = Plan(backUp, here);
        QVERIFY(again.batch.trips.empty() && again.batch.locations.empty());
    }

    void failedPicture_addsNothing()
    {
        LoadedLog sample(LogFolder::Log::Sample);
        const TemporaryFolder folder;
        sample.BackUpTo(folder.PathOf("b.zip"));
        LoadedLog here;
        const Contents before = here.State();
        const BackUpArchive backUp(folder.PathOf("b.zip"));
        ImportPlan plan = Plan(backUp, here);
        here.operations.Fail("append", ErrorNumber::DiskFull, 1, 1);
        QVERIFY_THROWS_EXCEPTION(Error, AddMissing(backUp, plan, here.program, here.operations, here.sql));
        QVERIFY(here.State() == before);
        plan = Plan(backUp, here);
        QVERIFY_THROWS_EXCEPTION(Cancelled, AddMissing(backUp, plan, here.program, here.operations, here.sql,
                                                       [](double done) { return done < 0.5; }));
        QVERIFY(here.State() == before);
    }
};

TEST_CLASS(tst_AddMissing)
#include "tst_AddMissing.moc"
