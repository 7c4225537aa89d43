// What the calendar shows of a day, and the trips by day.

#include "SmallLog.h"
#include "analysis/CalendarDay.h"
#include "support/TestClass.h"

#include <QFile>

#include <algorithm>

using namespace Tarno;

using namespace std::string_literals;
using std::chrono::year;
using std::chrono::year_month_day;

namespace
{

using Texts = std::vector<std::string>;

const LocationTexts pittwater{"-33.59", "151.32", "10", "1"};
const LocationTexts tromso{"69.65", "18.96", "1", "1"};

std::string Parts(const std::vector<DayPart>& parts)
{
    std::string text;
    for (const DayPart& part : parts) {
        text += (text.empty() ? "" : " ") + std::to_string(part.from) + "-" + std::to_string(part.to);
    }
    return text;
}

int Minutes(const QString& time)
{
    return time.left(2).toInt() * 60 + time.mid(3).toInt();
}

} // namespace

class tst_CalendarDay : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    /// Every time of the reference places and days is in the texts and parts of the calendar.
    void referenceDays_areShown()
    {
        QFile file(QStringLiteral(TARNO_SHIPPED_DATA "/../tests/astro/data/forecast.tsv"));
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        file.readLine(); // column names
        int rows = 0;
        while (!file.atEnd()) {
            const QStringList cells = QString::fromUtf8(file.readLine()).trimmed().split(QLatin1Char('\t'));
            const auto text = [&](int cell) { return cells.at(cell).toStdString(); };
            const QStringList date = cells.at(4).split(QLatin1Char('-'));
            const CalendarDay day = DayAt({text(0), text(1), text(2), text(3)},
                                          year(date.at(0).toInt()) / date.at(1).toInt() / date.at(2).toInt());
            const std::string moon = text(9) + " % " + (text(10) == "1" ? "waxing" : "waning");
            const std::string rating(FieldWords::prediction.at(std::stoul(text(12))));
            std::string majors;
            if (text(14) != ":") {
                majors = ", majors " + text(13) + " and " + text(14);
            } else if (text(13) != ":") {
                majors = ", major " + text(13);
            }
            QCOMPARE(DescribeDay(day, 0),
                     LongDate(day.date) + ", rating " + rating + ", moon " + moon + majors);
            const std::string sheet = SheetText(day, 0);
            for (const int cell : {5, 6, 7, 8, 13, 14, 15, 16}) {
                QVERIFY2(text(cell) == ":" || sheet.find(text(cell)) != std::string::npos, sheet.c_str());
            }
            QVERIFY(sheet.find(':' == text(5)[0] ? "" : "Moon " + moon) != std::string::npos);
            for (const auto& [cell, times] : {std::pair(13, &day.majors), std::pair(14, &day.majors),
                                              std::pair(15, &day.minors), std::pair(16, &day.minors)}) {
                QVERIFY(text(cell) == ":" ||
                        std::count(times->begin(), times->end(), Minutes(cells.at(cell))) > 0);
            }
            ++rows;
        }
        QCOMPARE(rows, 300);
    }

    void description_hasEverything()
    {
        const CalendarDay day = DayAt(pittwater, year(2026) / 11 / 22);
        QCOMPARE(DescribeDay(day, 0),
                 "Sunday 22 November 2026, rating Fair, moon 85 % waxing, majors 09:50 and 22:16"s);
        QVERIFY(DescribeDay(day, 1).ends_with(", 1 trip"));
        QVERIFY(DescribeDay(day, 2).ends_with(", 2 trips"));
    }

    void sheetText_hasALineForEachValue()
    {
        QCOMPARE(SheetText(DayAt(pittwater, year(2026) / 11 / 22), 1),
                 "22   Fair\nMoon 85 % waxing\nSun 05:40 19:42\n"
                 "Moon 17:07 03:27\nMajor 09:50, 22:16\n"
                 "Minor 03:37, 16:03\n1 trip"s);
    }

    void parts_areBetweenRiseAndSet()
    {
        const CalendarDay day = DayAt(pittwater, year(2026) / 11 / 22);
        QCOMPARE(Parts(day.daylight), "340-1182"s);
        QCOMPARE(Parts(day.moonUp), "0-207 1027-1440"s); // sets before it rises
    }

    void polarDays_areWholeOrEmpty()
    {
        const CalendarDay summer = DayAt(tromso, year(2026) / 6 / 21);
        QCOMPARE(Parts(summer.daylight), "0-1440"s);
        QVERIFY(WarningsFor(summer).front() == "The sun does not set.");
        const CalendarDay winter = DayAt(tromso, year(2026) / 12 / 21);
        QCOMPARE(Parts(winter.daylight), ""s);
        QVERIFY(WarningsFor(winter).front() == "The sun does not rise.");
    }

    void missingMoonEvents_areWarnings()
    {
        int withoutRise = 0;
        int withoutSet = 0;
        for (int date = 1; date <= 31; ++date) {
            const CalendarDay day = DayAt(pittwater, year(2026) / 12 / date);
            const Texts warnings = WarningsFor(day);
            if (day.times->moonRise == ":") {
                ++withoutRise;
                QCOMPARE(warnings, Texts{"The moon does not rise on this day."});
                QCOMPARE(Parts(day.moonUp), "0-" + std::to_string(MinutesOf(day.times->moonSet).value()));
                QVERIFY(SheetText(day, 0).find("\nMoonset " + day.times->moonSet) != std::string::npos);
            } else if (day.times->moonSet == ":") {
                ++withoutSet;
                QCOMPARE(warnings, Texts{"The moon does not set on this day."});
                QCOMPARE(Parts(day.moonUp), std::to_string(MinutesOf(day.times->moonRise).value()) + "-1440");
                QVERIFY(SheetText(day, 0).find("\nMoonrise " + day.times->moonRise) != std::string::npos);
            } else {
                QCOMPARE(warnings, Texts());
            }
        }
        QVERIFY(withoutRise > 0 && withoutSet > 0);
    }

    void placeWithoutCoordinates_hasMoonAndRatingOnly()
    {
        for (const LocationTexts& place :
             {LocationTexts(), LocationTexts{"-33", "151", "", "0"}, LocationTexts{"south", "151", "10", "0"},
              LocationTexts{"1e999", "1", "1", "1"}}) {
            const CalendarDay day = DayAt(place, year(2026) / 11 / 22);
            QVERIFY(!day.times);
            QCOMPARE(int(day.moon.percent), 85);
            QCOMPARE(WarningsFor(day),
                     Texts{"The times of sun and moon need a location with coordinates and a time zone."});
            QCOMPARE(SheetText(day, 0), "22   Fair\nMoon 85 % waxing"s);
        }
    }

    void extremePlacesAndYears_areCalculated()
    {
        for (const LocationTexts& place :
             {LocationTexts{"90", "0", "0", "0"}, LocationTexts{"-90", "180", "12", "1"},
              LocationTexts{"0", "0", "0", "0"}}) {
            for (const year_month_day date :
                 {year_month_day(year(1) / 1 / 1), year_month_day(year(9999) / 12 / 31)}) {
                const CalendarDay day = DayAt(place, date);
                QVERIFY(day.moon.prediction >= 0);
                QVERIFY(!DescribeDay(day, 0).empty());
                WarningsFor(day);
            }
        }
    }

    /// The band of the rule that decided is quoted.
    void reason_quotesTheBand()
    {
        QCOMPARE(ReasonOfRating(year(2026) / 11 / 22), "Fair: the moon is waxing and 74.59 to 88.14 % lit"s);
        QCOMPARE(ReasonOfRating(year(2003) / 1 / 18), "Good: the moon is waning and 94.93 to 100 % lit"s);
        QCOMPARE(ReasonOfRating(year(2003) / 1 / 2), "Fair: the moon is waning and 0 to 6.78 % lit"s);
        QCOMPARE(ReasonOfRating(year(2003) / 1 / 5), "Best: the moon is waxing and 6.79 to 20.34 % lit"s);
        for (std::chrono::sys_days day(year(2026) / 1 / 1); day < std::chrono::sys_days(year(2028) / 1 / 1);
             day += std::chrono::days(1)) {
            const std::string rating(
                FieldWords::prediction.at(static_cast<std::size_t>(ForecastMoon(day).prediction)));
            QVERIFY(ReasonOfRating(day).starts_with(rating + ": "));
        }
    }

    void trips_areFoundOnEachOfTheirDays()
    {
        using namespace EntryField;
        const SmallLog log({{{StartDate, "2026-11-20"}, {EndDate, "2026-11-22"}, {LocNo, "1"}},
                            {{StartDate, "2026-11-22"}, {EndDate, "2026-11-20"}, {LocNo, "2"}},
                            {{StartDate, "2026-11-21"}, {EndDate, "soon"}, {LocNo, "3"}},
                            {{StartDate, "never"}, {EndDate, "2026-11-21"}}},
                           {});
        const TripDays days(log.Trips());
        const auto keysOn = [&](unsigned day) {
            std::string keys;
            for (const TripDays::Trip& trip : days.On(year(2026) / 11 / day)) {
                keys += trip.key + ":" + trip.place + " ";
            }
            return keys;
        };
        QCOMPARE(keysOn(19), ""s);
        QCOMPARE(keysOn(20), "1:1 "s);
        QCOMPARE(keysOn(21), "1:1 3:3 "s);
        QCOMPARE(keysOn(22), "1:1 2:2 "s);
        QCOMPARE(keysOn(23), ""s);
    }
};

TEST_CLASS(tst_CalendarDay)
#include "tst_CalendarDay.moc"
