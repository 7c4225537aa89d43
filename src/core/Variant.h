#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace Tarno
{

/// A value that was never set.
struct Empty {
    bool operator==(const Empty&) const = default;
};

/// A value that is explicitly absent.
struct Null {
    bool operator==(const Null&) const = default;
};

/// A value whose kind is known only at run time.
using Variant = std::variant<Empty, Null, double, std::string>;

namespace mMain
{

/// Returns the number rounded to an integer, halves to even. Returns -1 for an empty value, an empty text and
/// anything that does not fit a 16-bit integer. Never fails.
std::int16_t EmptyToNegative(const Variant& value);

/// Returns false for null and 0, true for any other number. An empty value counts as 0.
/// Throws Error TypeMismatch for a text that is not a number.
bool NullToFalse(const Variant& value);

/// Whether `first` and `second` are out of order and must be swapped. Numbers compare as numbers, texts by
/// their bytes, and a number precedes any text. An empty value compares as 0 with numbers and as "" with
/// texts. Null is never out of order. With `mode` -1 equal values count as out of order, with 0 they do not;
/// for any other mode the result is false.
bool CompMe(const Variant& first, const Variant& second, bool descending, std::int16_t mode);

/// Overload for two texts, used by ShellSort.
bool CompMe(const std::string& first, const std::string& second, bool descending, std::int16_t mode);

} // namespace mMain

} // namespace Tarno
