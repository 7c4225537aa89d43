#pragma once

#include <chrono>
#include <string>

namespace Tarno
{

/// Where the program learns what time it is. All times are the user's local time.
class Clock
{
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    virtual std::chrono::year_month_day Today() const = 0;
    /// Today's date and the time of day as the user's desktop writes them in short, UTF-8.
    virtual std::string ShortDate() const = 0;
    virtual std::string ShortTime() const = 0;
    /// For measuring how long something takes; never goes back.
    virtual std::chrono::steady_clock::time_point Now() const = 0;
};

} // namespace Tarno
