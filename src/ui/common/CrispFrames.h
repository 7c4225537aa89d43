#pragma once

#include <QProxyStyle>

namespace Tarno
{

/// Qt's style Fusion with complete frames around lists, text boxes and pictures at fractional scales. Fusion
/// draws them with a pen, of which the contents cover some sides at 125 percent. On a dark window they are
/// lighter than it, not darker. Check boxes in lists get an edge, without which they are hardly visible
/// there.
class CrispFrames : public QProxyStyle
{
    Q_OBJECT

public:
    CrispFrames();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace Tarno
