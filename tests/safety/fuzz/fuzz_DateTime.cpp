#include "Require.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "qt/Strings.h"
#include "ui/entry/FieldRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

using namespace Tarno;

namespace
{

/// Returns whether `text` has digits where `form` has 0, and otherwise the same characters.
bool HasForm(std::string_view text, std::string_view form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char letter, char model) {
        return model == '0' ? letter >= '0' && letter <= '9' : letter == model;
    });
}

void CheckDate(std::string_view typed, const QLocale& locale)
{
    QLocale::setDefault(locale);
    std::string text(typed);
    bool ok = false;
    CheckDateFormat(text, ok);
    if (!ok) {
        Require(text == typed, "an invalid date is not changed");
        return;
    }
    Require(HasForm(text, "0000-00-00"), "a date is written yyyy-mm-dd");
    const auto date = ToDate(text);
    Require(date.ok() && FromDate(date) == text, "an accepted date exists in the calendar");
    std::string again = text;
    CheckDateFormat(again, ok);
    Require(ok && again == text, "a normalised date is accepted unchanged");
}

void CheckTime(std::string_view typed)
{
    std::string text(typed);
    bool ok = false;
    CheckTimeFormat(text, ok);
    if (!ok) {
        Require(text == typed, "an invalid time is not changed");
        return;
    }
    const bool word = text.empty() || text == "never" || text == "sets" || text == "rises";
    Require(word ? text == typed : HasForm(text, "00:00") && text < "24:00" && text.substr(3) < "60",
            "an accepted time is hh:mm within a day, or a word");
    std::string again = text;
    CheckTimeFormat(again, ok);
    Require(ok && again == text, "a normalised time is accepted unchanged");
}

template <typename Convert>
auto Converted(Convert convert, std::string_view text) -> std::optional<decltype(convert(text))>
{
    try {
        return convert(text);
    } catch (const Error&) {
        return std::nullopt;
    }
}

template <typename Convert>
void CheckWhole(Convert convert, std::string_view text, const std::optional<double>& number)
{
    const auto whole = Converted(convert, text);
    if (whole) {
        Require(number && std::abs(*number - *whole) <= 0.5, "a number is rounded to the nearest integer");
        Require(convert(std::to_string(*whole)) == *whole, "an integer makes a round trip");
    } else if (number) {
        Require(std::abs(*number) >= std::numeric_limits<decltype(convert(text))>::max(),
                "a number in range can be converted to an integer");
    }
}

void CheckNumber(std::string_view text)
{
    const auto number = Converted(ToDouble, text);
    Require(!number || std::isfinite(*number), "a number is finite");
    Require(!number || ToDouble(FromDouble(*number)) == *number, "a number makes a round trip");
    CheckWhole(ToInt16, text, number);
    CheckWhole(ToInt32, text, number);
    if (const auto date = Converted(ToDate, text)) {
        Require(ToDate(FromDate(*date)) == *date, "a date makes a round trip");
    }
}

} // namespace

/// The first byte selects the user's locale; the rest is the typed text.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::array locales{QLocale::c(),
                                    QLocale(QStringLiteral("en_US")),
                                    QLocale(QStringLiteral("en_AU")),
                                    QLocale(QStringLiteral("de_DE")),
                                    QLocale(QStringLiteral("sv_SE")),
                                    QLocale(QStringLiteral("ja_JP")),
                                    QLocale(QStringLiteral("hu_HU")),
                                    QLocale(QStringLiteral("ar_EG"))};
    if (size > 0) {
        const std::string_view typed = BytesOf(data + 1, size - 1);
        CheckDate(typed, locales[*data % locales.size()]);
        CheckTime(typed);
        CheckNumber(typed);
    }
    return 0;
}
