// Writing and reading archives.

#include "backup/Archive.h"
#include "core/SafeWriter.h"
#include "support/PeakMemory.h"
#include "support/Platform.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Names = std::vector<std::string>;

/// An archive of some entries and the folder in which it is written.
struct Archive {
    Archive()
    {
        folder.Write("photo.jpg", photo);
        folder.Write("scan.bmp", scan);
        folder.Write("empty.jpg", "");
        writer.AddBytes("tarno.xml", "<data />\n");
        writer.AddBytes("nothing.xml", "");
        writer.AddFile("pictures/caf\u00e9.jpg", folder.PathOf("photo.jpg"));
        writer.AddFile("pictures/scan.bmp", folder.PathOf("scan.bmp"));
        writer.AddFile("pictures/empty.jpg", folder.PathOf("empty.jpg"));
    }

    std::string Path() const { return folder.PathOf("a.zip"); }

    /// Whether the folder contains nothing but the pictures.
    bool IsUntouched() const { return folder.Names() == Names{"empty.jpg", "photo.jpg", "scan.bmp"}; }

    TemporaryFolder folder;
    std::string photo = std::string(100'000, '\0') + "photo";
    std::string scan = std::string(300'000, 's');
    ScriptedFileOperations operations;
    ArchiveWriter writer{operations};
};

} // namespace

class tst_Archive : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void written_isReadAgain()
    {
        Archive archive;
        std::vector<double> reports;
        archive.writer.Write(archive.Path(), [&](double done) {
            reports.push_back(done);
            return true;
        });
        const ArchiveReader reader(archive.Path());
        Names names;
        for (const ArchiveEntry& entry : reader.Entries()) {
            names.push_back(entry.name);
        }
        QCOMPARE(names, (Names{"tarno.xml", "nothing.xml", "pictures/caf\u00e9.jpg", "pictures/scan.bmp",
                               "pictures/empty.jpg"}));
        QCOMPARE(reader.ReadBytes(*reader.Find("tarno.xml")), "<data />\n"s);
        QCOMPARE(reader.ReadBytes(*reader.Find("nothing.xml")), ""s);
        QVERIFY(reader.ReadBytes(*reader.Find("pictures/caf\u00e9.jpg")) == archive.photo);
        QVERIFY(reader.ReadBytes(*reader.Find("pictures/scan.bmp")) == archive.scan);
        QVERIFY(reader.Find("TARNO.XML") == nullptr);
        // the photo is stored, the scan is compressed
        const auto size = archive.operations.GetState(archive.Path()).size;
        QVERIFY(size > archive.photo.size() && size < archive.photo.size() + 10'000);
        QVERIFY(std::is_sorted(reports.begin(), reports.end()));
        QCOMPARE(reports.back(), 1.0);
        QCOMPARE(archive.folder.Names(), (Names{"a.zip", "empty.jpg", "photo.jpg", "scan.bmp"}));
    }

    void withoutProgressAndEntries_isWritten()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        ArchiveWriter writer(operations);
        writer.AddBytes("a", "b");
        writer.Write(folder.PathOf("a.zip"));
        QCOMPARE(ArchiveReader(folder.PathOf("a.zip")).Entries().size(), std::size_t(1));
    }

    void largePictures_needNoMemory()
    {
        constexpr int megabytes = 40;
        Archive archive;
        const std::string megabyte(1 << 20, 'p');
        for (const char* name : {"large.jpg", "large.bmp"}) {
            archive.folder.Write(name, "");
            for (int count = 0; count < megabytes; ++count) {
                archive.operations.Append(archive.folder.PathOf(name), megabyte);
            }
            archive.writer.AddFile(std::string("pictures/") + name, archive.folder.PathOf(name));
        }
        const std::size_t before = PeakMegabytes();
        archive.writer.Write(archive.Path());
        const ArchiveReader reader(archive.Path());
        std::uint64_t size = 0;
        reader.Read(*reader.Find("pictures/large.bmp"),
                    [&](std::string_view block) { size += block.size(); });
        QCOMPARE(size, std::uint64_t(megabytes) << 20U);
        QVERIFY2(PeakMegabytes() - before < megabytes / 2, std::to_string(PeakMegabytes() - before).c_str());
    }

    void manyEntries_areReadAgain()
    {
        constexpr int count = 66'000; // more than 16 bits hold
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        ArchiveWriter writer(operations);
        for (int number = 0; number < count; ++number) {
            writer.AddBytes("pictures/" + std::to_string(number), "");
        }
        writer.Write(folder.PathOf("a.zip"));
        const ArchiveReader reader(folder.PathOf("a.zip"));
        QCOMPARE(static_cast<int>(reader.Entries().size()), count);
        QCOMPARE(reader.Entries().back().name, "pictures/" + std::to_string(count - 1));
    }

    void cancelledAnywhere_leavesNoFile()
    {
        int reports = 0;
        {
            Archive archive;
            archive.writer.Write(archive.Path(), [&](double) { return ++reports > 0; });
        }
        QVERIFY(reports > 5);
        for (int cancelAt = 0; cancelAt < reports; ++cancelAt) {
            Archive archive;
            int count = 0;
            QVERIFY_THROWS_EXCEPTION(
                Cancelled, archive.writer.Write(archive.Path(), [&](double) { return count++ < cancelAt; }));
            QVERIFY(archive.IsUntouched());
        }
    }

    void failedStep_leavesNoFile_data()
    {
        QTest::addColumn<std::string>("step");
        QTest::addColumn<int>("before");
        for (const char* step : {"get state", "sync file", "replace"}) {
            QTest::newRow(step) << std::string(step) << 0;
        }
        QTest::newRow("second get state") << "get state"s << 1;
    }

    void failedStep_leavesNoFile()
    {
        QFETCH(std::string, step);
        QFETCH(int, before);
        Archive archive;
        archive.operations.Fail(step, ErrorNumber::DiskFull, 1, before);
        QVERIFY_THROWS_EXCEPTION(Error, archive.writer.Write(archive.Path()));
        QVERIFY(archive.IsUntouched());
    }

    void failedWrite_keepsTheOldFile()
    {
        Archive archive;
        archive.folder.Write("a.zip", "old");
        archive.operations.Fail("replace", ErrorNumber::PathFileAccess);
        QVERIFY_THROWS_EXCEPTION(Error, archive.writer.Write(archive.Path()));
        QCOMPARE(archive.folder.Read("a.zip"), "old"s);
    }

    void changedAfterWriting_isNoticed()
    {
        Archive archive;
        archive.operations.Before("sync file", [&] {
            for (const std::string& name : archive.folder.Names()) {
                if (name.ends_with(SafeWriter::temporarySuffix)) {
                    std::string bytes = archive.folder.Read(name);
                    bytes[bytes.find("photo")] ^= 1;
                    archive.folder.Write(name, bytes);
                }
            }
        });
        QVERIFY_THROWS_EXCEPTION(ArchiveProblem, archive.writer.Write(archive.Path()));
        QVERIFY(archive.IsUntouched());
    }

    void missingPicture_failsWithoutFile()
    {
        Archive archive;
        archive.writer.AddFile("pictures/none.jpg", archive.folder.PathOf("none.jpg"));
        QVERIFY_THROWS_EXCEPTION(Error, archive.writer.Write(archive.Path()));
        QVERIFY(archive.IsUntouched());
    }

    void missingFolder_isReported()
    {
        Archive archive;
        try {
            archive.writer.Write(archive.folder.PathOf("none/a.zip"));
            QFAIL("written to a folder that does not exist");
        } catch (const Error& error) {
            QCOMPARE(error.Number(), ErrorNumber::PathNotFound);
        }
    }

    void unreadableArchive_isReported()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("folder");
        QVERIFY_THROWS_EXCEPTION(Error, ArchiveReader(folder.PathOf("none.zip")));
        QVERIFY_THROWS_EXCEPTION(Error, ArchiveReader(folder.PathOf("folder")));
    }
};

TEST_CLASS(tst_Archive)
#include "tst_Archive.moc"
