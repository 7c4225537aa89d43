#include "TextEncoding.h"

#include "core/Text.h"

#include <algorithm>
#include <array>

namespace Tarno
{

namespace
{

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// The characters of the bytes 0x80 to 0x9F; a byte without one is a control character.
constexpr std::array<char16_t, 32> windows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Whether `text` is valid UTF-8. Unlike IsXmlText, accepts every character.
bool IsUtf8(std::string_view text)
{
    for (text.remove_prefix(XmlTextLength(text)); !text.empty(); text.remove_prefix(XmlTextLength(text))) {
        if (static_cast<unsigned char>(text.front()) < 0x20) {
            text.remove_prefix(1);
        } else if (text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF")) { // no characters
            text.remove_prefix(3);
        } else {
            return false;
        }
    }
    return true;
}

std::string FromWindows1252(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            text += byte;
            continue;
        }
        const unsigned letter = code < 0xA0 ? windows1252.at(code - 0x80U) : code;
        if (letter >= 0x800) {
            text += static_cast<char>(0xE0U | (letter >> 12U));
            text += static_cast<char>(0x80U | ((letter >> 6U) & 0x3FU));
        } else {
            text += static_cast<char>(0xC0U | (letter >> 6U));
        }
        text += static_cast<char>(0x80U | (letter & 0x3FU));
    }
    return text;
}

} // namespace

std::optional<DecodedText> DecodeText(std::string_view bytes)
{
    DecodedText decoded{{}, TextEncoding::Utf8};
    if (HasUtf16Mark(bytes)) {
        decoded = {FromUtf16(bytes), TextEncoding::Utf16};
    } else if (bytes.starts_with(utf8Mark)) {
        decoded = {std::string(bytes.substr(utf8Mark.size())), TextEncoding::Utf8WithMark};
    } else if (IsUtf8(bytes)) {
        return DecodedText{std::string(bytes), TextEncoding::Utf8};
    } else {
        return DecodedText{FromWindows1252(bytes), TextEncoding::Windows1252};
    }
    return IsUtf8(decoded.text) ? std::optional(std::move(decoded)) : std::nullopt;
}

std::size_t CharacterCount(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

} // namespace Tarno
