#include "Text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Tarno
{

namespace
{

constexpr std::string_view lineBreakMark = "~CL~";
constexpr std::string_view lineBreak = "\r\n";
constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

char LowerAscii(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

struct CodePoint {
    char32_t value = 0;
    std::size_t length = 0; ///< in bytes; 0 if the bytes are not UTF-8
};

/// Decodes the first code point of `text`, which is not empty. It may be a surrogate or above U+10FFFF.
CodePoint FrontCodePoint(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return {};
    }
    char32_t value = lead & (0x7FU >> length);
    for (const char next : text.substr(1, length - 1)) {
        if ((static_cast<unsigned char>(next) & 0xC0U) != 0x80U) {
            return {};
        }
        value = (value << 6U) | (static_cast<unsigned char>(next) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    if (value < smallest.at(length)) {
        return {};
    }
    return {value, length};
}

/// Whether `text` consists of ASCII characters that XML allows. Does not stop at the first other one, so that
/// the compiler can test many bytes at a time.
bool IsXmlAscii(std::string_view text)
{
    unsigned char others = 0; // as wide as the characters
    for (const char character : text) {
        const auto byte = static_cast<signed char>(character); // negative if it is not ASCII
        const bool isAllowed = byte >= ' ' || byte == '\t' || byte == '\n' || byte == '\r';
        others |= isAllowed ? 0 : 1;
    }
    return others == 0;
}

void AppendUtf8(char32_t value, std::string& text)
{
    const auto trail = [&](unsigned shift) { text += static_cast<char>(0x80U | ((value >> shift) & 0x3FU)); };
    if (value < 0x80) {
        text += static_cast<char>(value);
    } else if (value < 0x800) {
        text += static_cast<char>(0xC0U | (value >> 6U));
        trail(0);
    } else if (value < 0x10000) {
        text += static_cast<char>(0xE0U | (value >> 12U));
        trail(6);
        trail(0);
    } else {
        text += static_cast<char>(0xF0U | (value >> 18U));
        trail(12);
        trail(6);
        trail(0);
    }
}

} // namespace

bool EqualIgnoringCase(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0;;) {
        const std::size_t found = text.find(from, at);
        result += text.substr(at, found - at);
        if (found == std::string_view::npos) {
            return result;
        }
        result += to;
        at = found + from.size();
    }
}

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (std::size_t at = 0; at < text.size() || !parts.empty();) {
        const std::size_t found = text.find(separator, at);
        parts.emplace_back(text.substr(at, found - at));
        if (found == std::string_view::npos) {
            break;
        }
        at = found + 1;
    }
    return parts;
}

std::string Join(const std::vector<std::string>& texts, char separator)
{
    std::string joined;
    for (const std::string& text : texts) {
        if (&text != &texts.front()) {
            joined += separator;
        }
        joined += text;
    }
    return joined;
}

std::string Counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

bool IsXmlCharacter(char32_t value)
{
    if (value < 0x20) {
        return value == '\t' || value == '\n' || value == '\r';
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return !surrogate && value != 0xFFFE && value != 0xFFFF && value <= 0x10FFFF;
}

std::size_t XmlTextLength(std::string_view text)
{
    constexpr std::size_t block = 64;
    std::size_t length = 0;
    while (length < text.size()) {
        const std::string_view next = text.substr(length, block);
        if (IsXmlAscii(next)) {
            length += next.size();
            continue;
        }
        for (const std::size_t end = length + next.size(); length < end;) {
            const CodePoint front = FrontCodePoint(text.substr(length));
            if (front.length == 0 || !IsXmlCharacter(front.value)) {
                return length;
            }
            length += front.length;
        }
    }
    return length;
}

bool IsXmlText(std::string_view text)
{
    return XmlTextLength(text) == text.size();
}

std::string XmlText(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const CodePoint front = FrontCodePoint(text);
        const std::size_t length = std::max<std::size_t>(front.length, 1);
        const bool fits = front.length != 0 && IsXmlCharacter(front.value);
        result += fits ? text.substr(0, length) : replacementCharacter;
        text.remove_prefix(length);
    }
    return result;
}

bool HasUtf16Mark(std::string_view bytes)
{
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

std::string FromUtf16(std::string_view bytes)
{
    const std::size_t low = bytes.front() == '\xFF' ? 0 : 1; // offset of the low byte in a unit
    const auto unit = [&](std::size_t at) -> char32_t {
        return static_cast<unsigned char>(bytes[at + low]) |
               (static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1 - low])) << 8U);
    };
    std::string text;
    text.reserve(bytes.size());
    std::size_t at = 2;
    for (; at + 1 < bytes.size(); at += 2) {
        char32_t value = unit(at);
        const char32_t next = at + 3 < bytes.size() ? unit(at + 2) : 0;
        if (value >= 0xD800 && value < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            value = 0x10000 + ((value - 0xD800) << 10U) + (next - 0xDC00);
            at += 2;
        }
        AppendUtf8(value, text);
    }
    return at == bytes.size() ? text : text + '\xFF';
}

// A single pass is enough in both directions: the mark and the line break have no character in common, so a
// replacement cannot form a new occurrence with its neighbours.

std::string mMain::DecodeLineBreaks(std::string_view text)
{
    return ReplaceAll(text, lineBreakMark, lineBreak);
}

std::string mMain::EncodeLineBreaks(std::string_view text)
{
    return ReplaceAll(text, lineBreak, lineBreakMark);
}

} // namespace Tarno
