// Laying out the columns of the log report from their definitions.

#include "qt/Strings.h"
#include "reports/LogReport.h"
#include "reports/PaintedPage.h"
#include "reports/engine/PdfWriter.h"
#include "reports/engine/RtfWriter.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/reports/fPreview.h"

#include <QAction>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

QPageLayout PageWithMargins(qreal left, qreal right)
{
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(left, 20, right, 20),
            QPageLayout::Millimeter};
}

} // namespace

class tst_LogReportColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void columns_haveTheirControlsOnHeaderAndDetail()
    {
        LogReport data({{.name = "StartDate", .width = "18", .grow = "0", .font = "9.5", .label = "From"},
                        {.name = "Obbos", .width = "70", .grow = "1", .font = "7", .label = "Seen"}});
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        report.ReportStart();
        report.DataInitialize();
        const auto check = [&](const char* name, const char* caption, double size, bool grows) {
            const ReportControl& label =
                report.PageHeader.Controls[QStringLiteral("lbl") + QLatin1String(name)];
            QCOMPARE(label.kind, ReportControl::Kind::Label);
            QCOMPARE(label.Text, QLatin1String(caption));
            QVERIFY(label.Font == (ReportFont{QStringLiteral("Tahoma"), 8, true}));
            const ReportControl& field = report.Detail.Controls[QStringLiteral("fld") + QLatin1String(name)];
            QCOMPARE(field.kind, ReportControl::Kind::Field);
            QCOMPARE(field.DataField, QLatin1String(name));
            QVERIFY(field.Font == (ReportFont{QStringLiteral("Tahoma"), size, false}));
            QCOMPARE(field.CanGrow, grows);
            QCOMPARE(field.MultiLine, grows);
            for (const ReportControl* control : {&label, &field}) {
                QCOMPARE(control->Alignment, TextAlignment::Left);
                QCOMPARE(control->VerticalAlignment, VerticalTextAlignment::Middle);
                QVERIFY(control->Visible);
            }
        };
        check("StartDate", "From", 9.5, false);
        check("Obbos", "Seen", 7, true);
        QCOMPARE(report.Fields.Count(), 2);
    }

    void columns_touch_atFiftySevenTwipsToTheMillimetre()
    {
        LogReport data(ColumnsOfWidths({18, 11, 33}));
        data.grid = {{"2003-02-05", "06:00", "Reef"}};
        const Document document = data.Run();
        QCOMPARE(FindText(document.header, "lblF0").box, QRect(0, 741, 1026, 399));
        QCOMPARE(FindText(document.header, "lblF1").box, QRect(1026, 741, 627, 399));
        QCOMPARE(FindText(document.header, "lblF2").box, QRect(1653, 741, 1881, 399));
        const Band& row = document.details.front();
        QCOMPARE(FindText(row, "fldF0").box, QRect(0, 0, 1026, 285));
        QCOMPARE(FindText(row, "fldF1").box, QRect(1026, 0, 627, 285));
        QCOMPARE(FindText(row, "fldF2").box, QRect(1653, 0, 1881, 285));
        QCOMPARE(FindText(row, "fldF2").text, QStringLiteral("Reef"));
        // the row starts directly below its headings
        QCOMPARE(document.header.height, 741 + 399);
        QVERIFY(row.height >= 285 + 12);
    }

    void columns_wrap_whereTheNextDoesNotFit_data()
    {
        QTest::addColumn<QPageLayout>("page");
        QTest::addColumn<int>("fits"); // millimetres
        const QPageLayout a4 = PageWithMargins(20, 20);
        QPageLayout letter = a4;
        letter.setPageSize(QPageSize(QPageSize::Letter));
        QTest::newRow("A4") << a4 << 255;
        QTest::newRow("Letter") << letter << 238;
        QTest::newRow("exactly 255") << PageWithMargins(20.3, 20.32) << 255;
        QTest::newRow("one twip less") << PageWithMargins(20.32, 20.32) << 254;
        QTest::newRow("wide margins") << PageWithMargins(60, 50) << 185;
    }

    void columns_wrap_whereTheNextDoesNotFit()
    {
        QFETCH(QPageLayout, page);
        QFETCH(int, fits);
        const auto placesOf = [&](const std::vector<int>& widths) {
            LogReport data(ColumnsOfWidths(widths));
            data.program.printers.defaultPage = page;
            return Joined(ColumnPositions(data.Run(), widths.size()));
        };
        QCOMPARE(placesOf({fits}), QStringLiteral("0,0"));
        QCOMPARE(placesOf({100, fits - 100}), QStringLiteral("0,0 100,0"));
        QCOMPARE(placesOf({100, fits - 100, 1}), QStringLiteral("0,0 100,0 0,1"));
        QCOMPARE(placesOf({100, fits - 99}), QStringLiteral("0,0 0,1"));
        QCOMPARE(placesOf({100, fits - 99, 99}), QStringLiteral("0,0 0,1 %1,1").arg(fits - 99));
    }

    void margins_giveExactlyTheWidthOfTheColumns()
    {
        LogReport data(ColumnsOfWidths({255}));
        data.program.printers.defaultPage = PageWithMargins(20.3, 20.32);
        const Document document = data.Run();
        QCOMPARE(document.paper.width() - document.margins.left() - document.margins.right(), 255 * 57);
        data.program.printers.defaultPage = PageWithMargins(20.32, 20.32);
        const Document narrower = data.Run();
        QCOMPARE(narrower.paper.width() - narrower.margins.left() - narrower.margins.right(), 255 * 57 - 1);
    }

    void columns_severalLines_growTheBandsBy399TwipsEach()
    {
        LogReport oneLine(ColumnsOfWidths({200}));
        const Document low = oneLine.Run();
        const std::vector<int> widths{200, 55, 1, 250, 30, 200, 25, 100};
        LogReport data(ColumnsOfWidths(widths));
        const Document document = data.Run();
        QCOMPARE(Joined(ColumnPositions(document, widths.size())),
                 QStringLiteral("0,0 200,0 0,1 1,1 0,2 30,2 230,2 0,3"));
        QCOMPARE(document.header.height, low.header.height + 3 * 399);
        QCOMPARE(document.details.front().height, low.details.front().height + 3 * 399);
        QCOMPARE(FindText(document.header, "lblF7").box, QRect(0, 34 * 57, 100 * 57, 399));
        QCOMPARE(FindText(document.details.front(), "fldF7").box, QRect(0, 3 * 399, 100 * 57, 285));
        QVERIFY(FindText(document.header, "lblF7").box.bottom() < document.header.height);
    }

    void firstColumn_widerThanThePage_isOnTheSecondLine()
    {
        LogReport oneLine(ColumnsOfWidths({200}));
        const Document low = oneLine.Run();
        for (const int wide : {256, 300, 574}) {
            LogReport data(ColumnsOfWidths({wide, 10}));
            const Document document = data.Run();
            QCOMPARE(Joined(ColumnPositions(document, 2)), QStringLiteral("0,1 0,2"));
            QCOMPARE(FindText(document.header, "lblF0").box, QRect(0, 1140, wide * 57, 399));
            QCOMPARE(document.header.height, low.header.height + 2 * 399);
            QCOMPARE(document.details.front().height, low.details.front().height + 2 * 399);
        }
    }

    void twips_beyond16Bits_areOverflow_data()
    {
        QTest::addColumn<QPageSize::PageSizeId>("paper");
        QTest::addColumn<QList<int>>("widths");
        QTest::addColumn<int>("number");
        const auto row = [](const char* name, QPageSize::PageSizeId paper, const QList<int>& widths,
                            int number) { QTest::newRow(name) << paper << widths << number; };
        row("largest width", QPageSize::A4, {574}, 0);
        row("a millimetre more", QPageSize::A4, {575}, 6);
        row("second column", QPageSize::A4, {10, 575}, 6);
        row("largest 16-bit width", QPageSize::A4, {32767}, 6);
        row("beyond 16 bits", QPageSize::A4, {32768}, 6);
        row("smallest width", QPageSize::A4, {-574}, 0);
        row("a millimetre less", QPageSize::A4, {-575}, 6);
        row("below 16 bits", QPageSize::A4, {-32769}, 6);
        row("largest position", QPageSize::A0, {300, 274, 10}, 0);
        row("position too far right", QPageSize::A0, {300, 275, 10}, 6);
        row("nothing at the far end", QPageSize::A0, {300, 275}, 0);
        row("lowest line", QPageSize::A4, QList<int>(80, 256), 0);
        row("a line more", QPageSize::A4, QList<int>(81, 256), 6);
    }

    void twips_beyond16Bits_areOverflow()
    {
        QFETCH(QPageSize::PageSizeId, paper);
        QFETCH(QList<int>, widths);
        LogReport data(ColumnsOfWidths({widths.begin(), widths.end()}));
        data.UsePaper(paper);
        QTEST(data.Error(), "number");
    }

    void definition_notANumber_isAnError_data()
    {
        QTest::addColumn<std::string>("width");
        QTest::addColumn<std::string>("font");
        QTest::addColumn<std::string>("grow");
        QTest::addColumn<int>("number");
        const auto row = [](const char* name, const std::string& width, const std::string& font,
                            const std::string& grow,
                            int number) { QTest::newRow(name) << width << font << grow << number; };
        row("width empty", "", "8", "0", 13);
        row("width a word", "wide", "8", "0", 13);
        row("width with its unit", "20 mm", "8", "0", 13);
        row("font empty", "20", "", "0", 13);
        row("font a word", "20", "small", "0", 13);
        row("grow flag empty", "20", "8", "", 13);
        row("grow flag a word", "20", "8", "True", 13);
        row("grow flag too large", "20", "8", "32768", 6);
    }

    void definition_notANumber_isAnError()
    {
        QFETCH(std::string, width);
        QFETCH(std::string, font);
        QFETCH(std::string, grow);
        LogReport data({{.name = "A"}, {.name = "B", .width = width, .grow = grow, .font = font}});
        QTEST(data.Error(), "number");
        data.columns.pop_back(); // without that column there is no error
        QCOMPARE(data.Error(), 0);
    }

    void definition_withTooFewValues_isTypeMismatch()
    {
        LogReport data(ColumnsOfWidths({20}));
        data.program.folder.Write("field.xml", "<data><field><FieldNo>1</FieldNo></field></data>");
        data.program.Start();
        QCOMPARE(data.program.sql.FieldList(data.columns), succeeded);
        QCOMPARE(data.Error(), 13); // an empty width
    }

    void width_zeroOrNegative_isLaidOutAndWritten_data()
    {
        QTest::addColumn<std::string>("width");
        QTest::addColumn<int>("left"); // of the next column, in millimetres
        QTest::newRow("0") << "0"s << 20;
        QTest::newRow("-5") << "-5"s << 15;
        QTest::newRow("-20") << "-20"s << 0;
        QTest::newRow("-500") << "-500"s << -480;
    }

    void width_zeroOrNegative_isLaidOutAndWritten()
    {
        QFETCH(std::string, width);
        QFETCH(int, left);
        for (const char* grow : {"0", "1"}) {
            LogReport data({{.name = "F0"}, {.name = "F1", .width = width, .grow = grow}, {.name = "F2"}});
            data.grid = {{"a", "some words\r\nand more", "c"}};
            const Document document = data.Run();
            QCOMPARE(FindText(document.details.front(), "fldF2").box.left(), left * 57);
            QVERIFY(PdfBytes(document).startsWith("%PDF-"));
            QVERIFY(RtfBytes(document).startsWith("{\\rtf1"));
        }
    }

    void fontSize_ofAnyNumber_printsEveryRowOnAsManyPages_data()
    {
        QTest::addColumn<std::string>("font");
        for (const char* font : {"0", "-8", "0.001", "37", "300", "2160", "1e9", "1e300", "1e999"}) {
            QTest::newRow(font) << std::string(font);
        }
    }

    void fontSize_ofAnyNumber_printsEveryRowOnAsManyPages()
    {
        QFETCH(std::string, font);
        const Columns columns{
            {.name = "A", .font = font}, {.name = "B"}, {.name = "C", .grow = "1", .font = font}};
        LogReport data(columns);
        const ReportRow row{"2003-02-05", "near", "many words about the trip"};
        data.grid.assign(100, row);
        const Document document = data.Run();
        QCOMPARE(document.details.size(), std::size_t(100));
        LogReport usual({{.name = "A"}, {.name = "B"}, {.name = "C", .grow = "0"}});
        usual.grid.assign(100, row);
        QCOMPARE(document.pages.size(), usual.Run().pages.size());
        int painted = 0;
        for (std::size_t page = 0; page < document.pages.size(); ++page) {
            const PaintedPage paint(document, page);
            painted += static_cast<int>(paint.Texts().count(QStringLiteral("2003-02-05")));
            QVERIFY(paint.Text(QStringLiteral("2003-02-05")).clip.height() <= 285);
        }
        QCOMPARE(painted, 100);
        QVERIFY(PdfBytes(document).startsWith("%PDF-"));
        QVERIFY(RtfBytes(document).startsWith("{\\rtf1"));
    }

    void fontSize_isThatOfTheField()
    {
        LogReport data(
            {{.name = "A", .font = "6"}, {.name = "B", .font = "12.5"}, {.name = "C", .font = "1"}});
        const Document document = data.Run();
        const Band& row = document.details.front();
        QCOMPARE(FindText(row, "fldA").font.Size, 6.0);
        QCOMPARE(FindText(row, "fldB").font.Size, 12.5);
        QCOMPARE(FindText(row, "fldC").font.Size, 1.0);
        QCOMPARE(FindText(document.header, "lblB").font.Size, 8.0);
    }

    void headings_thatNeedTwoLines_haveThem()
    {
        LogReport data({{.name = "A", .width = "24", .label = "Observations of the day"},
                        {.name = "B", .width = "24", .label = "Seen"}});
        const Document document = data.Run();
        const PlacedText& two = FindText(document.header, "lblA");
        QCOMPARE(two.lines.size(), std::size_t(2));
        QCOMPARE(Joined(LinesOf(two)), QStringLiteral("Observations of the day"));
        QVERIFY(IsWhole(two));
        const PlacedText& one = FindText(document.header, "lblB");
        QCOMPARE(one.lines.size(), std::size_t(1));
        // both are centred vertically
        QCOMPARE(one.box.height(), 399);
        QCOMPARE(one.lines.front().top, 741 + (399 - one.lineHeight) / 2);
    }

    void anotherPage_laysOutTheColumnsAgain()
    {
        LogReport data(ColumnsOfWidths({120, 118, 17}));
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        const Document a4 = LayOut(report).value();
        QCOMPARE(Joined(ColumnPositions(a4, 3)), QStringLiteral("0,0 120,0 238,0"));
        report.Page.setPageSize(QPageSize(QPageSize::Letter));
        const Document letter = LayOut(report).value();
        QCOMPARE(Joined(ColumnPositions(letter, 3)), QStringLiteral("0,0 120,0 0,1"));
        QCOMPARE(letter.header.height, a4.header.height + 399);
        report.Page.setPageSize(QPageSize(QPageSize::A5));
        const Document a5 = LayOut(report).value();
        QCOMPARE(Joined(ColumnPositions(a5, 3)), QStringLiteral("0,0 0,1 118,1"));
        report.Page.setPageSize(QPageSize(QPageSize::A4));
        const Document again = LayOut(report).value();
        QCOMPARE(Joined(ColumnPositions(again, 3)), Joined(ColumnPositions(a4, 3)));
        QCOMPARE(again.header.height, a4.header.height);
        QCOMPARE(again.header.texts.size(), a4.header.texts.size());
        QCOMPARE(again.details.front().height, a4.details.front().height);
    }

    void pageSetup_inThePreview_laysOutTheColumnsAgain()
    {
        LogReport data(ColumnsOfWidths({120, 118, 17}));
        arLogList report(data.program.program.printers.DefaultPage(), data.columns, data.grid);
        QPageLayout letter = data.program.printers.defaultPage;
        letter.setPageSize(QPageSize(QPageSize::Letter));
        data.program.printers.ExpectSetUpPage(letter);
        QStringList places;
        WhileOpen(
            "fPreview", [&] { fPreview(data.program.program, report, nullptr).ShowReport(); },
            [&](QDialog& preview) {
                const auto& shown = static_cast<fPreview&>(preview);
                places << Joined(ColumnPositions(shown.Pages(), 3));
                Find<QAction>(preview, "tolPageSetup").trigger();
                places << Joined(ColumnPositions(shown.Pages(), 3));
                QVERIFY(shown.Pages().paper.width() > shown.Pages().paper.height());
                preview.close();
            });
        QCOMPARE(places, (QStringList{QStringLiteral("0,0 120,0 238,0"), QStringLiteral("0,0 120,0 0,1")}));
    }

    void defaultReport_fitsOnOneLine_data() { AddPapers(); }

    void defaultReport_fitsOnOneLine()
    {
        QFETCH(QPageSize::PageSizeId, paper);
        QFETCH(int, printable);
        LogReport data;
        data.UseDefaultColumns();
        data.FillGrid();
        data.UsePaper(paper);
        const Document document = data.Run();
        QVERIFY(data.columns.size() > 5);
        QVERIFY(document.details.size() > 50);
        int headings = 0;
        for (const PlacedText& text : document.header.texts) {
            if (text.font.Bold && text.name != QLatin1String("lblTitle")) {
                QCOMPARE(text.box.top(), 741);
                QVERIFY(RightEnd(text) <= printable);
                ++headings;
            }
        }
        QCOMPARE(headings, static_cast<int>(data.columns.size()));
        for (const PlacedText& text : document.details.front().texts) {
            QCOMPARE(text.box.top(), 0);
        }
    }

    void shippedColumns_areWideEnoughForTheirHeadings()
    {
        LogReport data;
        data.FillGrid();
        const Document document = data.Run();
        for (const RecordView& column : data.columns) {
            const PlacedText& heading = FindText(
                document.header, QStringLiteral("lbl") + FromUtf8(column.Text(FieldField::FieldName)));
            QCOMPARE(Joined(LinesOf(heading)), FromUtf8(column.Text(FieldField::Label)));
            QVERIFY2(IsWhole(heading), qPrintable(heading.name));
        }
    }

    void shippedColumns_areWideEnoughForTheSampleLog()
    {
        LogReport data;
        data.FillGrid();
        const Document document = data.Run();
        QCOMPARE(document.details.size(), data.grid.size());
        for (const Band& row : document.details) {
            QCOMPARE(row.texts.size(), data.columns.size());
            for (const PlacedText& text : row.texts) {
                QVERIFY2(IsWhole(text), qPrintable(text.name + QStringLiteral(": ") + text.text));
            }
        }
    }

    void codesInTheFirstColumn_fitTheirColumns()
    {
        for (const char* name : {"TideStart", "TideEnd", "Prediction", "FishAction", "Weather"}) {
            const auto isIt = [&](const RecordView& field) {
                return field.Text(FieldField::FieldName) == name;
            };
            LogReport data;
            data.columns = {*std::find_if(data.columns.begin(), data.columns.end(), isIt)};
            data.FillGrid();
            for (const Band& row : data.Run().details) {
                QVERIFY2(IsWhole(row.texts.front()), qPrintable(row.texts.front().text));
            }
        }
    }
};

TEST_CLASS(tst_LogReportColumns)
#include "tst_LogReportColumns.moc"
