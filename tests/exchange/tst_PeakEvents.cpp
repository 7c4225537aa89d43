// Events for the major and minor times of a place.

#include "exchange/PeakEvents.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <algorithm>

using namespace Tarno;

using namespace std::chrono_literals;
using namespace std::string_literals;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

namespace
{

const LocationTexts pittwater{"-33.59", "151.32", "10", "1"};

PeakEventsRequest Request(year_month_day first, year_month_day last,
                          const LocationTexts& location = pittwater)
{
    return {
        .location = location, .number = "7", .name = "Pittwater, Barrenjoey", .first = first, .last = last};
}

/// Returns the start of an event as the local time of clocks that are `ahead` of GMT: "2026-11-22 09:50".
std::string LocalStart(const CalendarEvent& event, std::chrono::minutes ahead)
{
    const auto local = event.start + ahead;
    const auto day = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::hh_mm_ss clock(local - day);
    const year_month_day date(day);
    return QStringLiteral("%1-%2-%3 %4:%5")
        .arg(static_cast<int>(date.year()))
        .arg(static_cast<unsigned>(date.month()), 2, 10, QLatin1Char('0'))
        .arg(static_cast<unsigned>(date.day()), 2, 10, QLatin1Char('0'))
        .arg(clock.hours().count(), 2, 10, QLatin1Char('0'))
        .arg(clock.minutes().count(), 2, 10, QLatin1Char('0'))
        .toStdString();
}

} // namespace

class tst_PeakEvents : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void day_hasAnEventForEachTime()
    {
        const year_month_day date = year(2026) / 11 / 22;
        const std::vector<CalendarEvent> events = PeakEvents(Request(date, date));
        std::vector<std::string> found;
        for (const CalendarEvent& event : events) {
            found.push_back(event.uid + " " + LocalStart(event, 11h));
        }
        QCOMPARE(found, (std::vector<std::string>{"20261122-major-1-place-7@tarno 2026-11-22 09:50",
                                                  "20261122-major-2-place-7@tarno 2026-11-22 22:16",
                                                  "20261122-minor-1-place-7@tarno 2026-11-22 03:37",
                                                  "20261122-minor-2-place-7@tarno 2026-11-22 16:03"}));
        QCOMPARE(events.front().summary, "Major time, day rated Fair"s);
        QCOMPARE(events.front().description,
                 "Major time 09:50 at Pittwater, Barrenjoey. Moon 85 % lit, waxing, day rated Fair."s);
        QCOMPARE(events.front().location, "Pittwater, Barrenjoey"s);
    }

    void missingTimes_areLeftOut()
    {
        // every time of a month is either there as text and event, or neither
        std::size_t times = 0;
        for (sys_days day(year(2026) / 11 / 1); day <= sys_days(year(2026) / 11 / 30);
             day += std::chrono::days(1)) {
            const RiseSetForecast forecast = ForecastRiseSet(pittwater, day);
            for (const std::string* text :
                 {&forecast.major1, &forecast.major2, &forecast.minor1, &forecast.minor2}) {
                times += *text == ":" ? 0 : 1;
            }
        }
        const auto events = PeakEvents(Request(year(2026) / 11 / 1, year(2026) / 11 / 30));
        QCOMPARE(events.size(), times);
        QVERIFY(times < std::size_t(30 * 4)); // some are missing
    }

    void goodDaysOnly_leavesOutTheOthers()
    {
        PeakEventsRequest request = Request(year(2026) / 11 / 1, year(2026) / 11 / 30);
        request.onlyGoodDays = true;
        const auto events = PeakEvents(request);
        QVERIFY(!events.empty());
        QVERIFY(events.size() < PeakEvents(Request(request.first, request.last)).size());
        QVERIFY(std::all_of(events.begin(), events.end(), [](const CalendarEvent& event) {
            return event.summary.ends_with("Good") || event.summary.ends_with("Best");
        }));
    }

    void offset_isThatOfTheDay()
    {
        const LocationTexts kathmandu{"27.7", "85.3", "5.75", "0"};
        const auto events = PeakEvents(Request(year(2026) / 7 / 1, year(2026) / 7 / 1, kathmandu));
        QCOMPARE(LocalStart(events.front(), 5h + 45min),
                 "2026-07-01 " + ForecastRiseSet(kathmandu, year(2026) / 7 / 1).major1);
    }

    /// On the days on which the clocks change, a time before the change has the offset before it.
    void changeoverDays_useBothOffsets()
    {
        int standard = 0;
        int saving = 0;
        for (int count = 2000; count < 2060; ++count) {
            // the hemisphere decides which change is in March and which in October
            for (const year_month_day date :
                 {year_month_day(sys_days(year(count) / 3 / std::chrono::Sunday[std::chrono::last])),
                  year_month_day(sys_days(year(count) / 10 / std::chrono::Sunday[std::chrono::last]))}) {
                const bool starts = date.month() == std::chrono::October;
                for (const CalendarEvent& event : PeakEvents(Request(date, date))) {
                    const std::string inSaving = LocalStart(event, 11h);
                    const std::string inStandard = LocalStart(event, 10h);
                    const std::string text = event.description.substr(std::string("Major time ").size(), 5);
                    const bool isStandard = starts ? text < "01:00" : text >= "03:00";
                    QVERIFY2((isStandard ? inStandard : inSaving).ends_with(text), event.uid.c_str());
                    ++(isStandard ? standard : saving);
                }
            }
        }
        QVERIFY(standard > 0 && saving > 0);
    }

    void endOfTheDay_isTheNextDay()
    {
        QCOMPARE(MinutesOf("24:00").value(), 24 * 60);
        QCOMPARE(MinutesOf("00:01").value(), 1);
        for (const char* text : {":", "", "never", "1:00", "ab:cd", "12:3", "12-30", "012:30"}) {
            QVERIFY2(!MinutesOf(text), text);
        }
    }

    /// Their UTC times would have no year of four digits.
    void timesOutsideTheYears_areLeftOut()
    {
        const auto isInside = [](const CalendarEvent& event) {
            return event.start >= sys_days(year(1) / 1 / 1) && event.start < sys_days(year(10000) / 1 / 1);
        };
        int all = 0;
        int left = 0;
        for (const char* gmt : {"14", "-12"}) {
            for (const year_month_day date :
                 {year_month_day(year(1) / 1 / 1), year_month_day(year(9999) / 12 / 31)}) {
                const LocationTexts place{"-33.59", "151.32", gmt, "0"};
                const auto events = PeakEvents(Request(date, date, place));
                QVERIFY(std::all_of(events.begin(), events.end(), isInside));
                left += static_cast<int>(events.size());
                const RiseSetForecast times = ForecastRiseSet(place, date);
                for (const std::string* text : {&times.major1, &times.major2, &times.minor1, &times.minor2}) {
                    all += MinutesOf(*text) ? 1 : 0;
                }
            }
        }
        QVERIFY(left > 0);
        QVERIFY(left < all);
    }

    void badLocation_raises()
    {
        const LocationTexts bad{"north", "151", "10", "0"};
        QCOMPARE(RaisedNumber([&] { PeakEvents(Request(year(2026) / 1 / 1, year(2026) / 1 / 1, bad)); }), 13);
    }
};

TEST_CLASS(tst_PeakEvents)
#include "tst_PeakEvents.moc"
