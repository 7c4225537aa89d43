#include "DateTimeCells.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "exchange/TextScanner.h"

#include <array>
#include <chrono>

namespace Tarno
{

namespace
{

using MaybeText = std::optional<std::string>;

int YearOf(std::string_view digits, int firstYear)
{
    const int year = ValueOf(digits);
    if (digits.size() != 2) {
        return year;
    }
    const int inCentury = firstYear - firstYear % 100 + year;
    return inCentury < firstYear ? inCentury + 100 : inCentury;
}

MaybeText ShortDate(std::string_view text, const TableForms& forms)
{
    using Order = TableForms::DateOrder;
    Scanner scanner(text);
    std::array<std::string_view, 3> parts;
    char separator = 0;
    for (std::string_view& part : parts) {
        if (&part != parts.data()) {
            const char found = scanner.Take("/.-");
            if (found == 0 || (separator != 0 && found != separator)) {
                return {};
            }
            separator = found;
            scanner.SkipBlanks();
        }
        part = scanner.TakeDigits(1, 4);
    }
    scanner.Take("."); // as in "31. 12. 2025."
    if (!scanner.AtEnd()) {
        return {};
    }
    const Order order = parts[0].size() == 4 ? Order::YearMonthDay : forms.dates;
    const std::string_view year = order == Order::YearMonthDay ? parts[0] : parts[2];
    const std::string_view month = order == Order::MonthDayYear ? parts[0] : parts[1];
    const std::string_view day = order == Order::DayMonthYear   ? parts[0]
                                 : order == Order::MonthDayYear ? parts[1]
                                                                : parts[2];
    if ((year.size() != 2 && year.size() != 4) || month.empty() || month.size() > 2 || day.empty() ||
        day.size() > 2) {
        return {};
    }
    const std::chrono::year_month_day date(std::chrono::year(YearOf(year, forms.firstYear)),
                                           std::chrono::month(static_cast<unsigned>(ValueOf(month))),
                                           std::chrono::day(static_cast<unsigned>(ValueOf(day))));
    return date.ok() && date.year() >= std::chrono::year(1) ? MaybeText(FromDate(date)) : std::nullopt;
}

} // namespace

std::optional<std::string> ReadDate(std::string_view text, const TableForms& forms)
{
    if (text.empty()) {
        return std::string();
    }
    try {
        return FromDate(ToDate(text));
    } catch (const Error&) {
        return ShortDate(text, forms);
    }
}

std::optional<std::string> ReadTime(std::string_view text)
{
    if (text.empty()) {
        return std::string();
    }
    constexpr int noon = 12;
    Scanner scanner(text);
    int hours = ValueOf(scanner.TakeDigits(1, 2));
    const bool isSeparated = scanner.Take(":") != 0;
    const int minutes = ValueOf(scanner.TakeDigits(2, 2));
    const int seconds = scanner.Take(":") != 0 ? ValueOf(scanner.TakeDigits(2, 2)) : 0;
    scanner.SkipBlanks();
    const bool isMorning = scanner.TakeWord("am");
    const bool isAfternoon = !isMorning && scanner.TakeWord("pm");
    if (isMorning || isAfternoon) {
        if (hours < 1 || hours > noon) {
            return {};
        }
        hours = hours % noon + (isAfternoon ? noon : 0);
    }
    const bool isTime = isSeparated && scanner.AtEnd() && hours >= 0 && hours <= 23 && minutes >= 0 &&
                        minutes <= 59 && seconds >= 0 && seconds <= 59;
    return isTime ? MaybeText(ZeroPadded(hours, 2) + ':' + ZeroPadded(minutes, 2)) : std::nullopt;
}

} // namespace Tarno
