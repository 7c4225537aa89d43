// PDF files, read back with the poppler tools.

#include "reports/RowsReport.h"
#include "reports/engine/PdfWriter.h"
#include "support/Platform.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <QProcess>
#include <QRegularExpression>

using namespace Tarno;

namespace
{

/// A PDF file on disk, read with the poppler tools.
class PdfFile
{
public:
    explicit PdfFile(const QByteArray& bytes) { m_folder.Write("report.pdf", bytes.toStdString()); }

    QString Text() const
    {
        return Run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), Path(), QStringLiteral("-")});
    }

    /// Returns the text of page `number` (from 1).
    QString TextOfPage(int number) const
    {
        const QString page = QString::number(number);
        return Run(QStringLiteral("pdftotext"),
                   {QStringLiteral("-f"), page, QStringLiteral("-l"), page, Path(), QStringLiteral("-")});
    }

    /// Returns the words of all pages, separated by blanks.
    QString Words() const
    {
        return Run(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), Path(), QStringLiteral("-")})
            .simplified();
    }

    QString Info(const QString& what) const
    {
        const QString info = Run(QStringLiteral("pdfinfo"), {Path()});
        const QRegularExpression line(QLatin1Char('^') + QRegularExpression::escape(what) +
                                          QStringLiteral(": *(.*)$"),
                                      QRegularExpression::MultilineOption);
        return line.match(info).captured(1);
    }

    /// Returns one line for each font: name, type, encoding, emb, sub, uni.
    QStringList Fonts() const
    {
        return Run(QStringLiteral("pdffonts"), {Path()}).split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(2);
    }

private:
    QString Path() const { return QString::fromStdString(m_folder.PathOf("report.pdf")); }

    static QString Run(const QString& tool, const QStringList& arguments)
    {
        QProcess process;
        process.start(tool, arguments);
        if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
            process.exitCode() != 0) {
            qFatal("%s: %s", qPrintable(tool), process.readAllStandardError().constData());
        }
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    TemporaryFolder m_folder;
};

/// Returns the PDF of a report with one column.
QByteArray PdfOf(const std::vector<QStringList>& rows, const ReportFont& font = RowsReport::DefaultFont())
{
    RowsReport report(rows);
    report.AddGrowingField(QStringLiteral("a"), {0, 0, 8900, 300}).Font = font;
    report.Detail.Height = 300;
    return PdfBytes(*LayOut(report));
}

} // namespace

class tst_PdfWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { NOT_ON_WINDOWS("pdftotext and its like"); }

    void values_areReadBackInTheirOrder()
    {
        RowsReport report;
        const QStringList columns{QStringLiteral("loc"), QStringLiteral("date"), QStringLiteral("fish")};
        for (int column = 0; column < columns.size(); ++column) {
            report.AddField(columns[column], {column * 3000, 0, 3000, 300});
            RowsReport::AddLabel(report.PageHeader, columns[column], {column * 3000, 0, 3000, 300},
                                 columns[column].toUpper());
        }
        report.PageHeader.Height = 400;
        report.Detail.Height = 300;
        QString expected = QStringLiteral("LOC DATE FISH");
        for (int row = 0; row < 40; ++row) {
            report.rows.push_back({QStringLiteral("place%1").arg(row), QStringLiteral("2003-02-%1").arg(row),
                                   QStringLiteral("%1 bream").arg(row * 7)});
            expected += QLatin1Char(' ') + report.rows.back().join(QLatin1Char(' '));
        }
        QCOMPARE(PdfFile(PdfBytes(*LayOut(report))).Words(), expected);
    }

    void ligatures_areNotFormed()
    {
        const QString text = QStringLiteral("office fishing flathead baffle affluent difficult fjord");
        for (const char* family : {"Tahoma", "Verdana", "Arial", "DejaVu Serif"}) {
            QCOMPARE(PdfFile(PdfOf({{text}}, {QString::fromLatin1(family), 8, false})).Words(), text);
        }
    }

    void everyScript_isReadBack_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("Latin") << QString::fromUtf8("Île de Ré, Ærø, Łódź, Straße, 13½ °C, “quoted” – €5");
        QTest::newRow("Greek") << QString::fromUtf8("Ψάρεμα στο λιμάνι");
        QTest::newRow("Cyrillic") << QString::fromUtf8("Рыбалка на озере");
        QTest::newRow("Japanese") << QString::fromUtf8("東京湾で釣りをしました");
        QTest::newRow("what RTF escapes") << QStringLiteral("{\\rtf1 \\par a\\b} C:\\log");
        QTest::newRow("what PDF escapes") << QStringLiteral("(a) <b> [c] /d %e) \\(");
    }

    void everyScript_isReadBack()
    {
        QFETCH(QString, text);
        QCOMPARE(PdfFile(PdfOf({{text}})).Words(), text);
    }

    void arabic_isReadBackInWholeWords()
    {
        const QString text = QString::fromUtf8("صيد السمك مع الأصدقاء");
        QString words = PdfFile(PdfOf({{text}})).Text().trimmed();
        words.remove(QRegularExpression(QStringLiteral("[\\x{200E}\\x{200F}\\x{202A}-\\x{202E}]")));
        QCOMPARE(words.normalized(QString::NormalizationForm_KC),
                 text); // base letters, not presentation forms
    }

    void emoji_doesNotDamageTheWordsAroundIt()
    {
        const QString words = PdfFile(PdfOf({{QString::fromUtf8("caught one 😀 today")}})).Words();
        QVERIFY2(words.startsWith(QStringLiteral("caught one")) && words.endsWith(QStringLiteral("today")),
                 qPrintable(words));
    }

    void fonts_areEmbeddedAndMapToUnicode()
    {
        RowsReport report({{QStringLiteral("upright"), QStringLiteral("strong")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300}).Font = {QStringLiteral("Tahoma"), 8, false};
        report.AddField(QStringLiteral("b"), {3000, 0, 3000, 300}).Font = {QStringLiteral("Verdana"), 14,
                                                                           true};
        report.Detail.Height = 300;
        const QStringList fonts = PdfFile(PdfBytes(*LayOut(report))).Fonts();
        QCOMPARE(fonts.size(), 2);
        for (const QString& font : fonts) {
            QVERIFY2(font.contains(QRegularExpression(QStringLiteral(" yes +(yes|no) +yes "))),
                     qPrintable(font));
        }
    }

    void title_isThatOfTheReport_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("plain") << QStringLiteral("Tarno Fish Log Entry Listing");
        QTest::newRow("not ASCII, with brackets") << QString::fromUtf8("Ψάρεμα (2003) \\ log");
    }

    void title_isThatOfTheReport()
    {
        QFETCH(QString, title);
        RowsReport report;
        report.Caption = title;
        QCOMPARE(PdfFile(PdfBytes(*LayOut(report))).Info(QStringLiteral("Title")), title);
    }

    void pages_haveTheReportsSizeAndOrientation_data()
    {
        QTest::addColumn<QPageSize::PageSizeId>("size");
        QTest::addColumn<bool>("landscape");
        QTest::addColumn<QString>("points");
        QTest::newRow("A4") << QPageSize::A4 << false << QStringLiteral("595 x 842 pts (A4)");
        QTest::newRow("A4 turned") << QPageSize::A4 << true << QStringLiteral("842 x 595 pts (A4)");
        QTest::newRow("Letter") << QPageSize::Letter << false << QStringLiteral("612 x 792 pts (letter)");
        QTest::newRow("Letter turned")
            << QPageSize::Letter << true << QStringLiteral("792 x 612 pts (letter)");
    }

    void pages_haveTheReportsSizeAndOrientation()
    {
        QFETCH(QPageSize::PageSizeId, size);
        QFETCH(bool, landscape);
        QFETCH(QString, points);
        RowsReport report(RowsReport::Numbered(5));
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 5000;
        report.Page.setPageSize(QPageSize(size));
        report.Page.setOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
        const auto document = LayOut(report);
        const PdfFile file(PdfBytes(*document));
        QCOMPARE(file.Info(QStringLiteral("Page size")), points);
        QCOMPARE(file.Info(QStringLiteral("Page rot")), QStringLiteral("0"));
        QCOMPARE(file.Info(QStringLiteral("Pages")), QString::number(document->pages.size()));
        QCOMPARE(document->pages.size(), std::size_t(landscape ? 5 : 3));
    }

    void everyPage_showsItsRowsAndItsNumber()
    {
        RowsReport report(RowsReport::Numbered(4));
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 6000;
        RowsReport::AddLabel(report.PageFooter, QStringLiteral("page"), {0, 0, 600, 300},
                             QStringLiteral("Page"));
        RowsReport::AddLabel(report.PageFooter, QStringLiteral("number"), {600, 0, 600, 300}, QString())
            .Page = PageText::Number;
        RowsReport::AddLabel(report.PageFooter, QStringLiteral("of"), {1200, 0, 600, 300},
                             QStringLiteral("of"));
        RowsReport::AddLabel(report.PageFooter, QStringLiteral("count"), {1800, 0, 600, 300}, QString())
            .Page = PageText::Count;
        report.PageFooter.Height = 300;
        const PdfFile file(PdfBytes(*LayOut(report)));
        QCOMPARE(file.TextOfPage(1).simplified(), QStringLiteral("row 0 row 1 Page 1 of 2"));
        QCOMPARE(file.TextOfPage(2).simplified(), QStringLiteral("row 2 row 3 Page 2 of 2"));
    }

    void tab_isReadBackAsBlank()
    {
        QCOMPARE(PdfFile(PdfOf({{QStringLiteral("bream\tflathead")}})).Words(),
                 QStringLiteral("bream flathead"));
    }

    void cancel_returnsNothing()
    {
        RowsReport report(RowsReport::Numbered(10));
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 10000;
        const auto document = LayOut(report);
        int calls = 0;
        QCOMPARE(PdfBytes(*document,
                          [&](int pages) {
                              ++calls;
                              return pages < 3;
                          }),
                 QByteArray());
        QCOMPARE(calls, 3);
    }

    void progress_isReportedAfterEachPage()
    {
        RowsReport report(RowsReport::Numbered(3));
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 10000;
        QList<int> calls;
        QVERIFY(!PdfBytes(*LayOut(report), [&](int pages) {
                     calls << pages;
                     return true;
                 }).isEmpty());
        QCOMPARE(calls, (QList<int>{1, 2, 3}));
    }
};

TEST_CLASS(tst_PdfWriter)
#include "tst_PdfWriter.moc"
