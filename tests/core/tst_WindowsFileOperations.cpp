#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"
#include "core/WindowsHandle.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Opens the file like another program that shares it only for `share` (FILE_SHARE_READ and others).
Handle HoldOpen(const std::string& path, DWORD share)
{
    return Open(path, GENERIC_READ, share, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
}

constexpr DWORD shareReading = FILE_SHARE_READ | FILE_SHARE_WRITE;

std::wstring Native(const std::string& path)
{
    return ToPath(path).wstring();
}

/// Returns the bytes of the access list, or an empty text if it cannot be read.
std::string AccessListOf(const std::string& path)
{
    DWORD size = 0;
    ::GetFileSecurityW(Native(path).c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string list(size, '\0');
    const bool isRead =
        ::GetFileSecurityW(Native(path).c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size) != 0;
    return isRead ? list : std::string();
}

} // namespace

// The parts of FileOperations that are specific to Windows: files held by other programs, attributes, long
// paths and locks.
class tst_WindowsFileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void resolved_hasNoLongPathPrefix()
    {
        const TemporaryFolder folder;
        folder.Write("Tarno.XML", "x");
        const std::string resolved = Resolved(folder.PathOf("tarno.xml"));
        QVERIFY2(resolved.size() > 3 && resolved.substr(1, 2) == ":\\", resolved.c_str());
        QVERIFY2(resolved.ends_with("\\Tarno.XML"), resolved.c_str());
    }

    void getState_heldFile_isRead()
    {
        const TemporaryFolder folder;
        folder.Write("file", "12345");
        const FileState before = m_operations->GetState(folder.PathOf("file"));
        const Handle held = HoldOpen(folder.PathOf("file"), 0);
        QVERIFY(m_operations->GetState(folder.PathOf("file")) == before);
    }

    void getState_readOnlyFile_isNotReplaceable()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        const std::wstring path = Native(folder.PathOf("file"));
        QVERIFY(::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY) != 0);
        const FileState state = m_operations->GetState(folder.PathOf("file"));
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        QVERIFY(state.exists && !state.isReplaceable);
    }

    void create_copiesAttributesAndAccessListOfTheModel()
    {
        const TemporaryFolder folder;
        folder.Write("model", "x");
        QVERIFY(::SetFileAttributesW(Native(folder.PathOf("model")).c_str(), FILE_ATTRIBUTE_HIDDEN) != 0);
        m_operations->Create(folder.PathOf("new"), "new", folder.PathOf("model"));
        QVERIFY((::GetFileAttributesW(Native(folder.PathOf("new")).c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
        QCOMPARE(AccessListOf(folder.PathOf("new")), AccessListOf(folder.PathOf("model")));
        QVERIFY(!AccessListOf(folder.PathOf("model")).empty());
    }

    void replace_heldFile_isPermissionDeniedUntilReleased_data()
    {
        QTest::addColumn<DWORD>("share");
        QTest::newRow("by a program that shares nothing") << DWORD{0};
        QTest::newRow("by a program that shares reading and writing") << shareReading;
    }

    void replace_heldFile_isPermissionDeniedUntilReleased()
    {
        QFETCH(DWORD, share);
        const TemporaryFolder folder;
        folder.Write("old", "old");
        folder.Write("new", "new");
        const auto replace = [&] { m_operations->Replace(folder.PathOf("new"), folder.PathOf("old")); };
        for (const char* name : {"old", "new"}) {
            const Handle held = HoldOpen(folder.PathOf(name), share);
            QCOMPARE(RaisedNumber(replace), 70);
        }
        QCOMPARE(folder.Read("old"), "old"s);
        QCOMPARE(folder.Read("new"), "new"s);
        QCOMPARE(RaisedNumber(replace), 0);
        QCOMPARE(folder.Names(), Texts{"old"});
        QCOMPARE(folder.Read("old"), "new"s);
    }

    void lock_ofAKilledProcess_isReleased()
    {
        const TemporaryFolder folder;
        {
            const Handle held(
                Open(folder.PathOf("tarno.lock"), GENERIC_WRITE, 0, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE));
            QCOMPARE(RaisedNumber([&] { m_operations->Lock(folder.Path()); }), 70);
        }
        // a lock file left by a power failure
        folder.Write("tarno.lock", "");
        QVERIFY(m_operations->Lock(folder.Path()) != nullptr);
        QCOMPARE(folder.Names(), Texts());
    }

    void lock_missingFolder_isNull()
    {
        const TemporaryFolder folder;
        QVERIFY(m_operations->Lock(folder.PathOf("gone")) == nullptr);
    }

    void remove_heldFile_isPermissionDenied()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        const Handle held = HoldOpen(folder.PathOf("file"), shareReading);
        QCOMPARE(RaisedNumber([&] { m_operations->Remove(folder.PathOf("file")); }), 70);
    }

    void append_heldFile_isPermissionDenied()
    {
        const TemporaryFolder folder;
        folder.Write("Tarno.log", "old");
        {
            const Handle held = HoldOpen(folder.PathOf("Tarno.log"), FILE_SHARE_READ);
            QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("Tarno.log"), "x"); }), 70);
        }
        QCOMPARE(folder.Read("Tarno.log"), "old"s);
    }

    void readWholeFile_heldFile_isPermissionDenied()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        {
            const Handle held = HoldOpen(folder.PathOf("file"), 0);
            QCOMPARE(RaisedNumber([&] { ReadWholeFile(folder.PathOf("file")); }), 70);
        }
        const Handle held = HoldOpen(folder.PathOf("file"), shareReading);
        QCOMPARE(ReadWholeFile(folder.PathOf("file")), "x"s);
    }

    void readWholeFile_device_isPathFileAccess()
    {
        QCOMPARE(RaisedNumber([] { ReadWholeFile("NUL"); }), 75);
    }

    void longPaths_areSupported()
    {
        const TemporaryFolder folder;
        std::string name = "Mein Angelbuch \u00FCber alles";
        while (folder.PathOf(name).size() < 300) {
            name += "/" + std::string(50, 'x');
        }
        folder.MakeFolder(name);
        const std::string path = folder.PathOf(name + "/tarno.xml");
        folder.Write(name + "/tarno.xml", "old");
        QCOMPARE(ReadWholeFile(path), "old"s);
        std::string given = path;
        QVERIFY(mMain::FileExist(given));
        QCOMPARE(ProgramFolder(folder.PathOf(name)).FindPath("Tarno.xml"),
                 folder.PathOf(name + "/Tarno.xml"));
        SafeWriter writer(*m_operations);
        const FolderLock lock = writer.LockFolder(FolderOf(path));
        QVERIFY(lock != nullptr);
        writer.Write(path, "new");
        QCOMPARE(ReadWholeFile(path), "new"s);
    }

private:
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
};

TEST_CLASS(tst_WindowsFileOperations)
#include "tst_WindowsFileOperations.moc"
