#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace Tarno
{

/// The absence of a value: never set.
struct Empty {
    bool operator==(const Empty&) const = default;
};

/// The absence of a value: known to be nothing.
struct Null {
    bool operator==(const Null&) const = default;
};

/// A value whose kind is known only at run time.
using Variant = std::variant<Empty, Null, double, std::string>;

namespace mMain
{

/// -1 for the empty value, the empty text and whatever is no 16-bit integer, otherwise the number
/// (rounded half to even). Never fails.
std::int16_t EmptyToNegative(const Variant& value);

/// False for null and for 0, true for every other number. An empty value counts as 0.
/// Throws Error TypeMismatch for a text that is no number.
bool NullToFalse(const Variant& value);

/// Whether `first` and `second` stand in the wrong order and must be exchanged. Numbers compare as
/// numbers, texts by their bytes, a number comes before any text; an empty value is 0 beside a number
/// and "" beside a text; with null nothing is ever out of order.
/// `mode` -1 makes equal values count as out of order, 0 does not; any other mode gives false.
bool CompMe(const Variant& first, const Variant& second, bool descending, std::int16_t mode);

/// The same for two texts, as ShellSort compares its cells.
bool CompMe(const std::string& first, const std::string& second, bool descending, std::int16_t mode);

} // namespace mMain

} // namespace Tarno
