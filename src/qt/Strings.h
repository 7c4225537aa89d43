#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace Tarno
{

// The border between the program's texts (UTF-8) and those of the windows.

QString FromUtf8(std::string_view text);

/// What is no valid Unicode, a lone surrogate, becomes U+FFFD.
std::string ToUtf8(const QString& text);

/// A stored text as a box of several lines shows it: every "~CL~" is a line break.
QString ShownLines(std::string_view stored);

/// The text of a box of several lines as it is stored.
std::string StoredLines(const QString& shown);

/// A stored text of several lines where there is room for one only: line breaks show as blanks.
QString ShownInOneLine(std::string_view stored);

} // namespace Tarno
