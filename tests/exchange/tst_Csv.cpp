#include "exchange/Csv.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <random>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const Texts awkwardTexts{"",
                         " ",
                         "plain",
                         "say \"hot\"",
                         "\"",
                         "\"\"",
                         "a,b;c\td",
                         "two\nlines",
                         "two\r\nlines",
                         "two\rlines",
                         "\n",
                         "  leading and trailing  ",
                         "007",
                         "=1+1",
                         "-0",
                         "~CL~",
                         "a~CL~b",
                         "\xF0\x9F\x90\x9F fish",
                         "R\xC3\xADo Chimehu\xC3\xADn",
                         "\xE3\x82\xB9\xE3\x82\xBA\xE3\x82\xAD",
                         "\xEF\xBB\xBFmark",
                         "\x01"};

CsvRows AwkwardRows()
{
    CsvRows rows;
    for (const std::string& text : awkwardTexts) {
        rows.push_back({text, "between", text});
    }
    return rows;
}

/// Joins the texts of each row with "|" and the rows with "/".
std::string Shown(const CsvFile& file)
{
    std::string shown;
    for (const CsvRow& row : file.rows) {
        shown += shown.empty() ? "" : "/";
        for (std::size_t column = 0; column < row.size(); ++column) {
            shown += (column > 0 ? "|" : "") + row[column];
        }
    }
    return shown;
}

std::string Read(std::string_view bytes)
{
    const CsvFile file = ReadCsv(bytes);
    return file.problem ? file.problem->Describe() : Shown(file);
}

std::string Utf16(const QString& text, bool isLittleEndian)
{
    std::string bytes = isLittleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (const QChar letter : text) {
        const auto low = static_cast<char>(letter.cell());
        const auto high = static_cast<char>(letter.row());
        bytes += isLittleEndian ? low : high;
        bytes += isLittleEndian ? high : low;
    }
    return bytes;
}

QByteArray DataFile(const QString& name)
{
    QFile file(QStringLiteral(TARNO_TEST_DATA "/csv/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_Csv : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void write_quotesEveryText()
    {
        QCOMPARE(WriteCsv({}), "\xEF\xBB\xBF"s);
        QCOMPARE(WriteCsv({{"a", "", "say \"hot\""}, {"1\r\n2"}}),
                 "\xEF\xBB\xBF\"a\",\"\",\"say \"\"hot\"\"\"\r\n\"1\r\n2\"\r\n"s);
        QCOMPARE(WriteCsv({{"a", "b"}}, ';'), "\xEF\xBB\xBF\"a\";\"b\"\r\n"s);
    }

    void writtenFile_isReadUnchanged_data()
    {
        QTest::addColumn<char>("separator");
        QTest::newRow("comma") << ',';
        QTest::newRow("semicolon") << ';';
        QTest::newRow("tab") << '\t';
    }

    void writtenFile_isReadUnchanged()
    {
        QFETCH(char, separator);
        std::mt19937 random(1);
        for (int round = 0; round < 100; ++round) {
            CsvRows rows(random() % 5 + 1);
            for (CsvRow& row : rows) {
                for (auto count = random() % 4 + 2; count > 0; --count) {
                    row.push_back(awkwardTexts[random() % awkwardTexts.size()]);
                }
            }
            const CsvFile file = ReadCsv(WriteCsv(rows, separator));
            QVERIFY(!file.problem);
            QVERIFY(file.rows == rows);
            QCOMPARE(file.separator, separator);
            QVERIFY(file.encoding == TextEncoding::Utf8WithMark);
            QVERIFY(file.lineEnds == LineEnds::CrLf);
            QVERIFY(file.hasQuotes);
        }
    }

    void forms_areRecognised_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("rows");
        const auto row = [](const char* name, const char* bytes, const char* rows) {
            QTest::newRow(name) << std::string(bytes) << std::string(rows);
        };
        row("nothing", "", "The file is empty");
        row("only a mark", "\xEF\xBB\xBF", "The file is empty");
        row("only empty lines", "\r\n\n", "The file is empty");
        row("commas", "a,b\n1,2\n", "a|b/1|2");
        row("semicolons", "a;b\n1,5;2\n", "a|b/1,5|2");
        row("tabs", "a\tb\n1,5\t2;3\n", "a|b/1,5|2;3");
        row("most frequent separator", "a;b;c,d\n", "a|b|c,d");
        row("separators in quotes", "\"a,b,c\";d\n", "a,b,c|d");
        row("odd quotes in the first row", "4\" lure\n;;;\n", "4\" lure/;;;");
        row("first row decides", "\n\na;b\n1,2,3,4\n", "a|b/1,2,3,4");
        row("no end of the last line", "a,b\n1,2", "a|b/1|2");
        row("carriage returns", "a,b\r1,2\r", "a|b/1|2");
        row("empty lines", "\r\na,b\r\n\r\n\r\n1,2\r\n\r\n", "a|b/1|2");
        row("empty text in quotes", "a\n\"\"\nb", "a//b");
        row("empty texts", "a,b,c\n,,\n1,,", "a|b|c/||/1||");
        row("rows of different lengths", "a,b\n1\n1,2,3", "a|b/1/1|2|3");
        row("line breaks in quotes", "a,b\n\"1\n2\r\n3\r4\",5", "a|b/1\n2\r\n3\r4|5");
        row("blanks and zeros", "a,b\n 007 ,\t0\n", "a|b/ 007 |\t0");
        row("quotes within a text", "a,b\n4\" lure,say \"x\"", "a|b/4\" lure|say \"x\"");
        row("blank before a quote", "a,b\n \"x\",2", "a|b/ \"x\"|2");
        row("named separator", "sep=;\r\na,b,c;d\n1;2\n", "a,b,c|d/1|2");
        row("named separator after a mark", "\xEF\xBB\xBFSEP=|\na,b|c", "a,b|c");
        row("named tab", "sep=\t\na,b\tc", "a,b|c");
        row("only a named separator", "sep=;\n", "The file is empty");
        row("text like a named separator", "sep=;;\n1;2;3", "sep=||/1|2|3");
        row("quoted like a named separator", "\"sep=;\"\na,b\n", "sep=;/a|b");
        row("quotation mark as separator", "sep=\"\na", "sep=\"/a");
        row("formula", "a,b\n=1+1,@x", "a|b/=1+1|@x");
    }

    void forms_areRecognised()
    {
        QFETCH(std::string, bytes);
        QTEST(Read(bytes), "rows");
    }

    void lineEnds_areNamed()
    {
        QVERIFY(ReadCsv("a,b").lineEnds == LineEnds::None);
        QVERIFY(ReadCsv("a,b\n1,2\r\n").lineEnds == LineEnds::Mixed);
        QVERIFY(ReadCsv("a,b\r1,2\r").lineEnds == LineEnds::Cr);
        QVERIFY(ReadCsv("a,\"b\r\n\"\n").lineEnds == LineEnds::Lf);
        QVERIFY(!ReadCsv("a,b\n").hasQuotes);
    }

    void lines_areThoseInWhichRowsStart()
    {
        const CsvFile file = ReadCsv("\r\na,b\r\n\"1\r\n2\n3\r4\",x\r\n\r\n5,6\n");
        QVERIFY((file.lines == std::vector<std::size_t>{2, 3, 8}));
        QVERIFY((ReadCsv("sep=;\na\nb\n").lines == std::vector<std::size_t>{2, 3}));
    }

    void encodings_areRecognised()
    {
        const QString text = QStringLiteral("R\u00EDo;\u30BA\n\U0001F41F;\"\u201Cx\u201D\"\n");
        const std::string rows = "R\xC3\xADo|\xE3\x82\xBA/\xF0\x9F\x90\x9F|\xE2\x80\x9Cx\xE2\x80\x9D";
        const std::string utf8 = text.toStdString();
        for (const auto& [bytes, encoding] : {std::pair(utf8, TextEncoding::Utf8),
                                              std::pair("\xEF\xBB\xBF" + utf8, TextEncoding::Utf8WithMark),
                                              std::pair(Utf16(text, true), TextEncoding::Utf16),
                                              std::pair(Utf16(text, false), TextEncoding::Utf16)}) {
            QCOMPARE(Read(bytes), rows);
            QVERIFY(ReadCsv(bytes).encoding == encoding);
        }
        QCOMPARE(Read("R\xEDo;caf\xE9 \x80 5\n\x93x\x94;\x81\n"),
                 "R\xC3\xADo|caf\xC3\xA9 \xE2\x82\xAC 5/\xE2\x80\x9Cx\xE2\x80\x9D|\xC2\x81"s);
        QVERIFY(ReadCsv("\xE9").encoding == TextEncoding::Windows1252);
    }

    void problem_namesItsPosition_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("problem");
        const auto row = [](const char* name, const std::string& bytes, const char* problem) {
            QTest::newRow(name) << bytes << std::string(problem);
        };
        row("open quote", "a,b\r\n\xC3\xAD\xC3\xAD,\"x\r\ny,z\r\n",
            "Line 2, column 4: This quotation mark is not closed");
        row("open quote at the end", "a,\"", "Line 1, column 3: This quotation mark is not closed");
        row("open quote after a pair", "\"a\"\"\n", "Line 1, column 1: This quotation mark is not closed");
        row("text after a quote", "a,b\n\"x\" y,2\n",
            "Line 2, column 4: Text after a closing quotation mark");
        row("zero byte", "a,b\n1,x\0y\n"s, "Line 2, column 4: A zero byte: this is not a text file");
        row("too many columns", "a\n" + std::string(1000, ','),
            "Line 2, column 1001: More than 1000 columns");
        row("too many rows", std::string(400'002, 'a'), "");
        std::string commas(5'001'000, ',');
        for (std::size_t at = 999; at < commas.size(); at += 1000) {
            commas[at] = '\n';
        }
        row("too many values", commas, "Line 5001, column 1: More than 5000000 values");
        row("half a unit of UTF-16", "\xFF\xFE\x61\x00\x62"s,
            "Line 1, column 1: The file begins with a Unicode mark, but does not contain such text");
        row("lone surrogate", "\xFF\xFE\x00\xD8\x62\x00"s,
            "Line 1, column 1: The file begins with a Unicode mark, but does not contain such text");
        row("not UTF-8 after its mark", "\xEF\xBB\xBF\xE9",
            "Line 1, column 1: The file begins with a Unicode mark, but does not contain such text");
    }

    void problem_namesItsPosition()
    {
        QFETCH(std::string, bytes);
        QFETCH(std::string, problem);
        if (problem.empty()) { // a line for each row
            for (std::size_t at = 1; at < bytes.size(); at += 2) {
                bytes[at] = '\n';
            }
            problem = "Line 200001, column 1: More than 200000 rows";
        }
        const CsvFile file = ReadCsv(bytes);
        QVERIFY(file.problem.has_value());
        QCOMPARE(file.problem->Describe(), problem);
        QVERIFY(file.rows.empty() && file.lines.empty());
    }

    void hugeFile_isRefused()
    {
        QCOMPARE(Read(std::string(CsvLimits::bytes + 1, 'a')), "The file is larger than 100 MB"s);
    }

    // The files in data/csv and their rows as an independent program has read them (scripts/csv-oracle.py).
    void otherReader_readsTheSame_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* file : {"awkward", "semicolons", "tabs", "plain"}) {
            QTest::newRow(file) << QString::fromLatin1(file);
        }
    }

    void otherReader_readsTheSame()
    {
        QFETCH(QString, file);
        CsvRows rows;
        const QByteArray json = DataFile(file + QStringLiteral(".json"));
        for (const QJsonValue& row : QJsonDocument::fromJson(json).array()) {
            CsvRow& texts = rows.emplace_back();
            for (const QJsonValue& text : row.toArray()) {
                texts.push_back(text.toString().toStdString());
            }
        }
        QVERIFY(!rows.empty());
        const CsvFile read = ReadCsv(DataFile(file + QStringLiteral(".csv")).toStdString());
        QVERIFY(!read.problem);
        QVERIFY(read.rows == rows);
    }

    void awkwardFile_isWhatIsWritten()
    {
        QCOMPARE(DataFile(QStringLiteral("awkward.csv")).toStdString(), WriteCsv(AwkwardRows()));
    }
};

TEST_CLASS(tst_Csv)
#include "tst_Csv.moc"
