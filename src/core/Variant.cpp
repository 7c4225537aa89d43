#include "Variant.h"

#include "Conversions.h"
#include "Error.h"

#include <compare>

namespace Tarno
{

namespace
{

bool IsOutOfOrder(std::partial_ordering secondToFirst, bool descending, std::int16_t mode)
{
    if (mode != -1 && mode != 0) {
        return false;
    }
    if (std::is_eq(secondToFirst)) {
        return mode == -1;
    }
    return descending ? std::is_gt(secondToFirst) : std::is_lt(secondToFirst);
}

/// Compares two values. The result is unordered if one of them is null.
std::partial_ordering Compare(const Variant& left, const Variant& right)
{
    if (std::holds_alternative<Null>(left) || std::holds_alternative<Null>(right)) {
        return std::partial_ordering::unordered;
    }
    const auto* leftText = std::get_if<std::string>(&left);
    const auto* rightText = std::get_if<std::string>(&right);
    const auto number = [](const Variant& value) {
        const auto* found = std::get_if<double>(&value);
        return found != nullptr ? *found : 0.0;
    };
    if (leftText == nullptr && rightText == nullptr) {
        return number(left) <=> number(right);
    }
    if ((leftText == nullptr && std::holds_alternative<double>(left))) {
        return std::partial_ordering::less;
    }
    if (rightText == nullptr && std::holds_alternative<double>(right)) {
        return std::partial_ordering::greater;
    }
    return std::string_view(leftText != nullptr ? *leftText : "") <=>
           std::string_view(rightText != nullptr ? *rightText : "");
}

} // namespace

std::int16_t mMain::EmptyToNegative(const Variant& value)
{
    try {
        if (const auto* number = std::get_if<double>(&value)) {
            return RoundToInt16(*number);
        }
        const auto* text = std::get_if<std::string>(&value);
        return text == nullptr || text->empty() ? std::int16_t{-1} : ToInt16(*text);
    } catch (const Error&) {
        return -1;
    }
}

bool mMain::NullToFalse(const Variant& value)
{
    if (const auto* number = std::get_if<double>(&value)) {
        return *number != 0;
    }
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr && ToDouble(*text) != 0;
}

bool mMain::CompMe(const Variant& first, const Variant& second, bool descending, std::int16_t mode)
{
    const std::partial_ordering order = Compare(second, first);
    return order != std::partial_ordering::unordered && IsOutOfOrder(order, descending, mode);
}

bool mMain::CompMe(const std::string& first, const std::string& second, bool descending, std::int16_t mode)
{
    return IsOutOfOrder(second <=> first, descending, mode);
}

} // namespace Tarno
