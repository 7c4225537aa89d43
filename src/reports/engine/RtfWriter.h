#pragma once

#include "reports/engine/Document.h"

#include <QByteArray>

namespace Tarno
{

/// The document as a Rich Text file (RTF 1.6) that a word processor pages by itself: the page header and
/// footer with page fields, each detail band as table rows with the columns' widths, rules as borders.
/// Characters beyond ASCII are written as \uN?.
QByteArray RtfBytes(const Document& document);

/// `text` as it stands in an RTF file: "\", "{" and "}" escaped, line breaks as \line.
QByteArray RtfText(const QString& text);

} // namespace Tarno
