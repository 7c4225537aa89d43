#include "mPeakTimes.h"

#include "core/Conversions.h"
#include "core/Error.h"

#include <cmath>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::string_view none = ":";
constexpr float halfLunarDay = 12.4167F; // a lunar day has 24 h 50 min
constexpr float quarterLunarDay = 6.2083F;
constexpr float lastTransit = 24.0167F; // up to one minute past midnight counts as this day

/// Whether `words` contains `text`. True for the empty text; see docs/quirks.md.
bool IsAmong(std::string_view text, std::string_view words)
{
    return words.find(text) != std::string_view::npos;
}

/// Formats `hours`, or returns ":" if they are outside the day.
std::string TimeOnDay(float hours)
{
    return hours < 0 || hours > 24 ? std::string(none) : mPeakTimes::HoursToTime(hours);
}

} // namespace

mPeakTimes::Periods mPeakTimes::PeakTimes(const mRiseSet::RiseSetTexts& before,
                                          const mRiseSet::RiseSetTexts& today,
                                          const mRiseSet::RiseSetTexts& after)
{
    const std::string& rise = today.rise == none ? before.rise : today.rise;
    const std::string& set = today.set == none ? after.set : today.set;
    if (rise == none || set == none || IsAmong(rise, "up_down_rises_sets") || IsAmong(set, "up_down_never")) {
        return {std::string(none), std::string(none), std::string(none), std::string(none)};
    }

    std::string major1 = MoonTransit(rise, set);
    std::string major2 = OppositeTransit(major1);
    if (major2 < major1) {
        std::swap(major1, major2);
    }
    auto [minor1, minor2] = MinorTimes(major1, major2);
    return {std::move(major1), std::move(major2), std::move(minor1), std::move(minor2)};
}

std::string mPeakTimes::MoonTransit(std::string_view rise, std::string_view set)
{
    const float r = TimeToHours(rise);
    const float s = TimeToHours(set);
    if (r <= s) {
        return HoursToTime((r + s) / 2);
    }
    const float beforeMidnight = 24 - r;
    const float middle = (beforeMidnight + s) / 2 - beforeMidnight;
    return HoursToTime(middle < 0 ? middle + 24 : middle);
}

std::string mPeakTimes::OppositeTransit(std::string_view major)
{
    const float transit = TimeToHours(major);
    if (transit - halfLunarDay > 0) {
        return HoursToTime(transit - halfLunarDay);
    }
    const float later = transit + halfLunarDay;
    if (later > lastTransit) {
        return std::string(none);
    }
    return HoursToTime(later > 24 ? later - 24 : later);
}

mPeakTimes::Minors mPeakTimes::MinorTimes(std::string_view major1, std::string_view major2)
{
    if (major2 == none) {
        const float only = TimeToHours(major1);
        return {TimeOnDay(only - quarterLunarDay), TimeOnDay(only + quarterLunarDay)};
    }
    const float second = TimeToHours(major2);
    if (major1 == none) {
        const std::string minor = TimeOnDay(second - quarterLunarDay);
        return {minor, minor};
    }
    const float first = TimeToHours(major1);
    if (first - quarterLunarDay >= 0) {
        return {TimeOnDay(first - quarterLunarDay), TimeOnDay(second - quarterLunarDay)};
    }
    return {TimeOnDay(second - quarterLunarDay), TimeOnDay(second + quarterLunarDay)};
}

float mPeakTimes::TimeToHours(std::string_view time)
{
    const auto colon = time.find(':');
    if (colon == std::string_view::npos) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const float hours = ToInt16(time.substr(0, colon));
    const float minutes = ToInt16(time.substr(colon + 1));
    return hours + minutes / 60;
}

std::string mPeakTimes::HoursToTime(float hours)
{
    const float whole = std::trunc(hours);
    const float minutes = std::trunc((hours - whole) * 60);
    return ZeroPadded(static_cast<int>(whole), 2) + ':' + ZeroPadded(static_cast<int>(minutes), 2);
}

} // namespace Tarno
