#include "ICalendar.h"

#include "core/Conversions.h"
#include "core/Text.h"

#include <string_view>

namespace Tarno
{

namespace
{

/// Returns `text` as a value of the type TEXT.
std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char letter : XmlText(text)) { // valid UTF-8 without control characters
        if (letter == '\\' || letter == ';' || letter == ',') {
            escaped += '\\';
        }
        if (letter == '\n') {
            escaped += "\\n";
        } else if (letter != '\r') {
            escaped += letter;
        }
    }
    return escaped;
}

/// Appends a line, folded without splitting a character.
void AddLine(std::string& file, std::string_view line)
{
    constexpr std::size_t mostBytes = 75;
    const auto isInsideCharacter = [&](std::size_t at) {
        return (static_cast<unsigned char>(line[at]) & 0xC0U) == 0x80U;
    };
    std::size_t room = mostBytes;
    while (line.size() > room) {
        std::size_t length = room;
        while (isInsideCharacter(length)) {
            --length;
        }
        file.append(line.substr(0, length)).append("\r\n ");
        line.remove_prefix(length);
        room = mostBytes - 1; // the blank counts
    }
    file.append(line).append("\r\n");
}

/// Returns for example "20261114T175000Z".
std::string UtcText(std::chrono::sys_seconds time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    return ZeroPadded(static_cast<int>(date.year()), 4) +
           ZeroPadded(static_cast<int>(static_cast<unsigned>(date.month())), 2) +
           ZeroPadded(static_cast<int>(static_cast<unsigned>(date.day())), 2) + 'T' +
           ZeroPadded(static_cast<int>(clock.hours().count()), 2) +
           ZeroPadded(static_cast<int>(clock.minutes().count()), 2) +
           ZeroPadded(static_cast<int>(clock.seconds().count()), 2) + 'Z';
}

} // namespace

std::string ICalendar(const std::vector<CalendarEvent>& events, std::chrono::sys_seconds created)
{
    std::string file;
    AddLine(file, "BEGIN:VCALENDAR");
    AddLine(file, "VERSION:2.0");
    AddLine(file, "PRODID:-//Tarno//Fishing Log//EN");
    for (const CalendarEvent& event : events) {
        AddLine(file, "BEGIN:VEVENT");
        AddLine(file, "UID:" + Escaped(event.uid));
        AddLine(file, "DTSTAMP:" + UtcText(created));
        AddLine(file, "DTSTART:" + UtcText(event.start));
        AddLine(file, "SUMMARY:" + Escaped(event.summary));
        AddLine(file, "DESCRIPTION:" + Escaped(event.description));
        AddLine(file, "LOCATION:" + Escaped(event.location));
        AddLine(file, "TRANSP:TRANSPARENT");
        AddLine(file, "END:VEVENT");
    }
    AddLine(file, "END:VCALENDAR");
    return file;
}

} // namespace Tarno
