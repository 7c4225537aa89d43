#include "EveryOperation.h"
#include "safety/Form.h"
#include "support/TestClass.h"

using namespace Tarno;

// A log with one flipped bit, as on a failing disk: each bit of 4 KB in turn.

namespace
{

constexpr std::size_t size = 4096;

/// Returns the first entries of the sample log, padded to the size in the last entry's comments.
std::string SampleLog()
{
    const std::string sample = ShippedFile("sample/tarno.xml");
    const std::string end = "</Obbos>\n\t</tarno>\n</data>\n";
    std::string log = sample.substr(0, sample.find("</Obbos>", size - 1500));
    while (log.size() + end.size() < size) {
        log += " more"[log.size() % 5];
    }
    log += end;
    if (log.size() != size || !ReadXml(log).fault.empty()) {
        qFatal("no log of 4 KB");
    }
    return log;
}

} // namespace

class tst_FlippedBits : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void flippedBit_fileIsNotTouchedOrKeepsItsContents()
    {
        const std::string file = "tarno.xml";
        const std::string valid = SampleLog();
        const TemporaryFolder folder;
        CopyShipped(folder);
        const ProgramFolder programFolder(folder.Path());
        OperationTrial trial;
        int unreadable = 0;
        int readable = 0;
        const std::size_t stride = IsLongForm() ? 1 : 23;
        for (std::size_t bit = 0; bit < 8 * size; bit += stride) {
            std::string flipped = valid;
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
            const std::string place =
                "bit " + std::to_string(bit) + ", at \"" + flipped.substr(bit / 8, 20) + "\": ";
            const XmlReading reading = ReadXml(flipped);
            folder.Write(file, flipped);
            if (!reading.fault.empty()) {
                ++unreadable;
                const std::string broken = trial.RunOnUnreadable(folder.Path(), file, false);
                QVERIFY2(broken.empty(), (place + broken + reading.fault).c_str());
                QVERIFY2(folder.Read(file) == flipped, (place + "overwritten").c_str());
                continue;
            }
            ++readable;
            ScriptedFileOperations system;
            cSQL sql(programFolder, system);
            QCOMPARE(sql.Init(), succeeded);
            RecordList entries;
            QVERIFY2(sql.EntryList(entries) == succeeded, (place + "not read").c_str());
            QVERIFY2(sql.EntryDelete(9999) == succeeded, (place + "not saved").c_str()); // removes nothing
            const XmlReading saved = ReadXml(folder.Read(file));
            QVERIFY2(saved.fault.empty(), (place + saved.fault).c_str());
            QVERIFY2(saved.content == reading.content, (place + "the saved file has other contents").c_str());
            if (IsLongForm() || readable % 8 == 0) {
                folder.Write(file, flipped);
                const std::string broken = trial.Run(folder.Path(), file, false);
                const std::string fault = ReadXml(folder.Read(file)).fault;
                QVERIFY2(broken.empty() && fault.empty(), (place + broken + fault).c_str());
            }
        }
        qInfo("%d flipped bits make the log unreadable, %d do not", unreadable, readable);
    }
};

TEST_CLASS(tst_FlippedBits)
#include "tst_FlippedBits.moc"
