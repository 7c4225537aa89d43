#pragma once

#include "core/Conversions.h"
#include "qt/Strings.h"
#include "support/StdStrings.h"
#include "support/TestProgram.h"
#include "ui/calendar/MonthModel.h"

#include <QDate>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace Tarno
{

// Helpers for tests of the days of a month.

inline const LocationTexts pittwater{"-33.59", "151.32", "10", "1"};

inline std::string Text(std::chrono::year_month_day date)
{
    return FromDate(date);
}

inline std::chrono::year_month_day Date(int year, unsigned month, unsigned day)
{
    return std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
}

/// Returns the trips of a log with a trip of one day for each date and place.
inline TripDays LoggedTrips(const std::vector<std::pair<std::string, std::string>>& trips)
{
    TestProgram program;
    program.Start();
    for (const auto& [date, place] : trips) {
        program.AddEntry(
            {{EntryField::StartDate, date}, {EntryField::EndDate, date}, {EntryField::LocNo, place}});
    }
    RecordList log;
    program.sql.EntryList(log);
    return TripDays(log);
}

} // namespace Tarno
