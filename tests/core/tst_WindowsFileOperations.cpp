#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"
#include "core/WindowsHandle.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <QProcess>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// The file as another program holds it, which shares it only for `share` (FILE_SHARE_READ and the like).
Handle Held(const std::string& path, DWORD share)
{
    return Handle(::CreateFileW(ToPath(path).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
}

constexpr DWORD shareReading = FILE_SHARE_READ | FILE_SHARE_WRITE;

std::wstring Native(const std::string& path)
{
    return ToPath(path).wstring();
}

} // namespace

// What the system's own operations do beyond tst_FileOperations with files that others hold, attributes, long
// paths and processes.
class tst_WindowsFileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void followed_isAPathAsOthers()
    {
        const TemporaryFolder folder;
        folder.Write("Tarno.XML", "x");
        const std::string followed = m_operations->Followed(folder.PathOf("tarno.xml"));
        QVERIFY2(followed.size() > 3 && followed.substr(1, 2) == ":\\", followed.c_str());
        QVERIFY2(followed.ends_with("\\Tarno.XML"), followed.c_str());
    }

    void checkReplaceable_readOnlyFile_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        const std::wstring path = Native(folder.PathOf("file"));
        QVERIFY(::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY) != 0);
        const int number = RaisedNumber([&] { m_operations->CheckReplaceable(folder.PathOf("file")); });
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        QCOMPARE(number, 75);
    }

    void replace_heldFile_isPermissionDenied_data() { AddShares(); }

    void replace_heldFile_isPermissionDenied()
    {
        QFETCH(DWORD, share);
        const TemporaryFolder folder;
        folder.Write("old", "old");
        folder.Write("new", "new");
        const auto replace = [&] { m_operations->Replace(folder.PathOf("new"), folder.PathOf("old")); };
        {
            const Handle held = Held(folder.PathOf("old"), share);
            QCOMPARE(RaisedNumber(replace), 70);
        }
        QCOMPARE(folder.Names(), (Texts{"new", "old"}));
        QCOMPARE(folder.Read("old"), "old"s);
        QCOMPARE(folder.Read("new"), "new"s);
        QCOMPARE(RaisedNumber(replace), 0);
        QCOMPARE(folder.Names(), Texts{"old"});
        QCOMPARE(folder.Read("old"), "new"s);
    }

    void exchange_heldFile_isPermissionDenied_data() { AddShares(); }

    void exchange_heldFile_isPermissionDenied()
    {
        QFETCH(DWORD, share);
        const TemporaryFolder folder;
        folder.Write("old", "old");
        folder.Write("new", "new");
        const auto exchange = [&] { m_operations->Exchange(folder.PathOf("new"), folder.PathOf("old")); };
        for (const char* name : {"old", "new"}) {
            const Handle held = Held(folder.PathOf(name), share);
            QCOMPARE(RaisedNumber(exchange), 70);
        }
        QCOMPARE(folder.Names(), (Texts{"new", "old"}));
        QCOMPARE(folder.Read("old"), "old"s);
        QCOMPARE(folder.Read("new"), "new"s);
        QCOMPARE(RaisedNumber(exchange), 0);
        QCOMPARE(folder.Read("old"), "new"s);
        QCOMPARE(folder.Read("new"), "old"s);
    }

    void exchange_fileThatIsRead_succeeds()
    {
        const TemporaryFolder folder;
        folder.Write("old", "old");
        folder.Write("new", "new");
        const Handle held = Held(folder.PathOf("old"), shareAll);
        QVERIFY(m_operations->Exchange(folder.PathOf("new"), folder.PathOf("old")));
        QCOMPARE(folder.Read("old"), "new"s);
        QCOMPARE(folder.Read("new"), "old"s);
        QCOMPARE(folder.Names(), (Texts{"new", "old"}));
    }

    void exchange_theWayOutIsBlocked_changesNothing()
    {
        const TemporaryFolder folder;
        folder.Write("old", "old");
        folder.Write("new", "new");
        folder.MakeFolder("new.out");
        QVERIFY(RaisedNumber([&] { m_operations->Exchange(folder.PathOf("new"), folder.PathOf("old")); }) !=
                0);
        QCOMPARE(folder.Names(), (Texts{"new", "new.out", "old"}));
        QCOMPARE(folder.Read("old"), "old"s);
        QCOMPARE(folder.Read("new"), "new"s);
    }

    void writeOver_heldFile_isPermissionDeniedAndWrittenTheNextTime_data() { AddShares(); }

    void writeOver_heldFile_isPermissionDeniedAndWrittenTheNextTime()
    {
        QFETCH(DWORD, share);
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        const auto write = [&] {
            SafeWriter(*m_operations)
                .WriteOver(folder.PathOf("tarno.xml"), "new", {SafeWriter::FingerprintOf("old")});
        };
        {
            const Handle held = Held(folder.PathOf("tarno.xml"), share);
            QCOMPARE(RaisedNumber(write), 70);
        }
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(RaisedNumber(write), 0);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
    }

    void remove_heldFile_isPermissionDenied()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        const Handle held = Held(folder.PathOf("file"), shareReading);
        QCOMPARE(RaisedNumber([&] { m_operations->Remove(folder.PathOf("file")); }), 70);
    }

    void append_heldFile_isPermissionDenied()
    {
        const TemporaryFolder folder;
        folder.Write("Tarno.log", "old");
        {
            const Handle held = Held(folder.PathOf("Tarno.log"), FILE_SHARE_READ);
            QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("Tarno.log"), "x"); }), 70);
        }
        QCOMPARE(folder.Read("Tarno.log"), "old"s);
    }

    void readWholeFile_heldFile_isPermissionDenied()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        {
            const Handle held = Held(folder.PathOf("file"), 0);
            QCOMPARE(RaisedNumber([&] { ReadWholeFile(folder.PathOf("file")); }), 70);
        }
        const Handle held = Held(folder.PathOf("file"), shareReading);
        QCOMPARE(ReadWholeFile(folder.PathOf("file")), "x"s);
    }

    void readWholeFile_device_isNoFile()
    {
        QCOMPARE(RaisedNumber([] { ReadWholeFile("NUL"); }), 75);
    }

    void isRunning_aProcess_untilItHasEnded()
    {
        QCOMPARE(m_operations->ProcessNumber(), static_cast<std::uint32_t>(::GetCurrentProcessId()));
        QVERIFY(m_operations->IsRunning(m_operations->ProcessNumber()));
        QProcess other;
        other.start(QStringLiteral("cmd.exe"), QStringList());
        QVERIFY(other.waitForStarted());
        const auto number = static_cast<std::uint32_t>(other.processId());
        QVERIFY(m_operations->IsRunning(number));
        other.kill();
        QVERIFY(other.waitForFinished(-1));
        QVERIFY(!m_operations->IsRunning(number));
    }

    void removeLeftovers_ofARunningProcess_stay()
    {
        const TemporaryFolder folder;
        QProcess other;
        other.start(QStringLiteral("cmd.exe"), QStringList());
        QVERIFY(other.waitForStarted());
        const std::string name = "tarno.xml." + std::to_string(other.processId()) + "-12.tarno-tmp";
        folder.Write(name, "half");
        SafeWriter writer(*m_operations);
        writer.RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names(), Texts{name});
        other.kill();
        QVERIFY(other.waitForFinished(-1));
        writer.RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names(), Texts());
    }

    void longPaths_areFilesAsOthers()
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
        QCOMPARE(ProgramFolder(folder.PathOf(name)).Existing("Tarno.xml"),
                 folder.PathOf(name + "/Tarno.xml"));
        SafeWriter writer(*m_operations);
        QCOMPARE(writer.WriteOver(path, "new", {SafeWriter::FingerprintOf("old")}), ""s);
        QCOMPARE(ReadWholeFile(path), "new"s);
        const std::string kept = writer.Keep(path, "other");
        QVERIFY2(kept.ends_with("tarno-kept-1.xml"), kept.c_str());
        QCOMPARE(ReadWholeFile(kept), "other"s);
    }

private:
    static void AddShares()
    {
        QTest::addColumn<DWORD>("share");
        QTest::newRow("by one who shares nothing") << DWORD{0};
        QTest::newRow("by one who lets others read and write") << shareReading;
    }

    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
};

TEST_CLASS(tst_WindowsFileOperations)
#include "tst_WindowsFileOperations.moc"
