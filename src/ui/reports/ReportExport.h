#pragma once

#include "reports/engine/Document.h"
#include "ui/common/Program.h"

class QWidget;

namespace Tarno::mMain
{

// Both ask for a file, over `parent`, and write the pages of `document` into it. An older file is replaced
// only when the new one is complete. A name that does not end with ".pdf" gets that suffix, whichever the
// format. Cancelling is silent; if the file cannot be written, a message names it.

void RTFExport(const Program& program, const Document& document, QWidget* parent);
void PDFExport(const Program& program, const Document& document, QWidget* parent);

} // namespace Tarno::mMain
