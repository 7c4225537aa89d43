#pragma once

#include "core/Clock.h"

namespace Tarno
{

/// A clock that moves only when a test sets it, or by a step whenever it is read.
class ScriptedClock final : public Clock
{
public:
    std::chrono::year_month_day Today() const override { return today; }

    std::string ShortDate() const override { return shortDate; }

    std::string ShortTime() const override { return shortTime; }

    std::chrono::minutes TimeOfDay() const override { return timeOfDay; }

    std::chrono::steady_clock::time_point Now() const override { return now += step; }

    std::chrono::year_month_day today{std::chrono::year(2003), std::chrono::month(2), std::chrono::day(5)};
    std::string shortDate = "5/02/2003";
    std::string shortTime = "9:07 PM";
    std::chrono::minutes timeOfDay{21 * 60 + 7};
    mutable std::chrono::steady_clock::time_point now;
    std::chrono::milliseconds step{0};
};

} // namespace Tarno
