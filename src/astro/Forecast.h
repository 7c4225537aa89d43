#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace Tarno
{

/// A location's texts as its record holds them.
struct LocationTexts {
    std::string latitude;  ///< decimal degrees, north positive
    std::string longitude; ///< decimal degrees, east positive
    std::string gmt;       ///< hours that local standard time is ahead of GMT
    std::string dst;       ///< "1" when daylight saving applies there

    /// Whether everything is there that rise and set need.
    bool IsComplete() const { return !latitude.empty() && !longitude.empty() && !gmt.empty(); }
};

/// The moon's light and the rating of a day; they depend on the date alone.
struct MoonForecast {
    std::int16_t percent = 0; ///< lit part of the disc, 0 to 100
    bool waxing = false;
    std::int16_t prediction = 0; ///< index of the rating: 0 poor, 1 fair, 2 good, 3 best

    /// The lit percentage as an entry stores it: with "-" in front while the moon wanes, even before 0.
    std::string SignedPhase() const;
};

/// The texts of the sun, moon and peak time boxes for one place and day, by the clocks there, daylight
/// saving included: "hh:mm" up to "24:00", ":" for none. "never" in a rise box goes with "sets" or
/// "rises" in its set box, and reads on there: "never sets". A sunset that falls on another day is empty.
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

/// Everything that is calculated for a trip.
struct DayForecast {
    MoonForecast moon;
    RiseSetForecast riseSet;
};

/// The moon on `date`, wherever one is. Never fails.
MoonForecast ForecastMoon(std::chrono::year_month_day date);

/// The times of `date` at `location`, which must be complete. Throws Error TypeMismatch or Overflow when a
/// text is no number.
RiseSetForecast ForecastRiseSet(const LocationTexts& location, std::chrono::year_month_day date);

/// Both of the above.
DayForecast Forecast(const LocationTexts& location, std::chrono::year_month_day date);

} // namespace Tarno
