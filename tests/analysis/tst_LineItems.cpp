// Which item of a pick list a line names.

#include "analysis/LineItems.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_LineItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void line_namesItem_data()
    {
        QTest::addColumn<std::string>("line");
        QTest::addColumn<std::string>("name");
        QTest::addColumn<bool>("isMatched");
        const auto row = [](const char* line, const char* name, bool isMatched) {
            QTest::newRow(line) << std::string(line) << std::string(name) << isMatched;
        };
        row("Bream", "Bream", true);
        row("3 bream, 27 to 30 cm", "Bream", true);
        row("a nice BR\u00C9AM", "Bream", true);
        row("Black bream 40 cm", "Black bream", true); // the longest item
        row("Bream and black bream", "Black bream", true);
        row("breams", "Bream", true);
        row("Walruses x 2", "Walrus", true);
        row("Catfishes", "Catfish", true);
        row("catfishs", "Catfish", true);
        row("Breamlet 5 cm", "Breamlet", false); // a part of a word
        row("Seabream 5 cm", "Seabream", false);
        row("bream5", "Bream", true); // its subject is the item
        row("(bream)", "Bream", true);
        row("Bream\u2014big", "Bream", true);
        row("\u201CBream\u201D", "Bream", true);
        row("\u00E4bream", "\u00E4bream", false);
        row("bream\u00E4", "bream\u00E4", false);
        row("tench or perch", "Tench", true); // equally long, the first in the line
        row("perch or tench", "Perch", true);
        row("Mulloway (jewfish) 60 cm", "Mulloway (jewfish)", true);
        row("Mulloway 60 cm", "Mulloway", false);
        row("R\u00EDo fish, 3", "rio fish", true); // as in the pick list
        row("  Kingfish 58, 61 cm (kept)", "Kingfish", false);
        row("Tommy ruff x 9", "Tommy ruff", false);
        row("Tommy ruff X 9", "Tommy ruff", false);
        row("Toadfish - too many", "Toadfish - too many", false);
        row("12 of something", "12 of something", false);
        row("\u30B9\u30BA\u30AD 56 cm", "\u30B9\u30BA\u30AD", false);
        row("\u30AD\u30D3\u30EC\uFF08bream\uFF09", "Bream", true);
        row("\u30AD\u30D3\u30EC\uFF085\uFF09", "\u30AD\u30D3\u30EC", false); // wide brackets
        row("Stra\u00DFe", "Stra\u00DFe", false);
        row("", "", false);
    }

    void line_namesItem()
    {
        const LineItems items({"Bream", "Black bream", "BREAM", "", "  ", "Perch", "Tench", "Catfish",
                               "Walrus", "Mulloway (jewfish)", "rio fish"});
        QFETCH(std::string, line);
        const NamedItem found = items.Of(line);
        QTEST(found.name, "name");
        QTEST(found.isMatched, "isMatched");
    }

    void linesThatDifferInCaseAndAccents_nameTheSameItem()
    {
        const LineItems items;
        QCOMPARE(items.Of("MARR\u00D3N 61 cm").folded, items.Of("marron").folded);
        QCOMPARE(items.Of("\uFF22ream\uFF15").folded, items.Of("bream5").folded);
    }

    void equalItems_areTheFirst()
    {
        QCOMPARE(LineItems({"marron", "MARR\u00D3N"}).Of("Marr\u00F3n 3").name, "marron"s);
    }
};

TEST_CLASS(tst_LineItems)
#include "tst_LineItems.moc"
