#pragma once

#include "reports/engine/Document.h"
#include "ui/common/Program.h"

#include <QString>

#include <optional>

class QWidget;

namespace Tarno::mMain
{

// Both functions ask for a file name and write the pages of `document` to that file. An existing file is
// replaced only when the new one is complete. In both formats, a name that does not end with ".pdf" gets that
// suffix. If the file cannot be written, a message names it. Both return the path of the written file, or
// nothing if the user cancelled or the file was not written.

std::optional<QString> RTFExport(const Program& program, const Document& document, QWidget* parent);
std::optional<QString> PDFExport(const Program& program, const Document& document, QWidget* parent);

} // namespace Tarno::mMain
