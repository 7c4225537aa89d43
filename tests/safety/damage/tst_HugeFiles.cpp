#include "EveryOperation.h"
#include "safety/Form.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <QProcess>

#include <iostream>
#include <sstream>

using namespace Tarno;

// Files much larger than any real log: 200 MB in the long form. A separate process loads them; its memory
// must not exceed a multiple of the file size.

namespace
{

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isMemoryChecked = false; // the sanitizer does not reuse freed memory
#else
constexpr bool isMemoryChecked = true;
#endif

constexpr std::size_t megabyte = 1024UL * 1024UL;
const int fileSize = Times(10, 200); // in megabytes
const std::string file = "tarno.xml";

std::string Repeated(const std::string& text, std::size_t size)
{
    std::string bytes;
    bytes.reserve(size + text.size());
    while (bytes.size() < size) {
        bytes += text;
    }
    return bytes;
}

/// Returns a log that repeats one entry.
std::string HugeLog(std::size_t size)
{
    const std::string sample = ShippedFile("sample/tarno.xml");
    const std::string end = "</tarno>\n";
    const std::size_t begin = sample.find("\t<tarno>");
    const std::string record = sample.substr(begin, sample.find(end) + end.size() - begin);
    return "<data>\n" + Repeated(record, size) + "</data>\n";
}

std::size_t Occurrences(const std::string& bytes, const std::string& text)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = bytes.find(text, at)) != std::string::npos; at += text.size()) {
        ++count;
    }
    return count;
}

} // namespace

class tst_HugeFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void hugeFile_isReadOrRefusedInBoundedMemory_data()
    {
        const std::size_t size = static_cast<std::size_t>(fileSize) * megabyte;
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<bool>("readable");
        QTest::addColumn<std::size_t>("maxTimesFileSize"); // memory
        QTest::newRow("entries") << HugeLog(size) << true << std::size_t(9);
        QTest::newRow("one text") << "<data><tarno><TarnoNo>1</TarnoNo><Obbos>" +
                                         Repeated("Dear diary ", size) + "</Obbos></tarno></data>\n"
                                  << true << std::size_t(4);
        QTest::newRow("zeros") << std::string(size, '\0') << false << std::size_t(1);
        QTest::newRow("less-than signs") << std::string(size, '<') << false << std::size_t(1);
        QTest::newRow("ampersands") << "<data>" + std::string(size, '&') << false << std::size_t(1);
        QTest::newRow("an endless attribute")
            << "<data a=\"" + std::string(size, 'a') << false << std::size_t(1);
        QTest::newRow("attributes") << "<data" + Repeated(" a=\"\"", size) + "/" << false << std::size_t(10);
        QTest::newRow("blanks") << std::string(size, ' ') << false << std::size_t(1);
        QTest::newRow("levels") << Repeated("<data>", size) << false << std::size_t(13);
        QTest::newRow("comments") << Repeated("<!---->", size) << false << std::size_t(12);
        QTest::newRow("unterminated comments") << Repeated("<!--&", size) << false << std::size_t(1);
    }

    void hugeFile_isReadOrRefusedInBoundedMemory()
    {
        QFETCH(std::string, bytes);
        QFETCH(bool, readable);
        QFETCH(std::size_t, maxTimesFileSize);
        const TemporaryFolder folder;
        CopyShipped(folder);
        folder.Write(file, bytes);
        const std::vector<std::string> names = folder.Names();

        QProcess process;
        process.start(QStringLiteral(TARNO_TRIAL),
                      {readable ? QStringLiteral("readable") : QStringLiteral("unreadable"),
                       QString::fromStdString(folder.Path()), QString::fromStdString(file)});
        QVERIFY(process.waitForFinished(-1));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        std::istringstream output(process.readAllStandardOutput().toStdString());
        std::size_t peak = 0;
        std::string broken;
        output >> peak;
        std::getline(output, broken);
        QCOMPARE(broken, std::string(" "));

        const std::string after = folder.Read(file);
        if (!readable) {
            QVERIFY(after == bytes);
        } else { // one entry was added, one deleted
            QCOMPARE(Occurrences(after, "<tarno>"), Occurrences(bytes, "<tarno>"));
            QCOMPARE(ReadXml(after).fault, std::string());
        }
        QCOMPARE(folder.Names(), names);
        // on Windows the program is larger, because the libraries are linked statically
        constexpr std::size_t programItself = isWindows ? 40 : 16;
        const std::size_t maxMegabytes = maxTimesFileSize * bytes.size() / megabyte + programItself;
        m_figures << QStringLiteral("%1 %2 MB").arg(QLatin1String(QTest::currentDataTag())).arg(peak);
        QVERIFY(peak > bytes.size() / megabyte);
        QVERIFY2(!isMemoryChecked || peak <= maxMegabytes,
                 ("more than " + std::to_string(maxMegabytes) + " MB").c_str());
    }

    void cleanupTestCase()
    {
        qInfo("memory for files of %d MB: %s", fileSize, qPrintable(m_figures.join(QStringLiteral(", "))));
    }

private:
    QStringList m_figures;
};

TEST_CLASS(tst_HugeFiles)
#include "tst_HugeFiles.moc"
