#pragma once

#include "core/Clock.h"

namespace Tarno
{

/// The computer's clock, with date and time written as the user's locale does.
class SystemClock final : public Clock
{
public:
    std::chrono::year_month_day Today() const override;
    std::string ShortDate() const override;
    std::string ShortTime() const override;
    std::chrono::steady_clock::time_point Now() const override;
};

} // namespace Tarno
