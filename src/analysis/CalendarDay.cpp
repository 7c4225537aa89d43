#include "CalendarDay.h"

#include "analysis/ComparableValues.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace Tarno
{

namespace
{

constexpr int dayLength = 24 * 60;

/// Returns the parts of a day between a rise and a set, texts of a forecast.
std::vector<DayPart> PartsBetween(const std::string& rise, const std::string& set)
{
    if (rise == "never") {
        return set == "sets" ? std::vector<DayPart>{{0, dayLength}} : std::vector<DayPart>();
    }
    const auto from = MinutesOf(rise);
    const auto to = MinutesOf(set);
    if (from && to) {
        return *from <= *to ? std::vector<DayPart>{{*from, *to}}
                            : std::vector<DayPart>{{0, *to}, {*from, dayLength}};
    }
    if (from) {
        return {{*from, dayLength}};
    }
    return to ? std::vector<DayPart>{{0, *to}} : std::vector<DayPart>();
}

std::vector<int> Times(const std::string& first, const std::string& second)
{
    std::vector<int> times;
    for (const std::string* text : {&first, &second}) {
        if (const auto minutes = MinutesOf(*text)) {
            times.push_back(*minutes);
        }
    }
    std::sort(times.begin(), times.end());
    return times;
}

/// Appends what is unusual about the rise and set of a body.
void WarnAbout(const std::string& body, const std::string& rise, const std::string& set,
               std::vector<std::string>& warnings)
{
    if (rise == "never") {
        warnings.push_back("The " + body + (set == "sets" ? " does not set." : " does not rise."));
        return;
    }
    if (!MinutesOf(rise)) {
        warnings.push_back("The " + body + " does not rise on this day.");
    }
    if (!MinutesOf(set)) {
        warnings.push_back("The " + body + " does not set on this day.");
    }
}

/// Returns a percentage with up to two decimals.
std::string Percentage(float value)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%.2f", static_cast<double>(value));
    std::string shortened(text.data());
    shortened.erase(shortened.find_last_not_of('0') + 1);
    return shortened.ends_with('.') ? shortened.substr(0, shortened.size() - 1) : shortened;
}

/// Returns a line such as "Sun 05:40 19:42", or "Moonset 03:27" if the body only sets on that day.
std::string RiseAndSet(const std::string& body, const std::string& rise, const std::string& set)
{
    const bool hasRise = MinutesOf(rise).has_value();
    const bool hasSet = MinutesOf(set).has_value();
    if (hasRise != hasSet) {
        return '\n' + body + (hasRise ? "rise " + rise : "set " + set);
    }
    return '\n' + body + ' ' + rise + ' ' + set;
}

/// Returns a line such as "Major 09:50, 22:16", or nothing if there are no such times.
std::string PeakTimes(const std::string& name, const std::string& first, const std::string& second)
{
    const bool hasFirst = MinutesOf(first).has_value();
    const bool hasSecond = MinutesOf(second).has_value();
    return !hasFirst && !hasSecond ? std::string()
                                   : '\n' + name + ' ' + (hasFirst ? first : "") +
                                         (hasFirst && hasSecond ? ", " : "") + (hasSecond ? second : "");
}

} // namespace

CalendarDay DayAt(const LocationTexts& location, std::chrono::year_month_day date)
{
    CalendarDay day{.date = date, .moon = ForecastMoon(date)};
    if (!location.IsComplete()) {
        return day;
    }
    try {
        day.times = ForecastRiseSet(location, date);
    } catch (const Error&) { // the coordinates are not numbers
        return day;
    }
    day.daylight = PartsBetween(day.times->sunRise, day.times->sunSet);
    day.moonUp = PartsBetween(day.times->moonRise, day.times->moonSet);
    day.majors = Times(day.times->major1, day.times->major2);
    day.minors = Times(day.times->minor1, day.times->minor2);
    return day;
}

std::string LongDate(std::chrono::year_month_day date)
{
    constexpr std::array weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};
    const std::chrono::weekday weekday{std::chrono::sys_days(date)};
    return std::string(weekdays.at(weekday.c_encoding())) + ' ' +
           std::to_string(static_cast<unsigned>(date.day())) + ' ' +
           std::string(monthNames.at(static_cast<unsigned>(date.month()) - 1)) + ' ' +
           std::to_string(static_cast<int>(date.year()));
}

std::string DescribeDay(const CalendarDay& day, int trips)
{
    const auto rating = static_cast<std::size_t>(day.moon.prediction);
    std::string text = LongDate(day.date) + ", rating " + std::string(FieldWords::prediction.at(rating)) +
                       ", moon " + std::to_string(day.moon.percent) + " % " +
                       (day.moon.waxing ? "waxing" : "waning");
    if (day.times && day.majors.size() == 2) {
        text += ", majors " + day.times->major1 + " and " + day.times->major2;
    } else if (day.times && day.majors.size() == 1) {
        text += ", major " + day.times->major1;
    }
    if (trips > 0) {
        text += ", " + std::to_string(trips) + (trips == 1 ? " trip" : " trips");
    }
    return text;
}

std::string SheetText(const CalendarDay& day, int trips)
{
    std::string text = std::to_string(static_cast<unsigned>(day.date.day())) + "   " +
                       std::string(FieldWords::prediction.at(static_cast<std::size_t>(day.moon.prediction))) +
                       "\nMoon " + std::to_string(day.moon.percent) + " % " +
                       (day.moon.waxing ? "waxing" : "waning");
    if (day.times) {
        text += RiseAndSet("Sun", day.times->sunRise, day.times->sunSet) +
                RiseAndSet("Moon", day.times->moonRise, day.times->moonSet) +
                PeakTimes("Major", day.times->major1, day.times->major2) +
                PeakTimes("Minor", day.times->minor1, day.times->minor2);
    }
    if (trips > 0) {
        text += '\n' + std::to_string(trips) + (trips == 1 ? " trip" : " trips");
    }
    return text;
}

std::string ReasonOfRating(std::chrono::year_month_day date)
{
    const mMoonPhase::Light light = LightOn(date);
    const auto band = mMoonPhase::BandOf(light.percent);
    if (!band) {
        return {};
    }
    return std::string(mMoonPhase::Rating(light.percent, light.waxing).rating) + ": the moon is " +
           (light.waxing ? "waxing" : "waning") + " and " + Percentage(band->first) + " to " +
           Percentage(band->last) + " % lit";
}

std::vector<std::string> WarningsFor(const CalendarDay& day)
{
    std::vector<std::string> warnings;
    if (!day.times) {
        warnings.emplace_back("The times of sun and moon need a location with coordinates and a time zone.");
        return warnings;
    }
    WarnAbout("sun", day.times->sunRise, day.times->sunSet, warnings);
    WarnAbout("moon", day.times->moonRise, day.times->moonSet, warnings);
    if (day.majors.empty()) {
        warnings.emplace_back("There are no major and minor times.");
    }
    return warnings;
}

LocationTexts TextsOf(const RecordView& location)
{
    return {location.Text(LocationField::LocLatt), location.Text(LocationField::LocLong),
            location.Text(LocationField::LocGMT), location.Text(LocationField::LocDST)};
}

TripDays::TripDays(const RecordList& trips)
{
    const auto dayOf = [](const RecordView& trip, EntryField::Position field) {
        try {
            return std::optional(std::chrono::sys_days(ToDate(trip.Text(field))));
        } catch (const Error&) {
            return std::optional<std::chrono::sys_days>();
        }
    };
    for (const RecordView& trip : trips) {
        if (const auto first = dayOf(trip, EntryField::StartDate)) {
            const auto last = dayOf(trip, EntryField::EndDate).value_or(*first);
            m_trips.push_back({trip.Text(EntryField::TarnoNo), trip.Text(EntryField::LocNo), *first,
                               std::max(*first, last)});
        }
    }
}

std::vector<TripDays::Trip> TripDays::On(std::chrono::year_month_day date) const
{
    const std::chrono::sys_days day(date);
    std::vector<Trip> found;
    std::copy_if(m_trips.begin(), m_trips.end(), std::back_inserter(found),
                 [day](const Trip& trip) { return trip.first <= day && day <= trip.last; });
    return found;
}

} // namespace Tarno
