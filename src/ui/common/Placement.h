#pragma once

class QRect;
class QWidget;

namespace Tarno
{

/// Moves `floating` below `anchor`, or above it if there is no room, and within its parent. `anchor` is in
/// the coordinates of the parent.
void PlaceBeside(QWidget& floating, const QRect& anchor);

} // namespace Tarno
