#include "EntryFields.h"

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr bool IsInOrder()
{
    for (std::size_t position = 0; position < entryFields.size(); ++position) {
        if (entryFields.at(position).position != position) {
            return false;
        }
    }
    return true;
}

static_assert(IsInOrder(), "the rows of entryFields are in the order of EntryField::Position, one for each");

} // namespace

const FieldInfo* FindEntryField(std::string_view name)
{
    const auto* found = std::find_if(entryFields.begin(), entryFields.end(),
                                     [&](const FieldInfo& field) { return field.name == name; });
    return found == entryFields.end() ? nullptr : found;
}

std::string CodeWord(EntryField::Position field, std::string_view code)
{
    const auto words = entryFields.at(field).words;
    const bool isCode =
        code.size() == 1 && code[0] >= '0' && static_cast<std::size_t>(code[0] - '0') < words.size();
    return std::string(isCode ? words[static_cast<std::size_t>(code[0] - '0')] : FieldWords::notSet);
}

} // namespace Tarno
