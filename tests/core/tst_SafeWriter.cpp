#include "core/Paths.h"
#include "core/SafeWriter.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

#include <chrono>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using std::filesystem::perms;

} // namespace

class tst_SafeWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<TemporaryFolder>();
        m_operations = std::make_unique<ScriptedFileOperations>();
    }

    void cleanup()
    {
        m_operations.reset();
        m_folder.reset();
    }

    void write_existingFile_isReplacedStepByStep()
    {
        m_folder->Write("tarno.xml", "the old and longer bytes");
        QCOMPARE(WriteError("new\r\n\0bytes"s), 0);
        QCOMPARE(m_folder->Read("tarno.xml"), "new\r\n\0bytes"s);
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml"});
        QCOMPARE(m_operations->Steps(), (Texts{"get state", "create", "replace", "sync folder"}));
        QVERIFY(m_operations->Created().starts_with(m_folder->PathOf("tarno.xml.")));
        QVERIFY(m_operations->Created().ends_with(SafeWriter::temporarySuffix));
    }

    void write_newFile_isCreated()
    {
        QCOMPARE(WriteError("new", "sn\u0101pper log.pdf"), 0);
        QCOMPARE(WriteError("", "empty"), 0);
        QCOMPARE(m_folder->Read("sn\u0101pper log.pdf"), "new"s);
        QCOMPARE(m_folder->Names(), (Texts{"empty", "sn\u0101pper log.pdf"}));
    }

    void write_stepFails_leavesOldBytesAndNoTemporary_data()
    {
        QTest::addColumn<std::string>("step");
        for (const char* step : {"get state", "create", "replace"}) {
            QTest::newRow(step) << std::string(step);
        }
    }

    void write_stepFails_leavesOldBytesAndNoTemporary()
    {
        QFETCH(std::string, step);
        m_folder->Write("tarno.xml", "old");
        m_operations->Fail(step, ErrorNumber::DeviceInputOutput);
        QCOMPARE(WriteError("new"), 57);
        QCOMPARE(m_folder->Read("tarno.xml"), "old"s);
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml"});
        QCOMPARE(WriteError("new"), 0);
        QCOMPARE(m_folder->Read("tarno.xml"), "new"s);
    }

    void write_truncatedTemporary_isDiskFull()
    {
        m_folder->Write("tarno.xml", "old");
        m_operations->LoseLastByte();
        QCOMPARE(WriteError("new bytes"), 61);
        QCOMPARE(m_folder->Read("tarno.xml"), "old"s);
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml"});
    }

    void write_cleanupFailsToo_reportsTheFirstFailure()
    {
        m_folder->Write("tarno.xml", "old");
        m_operations->Fail("replace", ErrorNumber::DiskFull);
        m_operations->Fail("remove", ErrorNumber::PathFileAccess);
        QCOMPARE(WriteError("new"), 61);
        QCOMPARE(m_folder->Read("tarno.xml"), "old"s);
    }

    void write_folderSyncFails_isReportedAfterTheReplacement()
    {
        m_folder->Write("tarno.xml", "old");
        m_operations->Fail("sync folder", ErrorNumber::DeviceInputOutput);
        QCOMPARE(WriteError("new"), 57);
        QCOMPARE(m_folder->Read("tarno.xml"), "new"s);
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml"});
    }

    void write_fileHeldBriefly_isReplacedOnceReleased()
    {
        m_folder->Write("tarno.xml", "old");
        m_operations->Fail("replace", ErrorNumber::PermissionDenied, 3);
        QCOMPARE(WriteError("new"), 0);
        QCOMPARE(m_operations->Count("pause"), 3);
        QCOMPARE(m_folder->Read("tarno.xml"), "new"s);
    }

    void write_fileKeptHeld_isPermissionDeniedAfterOneSecond()
    {
        m_folder->Write("tarno.xml", "old");
        m_operations->Fail("replace", ErrorNumber::PermissionDenied, ScriptedFileOperations::always);
        QCOMPARE(WriteError("new"), 70);
        QCOMPARE(m_operations->Count("replace"), 100);
        QCOMPARE(m_folder->Read("tarno.xml"), "old"s);
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml"});
    }

    void write_symbolicLink_staysALink_data()
    {
        QTest::addColumn<bool>("isRelative");
        QTest::newRow("absolute") << false;
        QTest::newRow("relative") << true;
    }

    void write_symbolicLink_staysALink()
    {
        NOT_ON_WINDOWS("links");
        QFETCH(bool, isRelative);
        m_folder->MakeFolder("sync");
        m_folder->Write("sync/tarno.xml", "old");
        m_folder->MakeLink("tarno.xml", isRelative ? "sync/tarno.xml" : m_folder->PathOf("sync/tarno.xml"));
        QCOMPARE(WriteError("new"), 0);
        QVERIFY(std::filesystem::is_symlink(ToPath(m_folder->PathOf("tarno.xml"))));
        QVERIFY(!std::filesystem::is_symlink(ToPath(m_folder->PathOf("sync/tarno.xml"))));
        QCOMPARE(m_folder->Read("sync/tarno.xml"), "new"s);
        QVERIFY(m_operations->Created().starts_with(m_folder->PathOf("sync/")));
    }

    void write_danglingLink_createsItsTarget()
    {
        NOT_ON_WINDOWS("links");
        m_folder->MakeFolder("sync");
        m_folder->MakeLink("tarno.xml", "sync/tarno.xml");
        m_folder->MakeLink("Rpt.xml", "gone/Rpt.xml");
        QCOMPARE(WriteError("new"), 0);
        QCOMPARE(WriteError("new", "Rpt.xml"), 76);
        QCOMPARE(m_folder->Read("sync/tarno.xml"), "new"s);
        QCOMPARE(m_folder->Names(), (Texts{"Rpt.xml", "sync", "tarno.xml"}));
        for (const char* name : {"Rpt.xml", "tarno.xml"}) {
            QVERIFY(std::filesystem::is_symlink(ToPath(m_folder->PathOf(name))));
        }
    }

    void write_targetIsNotAFile_isPathFileAccess()
    {
        NOT_ON_WINDOWS("links and pipes");
        m_folder->MakeFolder("folder");
        m_folder->MakePipe("pipe");
        m_folder->MakeLink("circle", "circle");
        m_folder->Write("file", "old");
        for (const char* name : {"folder", "pipe", "circle", "file/tarno.xml"}) {
            QCOMPARE(WriteError("new", name), 75);
        }
        QCOMPARE(m_folder->Names(), (Texts{"circle", "file", "folder", "pipe"}));
        QVERIFY(std::filesystem::is_fifo(ToPath(m_folder->PathOf("pipe"))));
        QVERIFY(std::filesystem::is_symlink(ToPath(m_folder->PathOf("circle"))));
        QCOMPARE(m_operations->Created(), ""s);
    }

    void write_missingFolder_isPathNotFound()
    {
        QCOMPARE(WriteError("new", "gone/tarno.xml"), 76);
        QCOMPARE(m_folder->Names(), Texts());
    }

    void write_readOnlyFileOrFolder_isPathFileAccess()
    {
        m_folder->MakeFolder("closed");
        m_folder->Write("closed/tarno.xml", "old");
        m_folder->Write("tarno.xml", "old");
        std::filesystem::permissions(ToPath(m_folder->PathOf("tarno.xml")), perms::owner_read);
        std::filesystem::permissions(ToPath(m_folder->PathOf("closed")),
                                     perms::owner_read | perms::owner_exec);
        const UnprivilegedUser user(*m_folder);
        if (UnprivilegedUser::IsUnprivileged()) {
            QCOMPARE(WriteError("new"), 75);
            QCOMPARE(WriteError("new", "closed/tarno.xml"), 75);
            QCOMPARE(m_folder->Read("tarno.xml"), "old"s);
            QCOMPARE(m_folder->Read("closed/tarno.xml"), "old"s);
        }
        std::filesystem::permissions(ToPath(m_folder->PathOf("closed")), perms::owner_all);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
    }

    void replace_expectedState_returnsTheNewOne()
    {
        m_folder->Write("tarno.xml", "old");
        const std::string path = m_folder->PathOf("tarno.xml");
        const auto written = SafeWriter(*m_operations).Replace(path, "new", m_operations->GetState(path));
        QVERIFY(written.has_value());
        QVERIFY(*written == m_operations->GetState(path));
        QCOMPARE(m_operations->Count("sync folder"), 0);
    }

    void replace_fileChangedByAnotherProgram_changesNothing()
    {
        m_folder->Write("tarno.xml", "old");
        const std::string path = m_folder->PathOf("tarno.xml");
        const FileState expected = m_operations->GetState(path);
        m_operations->Before("get state", [&] { m_folder->Write("tarno.xml", "other"); });
        QVERIFY(!SafeWriter(*m_operations).Replace(path, "new", expected));
        QCOMPARE(m_folder->Read("tarno.xml"), "other"s);
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml"});

        QVERIFY(!SafeWriter(*m_operations).Replace(path, "new", FileState()));
        QCOMPARE(m_folder->Read("tarno.xml"), "other"s);
    }

    void lock_heldBriefly_isWaitedFor()
    {
        FolderLock held = SystemFileOperations()->Lock(m_folder->Path());
        m_operations->Before(
            "pause", [&] { held.reset(); }, 4);
        QVERIFY(SafeWriter(*m_operations).LockFolder(m_folder->Path()) != nullptr);
        QCOMPARE(m_operations->Count("pause"), 5);
    }

    void lock_keptHeld_isPermissionDeniedAfterTenSeconds()
    {
        const FolderLock held = SystemFileOperations()->Lock(m_folder->Path());
        QCOMPARE(RaisedNumber([&] { SafeWriter(*m_operations).LockFolder(m_folder->Path()); }), 70);
        QCOMPARE(m_operations->Count("lock"), 1000);
    }

    void removeStaleTemporaries_removesOnlyTemporariesOfTheFile()
    {
        Texts left{"field.xml.12.tarno-tmp",  "tarno.xml",           "tarno.xml-12.tarno-tmp",
                   "tarno.xml..tarno-tmp",    "tarno.xml.12",        "tarno.xml.12.tmp",
                   "tarno.xml.12a.tarno-tmp", "tarno.xml.tarno-tmp", "tarno.xml.a.tarno-tmp",
                   "xtarno.xml.12.tarno-tmp"};
        for (const std::string& name : left) {
            m_folder->Write(name, "mine");
        }
        for (const char* stale : {"0", "4294967295", "4711-12", "4711-12-17999999999999999999"}) {
            m_folder->Write("tarno.xml."s + stale + ".tarno-tmp", "half");
        }
        left.emplace_back("tarno.xml.1.tarno-tmp");
        m_folder->MakeFolder(left.back());
        if constexpr (!isWindows) {
            left.emplace_back("tarno.xml.2.tarno-tmp");
            m_folder->MakeLink(left.back(), "tarno.xml");
        }
        RemoveStaleTemporaries();
        std::sort(left.begin(), left.end());
        QCOMPARE(m_folder->Names(), left);
    }

    void removeStaleTemporaries_noTemporaries_takesNoLock()
    {
        m_folder->Write("tarno.xml", "log");
        RemoveStaleTemporaries();
        QCOMPARE(m_operations->Steps(), Texts());
        SafeWriter(*m_operations).RemoveStaleTemporaries(m_folder->PathOf("gone/tarno.xml"));
    }

    void removeStaleTemporaries_whileAnotherProgramSaves_keepsItsTemporary()
    {
        m_folder->Write("tarno.xml.12.tarno-tmp", "half");
        FolderLock held = SystemFileOperations()->Lock(m_folder->Path());
        RemoveStaleTemporaries();
        QVERIFY(std::filesystem::exists(ToPath(m_folder->PathOf("tarno.xml.12.tarno-tmp"))));
        held.reset();
        RemoveStaleTemporaries();
        QCOMPARE(m_folder->Names(), Texts());
    }

    void removeOldTemporaries_removesThoseWithThePrefix()
    {
        const auto write = [&](const char* name, int hours) {
            m_folder->Write(name, "half");
            std::filesystem::last_write_time(ToPath(m_folder->PathOf(name)),
                                             std::filesystem::file_time_type::clock::now() -
                                                 std::chrono::hours(hours));
        };
        write("draft-1.xml.12.tarno-tmp", 2);
        write("draft-1.xml.13.tarno-tmp", 0);
        write("draft-1.xml", 2);
        write("other.xml.12.tarno-tmp", 2);
        SafeWriter(*m_operations).RemoveOldTemporaries(m_folder->Path(), "draft-");
        QCOMPARE(m_folder->Names(),
                 (Texts{"draft-1.xml", "draft-1.xml.13.tarno-tmp", "other.xml.12.tarno-tmp"}));
        SafeWriter(*m_operations).RemoveOldTemporaries(m_folder->PathOf("gone"), "draft-");
    }

    void removeStaleTemporaries_withoutLocks_keepsTemporariesYoungerThanAnHour()
    {
        using namespace std::chrono_literals;
        for (const auto& [name, age] :
             {std::pair("tarno.xml.1.tarno-tmp", 50min), {"tarno.xml.2.tarno-tmp", 70min}}) {
            m_folder->Write(name, "half");
            std::filesystem::last_write_time(ToPath(m_folder->PathOf(name)),
                                             std::filesystem::file_time_type::clock::now() - age);
        }
        m_operations->DisableLocks();
        RemoveStaleTemporaries();
        QCOMPARE(m_folder->Names(), Texts{"tarno.xml.1.tarno-tmp"});
    }

    void removeStaleTemporaries_oneCannotBeRemoved_removesTheOthers()
    {
        m_folder->Write("tarno.xml.1.tarno-tmp", "half");
        m_folder->Write("tarno.xml.2.tarno-tmp", "half");
        m_operations->Fail("remove", ErrorNumber::PathFileAccess);
        RemoveStaleTemporaries();
        QCOMPARE(m_folder->Names().size(), std::size_t{1});
    }

private:
    /// Writes the file and returns the number of the error, or 0.
    int WriteError(std::string_view bytes, const std::string& name = "tarno.xml")
    {
        return RaisedNumber([&] { SafeWriter(*m_operations).Write(m_folder->PathOf(name), bytes); });
    }

    void RemoveStaleTemporaries()
    {
        SafeWriter(*m_operations).RemoveStaleTemporaries(m_folder->PathOf("tarno.xml"));
    }

    std::unique_ptr<TemporaryFolder> m_folder;
    std::unique_ptr<ScriptedFileOperations> m_operations;
};

TEST_CLASS(tst_SafeWriter)
#include "tst_SafeWriter.moc"
