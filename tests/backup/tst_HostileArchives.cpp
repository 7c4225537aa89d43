// Archives that are damaged, or made to do harm, are refused before anything is extracted.

#include "RawZip.h"
#include "backup/Archive.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <functional>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// Returns why an archive with these bytes is refused, or an empty text.
std::string ProblemOf(const std::string& bytes, const ArchiveLimits& limits = {})
{
    const TemporaryFolder folder;
    folder.Write("a.zip", bytes);
    try {
        ArchiveReader(folder.PathOf("a.zip"), limits).CheckAll();
        return {};
    } catch (const ArchiveProblem& problem) {
        return problem.Description();
    }
}

std::string Named(const std::string& name, const std::string& fault)
{
    return "The name \"" + name + "\" in the archive " + fault + '.';
}

std::string ArchiveOf(const std::function<void(RawZip&)>& change)
{
    RawZip zip;
    zip.Add("tarno.xml", "<data/>");
    zip.AddDeflated("pictures/a.bmp", std::string(3000, 'a'));
    change(zip);
    return zip.Bytes();
}

constexpr const char* contradiction = "The archive is damaged: its parts contradict each other.";

} // namespace

class tst_HostileArchives : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void hostileArchive_isRefused_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("problem");
        AddNames();
        AddKinds();
        AddSizes();
        AddStructures();
    }

    void hostileArchive_isRefused()
    {
        QFETCH(std::string, bytes);
        QFETCH(std::string, problem);
        QCOMPARE(ProblemOf(bytes), problem);
    }

    void harmlessArchive_isAccepted_data()
    {
        QTest::addColumn<std::string>("bytes");
        const auto row = [](const char* name, const std::function<void(RawZip&)>& change) {
            QTest::newRow(name) << ArchiveOf(change);
        };
        row("as it is", [](RawZip&) {});
        row("without entries", [](RawZip& zip) { zip.entries.clear(); });
        row("with a comment", [](RawZip& zip) { zip.comment = "PK\5\6 is not the end"; });
        row("with folders", [](RawZip& zip) {
            zip.Add("pictures/", "").attributes = 0x41ed0010;
            zip.entries.back().madeBy = 0x0314;
        });
        row("with a mode", [](RawZip& zip) {
            zip.entries[0].attributes = 0x81a40000;
            zip.entries[0].madeBy = 0x0314;
        });
        row("with accents", [](RawZip& zip) { zip.Add("pictures/caf\u00e9.jpg"); });
    }

    void harmlessArchive_isAccepted()
    {
        QFETCH(std::string, bytes);
        QCOMPARE(ProblemOf(bytes), ""s);
    }

    void archivesOfOtherPrograms_areAccepted()
    {
        for (const char* name : {"64-bit.zip", "streamed.zip"}) {
            const ArchiveReader archive(std::string(TARNO_TEST_DATA "/") + name);
            archive.CheckAll();
            QCOMPARE(static_cast<int>(archive.Entries().size()), 2);
            QCOMPARE(archive.ReadBytes(*archive.Find("location.xml")), "<data>\n</data>\n"s);
        }
    }

    void everyTruncatedArchive_isRefused()
    {
        const std::string bytes = ArchiveOf([](RawZip&) {});
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            QVERIFY2(!ProblemOf(bytes.substr(0, size)).empty(), std::to_string(size).c_str());
        }
    }

    void limits_areKept()
    {
        const std::string bytes = ArchiveOf([](RawZip& zip) { zip.Add("third"); });
        QCOMPARE(ProblemOf(bytes, {.entries = 3}), ""s);
        QCOMPARE(ProblemOf(bytes, {.entries = 2}), "The archive has too many files."s);
        QCOMPARE(ProblemOf(bytes, {.entryBytes = 3000}), ""s);
        QCOMPARE(ProblemOf(bytes, {.entryBytes = 2999}), "\"pictures/a.bmp\" in the archive is too large."s);
        QCOMPARE(ProblemOf(bytes, {.totalBytes = 3014}),
                 "The files in the archive would need far too much space."s);
        QCOMPARE(ProblemOf(bytes, {.freeBytes = 3000, .ratio = 2}),
                 "The files in the archive would need far too much space."s);
        QCOMPARE(ProblemOf(bytes, {.freeBytes = 3000, .ratio = 100}), ""s);
    }

    void readBytes_isLimited()
    {
        const TemporaryFolder folder;
        folder.Write("a.zip", ArchiveOf([](RawZip&) {}));
        const ArchiveReader reader(folder.PathOf("a.zip"));
        const ArchiveEntry& entry = *reader.Find("pictures/a.bmp");
        QCOMPARE(reader.ReadBytes(entry, 3000), std::string(3000, 'a'));
        QVERIFY_THROWS_EXCEPTION(ArchiveProblem, reader.ReadBytes(entry, 2999));
    }

private:
    static void Row(const char* name, const std::function<void(RawZip&)>& change, const std::string& problem)
    {
        QTest::newRow(name) << ArchiveOf(change) << problem;
    }

    static void AddNames()
    {
        const auto name = [](const char* row, const std::string& name, const std::string& fault) {
            Row(
                row, [&](RawZip& zip) { zip.Add(name); }, Named(name, fault));
        };
        name("parent", "../tarno.xml", "leads to another folder");
        name("parent within", "pictures/../../x", "leads to another folder");
        name("parent at the end", "pictures/..", "leads to another folder");
        name("same folder", "./x", "leads to another folder");
        name("parent as a folder", "../", "leads to another folder");
        name("absolute", "/etc/passwd", "is an absolute path");
        name("share", "//server/share/x", "is an absolute path");
        name("drive", "C:/x", "has a drive letter");
        name("drive alone", "c:x", "has a drive letter");
        name("stream", "tarno.xml:x", "contains a character that Windows does not allow");
        name("asterisk", "a*.jpg", "contains a character that Windows does not allow");
        name("backslash", "pictures\\a.jpg", "contains a backslash");
        name("backslash parent", "..\\a.jpg", "contains a backslash");
        name("device", "con", "is the name of a device on Windows");
        name("device with suffix", "pictures/Aux.tar.gz", "is the name of a device on Windows");
        name("device as a folder", "NUL/a.jpg", "is the name of a device on Windows");
        name("port", "COM1.txt", "is the name of a device on Windows");
        name("port with superscript", "lpt\u00b2", "is the name of a device on Windows");
        name("dot at the end", "a./b", "has a part that ends with a dot or a blank");
        name("blank at the end", "a.jpg ", "has a part that ends with a dot or a blank");
        name("empty part", "pictures//a", "has an empty part");
        name("no name", "", "is empty");
        Row(
            "zero", [](RawZip& zip) { zip.Add("a\0b"s); }, Named("a?b", "contains a control character"));
        Row(
            "line break", [](RawZip& zip) { zip.Add("a\nb"); }, Named("a?b", "contains a control character"));
        Row(
            "escape", [](RawZip& zip) { zip.Add("a\x1b[2J"); },
            Named("a?[2J", "contains a control character"));
        Row(
            "not UTF-8", [](RawZip& zip) { zip.Add("a\xff.jpg"); }, Named("a\uFFFD.jpg", "is not UTF-8"));
        Row(
            "long part", [](RawZip& zip) { zip.Add(std::string(256, 'n')); },
            Named(std::string(80, 'n') + "...", "is too long"));
        Row(
            "long name", [](RawZip& zip) { zip.Add(std::string(60, 'n') + std::string(500, '/') + "a"); },
            Named(std::string(60, 'n') + std::string(20, '/') + "...", "has an empty part"));
    }

    static void AddKinds()
    {
        const auto change = [](const char* row, const std::function<void(RawZip::Entry&)>& change,
                               const std::string& problem) {
            Row(
                row, [&](RawZip& zip) { change(zip.entries[0]); }, "\"tarno.xml\" in the archive " + problem);
        };
        const std::string link = "is a link or another special file.";
        const auto mode = [](std::uint32_t bits, std::uint16_t system) {
            return [=](RawZip::Entry& entry) {
                entry.attributes = bits << 16U;
                entry.madeBy = static_cast<std::uint16_t>(system << 8U);
            };
        };
        change("link", mode(0120777, 3), link);
        change("link made on a Mac", mode(0120777, 19), link);
        change("pipe", mode(0010644, 3), link);
        change("device file", mode(0020644, 3), link);
        change("file that is a folder", mode(0040755, 3), link);
        change(
            "encrypted", [](RawZip::Entry& entry) { entry.flags |= 1; }, "is encrypted.");
        change(
            "strongly encrypted", [](RawZip::Entry& entry) { entry.flags |= 0x40; }, "is encrypted.");
        change(
            "masked", [](RawZip::Entry& entry) { entry.flags |= 0x2000; }, "is encrypted.");
        change(
            "other method", [](RawZip::Entry& entry) { entry.method = 12; },
            "is compressed in a way that Tarno cannot read.");
        change(
            "wrong checksum", [](RawZip::Entry& entry) { entry.checksum ^= 1; }, "is damaged.");
        const auto same = [](const char* row, const std::string& name, const std::string& other) {
            Row(
                row, [&](RawZip& zip) { zip.Add(name); },
                "The archive has two files of the same name: " + other + " and \"" + name + "\".");
        };
        same("same name", "tarno.xml", "\"tarno.xml\"");
        same("same name in other case", "TARNO.xml", "\"tarno.xml\"");
        same("same name in other folder case", "Pictures/A.bmp", "\"pictures/a.bmp\"");
        Row(
            "same accents in another form",
            [](RawZip& zip) {
                zip.Add("caf\u00e9");
                zip.Add("cafe\u0301");
            },
            "The archive has two files of the same name: \"caf\u00e9\" and \"cafe\u0301\".");
        Row(
            "file and folder", [](RawZip& zip) { zip.Add("Pictures"); },
            "The archive has a file and a folder of the same name: \"Pictures\".");
        Row(
            "folder with contents", [](RawZip& zip) { zip.Add("more/", "x"); },
            "The archive is damaged: the folder \"more/\" has contents.");
    }

    static void AddSizes()
    {
        Row(
            "larger than it can be", [](RawZip& zip) { zip.entries[1].size = 1'000'000; },
            "The archive is damaged: the size of \"pictures/a.bmp\" is wrong.");
        Row(
            "larger than it is", [](RawZip& zip) { zip.entries[1].size = 3001; },
            "\"pictures/a.bmp\" in the archive is damaged.");
        Row(
            "smaller than it is", [](RawZip& zip) { zip.entries[1].size = 2999; },
            "\"pictures/a.bmp\" in the archive is damaged.");
        Row(
            "stored with another size", [](RawZip& zip) { zip.entries[0].size = 8; },
            "The archive is damaged: the size of \"tarno.xml\" is wrong.");
        Row(
            "bomb",
            [](RawZip& zip) {
                zip.entries[1].size = std::uint64_t(2) << 30U;
                zip.entries[1].compressedSize = zip.entries[1].size / 1000;
            },
            "The files in the archive would need far too much space.");
        Row(
            "bomb with 64-bit sizes",
            [](RawZip& zip) {
                zip.entries[1].size = 0xffffffff;
                zip.entries[1].extra = RawZip::Number(1, 2) + RawZip::Number(8, 2) + std::string(8, '\x7f');
            },
            "\"pictures/a.bmp\" in the archive is too large.");
        Row(
            "garbage instead of data", [](RawZip& zip) { zip.entries[1].data[5] ^= 0x55; },
            "\"pictures/a.bmp\" in the archive is damaged.");
    }

    static void AddStructures()
    {
        const std::string wrongSize = "The archive is damaged: its list of contents has the wrong size.";
        const auto bytes = [](const char* row, const std::string& bytes, const std::string& problem) {
            QTest::newRow(row) << bytes << problem;
        };
        bytes("nothing", "", "This is not a zip archive.");
        bytes("text", "<data />", "This is not a zip archive.");
        bytes("only a signature", "PK\3\4", "The archive is incomplete: its end is missing.");
        Row(
            "bytes in front", [](RawZip& zip) { zip.prefix = "MZ"; }, "This is not a zip archive.");
        Row(
            "bytes behind", [](RawZip& zip) { zip.suffix = "x"; },
            "The archive is incomplete: its end is missing.");
        Row(
            "several files", [](RawZip& zip) { zip.disk = 1; }, "The archive is spread over several files.");
        Row(
            "one entry more", [](RawZip& zip) { zip.countBy = 1; },
            "The archive is damaged: its list of contents is incomplete.");
        Row(
            "one entry less", [](RawZip& zip) { zip.countBy = static_cast<std::uint64_t>(-1); }, wrongSize);
        Row(
            "longer list", [](RawZip& zip) { zip.listBy = 1; }, wrongSize);
        Row(
            "list elsewhere", [](RawZip& zip) { zip.offsetBy = static_cast<std::uint64_t>(-1); }, wrongSize);
        Row(
            "list beyond the end", [](RawZip& zip) { zip.offsetBy = 10'000; }, wrongSize);
        Row(
            "overlap", [](RawZip& zip) { zip.Add("third").offsetBy = static_cast<std::uint32_t>(-50); },
            "The archive is damaged: the data of \"third\" overlaps that of another file.");
        Row(
            "the same data twice",
            [](RawZip& zip) {
                RawZip::Entry& copy = zip.Add("tarno2.xml", "<data/>");
                copy.offsetBy = static_cast<std::uint32_t>(-static_cast<int>(2 * 30 + "tarno.xml"s.size() +
                                                                             "pictures/a.bmp"s.size() + 7 +
                                                                             zip.entries[1].data.size()));
            },
            "The archive is damaged: the data of \"tarno2.xml\" overlaps that of another file.");
        Row(
            "data elsewhere", [](RawZip& zip) { zip.Add("third").offsetBy = 1; },
            "The archive is damaged: the data of \"third\" is missing.");
        Row(
            "data beyond the end", [](RawZip& zip) { zip.Add("third").offsetBy = 100'000; },
            "The archive is damaged: a part of it is missing.");
        Row(
            "other name at the data", [](RawZip& zip) { zip.Add("third").localName = "../3d"; },
            "The archive is damaged: the data of \"third\" is missing.");
        Row(
            "data longer than the archive",
            [](RawZip& zip) { zip.entries[1].compressedSize = zip.entries[1].size = 500'000; },
            "The archive is damaged: the data of \"pictures/a.bmp\" is incomplete.");
        Row(
            "extra field cut off", [](RawZip& zip) { zip.entries[0].extra = "\1\0\10"s; },
            "The archive is damaged: its list of contents is incomplete.");
        Row(
            "64-bit record missing", [](RawZip& zip) { zip.countBy = 0xffff - 2; },
            "The archive is damaged: a part of it is missing.");
        std::string contradicting = ArchiveOf([](RawZip&) {});
        constexpr std::size_t localChecksum = 14;
        contradicting[localChecksum] ^= 1;
        bytes("two checksums", contradicting, contradiction);
    }
};

TEST_CLASS(tst_HostileArchives)
#include "tst_HostileArchives.moc"
