#pragma once

#include "mMoonPhase.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

/// The texts of a location as stored in its record.
struct LocationTexts {
    std::string latitude;  ///< decimal degrees, north positive
    std::string longitude; ///< decimal degrees, east positive
    std::string gmt;       ///< hours that local standard time is ahead of GMT
    std::string dst;       ///< "1" if daylight saving time applies

    /// Whether all texts that rise and set need are present.
    bool IsComplete() const { return !latitude.empty() && !longitude.empty() && !gmt.empty(); }
};

/// The illumination of the moon and the rating of a day. Both depend only on the date.
struct MoonForecast {
    std::int16_t percent = 0; ///< illuminated part of the disc, 0 to 100
    bool waxing = false;
    std::int16_t prediction = 0; ///< index of the rating: 0 poor, 1 fair, 2 good, 3 best

    /// Returns the percentage as stored in an entry: with a leading "-" while the moon wanes, even for 0.
    std::string SignedPhase() const;
};

/// The texts of the sun, moon and peak time boxes for one place and day in local time, including daylight
/// saving time: "hh:mm" up to "24:00", or ":" for none. "never" in a rise box and "sets" or "rises" in its
/// set box are read together as "never sets" or "never rises". A missing sunset is empty instead of ":".
struct RiseSetForecast {
    std::string sunRise;
    std::string sunSet;
    std::string moonRise;
    std::string moonSet;
    std::string major1;
    std::string major2;
    std::string minor1;
    std::string minor2;
};

/// All calculated values of a trip.
struct DayForecast {
    MoonForecast moon;
    RiseSetForecast riseSet;
};

/// Returns the minutes since midnight of a calculated time, "hh:mm" up to "24:00", or nullopt for other
/// texts.
std::optional<int> MinutesOf(std::string_view time);

/// Returns the moon's values on `date`. Never fails.
MoonForecast ForecastMoon(std::chrono::year_month_day date);

/// Returns the illumination from which ForecastMoon follows.
mMoonPhase::Light LightOn(std::chrono::year_month_day date);

/// Returns the times on `date` at `location`, which must be complete. Throws Error TypeMismatch or Overflow
/// if a text is not a number.
RiseSetForecast ForecastRiseSet(const LocationTexts& location, std::chrono::year_month_day date);

/// Returns both forecasts.
DayForecast Forecast(const LocationTexts& location, std::chrono::year_month_day date);

} // namespace Tarno
