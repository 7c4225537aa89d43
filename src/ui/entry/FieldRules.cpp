#include "FieldRules.h"

#include "EntryModule.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QDate>
#include <QLineEdit>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr int firstYear = 1;
constexpr int lastYear = 9999;
constexpr int lastYearOf2000s = 29; // two-digit years up to this one are in the 2000s

/// Returns the number in one part of a time, or nothing if it overflows. Throws Error TypeMismatch if the
/// part is not a number.
std::optional<int> ParseTimePart(std::string_view part)
{
    try {
        return ToInt16(part);
    } catch (const Error& error) {
        if (error.Number() == ErrorNumber::Overflow) {
            return std::nullopt;
        }
        throw;
    }
}

/// Returns the time as "hh:mm", or nothing if it is not valid. Throws Error TypeMismatch if a part is not a
/// number.
std::optional<std::string> NormalizeTime(std::string_view text)
{
    constexpr qsizetype lengthWithoutSeparator = 4;
    const auto separator = text.find(':');
    const bool separated = separator != std::string_view::npos;
    if (!separated && FromUtf8(text).size() != lengthWithoutSeparator) {
        return std::nullopt;
    }
    const auto hours = ParseTimePart(text.substr(0, separated ? separator : 2));
    const auto minutes = ParseTimePart(text.substr(separated ? separator + 1 : 2));
    if (!hours || !minutes || *hours < 0 || *hours > 23 || *minutes < 0 || *minutes > 59) {
        return std::nullopt;
    }
    return ZeroPadded(*hours, 2) + ':' + ZeroPadded(*minutes, 2);
}

/// Rewrites an accepted time and returns whether the text is accepted. Throws like NormalizeTime.
bool AcceptTime(std::string& text)
{
    if (text.empty() || text == "never" || text == "sets" || text == "rises") {
        return true;
    }
    const auto time = NormalizeTime(text);
    text = time.value_or(text);
    return time.has_value();
}

/// Returns the short date format of the locale, changed to parts of any length and four-digit years.
QString ShortDateFormat(const QLocale& locale)
{
    QString format = locale.dateFormat(QLocale::ShortFormat);
    const auto change = [&format](const char* from, const char* to) {
        format.replace(QLatin1String(from), QLatin1String(to));
    };
    change("dd", "d");
    if (!format.contains(QLatin1String("MMM"))) {
        change("MM", "M");
    }
    change("yyyy", "yy");
    change("yy", "yyyy");
    return format;
}

/// Inserts the century before a two-digit year, which is at the start or end of `text` as in `format`.
/// Parsing needs the full year, because 29 February exists in 2000 but not in 1900.
QString WithCentury(const QString& text, const QString& format)
{
    const bool yearFirst = format.startsWith(QLatin1Char('y'));
    const int year = (yearFirst ? text.left(2) : text.right(2)).toInt();
    QString whole = text;
    return whole.insert(yearFirst ? 0 : std::max<qsizetype>(0, text.size() - 2),
                        QLatin1String(year <= lastYearOf2000s ? "20" : "19"));
}

} // namespace

std::optional<std::chrono::year_month_day> ParseUserDate(const QString& text, const QLocale& locale)
{
    try {
        return ToDate(ToUtf8(text));
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): the text may be in the locale's format
    }
    const QString format = ShortDateFormat(locale);
    const QString typed = text.trimmed();
    for (const QString& written : {typed, WithCentury(typed, format)}) {
        // QLocale accepts a year with a sign
        if (const QDate date = locale.toDate(written, format);
            date.isValid() && date.year() >= firstYear && date.year() <= lastYear) {
            return std::chrono::year(date.year()) / date.month() / date.day();
        }
    }
    return std::nullopt;
}

std::optional<std::chrono::year_month_day> DaysLater(std::chrono::year_month_day date, int days)
{
    const std::chrono::year_month_day later = std::chrono::sys_days(date) + std::chrono::days(days);
    const bool isValid = later.year() >= std::chrono::year(1) && later.year() <= std::chrono::year(9999);
    return isValid ? std::optional(later) : std::nullopt;
}

void CheckDateFormat(std::string& text, bool& ok)
{
    const auto date = ParseUserDate(FromUtf8(text));
    ok = date.has_value();
    if (ok) {
        text = FromDate(*date);
    }
}

void CheckTimeFormat(std::string& text, bool& ok)
{
    ok = false;
    Trap(entryModule, "CheckTimeFormat", [&] { ok = AcceptTime(text); });
}

void CheckTimeFormatSilently(std::string& text, bool& ok)
{
    try {
        ok = AcceptTime(text);
    } catch (const Error&) {
        ok = false;
    }
}

} // namespace Tarno
