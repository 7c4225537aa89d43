#include "DaylightSaving.h"

#include "core/Conversions.h"

#include <algorithm>

namespace Tarno
{

using std::chrono::year_month_day;

namespace
{

/// First and last day of daylight saving time.
struct Season {
    year_month_day start;
    year_month_day end;
};

/// Returns the season that contains `date`, or a neighbouring one if none does.
Season SeasonAround(year_month_day date, bool isNorth)
{
    using namespace mRiseSet;
    const std::chrono::year year = date.year();
    if (isNorth) {
        return {LastSundayOfMarch(year), LastSundayOfOctober(year)};
    }
    const std::chrono::year startYear =
        date.month() <= std::chrono::March ? year - std::chrono::years(1) : year;
    return {LastSundayOfOctober(startYear), LastSundayOfMarch(startYear + std::chrono::years(1))};
}

bool IsTime(std::string_view text)
{
    constexpr std::string_view shape = "dd:dd";
    return std::equal(text.begin(), text.end(), shape.begin(), shape.end(), [](char is, char wanted) {
        return wanted == 'd' ? is >= '0' && is <= '9' : is == wanted;
    });
}

int HourOf(std::string_view time)
{
    return ToInt16(time.substr(0, 2));
}

} // namespace

year_month_day mRiseSet::LastSundayOfMarch(std::chrono::year year)
{
    return std::chrono::sys_days(year / std::chrono::March / std::chrono::Sunday[std::chrono::last]);
}

year_month_day mRiseSet::LastSundayOfOctober(std::chrono::year year)
{
    return std::chrono::sys_days(year / std::chrono::October / std::chrono::Sunday[std::chrono::last]);
}

mRiseSet::DaylightSaving mRiseSet::DSTOffset(std::string_view gmt, std::string_view dstFlag,
                                             std::string_view latitude, year_month_day date)
{
    if (dstFlag != "1") {
        return {std::string(gmt)};
    }
    const Season season = SeasonAround(date, ToDouble(latitude) >= 0);
    const bool applies = season.start <= date && date <= season.end;
    return {applies ? FromDouble(ToDouble(gmt) + 1) : std::string(gmt), date == season.start,
            date == season.end};
}

std::string mRiseSet::HourEarlier(std::string_view time)
{
    const int hour = HourOf(time) - 1;
    return hour < 0 ? ":" : ZeroPadded(hour, 2).append(time.substr(2));
}

std::string mRiseSet::CorrectedForChangeover(const std::string& text, const DaylightSaving& clocks)
{
    if (!IsTime(text)) {
        return text;
    }
    const int hour = HourOf(text);
    const bool isStandardTime = (clocks.startsToday && hour < 2) || (clocks.endsToday && hour >= 4);
    return isStandardTime ? HourEarlier(text) : text;
}

} // namespace Tarno
