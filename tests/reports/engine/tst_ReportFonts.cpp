// The fonts of reports: substitutes for missing families, and texts that are painted as wide as measured.

#include "reports/PaintedPage.h"
#include "reports/RowsReport.h"
#include "support/TestClass.h"

#include <QFontDatabase>
#include <QFontInfo>

using namespace Tarno;

class tst_ReportFonts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void missingFamily_isReplacedByOneOfSimilarWidth_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QString>("replacement");
        QTest::newRow("Tahoma") << QStringLiteral("Tahoma") << QStringLiteral("DejaVu Sans Condensed");
        QTest::newRow("Verdana") << QStringLiteral("Verdana") << QStringLiteral("DejaVu Sans");
        QTest::newRow("Arial") << QStringLiteral("Arial") << QStringLiteral("Liberation Sans");
    }

    void missingFamily_isReplacedByOneOfSimilarWidth()
    {
        QFETCH(QString, family);
        QFETCH(QString, replacement);
        const bool installed = QFontDatabase::families().contains(family);
        QCOMPARE(AvailableFamily(family), installed ? family : replacement);
        QVERIFY(QFontDatabase::families().contains(AvailableFamily(family)));
    }

    void replacement_isReallyUsed_data() { missingFamily_isReplacedByOneOfSimilarWidth_data(); }

    void replacement_isReallyUsed()
    {
        QFETCH(QString, family);
        QCOMPARE(QFontInfo(TwipFont({family, 8, false})).family(), AvailableFamily(family));
    }

    void installedFamily_isKept()
    {
        QCOMPARE(AvailableFamily(QStringLiteral("DejaVu Serif")), QStringLiteral("DejaVu Serif"));
    }

    void unknownFamily_isLeftToTheSystem()
    {
        QCOMPARE(AvailableFamily(QStringLiteral("No Such Family")), QStringLiteral("No Such Family"));
    }

    void oneUnitOfTheFont_isOneTwip_data()
    {
        QTest::addColumn<double>("points");
        QTest::addColumn<int>("twips");
        QTest::newRow("whole") << 8.0 << 160;
        QTest::newRow("half") << 8.5 << 170;
        QTest::newRow("none") << 0.0 << 1;
        QTest::newRow("negative") << -8.0 << 1;
    }

    void oneUnitOfTheFont_isOneTwip()
    {
        QFETCH(double, points);
        QFETCH(int, twips);
        QCOMPARE(TwipFont({QStringLiteral("Tahoma"), points, false}).pixelSize(), twips);
    }

    void bold_isBold()
    {
        QVERIFY(TwipFont({QStringLiteral("Tahoma"), 8, true}).bold());
        QVERIFY(!TwipFont({QStringLiteral("Tahoma"), 8, false}).bold());
    }

    void sizesAndFamilies_areKeptApart()
    {
        TextMeasurer measurer;
        const int small = measurer.For({QStringLiteral("Tahoma"), 8, false}).lineHeight;
        const int large = measurer.For({QStringLiteral("Tahoma"), 16, false}).lineHeight;
        QVERIFY(qAbs(large - 2 * small) <= 2);
        QCOMPARE(measurer.For({QStringLiteral("Tahoma"), 8, false}).lineHeight, small);
        QVERIFY(measurer.For({QStringLiteral("Tahoma"), 8, true})
                    .metrics.horizontalAdvance(QStringLiteral("bream")) >
                measurer.For({QStringLiteral("Tahoma"), 8, false})
                    .metrics.horizontalAdvance(QStringLiteral("bream")));
    }

    void text_measuredInOneFont_isMeasuredAgainInAnother()
    {
        const QString text = QStringLiteral("bream and flathead");
        const ReportFont small{QStringLiteral("Tahoma"), 8, false};
        const ReportFont large{QStringLiteral("Tahoma"), 16, false};
        TextMeasurer measurer;
        const int width = static_cast<int>(measurer.For(small).metrics.horizontalAdvance(text)) + 1;
        for (int time = 0; time < 2; ++time) {
            QCOMPARE(measurer.Lines(text, small, width, true), QStringList(text));
            QVERIFY(measurer.Lines(text, large, width, true).size() > 1);
            QCOMPARE(measurer.FittingPart(text, small, width), text);
            QVERIFY(measurer.FittingPart(text, large, width).size() < text.size());
        }
    }

    void wrappedLine_isNeverPaintedWiderThanItsBox_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<double>("size");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<QString>("text");
        const QString english =
            QStringLiteral("Office of the fishing affair: five difficult waffles, 12,345.6 m "
                           "off AVATAR Wharf. To Yo Wa. ");
        const QString greek = QString::fromUtf8("Ψάρεμα στο λιμάνι με δόλωμα γαρίδα και καλαμάρι. ");
        const QString japanese = QString::fromUtf8("東京湾で釣りをしました。天気は晴れ、風は弱い。");
        const QString arabic = QString::fromUtf8("صيد السمك في الميناء عند الفجر مع الأصدقاء ");
        for (const char* family : {"Tahoma", "Verdana", "Arial"}) {
            for (const double size : {7.0, 8.0, 11.0}) {
                QTest::addRow("%s %g", family, size)
                    << QString::fromLatin1(family) << size << false << english.repeated(20);
            }
            QTest::addRow("%s bold", family)
                << QString::fromLatin1(family) << 8.0 << true << english.repeated(20);
        }
        QTest::newRow("Greek") << QStringLiteral("Tahoma") << 8.0 << false << greek.repeated(20);
        QTest::newRow("Japanese") << QStringLiteral("Tahoma") << 8.0 << false << japanese.repeated(20);
        QTest::newRow("Arabic") << QStringLiteral("Tahoma") << 8.0 << false << arabic.repeated(20);
        QTest::newRow("one long word")
            << QStringLiteral("Tahoma") << 8.0 << false << QStringLiteral("fjfiWAV").repeated(200);
    }

    void wrappedLine_isNeverPaintedWiderThanItsBox()
    {
        QFETCH(QString, family);
        QFETCH(double, size);
        QFETCH(bool, bold);
        QFETCH(QString, text);
        constexpr int width = 2345;
        RowsReport report({{text}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, width, 300}).Font = {family, size, bold};
        report.Detail.Height = 300;
        const auto document = LayOut(report);
        const PlacedText& placed = document->details.front().texts.front();
        QVERIFY(placed.lines.size() > 10);
        TextMeasurer measurer;
        const QFontMetricsF& metrics = measurer.For(placed.font, text).metrics;
        for (const TextLine& line : placed.lines) {
            QVERIFY2(metrics.horizontalAdvance(line.text) <= width, qPrintable(line.text));
        }
        for (std::size_t page = 0; page < document->pages.size(); ++page) {
            for (const PaintedText& painted : PaintedPage(*document, page).texts) {
                QVERIFY2(painted.clip.isEmpty(), qPrintable(painted.text));
                // the width of an item is rounded up to whole twips
                QVERIFY2(painted.baseline.x() + painted.width <= 1440 + width + 1, qPrintable(painted.text));
            }
        }
    }
};

TEST_CLASS(tst_ReportFonts)
#include "tst_ReportFonts.moc"
