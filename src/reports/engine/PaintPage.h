#pragma once

#include "reports/engine/Document.h"

class QPainter;

namespace Tarno
{

/// Paints page `page` (from 0) with its upper left corner at the origin. One unit of `painter` is one twip;
/// the caller sets the scale.
void PaintPage(QPainter& painter, const Document& document, std::size_t page);

} // namespace Tarno
