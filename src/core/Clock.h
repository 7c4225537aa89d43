#pragma once

#include <chrono>
#include <string>

namespace Tarno
{

/// The source of date and time. All times are local times.
class Clock
{
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    virtual std::chrono::year_month_day Today() const = 0;
    /// Today's date and the current time, without seconds, in the short formats of the user's locale, UTF-8.
    virtual std::string ShortDate() const = 0;
    virtual std::string ShortTime() const = 0;
    /// The time since midnight, without seconds. The default is that of the system.
    virtual std::chrono::minutes TimeOfDay() const;
    /// Monotonic time for measuring durations.
    virtual std::chrono::steady_clock::time_point Now() const = 0;
};

} // namespace Tarno
