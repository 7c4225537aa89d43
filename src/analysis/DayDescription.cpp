#include "DayDescription.h"

#include "core/Text.h"

#include <string>

namespace Tarno
{

namespace
{

/// Returns for example "rises 05:40, sets 19:42", or the one of them that happens.
std::string RiseAndSetText(const std::string& rise, const std::string& set)
{
    if (rise == "never") {
        return rise + ' ' + set;
    }
    const bool rises = MinutesOf(rise).has_value();
    const bool sets = MinutesOf(set).has_value();
    return (rises ? "rises " + rise : std::string()) + (rises && sets ? ", " : "") +
           (sets ? "sets " + set : std::string());
}

std::string TimesText(const std::string& first, const std::string& second)
{
    return MinutesOf(second) ? first + ", " + second : MinutesOf(first) ? first : std::string("none");
}

} // namespace

std::vector<DescribedValue> DescribeForecast(const CalendarDay& day)
{
    std::vector<DescribedValue> values{
        {"Day", LongDate(day.date)},
        {"Rating", ReasonOfRating(day.date)},
        {"Moon", std::to_string(day.moon.percent) + " % lit, " + (day.moon.waxing ? "waxing" : "waning")}};
    if (day.times) {
        values.push_back({"Sun", RiseAndSetText(day.times->sunRise, day.times->sunSet)});
        values.push_back({"Moon up", RiseAndSetText(day.times->moonRise, day.times->moonSet)});
        values.push_back({"Major times", TimesText(day.times->major1, day.times->major2)});
        values.push_back({"Minor times", TimesText(day.times->minor1, day.times->minor2)});
    }
    if (const auto warnings = WarningsFor(day); !warnings.empty()) {
        values.push_back({"Note", Join(warnings, '\n')});
    }
    return values;
}

} // namespace Tarno
