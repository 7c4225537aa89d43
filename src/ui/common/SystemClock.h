#pragma once

#include "core/Clock.h"

#include <QString>

namespace Tarno
{

/// Returns the time format `format` of a QLocale without its seconds, which some locales show even in their
/// short format.
QString WithoutSeconds(QString format);

/// The system clock. Formats date and time in the user's locale.
class SystemClock final : public Clock
{
public:
    std::chrono::year_month_day Today() const override;
    std::string ShortDate() const override;
    std::string ShortTime() const override;
    std::chrono::steady_clock::time_point Now() const override;
};

} // namespace Tarno
