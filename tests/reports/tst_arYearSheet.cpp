// The sheet of a year: its rows, its page, and its footer.

#include "qt/Strings.h"
#include "reports/arYearSheet.h"
#include "reports/engine/LayOut.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

QPageLayout Paper(QPageSize::PageSizeId size)
{
    return {QPageSize(size), QPageLayout::Landscape, QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter};
}

YearSummary Year(int species)
{
    YearSummary summary{.year = 2026, .figures = {}, .before = {}};
    summary.figures.trips = 12;
    summary.figures.best = {{"1", "2026-03-07", "Pittwater", "Hot!", "Flathead, Squid"},
                            {"2", "2026-01-02", "", "Good", ""}};
    summary.figures.months[2] = {1, 0, 0, 5, 2};
    for (int number = 1; number <= species; ++number) {
        summary.figures.species.push_back({"Fish " + std::to_string(number), 1});
    }
    return summary;
}

/// Returns the texts of each row, separated by " | ".
Texts RowsOf(const Document& document)
{
    Texts rows;
    for (const Band& band : document.details) {
        QStringList cells;
        for (const PlacedText& text : band.texts) {
            for (const TextLine& line : text.lines) {
                if (!line.text.isEmpty()) {
                    cells << line.text;
                }
            }
        }
        rows.push_back(ToUtf8(cells.join(QLatin1String(" | "))));
    }
    return rows;
}

bool Has(const Texts& rows, const std::string& row)
{
    return std::find(rows.begin(), rows.end(), row) != rows.end();
}

} // namespace

class tst_arYearSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void rows_haveFiguresBestTripsAndMonths()
    {
        arYearSheet sheet(Paper(QPageSize::A4), Year(1));
        const Texts rows = RowsOf(LayOut(sheet).value());
        QCOMPARE(rows[0], "Figures | 2026 | 2025"s);
        QCOMPARE(rows[1], "Trips | 12 | 0"s);
        for (const char* row :
             {"Trips with Fish 1 | 1 | 0", "Best trips", "2026-03-07 | Hot!, Pittwater, Flathead, Squid",
              "2026-01-02 | Good", "Trips by month and action | Slow | Fair | Good | Hot! | Not Set",
              "January | - | - | - | - | -", "March | 1 | - | - | 5 | 2"}) {
            QVERIFY2(Has(rows, row), row);
        }
    }

    void longNames_areShortened()
    {
        YearSummary summary = Year(1);
        summary.figures.species[0].name = std::string(3000, 'x');
        summary.figures.best[0].caught = std::string(3000, 'y');
        arYearSheet sheet(Paper(QPageSize::A4), summary);
        QCOMPARE(LayOut(sheet).value().pages.size(), std::size_t{1});
    }

    void yearWithoutBestTrips_saysSo()
    {
        arYearSheet sheet(Paper(QPageSize::A4), {.year = 2026, .figures = {}, .before = {}});
        QVERIFY(Has(RowsOf(LayOut(sheet).value()), "No trip has the action Good or Hot!."));
    }

    void usualYear_isOnePortraitPage_data()
    {
        QTest::addColumn<QPageSize::PageSizeId>("paper");
        QTest::newRow("A4") << QPageSize::A4;
        QTest::newRow("Letter") << QPageSize::Letter;
    }

    void usualYear_isOnePortraitPage()
    {
        QFETCH(QPageSize::PageSizeId, paper);
        arYearSheet sheet(Paper(paper), Year(10));
        const Document document = LayOut(sheet).value();
        QCOMPARE(document.pages.size(), std::size_t{1});
        QVERIFY(document.paper.height() > document.paper.width());
        QCOMPARE(sheet.Page.orientation(), QPageLayout::Landscape); // as before the run
    }

    void manySpecies_takeMorePages()
    {
        arYearSheet sheet(Paper(QPageSize::A4), Year(60));
        QCOMPARE(LayOut(sheet).value().pages.size(), std::size_t{2});
    }

    void texts_fitBetweenTheMargins()
    {
        arYearSheet sheet(Paper(QPageSize::A4), Year(1));
        sheet.AddFooter(QStringLiteral("place:pittwater"));
        const Document document = LayOut(sheet).value();
        const int width = document.paper.width() - document.margins.left() - document.margins.right();
        for (const Band& band : document.details) {
            for (const PlacedText& text : band.texts) {
                QVERIFY2(text.box.left() + text.box.width() <= width, qPrintable(text.name));
            }
        }
        QCOMPARE(document.footer.texts.size(), std::size_t{1});
        QCOMPARE(ToUtf8(document.footer.texts[0].lines[0].text), "place:pittwater"s);
    }
};

TEST_CLASS(tst_arYearSheet)
#include "tst_arYearSheet.moc"
