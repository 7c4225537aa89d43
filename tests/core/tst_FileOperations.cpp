#include "core/FileOperations.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <chrono>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

} // namespace

// The operations of the system, as used by the safe writer and the error log.
class tst_FileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void getState_describesFileFolderAndMissingPath()
    {
        const TemporaryFolder folder;
        folder.Write("file", "12345");
        const FileState file = m_operations->GetState(folder.PathOf("file"));
        QVERIFY(file.exists && file.isReplaceable);
        QCOMPARE(file.size, std::uint64_t{5});
        const FileState inside = m_operations->GetState(folder.Path());
        QVERIFY(inside.exists && !inside.isReplaceable);
        for (const char* name : {"none", "gone/none"}) {
            QVERIFY(m_operations->GetState(folder.PathOf(name)) == FileState());
        }
    }

    void getState_changesWithEveryChangeOfTheFile()
    {
        const TemporaryFolder folder;
        const std::string path = folder.PathOf("file");
        folder.Write("file", "12345");
        const FileState before = m_operations->GetState(path);
        QVERIFY(m_operations->GetState(path) == before);

        std::filesystem::last_write_time(ToPath(path), std::filesystem::last_write_time(ToPath(path)) +
                                                           std::chrono::seconds(1));
        const FileState touched = m_operations->GetState(path);
        QVERIFY(touched != before);
        QVERIFY(touched.IsSameFile(before));

        const auto time = std::filesystem::last_write_time(ToPath(path));
        folder.Write("file", "123456");
        std::filesystem::last_write_time(ToPath(path), time);
        const FileState longer = m_operations->GetState(path);
        QVERIFY(longer != touched);
        QVERIFY(longer.IsSameFile(before));

        folder.Write("other", "123456");
        std::filesystem::last_write_time(ToPath(folder.PathOf("other")), time);
        std::filesystem::rename(ToPath(folder.PathOf("other")), ToPath(path));
        const FileState replaced = m_operations->GetState(path);
        QVERIFY(replaced != longer);
        QVERIFY(!replaced.IsSameFile(before));
    }

    void getState_folder_isIdentifiedRegardlessOfItsContents()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("log");
        const FileState before = m_operations->GetState(folder.PathOf("log"));
        folder.Write("log/file", "x");
        QVERIFY(m_operations->GetState(folder.PathOf("log")).IsSameFile(before));
        std::filesystem::rename(ToPath(folder.PathOf("log")), ToPath(folder.PathOf("away")));
        folder.MakeFolder("log");
        QVERIFY(!m_operations->GetState(folder.PathOf("log")).IsSameFile(before));
        QVERIFY(m_operations->GetState(folder.PathOf("away")).IsSameFile(before));
        QVERIFY(!m_operations->GetState(folder.PathOf("gone")).IsSameFile(FileState()));
    }

    void create_newFile_returnsItsState()
    {
        const TemporaryFolder folder;
        const std::string bytes = "\r\n\0 bytes"s;
        const FileState made = m_operations->Create(folder.PathOf("file"), bytes, folder.PathOf("no model"));
        QVERIFY(made == m_operations->GetState(folder.PathOf("file")));
        QCOMPARE(folder.Read("file"), bytes);
    }

    void create_existingFile_isFileAlreadyExistsAndUnchanged()
    {
        const TemporaryFolder folder;
        folder.Write("file", "old");
        QCOMPARE(
            RaisedNumber([&] { m_operations->Create(folder.PathOf("file"), "new", folder.PathOf("file")); }),
            58);
        QCOMPARE(folder.Read("file"), "old"s);
    }

    void replace_keepsTheStateOfTheNewFile()
    {
        const TemporaryFolder folder;
        folder.Write("to", "old");
        const FileState made = m_operations->Create(folder.PathOf("from"), "new", folder.PathOf("to"));
        m_operations->Replace(folder.PathOf("from"), folder.PathOf("to"));
        QCOMPARE(folder.Names(), Texts{"to"});
        QCOMPARE(folder.Read("to"), "new"s);
        QVERIFY(m_operations->GetState(folder.PathOf("to")) == made);
        QCOMPARE(RaisedNumber([&] { m_operations->Replace(folder.PathOf("none"), folder.PathOf("to")); }),
                 76);
        QCOMPARE(folder.Read("to"), "new"s);
    }

    void remove_deletesTheFile()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        m_operations->Remove(folder.PathOf("file"));
        QCOMPARE(folder.Names(), Texts());
        QCOMPARE(RaisedNumber([&] { m_operations->Remove(folder.PathOf("file")); }), 76);
    }

    void makeAndRemoveFolder_oneLevelAndEmptyOnly()
    {
        const TemporaryFolder folder;
        QCOMPARE(RaisedNumber([&] { m_operations->MakeFolder(folder.PathOf("a/b")); }), 76);
        m_operations->MakeFolder(folder.PathOf("a"));
        m_operations->MakeFolder(folder.PathOf("a/b"));
        QCOMPARE(RaisedNumber([&] { m_operations->MakeFolder(folder.PathOf("a")); }), 58);
        QVERIFY(RaisedNumber([&] { m_operations->RemoveFolder(folder.PathOf("a")); }) != 0);
        m_operations->RemoveFolder(folder.PathOf("a/b"));
        m_operations->RemoveFolder(folder.PathOf("a"));
        QVERIFY(folder.Names().empty());
        QCOMPARE(RaisedNumber([&] { m_operations->RemoveFolder(folder.PathOf("a")); }), 76);
    }

    void syncFile_keepsTheFile()
    {
        const TemporaryFolder folder;
        folder.Write("file", "bytes");
        m_operations->SyncFile(folder.PathOf("file"));
        QCOMPARE(folder.Read("file"), std::string("bytes"));
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFile(folder.PathOf("none")); }), 76);
    }

    void lock_folder_isExclusiveAndLeavesNoFile()
    {
        const TemporaryFolder folder;
        FolderLock lock = m_operations->Lock(folder.Path());
        QVERIFY(lock != nullptr);
        QCOMPARE(RaisedNumber([&] { m_operations->Lock(folder.Path()); }), 70);
        const TemporaryFolder other;
        QVERIFY(m_operations->Lock(other.Path()) != nullptr);
        lock.reset();
        QCOMPARE(folder.Names(), Texts());
        QVERIFY(m_operations->Lock(folder.Path()) != nullptr);
    }

    void pause_takesTenMilliseconds()
    {
        const auto before = std::chrono::steady_clock::now();
        for (int pause = 0; pause < 5; ++pause) {
            m_operations->Pause();
        }
        // only a lower limit: a pause that returns immediately would busy-wait
        QVERIFY(std::chrono::steady_clock::now() - before >= std::chrono::milliseconds(45));
    }

    void append_createsOrExtendsTheFile()
    {
        const TemporaryFolder folder;
        m_operations->Append(folder.PathOf("log"), "one\r\n");
        m_operations->Append(folder.PathOf("log"), "");
        m_operations->Append(folder.PathOf("log"), "two\r\n");
        QCOMPARE(folder.Read("log"), "one\r\ntwo\r\n"s);
    }

    void append_folderOrMissingFolder_isAnError()
    {
        const TemporaryFolder folder;
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.Path(), "x"); }), 75);
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("gone/log"), "x"); }), 76);
    }

private:
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
};

TEST_CLASS(tst_FileOperations)
#include "tst_FileOperations.moc"
