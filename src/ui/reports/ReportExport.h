#pragma once

#include "reports/engine/Document.h"
#include "ui/common/Program.h"

class QWidget;

namespace Tarno::mMain
{

// Both functions ask for a file name and write the pages of `document` to that file. An existing file is
// replaced only when the new one is complete. In both formats, a name that does not end with ".pdf" gets that
// suffix. If the file cannot be written, a message names it.

void RTFExport(const Program& program, const Document& document, QWidget* parent);
void PDFExport(const Program& program, const Document& document, QWidget* parent);

} // namespace Tarno::mMain
