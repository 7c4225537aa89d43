#pragma once

#include <QStyledItemDelegate>

namespace Tarno
{

struct MonthCell;

/// Paints a day of the calendar: its number, the moon, the rating, the number of trips, and a strip of its 24
/// hours with daylight, the moon above the horizon, and the major and minor times.
class DayDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit DayDelegate(QObject* parent);

    /// Whether the moon is seen from the south.
    void SetSouthern(bool southern) { m_isSouthern = southern; }

    /// Returns the size that a day needs with that font.
    static QSize SmallestCell(const QFont& font);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    bool m_isSouthern = false;
};

/// Paints the lit part of the moon into `disc`: `percent` of its diameter, at the right side or the left.
void PaintMoon(QPainter& painter, const QRectF& disc, int percent, bool isLitOnTheRight);

} // namespace Tarno
