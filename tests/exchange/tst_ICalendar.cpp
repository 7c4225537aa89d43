// The iCalendar file: lines, folding, escapes and times.

#include "exchange/ICalendar.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::chrono_literals;
using namespace std::string_literals;

namespace
{

constexpr std::chrono::sys_days day{std::chrono::year(2026) / 11 / 14};

/// Returns the line of the only event that starts with `name`, unfolded.
std::string Line(CalendarEvent event, const std::string& name)
{
    event.start += day.time_since_epoch();
    std::string file = ICalendar({event}, day);
    for (std::size_t fold = file.find("\r\n "); fold != std::string::npos; fold = file.find("\r\n ")) {
        file.erase(fold, 3);
    }
    const std::size_t start = file.find("\r\n" + name);
    return start == std::string::npos ? "(missing)"
                                      : file.substr(start + 2, file.find("\r\n", start + 2) - start - 2);
}

} // namespace

class tst_ICalendar : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void file_hasHeaderAndEvents()
    {
        const CalendarEvent event{
            .uid = "u1", .start = day + 4h + 4min, .summary = "S", .description = "D", .location = "L"};
        QCOMPARE(ICalendar({event}, day + 1s), "BEGIN:VCALENDAR\r\n"
                                               "VERSION:2.0\r\n"
                                               "PRODID:-//Tarno//Fishing Log//EN\r\n"
                                               "BEGIN:VEVENT\r\n"
                                               "UID:u1\r\n"
                                               "DTSTAMP:20261114T000001Z\r\n"
                                               "DTSTART:20261114T040400Z\r\n"
                                               "SUMMARY:S\r\n"
                                               "DESCRIPTION:D\r\n"
                                               "LOCATION:L\r\n"
                                               "TRANSP:TRANSPARENT\r\n"
                                               "END:VEVENT\r\n"
                                               "END:VCALENDAR\r\n"s);
    }

    void noEvents_giveAnEmptyCalendar()
    {
        QCOMPARE(ICalendar({}, day), "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tarno//Fishing Log//EN\r\n"
                                     "END:VCALENDAR\r\n"s);
    }

    void specialCharacters_areEscaped()
    {
        QCOMPARE(Line({.summary = "a\\b;c,d\r\ne: \"f\""}, "SUMMARY"), "SUMMARY:a\\\\b\\;c\\,d\\ne: \"f\""s);
        QCOMPARE(Line({.location = "x\x01y\xFFz"}, "LOCATION"), "LOCATION:x\uFFFDy\uFFFDz"s);
    }

    void longLines_areFoldedBetweenCharacters()
    {
        std::string place;
        for (int count = 0; count < 60; ++count) {
            place += "\u6D5C\U0001F3A3o";
        }
        const std::string file = ICalendar({{.location = place}}, day);
        std::size_t start = 0;
        for (std::size_t end = file.find("\r\n"); end != std::string::npos; end = file.find("\r\n", start)) {
            const std::string line = file.substr(start, end - start);
            QVERIFY2(line.size() <= 75, line.c_str());
            QVERIFY2((static_cast<unsigned char>(line[0]) & 0xC0U) != 0x80U, line.c_str());
            start = end + 2;
        }
        QCOMPARE(start, file.size());
        QCOMPARE(Line({.location = place}, "LOCATION"), "LOCATION:" + place);
    }

    void lineOf75Bytes_isNotFolded()
    {
        const std::string summary(75 - std::string("SUMMARY:").size(), 'x');
        QVERIFY(ICalendar({{.summary = summary}}, day).find("SUMMARY:" + summary + "\r\n") !=
                std::string::npos);
        QVERIFY(ICalendar({{.summary = summary + 'y'}}, day).find("SUMMARY:" + summary + "\r\n y\r\n") !=
                std::string::npos);
    }
};

TEST_CLASS(tst_ICalendar)
#include "tst_ICalendar.moc"
