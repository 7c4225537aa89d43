// Painting many pages with one PagePainter.

#include "reports/PaintedPage.h"
#include "reports/RowsReport.h"
#include "support/TestClass.h"

using namespace Tarno;

namespace
{

QStringList Described(const PaintedPage& page)
{
    QStringList described;
    for (const PaintedText& text : page.texts) {
        described << QStringLiteral("%1 at %2, %3, width %4, %5 %6, clip %7")
                         .arg(text.text)
                         .arg(text.baseline.x())
                         .arg(text.baseline.y())
                         .arg(text.width)
                         .arg(text.family)
                         .arg(text.bold)
                         .arg(text.clip.width());
    }
    return described;
}

/// A report with texts that repeat, texts that differ, and more different texts than a PagePainter keeps.
class MixedReport : public RowsReport
{
public:
    MixedReport()
    {
        const QString arabic = QString::fromUtf8("صيد السمك");
        for (int row = 0; row < 1200; ++row) {
            const QString repeated = QStringLiteral("bream %1").arg(row % 5);
            rows.push_back({repeated, repeated, repeated,
                            row % 3 == 0 ? arabic + QStringLiteral("\noffice") : QStringLiteral("office"),
                            QStringLiteral("a text of row %1 that is cut off").arg(row)});
        }
        AddField(QStringLiteral("left"), {0, 0, 1500, 300});
        AddField(QStringLiteral("right"), {1500, 0, 1500, 300}).Alignment = TextAlignment::Right;
        AddField(QStringLiteral("bold"), {3000, 0, 1500, 300}).Font.Bold = true;
        AddGrowingField(QStringLiteral("growing"), {4500, 0, 1500, 300});
        AddField(QStringLiteral("cut"), {6000, 0, 1500, 300});
        Detail.Height = 300;
        AddLabel(PageFooter, QStringLiteral("page"), {0, 0, 600, 300}, QString()).Page = PageText::Number;
        PageFooter.Height = 300;
    }
};

} // namespace

class tst_PaintPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void manyPages_areTheSameAsEachPageAlone()
    {
        MixedReport report;
        const auto document = LayOut(report);
        QVERIFY(document->pages.size() > 20);
        QStringList alone;
        for (std::size_t page = 0; page < document->pages.size(); ++page) {
            alone << Described(PaintedPage(*document, page));
        }
        const PaintedPage together([&](QPainter& painter) {
            PagePainter pages(painter, *document);
            for (std::size_t page = 0; page < document->pages.size(); ++page) {
                pages.Paint(page);
            }
        });
        QCOMPARE(Described(together), alone);
    }

    void lineSeparator_keepsTheRestOfTheLine()
    {
        RowsReport report({{QStringLiteral("bream\u2028flathead")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 300;
        const QString painted = PaintedPage(*LayOut(report), 0).Texts().join(QString());
        QVERIFY2(painted.contains(QLatin1String("bream")), qPrintable(painted));
        QVERIFY2(painted.contains(QLatin1String("flathead")), qPrintable(painted));
    }
};

TEST_CLASS(tst_PaintPage)
#include "tst_PaintPage.moc"
