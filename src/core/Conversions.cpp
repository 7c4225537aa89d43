#include "Conversions.h"

#include "Error.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace Tarno
{

namespace
{

double RoundedToEven(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest != 0.5) {
        return rest < 0.5 ? below : below + 1;
    }
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <typename Integer>
Integer Rounded(double value)
{
    const double whole = RoundedToEven(value);
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())) {
        throw Error(ErrorNumber::Overflow);
    }
    return static_cast<Integer>(whole);
}

/// Parses a text of 1 to `maxDigits` digits. Returns nullopt for any other text.
std::optional<unsigned> Digits(std::string_view text, std::size_t maxDigits)
{
    unsigned number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (text.empty() || text.size() > maxDigits || failure != std::errc() || stop != end) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::string_view Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

double ToDouble(std::string_view text)
{
    std::string_view number = Trimmed(text);
    const bool plus = number.starts_with('+');
    if (plus) {
        number.remove_prefix(1);
    }
    // from_chars would also accept a second sign, "inf" and "nan"
    const std::string_view unsignedPart = number.substr(!plus && number.starts_with('-') ? 1 : 0);
    if (unsignedPart.empty() ||
        std::string_view(".0123456789").find(unsignedPart.front()) == std::string_view::npos) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    double value = 0;
    const char* end = number.data() + number.size();
    const auto [stop, failure] = std::from_chars(number.data(), end, value);
    if (failure == std::errc::result_out_of_range) {
        throw Error(ErrorNumber::Overflow);
    }
    if (failure != std::errc() || stop != end) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return value;
}

std::int16_t ToInt16(std::string_view text)
{
    return Rounded<std::int16_t>(ToDouble(text));
}

std::int32_t ToInt32(std::string_view text)
{
    return Rounded<std::int32_t>(ToDouble(text));
}

std::int16_t RoundToInt16(double value)
{
    return Rounded<std::int16_t>(value);
}

std::string FromDouble(double value)
{
    std::array<char, 400> buffer{};
    const auto [end, failure] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    if (failure != std::errc()) {
        throw Error(ErrorNumber::Overflow);
    }
    return {buffer.data(), end};
}

std::chrono::year_month_day ToDate(std::string_view text)
{
    const std::string_view date = Trimmed(text);
    const auto first = date.find('-');
    const auto second = date.find('-', first == std::string_view::npos ? first : first + 1);
    if (first != 4 || second == std::string_view::npos) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const auto year = Digits(date.substr(0, first), 4);
    const auto month = Digits(date.substr(first + 1, second - first - 1), 2);
    const auto day = Digits(date.substr(second + 1), 2);
    if (!year || !month || !day || *year == 0) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const std::chrono::year_month_day found{std::chrono::year(static_cast<int>(*year)),
                                            std::chrono::month(*month), std::chrono::day(*day)};
    if (!found.ok()) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return found;
}

std::string FromDate(std::chrono::year_month_day date)
{
    return ZeroPadded(static_cast<int>(date.year()), 4) + '-' +
           ZeroPadded(static_cast<int>(static_cast<unsigned>(date.month())), 2) + '-' +
           ZeroPadded(static_cast<int>(static_cast<unsigned>(date.day())), 2);
}

std::string ZeroPadded(int number, int width)
{
    std::string digits = std::to_string(number);
    if (digits.size() < static_cast<std::size_t>(width)) {
        digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
    }
    return digits;
}

} // namespace Tarno
