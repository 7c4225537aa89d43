// What was typed and not saved.

#include "LoadedLog.h"
#include "backup/Drafts.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Kind = RecordTitle::Kind;
using Names = std::vector<std::string>;

Draft TripDraft(const std::string& key, const std::string& written = "2026-11-22 18:30")
{
    return {Kind::Trip, key, "/home/me/log", written, {key, "a & <b>\r\n~CL~ caf\u00e9 ", ""}, {key, "", ""}};
}

struct DraftFolder {
    TemporaryFolder parent;
    ScriptedFileOperations operations;
    Drafts drafts{parent.PathOf("drafts"), operations};

    Names FileNames() const { return NamesIn(parent.PathOf("drafts")); }
};

} // namespace

class tst_Drafts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void written_isListed()
    {
        DraftFolder test;
        QVERIFY(test.drafts.List("/home/me/log").empty());
        const Draft second = TripDraft("2", "2026-11-22 18:31");
        const Draft first = TripDraft("3");
        Draft place = TripDraft("2", "2026-11-22 18:29");
        place.kind = Kind::Location;
        Draft newTrip = TripDraft("0", "2026-11-22 18:28");
        newTrip.before.clear();
        Draft other = TripDraft("2");
        other.dataFolder = "/home/me/other log";
        Draft later = TripDraft("2", "2026-11-22 18:32");
        later.number = 2;
        for (const Draft& draft : {second, first, place, newTrip, other, later}) {
            test.drafts.Write(draft);
        }
        QVERIFY(test.drafts.List("/home/me/log") ==
                (std::vector<Draft>{newTrip, place, first, second, later}));
        QVERIFY(test.drafts.List(other.dataFolder) == std::vector<Draft>{other});
        QCOMPARE(static_cast<int>(test.FileNames().size()), 6);
    }

    void writtenAgain_replacesTheOlderOne()
    {
        DraftFolder test;
        test.drafts.Write(TripDraft("2"));
        Draft later = TripDraft("2", "2026-11-22 19:00");
        later.values.back() = "more";
        test.drafts.Write(later);
        QVERIFY(test.drafts.List(later.dataFolder) == std::vector<Draft>{later});
        test.operations.Fail("replace", ErrorNumber::DiskFull);
        QVERIFY_THROWS_EXCEPTION(Error, test.drafts.Write(TripDraft("2")));
        QVERIFY(test.drafts.List(later.dataFolder) == std::vector<Draft>{later});
        QCOMPARE(static_cast<int>(test.FileNames().size()), 1);
    }

    void removed_isGone()
    {
        DraftFolder test;
        test.drafts.Write(TripDraft("2"));
        test.drafts.Write(TripDraft("3"));
        Draft place = TripDraft("2");
        place.kind = Kind::Location;
        Draft other = TripDraft("2");
        other.dataFolder = "/home/me";
        Draft second = TripDraft("2");
        second.number = 2;
        for (const Draft& notThere : {place, other, second}) {
            QVERIFY(!test.drafts.Exists(notThere));
            test.drafts.Remove(notThere);
        }
        QCOMPARE(static_cast<int>(test.FileNames().size()), 2);
        QVERIFY(test.drafts.Exists(TripDraft("2")));
        test.drafts.Remove(TripDraft("2"));
        QVERIFY(test.drafts.List("/home/me/log") == std::vector<Draft>{TripDraft("3")});
    }

    void claimed_belongToOneProgram()
    {
        DraftFolder test;
        Drafts second(test.parent.PathOf("drafts"), test.operations);
        {
            Drafts first(test.parent.PathOf("drafts"), test.operations);
            QVERIFY(first.Claim("/home/me/log"));
            QVERIFY(first.Claim("/home/me/log"));
            QVERIFY(!second.Claim("/home/me/log"));
            QVERIFY(test.drafts.Claim("/home/me/other log"));
        }
        QVERIFY(second.Claim("/home/me/log"));
        QVERIFY(second.List("/home/me/log").empty());
        QVERIFY(Drafts(test.parent.PathOf("gone/drafts"), test.operations).Claim("/home/me/log"));
    }

    void damaged_isKeptAside_data()
    {
        QTest::addColumn<std::string>("bytes");
        DraftFolder test;
        test.drafts.Write(TripDraft("2"));
        const std::string good = ReadWholeFile(test.parent.PathOf("drafts/" + test.FileNames().front()));
        QTest::newRow("empty") << ""s;
        QTest::newRow("garbage") << "\xff\xfe\0\xd8"s;
        QTest::newRow("other root") << "<data/>"s;
        QTest::newRow("no values") << ReplaceAll(good, "<values>", "<nothing>");
        QTest::newRow("unknown kind") << ReplaceAll(good, ">trip<", ">report<");
        QTest::newRow("no key") << ReplaceAll(good, "<key>2</key>", "");
        QTest::newRow("truncated") << good.substr(0, good.size() / 2);
    }

    void damaged_isKeptAside()
    {
        QFETCH(std::string, bytes);
        DraftFolder test;
        test.drafts.Write(TripDraft("3"));
        test.parent.Write("drafts/draft-trip-0.xml", bytes);
        test.parent.Write("drafts/notes.txt", "not ours");
        test.parent.MakeFolder("drafts/draft-trip-1.xml");
        QVERIFY(test.drafts.List("/home/me/log") == std::vector<Draft>{TripDraft("3")});
        QVERIFY(test.drafts.List("/home/me/log") == std::vector<Draft>{TripDraft("3")});
        QCOMPARE(test.parent.Read("drafts/draft-trip-0.xml.damaged"), bytes);
    }

    void state_comparesWithTheRecord()
    {
        LoadedLog log;
        log.AddPlace("Reef");
        log.AddTrip("2020-01-01", "1");
        const auto textsOf = [](const RecordView& record) {
            StoredTexts texts;
            for (std::size_t position = 0; position < record.Count(); ++position) {
                texts.push_back(record.Text(position));
            }
            return texts;
        };
        Draft draft{
            Kind::Trip, "1", log.Path(), "", textsOf(log.Trips().front()), textsOf(log.Trips().front())};
        draft.values[EntryField::Obbos] = "typed";
        QVERIFY(StateOf(draft, log.sql) == DraftState::Unchanged);
        Record trip;
        log.sql.EntryGet(1, trip);
        trip.SetText(EntryField::Obbos, "other");
        log.sql.EntryUpdate(trip);
        QVERIFY(StateOf(draft, log.sql) == DraftState::ChangedSince);
        trip.SetText(EntryField::Obbos, "typed");
        log.sql.EntryUpdate(trip);
        QVERIFY(StateOf(draft, log.sql) == DraftState::Saved);
        log.sql.EntryDelete(1);
        QVERIFY(StateOf(draft, log.sql) == DraftState::RecordDeleted);
        draft.kind = Kind::Location;
        QVERIFY(StateOf(draft, log.sql) == DraftState::ChangedSince);
        draft.before.clear();
        QVERIFY(StateOf(draft, log.sql) == DraftState::NewRecord);
    }
};

TEST_CLASS(tst_Drafts)
#include "tst_Drafts.moc"
