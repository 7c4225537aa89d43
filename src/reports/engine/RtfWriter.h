#pragma once

#include "reports/engine/Document.h"

#include <QByteArray>

namespace Tarno
{

/// Returns the document as a Rich Text Format file (RTF 1.6), in which the word processor breaks the pages.
/// Headers and footers contain page fields, detail bands become table rows, and lines become borders.
/// Characters outside ASCII are written as \uN?.
QByteArray RtfBytes(const Document& document);

/// Returns `text` escaped for RTF: "\", "{" and "}" get a backslash, line breaks become \line.
QByteArray RtfText(const QString& text);

} // namespace Tarno
