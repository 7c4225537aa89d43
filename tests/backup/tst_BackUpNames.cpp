// The names of back-ups, and which automatic ones are removed.

#include "backup/BackUpNames.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Names = std::vector<std::string>;

constexpr LocalTime evening{std::chrono::year(2026) / 11 / 22, std::chrono::minutes(18 * 60 + 30)};
constexpr LocalTime early{std::chrono::year(2026) / 1 / 2, std::chrono::minutes(65)};

/// Returns the names of automatic back-ups of the days from `first` to `last` of a month.
Names Days(const std::string& month, int first, int last)
{
    Names names;
    for (int day = first; day <= last; ++day) {
        names.push_back("tarno-" + month + (day < 10 ? "-0" : "-") + std::to_string(day) +
                        "-1200-automatic.zip");
    }
    return names;
}

Names operator+(Names left, const Names& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

} // namespace

class tst_BackUpNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void name_tellsKindAndMinute()
    {
        QCOMPARE(BackUpName(BackUpKind::ByHand, evening, {}), "tarno-2026-11-22-1830.zip"s);
        QCOMPARE(BackUpName(BackUpKind::Automatic, evening, {}), "tarno-2026-11-22-1830-automatic.zip"s);
        QCOMPARE(BackUpName(BackUpKind::BeforeRestore, early, {}),
                 "tarno-2026-01-02-0105-before-restore.zip"s);
        QCOMPARE(ToText(early), "2026-01-02 01:05"s);
    }

    void nameThatIsTaken_getsNumber()
    {
        const Names taken{"Tarno-2026-11-22-1830.ZIP", "tarno-2026-11-22-1830-2.zip"};
        QCOMPARE(BackUpName(BackUpKind::ByHand, evening, taken), "tarno-2026-11-22-1830-3.zip"s);
        QCOMPARE(BackUpName(BackUpKind::Automatic, evening, taken), "tarno-2026-11-22-1830-automatic.zip"s);
    }

    void backUps_areListedByTime()
    {
        const Names names{"tarno-2026-11-22-1830-before-restore.zip",
                          "tarno.xml",
                          "tarno-2026-11-22-1830-10.zip",
                          "tarno-2026-11-22-1830-2.zip",
                          "tarno-2026-11-21-0905-automatic.zip",
                          "tarno-2026-11-22-1830-01.zip",
                          "tarno-2026-11-22-1830-by-hand.zip",
                          "tarno-2026-11-22-1830-automatic.zip.bak"};
        Names found;
        for (const NamedBackUp& one : BackUpsAmong(names)) {
            found.push_back(one.name + " | " + std::to_string(static_cast<int>(one.kind)) + " | " + one.time);
        }
        QCOMPARE(found, (Names{"tarno-2026-11-21-0905-automatic.zip | 1 | 2026-11-21 09:05",
                               "tarno-2026-11-22-1830-before-restore.zip | 2 | 2026-11-22 18:30",
                               "tarno-2026-11-22-1830-2.zip | 0 | 2026-11-22 18:30",
                               "tarno-2026-11-22-1830-10.zip | 0 | 2026-11-22 18:30"}));
    }

    void lastTen_areKept()
    {
        QCOMPARE(ExpiredBackUps({}), Names());
        QCOMPARE(ExpiredBackUps(Days("2026-11", 1, 10)), Names());
        QCOMPARE(ExpiredBackUps(Days("2026-11", 1, 12)), Days("2026-11", 1, 2));
    }

    void lastOfEachMonth_isKept()
    {
        const Names names =
            Days("2025-11", 3, 5) + Days("2026-09", 1, 4) + Days("2026-10", 30, 31) + Days("2026-11", 1, 9);
        QCOMPARE(ExpiredBackUps(names),
                 Days("2025-11", 3, 4) + Days("2026-09", 1, 3) + Days("2026-10", 30, 30));
        // a month whose last back-up is among the last ten keeps no other one
        QCOMPARE(ExpiredBackUps(Days("2026-10", 1, 5) + Days("2026-11", 1, 9)), Days("2026-10", 1, 4));
    }

    void sameMinute_isOrderedByNumber()
    {
        const std::string minute = "tarno-2026-10-01-0900-automatic";
        const Names names{minute + "-10.zip", minute + ".zip", minute + "-2.zip"};
        QCOMPARE(ExpiredBackUps(names + Days("2026-11", 1, 10)), (Names{minute + ".zip", minute + "-2.zip"}));
        QCOMPARE(AutomaticBackUps(names), (Names{minute + ".zip", minute + "-2.zip", minute + "-10.zip"}));
    }

    void otherNames_areNeverReturned()
    {
        const Names others{"tarno-2026-11-01-1200.zip",
                           "tarno-2026-11-01-1200-2.zip",
                           "tarno-2026-11-01-1200-before-restore.zip",
                           "tarno-2026-11-01-1200-automatic.zip.bak",
                           "tarno-2026-11-01-1200-automatic-1.zip",
                           "tarno-2026-11-01-1200-automatic-02.zip",
                           "tarno-2026-11-01-1200-automatic-.zip",
                           "tarno-2026-11-01-1200-automatic-2x.zip",
                           "tarno-2026-11-01-1200-automatic-99999999999.zip",
                           "tarno-2026-11-01-1200-automatically.zip",
                           "tarno-2026-11-1-1200-automatic.zip",
                           "my-tarno-2026-11-01-1200-automatic.zip",
                           "TARNO-2026-11-01-1200-automatic.zip",
                           "tarno-automatic.zip",
                           "tarno-.zip",
                           "tarno.xml",
                           ""};
        QCOMPARE(ExpiredBackUps(others + Days("2026-11", 2, 11)), Names());
        QCOMPARE(AutomaticBackUps(others), Names());
    }
};

TEST_CLASS(tst_BackUpNames)
#include "tst_BackUpNames.moc"
