#pragma once

#include "reports/engine/Document.h"

namespace Tarno
{

/// Places the detail bands of `document` on pages. A band that does not fit moves to the next page; a band
/// higher than a page is split between lines of text.
void BreakIntoPages(Document& document);

} // namespace Tarno
