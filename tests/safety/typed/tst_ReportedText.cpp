#include "Characters.h"
#include "qt/Strings.h"
#include "reports/LogReport.h"
#include "reports/ReadRtf.h"
#include "reports/engine/RtfWriter.h"
#include "safety/Form.h"
#include "support/TestClass.h"

using namespace Tarno;

// The log report and its RTF export contain every character of the values in the log.

using namespace std::string_literals;

namespace
{

constexpr std::size_t columns = 10; // the first values of an entry after its key
constexpr std::size_t inOneValue = 20;

/// Returns columns that grow with their texts. Their names have no special meaning, so values are printed
/// unchanged.
Columns GrowingColumns()
{
    Columns growing;
    for (std::size_t column = 0; column < columns; ++column) {
        growing.push_back({.name = "F" + std::to_string(column), .width = "60", .grow = "1"});
    }
    return growing;
}

/// Returns `text` as a QString with line feeds as line breaks.
QString WithLineFeeds(const std::string& text)
{
    QString settled = QString::fromStdString("x" + text).mid(1);
    return settled.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

/// Returns `text` without white space, because wrapping changes it.
QString Visible(QString text)
{
    return text.removeIf([](QChar character) { return character.isSpace(); });
}

/// Returns the characters to test: all in the long form; otherwise the first scripts and a part of the
/// others.
std::vector<char32_t> ReportedCharacters()
{
    std::vector<char32_t> some;
    std::size_t at = 0;
    for (const char32_t character : XmlCharacters()) {
        constexpr std::size_t stride = 301;
        const bool special = character < 0x600 || (character >= 0x2000 && character < 0x2070) ||
                             (character >= 0xFDC0 && character < 0x10000);
        if (IsLongForm() || special || at++ % stride == 0) {
            some.push_back(character);
        }
    }
    return some;
}

/// Puts the texts into a log and checks its report and its RTF export.
void CheckReport(const std::vector<std::string>& texts)
{
    LogReport report(GrowingColumns());
    for (std::size_t at = 0; at < texts.size(); at += columns) {
        Values entry;
        for (std::size_t column = 0; column < columns && at + column < texts.size(); ++column) {
            entry[column + 1] = texts[at + column];
        }
        report.program.AddEntry(entry);
    }
    report.FillGrid();
    const Document document = report.Run();
    const RtfReading rtf = RtfReader::Read(RtfBytes(document));
    QCOMPARE(rtf.fault, QString());
    QStringList cells;
    for (const RtfRow& row : rtf.body) {
        cells << row.cells;
    }
    for (std::size_t at = 0; at < texts.size(); ++at) {
        const QString expected = WithLineFeeds(texts[at]);
        const PlacedText& text =
            FindText(document.details.at(at / columns), QStringLiteral("fldF%1").arg(at % columns));
        QCOMPARE(text.text, expected);
        QCOMPARE(Visible(LinesOf(text).join(QString())), Visible(expected));
        QVERIFY2(cells.contains(expected), qPrintable(QStringLiteral("not in the file: ") + expected));
    }
}

} // namespace

class tst_ReportedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyCharacter_isOnTheReportAndInTheFile()
    {
        const std::vector<char32_t> characters = ReportedCharacters();
        const std::vector<std::string> texts = Texts(characters, inOneValue);
        constexpr std::size_t inOneLog = 500;
        for (std::size_t at = 0; at < texts.size(); at += inOneLog) {
            const auto first = texts.begin() + static_cast<std::ptrdiff_t>(at);
            CheckReport({first, first + static_cast<std::ptrdiff_t>(std::min(inOneLog, texts.size() - at))});
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        qInfo("%zu characters reported", characters.size());
    }

    void markupOfEveryKind_isText()
    {
        CheckReport({"<b>x</b>",
                     "<img src='/etc/passwd'>",
                     "{\\rtf1 {\\field{\\*\\fldinst INCLUDETEXT x}}}",
                     "\\",
                     "}}}}}",
                     "../../x",
                     "%1 %2 %n",
                     "&Save && go",
                     "\\u1234?",
                     "]]>",
                     "&lt;",
                     "\\'41 \\par \\cell",
                     "{\\object",
                     "\x7F",
                     "\xEF\xBB\xBF",
                     "a\tb",
                     "~CL",
                     "'\"`$(touch x)",
                     "=1+1",
                     "\\line "});
    }
};

TEST_CLASS(tst_ReportedText)
#include "tst_ReportedText.moc"
