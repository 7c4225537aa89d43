// Writes the events of places and days as an iCalendar file, for scripts/check-calendar.sh.
//   write_events TABLE FILE    a line of TABLE has latitude, longitude, hours from GMT, "1" for daylight
//   saving
//                              and date, separated by tabs, after a line of headings; the number of the place
//                              is that of the line

#include "core/Conversions.h"
#include "exchange/PeakEvents.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

using namespace Tarno;

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: write_events TABLE FILE\n";
        return 2;
    }
    std::ifstream table(argv[1]);
    std::string line;
    std::getline(table, line);
    std::vector<CalendarEvent> events;
    for (int number = 1; std::getline(table, line); ++number) {
        std::istringstream cells(line);
        LocationTexts location;
        std::string date;
        cells >> location.latitude >> location.longitude >> location.gmt >> location.dst >> date;
        const auto day = ToDate(date);
        std::vector<CalendarEvent> more =
            PeakEvents({.location = location,
                        .number = std::to_string(number),
                        .name = "Place; no. " + std::to_string(number) + ", \"R\u00EDo\"",
                        .first = day,
                        .last = day});
        std::move(more.begin(), more.end(), std::back_inserter(events));
    }
    std::ofstream(argv[2], std::ios::binary)
        << ICalendar(events, std::chrono::sys_days(std::chrono::year(2026) / 1 / 1));
    return 0;
}
