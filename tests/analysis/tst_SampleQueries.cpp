// Questions of an angler about the sample log. The expected trips were looked up in its file.

#include "SampleRecords.h"
#include "SmallLog.h"
#include "support/TestClass.h"

using namespace Tarno;

class tst_SampleQueries : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void question_isAnswered_data()
    {
        QTest::addColumn<std::string>("query");
        QTest::addColumn<std::string>("keys");
        const auto row = [](const char* name, const char* query, const char* keys) {
            QTest::newRow(name) << std::string(query) << std::string(keys);
        };
        row("the big kingfish two years ago", "caught:kingfish date:2024", "6");
        row("kingfish since November two years ago", "caught:kingfish date:2024-11..2025", "6 12 14 35 41");
        row("full moon at Pittwater", "moon:full place:pittwater", "19 71");
        row("nearly full moon at Pittwater", "place:pittwater moon:>=90", "19 22 71");
        row("new moon", "moon:new", "3 10");
        row("rain with a north-easter", "weather:rainy|showery wind:ne", ""); // the sample has none
        row("rain with an easterly", "weather:rainy|showery wind:e|se", "16 30 61");
        row("clouds with a north-easter", "weather:overcast|cloudy wind:ne", "5 40 59");
        row("no catch", "-caught:", "5 21 60");
        row("tailor instead of bream", "target:bream caught:tailor", "2 19");
        row("a river without its accent", "place:rio", "49 50 51 52 53 54");
        row("good days with marron", "caught:marron action:>=good", "50 51 52 53");
        row("Japanese without its marks", "caught:\u30B9\u30B9\u30AD", "36");
    }

    void question_isAnswered()
    {
        QFETCH(std::string, query);
        pugi::xml_document trips;
        pugi::xml_document places;
        const PlaceNames names(SampleRecords(places, "location.xml"));
        std::string found;
        for (const RecordView& trip : SampleRecords(trips, "tarno.xml")) {
            if (Query(query).Matches(SearchedTrip(trip, names))) {
                found += (found.empty() ? "" : " ") + trip.Text(0);
            }
        }
        QTEST(found, "keys");
    }
};

TEST_CLASS(tst_SampleQueries)
#include "tst_SampleQueries.moc"
