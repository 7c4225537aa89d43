// Laying out and painting a band: text lines, growth, alignment, pictures and drawn lines.

#include "reports/PaintedPage.h"
#include "reports/RowsReport.h"
#include "reports/engine/BandTest.h"
#include "support/TestClass.h"

#include <cmath>

using namespace Tarno;

namespace
{

QStringList LinesOf(const PlacedText& text)
{
    QStringList lines;
    for (const TextLine& line : text.lines) {
        lines << line.text;
    }
    return lines;
}

/// Returns the width of `text` in the default font, rounded up.
int WidthOf(const QString& text)
{
    return static_cast<int>(
        std::ceil(TextMeasurer().For(RowsReport::DefaultFont()).metrics.horizontalAdvance(text)));
}

} // namespace

class tst_LayOutBand : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void multiLine_lineBreaksOfEveryKind_startANewLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("lines");
        QTest::newRow("LF") << QStringLiteral("a\nb") << QStringLiteral("a|b");
        QTest::newRow("CR LF") << QStringLiteral("a\r\nb") << QStringLiteral("a|b");
        QTest::newRow("CR") << QStringLiteral("a\rb") << QStringLiteral("a|b");
        QTest::newRow("mixed") << QStringLiteral("a\r\nb\rc\nd") << QStringLiteral("a|b|c|d");
        QTest::newRow("empty lines") << QStringLiteral("a\r\n\r\nb") << QStringLiteral("a||b");
        QTest::newRow("at the ends") << QStringLiteral("\na\n") << QStringLiteral("|a|");
    }

    void multiLine_lineBreaksOfEveryKind_startANewLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, lines);
        RowsReport report({{text}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        RowsReport::AddLabel(report.Detail, QStringLiteral("b"), {3000, 0, 3000, 300}, text).MultiLine = true;
        const Band band = OnlyRow(report);
        QCOMPARE(LinesOf(TextOf(band, "a")), lines.split(QLatin1Char('|')));
    }

    void label_lineBreaksOfEveryKind_startANewLine()
    {
        RowsReport report({{QString()}});
        ReportControl& label = RowsReport::AddLabel(report.Detail, QStringLiteral("a"), {0, 0, 3000, 2000},
                                                    QStringLiteral("a\r\nb\rc\nd"));
        label.MultiLine = true;
        report.rows = {{}};
        QCOMPARE(LinesOf(TextOf(OnlyRow(report), "a")), QStringLiteral("a b c d").split(QLatin1Char(' ')));
    }

    void oneLine_lineBreaksAreBlanks()
    {
        RowsReport report({{QStringLiteral("a\r\nb\nc")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        const Band band = OnlyRow(report);
        QCOMPARE(LinesOf(TextOf(band, "a")), QStringList(QStringLiteral("a b c")));
        QCOMPARE(TextOf(band, "a").text, QStringLiteral("a b c"));
    }

    void multiLine_wrapsBetweenWords()
    {
        RowsReport report({{QStringLiteral("bream and flathead near the wharf")}});
        report.AddGrowingField(QStringLiteral("a"),
                               {0, 0, WidthOf(QStringLiteral("bream and flathead")) + 20, 300});
        QCOMPARE(LinesOf(TextOf(OnlyRow(report), "a")),
                 (QStringList{QStringLiteral("bream and flathead"), QStringLiteral("near the wharf")}));
    }

    void multiLine_exactlyFittingText_staysOnItsLine()
    {
        const QString text = QStringLiteral("bream and flathead");
        RowsReport report({{text}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, WidthOf(text), 300});
        QCOMPARE(LinesOf(TextOf(OnlyRow(report), "a")), QStringList(text));
    }

    void multiLine_aWordWiderThanTheBox_isCutWithinTheWord()
    {
        const QString word = QStringLiteral("abcdefghijklmnopqrstuvwxyz").repeated(5);
        RowsReport report({{word}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 1000, 300});
        const Band band = OnlyRow(report);
        const QStringList lines = LinesOf(TextOf(band, "a"));
        QVERIFY(lines.size() > 5);
        QCOMPARE(lines.join(QString()), word);
        for (const QString& line : lines) {
            QVERIFY2(WidthOf(line) <= 1001, qPrintable(line));
        }
        QCOMPARE(band.texts.front().box.height(), static_cast<int>(lines.size()) * RowsReport::LineHeight());
    }

    void multiLine_noWordIsLost()
    {
        QStringList words;
        for (int number = 0; number < 500; ++number) {
            words << QString(number % 17 + 1, QLatin1Char(static_cast<char>('a' + number % 26)));
        }
        RowsReport report({{words.join(QLatin1Char(' '))}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        QCOMPARE(LinesOf(TextOf(OnlyRow(report), "a")).join(QLatin1Char(' ')).split(QLatin1Char(' ')), words);
    }

    void growing_fieldAndBandGrowByWhatTheTextNeeds()
    {
        RowsReport report({{QStringLiteral("1\n2\n3\n4\n5")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 50, 3000, 300});
        report.Detail.Height = 400;
        const Band band = OnlyRow(report);
        const int needed = 5 * RowsReport::LineHeight();
        QCOMPARE(TextOf(band, "a").box, QRect(0, 50, 3000, needed));
        QCOMPARE(band.height, 400 + needed - 300);
    }

    void growing_aTextThatFits_keepsTheHeight()
    {
        RowsReport report({{QStringLiteral("1")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 600});
        report.Detail.Height = 700;
        const Band band = OnlyRow(report);
        QCOMPARE(TextOf(band, "a").box.height(), 600);
        QCOMPARE(band.height, 700);
    }

    void growing_controlsBelow_moveByTheLargestGrowthAbove()
    {
        RowsReport report(
            {{QStringLiteral("1\n2\n3"), QStringLiteral("1\n2\n3\n4\n5\n6"), QStringLiteral("x")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 1000, 300});
        report.AddGrowingField(QStringLiteral("b"), {1000, 0, 1000, 300});
        report.AddField(QStringLiteral("below"), {0, 360, 1000, 240});
        RowsReport::AddLabel(report.Detail, QStringLiteral("beside"), {2000, 0, 1000, 300},
                             QStringLiteral("y"));
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 660, 3000, 0});
        report.Detail.Height = 700;
        const Band band = OnlyRow(report);
        const int growth = 6 * RowsReport::LineHeight() - 300;
        QCOMPARE(TextOf(band, "a").box.height(), 3 * RowsReport::LineHeight());
        QCOMPARE(TextOf(band, "b").box.height(), 6 * RowsReport::LineHeight());
        QCOMPARE(TextOf(band, "below").box, QRect(0, 360 + growth, 1000, 240));
        QCOMPARE(TextOf(band, "beside").box, QRect(2000, 0, 1000, 300));
        QCOMPARE(band.lines.front().from, QPoint(0, 660 + growth));
        QCOMPARE(band.lines.front().to, QPoint(3000, 660 + growth));
        QCOMPARE(band.height, 700 + growth);
    }

    void growing_centredLines_keepTheSpaceAroundThem()
    {
        RowsReport report({{QStringLiteral("1\n2\n3"), QStringLiteral("x")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 1000, 300}).VerticalAlignment =
            VerticalTextAlignment::Middle;
        report.AddGrowingField(QStringLiteral("b"), {1000, 0, 1000, 300}).VerticalAlignment =
            VerticalTextAlignment::Middle;
        report.Detail.Height = 300;
        const Band band = OnlyRow(report);
        QCOMPARE(TextOf(band, "a").box.height(),
                 3 * RowsReport::LineHeight() + 300 % RowsReport::LineHeight());
        QCOMPARE(TextOf(band, "a").lines.front().top, TextOf(band, "b").lines.front().top);
        QVERIFY(TextOf(band, "b").lines.front().top > 0);
    }

    void growing_growthsAddUpFromTopToBottom()
    {
        const QString four = QStringLiteral("1\n2\n3\n4");
        RowsReport report({{four, four, QStringLiteral("x")}});
        report.AddGrowingField(QStringLiteral("third"),
                               {0, 800, 1000, 300}); // the order in which controls are added does not matter
        report.AddGrowingField(QStringLiteral("first"), {0, 0, 1000, 300});
        report.AddField(QStringLiteral("second"), {0, 400, 1000, 300});
        report.Detail.Height = 1200;
        const Band band = OnlyRow(report);
        const int growth = 4 * RowsReport::LineHeight() - 300;
        QCOMPARE(TextOf(band, "first").box.top(), 0);
        QCOMPARE(TextOf(band, "second").box.top(), 400 + growth);
        QCOMPARE(TextOf(band, "third").box.top(), 800 + growth);
        QCOMPARE(band.height, 1200 + 2 * growth);
    }

    void notGrowing_aLongText_keepsTheHeightAndLeavesTheRestOut()
    {
        const int lineHeight = RowsReport::LineHeight();
        RowsReport report({{QStringLiteral("1\n2\n3\n4\n5")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 2 * lineHeight + 10}).MultiLine = true;
        RowsReport::AddLabel(report.Detail, QStringLiteral("below"), {0, 2 * lineHeight + 10, 3000, 300},
                             QStringLiteral("y"));
        report.Detail.Height = 900;
        const Band band = OnlyRow(report);
        QCOMPARE(TextOf(band, "a").box.height(), 2 * lineHeight + 10);
        QCOMPARE(LinesOf(TextOf(band, "a")), (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
        QCOMPARE(TextOf(band, "below").box.top(), 2 * lineHeight + 10);
        QCOMPARE(band.height, 900);
    }

    void notGrowing_aBoxLowerThanItsLine_stillShowsIt()
    {
        RowsReport report({{QStringLiteral("1")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 20});
        QCOMPARE(LinesOf(TextOf(OnlyRow(report), "a")), QStringList(QStringLiteral("1")));
    }

    void notGrowing_aLineHigherThanItsBox_isClippedToTheBox_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<double>("part"); // of the missing height that is cut off at the top
        QTest::newRow("top") << static_cast<int>(VerticalTextAlignment::Top) << 0.0;
        QTest::newRow("middle") << static_cast<int>(VerticalTextAlignment::Middle) << 0.5;
        QTest::newRow("bottom") << static_cast<int>(VerticalTextAlignment::Bottom) << 1.0;
    }

    void notGrowing_aLineHigherThanItsBox_isClippedToTheBox()
    {
        QFETCH(int, alignment);
        QFETCH(double, part);
        RowsReport report({{QStringLiteral("2003")}});
        ReportControl& field = report.AddField(QStringLiteral("a"), {500, 100, 4000, 300});
        field.Font.Size = 24;
        field.VerticalAlignment = static_cast<VerticalTextAlignment>(alignment);
        report.Detail.Height = 400;
        const auto document = LayOut(report);
        const PlacedText& text = document->details.front().texts.front();
        const double missing = text.lineHeight - 300;
        QVERIFY(missing > 0);
        QVERIFY(qAbs(text.lines.front().top - (100 - part * missing)) <= 1);
        QCOMPARE(PaintedPage(*document, 0).Text(QStringLiteral("2003")).clip,
                 QRectF(1440 + 500, 1440 + 100, 4000, 300));
    }

    void notGrowing_aHugeFont_stillShowsAPartOfItsText()
    {
        RowsReport report({{QStringLiteral("2003")}});
        ReportControl& field = report.AddField(QStringLiteral("a"), {0, 0, 1000, 300});
        field.Font.Size = 2160;
        field.VerticalAlignment = VerticalTextAlignment::Middle;
        QImage page(11906, 3000, QImage::Format_Grayscale8);
        page.fill(Qt::white);
        QPainter painter(&page);
        PaintPage(painter, *LayOut(report), 0);
        painter.end();
        const QRect box(1440, 1440, 1000, 300);
        QImage white(box.size(), page.format());
        white.fill(Qt::white);
        QVERIFY(page.copy(box) != white);
    }

    void growing_aFontTooLargeToWrap_keepsTheHeight_data()
    {
        QTest::addColumn<double>("size");
        QTest::addColumn<int>("width");
        QTest::newRow("no room for a letter") << 60.0 << 900;
        QTest::newRow("higher than the page") << 2160.0 << 9000;
    }

    void growing_aFontTooLargeToWrap_keepsTheHeight()
    {
        QFETCH(double, size);
        QFETCH(int, width);
        RowsReport report({{QStringLiteral("bream\nand flathead ").repeated(1000)}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, width, 300}).Font.Size = size;
        report.Detail.Height = 300;
        const auto document = LayOut(report);
        QCOMPARE(document->pages.size(), std::size_t(1));
        QCOMPARE(document->details.front().height, 300);
        QCOMPARE(document->details.front().texts.front().lines.size(), std::size_t(1));
    }

    void beforePrint_seesTheGrownHeightAndMayPlaceARuleAtItsEnd()
    {
        RowsReport report({{QStringLiteral("1")}, {QStringLiteral("1\n2\n3\n4")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        RowsReport::AddLine(report.Detail, QStringLiteral("lineDetail"), {0, 280, 3000, 0});
        report.Detail.Height = 320;
        report.handlers[QStringLiteral("Detail_BeforePrint")] = [&] {
            ReportControl& line = report.Detail.Controls[QStringLiteral("lineDetail")];
            line.Top = report.Detail.Height - 12;
        };
        const auto document = LayOut(report);
        QCOMPARE(document->details[0].lines.front().from.y(), 320 - 12);
        QCOMPARE(document->details[1].height, 320 + 4 * RowsReport::LineHeight() - 300);
        QCOMPARE(document->details[1].lines.front().from.y(), document->details[1].height - 12);
        QCOMPARE(document->details[1].lines.front().to.y(), document->details[1].height - 12);
    }

    void invisible_isNotPrintedAndDoesNotGrow()
    {
        RowsReport report({{QStringLiteral("1\n2\n3\n4")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300}).Visible = false;
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 280, 3000, 0}).Visible = false;
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("head"), {0, 0, 900, 300}, QStringLiteral("y"))
            .Visible = false;
        report.Detail.Height = 300;
        const auto document = LayOut(report);
        const Band& band = document->details.front();
        QVERIFY(band.texts.empty());
        QVERIFY(band.lines.empty());
        QCOMPARE(band.height, 300);
        QVERIFY(document->header.texts.empty());
        QCOMPARE(PaintedPage(*document, 0).Texts(), QStringList());
    }

    void alignment_placesTheLineInItsBox_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::newRow("left") << static_cast<int>(TextAlignment::Left);
        QTest::newRow("right") << static_cast<int>(TextAlignment::Right);
        QTest::newRow("centre") << static_cast<int>(TextAlignment::Center);
    }

    void alignment_placesTheLineInItsBox()
    {
        QFETCH(int, alignment);
        RowsReport report({{QStringLiteral("bream")}});
        report.AddField(QStringLiteral("a"), {500, 0, 3000, 300}).Alignment =
            static_cast<TextAlignment>(alignment);
        const PaintedPage page(*LayOut(report), 0);
        const PaintedText& text = page.Text(QStringLiteral("bream"));
        const qreal room = 3000 - WidthOf(QStringLiteral("bream"));
        const qreal left = alignment == 0 ? 0 : alignment == 1 ? room : room / 2;
        QVERIFY(qAbs(text.baseline.x() - (1440 + 500 + left)) <= 1);
    }

    void verticalAlignment_placesTheLinesInTheirBox_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("top");
        const int room = 1000 - 2 * RowsReport::LineHeight();
        QTest::newRow("top") << static_cast<int>(VerticalTextAlignment::Top) << 100;
        QTest::newRow("middle") << static_cast<int>(VerticalTextAlignment::Middle) << 100 + room / 2;
        QTest::newRow("bottom") << static_cast<int>(VerticalTextAlignment::Bottom) << 100 + room;
    }

    void verticalAlignment_placesTheLinesInTheirBox()
    {
        QFETCH(int, alignment);
        QFETCH(int, top);
        RowsReport report({{QStringLiteral("1\n2")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 100, 3000, 1000}).VerticalAlignment =
            static_cast<VerticalTextAlignment>(alignment);
        const Band band = OnlyRow(report);
        const PlacedText& text = TextOf(band, "a");
        QCOMPARE(text.lines[0].top, top);
        QCOMPARE(text.lines[1].top, top + RowsReport::LineHeight());
    }

    void oneLineWiderThanItsBox_isCutOffAtTheBox()
    {
        const QString text = QStringLiteral("a long text in a narrow box");
        RowsReport report({{text}});
        report.AddField(QStringLiteral("a"), {500, 100, 600, 300}).Alignment = TextAlignment::Right;
        const PaintedPage page(*LayOut(report), 0);
        const PaintedText& painted = page.Text(text);
        QCOMPARE(painted.baseline.x(), 1440 + 500.0);
        QCOMPARE(painted.clip.left(), 1440 + 500.0);
        QCOMPARE(painted.clip.width(), 600.0);
    }

    void pictureAndRule_arePaintedAtTheirPositions()
    {
        RowsReport report;
        ReportControl& picture = report.PageHeader.Controls.Add(QStringLiteral("DDActiveReports.Image"));
        picture.Left = 100;
        picture.Top = 50;
        picture.Width = 720;
        picture.Height = 360;
        picture.Picture = QImage(4, 4, QImage::Format_RGB32);
        picture.Picture.fill(Qt::red);
        RowsReport::AddLine(report.PageHeader, QStringLiteral("line"), {0, 500, 9000, 0});
        report.PageHeader.Height = 600;
        const PaintedPage page(*LayOut(report), 0);
        QCOMPARE(page.pictures, std::vector<QRectF>{QRectF(1540, 1490, 720, 360)});
        QCOMPARE(page.rules, std::vector<QLineF>{QLineF(1440, 1940, 10440, 1940)});
    }

    void ruleAtTheVeryEndOfItsBand_isPainted()
    {
        RowsReport report({{QStringLiteral("x")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 300, 3000, 0});
        report.Detail.Height = 300;
        QCOMPARE(PaintedPage(*LayOut(report), 0).rules, std::vector<QLineF>{QLineF(1440, 1740, 4440, 1740)});
    }
};

TEST_CLASS(tst_LayOutBand)
#include "tst_LayOutBand.moc"
