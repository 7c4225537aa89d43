// The report that lists the locations: its design, its rows, its paging.

#include "reports/PaintedPage.h"
#include "reports/arLocList.h"
#include "reports/engine/LayOut.h"
#include "reports/engine/ReportFonts.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

using namespace Tarno;

namespace
{

/// A program with locations, and the report that lists them.
struct LocationReport {
    /// Lays out the report of all locations.
    Document Run()
    {
        locations.clear();
        if (program.sql.LocationList(locations) != succeeded) {
            qFatal("no list of locations");
        }
        arLocList report(program.program.printers.DefaultPage(), locations);
        return LayOut(report).value();
    }

    TestProgram program;
    RecordList locations;
};

QString TextOf(const Band& band, const char* name)
{
    for (const PlacedText& text : band.texts) {
        if (text.name == QLatin1String(name)) {
            return text.text;
        }
    }
    return QStringLiteral("(not printed)");
}

/// Describes every control of a section in drawing order: name, kind, caption or data field, and font.
QStringList Described(const ReportSection& section)
{
    QStringList words;
    for (const ReportControl& control : section.Controls) {
        QStringList parts{control.Name};
        switch (control.kind) {
        case ReportControl::Kind::Label:
            parts << QStringLiteral("label") << control.Text << control.Font.Name;
            break;
        case ReportControl::Kind::Field:
            parts << QStringLiteral("field") << control.DataField << control.Font.Name;
            break;
        case ReportControl::Kind::Line:
            parts << QStringLiteral("line");
            break;
        case ReportControl::Kind::Picture:
            parts << QStringLiteral("picture");
            break;
        }
        words << parts.join(QLatin1Char('|'));
    }
    words.sort();
    return words;
}

QRect BoxOf(const ReportControl& control)
{
    return {control.Left, control.Top, control.Width, control.Height};
}

void CheckNothingOverlaps(const ReportSection& section)
{
    for (const ReportControl& one : section.Controls) {
        for (const ReportControl& other : section.Controls) {
            QVERIFY2(&one == &other || !BoxOf(one).intersects(BoxOf(other)),
                     qPrintable(one.Name + QStringLiteral(" and ") + other.Name));
        }
        QVERIFY2(one.Top + one.Height <= section.Height, qPrintable(one.Name));
    }
}

} // namespace

class tst_arLocList : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void design_hasItsNamesCaptionsFieldsAndFonts()
    {
        LocationReport data;
        data.program.Start();
        const arLocList report(data.program.program.printers.DefaultPage(), data.locations);
        QCOMPARE(report.Caption, QStringLiteral("Tarno Locations Listing"));
        QCOMPARE(Described(report.PageHeader).join(QLatin1Char('\n')),
                 QStringLiteral("Line1|line\n"
                                "lblDescription|label|Description|Arial\n"
                                "lblDirections|label|How To Get There|Verdana\n"
                                "lblLocation|label|Location|Verdana\n"
                                "lblOf|label|of|Tahoma\n"
                                "lblPage|label|Page|Tahoma\n"
                                "lblPrinted|label|Printed on ... at ...|Tahoma\n"
                                "lblTitle|label|Tarno Fishing Log - Locations Listing|Verdana\n"
                                "picHeader|picture\n"
                                "txtPageCount|label||Tahoma\n"
                                "txtPageNumber|label||Tahoma"));
        QCOMPARE(Described(report.Detail).join(QLatin1Char('\n')),
                 QStringLiteral("Line2|line\n"
                                "fldAccess|field|LocAccess|Tahoma\n"
                                "fldDescription|field|LocDescription|Tahoma\n"
                                "fldDirections|field|LocDirections|Tahoma\n"
                                "fldGMT|field|locGMT|Tahoma\n"
                                "fldLatt|field|LocLatt|Tahoma\n"
                                "fldLocName|field|locname|Tahoma\n"
                                "fldLong|field|LocLong|Tahoma\n"
                                "lblAccess|label|Accessible By:|Tahoma\n"
                                "lblGMT|label|GMT|Tahoma\n"
                                "lblLattLong|label|Latt/Long:|Tahoma"));
    }

    void design_pictureIsThere()
    {
        LocationReport data;
        data.program.Start();
        arLocList report(data.program.program.printers.DefaultPage(), data.locations);
        QVERIFY(!report.PageHeader.Controls[QStringLiteral("picHeader")].Picture.isNull());
    }

    void design_nothingOverlaps()
    {
        LocationReport data;
        data.program.Start();
        const arLocList report(data.program.program.printers.DefaultPage(), data.locations);
        CheckNothingOverlaps(report.PageHeader);
        CheckNothingOverlaps(report.Detail);
    }

    void design_everyCaptionFitsItsBox()
    {
        LocationReport data;
        data.program.Start();
        const arLocList report(data.program.program.printers.DefaultPage(), data.locations);
        TextMeasurer measurer;
        for (const ReportSection* section : {&report.PageHeader, &report.Detail}) {
            for (const ReportControl& control : section->Controls) {
                const auto& measure = measurer.For(control.Font);
                QVERIFY2(control.Text.isEmpty() ||
                             (measure.metrics.horizontalAdvance(control.Text) <= control.Width &&
                              measure.lineHeight <= control.Height),
                         qPrintable(control.Name));
            }
        }
    }

    void report_fitsBetweenTheMargins_data()
    {
        QTest::addColumn<QPageSize::PageSizeId>("size");
        QTest::newRow("A4") << QPageSize::A4;
        QTest::newRow("Letter") << QPageSize::Letter;
    }

    void report_fitsBetweenTheMargins()
    {
        QFETCH(QPageSize::PageSizeId, size);
        LocationReport data;
        data.program.Start();
        data.program.printers.defaultPage.setPageSize(QPageSize(size));
        data.program.AddLocation("Wharf");
        const Document document = data.Run();
        QCOMPARE(document.paper, size == QPageSize::A4 ? QSize(11906, 16838) : QSize(12240, 15840));
        QCOMPARE(document.margins, QMargins(1134, 1134, 1134, 1134)); // 20 mm
        const int room = document.paper.width() - 2 * 1134;
        for (const Band* band : {&document.header, &document.details.front()}) {
            for (const PlacedText& text : band->texts) {
                QVERIFY2(text.box.left() >= 0 && text.box.left() + text.box.width() <= room,
                         qPrintable(text.name));
            }
            for (const PlacedLine& line : band->lines) {
                QVERIFY(line.to.x() <= room);
            }
        }
    }

    void reportStart_setsPortraitAndAddsTheTools()
    {
        LocationReport data;
        data.program.Start();
        data.program.printers.defaultPage.setOrientation(QPageLayout::Landscape);
        arLocList report(data.program.program.printers.DefaultPage(), data.locations);
        const Document document = LayOut(report).value();
        QVERIFY(document.paper.width() < document.paper.height());
        QCOMPARE(report.Tools.size(), std::size_t(2));
        QCOMPARE(report.Tools[0].Caption, QStringLiteral("&RTF Export"));
        QCOMPARE(report.Tools[0].Position, 3);
        QCOMPARE(report.Tools[1].Caption, QStringLiteral("&PDF Export"));
        QCOMPARE(report.Tools[1].Position, 4);
    }

    void dataInitialize_addsTheSevenFieldsInTheirOrder()
    {
        LocationReport data;
        data.program.Start();
        arLocList report(data.program.program.printers.DefaultPage(), data.locations);
        report.DataInitialize();
        QCOMPARE(report.Fields.Count(), 7);
        int position = 0;
        for (const char* name :
             {"LocName", "LocDescription", "LocDirections", "LocAccess", "LocLatt", "LocLong", "LocGMT"}) {
            report.Fields.SetValue(position++, QLatin1String(name));
        }
        for (const char* name : {"LocName", "LocGMT"}) {
            QCOMPARE(report.Fields.Value(QLatin1String(name)), QString::fromLatin1(name));
        }
    }

    void row_showsEveryValueOfItsLocation()
    {
        LocationReport data;
        data.program.Start();
        data.program.AddLocation("Clifton Gardens", {{LocationField::LocDescription, "a wharf"},
                                                     {LocationField::LocDirections, "down the hill"},
                                                     {LocationField::LocAccess, "0"},
                                                     {LocationField::LocLatt, "-33.84"},
                                                     {LocationField::LocLong, "151.252"},
                                                     {LocationField::LocGMT, "10.5"}});
        const Document document = data.Run();
        QCOMPARE(document.title, QStringLiteral("Tarno Locations Listing"));
        QCOMPARE(document.details.size(), std::size_t(1));
        const Band& row = document.details.front();
        QCOMPARE(TextOf(row, "fldLocName"), QStringLiteral("Clifton Gardens"));
        QCOMPARE(TextOf(row, "fldDescription"), QStringLiteral("a wharf"));
        QCOMPARE(TextOf(row, "fldDirections"), QStringLiteral("down the hill"));
        QCOMPARE(TextOf(row, "lblAccess"), QStringLiteral("Accessible By:"));
        QCOMPARE(TextOf(row, "fldAccess"), QStringLiteral("Land"));
        QCOMPARE(TextOf(row, "lblLattLong"), QStringLiteral("Latt/Long:"));
        QCOMPARE(TextOf(row, "fldLatt"), QStringLiteral("-33.84"));
        QCOMPARE(TextOf(row, "fldLong"), QStringLiteral("151.252"));
        QCOMPARE(TextOf(row, "lblGMT"), QStringLiteral("GMT"));
        QCOMPARE(TextOf(row, "fldGMT"), QStringLiteral("10.5"));
        QCOMPARE(row.lines.size(), std::size_t(1));
    }

    void access_codeIsShownAsItsWord_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<QString>("word");
        QTest::newRow("none") << QByteArray("") << QStringLiteral("Not Set");
        QTest::newRow("0") << QByteArray("0") << QStringLiteral("Land");
        QTest::newRow("1") << QByteArray("1") << QStringLiteral("Boat");
        QTest::newRow("2") << QByteArray("2") << QStringLiteral("Land/Boat");
        QTest::newRow("3") << QByteArray("3") << QStringLiteral("Land/Boat");
        QTest::newRow("00") << QByteArray("00") << QStringLiteral("Land/Boat");
        QTest::newRow("a blank") << QByteArray(" ") << QStringLiteral("Land/Boat");
        QTest::newRow("a word") << QByteArray("Boat") << QStringLiteral("Land/Boat");
    }

    void access_codeIsShownAsItsWord()
    {
        QFETCH(QByteArray, code);
        QFETCH(QString, word);
        LocationReport data;
        data.program.Start();
        data.program.AddLocation("Wharf", {{LocationField::LocAccess, code.toStdString()}});
        QCOMPARE(TextOf(data.Run().details.front(), "fldAccess"), word);
    }

    void rows_areInFileOrder()
    {
        LocationReport data;
        data.program.Start();
        for (const char* name : {"Zoe's Rock", "Apple Bay", "middle"}) {
            data.program.AddLocation(name);
        }
        const Document document = data.Run();
        QCOMPARE(document.details.size(), std::size_t(3));
        QCOMPARE(TextOf(document.details[0], "fldLocName"), QStringLiteral("Zoe's Rock"));
        QCOMPARE(TextOf(document.details[1], "fldLocName"), QStringLiteral("Apple Bay"));
        QCOMPARE(TextOf(document.details[2], "fldLocName"), QStringLiteral("middle"));
    }

    void storedLineBreaks_areLineBreaks()
    {
        LocationReport data;
        data.program.Start();
        data.program.AddLocation("Big~CL~Rock", {{LocationField::LocDescription, "a~CL~b~CL~c~CL~d~CL~e"},
                                                 {LocationField::LocDirections, "first~CL~~CL~third"}});
        const Document document = data.Run();
        const Band& row = document.details.front();
        QCOMPARE(TextOf(row, "fldLocName"), QStringLiteral("Big\nRock"));
        QCOMPARE(TextOf(row, "fldDescription"), QStringLiteral("a\nb\nc\nd\ne"));
        QCOMPARE(TextOf(row, "fldDirections"), QStringLiteral("first\n\nthird"));
    }

    void longTexts_growTheRowAndPushItsSecondLineAndRuleDown()
    {
        LocationReport data;
        data.program.Start();
        data.program.AddLocation("short");
        data.program.AddLocation("long", {{LocationField::LocDescription, "a~CL~b~CL~c~CL~d~CL~e"}});
        const Document document = data.Run();
        const Band& shortRow = document.details[0];
        const Band& longRow = document.details[1];
        const int growth = longRow.height - shortRow.height;
        QCOMPARE(growth, 5 * TextMeasurer().For({QStringLiteral("Tahoma"), 8, false}).lineHeight - 240);
        QCOMPARE(longRow.lines.front().from.y(), shortRow.lines.front().from.y() + growth);
        for (std::size_t text = 0; text < longRow.texts.size(); ++text) {
            const bool second = shortRow.texts[text].box.top() > 240;
            QCOMPARE(longRow.texts[text].box.top(), shortRow.texts[text].box.top() + (second ? growth : 0));
        }
    }

    void longCoordinates_areShownWhole()
    {
        const QStringList coordinates{QStringLiteral("-36.84846012345678"),
                                      QStringLiteral("174.76333198765432")};
        LocationReport data;
        data.program.Start();
        data.program.AddLocation("Auckland", {{LocationField::LocLatt, coordinates[0].toStdString()},
                                              {LocationField::LocLong, coordinates[1].toStdString()}});
        const Document document = data.Run();
        QString shown;
        for (const PaintedText& text : PaintedPage(document, 0).texts) {
            QVERIFY2(text.clip.isEmpty(), qPrintable(text.text));
            shown += text.text;
        }
        QVERIFY(shown.contains(coordinates[0]));
        QVERIFY(shown.contains(coordinates[1]));
        QVERIFY(document.details.front().lines.front().from.y() > 660); // the rule is below both lines
    }

    void emptyList_givesHeadingsOnly()
    {
        LocationReport data;
        data.program.Start();
        const Document document = data.Run();
        QVERIFY(document.details.empty());
        QCOMPARE(PaintedPage(document, 0).Texts().join(QLatin1Char('|')),
                 QStringLiteral("Tarno Fishing Log - Locations Listing|Printed on ... at ...|Page|1|of|1|"
                                "Location|Description|How To Get There"));
    }

    void everyPage_hasTitleHeadingsAndItsNumber()
    {
        LocationReport data;
        data.program.Start();
        for (int number = 0; number < 60; ++number) {
            data.program.AddLocation("place " + std::to_string(number));
        }
        const Document document = data.Run();
        QVERIFY(document.pages.size() > 2);
        QStringList places;
        for (std::size_t page = 0; page < document.pages.size(); ++page) {
            const QStringList texts = PaintedPage(document, page).Texts();
            QCOMPARE(
                texts.mid(0, 9).join(QLatin1Char('|')),
                QStringLiteral("Tarno Fishing Log - Locations Listing|Printed on ... at ...|Page|%1|of|%2|"
                               "Location|Description|How To Get There")
                    .arg(page + 1)
                    .arg(document.pages.size()));
            places << texts.filter(QStringLiteral("place "));
        }
        QCOMPARE(places.size(), 60);
        QCOMPARE(places.last(), QStringLiteral("place 59"));
    }

    void recordWithTooFewChildren_isPrinted()
    {
        LocationReport data;
        data.program.folder.Write("location.xml",
                                  "<data><location><LocNo>1</LocNo><LocName>Short</LocName></location>"
                                  "<location><LocNo>2</LocNo><LocName>Next</LocName></location></data>");
        data.program.Start();
        const Document document = data.Run();
        QCOMPARE(TextOf(document.details.at(0), "fldLocName"), QStringLiteral("Short"));
        QCOMPARE(TextOf(document.details.at(1), "fldLocName"), QStringLiteral("Next"));
    }
};

TEST_CLASS(tst_arLocList)
#include "tst_arLocList.moc"
