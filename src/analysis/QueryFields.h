#pragma once

#include "store/EntryFields.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// How the values of a field compare with ">", "<", "=" and "..".
enum class Order {
    None,
    Days,    ///< the days of the trip
    Months,  ///< the month of the start, 1 to 12
    Times,   ///< values of the form "hh:mm"
    Numbers, ///< the first number of each line, or times if the query names a time
    Words,   ///< the position of a word in its group
};

/// A field name of the query language.
struct QueryField {
    std::string_view name;
    std::vector<EntryField::Position> searched;
    Order order;
    /// In ascending order, for Order::Words and Order::Months only.
    std::span<const std::string_view> words = {};
};

/// The field names in the order in which they are proposed.
const std::vector<QueryField>& QueryFields();

/// Returns the field with the name `name`, ignoring case and accents, or null.
const QueryField* FindQueryField(std::string_view name);

/// Whether the values of the field are texts that a line can equal, not only numbers or words with an order.
bool HasTexts(const QueryField& field);

/// Whether `folded` is a folded word of one of the codes of the field.
bool IsCodeWord(const QueryField& field, std::string_view folded);

} // namespace Tarno
