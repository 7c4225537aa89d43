#pragma once

#include "reports/engine/Document.h"

#include <QByteArray>

#include <functional>

namespace Tarno
{

/// Called with the number of pages that are done. Returns false to cancel.
using ExportProgress = std::function<bool(int pages)>;

/// Returns the document as a PDF file with searchable text, embedded fonts and the document's title. Returns
/// an empty array if `progress` cancelled.
QByteArray PdfBytes(const Document& document, const ExportProgress& progress = nullptr);

} // namespace Tarno
