// The sheet of one trip: its design, its rows and its picture.

#include "reports/ReadRtf.h"
#include "reports/arTripSheet.h"
#include "reports/engine/LayOut.h"
#include "reports/engine/ReportFonts.h"
#include "reports/engine/RtfWriter.h"
#include "support/Pictures.h"
#include "support/TestClass.h"

using namespace Tarno;

namespace
{

const QPageLayout a4(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(20, 20, 20, 20),
                     QPageLayout::Millimeter);

std::vector<DescribedValue> TwoValues()
{
    return {{"Date", "2003-02-05"}, {"Place", "Pittwater"}};
}

const PlacedText* Find(const Band& band, const char* name)
{
    for (const PlacedText& text : band.texts) {
        if (text.name == QLatin1String(name)) {
            return &text;
        }
    }
    return nullptr;
}

QString TextOf(const Band& band, const char* name)
{
    const PlacedText* text = Find(band, name);
    return text == nullptr ? QStringLiteral("(not printed)") : text->text;
}

Document Run(const std::vector<DescribedValue>& values, const QImage& picture = {},
             const QPageLayout& page = a4)
{
    arTripSheet sheet(page, values, picture);
    return LayOut(sheet).value();
}

QSize Room(const Document& document)
{
    return {document.paper.width() - document.margins.left() - document.margins.right(),
            document.paper.height() / 3};
}

} // namespace

class tst_arTripSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sheet_hasItsTitleAndTools()
    {
        arTripSheet sheet(a4, TwoValues(), {});
        QCOMPARE(sheet.Caption, QStringLiteral("Tarno Trip Sheet"));
        const Document document = LayOut(sheet).value();
        QCOMPARE(TextOf(document.header, "lblTitle"), QStringLiteral("Tarno Fishing Log - Trip"));
        QCOMPARE(sheet.Tools.size(), std::size_t{2});
    }

    void values_areRowsInOrder()
    {
        const Document document = Run(TwoValues());
        QCOMPARE(document.pages.size(), std::size_t{1});
        QCOMPARE(document.details.size(), std::size_t{2});
        QCOMPARE(TextOf(document.details[0], "fldCaption"), QStringLiteral("Date"));
        QCOMPARE(TextOf(document.details[0], "fldText"), QStringLiteral("2003-02-05"));
        QCOMPARE(TextOf(document.details[1], "fldCaption"), QStringLiteral("Place"));
        QCOMPARE(TextOf(document.details[1], "fldText"), QStringLiteral("Pittwater"));
        for (const Band& row : document.details) {
            QVERIFY(row.pictures.empty());
        }
    }

    void text_reachesTheRightMargin()
    {
        const Document document = Run(TwoValues());
        const PlacedText* text = Find(document.details[0], "fldText");
        QCOMPARE(text->box.left() + text->box.width(), Room(document).width());
        QVERIFY(text->box.left() >= Find(document.details[0], "fldCaption")->box.width());
    }

    void longText_grows_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<int>("lines");
        QTest::newRow("lines") << std::string("one\n\nthree") << 3;
        QTest::newRow("long line") << [] {
            std::string words;
            for (int word = 0; word < 60; ++word) {
                words += "bream ";
            }
            return words;
        }() << 0;
    }

    void longText_grows()
    {
        QFETCH(std::string, text);
        QFETCH(int, lines);
        const Document document = Run({{"Caught", text}, {"Bait", "Prawn"}});
        const PlacedText* placed = Find(document.details[0], "fldText");
        QVERIFY(placed->lines.size() > 1);
        if (lines > 0) {
            QCOMPARE(placed->lines.size(), static_cast<std::size_t>(lines));
        }
        QVERIFY(document.details[0].height > document.details[1].height);
        QVERIFY(placed->box.bottom() <= document.details[0].height);
    }

    void veryLongText_continuesOnTheNextPages()
    {
        std::string text;
        for (int line = 0; line < 200; ++line) {
            text += "line " + std::to_string(line) + '\n';
        }
        QVERIFY(Run({{"Observations", text}}).pages.size() > 2);
    }

    void picture_isBelowTheValues_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("wide") << QSize(400, 100);
        QTest::newRow("high") << QSize(100, 400);
        QTest::newRow("square") << QSize(300, 300);
        QTest::newRow("one pixel") << QSize(1, 1);
        QTest::newRow("very wide") << QSize(4000, 1);
        QTest::newRow("very high") << QSize(1, 4000);
    }

    void picture_isBelowTheValues()
    {
        QFETCH(QSize, size);
        const Document document = Run(TwoValues(), Pictures::Drawn(size.width(), size.height()));
        QCOMPARE(document.details.size(), std::size_t{3});
        QVERIFY(document.details[0].pictures.empty());
        QVERIFY(document.details[1].pictures.empty());
        const Band& band = document.details[2];
        QCOMPARE(band.pictures.size(), std::size_t{1});
        const QRect box = band.pictures[0].box;
        QVERIFY(box.width() > 0);
        QVERIFY(box.height() > 0);
        QVERIFY(box.top() > 0);
        QVERIFY(box.top() + box.height() <= band.height);
        QVERIFY(box.width() <= Room(document).width());
        QVERIFY(box.height() <= Room(document).height());
        QCOMPARE(box.size(), size.scaled(Room(document), Qt::KeepAspectRatio).expandedTo({1, 1}));
        QCOMPARE(TextOf(band, "fldText"), QString());
    }

    void picture_withoutRoom_movesToTheNextPageWhole()
    {
        std::string text;
        for (int line = 0; line < 45; ++line) {
            text += "line\n";
        }
        const Document document = Run({{"Observations", text}}, Pictures::Drawn(100, 400));
        QCOMPARE(document.pages.size(), std::size_t{2});
        QCOMPARE(document.pages[1].slices.size(), std::size_t{1});
        QCOMPARE(document.pages[1].slices[0].detail, std::size_t{1});
    }

    void picture_fitsOnSmallPaper()
    {
        const QPageLayout a6(QPageSize(QPageSize::A6), QPageLayout::Landscape, QMarginsF(10, 10, 10, 10),
                             QPageLayout::Millimeter);
        const Document document = Run(TwoValues(), Pictures::Drawn(100, 400), a6);
        QVERIFY(document.paper.height() > document.paper.width()); // portrait
        QVERIFY(document.details[2].pictures[0].box.height() <= document.paper.height() / 2);
    }

    void emptyTrip_isOnePage()
    {
        const Document document = Run({});
        QCOMPARE(document.pages.size(), std::size_t{1});
        QVERIFY(document.details.empty());
    }

    void emptyTrip_withPicture()
    {
        const Document document = Run({}, Pictures::Drawn(40, 20));
        QCOMPARE(document.details.size(), std::size_t{1});
        QCOMPARE(document.details[0].pictures.size(), std::size_t{1});
    }

    void sheet_laidOutAgain_isTheSame()
    {
        arTripSheet sheet(a4, TwoValues(), Pictures::Drawn(40, 20));
        LayOut(sheet);
        const Document document = LayOut(sheet).value();
        QCOMPARE(document.details.size(), std::size_t{3});
        QVERIFY(document.details[0].pictures.empty());
        QVERIFY(document.details[0].height < document.details[2].height);
    }

    void rtf_hasTheTextsAndThePicture()
    {
        const RtfReading rtf = RtfReader::Read(RtfBytes(Run(TwoValues(), Pictures::Drawn(40, 20))));
        QCOMPARE(rtf.fault, QString());
        QVERIFY(rtf.body[0].cells.contains(QStringLiteral("Date")));
        QVERIFY(rtf.body[0].cells.contains(QStringLiteral("2003-02-05")));
        QVERIFY(rtf.body.last().cells.contains(QStringLiteral("<picture>")));
    }
};

TEST_CLASS(tst_arTripSheet)
#include "tst_arTripSheet.moc"
