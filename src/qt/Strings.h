#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace Tarno
{

// Conversions between the UTF-8 texts of the lower layers and QString.

QString FromUtf8(std::string_view text);

/// Lone surrogates become U+FFFD.
std::string ToUtf8(const QString& text);

/// Converts a stored text for a multi-line box: every "~CL~" becomes a line break.
QString ShownLines(std::string_view stored);

/// Converts the text of a multi-line box for storage.
std::string StoredLines(const QString& shown);

/// Converts a stored multi-line text for display on one line: line breaks become blanks.
QString ShownInOneLine(std::string_view stored);

} // namespace Tarno
