// Copying the pictures of a log into its folder.

#include "LoadedLog.h"
#include "backup/CollectPictures.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Names = std::vector<std::string>;

/// A log whose pictures are in several places.
struct ScatteredLog : LoadedLog {
    ScatteredLog()
    {
        card.Write("a.png", "one");
        card.MakeFolder("more");
        card.Write("more/A.png", "two");
        folder.MakeFolder("pictures");
        folder.Write("pictures/here.png", "here");
        folder.Write("beside.png", "beside");
        AddPlace("Reef", card.PathOf("a.png"));
        AddTrip("2020-01-01", "1", card.PathOf("a.png"));
        AddTrip("2020-01-02", "1", card.PathOf("more/A.png"));
        AddTrip("2020-01-03", "1", folder.PathOf("pictures/here.png"));
        AddTrip("2020-01-04", "1", "pictures/here.png");
        AddTrip("2020-01-05", "1", "beside.png");
        AddTrip("2020-01-06", "1", "/no/such.png");
        AddTrip("2020-01-07", "1");
    }

    CollectPlan Plan() { return PlanCollecting(program, operations, Trips(), Locations()); }

    Status Collect(const Progress& progress = {})
    {
        return CollectPictures(Plan(), program, operations, sql, progress);
    }

    TemporaryFolder card;
};

const Names collected{"pictures/a.png",
                      "pictures/A-2.png",
                      "pictures/here.png",
                      "pictures/here.png",
                      "beside.png",
                      "/no/such.png",
                      ""};

Names TripPictures(const ScatteredLog& log)
{
    Names names;
    for (const RecordView& trip : log.Trips()) {
        names.push_back(trip.Text(EntryField::Picture));
    }
    return names;
}

} // namespace

class tst_CollectPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void plan_namesEveryPictureOutside()
    {
        ScatteredLog log;
        const CollectPlan plan = log.Plan();
        Names described;
        for (const CollectablePicture& picture : plan.pictures) {
            described.push_back(picture.stored + " > " + picture.name +
                                (picture.isCopied ? " copied " : " ") + std::to_string(picture.size));
        }
        QCOMPARE(described, (Names{log.card.PathOf("a.png") + " > pictures/a.png copied 3",
                                   log.card.PathOf("more/A.png") + " > pictures/A-2.png copied 3",
                                   log.folder.PathOf("pictures/here.png") + " > pictures/here.png 4"}));
        QCOMPARE(plan.missing, (Names{"/no/such.png"}));
        QCOMPARE(plan.bytes, std::uint64_t(6));
    }

    void collected_isOneStep()
    {
        ScatteredLog log;
        const Names before = TripPictures(log);
        const int saves = log.operations.Count("replace");
        QCOMPARE(log.Collect(), succeeded);
        QCOMPARE(log.operations.Count("replace"), saves + 2);
        QCOMPARE(TripPictures(log), collected);
        QCOMPARE(log.Locations().front().Text(LocationField::LocPicture), "pictures/a.png"s);
        QCOMPARE(log.folder.Read("pictures/a.png"), "one"s);
        QCOMPARE(log.folder.Read("pictures/A-2.png"), "two"s);
        QCOMPARE(log.card.Read("a.png"), "one"s);
        QVERIFY(log.Plan().pictures.empty());
        const auto title = log.sql.NextUndo();
        QVERIFY(title && title->kind == ChangeKind::Edit && title->trips == 3 && title->locations == 1);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QCOMPARE(TripPictures(log), before);
        QCOMPARE(log.Locations().front().Text(LocationField::LocPicture), log.card.PathOf("a.png"));
        QVERIFY(log.sql.Redo().status == UndoStatus::Done);
        QCOMPARE(TripPictures(log), collected);
        log.sql.Undo();
        QCOMPARE(log.Collect(), succeeded); // finds its copies again
        QCOMPARE(TripPictures(log), collected);
        QVERIFY(log.sql.Undo().status == UndoStatus::Done);
        QVERIFY(log.sql.NextUndo()->kind == ChangeKind::Add);
    }

    void failedCopy_changesNothing()
    {
        ScatteredLog log;
        const Contents before = log.State();
        log.operations.Fail("sync file", ErrorNumber::DiskFull, 1, 1);
        QVERIFY_THROWS_EXCEPTION(Error, log.Collect());
        QVERIFY(log.State() == before);
        QVERIFY_THROWS_EXCEPTION(Cancelled, log.Collect([](double done) { return done < 0.5; }));
        QVERIFY(log.State() == before);
    }

    void failedSave_isReported()
    {
        ScatteredLog log;
        log.operations.Fail("replace", ErrorNumber::DiskFull);
        log.reports.Expect("cSQL", "UpdateTogether", ErrorNumber::DiskFull);
        QCOMPARE(log.Collect(), failed);
        QVERIFY(!log.sql.UnsavedChanges().empty());
    }

    void changedByAnotherProgram_undoIsRefused()
    {
        ScatteredLog log;
        QCOMPARE(log.Collect(), succeeded);
        log.Replace("tarno.xml", "2020-01-02", "2021-01-02");
        QVERIFY(log.sql.Undo().status == UndoStatus::ChangedByOther);
        Names expected = collected;
        QCOMPARE(TripPictures(log), expected);
    }

    void recordsOfTheSameNumber_areNotMixed()
    {
        ScatteredLog log;
        log.Replace("tarno.xml", "<TarnoNo>2</TarnoNo>", "<TarnoNo>1</TarnoNo>");
        log.sql.Init();
        QCOMPARE(log.Collect(), succeeded);
        QCOMPARE(TripPictures(log).at(0), "pictures/a.png"s);
        QCOMPARE(TripPictures(log).at(1), log.card.PathOf("more/A.png"));
        QCOMPARE(log.Trips().at(1).Text(EntryField::StartDate), "2020-01-02"s);
    }
};

TEST_CLASS(tst_CollectPictures)
#include "tst_CollectPictures.moc"
