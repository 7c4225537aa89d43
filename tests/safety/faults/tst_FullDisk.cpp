// Disks that are really full or removed: file systems in memory that only this process sees.

#include "backup/LogFolder.h"
#include "safety/faults/FaultyLog.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"
#include "support/UnsavedFiles.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace Tarno;

namespace
{

constexpr std::size_t page = 4096; // in bytes

/// Whether this process can mount file systems of its own, which vanish when it ends.
bool hasOwnFileSystems = false;

/// Moves a log to a disk of 32 pages.
class SmallDisk
{
public:
    explicit SmallDisk(FaultyLog& log) : m_log(log)
    {
        Require(::mount("tarno", m_disk.Path().c_str(), "tmpfs", 0, "size=128k") == 0);
        for (const std::string& name : log.folder.Names()) {
            m_disk.Write(name, log.folder.Read(name));
            std::filesystem::remove(ToPath(log.folder.PathOf(name)));
        }
        Mount();
        log.sql.Init();
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    ~SmallDisk()
    {
        Unmount();
        ::umount2(m_disk.Path().c_str(), MNT_DETACH);
    }

    /// Makes the disk available as the folder of the log.
    void Mount() const
    {
        Require(::mount(m_disk.Path().c_str(), m_log.folder.Path().c_str(), nullptr, MS_BIND, nullptr) == 0);
    }

    /// Removes the disk, so that the folder of the log is empty.
    void Unmount() const { Require(::umount2(m_log.folder.Path().c_str(), MNT_DETACH) == 0); }

    /// Fills the disk until `left` pages are free.
    void FillUntil(std::size_t left) const
    {
        const auto space = std::filesystem::space(ToPath(m_disk.Path()));
        m_disk.Write("other files", std::string(space.available - left * page, 'x'));
    }

    void Clear() const { std::filesystem::remove(ToPath(m_disk.PathOf("other files"))); }

private:
    static void Require(bool isDone)
    {
        if (!isDone) {
            qFatal("the disk cannot be set up");
        }
    }

    FaultyLog& m_log;
    TemporaryFolder m_disk;
};

/// A disk of 32 pages.
struct EmptyDisk {
    EmptyDisk()
    {
        if (::mount("tarno", folder.Path().c_str(), "tmpfs", 0, "size=128k") != 0) {
            qFatal("the disk cannot be set up");
        }
    }

    EmptyDisk(const EmptyDisk&) = delete;
    EmptyDisk& operator=(const EmptyDisk&) = delete;

    ~EmptyDisk() { ::umount2(folder.Path().c_str(), MNT_DETACH); }

    TemporaryFolder folder;
};

} // namespace

class tst_FullDisk : public QObject
{
    Q_OBJECT

public:
    /// Creates a mount namespace, which is possible only while the process has a single thread.
    static void initMain()
    {
        const std::string user = std::to_string(::geteuid());
        const std::string group = std::to_string(::getegid());
        hasOwnFileSystems = ::unshare(CLONE_NEWNS) == 0;
        if (!hasOwnFileSystems && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
            std::ofstream("/proc/self/setgroups") << "deny";
            std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
            std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
            hasOwnFileSystems = true;
        }
        hasOwnFileSystems =
            hasOwnFileSystems && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }

private Q_SLOTS:

    void initTestCase()
    {
        if (!hasOwnFileSystems) {
            QSKIP("this machine does not allow mounting a file system");
        }
    }

    void fullDisk_leavesTheOldBytes_andTheNextSaveWritesAll()
    {
        for (const std::size_t pages : {1, 2, 5}) {
            for (std::size_t left = 0; left <= pages; ++left) {
                FaultyLog log;
                log.values[3] = std::string(pages * page - page / 2, 'x');
                log.folder.Write(log.family.file, log.FileOf(log.values));
                const SmallDisk disk(log);
                CheckSaves(
                    log, Outcome{left < pages ? Fails : GoesUnnoticed, ErrorNumber::DiskFull}, 1,
                    [&] { disk.FillUntil(left); }, [&] { disk.Clear(); });
            }
        }
    }

    void removedDisk_nothingIsWrittenElsewhere_andTheNextSaveWritesAll()
    {
        FaultyLog log;
        const SmallDisk disk(log);
        const std::string old = log.OnDisk();
        disk.Unmount();
        QCOMPARE(log.Save(1, "changed"), failed);
        const std::string words = "Vb<76> error raised\r\nThe folder of tarno.xml is no longer the one that";
        QVERIFY(log.reported.at(0).find(words) != std::string::npos);
        QCOMPARE(log.folder.Names(), Texts());
        QCOMPARE(UnsavedFiles(log.sql), Texts{"tarno.xml"});
        disk.Mount();
        QCOMPARE(log.OnDisk(), old);
        QCOMPARE(log.Save(2, "changed later"), succeeded);
        QCOMPARE(log.OnDisk(), log.FileOf(log.values));
        QCOMPARE(UnsavedFiles(log.sql), Texts());
    }

    void archiveOnAFullDisk_leavesNoFile()
    {
        const EmptyDisk disk;
        const auto operations = SystemFileOperations();
        ArchiveWriter writer(*operations);
        writer.AddBytes("pictures/a.jpg", std::string(50 * page, 'x')); // is stored
        QCOMPARE(RaisedNumber([&] { writer.Write(disk.folder.PathOf("a.zip")); }), 61);
        QVERIFY(disk.folder.Names().empty());
    }

    void restoreOnAFullDisk_leavesNoFile()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.folder.Write("pictures/snapper.png", std::string(50 * page, 'x'));
        const TemporaryFolder target;
        log.BackUpTo(target.PathOf("b.zip"));
        const EmptyDisk disk;
        const ProgramFolder folder(disk.folder.PathOf("log"));
        QCOMPARE(RaisedNumber([&] {
                     RestoreBackUp(target.PathOf("b.zip"), folder, log.operations, testTime, "Tarno");
                 }),
                 61);
        QVERIFY(ContentsOfFolder(disk.folder.Path()).empty());
        QVERIFY(FinishRestore(folder, log.operations) == FinishedRestore::Nothing);
    }
};

TEST_CLASS(tst_FullDisk)
#include "tst_FullDisk.moc"
