#include "LineItems.h"

#include "analysis/TripText.h"
#include "core/Conversions.h"

#include <QList>
#include <QString>

#include <algorithm>

namespace Tarno
{

namespace
{

/// Whether the byte at `at` continues a character of UTF-8.
bool IsContinuation(std::string_view text, std::size_t at)
{
    return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
}

std::size_t CharacterCount(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        count += IsContinuation(text, at) ? 0 : 1;
    }
    return count;
}

/// Whether a letter or a digit starts at `at`. The text is in lower case.
bool IsInWord(std::string_view text, std::size_t at)
{
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80) {
        return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
    }
    constexpr std::size_t longestCharacter = 4;
    const std::string_view character = text.substr(at, longestCharacter);
    const auto letters =
        QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size())).toUcs4();
    return !letters.empty() && QChar::isLetterOrNumber(letters.front());
}

/// Whether a word can start at `at`, which is not the end.
bool StartsWord(std::string_view text, std::size_t at)
{
    std::size_t before = at;
    while (before > 0 && IsContinuation(text, --before)) {
    }
    return at == 0 || !IsInWord(text, before) || !IsInWord(text, at);
}

/// Whether a word can end before `at`, which is not the start.
bool EndsWord(std::string_view text, std::size_t at)
{
    return at == text.size() || StartsWord(text, at);
}

/// Whether `text` has `item` at `at`, up to the end of a word or to its plural.
bool HasItem(std::string_view text, std::size_t at, std::string_view item)
{
    const std::string_view rest = text.substr(at);
    const auto hasWord = [&](std::string_view ending) {
        return rest.substr(item.size()).starts_with(ending) &&
               EndsWord(text, at + item.size() + ending.size());
    };
    return rest.starts_with(item) && (hasWord("") || hasWord("s") || hasWord("es"));
}

} // namespace

std::string ShownSubject(std::string_view line, std::string_view subject)
{
    if (const std::string_view shown = SubjectOf(line); Fold(shown) == subject) {
        return std::string(shown);
    }
    // folding turns some characters into digits, commas or brackets
    for (std::size_t length = line.size(); length > 0; --length) {
        const std::string_view shown = Trimmed(line.substr(0, length));
        const bool isWhole = length == line.size() || !IsContinuation(line, length);
        if (isWhole && Fold(shown) == subject) {
            return std::string(shown);
        }
    }
    return std::string(subject);
}

LineItems::LineItems(const std::vector<std::string>& items)
{
    for (const std::string& item : items) {
        Add(Trimmed(item));
    }
    for (std::vector<Item>& alike : m_items) {
        std::stable_sort(alike.begin(), alike.end(),
                         [](const Item& left, const Item& right) { return left.length > right.length; });
    }
}

void LineItems::Add(std::string_view name)
{
    const std::string folded(Trimmed(Fold(name)));
    if (!folded.empty() && Find(folded) == nullptr) {
        m_items.at(static_cast<unsigned char>(folded.front()))
            .push_back({std::string(name), folded, CharacterCount(folded)});
    }
}

const LineItems::Item* LineItems::Find(std::string_view folded) const
{
    if (folded.empty()) {
        return nullptr;
    }
    const std::vector<Item>& alike = ItemsLike(folded);
    const auto found =
        std::find_if(alike.begin(), alike.end(), [&](const Item& item) { return item.folded == folded; });
    return found == alike.end() ? nullptr : &*found;
}

const LineItems::Item* LineItems::LongestIn(std::string_view foldedLine) const
{
    const Item* longest = nullptr;
    for (std::size_t at = 0; at < foldedLine.size(); ++at) {
        const std::vector<Item>& alike = ItemsLike(foldedLine.substr(at));
        if (alike.empty() || IsContinuation(foldedLine, at) || !StartsWord(foldedLine, at)) {
            continue;
        }
        for (const Item& item : alike) {
            if (longest != nullptr && item.length <= longest->length) {
                break;
            }
            if (HasItem(foldedLine, at, item.folded)) {
                longest = &item;
                break;
            }
        }
    }
    return longest;
}

const std::vector<LineItems::Item>& LineItems::ItemsLike(std::string_view folded) const
{
    return m_items.at(static_cast<unsigned char>(folded.front()));
}

NamedItem LineItems::Of(std::string_view line) const
{
    return Of(line, std::string(Trimmed(Fold(line))));
}

NamedItem LineItems::Of(std::string_view line, const std::string& folded) const
{
    const std::string_view subject = SubjectOf(folded);
    const Item* longest = LongestIn(folded);
    const Item* item = longest != nullptr ? longest : Find(subject);
    return item != nullptr ? NamedItem{item->name, item->folded, true}
                           : NamedItem{ShownSubject(Trimmed(line), subject), std::string(subject), false};
}

} // namespace Tarno
