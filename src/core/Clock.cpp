#include "Clock.h"

#include <ctime>

namespace Tarno
{

std::chrono::minutes Clock::TimeOfDay() const
{
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now); // NOLINT(concurrency-mt-unsafe): one thread
    return std::chrono::hours(local->tm_hour) + std::chrono::minutes(local->tm_min);
}

} // namespace Tarno
