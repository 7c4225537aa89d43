// The sheet of a month: its page, its texts, and the PDF file.

#include "analysis/CalendarDay.h"
#include "qt/Strings.h"
#include "reports/arMonthSheet.h"
#include "reports/engine/LayOut.h"
#include "reports/engine/PdfWriter.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <QDate>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

using namespace Tarno;

using std::chrono::year_month_day;

namespace
{

constexpr int daysOfWeek = 7;
const LocationTexts pittwater{"-33.59", "151.32", "10", "1"};

QPageLayout Paper(QPageSize::PageSizeId size)
{
    return {QPageSize(size), QPageLayout::Portrait, QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter};
}

year_month_day ToDate(const QDate& date)
{
    return std::chrono::year(date.year()) / date.month() / date.day();
}

/// Returns the days of the month in weeks from Monday; days of other months are null.
std::vector<std::vector<QDate>> WeeksOf(const QDate& first)
{
    std::vector<std::vector<QDate>> weeks;
    for (QDate monday = first.addDays(1 - first.dayOfWeek());
         monday <= first.addDays(first.daysInMonth() - 1); monday = monday.addDays(daysOfWeek)) {
        weeks.emplace_back();
        for (int day = 0; day < daysOfWeek; ++day) {
            const QDate date = monday.addDays(day);
            weeks.back().push_back(date.month() == first.month() ? date : QDate());
        }
    }
    return weeks;
}

/// Returns the text of a day with as many trips as its number.
QString TextOf(const QDate& date)
{
    return date.isNull() ? QString() : FromUtf8(SheetText(DayAt(pittwater, ToDate(date)), date.day()));
}

Document Sheet(const QDate& first, QPageSize::PageSizeId paper = QPageSize::A4,
               const QString& title = QStringLiteral("November 2026, Pittwater"))
{
    QStringList weekdays;
    std::vector<QStringList> texts;
    for (int day = 1; day <= daysOfWeek; ++day) {
        weekdays << QLocale::c().dayName(day);
    }
    for (const std::vector<QDate>& week : WeeksOf(first)) {
        texts.emplace_back();
        for (const QDate& date : week) {
            texts.back() << TextOf(date);
        }
    }
    arMonthSheet sheet(Paper(paper), title, weekdays, std::move(texts));
    return LayOut(sheet).value();
}

const PlacedText* Find(const Band& band, const QString& name)
{
    const auto found = std::find_if(band.texts.begin(), band.texts.end(),
                                    [&](const PlacedText& text) { return text.name == name; });
    return found == band.texts.end() ? nullptr : &*found;
}

/// Returns a sentence about the first text that is clipped, or an empty string.
QString Clipped(const Band& band)
{
    for (const PlacedText& text : band.texts) {
        for (const TextLine& line : text.lines) {
            if (line.top + text.lineHeight > text.box.top() + text.box.height() ||
                line.top + text.lineHeight > band.height) {
                return text.name + QStringLiteral(" is too low for: ") + line.text;
            }
        }
    }
    return {};
}

} // namespace

class tst_arMonthSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void month_isOneLandscapePage_data()
    {
        QTest::addColumn<QPageSize::PageSizeId>("paper");
        QTest::addColumn<QDate>("first");
        QTest::addColumn<int>("weeks");
        for (const auto& [name, paper] :
             {std::pair("A4", QPageSize::A4), std::pair("Letter", QPageSize::Letter)}) {
            QTest::addRow("%s, 4 weeks", name) << paper << QDate(2027, 2, 1) << 4;
            QTest::addRow("%s, 5 weeks", name) << paper << QDate(2026, 5, 1) << 5;
            QTest::addRow("%s, 6 weeks", name) << paper << QDate(2026, 8, 1) << 6;
        }
    }

    void month_isOneLandscapePage()
    {
        QFETCH(QPageSize::PageSizeId, paper);
        QFETCH(QDate, first);
        QFETCH(int, weeks);
        const Document document = Sheet(first, paper);
        QCOMPARE(document.pages.size(), std::size_t{1});
        QVERIFY(document.paper.width() > document.paper.height());
        QCOMPARE(document.details.size(), static_cast<std::size_t>(weeks));
        QCOMPARE(document.pages[0].slices.size(), static_cast<std::size_t>(weeks));
        int height = document.margins.top() + document.header.height + document.footer.height +
                     document.margins.bottom();
        for (const Band& week : document.details) {
            height += week.height;
            QCOMPARE(Clipped(week), QString());
        }
        QVERIFY(height <= document.paper.height());
        QCOMPARE(Clipped(document.header), QString());
    }

    void days_haveTheirTexts_data()
    {
        QTest::addColumn<QDate>("first");
        QTest::newRow("November") << QDate(2026, 11, 1);
        QTest::newRow("December") << QDate(2026, 12, 1);
    }

    void days_haveTheirTexts()
    {
        QFETCH(QDate, first);
        const Document document = Sheet(first);
        const auto weeks = WeeksOf(first);
        QCOMPARE(document.details.size(), weeks.size());
        for (std::size_t week = 0; week < weeks.size(); ++week) {
            for (int day = 0; day < daysOfWeek; ++day) {
                const QString expected = TextOf(weeks[week][static_cast<std::size_t>(day)]);
                const PlacedText* text = Find(document.details[week], QStringLiteral("fldDay%1").arg(day));
                QCOMPARE(text == nullptr ? QString() : text->text, expected);
                QStringList lines;
                for (int line = 0; text != nullptr && line < int(text->lines.size()); ++line) {
                    lines << text->lines[static_cast<std::size_t>(line)].text;
                }
                QCOMPARE(lines.join(QLatin1Char('\n')), expected); // no line is wrapped
            }
        }
    }

    void header_hasTheTitleAndTheDaysOfTheWeek()
    {
        const Document document = Sheet(QDate(2026, 11, 1));
        QCOMPARE(Find(document.header, QStringLiteral("lblMonth"))->text,
                 QStringLiteral("November 2026, Pittwater"));
        const int width = document.paper.width() - document.margins.left() - document.margins.right();
        for (int day = 0; day < daysOfWeek; ++day) {
            const PlacedText* label = Find(document.header, QStringLiteral("lblDay%1").arg(day));
            QCOMPARE(label->text, QLocale::c().dayName(day + 1));
            const PlacedText* field = Find(document.details[1], QStringLiteral("fldDay%1").arg(day));
            QCOMPARE(label->box.left(), field->box.left());
            QVERIFY(field->box.left() + field->box.width() <= width);
        }
    }

    void sheet_laidOutAgain_isTheSame()
    {
        arMonthSheet sheet(Paper(QPageSize::A4), QStringLiteral("May"), {QStringLiteral("Monday")},
                           {{QStringLiteral("1")}, {QStringLiteral("8")}});
        LayOut(sheet);
        const Document document = LayOut(sheet).value();
        QCOMPARE(document.details.size(), std::size_t{2});
        QVERIFY(document.paper.width() > document.paper.height());
        QCOMPARE(sheet.Page.orientation(), QPageLayout::Portrait);
        QCOMPARE(sheet.Tools.size(), std::size_t{2});
        QCOMPARE(sheet.Caption, QStringLiteral("Tarno Fishing Calendar"));
    }

    void pdf_hasTheTimesOfEveryDay()
    {
        NOT_ON_WINDOWS("pdftotext");
        const QDate first(2026, 11, 1);
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("month.pdf")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(PdfBytes(Sheet(first)));
        file.close();
        QProcess process;
        process.start(QStringLiteral("pdftotext"),
                      {QStringLiteral("-layout"), file.fileName(), QStringLiteral("-")});
        QVERIFY(process.waitForFinished(-1));
        QCOMPARE(process.exitCode(), 0);
        const QString text = QString::fromUtf8(process.readAllStandardOutput());
        for (int day = 0; day < first.daysInMonth(); ++day) {
            const RiseSetForecast times = ForecastRiseSet(pittwater, ToDate(first.addDays(day)));
            for (const std::string* time : {&times.major1, &times.major2}) {
                QVERIFY2(!MinutesOf(*time) || text.contains(FromUtf8(*time)), time->c_str());
            }
        }
        QVERIFY(text.contains(QStringLiteral("November 2026, Pittwater")));
        QCOMPARE(text.count(QLatin1Char('\f')), 1); // one page
    }
};

TEST_CLASS(tst_arMonthSheet)
#include "tst_arMonthSheet.moc"
