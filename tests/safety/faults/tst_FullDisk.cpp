// A disk that is really full: a file system of 64 KiB in memory, which only this program sees.

#include "core/ErrorLog.h"
#include "core/SettingsFile.h"
#include "safety/Form.h"
#include "store/RecordFamily.h"
#include "support/RaisedNumber.h"
#include "support/ScriptedClock.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Whether this program has got file systems of its own, which vanish with it.
bool hasOwnFileSystems = false;

/// Works only while the process has a single thread.
void TakeOwnFileSystems()
{
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    hasOwnFileSystems = ::unshare(CLONE_NEWNS) == 0;
    if (!hasOwnFileSystems && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
        std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
        hasOwnFileSystems = true;
    }
    hasOwnFileSystems =
        hasOwnFileSystems && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

constexpr std::size_t page = 4096;
constexpr std::size_t pages = 16;

std::size_t PagesOf(std::size_t bytes)
{
    return (bytes + page - 1) / page;
}

/// A folder on a disk of its own of 16 pages.
class SmallDisk
{
public:
    SmallDisk()
    {
        m_mounted = ::mount("tarno", m_folder.Path().c_str(), "tmpfs", 0, "size=64k") == 0;
        if (!m_mounted) {
            QTest::qFail("no disk could be mounted", __FILE__, __LINE__);
        }
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    ~SmallDisk()
    {
        if (m_mounted) {
            ::umount2(m_folder.Path().c_str(), MNT_DETACH);
        }
    }

    const TemporaryFolder& Folder() const { return m_folder; }

    /// The pages that are free.
    std::size_t Free() const
    {
        struct statvfs status {
        };

        ::statvfs(m_folder.Path().c_str(), &status);
        return status.f_bavail * status.f_bsize / page;
    }

    /// Fills the disk until `left` pages are free; whether that is possible.
    bool FillUntil(std::size_t left) const
    {
        if (Free() < left) {
            return false;
        }
        m_folder.Write("other files", std::string((Free() - left) * page, 'x'));
        return Free() == left;
    }

    void Clear() const { std::filesystem::remove(ToPath(m_folder.PathOf("other files"))); }

private:
    TemporaryFolder m_folder;
    bool m_mounted = false;
};

const RecordFamily& Entries()
{
    return RecordFamilies().front();
}

/// A file of one entry which is `size` bytes long.
std::string FileOfSize(std::size_t size, char letter)
{
    const std::size_t frame = RecordFamily::File({Entries().Made("1", "")}).size();
    return RecordFamily::File({Entries().Made("1", std::string(size - frame, letter))});
}

/// Takes what the error reporter shows.
class Shown
{
public:
    Shown()
    {
        ErrorReporter::Instance().SetShowMessage(
            [this](const std::string& text, const std::string& /*title*/) { texts.push_back(text); });
    }

    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

    ~Shown() { ErrorReporter::Instance().Reset(); }

    Texts texts;
};

const std::string diskFull =
    "An error has occurred in Tarno in cSQL.EntryUpdate\r\nVb<61> error raised\r\nDisk full";

/// The first entry gets a value with which its file is `size` bytes long.
Status SaveSize(cSQL& sql, std::size_t size, char letter)
{
    Record record;
    if (sql.EntryGet(1, record) != succeeded) {
        return failed;
    }
    const std::size_t frame = RecordFamily::File({Entries().Made("1", "")}).size();
    record.SetText(1, std::string(size - frame, letter));
    return sql.EntryUpdate(record);
}

} // namespace

class tst_FullDisk : public QObject
{
    Q_OBJECT

public:
    static void initMain() { TakeOwnFileSystems(); }

private Q_SLOTS:

    void initTestCase()
    {
        if (!hasOwnFileSystems) {
            QSKIP("this machine lets no program mount a disk of its own");
        }
    }

    void save_sizesAndSpaces_succeedsOrLeavesTheOldBytes_data()
    {
        QTest::addColumn<std::size_t>("oldSize");
        QTest::addColumn<std::size_t>("newSize");
        std::vector<std::size_t> sizes;
        for (std::size_t kibibytes = 1; kibibytes <= 60;
             kibibytes += static_cast<std::size_t>(Times(30, 3))) {
            sizes.push_back(kibibytes * 1024);
        }
        sizes.insert(sizes.end(), {page, page + 1, 8 * page + 1}); // about the edges of pages
        for (const std::size_t oldSize : sizes) {
            for (const std::size_t newSize : sizes) {
                QTest::addRow("%d over %d bytes", static_cast<int>(newSize), static_cast<int>(oldSize))
                    << oldSize << newSize;
            }
        }
    }

    void save_sizesAndSpaces_succeedsOrLeavesTheOldBytes()
    {
        QFETCH(std::size_t, oldSize);
        QFETCH(std::size_t, newSize);
        for (std::size_t left = 0; left <= pages; ++left) {
            const SmallDisk disk;
            disk.Folder().Write("tarno.xml", FileOfSize(oldSize, 'o'));
            if (!disk.FillUntil(left)) {
                break; // the old file leaves no more room
            }
            const Texts names = disk.Folder().Names();
            const ProgramFolder folder(disk.Folder().Path());
            const auto operations = SystemFileOperations();
            Shown shown;
            cSQL sql(folder, *operations);
            QCOMPARE(sql.Init(), succeeded);
            const bool fits = PagesOf(newSize) <= left;
            const Status told = SaveSize(sql, newSize, 'n');
            QCOMPARE(told, fits ? succeeded : failed);
            QCOMPARE(shown.texts, fits ? Texts() : Texts{diskFull});
            QVERIFY(disk.Folder().Read("tarno.xml") ==
                    (fits ? FileOfSize(newSize, 'n') : FileOfSize(oldSize, 'o')));
            QCOMPARE(disk.Folder().Names(), names);
            QCOMPARE(sql.UnsavedFiles().empty(), fits);
            ++(fits ? m_saved : m_refused);

            if (!fits) {
                disk.Clear();
                const bool fitsNow = PagesOf(newSize) <= disk.Free();
                QCOMPARE(SaveSize(sql, newSize, 'm'), fitsNow ? succeeded : failed);
                QVERIFY(disk.Folder().Read("tarno.xml") ==
                        (fitsNow ? FileOfSize(newSize, 'm') : FileOfSize(oldSize, 'o')));
                QCOMPARE(disk.Folder().Names(), Texts{"tarno.xml"});
            }
        }
    }

    void save_otherVersion_nothingOfEitherSideIsLost()
    {
        const std::size_t size = 2 * page;
        for (std::size_t left = 0; left <= 8; ++left) {
            const SmallDisk disk;
            disk.Folder().Write("tarno.xml", FileOfSize(size, 'o'));
            const ProgramFolder folder(disk.Folder().Path());
            const auto operations = SystemFileOperations();
            Shown shown;
            cSQL sql(folder, *operations);
            QCOMPARE(sql.Init(), succeeded);
            disk.Folder().Write("tarno.xml", FileOfSize(size, 't'));
            QVERIFY(disk.FillUntil(left));
            // two pages for the other version that is kept, two for ours
            const bool fits = left >= 4;
            QCOMPARE(SaveSize(sql, size, 'n'), fits ? succeeded : failed);
            if (!fits) {
                QVERIFY(disk.Folder().Read("tarno.xml") == FileOfSize(size, 't'));
                QCOMPARE(shown.texts.front(), diskFull);
                // the words about the version that is kept, if there was room for it
                QCOMPARE(static_cast<int>(shown.texts.size()), left >= 2 ? 2 : 1);
                QCOMPARE(sql.UnsavedFiles(), Texts{"tarno.xml"});
                disk.Clear();
                QCOMPARE(SaveSize(sql, size, 'n'), succeeded);
            }
            QVERIFY(disk.Folder().Read("tarno.xml") == FileOfSize(size, 'n'));
            QVERIFY(disk.Folder().Read("tarno-kept-1.xml") == FileOfSize(size, 't'));
            QVERIFY(!std::filesystem::exists(ToPath(disk.Folder().PathOf("tarno-kept-2.xml"))));
        }
    }

    void export_onAFullDisk_leavesTheOldFile()
    {
        const SmallDisk disk;
        disk.Folder().Write("report.pdf", "older");
        QVERIFY(disk.FillUntil(3));
        const auto operations = SystemFileOperations();
        const std::string path = disk.Folder().PathOf("report.pdf");
        const std::string report(4 * page, 'r');
        QCOMPARE(RaisedNumber([&] { SafeWriter(*operations).Write(path, report); }), 61);
        QCOMPARE(disk.Folder().Read("report.pdf"), "older"s);
        QCOMPARE(disk.Folder().Names(), (Texts{"other files", "report.pdf"}));
        disk.Clear();
        QCOMPARE(RaisedNumber([&] { SafeWriter(*operations).Write(path, report); }), 0);
        QVERIFY(disk.Folder().Read("report.pdf") == report);
    }

    void settings_onAFullDisk_stayAsTheyWere()
    {
        const SmallDisk disk;
        const auto operations = SystemFileOperations();
        SettingsFile settings(disk.Folder().PathOf("settings.xml"), *operations);
        settings.Write("Window", "Left", "100");
        const std::string before = disk.Folder().Read("settings.xml");
        QVERIFY(disk.FillUntil(0));
        settings.Write("Window", "Left", "200");
        settings.RemoveSection("Window");
        QCOMPARE(disk.Folder().Read("settings.xml"), before);
        QCOMPARE(disk.Folder().Names(), (Texts{"other files", "settings.xml"}));
        QCOMPARE(settings.Read("Window", "Left").value_or("none"), "100"s);
        disk.Clear();
        settings.Write("Window", "Left", "200");
        QCOMPARE(settings.Read("Window", "Left").value_or("none"), "200"s);
    }

    void errorLog_onAFullDisk_neitherHangsNorLosesTheMessage()
    {
        const SmallDisk disk;
        const ProgramFolder folder(disk.Folder().Path());
        const auto operations = SystemFileOperations();
        const ScriptedClock clock;
        Shown shown;
        ErrorReporter::Instance().SetLog(folder, *operations, clock);
        const Error error(ErrorNumber::DiskFull);
        const std::string old(page - 50, '.');
        disk.Folder().Write("Tarno.log", old);
        QVERIFY(disk.FillUntil(0));
        for (int message = 1; message <= 3; ++message) {
            ErrorLog("cSQL", "EntryUpdate", &error);
            QCOMPARE(shown.texts, Texts(static_cast<std::size_t>(message), diskFull));
        }
        // what there was room for, behind what stood there
        const std::string log = disk.Folder().Read("Tarno.log");
        QVERIFY(log.starts_with(old));
        QVERIFY(log.size() <= page);
        disk.Clear();
        ErrorLog("cSQL", "EntryUpdate", &error);
        QVERIFY(disk.Folder().Read("Tarno.log").ends_with("Vb<61> error raised\r\nDisk full\r\n"));
    }

    void limitOfTheFileSize_isToldAndLeavesTheOldBytes_data()
    {
        QTest::addColumn<bool>("ignored");
        QTest::newRow("signal ignored") << true;
        QTest::newRow("signal as it is") << false;
    }

    void limitOfTheFileSize_isToldAndLeavesTheOldBytes()
    {
        QFETCH(bool, ignored);
        const std::size_t size = 10000;
        for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, page, size - 1, size}) {
            const TemporaryFolder files;
            files.Write("tarno.xml", FileOfSize(size, 'o'));
            const pid_t child = ::fork();
            if (child == 0) {
                std::signal(SIGXFSZ, ignored ? SIG_IGN : SIG_DFL);
                const ProgramFolder folder(files.Path());
                const auto operations = SystemFileOperations();
                const Shown shown;
                cSQL sql(folder, *operations);
                sql.Init();
                const rlimit most{limit, RLIM_INFINITY};
                ::setrlimit(RLIMIT_FSIZE, &most);
                const Status told = SaveSize(sql, size, 'n');
                ::_exit(told == succeeded ? 0 : shown.texts == Texts{diskFull} ? 61 : 1);
            }
            int status = 0;
            QCOMPARE(::waitpid(child, &status, 0), child);
            QVERIFY2(WIFEXITED(status), "the limit has ended the program");
            const bool fits = limit >= size;
            QCOMPARE(WEXITSTATUS(status), fits ? 0 : 61);
            QVERIFY(files.Read("tarno.xml") == FileOfSize(size, fits ? 'n' : 'o'));
            QCOMPARE(files.Names(), Texts{"tarno.xml"});
        }
    }

    void cleanupTestCase() { qInfo("%d saves that fitted, %d that did not", m_saved, m_refused); }

private:
    int m_saved = 0;
    int m_refused = 0;
};

TEST_CLASS(tst_FullDisk)
#include "tst_FullDisk.moc"
