// How a group of trips is painted: the actions as a bar, the share as a line on a scale. Sampled by pixels.

#include "support/TestClass.h"
#include "ui/common/GradeColours.h"
#include "ui/common/TextTableModel.h"
#include "ui/statistics/GroupDelegate.h"
#include "ui/statistics/StatisticsRows.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QtTest>

using namespace Tarno;

namespace
{

constexpr int cellWidth = 308;
constexpr int cellHeight = 40;
constexpr int barLeft = 4;
constexpr int barWidth = 300;
constexpr int barTop = 6; // above the figures

std::vector<TripGroup> OneGroup(std::array<int, 4> actions)
{
    TripGroup group;
    group.name = "November";
    for (const int count : actions) {
        group.trips += count;
    }
    group.actions = actions;
    return {group};
}

QImage Painted(const std::vector<TripGroup>& groups, int column)
{
    TextTableModel model(GroupHeadings(), nullptr);
    model.SetRows(GroupRows(groups));
    QImage picture(cellWidth, cellHeight, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QStyleOptionViewItem option;
    option.rect = picture.rect();
    option.state = QStyle::State_Enabled;
    option.palette.setColor(QPalette::Text, Qt::black);
    QPainter painter(&picture);
    GroupDelegate(groups, nullptr).paint(&painter, option, model.index(0, column));
    painter.end();
    return picture;
}

/// Returns the part of the bar that has the colour of an action.
double PartOf(const QImage& bar, std::size_t action)
{
    int count = 0;
    for (int x = barLeft; x < barLeft + barWidth; ++x) {
        count += bar.pixelColor(x, barTop) == gradeColours.at(action) ? 1 : 0;
    }
    return static_cast<double>(count) / barWidth;
}

/// Returns the first and the last column with pixels as dark as the line of the interval.
std::pair<int, int> DarkColumns(const QImage& picture, int width)
{
    int first = width;
    int last = -1;
    for (int x = 0; x < width; ++x) {
        if (picture.pixelColor(x, cellHeight / 2).lightness() < 100) {
            first = std::min(first, x);
            last = x;
        }
    }
    return {first, last};
}

} // namespace

class tst_GroupDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void actions_areProportionalParts()
    {
        const QImage bar = Painted(OneGroup({6, 3, 2, 1}), GroupColumn::Actions);
        QVERIFY(std::abs(PartOf(bar, 0) - 0.5) < 0.01);
        QVERIFY(std::abs(PartOf(bar, 1) - 0.25) < 0.01);
        QVERIFY(std::abs(PartOf(bar, 2) - 1.0 / 6) < 0.01);
        QVERIFY(std::abs(PartOf(bar, 3) - 1.0 / 12) < 0.01);
    }

    void actions_ofFewTrips_areFaint()
    {
        QCOMPARE(PartOf(Painted(OneGroup({4, 0, 0, 0}), GroupColumn::Actions), 0), 0.0);
        QCOMPARE(PartOf(Painted(OneGroup({5, 0, 0, 0}), GroupColumn::Actions), 0), 1.0);
    }

    void noActions_paintNothing()
    {
        std::vector<TripGroup> groups = OneGroup({0, 0, 0, 0});
        groups[0].trips = 9;
        groups[0].withoutAction = 9;
        for (const int column : {GroupColumn::Actions, GroupColumn::Share}) {
            const QImage picture = Painted(groups, column);
            QCOMPARE(DarkColumns(picture, cellWidth).second, -1);
        }
    }

    /// The interval of 5 of 10 is from 24 to 76 percent.
    void share_isALineOnAScale()
    {
        const int width = 6 * QStyleOptionViewItem().fontMetrics.height();
        const auto [first, last] =
            DarkColumns(Painted(OneGroup({5, 0, 5, 0}), GroupColumn::Share), barLeft + width);
        const auto at = [width](double part) { return barLeft + 3 + part * (width - 6); };
        QVERIFY2(std::abs(first - at(0.2366)) <= 2, std::to_string(first).c_str());
        QVERIFY2(std::abs(last - at(0.7634)) <= 2, std::to_string(last).c_str());
    }

    void rows_areHighEnoughForTheBar()
    {
        const auto groups = OneGroup({1, 1, 1, 1});
        TextTableModel model(GroupHeadings(), nullptr);
        model.SetRows(GroupRows(groups));
        const QStyleOptionViewItem option;
        const GroupDelegate delegate(groups, nullptr);
        QVERIFY(delegate.sizeHint(option, model.index(0, 0)).height() > option.fontMetrics.height() + 8);
        QVERIFY(delegate.sizeHint(option, model.index(0, GroupColumn::Share)).width() > 100);
    }
};

TEST_CLASS(tst_GroupDelegate)
#include "tst_GroupDelegate.moc"
