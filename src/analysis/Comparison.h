#pragma once

#include "analysis/ComparableValues.h"
#include "analysis/QueryFields.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Tarno
{

class SearchedTrip;

/// A value that its field does not accept. The message is a sentence for the user.
class MalformedValue : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A condition such as ">18", "2024-05..2024-07" or "full".
class Comparison
{
public:
    /// Reads the value of an alternative. Returns nullopt if it is a text to search for. Throws
    /// MalformedValue, which cites `written`, the whole alternative.
    static std::optional<Comparison> Read(const QueryField& field, std::string_view value,
                                          std::string_view written);

    bool Matches(const SearchedTrip& trip) const;

private:
    enum class Operator { Overlaps, After, From, Before, UpTo };

    Comparison(const QueryField& field, Order order, Operator compare, Interval operand)
        : m_field(&field), m_order(order), m_operator(compare), m_operand(operand)
    {
    }

    bool HoldsForMonth(unsigned month) const;
    bool Holds(const Interval& value) const;

    const QueryField* m_field;
    Order m_order;
    Operator m_operator;
    Interval m_operand;
};

/// Returns a part of a query in quotation marks for a message, shortened if it is long.
std::string Cited(std::string_view written);

} // namespace Tarno
