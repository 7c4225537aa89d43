// The report of the whole sample log: the preview, the PDF and the RTF show exactly the values in the file.

#include "qt/Strings.h"
#include "reports/LogReport.h"
#include "reports/ReadRtf.h"
#include "reports/engine/PdfWriter.h"
#include "reports/engine/RtfWriter.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <QHash>
#include <QProcess>
#include <pugixml.hpp>

#include <algorithm>
#include <functional>
#include <map>

using namespace Tarno;

namespace
{

/// The rows of a report with the texts of their columns; white space is simplified.
using Rows = QList<QStringList>;

QStringList Shown(const Rows& rows)
{
    QStringList shown;
    for (const QStringList& row : rows) {
        shown << row.join(QLatin1Char('|'));
    }
    return shown;
}

QString WithoutBlanks(const QString& text)
{
    return text.simplified().remove(QLatin1Char(' '));
}

QString ValueOf(const pugi::xml_node& record, const QString& name)
{
    return QString::fromUtf8(record.child(name.toUtf8().constData()).text().get());
}

/// A data file that is read independently of the program.
class XmlFile
{
public:
    explicit XmlFile(const std::string& bytes) { m_document.load_buffer(bytes.data(), bytes.size()); }

    auto Records() const { return m_document.child("data").children(); }

    /// Returns the record whose child `name` has the value `value`.
    pugi::xml_node Find(const QString& name, const QString& value) const
    {
        for (const pugi::xml_node& record : Records()) {
            if (ValueOf(record, name) == value) {
                return record;
            }
        }
        qFatal("no record with %s %s", qPrintable(name), qPrintable(value));
    }

private:
    pugi::xml_document m_document;
};

/// Computes the expected texts of the report from the data files.
class Reader
{
public:
    explicit Reader(const TemporaryFolder& folder)
        : m_entries(folder.Read("tarno.xml")), m_locations(folder.Read("location.xml"))
    {
    }

    Rows RowsOf(const QStringList& names, const QString& location) const
    {
        Rows rows;
        for (const pugi::xml_node& entry : m_entries.Records()) {
            if (location.isEmpty() || ValueOf(entry, QStringLiteral("LocNo")) == location) {
                rows << QStringList();
                for (int column = 0; column < names.size(); ++column) {
                    rows.last() << Read(entry, names[column], column == 0).simplified();
                }
            }
        }
        return rows;
    }

private:
    QString Read(const pugi::xml_node& entry, const QString& name, bool first) const
    {
        static const QStringList tides{QStringLiteral("Top"), QStringLiteral("Run Out"),
                                       QStringLiteral("Bottom"), QStringLiteral("Run In")};
        static const QHash<QString, QStringList> wordsAfterCode{
            {QStringLiteral("TideStart"), tides},
            {QStringLiteral("TideEnd"), tides},
            {QStringLiteral("Prediction"), Words("Poor,Fair,Good,Best")},
            {QStringLiteral("FishAction"), Words("Slow,Fair,Good,Hot!")},
            {QStringLiteral("Weather"), Words("Stormy,Rainy,Showery,Overcast,Cloudy,Few Clouds,Clear")}};
        static const QHash<QString, QStringList> wordsOnly{
            {QStringLiteral("WindDir"), Words("N,NE,E,SE,S,SW,W,NW")},
            {QStringLiteral("WindStrength"), Words("Calm,Light,Moderate,Strong")},
            {QStringLiteral("WaterClarity"), Words("Clear,Cloudy,Muddy")},
            {QStringLiteral("AirPressure"), Words("Rising,Falling")}};
        QString value = ValueOf(entry, name);
        if (const auto words = wordsAfterCode.find(name); words != wordsAfterCode.end()) {
            return (first ? value + QLatin1Char('-') : QString()) + WordAt(*words, value);
        }
        if (const auto words = wordsOnly.find(name); words != wordsOnly.end()) {
            return WordAt(*words, value);
        }
        if (name == QLatin1String("MoonPhase")) {
            const QString digits = QStringLiteral("0") + QString(value).remove(QLatin1Char('-'));
            return value.isEmpty() ? QStringLiteral("Not Set")
                                   : (value.startsWith(QLatin1Char('-')) ? QStringLiteral("Waning, ")
                                                                         : QStringLiteral("Waxing, ")) +
                                         digits.right(2) + QLatin1Char('%');
        }
        if (name == QLatin1String("LocNo")) {
            value = ValueOf(m_locations.Find(name, value), QStringLiteral("LocName"));
        }
        return value.replace(QLatin1String("~CL~"), QLatin1String("\r\n"));
    }

    static QStringList Words(const char* words) { return QString::fromLatin1(words).split(QLatin1Char(',')); }

    static QString WordAt(const QStringList& words, const QString& code)
    {
        bool isNumber = false;
        const int index = code.toInt(&isNumber);
        return isNumber ? words.value(index, QStringLiteral("Not Set")) : QStringLiteral("Not Set");
    }

    XmlFile m_entries;
    XmlFile m_locations;
};

/// Calls `visit` for every text of every row in printing order, with the row, the text, its page and its box
/// on that page.
void ForEachCell(const Document& document,
                 const std::function<void(std::size_t, const PlacedText&, int, const QRectF&)>& visit)
{
    int number = 0;
    for (const DocumentPage& page : document.pages) {
        for (const Slice& slice : page.slices) {
            for (const PlacedText& text : document.details[slice.detail].texts) {
                visit(slice.detail, text, number,
                      QRectF(text.box).translated(document.margins.left(), slice.bandTop));
            }
        }
        ++number;
    }
}

/// Returns the rows as shown in the preview. A value that is cut off is replaced by "(cut)".
Rows InPreview(const Document& document)
{
    Rows rows(static_cast<int>(document.details.size()));
    ForEachCell(document, [&](std::size_t row, const PlacedText& text, int /*page*/, const QRectF& /*box*/) {
        const bool whole = WithoutBlanks(LinesOf(text).join(QLatin1Char(' '))) == WithoutBlanks(text.text);
        rows[static_cast<int>(row)] << (whole ? text.text.simplified() : QStringLiteral("(cut)"));
    });
    return rows;
}

struct Word {
    QString text;
    QPointF middle; ///< in twips
};

/// Returns the words on each page of a PDF file.
std::vector<std::vector<Word>> WordsOf(const QByteArray& pdf)
{
    const TemporaryFolder folder;
    folder.Write("report.pdf", pdf.toStdString());
    QProcess process;
    process.start(QStringLiteral("pdftotext"),
                  {QStringLiteral("-bbox"), FromUtf8(folder.PathOf("report.pdf")), QStringLiteral("-")});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        qFatal("pdftotext: %s", process.readAllStandardError().constData());
    }
    const QByteArray boxes = process.readAllStandardOutput();
    pugi::xml_document document;
    document.load_buffer(boxes.constData(), static_cast<std::size_t>(boxes.size()));
    std::vector<std::vector<Word>> pages;
    for (const pugi::xml_node& page : document.child("html").child("body").child("doc").children("page")) {
        pages.emplace_back();
        for (const pugi::xml_node& word : page.children("word")) {
            const auto twips = [&](const char* edge) { return word.attribute(edge).as_double() * 20; };
            pages.back().push_back(
                {QString::fromUtf8(word.text().get()),
                 {(twips("xMin") + twips("xMax")) / 2, (twips("yMin") + twips("yMax")) / 2}});
        }
    }
    return pages;
}

/// Returns the texts of the PDF file, without blanks, at the positions where `document` has the rows.
Rows InPdf(const Document& document)
{
    const std::vector<std::vector<Word>> pages = WordsOf(PdfBytes(document));
    Rows rows(static_cast<int>(document.details.size()));
    ForEachCell(document, [&](std::size_t row, const PlacedText& text, int page, const QRectF& box) {
        std::vector<Word> words;
        for (const Word& word : pages.at(static_cast<std::size_t>(page))) {
            if (box.contains(word.middle)) {
                words.push_back(word);
            }
        }
        const auto line = [&](const Word& word) {
            return static_cast<int>((word.middle.y() - box.top()) / text.lineHeight);
        };
        std::stable_sort(words.begin(), words.end(), [&](const Word& one, const Word& other) {
            return std::pair(line(one), one.middle.x()) < std::pair(line(other), other.middle.x());
        });
        QString found;
        for (const Word& word : words) {
            found += word.text;
        }
        rows[static_cast<int>(row)] << found;
    });
    return rows;
}

/// Returns the rows of the RTF file. `lines` contains the number of columns on each line of a row.
Rows InRtf(const Document& document, const QList<int>& lines)
{
    const RtfReading reading = RtfReader::Read(RtfBytes(document));
    if (!reading.fault.isEmpty()) {
        qFatal("%s", qPrintable(reading.fault));
    }
    Rows rows;
    for (int tableRow = 0; tableRow < reading.body.size();) {
        rows << QStringList();
        for (const int columns : lines) {
            for (const QString& cell : reading.body.value(tableRow++).cells.mid(0, columns)) {
                rows.last() << cell.simplified();
            }
        }
    }
    return rows;
}

/// Returns the number of columns on each line of a row.
QList<int> ColumnsOnLines(const Document& document)
{
    std::map<int, int> columns;
    for (const PlacedText& text : document.header.texts) {
        if (text.box.top() >= 741) {
            ++columns[text.box.top()];
        }
    }
    QList<int> counts;
    for (const auto& [top, count] : columns) {
        counts << count;
    }
    return counts;
}

} // namespace

class tst_SampleLogReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void report_showsTheLog_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("location");
        QTest::addColumn<bool>("descending");
        const XmlFile fields(ReadWholeFile(TARNO_SHIPPED_DATA "/field.xml"));
        const XmlFile reports(ReadWholeFile(TARNO_SHIPPED_DATA "/sample/Rpt.xml"));
        QStringList all;
        QStringList byDefault;
        for (const pugi::xml_node& field : fields.Records()) {
            all << ValueOf(field, QStringLiteral("FieldName"));
            if (ValueOf(field, QStringLiteral("DefaultFlag")) != QLatin1String("0")) {
                byDefault << all.last();
            }
        }
        QCOMPARE(all.size(), 36);
        const auto row = [](const QString& title, const QString& names, const QString& location = {}) {
            QTest::addRow("%s", qPrintable(title)) << names << location << false;
            QTest::addRow("%s, descending", qPrintable(title)) << names << location << true;
        };
        row(QStringLiteral("default report"), byDefault.join(QLatin1Char(',')));
        int saved = 0;
        for (const pugi::xml_node& report : reports.Records()) {
            row(ValueOf(report, QStringLiteral("RptName")), ValueOf(report, QStringLiteral("Fields")));
            ++saved;
        }
        QCOMPARE(saved, 3);
        row(QStringLiteral("all fields"), all.join(QLatin1Char(',')));
        std::reverse(all.begin(), all.end());
        row(QStringLiteral("all fields, the last one first"), all.join(QLatin1Char(',')));
        row(QStringLiteral("sorted by tide"), QStringLiteral("TideStart,TideEnd,StartDate,Weather"));
        row(QStringLiteral("sorted by weather"), QStringLiteral("Weather,TideStart,FishCaught"));
        row(QStringLiteral("first entry's location"), QStringLiteral("StartDate,LocNo,FishAction"),
            QStringLiteral("1"));
        row(QStringLiteral("another location"), QStringLiteral("StartDate,LocNo,FishAction"),
            QStringLiteral("4"));
    }

    void report_showsTheLog()
    {
        QFETCH(QString, names);
        QFETCH(QString, location);
        QFETCH(bool, descending);
        TestProgram program;
        program.UseSample();
        program.Start();
        const QStringList columns = names.split(QLatin1Char(','));
        const Document document = LaidOut(program, columns, location, descending);
        const Rows rows = InPreview(document);

        // the first row is the first entry in the file, or empty
        Rows expected = Reader(program.folder).RowsOf(columns, location);
        if (location == QLatin1String("4")) {
            expected << QStringList(columns.size(), QString());
        }
        QCOMPARE(FirstTexts(rows), Sorted(FirstTexts(expected), descending));
        QCOMPARE(Sorted(Shown(rows), false), Sorted(Shown(expected), false));

        QCOMPARE(Shown(InRtf(document, ColumnsOnLines(document))), Shown(rows));

        NOT_ON_WINDOWS("pdftotext");
        Rows withoutBlanks = rows;
        for (QStringList& row : withoutBlanks) {
            std::transform(row.begin(), row.end(), row.begin(), WithoutBlanks);
        }
        QCOMPARE(Shown(InPdf(document)), Shown(withoutBlanks));
    }

private:
    /// Creates the report as the program does.
    static Document LaidOut(TestProgram& program, const QStringList& names, const QString& location,
                            bool descending)
    {
        RecordList fields;
        program.sql.FieldList(fields);
        RecordList columns;
        QStringList keys;
        for (const QString& name : names) {
            const auto field = std::find_if(fields.begin(), fields.end(), [&](const RecordView& record) {
                return FromUtf8(record.Text(FieldField::FieldName)) == name;
            });
            columns.push_back(*field);
            keys << FromUtf8(field->Text(FieldField::FieldNo));
        }
        if (program.sql.ReportLogData(ToUtf8(names.join(QLatin1Char(','))),
                                      ToUtf8(keys.join(QLatin1Char(','))),
                                      static_cast<std::int16_t>(location.toInt())) != succeeded) {
            qFatal("no rows");
        }
        mMain::ShellSort(program.sql.ReportGrid(), {.column = 0, .descending = descending});
        arLogList report(program.program.printers.DefaultPage(), columns, program.sql.ReportGrid());
        return LayOut(report).value();
    }

    static QStringList FirstTexts(const Rows& rows)
    {
        QStringList texts;
        for (const QStringList& row : rows) {
            texts << row.first();
        }
        return texts;
    }

    /// Compares bytes, as the report does.
    static QStringList Sorted(QStringList texts, bool descending)
    {
        std::sort(texts.begin(), texts.end(), [&](const QString& one, const QString& other) {
            return descending ? one.toUtf8() > other.toUtf8() : one.toUtf8() < other.toUtf8();
        });
        return texts;
    }
};

TEST_CLASS(tst_SampleLogReport)
#include "tst_SampleLogReport.moc"
