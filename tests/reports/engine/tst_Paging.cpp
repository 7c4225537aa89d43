// Breaking the bands of a report into pages.

#include "reports/PaintedPage.h"
#include "reports/RowsReport.h"
#include "support/TestClass.h"

using namespace Tarno;

namespace
{

/// The printable height of the default paper.
constexpr int roomOnPage = 16838 - 2 * 1440;

/// Returns the texts on each page.
QList<QStringList> PagesOf(const Document& document)
{
    QList<QStringList> pages;
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        pages << PaintedPage(document, page).Texts();
    }
    return pages;
}

/// Returns the first row and the number of rows of each page.
QStringList RowsOnPages(const Document& document)
{
    QStringList pages;
    for (const DocumentPage& page : document.pages) {
        pages << (page.slices.empty()
                      ? QStringLiteral("none")
                      : QStringLiteral("%1+%2").arg(page.slices.front().detail).arg(page.slices.size()));
    }
    return pages;
}

/// Returns a report of `count` rows, each `height` high.
std::unique_ptr<RowsReport> Rows(int count, int height)
{
    auto report = std::make_unique<RowsReport>(RowsReport::Numbered(count));
    report->AddField(QStringLiteral("a"), {0, 0, 3000, std::min(height, 300)});
    report->Detail.Height = height;
    return report;
}

/// Returns `count` different lines.
QStringList NumberedLines(int count, const QString& word = QStringLiteral("line"))
{
    QStringList lines;
    for (int number = 0; number < count; ++number) {
        lines << QStringLiteral("%1 %2").arg(word).arg(number);
    }
    return lines;
}

/// Checks that every line of text on every page is between the margins.
void CheckLinesInsideTheMargins(const Document& document)
{
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        for (const PaintedText& text : PaintedPage(document, page).texts) {
            QVERIFY2(text.baseline.y() > document.margins.top() &&
                         text.baseline.y() < document.paper.height() - document.margins.bottom(),
                     qPrintable(text.text));
        }
    }
}

} // namespace

class tst_Paging : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void rows_exactlyFilling_stayOnThePage()
    {
        QCOMPARE(RowsOnPages(*LayOut(*Rows(2, roomOnPage / 2))), QStringList(QStringLiteral("0+2")));
        QCOMPARE(RowsOnPages(*LayOut(*Rows(4, roomOnPage / 2))),
                 (QStringList{QStringLiteral("0+2"), QStringLiteral("2+2")}));
    }

    void row_thatDoesNotFitByATwip_movesToTheNextPage()
    {
        QCOMPARE(RowsOnPages(*LayOut(*Rows(2, roomOnPage / 2 + 1))),
                 (QStringList{QStringLiteral("0+1"), QStringLiteral("1+1")}));
    }

    void row_asHighAsThePage_fillsIt()
    {
        const auto document = LayOut(*Rows(2, roomOnPage));
        QCOMPARE(RowsOnPages(*document), (QStringList{QStringLiteral("0+1"), QStringLiteral("1+1")}));
        QCOMPARE(PagesOf(*document),
                 (QList<QStringList>{{QStringLiteral("row 0")}, {QStringLiteral("row 1")}}));
    }

    void rows_followOneAnother()
    {
        const auto document = LayOut(*Rows(3, 500));
        QCOMPARE(document->pages.front().slices[0].bandTop, 1440);
        QCOMPARE(document->pages.front().slices[1].bandTop, 1940);
        QCOMPARE(document->pages.front().slices[2].bandTop, 2440);
        const PaintedPage page(*document, 0);
        QCOMPARE(page.texts[2].baseline - page.texts[1].baseline, QPointF(0, 500));
    }

    void headerAndFooter_reduceTheSpaceForRows()
    {
        auto report = Rows(3, 1000);
        report->PageHeader.Height = 5000;
        report->PageFooter.Height = roomOnPage - 5000 - 2000;
        QCOMPARE(RowsOnPages(*LayOut(*report)), (QStringList{QStringLiteral("0+2"), QStringLiteral("2+1")}));
        ++report->PageFooter.Height;
        QCOMPARE(RowsOnPages(*LayOut(*report)),
                 (QStringList{QStringLiteral("0+1"), QStringLiteral("1+1"), QStringLiteral("2+1")}));
    }

    void headerAndFooter_areOnEveryPage()
    {
        auto report = Rows(5, 6000);
        RowsReport::AddLabel(report->PageHeader, QStringLiteral("head"), {0, 0, 3000, 300},
                             QStringLiteral("heading"));
        report->PageHeader.Height = 400;
        RowsReport::AddLabel(report->PageFooter, QStringLiteral("foot"), {0, 100, 3000, 300},
                             QStringLiteral("footing"));
        report->PageFooter.Height = 400;
        const auto document = LayOut(*report);
        QCOMPARE(document->pages.size(), std::size_t(3));
        for (std::size_t number = 0; number < 3; ++number) {
            const PaintedPage page(*document, number);
            const qreal head = page.Text(QStringLiteral("heading")).baseline.y();
            const qreal row = page.Text(QStringLiteral("row %1").arg(2 * number)).baseline.y();
            const qreal foot = page.Text(QStringLiteral("footing")).baseline.y();
            QVERIFY(head > 1440 && head < 1440 + 300);
            QCOMPARE(row, head + 400);
            QCOMPARE(foot, head + roomOnPage - 400 + 100);
        }
    }

    void pageNumberAndCount_areRightOnEveryPage()
    {
        auto report = Rows(25, 6000);
        RowsReport::AddLabel(report->PageHeader, QStringLiteral("number"), {0, 0, 900, 300}, QString()).Page =
            PageText::Number;
        RowsReport::AddLabel(report->PageHeader, QStringLiteral("of"), {900, 0, 900, 300},
                             QStringLiteral("of"));
        RowsReport::AddLabel(report->PageFooter, QStringLiteral("count"), {0, 0, 900, 300}, QString()).Page =
            PageText::Count;
        report->PageHeader.Height = 300;
        report->PageFooter.Height = 300;
        const auto document = LayOut(*report);
        QCOMPARE(document->pages.size(), std::size_t(13));
        for (std::size_t page = 0; page < 13; ++page) {
            const QStringList texts = PaintedPage(*document, page).Texts();
            QCOMPARE(texts.first(), QString::number(page + 1));
            QCOMPARE(texts[1], QStringLiteral("of"));
            QCOMPARE(texts.last(), QStringLiteral("13"));
        }
    }

    void noRows_giveOnePageWithHeaderAndFooter()
    {
        RowsReport report;
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("head"), {0, 0, 900, 300}, QString()).Page =
            PageText::Number;
        RowsReport::AddLabel(report.PageFooter, QStringLiteral("foot"), {0, 0, 900, 300}, QString()).Page =
            PageText::Count;
        QCOMPARE(PagesOf(*LayOut(report)), (QList<QStringList>{{QStringLiteral("1"), QStringLiteral("1")}}));
    }

    void aThousandRows_areAllPrintedOnceInTheirOrder()
    {
        const auto document = LayOut(*Rows(1000, 399));
        const int rowsOnAPage = roomOnPage / 399;
        QCOMPARE(document->pages.size(), std::size_t((1000 + rowsOnAPage - 1) / rowsOnAPage));
        QStringList printed;
        for (const QStringList& page : PagesOf(*document)) {
            printed << page;
        }
        QCOMPARE(printed, NumberedLines(1000, QStringLiteral("row")));
    }

    void bandHigherThanAPage_startsANewOneAndLosesNoLine()
    {
        const QStringList lines = NumberedLines(300);
        RowsReport report(
            {{QStringLiteral("before")}, {lines.join(QLatin1Char('\n'))}, {QStringLiteral("after")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 5000, 300});
        report.Detail.Height = 300;
        const auto document = LayOut(report);
        const QList<QStringList> pages = PagesOf(*document);
        const int linesOnAPage = roomOnPage / RowsReport::LineHeight();
        QCOMPARE(pages[0], QStringList(QStringLiteral("before")));
        QCOMPARE(pages[1], lines.mid(0, linesOnAPage));
        QCOMPARE(pages[2], lines.mid(linesOnAPage, linesOnAPage));
        QStringList printed;
        for (const QStringList& page : pages) {
            printed << page;
        }
        QCOMPARE(printed,
                 QStringList(QStringLiteral("before")) + lines + QStringList(QStringLiteral("after")));
        QVERIFY(pages.last().size() > 1); // the next row is below the last lines
        CheckLinesInsideTheMargins(*document);
    }

    void bandHigherThanAPage_nextRowStartsAtItsEnd()
    {
        RowsReport report({{NumberedLines(100).join(QLatin1Char('\n'))}, {QStringLiteral("after")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 5000, 300});
        report.Detail.Height = 350; // 50 below the text
        const auto document = LayOut(report);
        const PaintedPage last(*document, document->pages.size() - 1);
        QCOMPARE(last.Text(QStringLiteral("after")).baseline.y() -
                     last.Text(QStringLiteral("line 99")).baseline.y(),
                 RowsReport::LineHeight() + 50.0);
    }

    void twentyKilobytesOfText_areAllPrinted()
    {
        QStringList words;
        for (int number = 0; number < 3000; ++number) {
            words << QStringLiteral("w%1").arg(number);
        }
        RowsReport report({{words.join(QLatin1Char(' '))}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 1200, 300});
        report.Detail.Height = 300;
        const auto document = LayOut(report);
        QVERIFY(document->pages.size() > 5);
        QStringList printed;
        for (const QStringList& page : PagesOf(*document)) {
            printed << page;
        }
        QCOMPARE(printed.join(QLatin1Char(' ')).split(QLatin1Char(' ')), words);
        CheckLinesInsideTheMargins(*document);
    }

    void columnsOfDifferentLineHeights_loseNoLineAndFillTheirPages()
    {
        const QStringList left = NumberedLines(200, QStringLiteral("left"));
        const QStringList right = NumberedLines(200, QStringLiteral("right"));
        RowsReport report({{left.join(QLatin1Char('\n')), right.join(QLatin1Char('\n'))}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.AddGrowingField(QStringLiteral("b"), {3000, 70, 3000, 300}).Font.Size = 9;
        report.Detail.Height = 400;
        const auto document = LayOut(report);
        QStringList printedLeft;
        QStringList printedRight;
        for (const QStringList& page : PagesOf(*document)) {
            printedLeft << page.filter(QStringLiteral("left"));
            printedRight << page.filter(QStringLiteral("right"));
        }
        QCOMPARE(printedLeft, left);
        QCOMPARE(printedRight, right);
        QCOMPARE(PagesOf(*document).front().filter(QStringLiteral("left")).size(),
                 roomOnPage / RowsReport::LineHeight());
        CheckLinesInsideTheMargins(*document);
    }

    void lineHigherThanAPage_isPrintedOnce()
    {
        RowsReport report({{QStringLiteral("A\nB")}, {QStringLiteral("C")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 100000, 300}).Font.Size = 800;
        report.Detail.Height = 300;
        QCOMPARE(PagesOf(*LayOut(report)),
                 (QList<QStringList>{{QStringLiteral("A")}, {QStringLiteral("B")}, {QStringLiteral("C")}}));
    }

    void ruleAtTheEndOfABandHigherThanAPage_isOnItsLastPage()
    {
        RowsReport report({{NumberedLines(100).join(QLatin1Char('\n'))}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 5000, 300});
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 320, 5000, 0});
        report.Detail.Height = 320;
        const auto document = LayOut(report);
        QCOMPARE(document->pages.size(), std::size_t(2));
        QVERIFY(PaintedPage(*document, 0).rules.empty());
        const PaintedPage last(*document, 1);
        QCOMPARE(last.rules.size(), std::size_t(1));
        const qreal below = last.rules[0].y1() - last.Text(QStringLiteral("line 99")).baseline.y();
        QVERIFY(below > 0 && below < RowsReport::LineHeight());
    }

    void emptyBandHigherThanAPage_takesItsSpace()
    {
        auto report = Rows(2, 3 * roomOnPage);
        const QList<QStringList> pages = PagesOf(*LayOut(*report));
        QCOMPARE(pages.size(), 6);
        QCOMPARE(pages[0], QStringList(QStringLiteral("row 0")));
        QCOMPARE(pages[1], QStringList());
        QCOMPARE(pages[3], QStringList(QStringLiteral("row 1")));
    }

    void headerHigherThanThePaper_stillLeavesRoomForRows()
    {
        auto report = Rows(3, 300);
        report->PageHeader.Height = 20000;
        QStringList printed;
        for (const QStringList& page : PagesOf(*LayOut(*report))) {
            printed << page;
        }
        QCOMPARE(printed, NumberedLines(3, QStringLiteral("row")));
    }

    void rowsWithoutHeight_stayOnOnePage()
    {
        QCOMPARE(RowsOnPages(*LayOut(*Rows(100, 0))), QStringList(QStringLiteral("0+100")));
    }

    void lineHigherThanItsBox_inABandHigherThanAPage_movesNoOtherLine()
    {
        const QStringList lines = NumberedLines(200);
        RowsReport report({{lines.join(QLatin1Char('\n')), QStringLiteral("2003")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 300;
        report.AddField(QStringLiteral("b"), {3000, 0, 3000, 300}).Font.Size = 2160;
        const auto document = LayOut(report);
        QVERIFY(document->pages.size() > 1);
        QStringList painted;
        for (const QStringList& page : PagesOf(*document)) {
            painted << page;
        }
        QCOMPARE(painted.count(QStringLiteral("2003")), 1);
        painted.removeAll(QStringLiteral("2003"));
        QCOMPARE(painted, lines);
    }
};

TEST_CLASS(tst_Paging)
#include "tst_Paging.moc"
