// What is proposed while a query is typed.

#include "SmallLog.h"
#include "analysis/QueryCompletion.h"
#include "support/TestClass.h"

using namespace Tarno;
using namespace EntryField;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const SmallLog& Log()
{
    static const SmallLog log(
        {
            {{StartDate, "2024-10-05"},
             {EndDate, "2024-10-05"},
             {LocNo, "2"},
             {FishCaught, "Squid~CL~ Brown trout ~CL~~CL~Bream"},
             {BaitUsed, "4\" jig~CL~a|b~CL~>big~CL~x..y~CL~a:b~CL~=~CL~-x"}},
            {{StartDate, "2025-01-05"}, {LocNo, "2"}, {FishCaught, "Bream~CL~Tailor"}},
            {{StartDate, "2024-12-31"},
             {EndDate, "2025-01-02"},
             {LocNo, "1"},
             {FishCaught, "Bream~CL~Tailor~CL~\u00C1lbacore"},
             {Obbos, "Target"}},
            {{StartDate, "5.3.2023"}, {EndDate, "later"}, {LocNo, "9"}},
        },
        {"Reef", "Wharf east", "Never visited"});
    return log;
}

/// Returns the proposals at the "^" of `marked`, each inserted into the text.
Texts Completed(std::string marked)
{
    const std::size_t cursor = marked.find('^');
    marked.erase(cursor, 1);
    const Completion completion =
        QueryCompletion([] { return Log().Trips(); }, Log().Places()).At(marked, cursor);
    Texts texts;
    for (const std::string& text : completion.texts) {
        texts.push_back(std::string(marked).replace(completion.position, completion.length, text));
    }
    return texts;
}

} // namespace

class tst_QueryCompletion : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void proposals_data();

    void proposals()
    {
        QFETCH(std::string, query);
        QTEST(Completed(query), "completed");
    }

    void proposals_areAtMostTwenty()
    {
        std::string lines;
        for (char letter = 'a'; letter <= 'z'; ++letter) {
            lines += std::string("Fish ") + letter + "~CL~";
        }
        const SmallLog log({{{FishCaught, lines}}}, {});
        const Completion completion = QueryCompletion([&] { return log.Trips(); }, {}).At("caught:", 7);
        QCOMPARE(completion.texts.size(), std::size_t(20));
        QCOMPARE(completion.texts.front(), "\"Fish a\""s);
    }

    void lines_areProposedUpToTheirDetails()
    {
        const SmallLog log({{{FishCaught, "Flathead 41 and 52 cm (kept)~CL~Flathead x 3~CL~Bream, small~CL~"
                                          "Tailor (lost)~CL~3 whiting"}}},
                           {});
        QCOMPARE(QueryCompletion([&] { return log.Trips(); }, {}).At("caught:", 7).texts,
                 (Texts{"Flathead", "\"3 whiting\"", "Bream", "Tailor"}));
    }

    void proposedValues_findTheirTrips()
    {
        const SmallLog log({{{BaitUsed, "a|b~CL~>big~CL~x..y~CL~a:b~CL~=~CL~-x~CL~a b~CL~\tc\td~CL~<~CL~|"}}},
                           {});
        const Completion completion = QueryCompletion([&] { return log.Trips(); }, {}).At("bait:", 5);
        QCOMPARE(completion.texts.size(), std::size_t(10));
        for (const std::string& text : completion.texts) {
            for (const std::string& query : {"bait:" + text, "bait:zzz|" + text}) {
                QVERIFY2(Query(query).Faults().empty(), query.c_str());
                QCOMPARE(log.Matching(query), "1"s);
            }
        }
    }

    void anyCursor_isAccepted()
    {
        const QueryCompletion completion([] { return Log().Trips(); }, Log().Places());
        const std::string query = "caught:\"br|tide:\xC3\xA9 \"-bait:a|\xFF";
        for (std::size_t cursor = 0; cursor <= query.size() + 2; ++cursor) {
            const Completion found = completion.At(query, cursor);
            QVERIFY(found.position + found.length <= query.size());
        }
    }

    void frequentLines_areSorted()
    {
        QCOMPARE(FrequentLines(Log().Trips(), FishCaught),
                 (Texts{"Bream", "Tailor", "\u00C1lbacore", "Brown trout", "Squid"}));
        QCOMPARE(FrequentLines(Log().Trips(), Method), Texts());
        QCOMPARE(FrequentLines({}, FishCaught), Texts());
    }
};

void tst_QueryCompletion::proposals_data()
{
    QTest::addColumn<std::string>("query");
    QTest::addColumn<Texts>("completed");
    const auto row = [](const char* query, const Texts& completed) {
        QTest::newRow(query) << std::string(query) << completed;
    };
    row("cau^", {"caught:"});
    row("CAU^", {"caught:"});
    row("wa^", {"water:"});
    row("w^", {"water:", "wind:", "weather:"});
    row("moon^", {"moon:", "moonrise:", "moonset:"});
    row("a -cau^ b", {"a -caught: b"});
    row("a|cau^", {"a|caught:"});
    row("x^", {});
    row("^", {});
    row("-^", {});
    row("a|^", {});
    row("\"cau^", {});
    row("a ^", {});
    row("c^au", {});
    row("06:3^", {});
    row("foo:b^", {});
    row("caught:^",
        {"caught:Bream", "caught:Tailor", "caught:\u00C1lbacore", "caught:\"Brown trout\"", "caught:Squid"});
    row("caught:br^", {"caught:Bream", "caught:\"Brown trout\""});
    row("caught:R^", {"caught:Bream", "caught:Tailor", "caught:\u00C1lbacore", "caught:\"Brown trout\""});
    row("caught:tr^", {"caught:\"Brown trout\""});
    row("caught:alb^", {"caught:\u00C1lbacore"});
    row("caught:\"brown t^", {"caught:\"Brown trout\""});
    row("-caught:bream|ta^ x", {"-caught:bream|Tailor x", "-caught:bream|target: x"});
    row("caught:bream|^|a", {"caught:bream|Bream|a", "caught:bream|Tailor|a", "caught:bream|\u00C1lbacore|a",
                             "caught:bream|\"Brown trout\"|a", "caught:bream|Squid|a"});
    row("caught:bream^", {});
    row("caught:\"brown trout\"^", {});
    row("caught:\"brown trout^", {"caught:\"Brown trout\""});
    row("caught:b^ream", {});
    row("bait:^",
        {"bait:-x", "bait:\"=\"", "bait:\">big\"", "bait:\"a:b\"", "bait:\"a|b\"", "bait:\"x..y\""});
    row("tide:^", {"tide:Top", "tide:\"Run Out\"", "tide:Bottom", "tide:\"Run In\""});
    row("tide:t^", {"tide:Top", "tide:\"Run Out\"", "tide:Bottom"});
    row("wind:s^", {"wind:SE", "wind:S", "wind:SW", "wind:Strong"});
    row("wind:n^", {"wind:N", "wind:NE", "wind:NW", "wind:Strong"});
    row("water:^", {"water:Clear", "water:Cloudy", "water:Muddy"});
    row("place:^", {"place:\"Wharf east\"", "place:Reef"});
    row("date:^", {"date:2024", "date:2025"});
    row("moon:^", {"moon:full", "moon:new", "moon:waxing", "moon:waning"});
    row("moon:wa^", {"moon:waxing", "moon:waning"});
    row("month:j^", {"month:January", "month:June", "month:July"});
    row("tidestart:t^", {"tidestart:Top", "tidestart:\"Run Out\"", "tidestart:Bottom"});
    row("clarity:^", {"clarity:Clear", "clarity:Cloudy", "clarity:Muddy"});
    row("air:^", {});
    row("start:^", {});
    row("high:^", {});
}

TEST_CLASS(tst_QueryCompletion)
#include "tst_QueryCompletion.moc"
