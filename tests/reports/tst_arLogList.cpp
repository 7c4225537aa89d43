// The log report: its design, its page, its rows.

#include "qt/Strings.h"
#include "reports/LogReport.h"
#include "reports/PaintedPage.h"
#include "reports/ReadRtf.h"
#include "reports/ReportDesign.h"
#include "reports/engine/RtfWriter.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_arLogList : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void design_hasItsNamesCaptionsAndFonts()
    {
        LogReport data(ColumnsOfWidths({20}));
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        QCOMPARE(report.Caption, QStringLiteral("Tarno Fish Log Entry Listing"));
        QStringList header;
        for (const ReportControl& control : report.PageHeader.Controls) {
            header << control.Name + QLatin1Char('|') + control.Text + QLatin1Char('|') + control.Font.Name;
        }
        header.sort();
        QCOMPARE(header.join(QLatin1Char('\n')),
                 QStringLiteral("lblOf|of|Tahoma\n"
                                "lblPage|Page|Tahoma\n"
                                "lblPrinted|Printed on ... at ...|Tahoma\n"
                                "lblTitle|Tarno Fishing Log - Log Reporting|Verdana\n"
                                "picHeader||\n"
                                "txtPages||Tahoma\n"
                                "txtPage||Tahoma"));
        QVERIFY(!report.PageHeader.Controls[QStringLiteral("picHeader")].Picture.isNull());
        QCOMPARE(std::distance(report.Detail.Controls.begin(), report.Detail.Controls.end()), 1);
        QCOMPARE(report.Detail.Controls[QStringLiteral("lineDetail")].kind, ReportControl::Kind::Line);
        QCOMPARE(report.Fields.Count(), 0);
    }

    void growFlag_otherThanZero_letsTheFieldWrapAndGrow_data()
    {
        QTest::addColumn<std::string>("flag");
        QTest::addColumn<int>("lines");
        QTest::newRow("0") << "0"s << 1;
        QTest::newRow("1") << "1"s << 3;
        QTest::newRow("-1") << "-1"s << 3;
        QTest::newRow("2") << "2"s << 3;
        QTest::newRow(" 0 ") << " 0 "s << 1;
        QTest::newRow("0.4, which rounds to 0") << "0.4"s << 1;
        QTest::newRow("0.6, which rounds to 1") << "0.6"s << 3;
    }

    void growFlag_otherThanZero_letsTheFieldWrapAndGrow()
    {
        QFETCH(std::string, flag);
        QFETCH(int, lines);
        LogReport data({{.name = "A", .grow = flag}});
        data.grid = {{"a\r\nb\r\nc"}};
        const Document document = data.Run();
        const PlacedText& text = FindText(document.details.front(), "fldA");
        QCOMPARE(static_cast<int>(text.lines.size()), lines);
        QCOMPARE(text.text, lines == 1 ? QStringLiteral("a b c") : QStringLiteral("a\nb\nc"));
        QCOMPARE(text.box.height() > 285, lines > 1);
    }

    void page_isLandscapeDuringTheRun_andRestoredAfterwards_data()
    {
        QTest::addColumn<QPageLayout::Orientation>("before");
        QTest::newRow("upright") << QPageLayout::Portrait;
        QTest::newRow("landscape") << QPageLayout::Landscape;
    }

    void page_isLandscapeDuringTheRun_andRestoredAfterwards()
    {
        QFETCH(QPageLayout::Orientation, before);
        LogReport data(ColumnsOfWidths({20}));
        data.program.printers.defaultPage.setOrientation(before);
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        QCOMPARE(report.Page.orientation(), before);

        QPageLayout::Orientation orientation = QPageLayout::Portrait;
        const auto watch = [&](bool goesOn) {
            return [&, goesOn](int /*rows*/) {
                orientation = report.Page.orientation();
                return goesOn;
            };
        };
        QVERIFY(LayOut(report, watch(true)).has_value());
        QCOMPARE(orientation, QPageLayout::Landscape);
        QCOMPARE(report.Page.orientation(), before);

        orientation = QPageLayout::Portrait;
        QVERIFY(!LayOut(report, watch(false)).has_value()); // the user cancels
        QCOMPARE(orientation, QPageLayout::Landscape);
        QCOMPARE(report.Page.orientation(), before);

        data.grid = {{}};
        QCOMPARE(RaisedNumber([&] { LayOut(report); }), 9);
        QCOMPARE(report.Page.orientation(), before);
    }

    void paper_isRotatedWithItsMargins_data() { AddPapers(); }

    void paper_isRotatedWithItsMargins()
    {
        QFETCH(QPageSize::PageSizeId, paper);
        QFETCH(int, printable);
        LogReport data(ColumnsOfWidths({20}));
        data.UsePaper(paper);
        const Document document = data.Run();
        QVERIFY(document.paper.width() > document.paper.height());
        QCOMPARE(document.margins, QMargins(1134, 1134, 1134, 1134)); // 20 mm
        QCOMPARE(document.paper.width() - 2 * 1134, printable);
        const PlacedLine& rule = document.details.front().lines.front();
        QCOMPARE(rule.to.x() - rule.from.x(), printable);
    }

    void tools_areAtPositionsThreeAndFour()
    {
        LogReport data(ColumnsOfWidths({20}));
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        for (int run = 0; run < 2; ++run) {
            QVERIFY(LayOut(report).has_value());
            QCOMPARE(report.Tools.size(), std::size_t(2));
            QCOMPARE(report.Tools[0].Caption, QStringLiteral("&RTF Export"));
            QCOMPARE(report.Tools[0].Position, 3);
            QCOMPARE(report.Tools[1].Caption, QStringLiteral("&PDF Export"));
            QCOMPARE(report.Tools[1].Position, 4);
        }
    }

    void toolbarClick_exportsWithItsOwnTools_andLeavesTheOthersAlone()
    {
        struct Viewer final : ReportViewer {
            void ExportRtf() override { exported << QStringLiteral("RTF"); }

            void ExportPdf() override { exported << QStringLiteral("PDF"); }

            QStringList exported;
        } viewer;

        LogReport data(ColumnsOfWidths({20}));
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        for (const char* other : {"Print...", "RTF Export", "&RTF export", ""}) {
            report.ToolbarClick(QLatin1String(other), viewer);
        }
        QCOMPARE(viewer.exported, QStringList());
        report.ToolbarClick(QStringLiteral("&RTF Export"), viewer);
        QCOMPARE(viewer.exported.join(QLatin1Char(' ')), QStringLiteral("RTF"));
        report.ToolbarClick(QStringLiteral("&PDF Export"), viewer);
        QCOMPARE(viewer.exported.join(QLatin1Char(' ')), QStringLiteral("RTF PDF"));
    }

    void printedOn_showsDateAndTime()
    {
        LogReport data(ColumnsOfWidths({20}));
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        report.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(data.program.clock);
        const Document document = LayOut(report).value();
        const PlacedText& printed = FindText(document.header, "lblPrinted");
        QCOMPARE(printed.text, QStringLiteral("Printed on 5/02/2003 at 9:07 PM"));
        QVERIFY(IsWhole(printed));
    }

    void pageNumber_isAtTheRightEdge_data() { AddPapers(); }

    void pageNumber_isAtTheRightEdge()
    {
        QFETCH(QPageSize::PageSizeId, paper);
        QFETCH(int, printable);
        LogReport data(ColumnsOfWidths({20}));
        data.UsePaper(paper);
        data.grid.resize(100, ReportRow(1));
        const Document document = data.Run();
        const PlacedText& last = FindText(document.header, "txtPages");
        QCOMPARE(RightEnd(last), printable);
        int left = RightEnd(FindText(document.header, "lblTitle"));
        for (const char* name : {"lblPage", "txtPage", "lblOf", "txtPages"}) {
            const PlacedText& part = FindText(document.header, name);
            QVERIFY(part.box.left() >= left);
            left = RightEnd(part);
        }
        QVERIFY(document.pages.size() > 2);
        for (std::size_t page = 0; page < document.pages.size(); ++page) {
            QCOMPARE(Joined(PaintedPage(document, page).Texts().mid(0, 7)),
                     QStringLiteral("Tarno Fishing Log - Log Reporting Printed on ... at ... Page %1 of %2 "
                                    "Heading")
                         .arg(page + 1)
                         .arg(document.pages.size()));
        }
    }

    void pageNumber_isOnePhraseOnEveryPage()
    {
        LogReport data(ColumnsOfWidths({20}));
        data.grid.resize(3000, ReportRow(1));
        const Document document = data.Run();
        QVERIFY(document.pages.size() > 99);
        const qreal space = TextMeasurer().For(Tahoma()).metrics.horizontalAdvance(QLatin1Char(' '));
        const qreal edge = document.paper.width() - document.margins.right();
        for (const std::size_t page : {std::size_t(0), std::size_t(9), document.pages.size() - 1}) {
            const PaintedPage painted(document, page);
            const std::vector<PaintedText> phrase(painted.texts.begin() + 2, painted.texts.begin() + 6);
            QCOMPARE(phrase[0].text, QStringLiteral("Page"));
            for (std::size_t part = 0; part < phrase.size(); ++part) {
                const qreal end = phrase[part].baseline.x() + phrase[part].width;
                const qreal next = part + 1 < phrase.size() ? phrase[part + 1].baseline.x() - space : edge;
                QVERIFY2(qAbs(next - end) <= 2, qPrintable(phrase[part].text));
            }
        }
        const RtfReading rtf = RtfReader::Read(RtfBytes(document));
        QVERIFY(rtf.header[1].cells.contains(QStringLiteral("Page <PAGE> of <NUMPAGES>")));
    }

    void rows_areInTheOrderOfTheTable()
    {
        LogReport data(ColumnsOfWidths({20, 20}));
        data.grid = {{"b", "1"}, {"a", "2"}, {"", ""}, {"c", "4"}};
        const Document document = data.Run();
        QCOMPARE(document.title, QStringLiteral("Tarno Fish Log Entry Listing"));
        QStringList shown;
        for (const Band& row : document.details) {
            shown << FindText(row, "fldF0").text + FindText(row, "fldF1").text;
        }
        QCOMPARE(shown.join(QLatin1Char('|')), QStringLiteral("b1|a2||c4"));
        data.grid.clear();
        QVERIFY(data.Run().details.empty());
    }

    void row_withFewerCellsThanColumns_isSubscriptOutOfRange()
    {
        LogReport data(ColumnsOfWidths({20, 20, 20}));
        data.grid = {{"1", "2", "3"}, {"1", "2"}};
        QCOMPARE(data.Error(), 9);
        data.grid = {{"1", "2", "3", "4"}};
        QCOMPARE(FindText(data.Run().details.front(), "fldF2").text, QStringLiteral("3"));
    }

    void values_goToTheColumnsByPosition()
    {
        // the table was filled for "LocNo,StartDate", the columns are in another order
        LogReport data({{.name = "StartDate", .label = "From"}, {.name = "LocNo", .label = "Location"}});
        data.grid = {{"Reef", "2003-02-05"}};
        const Document document = data.Run();
        QCOMPARE(FindText(document.header, "lblStartDate").text, QStringLiteral("From"));
        QCOMPARE(FindText(document.details.front(), "fldStartDate").text, QStringLiteral("Reef"));
        QCOMPARE(FindText(document.details.front(), "fldLocNo").text, QStringLiteral("2003-02-05"));
    }

    void fieldListedTwice_isShownTwice()
    {
        LogReport data({{.name = "A"}, {.name = "A"}, {.name = "B"}});
        data.grid = {{"snapper", "snapper", "trout"}};
        const Document document = data.Run();
        QStringList shown;
        for (const PlacedText& text : document.details.front().texts) {
            shown << QStringLiteral("%1 %2 %3").arg(text.name).arg(text.box.left() / 57).arg(text.text);
        }
        QCOMPARE(shown.join(QLatin1Char('|')),
                 QStringLiteral("fldA 0 snapper|fldA 20 snapper|fldB 40 trout"));
    }

    void grownRow_keepsItsRuleTwelveTwipsAboveItsEnd()
    {
        LogReport data(
            {{.name = "A"}, {.name = "B", .grow = "1"}, {.name = "C", .width = "250", .grow = "1"}});
        data.grid = {{"1", "2", "3"}, {"1", "a\r\nb\r\nc\r\nd", "3"}, {"1", "2", "a\r\nb\r\nc"}};
        const Document document = data.Run();
        const int lineHeight = FindText(document.details.front(), "fldA").lineHeight;
        for (const Band& row : document.details) {
            QCOMPARE(row.lines.size(), std::size_t(1));
            QCOMPARE(row.lines.front().from.y(), row.height - 12);
            QCOMPARE(row.lines.front().to.y(), row.height - 12);
            for (const PlacedText& text : row.texts) {
                QVERIFY(IsWhole(text));
                QVERIFY(text.box.top() + text.box.height() <= row.height - 12);
            }
        }
        QVERIFY(document.details[1].height >= document.details[0].height + 2 * lineHeight);
        QVERIFY(document.details[2].height >= document.details[0].height + lineHeight);
        // fields below a grown field move down
        const int growth = document.details[1].height - document.details[0].height;
        QCOMPARE(FindText(document.details[1], "fldC").box.top(), 399 + growth);
    }

    void grownRow_hasItsFirstLinesLevel()
    {
        LogReport data({{.name = "A"}, {.name = "B", .grow = "1"}, {.name = "C", .grow = "1"}});
        for (const char* text : {"one", "one\r\ntwo", "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7"}) {
            data.grid = {{"short", text, "short"}};
            const Document document = data.Run();
            const Band& row = document.details.front();
            const int top = FindText(row, "fldA").lines.front().top;
            QCOMPARE(FindText(row, "fldB").lines.front().top, top);
            QCOMPARE(FindText(row, "fldC").lines.front().top, top);
        }
    }
};

TEST_CLASS(tst_arLogList)
#include "tst_arLogList.moc"
