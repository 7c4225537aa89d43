#include "Placement.h"

#include <QRect>
#include <QWidget>

#include <algorithm>

namespace Tarno
{

void PlaceBeside(QWidget& floating, const QRect& anchor)
{
    const QWidget* parent = floating.parentWidget();
    const int below = anchor.bottom() + 2;
    const bool fitsBelow = below + floating.height() <= parent->height();
    floating.move(std::max(0, std::min(anchor.left(), parent->width() - floating.width())),
                  fitsBelow ? below : anchor.top() - floating.height() - 1);
}

} // namespace Tarno
