// Running a report: its events, its page and data, and its design after the run.

#include "core/Error.h"
#include "reports/RowsReport.h"
#include "reports/engine/BandTest.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"

using namespace Tarno;

namespace
{

/// Describes everything on a band: names, boxes, text lines with their tops, drawn lines.
QString Described(const Band& band)
{
    QStringList words{QStringLiteral("height %1").arg(band.height)};
    for (const PlacedText& text : band.texts) {
        words << QStringLiteral("%1 at %2,%3 %4x%5")
                     .arg(text.name)
                     .arg(text.box.left())
                     .arg(text.box.top())
                     .arg(text.box.width())
                     .arg(text.box.height());
        for (const TextLine& line : text.lines) {
            words << QStringLiteral("%1: %2").arg(line.top).arg(line.text);
        }
    }
    for (const PlacedLine& line : band.lines) {
        words << QStringLiteral("rule %1,%2 %3,%4")
                     .arg(line.from.x())
                     .arg(line.from.y())
                     .arg(line.to.x())
                     .arg(line.to.y());
    }
    return words.join(QLatin1Char('\n'));
}

} // namespace

class tst_LayOut : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void events_comeInTheirOrder()
    {
        RowsReport report(RowsReport::Numbered(2));
        report.AddField(QStringLiteral("a"), {0, 0, 1000, 300});
        report.Detail.Height = 300;
        LayOut(report);
        QCOMPARE(report.events, QStringLiteral("ReportStart DataInitialize "
                                               "FetchData Detail_Format Detail_BeforePrint "
                                               "FetchData Detail_Format Detail_BeforePrint "
                                               "FetchData ReportEnd")
                                    .split(QLatin1Char(' ')));
    }

    void events_withoutRows_noDetailIsPrinted()
    {
        RowsReport report;
        const auto document = LayOut(report);
        QCOMPARE(report.events,
                 QStringLiteral("ReportStart DataInitialize FetchData ReportEnd").split(QLatin1Char(' ')));
        QCOMPARE(document->details.size(), std::size_t(0));
        QCOMPARE(document->pages.size(), std::size_t(1));
        QVERIFY(document->pages[0].slices.empty());
    }

    void toolsOfAnEarlierRun_areNotKept()
    {
        RowsReport report;
        report.Tools = {{QStringLiteral("old"), 0}};
        LayOut(report);
        QVERIFY(report.Tools.empty());
    }

    void document_hasTheReportsCaptionAndPage()
    {
        RowsReport report;
        report.Caption = QStringLiteral("Tarno Locations Listing");
        const auto document = LayOut(report);
        QCOMPARE(document->title, QStringLiteral("Tarno Locations Listing"));
        QCOMPARE(document->paper, QSize(11906, 16838)); // A4
        QCOMPARE(document->margins, QMargins(1440, 1440, 1440, 1440));
    }

    void page_sizeOrientationAndMargins_areThoseSetInReportStart_data()
    {
        QTest::addColumn<QPageLayout>("page");
        QTest::addColumn<QSize>("paper");
        QTest::addColumn<QMargins>("margins");
        const QMarginsF millimetres(25.4, 12.7, 6.35, 50.8);
        const QMargins twips(1440, 720, 360, 2880);
        for (const bool letter : {false, true}) {
            const QPageSize size(letter ? QPageSize::Letter : QPageSize::A4);
            const QSize upright = letter ? QSize(12240, 15840) : QSize(11906, 16838);
            QTest::addRow("%s upright", letter ? "Letter" : "A4")
                << QPageLayout(size, QPageLayout::Portrait, millimetres, QPageLayout::Millimeter) << upright
                << twips;
            QTest::addRow("%s turned", letter ? "Letter" : "A4")
                << QPageLayout(size, QPageLayout::Landscape, millimetres, QPageLayout::Millimeter)
                << upright.transposed() << twips;
        }
    }

    void page_sizeOrientationAndMargins_areThoseSetInReportStart()
    {
        QFETCH(QPageLayout, page);
        QFETCH(QSize, paper);
        QFETCH(QMargins, margins);
        RowsReport report;
        report.handlers[QStringLiteral("ReportStart")] = [&] { report.Page = page; };
        const auto document = LayOut(report);
        QCOMPARE(document->paper, paper);
        QCOMPARE(document->margins, margins);
    }

    void field_findsItsDataCaseInsensitively()
    {
        RowsReport report({{QStringLiteral("Botany Bay"), QStringLiteral("10")}});
        report.AddField(QStringLiteral("LocName"), {0, 0, 3000, 300}).DataField = QStringLiteral("locname");
        report.AddField(QStringLiteral("LocGMT"), {3000, 0, 3000, 300}).DataField = QStringLiteral("LOCGMT");
        const Band band = OnlyRow(report);
        QCOMPARE(TextOf(band, "LocName").text, QStringLiteral("Botany Bay"));
        QCOMPARE(TextOf(band, "LocGMT").text, QStringLiteral("10"));
    }

    void field_withoutSuchData_isEmpty()
    {
        RowsReport report({{QStringLiteral("Botany Bay")}});
        ReportControl& field = report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        field.DataField = QStringLiteral("b");
        field.Text = QStringLiteral("as designed");
        QCOMPARE(TextOf(OnlyRow(report), "a").text, QString());
    }

    void field_withoutDataField_keepsItsOwnText()
    {
        RowsReport report({{QStringLiteral("Botany Bay")}});
        ReportControl& field = report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        field.DataField.clear();
        field.Text = QStringLiteral("as designed");
        QCOMPARE(TextOf(OnlyRow(report), "a").text, QStringLiteral("as designed"));
    }

    void fetchData_tooManyValues_isSubscriptOutOfRange()
    {
        RowsReport report({{QStringLiteral("1"), QStringLiteral("2")}});
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        QCOMPARE(RaisedNumber([&] { LayOut(report); }), 9);
    }

    void detailFormat_seesTheRowsValuesAndMayChangeThem()
    {
        RowsReport report({{QStringLiteral("0")}, {QString()}});
        report.AddField(QStringLiteral("Access"), {0, 0, 3000, 300});
        report.handlers[QStringLiteral("Detail_Format")] = [&] {
            QString& text = report.Detail.Controls[QStringLiteral("Access")].Text;
            text = text == QLatin1String("0") ? QStringLiteral("Land") : QStringLiteral("Not Set");
        };
        const auto document = LayOut(report);
        QCOMPARE(TextOf(document->details[0], "Access").text, QStringLiteral("Land"));
        QCOMPARE(TextOf(document->details[1], "Access").text, QStringLiteral("Not Set"));
    }

    void detailFormat_aLongerText_growsTheBand()
    {
        RowsReport report({{QStringLiteral("short")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 300;
        report.handlers[QStringLiteral("Detail_Format")] = [&] {
            report.Detail.Controls[QStringLiteral("a")].Text = QStringLiteral("1\n2\n3\n4");
        };
        QCOMPARE(OnlyRow(report).height, 4 * RowsReport::LineHeight());
    }

    void design_isRestoredAfterARun()
    {
        RowsReport report({{QStringLiteral("1\n2\n3\n4")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300}).Text = QStringLiteral("designed");
        report.Detail.Height = 300;
        report.handlers[QStringLiteral("DataInitialize")] = [&] { report.Fields.Add(QStringLiteral("b")); };
        report.handlers[QStringLiteral("ReportStart")] = [&] {
            RowsReport::AddLabel(report.PageHeader, QStringLiteral("late"), {0, 0, 100, 100}, QString());
            report.PageFooter.Height = 1000;
        };
        LayOut(report);
        CheckDesign(report);
    }

    void twoRuns_giveTheSameResult()
    {
        RowsReport report({{QStringLiteral("1\n2\n3\n4")}, {QStringLiteral("x")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300});
        RowsReport::AddLine(report.Detail, QStringLiteral("line"), {0, 320, 3000, 0});
        report.Detail.Height = 340;
        const auto first = LayOut(report);
        const auto second = LayOut(report);
        QCOMPARE(second->details.size(), std::size_t(2));
        for (std::size_t row = 0; row < 2; ++row) {
            QCOMPARE(Described(second->details[row]), Described(first->details[row]));
        }
        QVERIFY(first->details[0].height > first->details[1].height);
    }

    void error_inAnEvent_isPropagatedAndTheDesignRestored_data()
    {
        QTest::addColumn<QString>("event");
        for (const char* event :
             {"ReportStart", "DataInitialize", "FetchData", "Detail_Format", "Detail_BeforePrint"}) {
            QTest::newRow(event) << QString::fromLatin1(event);
        }
    }

    void error_inAnEvent_isPropagatedAndTheDesignRestored()
    {
        QFETCH(QString, event);
        RowsReport report({{QStringLiteral("1\n2\n3\n4")}});
        report.AddGrowingField(QStringLiteral("a"), {0, 0, 3000, 300}).Text = QStringLiteral("designed");
        report.Detail.Height = 300;
        report.handlers[event] = [&] {
            report.Detail.Height = 5;
            report.Fields.Add(QStringLiteral("b"));
            throw Error(ErrorNumber::TypeMismatch);
        };
        QCOMPARE(RaisedNumber([&] { LayOut(report); }), 13);
        CheckDesign(report);
        QCOMPARE(report.events.count(QStringLiteral("ReportEnd")),
                 event == QLatin1String("ReportStart") ? 0 : 1);
        report.handlers.clear();
        QCOMPARE(OnlyRow(report).height, 4 * RowsReport::LineHeight());
    }

    void cancel_stopsAndReturnsNothing()
    {
        RowsReport report(RowsReport::Numbered(100));
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300}).Text = QStringLiteral("designed");
        report.Detail.Height = 300;
        int calls = 0;
        const auto document = LayOut(report, [&](int rows) {
            ++calls;
            return rows < 3;
        });
        QVERIFY(!document);
        QCOMPARE(calls, 3);
        QCOMPARE(report.events.count(QStringLiteral("Detail_Format")), 3);
        QCOMPARE(report.events.last(), QStringLiteral("ReportEnd"));
        CheckDesign(report);
    }

    void progress_isReportedAfterEachRow()
    {
        RowsReport report(RowsReport::Numbered(4));
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        QList<int> calls;
        QVERIFY(LayOut(report, [&](int rows) {
                    calls << rows;
                    return true;
                }).has_value());
        QCOMPARE(calls, (QList<int>{1, 2, 3, 4}));
    }

private:
    /// Checks that the report has only its own field, "a".
    static void CheckDesign(RowsReport& report)
    {
        const ReportControl& field = report.Detail.Controls[QStringLiteral("a")];
        QCOMPARE(report.Detail.Height, 300);
        QCOMPARE(field.Height, 300);
        QCOMPARE(field.Text, QStringLiteral("designed"));
        QCOMPARE(report.Fields.Count(), 1);
        QCOMPARE(report.Fields.Value(QStringLiteral("a")), QString());
        QVERIFY(report.PageHeader.Controls.begin() == report.PageHeader.Controls.end());
        QCOMPARE(report.PageFooter.Height, 0);
    }
};

TEST_CLASS(tst_LayOut)
#include "tst_LayOut.moc"
