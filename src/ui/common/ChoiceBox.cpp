#include "ChoiceBox.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStylePainter>
#include <QToolTip>

namespace Tarno
{

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent)
{
    constexpr int letters = 24;
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(letters);
}

QString ChoiceBox::ShownText() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    constexpr int margins = 2; // around the text in QCommonStyle
    return fontMetrics().elidedText(currentText(), Qt::ElideRight, field.width() - margins);
}

void ChoiceBox::showPopup()
{
    view()->setTextElideMode(Qt::ElideRight);
    for (int row = 0; row < count(); ++row) {
        const bool isLong = fontMetrics().horizontalAdvance(itemText(row)) > width();
        setItemData(row, isLong ? itemText(row) : QVariant(), Qt::ToolTipRole);
    }
    QComboBox::showPopup();
}

bool ChoiceBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && ShownText() != currentText()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
        return true;
    }
    return QComboBox::event(event);
}

void ChoiceBox::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = ShownText();
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

} // namespace Tarno
