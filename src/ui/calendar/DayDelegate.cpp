#include "DayDelegate.h"

#include "MonthModel.h"
#include "qt/Strings.h"
#include "store/EntryFields.h"
#include "ui/common/GradeColours.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace Tarno
{

namespace
{

constexpr int margin = 3;
constexpr int stripHeight = 10;
constexpr int ratingMark = 8; // with the space beside it
constexpr double minutesOfDay = 24 * 60;

const QColor night(0x2b, 0x3a, 0x55);
const QColor daylight(0xff, 0xe0, 0x82);
const QColor moonlight(0x9f, 0xb4, 0xd6);
const QColor major(0xd8, 0x3a, 0x2a);

QColor Faded(const QColor& colour, bool isFaded)
{
    QColor faded = colour;
    faded.setAlphaF(isFaded ? 0.5F : 1.0F);
    return faded;
}

/// Paints the hours: daylight, the moon as a line below it, and the major (long) and minor (short) times.
void PaintStrip(QPainter& painter, const QRectF& strip, const CalendarDay& day, bool isFaded)
{
    constexpr double moonLine = 3;
    constexpr double mark = 2;
    const auto at = [&strip](int minutes) { return strip.left() + strip.width() * minutes / minutesOfDay; };
    const auto fill = [&](const std::vector<DayPart>& parts, double top, double height,
                          const QColor& colour) {
        for (const DayPart& part : parts) {
            painter.fillRect(QRectF(at(part.from), top, at(part.to) - at(part.from), height),
                             Faded(colour, isFaded));
        }
    };
    if (!day.times) {
        return;
    }
    const double hours = strip.height() - moonLine;
    painter.fillRect(QRectF(strip.left(), strip.top(), strip.width(), hours), Faded(night, isFaded));
    fill(day.daylight, strip.top(), hours, daylight);
    fill(day.moonUp, strip.top() + hours + 1, moonLine - 1, moonlight);
    const auto markTimes = [&](const std::vector<int>& times, double height) {
        for (const int minutes : times) {
            const double left = std::clamp(at(minutes) - mark / 2, strip.left(), strip.right() - mark);
            painter.fillRect(QRectF(left, strip.top() + hours - height, mark, height), Faded(major, isFaded));
        }
    };
    markTimes(day.majors, hours);
    markTimes(day.minors, hours / 2);
}

} // namespace

void PaintMoon(QPainter& painter, const QRectF& disc, int percent, bool isLitOnTheRight)
{
    // the terminator is half an ellipse: convex beyond half moon, concave before it
    const double lit = std::clamp(percent, 0, 100) / 100.0;
    const double radius = disc.width() / 2;
    const double bulge = radius * (2 * lit - 1);
    QPainterPath half;
    half.moveTo(0, -radius);
    half.arcTo(QRectF(-radius, -radius, 2 * radius, 2 * radius), 90, -180);
    half.arcTo(QRectF(-std::abs(bulge), -radius, 2 * std::abs(bulge), 2 * radius), -90,
               bulge >= 0 ? -180 : 180);
    half.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(disc.center());
    painter.setPen(QPen(QColor(0x70, 0x78, 0x88), 1));
    painter.setBrush(night);
    painter.drawEllipse(QPointF(0, 0), radius, radius);
    painter.scale(isLitOnTheRight ? 1 : -1, 1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xf6, 0xd5));
    painter.drawPath(half);
    painter.restore();
}

DayDelegate::DayDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QSize DayDelegate::SmallestCell(const QFont& font)
{
    const QFontMetrics metrics(font);
    return {metrics.horizontalAdvance(QStringLiteral("Good +9")) + ratingMark + 2 * margin,
            2 * metrics.height() + stripHeight + 3 * margin};
}

void DayDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const MonthCell* cell = static_cast<const MonthModel*>(index.model())->CellAt(index);
    if (cell == nullptr) {
        return;
    }
    const CalendarDay& day = cell->day;
    const bool isFaded = !cell->isInMonth;
    const QPalette& colours = option.palette;
    const QRect frame = option.rect.adjusted(1, 1, -2, -2);
    const QRect inside = frame.adjusted(margin, margin - 2, -margin, -margin);
    painter->save();
    painter->fillRect(option.rect, colours.brush(QPalette::Base)); // instead of the colour of a selection
    painter->setPen(colours.color(QPalette::Mid));
    painter->drawRect(frame);
    if (option.state.testFlag(QStyle::State_Selected)) {
        QColor tint = colours.color(QPalette::Highlight);
        tint.setAlphaF(0.15F);
        painter->fillRect(frame, tint);
        const bool isFocused = option.state.testFlag(QStyle::State_HasFocus);
        painter->setPen(QPen(colours.color(QPalette::Highlight), isFocused ? 2 : 1));
        painter->drawRect(isFocused ? frame.adjusted(1, 1, 0, 0) : frame);
    }
    const int line = option.fontMetrics.height();
    const QColor text = Faded(colours.color(QPalette::Text), isFaded);

    QFont number = option.font;
    number.setBold(cell->isToday);
    number.setUnderline(cell->isToday);
    painter->setFont(number);
    painter->setPen(text);
    painter->drawText(inside, Qt::AlignLeft | Qt::AlignTop, index.data().toString());
    const QRectF disc(inside.right() - line + 2, inside.top() + 2, line - 3, line - 3);
    painter->setOpacity(isFaded ? 0.5 : 1.0);
    PaintMoon(*painter, disc, day.moon.percent, day.moon.waxing != m_isSouthern);
    painter->setOpacity(1.0);

    const auto rating = static_cast<std::size_t>(day.moon.prediction);
    const QRect second = inside.adjusted(0, line, 0, 0);
    painter->fillRect(QRect(second.left(), second.top() + 2, ratingMark / 2, line - 3),
                      Faded(gradeColours.at(rating), isFaded));
    painter->setFont(option.font);
    painter->setPen(text);
    painter->drawText(second.adjusted(ratingMark, 0, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                      FromUtf8(FieldWords::prediction.at(rating)));
    if (cell->trips > 0) { // bold if a trip was here
        QFont trips = option.font;
        trips.setBold(cell->tripsHere > 0);
        painter->setFont(trips);
        painter->drawText(second, Qt::AlignRight | Qt::AlignTop,
                          QChar(0x2022) + QString::number(cell->trips));
    }
    PaintStrip(*painter,
               QRectF(inside.left(), inside.bottom() - stripHeight + 1, inside.width(), stripHeight), day,
               isFaded);
    painter->restore();
}

} // namespace Tarno
