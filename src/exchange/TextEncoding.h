#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Tarno
{

enum class TextEncoding { Utf8, Utf8WithMark, Utf16, Windows1252 };

struct DecodedText {
    std::string text; ///< UTF-8, without a byte order mark
    TextEncoding encoding;
};

/// Decodes the bytes of a text file from another program: UTF-16 with a byte order mark, UTF-8 with or
/// without one, otherwise Windows-1252, in which every byte is a character. Unlike the pick lists, does not
/// depend on the code page of the system. Returns nullopt if the bytes contradict their mark.
std::optional<DecodedText> DecodeText(std::string_view bytes);

/// Returns the number of characters of a UTF-8 text.
std::size_t CharacterCount(std::string_view text);

} // namespace Tarno
