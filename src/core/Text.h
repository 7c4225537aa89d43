#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// Small helpers for UTF-8 texts.

/// Whether the texts are equal but for the case of ASCII letters.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// `text` with every occurrence of `from` (not empty) replaced by `to`.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// The parts of `text` between the separators; an empty text has none.
std::vector<std::string> Split(std::string_view text, char separator);

/// The texts with the separator between them. Split returns the same texts unless one contains the separator
/// or the only one is empty.
std::string Join(const std::vector<std::string>& texts, char separator);

/// Whether XML 1.0 can carry the character.
bool IsXmlCharacter(char32_t value);

/// Whether `text` is valid UTF-8 (no overlong form, no surrogate, nothing above U+10FFFF) that XML 1.0
/// can carry: no control character but tab, line feed and carriage return, neither U+FFFE nor U+FFFF.
bool IsXmlText(std::string_view text);

/// `text` with U+FFFD in the place of every character that XML 1.0 cannot carry and of every byte that
/// is no UTF-8.
std::string XmlText(std::string_view text);

/// Whether `bytes` begin with the byte order mark of UTF-16.
bool HasUtf16Mark(std::string_view bytes);

/// UTF-16 behind its mark as UTF-8. What is no UTF-16, a lone surrogate or half a unit at the end, comes out
/// as something that is no IsXmlText.
std::string FromUtf16(std::string_view bytes);

namespace mMain
{

/// A stored text as it is shown: every "~CL~" becomes a carriage return and line feed.
std::string DecodeLineBreaks(std::string_view text);

/// A shown text as it is stored: every carriage return and line feed becomes "~CL~".
std::string EncodeLineBreaks(std::string_view text);

} // namespace mMain

} // namespace Tarno
