#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace Tarno
{

/// An event without length.
struct CalendarEvent {
    std::string uid = {}; ///< unique and stable, so that a second import updates the event
    std::chrono::sys_seconds start = {};
    std::string summary = {};
    std::string description = {};
    std::string location = {};
};

/// Returns the events as an iCalendar file (RFC 5545) in UTF-8: times in UTC, lines of at most 75 bytes ended
/// by CR LF, special characters escaped. `created` is the time stamp of all events.
std::string ICalendar(const std::vector<CalendarEvent>& events, std::chrono::sys_seconds created);

} // namespace Tarno
