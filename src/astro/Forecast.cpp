#include "Forecast.h"

#include "DaylightSaving.h"
#include "core/Conversions.h"
#include "mPeakTimes.h"
#include "mRiseSet.h"

#include <charconv>
#include <cmath>

namespace Tarno
{

using mRiseSet::Body;
using mRiseSet::RiseSetTexts;
using std::chrono::year_month_day;

namespace
{

/// A location with its texts converted to numbers.
class Place
{
public:
    explicit Place(const LocationTexts& location)
        : m_location(location),
          m_observer(mRiseSet::ObserverAt(ToDouble(location.latitude), ToDouble(location.longitude)))
    {
    }

    /// The rise and set of the sun by the clocks on `date`.
    RiseSetTexts SunTimes(year_month_day date) const { return Times(Body::Sun, date); }

    /// The rise and set of the moon, with ":" for an event that does not happen on `date`.
    RiseSetTexts MoonTimes(year_month_day date) const
    {
        const RiseSetTexts times = Times(Body::Moon, date);
        return {OrNone(times.rise), OrNone(times.set)};
    }

private:
    static std::string OrNone(const std::string& event) { return event.empty() ? ":" : event; }

    RiseSetTexts Times(Body body, year_month_day date) const
    {
        const mRiseSet::DaylightSaving clocks =
            mRiseSet::DSTOffset(m_location.gmt, m_location.dst, m_location.latitude, date);
        const RiseSetTexts times = mRiseSet::RiseAndSet(body, m_observer, ToDouble(clocks.gmt), date);
        return {CorrectedForChangeover(times.rise, clocks), CorrectedForChangeover(times.set, clocks)};
    }

    const LocationTexts& m_location;
    mRiseSet::Observer m_observer;
};

/// Returns the texts for the rise box and the set box of the sun or the moon.
RiseSetTexts BoxTexts(const RiseSetTexts& times)
{
    const std::string& rise = times.rise;
    if (rise == "up" || rise == "down" || rise.empty()) {
        return {"never", rise == "up" ? "sets" : "rises"};
    }
    return times;
}

} // namespace

std::optional<int> MinutesOf(std::string_view time)
{
    if (time.size() != 5 || time[2] != ':') {
        return std::nullopt;
    }
    int hours = 0;
    int minutes = 0;
    const bool isTime = std::from_chars(time.data(), time.data() + 2, hours).ptr == time.data() + 2 &&
                        std::from_chars(time.data() + 3, time.data() + 5, minutes).ptr == time.data() + 5;
    return isTime ? std::optional(hours * 60 + minutes) : std::nullopt;
}

std::string MoonForecast::SignedPhase() const
{
    return std::string(waxing ? "" : "-").append(std::to_string(percent));
}

mMoonPhase::Light LightOn(year_month_day date)
{
    return mMoonPhase::LitPercent(static_cast<float>(mMoonPhase::JulianDay(date) - 0.5));
}

MoonForecast ForecastMoon(year_month_day date)
{
    const mMoonPhase::Light light = LightOn(date);
    const auto stars = mMoonPhase::Rating(light.percent, light.waxing).stars.size();
    return {RoundToInt16(light.percent), light.waxing, static_cast<std::int16_t>(stars - 1)};
}

RiseSetForecast ForecastRiseSet(const LocationTexts& location, year_month_day date)
{
    const Place place(location);
    const std::chrono::sys_days day(date);
    const RiseSetTexts moonToday = place.MoonTimes(date);
    const mPeakTimes::Periods periods = mPeakTimes::PeakTimes(
        place.MoonTimes(day - std::chrono::days(1)), moonToday, place.MoonTimes(day + std::chrono::days(1)));
    const RiseSetTexts sun = BoxTexts(place.SunTimes(date));
    const RiseSetTexts moon = BoxTexts(moonToday);
    return {sun.rise,       sun.set,        moon.rise,      moon.set,
            periods.major1, periods.major2, periods.minor1, periods.minor2};
}

DayForecast Forecast(const LocationTexts& location, year_month_day date)
{
    return {ForecastMoon(date), ForecastRiseSet(location, date)};
}

} // namespace Tarno
