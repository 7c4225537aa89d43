#include "Promise.h"
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

/// Whether `text` has digits where `form` has a 0 and the same letter everywhere else.
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
        Promise(text == typed, "what is no date stays as it is");
        return;
    }
    Promise(HasForm(text, "0000-00-00"), "a date is written yyyy-mm-dd");
    const auto date = ToDate(text);
    Promise(date.ok() && FromDate(date) == text, "a date that was accepted is one of the calendar");
    std::string again = text;
    CheckDateFormat(again, ok);
    Promise(ok && again == text, "a date that was rewritten is accepted as it is");
}

void CheckTime(std::string_view typed)
{
    std::string text(typed);
    bool ok = false;
    CheckTimeFormat(text, ok);
    if (!ok) {
        Promise(text == typed, "what is no time stays as it is");
        return;
    }
    const bool word = text.empty() || text == "never" || text == "sets" || text == "rises";
    Promise(word ? text == typed : HasForm(text, "00:00") && text < "24:00" && text.substr(3) < "60",
            "a time is hh:mm of a day, or a word");
    std::string again = text;
    CheckTimeFormat(again, ok);
    Promise(ok && again == text, "a time that was rewritten is accepted as it is");
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
        Promise(number && std::abs(*number - *whole) <= 0.5, "a whole number is the nearest one");
        Promise(convert(std::to_string(*whole)) == *whole, "a whole number reads back");
    } else if (number) {
        Promise(std::abs(*number) >= std::numeric_limits<decltype(convert(text))>::max(),
                "a number that fits has a whole one near it");
    }
}

void CheckNumber(std::string_view text)
{
    const auto number = Converted(ToDouble, text);
    Promise(!number || std::isfinite(*number), "a number is finite");
    Promise(!number || ToDouble(FromDouble(*number)) == *number, "a number reads back");
    CheckWhole(ToInt16, text, number);
    CheckWhole(ToInt32, text, number);
    if (const auto date = Converted(ToDate, text)) {
        Promise(ToDate(FromDate(*date)) == *date, "a date reads back");
    }
}

} // namespace

/// The first byte chooses the language of the user; the rest is what was typed.
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
