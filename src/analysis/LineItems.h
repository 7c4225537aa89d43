#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// What a line of a trip names.
struct NamedItem {
    std::string name;
    std::string folded; ///< the name as it is compared: lines with equal ones name the same item
    bool isMatched;     ///< whether it is an item of the pick list
};

/// Returns the beginning of `line` that is `subject`, the subject of the folded line, when it is folded.
std::string ShownSubject(std::string_view line, std::string_view subject);

/// Tells which item of a pick list a line of a text names.
class LineItems
{
public:
    LineItems() = default;
    /// Blank items are ignored, and items that differ from an earlier one only in case and accents.
    explicit LineItems(const std::vector<std::string>& items);

    /// Returns the longest item that the line contains as whole words, ignoring case and accents; of equally
    /// long ones, the first in the line. The line may have "s" or "es" at the end of the item. If it contains
    /// no item, returns the part before the first number, comma, semicolon or bracket, as it is written, or
    /// else the whole line. Lines that are equal apart from case and accents name the same item.
    NamedItem Of(std::string_view line) const;

    /// Does the same for a line whose form `folded`, without surrounding blanks, is known.
    NamedItem Of(std::string_view line, const std::string& folded) const;

private:
    struct Item {
        std::string name;
        std::string folded;
        std::size_t length; ///< of the folded name, in characters
    };

    void Add(std::string_view name);
    const Item* Find(std::string_view folded) const;
    const Item* LongestIn(std::string_view foldedLine) const;
    const std::vector<Item>& ItemsLike(std::string_view folded) const;

    /// By the first byte of the folded name, longest first.
    std::array<std::vector<Item>, 256> m_items;
};

} // namespace Tarno
