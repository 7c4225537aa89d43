#include "HeadedGroup.h"

#include <QStyleOptionGroupBox>
#include <QStylePainter>

namespace Tarno
{

/// Returns a bold font, except for a group within another. It is not the font of the widget, which its
/// controls would inherit.
QFont HeadedGroup::HeadingFont() const
{
    QFont heading = font();
    heading.setBold(qobject_cast<const HeadedGroup*>(parentWidget()) == nullptr);
    return heading;
}

QSize HeadedGroup::minimumSizeHint() const
{
    const int heading = QFontMetrics(HeadingFont()).horizontalAdvance(title() + QLatin1Char(' '));
    return QGroupBox::minimumSizeHint().expandedTo({heading, 0});
}

void HeadedGroup::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    option.subControls &= ~QStyle::SC_GroupBoxFrame;
    option.fontMetrics = QFontMetrics(HeadingFont());
    QStylePainter painter(this);
    painter.setFont(HeadingFont());
    painter.drawComplexControl(QStyle::CC_GroupBox, option);
}

} // namespace Tarno
