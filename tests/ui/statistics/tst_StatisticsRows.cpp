// The texts of the lists of the statistics.

#include "qt/Strings.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "ui/statistics/StatisticsRows.h"

#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

TripGroup Group(int trips, std::array<int, 4> actions)
{
    TripGroup group;
    group.name = "November";
    group.trips = trips;
    group.minutes = 90 * trips;
    group.tripsWithoutCatch = 1;
    group.actions = actions;
    group.withoutAction = trips - actions[0] - actions[1] - actions[2] - actions[3];
    group.lastDate = "2026-11-14";
    return group;
}

std::string Cells(const TextTableModel::Row& row)
{
    return ToUtf8(row.cells.join(QLatin1String(" | ")));
}

Texts AllCells(const std::vector<TextTableModel::Row>& rows)
{
    Texts cells;
    for (const TextTableModel::Row& row : rows) {
        cells.push_back(Cells(row));
    }
    return cells;
}

} // namespace

class tst_StatisticsRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void group_hasFiguresInWords()
    {
        const auto rows = GroupRows({Group(12, {2, 3, 4, 1})});
        QCOMPARE(rows.size(), std::size_t{1});
        QCOMPARE(Cells(rows[0]), "November | 12 | 18.0 | 1 | Slow 2, Fair 3, Good 4, Hot! 1 | "
                                 "50 % (24 to 76 %) | 2026-11-14"s);
        QCOMPARE(rows[0].cells.size(), GroupHeadings().size());
    }

    void group_ofFewTrips_isMarked()
    {
        QCOMPARE(ToUtf8(GroupRows({Group(4, {0, 0, 0, 0})})[0].cells[GroupColumn::Trips]), "4 (few)"s);
        QCOMPARE(ToUtf8(GroupRows({Group(5, {0, 0, 0, 0})})[0].cells[GroupColumn::Trips]), "5"s);
    }

    void group_withoutActions_hasNoShare()
    {
        const auto row = GroupRows({Group(6, {0, 0, 0, 0})})[0];
        QCOMPARE(ToUtf8(row.cells[GroupColumn::Actions]), ""s);
        QCOMPARE(ToUtf8(row.cells[GroupColumn::Share]), ""s);
        QCOMPARE(row.order[GroupColumn::Share], -1.0);
    }

    void group_isFoundByItsRow()
    {
        const auto rows = GroupRows({Group(1, {}), Group(2, {}), Group(3, {})});
        QCOMPARE(GroupOfRow(rows[2].key), std::size_t{2});
    }

    void groups_sortByNumbers()
    {
        TextTableModel model(GroupHeadings(), nullptr);
        model.SetRows(
            GroupRows({Group(9, {9, 0, 0, 0}), Group(100, {0, 90, 0, 10}), Group(20, {0, 0, 20, 0})}));
        const auto trips = [&model] {
            Texts texts;
            for (int row = 0; row < model.rowCount(); ++row) {
                texts.push_back(ToUtf8(model.index(row, GroupColumn::Trips).data().toString()));
            }
            return texts;
        };
        model.sort(GroupColumn::Trips);
        QCOMPARE(trips(), (Texts{"9", "20", "100"}));
        model.sort(GroupColumn::Actions, Qt::DescendingOrder);
        QCOMPARE(trips(), (Texts{"20", "100", "9"}));
        model.sort(GroupColumn::Share);
        QCOMPARE(trips(), (Texts{"9", "100", "20"}));
        model.sort(GroupColumn::Group);
        QCOMPARE(trips(), (Texts{"9", "100", "20"}));
    }

    void leftOut_namesBothReasons()
    {
        TripFigures figures;
        QCOMPARE(ToUtf8(LeftOutOfHours(figures)), ""s);
        figures.longTrips = 1;
        QCOMPARE(ToUtf8(LeftOutOfHours(figures)), "The hours leave out 1 trip of more than 48 hours."s);
        figures.untimedTrips = 2;
        QCOMPARE(ToUtf8(LeftOutOfHours(figures)),
                 "The hours leave out 1 trip of more than 48 hours and 2 trips without usable times."s);
        figures.longTrips = 0;
        QCOMPARE(ToUtf8(LeftOutOfHours(figures)), "The hours leave out 2 trips without usable times."s);
    }

    void check_isATableWithSums()
    {
        ForecastCheck check;
        check.rows = {{"Poor", 0, {1, 2, 3, 4}}, {"Fair", 1, {0, 0, 0, 5}}};
        QCOMPARE(AllCells(CheckRows(check)),
                 (Texts{"Poor | 1 | 2 | 3 | 4 | 10", "Fair | 0 | 0 | 0 | 5 | 5"}));
        QCOMPARE(ToUtf8(CheckHeadings().join(QLatin1Char(','))), ",Slow,Fair,Good,Hot!,All"s);
    }

    void correlation_isWrittenInNumbers()
    {
        ForecastCheck check;
        QCOMPARE(ToUtf8(CorrelationText(check)), ""s);
        check.correlation = RankCorrelation{-0.2345, 0.0005};
        QCOMPARE(ToUtf8(CorrelationText(check)), "Kendall's tau-b -0.23, p 0.0005"s);
    }

    void lines_nameTheirBox()
    {
        QCOMPARE(AllCells(LineRows({{EntryField::TargetSpecies, "anything", 3},
                                    {EntryField::FishCaught, "boots", 2},
                                    {EntryField::BaitUsed, "bread", 1},
                                    {EntryField::Method, "luck", 1}})),
                 (Texts{"anything | Targeted | 3", "boots | Caught | 2", "bread | Bait | 1",
                        "luck | Methods | 1"}));
    }
};

TEST_CLASS(tst_StatisticsRows)

#include "tst_StatisticsRows.moc"
