#pragma once

#include "support/Lists.h"
#include "support/StdStrings.h"
#include "support/TestProgram.h"

#include <string>

namespace Tarno
{

/// A log with two places and three trips.
class ProgramWithTrips : public TestProgram
{
public:
    ProgramWithTrips()
    {
        Start();
        AddLocation("Pittwater");
        AddLocation("Lake Eucumbene");
        Add("2026-11-02", "1", "Squid");
        Add("2026-11-03", "2", "Trout~CL~Redfin");
        Add("2026-12-01", "1", "=1+1");
    }

private:
    void Add(const char* date, const char* place, const char* caught)
    {
        AddEntry({{EntryField::StartDate, date},
                  {EntryField::EndDate, date},
                  {EntryField::StartTime, "06:00"},
                  {EntryField::EndTime, "08:30"},
                  {EntryField::LocNo, place},
                  {EntryField::FishCaught, caught}});
    }
};

} // namespace Tarno
