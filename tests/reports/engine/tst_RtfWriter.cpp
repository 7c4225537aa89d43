// RTF files, read back with our own reader and with unrtf.

#include "reports/ReadRtf.h"
#include "reports/RowsReport.h"
#include "reports/engine/RtfWriter.h"
#include "support/Platform.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <QProcess>

using namespace Tarno;

namespace
{

/// Returns the RTF of a report with one growing column.
QByteArray RtfOf(const std::vector<QStringList>& rows)
{
    RowsReport report(rows);
    report.AddGrowingField(QStringLiteral("a"), {0, 0, 9000, 300});
    report.Detail.Height = 300;
    return RtfBytes(*LayOut(report));
}

/// Returns the height of a row in twips, negative if it is fixed.
int HeightOf(const RtfRow& row)
{
    return row.numbers.value(QStringLiteral("trrh")).value(0);
}

/// Returns the text that unrtf extracts from `rtf`.
QString Unrtf(const QByteArray& rtf)
{
    const TemporaryFolder folder;
    folder.Write("report.rtf", rtf.toStdString());
    QProcess process;
    process.start(QStringLiteral("unrtf"),
                  {QStringLiteral("--text"), QString::fromStdString(folder.PathOf("report.rtf"))});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        qFatal("unrtf: %s", process.readAllStandardError().constData());
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

class tst_RtfWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void text_isEscaped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("rtf");
        QTest::newRow("plain") << QStringLiteral("bream, 1.5 kg ~ [x]") << QByteArray("bream, 1.5 kg ~ [x]");
        QTest::newRow("escapes") << QStringLiteral("C:\\log {1}") << QByteArray("C:\\\\log \\{1\\}");
        QTest::newRow("line break") << QStringLiteral("a\nb") << QByteArray("a\\line b");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QByteArray("a\\tab b");
        QTest::newRow("Latin 1") << QString::fromUtf8("é5") << QByteArray("\\u233?5");
        QTest::newRow("no-break space") << QString(QChar(0xA0)) << QByteArray("\\u160?");
        QTest::newRow("Greek") << QString::fromUtf8("Ψ") << QByteArray("\\u936?");
        QTest::newRow("Japanese") << QString::fromUtf8("東") << QByteArray("\\u26481?");
        QTest::newRow("highest half") << QString(QChar(0xFFFD)) << QByteArray("\\u-3?");
        QTest::newRow("surrogate pair") << QString::fromUtf8("😀") << QByteArray("\\u-10179?\\u-8704?");
        QTest::newRow("control characters") << QStringLiteral("a\x01\x07\x0B\x1Bz") << QByteArray("az");
        QTest::newRow("a control character that a log can hold")
            << QStringLiteral("a\x7Fz") << QByteArray("a\\u127?z");
        QTest::newRow("no character 0") << QString(QChar(0)) << QByteArray();
    }

    void text_isEscaped()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, rtf);
        QCOMPARE(RtfText(text), rtf);
    }

    void file_isWellFormedForAnyText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << QString();
        QTest::newRow("RTF") << QStringLiteral("}}{\\rtf1\\par {\\*\\x \\u1? \\'e9\\");
        QTest::newRow("digits after a letter") << QString::fromUtf8("é5 é-5 é?");
        QTest::newRow("scripts") << QString::fromUtf8("Ψάρεμα 東京湾 صيد السمك 😀 naïve");
        QTest::newRow("lines") << QStringLiteral("one\n\ntwo\n");
    }

    void file_isWellFormedForAnyText()
    {
        QFETCH(QString, text);
        RowsReport report({{text, text}});
        report.Caption = text;
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.AddGrowingField(QStringLiteral("b"), {3000, 0, 3000, 300});
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("c"), {0, 0, 900, 900}, text).MultiLine = true;
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.fault, QString());
        QCOMPARE(reading.title, text);
        QCOMPARE(reading.body.size(), 1);
        QCOMPARE(reading.body[0].cells.mid(0, 2), (QStringList{text, text}));
        QCOMPARE(reading.header[0].cells[0], text);
    }

    void page_hasThePapersSizeAndMargins_data()
    {
        QTest::addColumn<QPageSize::PageSizeId>("size");
        QTest::addColumn<bool>("landscape");
        QTest::addColumn<QSize>("paper");
        QTest::newRow("A4") << QPageSize::A4 << false << QSize(11906, 16838);
        QTest::newRow("A4 turned") << QPageSize::A4 << true << QSize(16838, 11906);
        QTest::newRow("Letter") << QPageSize::Letter << false << QSize(12240, 15840);
        QTest::newRow("Letter turned") << QPageSize::Letter << true << QSize(15840, 12240);
    }

    void page_hasThePapersSizeAndMargins()
    {
        QFETCH(QPageSize::PageSizeId, size);
        QFETCH(bool, landscape);
        QFETCH(QSize, paper);
        RowsReport report;
        report.Page = QPageLayout(QPageSize(size), landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                                  QMarginsF(0.5, 0.75, 1, 1.25), QPageLayout::Inch);
        report.PageHeader.Height = 400;
        report.PageFooter.Height = 300;
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        const auto word = [&](const char* name) { return reading.set.value(QLatin1String(name), -1); };
        QCOMPARE(QSize(word("paperw"), word("paperh")), paper);
        QCOMPARE(reading.set.contains(QStringLiteral("landscape")), landscape);
        QCOMPARE(word("margl"), 720);
        QCOMPARE(word("margr"), 1440);
        QCOMPARE(word("margt"), 1080 + 400);
        QCOMPARE(word("margb"), 1800 + 300);
        QCOMPARE(word("headery"), 1080);
        QCOMPARE(word("footery"), 1800);
    }

    void header_hasItsTitleAndPageFields()
    {
        RowsReport report;
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("title"), {0, 0, 4000, 300},
                             QStringLiteral("Locations Listing"));
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("number"), {5000, 0, 600, 300}, QString())
            .Page = PageText::Number;
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("of"), {5600, 0, 600, 300},
                             QStringLiteral("of"));
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("count"), {6200, 0, 600, 300}, QString())
            .Page = PageText::Count;
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.fault, QString());
        QCOMPARE(reading.header.size(), 1);
        QCOMPARE(reading.header[0].cells.join(QLatin1Char('|')),
                 QStringLiteral("Locations Listing||<PAGE>|of|<NUMPAGES>|"));
        QVERIFY(reading.body.isEmpty());
        QVERIFY(reading.footer.isEmpty());
    }

    void footer_isInTheFooter()
    {
        RowsReport report;
        RowsReport::AddLabel(report.PageFooter, QStringLiteral("foot"), {0, 0, 4000, 300},
                             QStringLiteral("the end"));
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.footer.size(), 1);
        QCOMPARE(reading.footer[0].cells.first(), QStringLiteral("the end"));
    }

    void cells_endAtTheColumnsRightEdges()
    {
        RowsReport report({{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}});
        report.AddField(QStringLiteral("second"),
                        {2500, 0, 1500, 300}); // the order in which controls are added does not matter
        report.AddField(QStringLiteral("first"), {0, 0, 2000, 300});
        report.AddField(QStringLiteral("third"), {4000, 0, 1000, 300});
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.fault, QString());
        QCOMPARE(reading.body.size(), 1);
        QCOMPARE(reading.body[0].edges, (QList<int>{2000, 2500, 4000, 5000, 11906 - 2880}));
        QCOMPARE(reading.body[0].cells.join(QLatin1Char('|')), QStringLiteral("2||1|3|"));
    }

    void overlappingColumns_stillHaveAscendingEdges()
    {
        RowsReport report({{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.AddField(QStringLiteral("b"), {1000, 0, 500, 300});
        report.AddField(QStringLiteral("c"), {1000, 0, 0, 300});
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.fault, QString());
        QCOMPARE(reading.body[0].cells.mid(0, 3).join(QLatin1Char('|')), QStringLiteral("1|2|3"));
    }

    void columnsOnTwoLines_areTwoRowsFromTopToBottom()
    {
        RowsReport report({{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}});
        report.AddField(QStringLiteral("below"), {0, 399, 2000, 285});
        report.AddField(QStringLiteral("a"), {0, 0, 2000, 285});
        report.AddField(QStringLiteral("b"), {2000, 0, 2000, 285});
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.body.size(), 2);
        QCOMPARE(reading.body[0].cells.mid(0, 2).join(QLatin1Char('|')), QStringLiteral("2|3"));
        QCOMPARE(reading.body[1].cells.first(), QStringLiteral("1"));
        // no page break between them
        QCOMPARE(reading.body[0].words.count(QStringLiteral("keepn")), reading.body[0].cells.size());
        QVERIFY(!reading.body[1].words.contains(QStringLiteral("keepn")));
    }

    void rule_isTheBorderOfTheRowAboveIt()
    {
        RowsReport report({{QStringLiteral("1"), QStringLiteral("2\n3\n4")}});
        report.AddField(QStringLiteral("a"), {0, 0, 2000, 300});
        report.AddGrowingField(QStringLiteral("b"), {2000, 0, 2000, 300});
        RowsReport::AddLabel(report.Detail, QStringLiteral("c"), {0, 300, 2000, 300}, QStringLiteral("x"));
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 620, 4000, 0});
        report.Detail.Height = 640;
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.body.size(), 2);
        QCOMPARE(reading.body[0].borders, 0);
        QCOMPARE(reading.body[1].borders, reading.body[1].cells.size());
    }

    void rows_areAsHighAsTheDistancesOfTheirItems()
    {
        RowsReport report({{QStringLiteral("1\n2\n3"), QStringLiteral("4"), QStringLiteral("5")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 50, 2000, 300});
        report.AddField(QStringLiteral("b"), {2000, 50, 2000, 300});
        report.AddField(QStringLiteral("c"), {0, 400, 2000, 300});
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 750, 4000, 0}).Weight = 8;
        report.Detail.Height = 800;
        const auto document = LayOut(report);
        const int growth = document->details.front().height - 800;
        QVERIFY(growth > 0);
        const RtfReading reading = RtfReader::Read(RtfBytes(*document));
        QList<int> heights;
        QList<int> borders;
        for (const RtfRow& row : reading.body) {
            heights << HeightOf(row);
            borders << (row.borders > 0 ? row.numbers.value(QStringLiteral("brdrw")).value(0) : 0);
        }
        QCOMPARE(heights, (QList<int>{400 + growth, -350, -50})); // only the first may become higher
        QCOMPARE(borders, (QList<int>{0, 8, 0}));
    }

    void lines_areAtTheHeightsOfTheLayout()
    {
        RowsReport report({{QStringLiteral("1\n2"), QStringLiteral("3"), QStringLiteral("4")}});
        ReportControl& growing = report.AddGrowingField(QStringLiteral("a"), {0, 50, 2000, 300});
        growing.VerticalAlignment = VerticalTextAlignment::Middle;
        growing.PaddingRight = 57;
        report.AddField(QStringLiteral("b"), {2000, 50, 2000, 300});
        report.AddField(QStringLiteral("c"), {4000, 50, 2000, 300}).Font.Size = 24;
        report.Detail.Height = 400;
        const auto document = LayOut(report);
        const RtfRow row = RtfReader::Read(RtfBytes(*document)).body.value(0);
        QList<int> tops;
        for (const PlacedText& text : document->details.front().texts) {
            tops << text.lines.front().top;
        }
        QVERIFY(tops[0] > 50);
        QCOMPARE(row.numbers.value(QStringLiteral("sb")), tops);
        const int lineHeight = RowsReport::LineHeight();
        QCOMPARE(row.numbers.value(QStringLiteral("sl")).mid(0, 3),
                 (QList<int>{-lineHeight, -lineHeight, -300})); // fixed
        // word processors do not clip a line, so its font is reduced to the height of the box
        const int halfPoints = row.numbers.value(QStringLiteral("fs")).value(2);
        QVERIFY(halfPoints < 48);
        QVERIFY(TextMeasurer().For({QStringLiteral("DejaVu Sans"), halfPoints / 2.0, false}).lineHeight <=
                310);
        // texts that do not wrap may be a little longer than in the layout
        QCOMPARE(row.numbers.value(QStringLiteral("ri")), (QList<int>{57, -500, -500}));
    }

    void fieldThatDoesNotGrow_hasOneLine()
    {
        const QString text = QStringLiteral("bream and flathead near the old wharf ").repeated(20).trimmed();
        RowsReport report({{text, QStringLiteral("1\n2\n3\n4"), QStringLiteral("whole")}});
        report.AddField(QStringLiteral("a"), {0, 0, 2000, 300});
        report.AddGrowingField(QStringLiteral("b"), {2000, 0, 2000, 300});
        report.AddField(QStringLiteral("c"), {4000, 0, 2000, 300});
        report.Detail.Height = 300;
        const QStringList cells = RtfReader::Read(RtfBytes(*LayOut(report))).body.value(0).cells;
        const QString shown = cells.value(0);
        QVERIFY(shown.size() > 10 && text.startsWith(shown));
        const QFontMetricsF metrics = TextMeasurer().For(RowsReport::DefaultFont()).metrics;
        QVERIFY(metrics.horizontalAdvance(shown) <= 2000);
        QVERIFY(metrics.horizontalAdvance(text.left(shown.size() + 2)) > 2000);
        QCOMPARE(cells.value(2), QStringLiteral("whole"));
    }

    void pageBreak_splitsOnlyBandsHigherThanAPage()
    {
        const RtfReading reading = RtfReader::Read(
            RtfOf({{QStringLiteral("1")}, {QStringLiteral("2\n").repeated(200)}, {QStringLiteral("3\n4")}}));
        QList<bool> kept;
        for (const RtfRow& row : reading.body) {
            kept << row.words.contains(QStringLiteral("trkeep"));
        }
        QCOMPARE(kept, (QList<bool>{true, false, true}));
        QVERIFY(!reading.body.value(1).words.contains(QStringLiteral("trrh"))); // as high as its lines
    }

    void header_isAsHighAsInTheLayout()
    {
        RowsReport report;
        ReportControl& picture = report.PageHeader.Controls.Add(QStringLiteral("DDActiveReports.Image"));
        picture.Width = picture.Height = 680;
        picture.Picture = QImage(2, 2, QImage::Format_RGB32);
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("title"), {840, 40, 4000, 380},
                             QStringLiteral("title"));
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("date"), {840, 440, 4000, 240},
                             QStringLiteral("date"));
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("heading"), {0, 741, 4000, 399},
                             QStringLiteral("heading"));
        report.PageHeader.Height = 1140;
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QStringList rows;
        int height = 0;
        for (const RtfRow& row : reading.header) {
            rows << row.cells.join(QLatin1Char('|'));
            height -= HeightOf(row);
        }
        QCOMPARE(rows, (QStringList{QStringLiteral("<picture>||title|"), QStringLiteral("||date|"),
                                    QStringLiteral("heading|")}));
        QCOMPARE(reading.header[0].words.count(QStringLiteral("clvmgf")), 1); // the picture is in two rows
        QCOMPARE(reading.header[1].words.count(QStringLiteral("clvmrg")), 1);
        QCOMPARE(HeightOf(reading.header[0]), -440);
        // with the paragraph that follows a table
        QCOMPARE(height - reading.set.value(QStringLiteral("sl")), 1140);
    }

    void bandHigherThanAPage_isWrittenOnce()
    {
        QStringList lines;
        for (int number = 0; number < 200; ++number) {
            lines << QStringLiteral("line %1").arg(number);
        }
        const RtfReading reading =
            RtfReader::Read(RtfOf({{lines.join(QLatin1Char('\n'))}, {QStringLiteral("after")}}));
        QCOMPARE(reading.body.size(), 2);
        QCOMPARE(reading.body[0].cells.first().split(QLatin1Char('\n')), lines);
        QCOMPARE(reading.body[1].cells.first(), QStringLiteral("after"));
    }

    void wrappedText_isWrittenUnwrapped()
    {
        const QString text = QStringLiteral("bream and flathead near the old wharf ").repeated(20).trimmed();
        QCOMPARE(RtfReader::Read(RtfOf({{text}})).body[0].cells.first(), text);
    }

    void alignmentAndFont_areKept()
    {
        RowsReport report({{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}});
        report.AddField(QStringLiteral("a"), {0, 0, 2000, 300}).Font = {QStringLiteral("Tahoma"), 8.5, true};
        report.AddField(QStringLiteral("b"), {0, 300, 2000, 300}).Alignment = TextAlignment::Right;
        report.AddField(QStringLiteral("c"), {0, 600, 2000, 300}).Alignment = TextAlignment::Center;
        const QByteArray rtf = RtfBytes(*LayOut(report));
        const RtfReading reading = RtfReader::Read(rtf);
        QVERIFY(reading.body[0].words.contains(QStringLiteral("ql")));
        QVERIFY(reading.body[0].words.contains(QStringLiteral("b")));
        QVERIFY(rtf.contains("\\fs17"));
        QVERIFY(reading.body[1].words.contains(QStringLiteral("qr")));
        QVERIFY(!reading.body[1].words.contains(QStringLiteral("b")));
        QVERIFY(reading.body[2].words.contains(QStringLiteral("qc")));
        QVERIFY(reading.fonts.contains(QStringLiteral("Tahoma")));
        QVERIFY(reading.fonts.contains(AvailableFamily(QStringLiteral("Tahoma"))));
        QVERIFY(reading.fonts.contains(QStringLiteral("DejaVu Sans")));
    }

    void picture_isInTheFirstRow()
    {
        RowsReport report;
        RowsReport::AddLabel(report.PageHeader, QStringLiteral("title"), {800, 60, 4000, 300},
                             QStringLiteral("title"));
        ReportControl& picture = report.PageHeader.Controls.Add(QStringLiteral("DDActiveReports.Image"));
        picture.Width = 720;
        picture.Height = 720;
        QImage red(2, 2, QImage::Format_RGB32);
        red.fill(Qt::red);
        picture.Picture = red;
        const QByteArray rtf = RtfBytes(*LayOut(report));
        const RtfReading reading = RtfReader::Read(rtf);
        QCOMPARE(reading.fault, QString());
        QCOMPARE(reading.header.size(), 1);
        QCOMPARE(reading.header[0].cells.first(), QStringLiteral("<picture>"));
        const qsizetype start = rtf.indexOf("89504e47"); // a PNG file in hexadecimal
        QVERIFY(start > 0);
        QCOMPARE(QImage::fromData(QByteArray::fromHex(rtf.mid(start, rtf.indexOf('}', start) - start))), red);
    }

    void noRows_giveAFileWithoutBody()
    {
        RowsReport report;
        const RtfReading reading = RtfReader::Read(RtfBytes(*LayOut(report)));
        QCOMPARE(reading.fault, QString());
        QVERIFY(reading.body.isEmpty());
    }

    void unrtf_readsEveryValue()
    {
        NOT_ON_WINDOWS("unrtf");
        RowsReport report;
        for (int column = 0; column < 4; ++column) {
            report.AddGrowingField(QStringLiteral("column%1").arg(column), {column * 2200, 0, 2200, 300});
        }
        report.Detail.Height = 300;
        QStringList expected;
        for (int row = 0; row < 50; ++row) {
            report.rows.push_back(
                {QStringLiteral("2003-02-%1").arg(row), QStringLiteral("{place\\%1}").arg(row),
                 QStringLiteral("%1 bream").arg(row * 7),
                 QStringLiteral("observations of the trip number %1 to the wharf").arg(row)});
            expected << report.rows.back().join(QLatin1Char(' '));
        }
        const QString read = Unrtf(RtfBytes(*LayOut(report)));
        const QString values = read.mid(read.indexOf(QStringLiteral("2003-02-0"))).simplified();
        QCOMPARE(values, expected.join(QLatin1Char(' ')));
    }
};

TEST_CLASS(tst_RtfWriter)
#include "tst_RtfWriter.moc"
