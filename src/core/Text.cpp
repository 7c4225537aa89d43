#include "Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

/// Returns the length of the ASCII run at the front of `text` that XML allows. Tests eight bytes at a time,
/// so the result may be up to seven bytes too short.
std::size_t AsciiLength(std::string_view text)
{
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t highest = 0x80 * ones;
    std::size_t length = 0;
    for (std::uint64_t eight = 0; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        const bool ascii = (eight & highest) == 0;
        const bool printable = ((eight - 0x20 * ones) & highest) == 0; // a byte below 0x20 would borrow
        const std::string_view bytes = text.substr(length, sizeof eight);
        if (!ascii || (!printable && !std::all_of(bytes.begin(), bytes.end(), IsXmlCharacter))) {
            break;
        }
    }
    return length;
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
    std::string_view rest = text;
    for (rest.remove_prefix(AsciiLength(rest)); !rest.empty(); rest.remove_prefix(AsciiLength(rest))) {
        const CodePoint front = FrontCodePoint(rest);
        if (front.length == 0 || !IsXmlCharacter(front.value)) {
            break;
        }
        rest.remove_prefix(front.length);
    }
    return text.size() - rest.size();
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
