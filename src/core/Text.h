#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// Small helpers for UTF-8 texts.

/// Compares two texts, ignoring the case of ASCII letters.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// Returns `text` with every occurrence of `from` (not empty) replaced by `to`.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// Returns the parts of `text` between the separators, or an empty list if `text` is empty.
std::vector<std::string> Split(std::string_view text, char separator);

/// Joins the texts with `separator`. Split restores them unless one contains the separator or the only one is
/// empty.
std::string Join(const std::vector<std::string>& texts, char separator);

/// Returns for example "1 trip" or "2 trips".
std::string Counted(std::size_t count, const std::string& noun);

/// Whether XML 1.0 allows the character.
bool IsXmlCharacter(char32_t value);

/// Whether `text` is valid UTF-8 (no overlong form, no surrogate, nothing above U+10FFFF) and contains only
/// characters that XML 1.0 allows: no control character except tab, line feed and carriage return, neither
/// U+FFFE nor U+FFFF.
bool IsXmlText(std::string_view text);

/// Returns the length of the longest beginning of `text` for which IsXmlText returns true.
std::size_t XmlTextLength(std::string_view text);

/// Returns `text` with U+FFFD in place of every character that XML 1.0 does not allow and every byte that is
/// not valid UTF-8.
std::string XmlText(std::string_view text);

/// Whether `bytes` begin with a UTF-16 byte order mark.
bool HasUtf16Mark(std::string_view bytes);

/// Converts UTF-16 with a byte order mark to UTF-8. For malformed input (a lone surrogate, or half a unit at
/// the end) IsXmlText returns false for the result.
std::string FromUtf16(std::string_view bytes);

namespace mMain
{

/// Converts a stored text for display: every "~CL~" becomes a carriage return and line feed.
std::string DecodeLineBreaks(std::string_view text);

/// Converts a displayed text for storage: every carriage return and line feed becomes "~CL~".
std::string EncodeLineBreaks(std::string_view text);

} // namespace mMain

} // namespace Tarno
