#include "core/ShellSort.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <map>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Returns one row per key. The second column numbers the rows from 1.
ReportTable Numbered(const Texts& keys)
{
    ReportTable table;
    for (const std::string& key : keys) {
        table.push_back({key, std::to_string(table.size() + 1)});
    }
    return table;
}

/// Returns `count` rows with the key "a", except for the first, which has the key `first`.
ReportTable EqualButFirst(const std::string& first, std::size_t count)
{
    Texts keys(count, "a");
    keys.front() = first;
    return Numbered(keys);
}

Texts Column(const ReportTable& table, std::size_t column)
{
    Texts texts;
    for (const ReportRow& row : table) {
        texts.push_back(row.at(column));
    }
    return texts;
}

/// Returns the row numbers 1 to `count` after a cyclic rotation of the rows at `places` (from 1).
Texts Rotated(std::size_t count, std::initializer_list<std::size_t> places)
{
    Texts numbers;
    for (std::size_t number = 1; number <= count; ++number) {
        numbers.push_back(std::to_string(number));
    }
    const Texts before = numbers;
    for (const std::size_t* place = places.begin(); place != places.end(); ++place) {
        const std::size_t* next = place + 1 == places.end() ? places.begin() : place + 1;
        numbers.at(*place - 1) = before.at(*next - 1);
    }
    return numbers;
}

} // namespace

class tst_ShellSort : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void noRowOrOneRow_isUnchanged()
    {
        ReportTable none;
        mMain::ShellSort(none, {});
        QVERIFY(none.empty());
        ReportTable one = Numbered({"b"});
        mMain::ShellSort(one, {.mode = -1});
        QCOMPARE(Column(one, 0), Texts{"b"});
    }

    void twoRows_areSorted()
    {
        for (const Texts& keys : {Texts{"a", "b"}, Texts{"b", "a"}}) {
            ReportTable table = Numbered(keys);
            mMain::ShellSort(table, {});
            QCOMPARE(Column(table, 0), (Texts{"a", "b"}));
        }
    }

    void descending_reversesTheOrder()
    {
        ReportTable table = Numbered({"b", "d", "a", "e", "c"});
        mMain::ShellSort(table, {.descending = true});
        QCOMPARE(Column(table, 0), (Texts{"e", "d", "c", "b", "a"}));
        QCOMPARE(Column(table, 1), (Texts{"4", "2", "5", "1", "3"}));
    }

    void texts_compareByBytes()
    {
        ReportTable table = Numbered({"\u00E9", "9", ":", "a", "10", "Z", ""});
        mMain::ShellSort(table, {});
        QCOMPARE(Column(table, 0), (Texts{"", "10", "9", ":", "Z", "a", "\u00E9"}));
    }

    // The first row belongs at the end. Each gap moves it backwards and the rows it passes forwards, ahead of
    // equal rows, so the result shows which gaps were used: 4 from 5 rows on, 13 from 14, 40 from 41.
    void equalRows_moveByTheGaps_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<Texts>("numbers");
        QTest::newRow("4: gap 1") << 4 << Texts{"2", "3", "4", "1"};
        QTest::newRow("5: gap 4") << 5 << Texts{"5", "2", "3", "4", "1"};
        QTest::newRow("13: gaps 4 in three steps") << 13 << Rotated(13, {1, 5, 9, 13});
        QTest::newRow("14: gap 13") << 14 << Rotated(14, {1, 14});
        QTest::newRow("40: gap 13 in three steps") << 40 << Rotated(40, {1, 14, 27, 40});
        QTest::newRow("41: gap 40") << 41 << Rotated(41, {1, 41});
    }

    void equalRows_moveByTheGaps()
    {
        QFETCH(int, rows);
        QFETCH(Texts, numbers);
        ReportTable ascending = EqualButFirst("b", static_cast<std::size_t>(rows));
        mMain::ShellSort(ascending, {});
        QCOMPARE(Column(ascending, 1), numbers);
        ReportTable descending = EqualButFirst("A", static_cast<std::size_t>(rows));
        mMain::ShellSort(descending, {.descending = true});
        QCOMPARE(Column(descending, 1), numbers);
    }

    // If equal rows count as out of order, each pass reverses the rows that are a gap apart; gap 1 is used
    // twice.
    void strictMode_equalRows_areReversedByEachPass_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<Texts>("numbers");
        QTest::newRow("2") << 2 << Texts{"1", "2"};
        QTest::newRow("3") << 3 << Texts{"1", "2", "3"};
        QTest::newRow("4") << 4 << Texts{"1", "2", "3", "4"};
        QTest::newRow("5") << 5 << Texts{"5", "2", "3", "4", "1"};
        QTest::newRow("6") << 6 << Texts{"5", "6", "3", "4", "1", "2"};
        QTest::newRow("14") << 14 << Texts{"13", "1", "11", "12", "9", "10", "7",
                                           "8",  "5", "6",  "3",  "4", "14", "2"};
    }

    void strictMode_equalRows_areReversedByEachPass()
    {
        QFETCH(int, rows);
        for (const bool descending : {false, true}) {
            ReportTable table = EqualButFirst("a", static_cast<std::size_t>(rows));
            mMain::ShellSort(table, {.descending = descending, .mode = -1});
            QTEST(Column(table, 1), "numbers");
        }
    }

    void strictMode_differentRows_areSorted()
    {
        ReportTable table = Numbered({"d", "b", "f", "a", "e", "c"});
        mMain::ShellSort(table, {.mode = -1});
        QCOMPARE(Column(table, 0), (Texts{"a", "b", "c", "d", "e", "f"}));
    }

    void anyOtherMode_movesNothing()
    {
        ReportTable table = Numbered({"c", "b", "a"});
        mMain::ShellSort(table, {.mode = 1});
        QCOMPARE(Column(table, 1), (Texts{"1", "2", "3"}));
    }

    void rows_areSortedByTheGivenColumn()
    {
        ReportTable table{{"1", "z", "x"}, {"2", "y", "w"}, {"3", "x", "y"}};
        mMain::ShellSort(table, {.column = 2});
        QCOMPARE(Column(table, 0), (Texts{"2", "1", "3"}));
        QCOMPARE(Column(table, 1), (Texts{"y", "z", "x"}));
    }

    void thousandRows_areSortedAsWholeRows_data()
    {
        QTest::addColumn<bool>("descending");
        QTest::addColumn<int>("mode");
        QTest::newRow("ascending") << false << 0;
        QTest::newRow("descending") << true << 0;
        QTest::newRow("ascending, strict") << false << -1;
        QTest::newRow("descending, strict") << true << -1;
    }

    void thousandRows_areSortedAsWholeRows()
    {
        QFETCH(bool, descending);
        QFETCH(int, mode);
        Texts keys;
        std::uint32_t number = 1;
        for (int row = 0; row < 1000; ++row) {
            number = number * 1664525U + 1013904223U;
            keys.push_back(std::to_string((number >> 16U) % 500)); // each key occurs about twice
        }
        ReportTable table = Numbered(keys);
        const ReportTable before = table;
        mMain::ShellSort(table, {.descending = descending, .mode = static_cast<std::int16_t>(mode)});

        Texts sorted = keys;
        std::sort(sorted.begin(), sorted.end());
        if (descending) {
            std::reverse(sorted.begin(), sorted.end());
        }
        QCOMPARE(Column(table, 0), sorted);
        ReportTable byNumber = table;
        std::sort(byNumber.begin(), byNumber.end(), [](const ReportRow& left, const ReportRow& right) {
            return std::stoi(left.at(1)) < std::stoi(right.at(1));
        });
        QVERIFY(byNumber == before);
    }

    void rows_areMovedNotCopied()
    {
        ReportTable table = Numbered({"e", "c", "a", "d", "b", "f", "c"});
        std::map<std::string, const std::string*> cells;
        for (const ReportRow& row : table) {
            cells[row.at(1)] = row.data();
        }
        mMain::ShellSort(table, {});
        QCOMPARE(Column(table, 0), (Texts{"a", "b", "c", "c", "d", "e", "f"}));
        for (const ReportRow& row : table) {
            QVERIFY(row.data() == cells.at(row.at(1)));
        }
    }

    void shortRow_isSubscriptOutOfRangeAndNothingMoves()
    {
        ReportTable table = Numbered({"c", "b", "a"});
        table.push_back({"only one cell"});
        const ReportTable before = table;
        QCOMPARE(RaisedNumber([&] { mMain::ShellSort(table, {.column = 1}); }), 9);
        QVERIFY(table == before);
        ReportTable single{{"a"}};
        QCOMPARE(RaisedNumber([&] { mMain::ShellSort(single, {.column = 1}); }), 9);
    }
};

TEST_CLASS(tst_ShellSort)
#include "tst_ShellSort.moc"
