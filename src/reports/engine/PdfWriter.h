#pragma once

#include "reports/engine/Document.h"

#include <QByteArray>

#include <functional>

namespace Tarno
{

/// Told how many pages are done; returns false to stop.
using ExportProgress = std::function<bool(int pages)>;

/// The document as a PDF file: real text, embedded fonts, the document's title. Empty when `progress`
/// stopped it.
QByteArray PdfBytes(const Document& document, const ExportProgress& progress = nullptr);

} // namespace Tarno
