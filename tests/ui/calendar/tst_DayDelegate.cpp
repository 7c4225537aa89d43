// How a day is painted: the moon, the strip of its hours, and empty cells. Sampled by pixels.

#include "MonthTest.h"
#include "support/TestClass.h"
#include "ui/calendar/DayDelegate.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QtTest>

#include <cmath>

using namespace Tarno;

namespace
{

constexpr int cellWidth = 304;
constexpr int cellHeight = 90;
const QColor nightColour(0x2b, 0x3a, 0x55);
const QColor dayColour(0xff, 0xe0, 0x82);
const QColor moonColour(0x9f, 0xb4, 0xd6);
const QColor majorColour(0xd8, 0x3a, 0x2a);
const QColor background(0x12, 0x34, 0x56);

bool IsAlike(const QColor& left, const QColor& right)
{
    constexpr int tolerance = 2;
    return std::abs(left.red() - right.red()) <= tolerance &&
           std::abs(left.green() - right.green()) <= tolerance &&
           std::abs(left.blue() - right.blue()) <= tolerance;
}

struct LitParts {
    double left = 0;
    double right = 0;
};

/// Returns the lit parts of both halves of a painted moon, as parts of its disc.
LitParts LitPartsOf(int percent, bool isLitOnTheRight)
{
    constexpr int size = 400;
    QImage picture(size, size, QImage::Format_RGB32);
    picture.fill(background);
    QPainter painter(&picture);
    PaintMoon(painter, QRectF(1, 1, size - 2, size - 2), percent, isLitOnTheRight);
    painter.end();
    int disc = 0;
    int left = 0;
    int right = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const QColor colour = picture.pixelColor(x, y);
            disc += IsAlike(colour, background) ? 0 : 1;
            if (colour.red() > 0xa0) {
                ++(x < size / 2 ? left : right);
            }
        }
    }
    return {double(left) / disc, double(right) / disc};
}

/// Paints a day with the delegate into a picture of the size of its cell.
QImage PaintedDay(const QModelIndex& index, bool southern = false)
{
    QImage picture(cellWidth, cellHeight, QImage::Format_RGB32);
    picture.fill(background);
    DayDelegate delegate(nullptr);
    delegate.SetSouthern(southern);
    QStyleOptionViewItem option;
    option.rect = picture.rect();
    option.font = QGuiApplication::font();
    option.fontMetrics = QFontMetrics(option.font);
    option.palette.setColor(QPalette::Base, Qt::white);
    option.palette.setColor(QPalette::Text, Qt::black);
    QPainter painter(&picture);
    delegate.paint(&painter, option, index);
    painter.end();
    return picture;
}

/// The strip of hours at the bottom of the cell.
constexpr int stripLeft = 4;
constexpr int stripWidth = cellWidth - 2 * stripLeft - 1;

int ColumnAt(int minutes)
{
    return stripLeft + stripWidth * minutes / (24 * 60);
}

} // namespace

class tst_DayDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void moon_hasItsLitPart_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<double>("nearSide"); // lit part of the disc on the lit side
        QTest::addColumn<double>("farSide");
        QTest::newRow("new") << 0 << 0.0 << 0.0;
        QTest::newRow("quarter") << 25 << 0.25 << 0.0;
        QTest::newRow("half") << 50 << 0.5 << 0.0;
        QTest::newRow("three quarters") << 75 << 0.5 << 0.25;
        QTest::newRow("full") << 100 << 0.5 << 0.5;
        QTest::newRow("too much") << 130 << 0.5 << 0.5;
        QTest::newRow("too little") << -5 << 0.0 << 0.0;
    }

    void moon_hasItsLitPart()
    {
        QFETCH(int, percent);
        QFETCH(double, nearSide);
        QFETCH(double, farSide);
        constexpr double tolerance = 0.01;
        const LitParts right = LitPartsOf(percent, true);
        QVERIFY2(std::abs(right.right - nearSide) < tolerance, qPrintable(QString::number(right.right)));
        QVERIFY2(std::abs(right.left - farSide) < tolerance, qPrintable(QString::number(right.left)));
        const LitParts left = LitPartsOf(percent, false);
        QVERIFY2(std::abs(left.left - nearSide) < tolerance, qPrintable(QString::number(left.left)));
        QVERIFY2(std::abs(left.right - farSide) < tolerance, qPrintable(QString::number(left.right)));
    }

    void moon_isLitOnTheSideOfTheHemisphere_data()
    {
        QTest::addColumn<int>("day");
        QTest::addColumn<bool>("southern");
        QTest::addColumn<bool>("right");
        QTest::newRow("waxing, north") << 17 << false << true;
        QTest::newRow("waxing, south") << 17 << true << false;
        QTest::newRow("waning, north") << 2 << false << false;
        QTest::newRow("waning, south") << 2 << true << true;
    }

    void moon_isLitOnTheSideOfTheHemisphere()
    {
        QFETCH(int, day);
        QFETCH(bool, southern);
        QFETCH(bool, right);
        MonthModel month(1, nullptr);
        month.SetMonth(std::chrono::year(2026) / 11, {}, "1", {}, Date(2026, 11, 30));
        const QModelIndex index = month.IndexOf(Date(2026, 11, static_cast<unsigned>(day)));
        QVERIFY(std::abs(month.CellAt(index)->day.moon.percent - 50) < 10);
        QCOMPARE(month.CellAt(index)->day.moon.waxing, day == 17);
        const QImage picture = PaintedDay(index, southern);
        const int line = QFontMetrics(QGuiApplication::font()).height();
        const QPoint centre(cellWidth - 6 - line / 2, 3 + line / 2);
        const auto brightness = [&](int x) { return qGray(picture.pixel(centre.x() + x, centre.y())); };
        const int side = line / 3 - 1;
        QVERIFY((brightness(side) > brightness(-side)) == right);
    }

    void strip_hasDaylightAndMarks()
    {
        MonthModel month(1, nullptr);
        month.SetMonth(std::chrono::year(2026) / 11, pittwater, "1", {}, Date(2026, 11, 30));
        const QModelIndex index = month.IndexOf(Date(2026, 11, 22));
        const CalendarDay& day = month.CellAt(index)->day;
        const QImage picture = PaintedDay(index);
        const int bottom = cellHeight - 1 - 2 - 3; // the lowest row of the strip
        const auto at = [&](int minutes, int above) {
            return picture.pixelColor(ColumnAt(minutes), bottom - above);
        };
        constexpr int inHours = 8; // rows above the bottom: high, low and the line of the moon
        constexpr int inLowHours = 4;
        QVERIFY(IsAlike(at(120, inHours), nightColour));
        QVERIFY(IsAlike(at(day.daylight.front().from - 20, inHours), nightColour));
        QVERIFY(IsAlike(at(day.daylight.front().from + 20, inHours), dayColour));
        QVERIFY(IsAlike(at(day.daylight.front().to - 20, inHours), dayColour));
        QVERIFY(IsAlike(at(day.daylight.front().to + 20, inHours), nightColour));
        QVERIFY(IsAlike(at(60, 1), moonColour)); // up until 03:27 and from 17:07
        QVERIFY(IsAlike(at(12 * 60, 1), Qt::white));
        QVERIFY(IsAlike(at(20 * 60, 1), moonColour));
        const auto isMarked = [&](int minutes, int above) {
            bool isMarked = false;
            for (int x = -1; x <= 1; ++x) {
                isMarked = isMarked ||
                           IsAlike(picture.pixelColor(ColumnAt(minutes) + x, bottom - above), majorColour);
            }
            return isMarked;
        };
        for (const int minutes : day.majors) {
            QVERIFY(isMarked(minutes, inHours) && isMarked(minutes, inLowHours));
        }
        for (const int minutes : day.minors) { // half as high
            QVERIFY(!isMarked(minutes, inHours) && isMarked(minutes, inLowHours));
        }
        QVERIFY(!isMarked(12 * 60, inLowHours));
    }

    void strip_isMissingWithoutTimes()
    {
        MonthModel month(1, nullptr);
        month.SetMonth(std::chrono::year(2026) / 11, {}, "1", {}, Date(2026, 11, 30));
        const QImage picture = PaintedDay(month.IndexOf(Date(2026, 11, 22)));
        for (int x = stripLeft; x < stripLeft + stripWidth; ++x) {
            QVERIFY(IsAlike(picture.pixelColor(x, cellHeight - 11), Qt::white));
        }
    }

    void dayOfAnotherMonth_isFaded()
    {
        MonthModel month(1, nullptr);
        month.SetMonth(std::chrono::year(2026) / 11, pittwater, "1", {}, Date(2026, 11, 30));
        const QModelIndex index = month.IndexOf(Date(2026, 12, 2));
        QVERIFY(!month.CellAt(index)->isInMonth);
        const QColor faded = PaintedDay(index).pixelColor(ColumnAt(60), cellHeight - 14);
        QVERIFY2(faded.lightness() > nightColour.lightness() + 40, qPrintable(faded.name()));
        QVERIFY(faded.lightness() < 250);
    }

    void emptyCell_isNotPainted()
    {
        MonthModel month(7, nullptr);
        month.SetMonth(std::chrono::year(1) / 1, pittwater, "1", {}, Date(2026, 11, 30));
        QImage untouched(cellWidth, cellHeight, QImage::Format_RGB32);
        untouched.fill(background);
        QCOMPARE(PaintedDay(month.index(0, 0)), untouched);
        QVERIFY(PaintedDay(month.index(0, 1)) != untouched);
    }
};

TEST_CLASS(tst_DayDelegate)
#include "tst_DayDelegate.moc"
