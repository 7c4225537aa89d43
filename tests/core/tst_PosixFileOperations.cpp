#include "core/FileOperations.h"
#include "core/SafeWriter.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

#include <array>
#include <csignal>
#include <linux/limits.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using std::filesystem::perms;

constexpr const char* accessList = "system.posix_acl_access";

/// Returns "user::rw-, user:`user`:rw-, group::---, mask::rw-, other::---" in the format of the kernel.
std::string AccessListFor(std::uint32_t user)
{
    constexpr std::uint16_t readWrite = 6;

    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };

    constexpr std::uint32_t nobody = 0xFFFFFFFF;
    const std::array<Entry, 5> entries{{{0x01, readWrite, nobody},
                                        {0x02, readWrite, user},
                                        {0x04, 0, nobody},
                                        {0x10, readWrite, nobody},
                                        {0x20, 0, nobody}}};
    return "\x02\0\0\0"s + std::string(reinterpret_cast<const char*>(entries.data()), sizeof entries);
}

std::string Attribute(const std::string& path, const char* name)
{
    std::string value(XATTR_SIZE_MAX, '\0');
    const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
    return size < 0 ? "none"s : value.substr(0, static_cast<std::size_t>(size));
}

bool SetAttribute(const std::string& path, const char* name, const std::string& value)
{
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

struct stat StatusOf(const std::string& path)
{
    struct stat status {
    };

    ::stat(path.c_str(), &status);
    return status;
}

} // namespace

// The parts of FileOperations that are specific to POSIX: pipes, access rights and limits.
class tst_PosixFileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void getState_pipeOrReadOnlyFile_isNotReplaceable()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        folder.MakePipe("pipe");
        QVERIFY(!m_operations->GetState(folder.PathOf("pipe")).isReplaceable);
        QCOMPARE(RaisedNumber([&] { m_operations->GetState(folder.PathOf("file/below")); }), 75);
        std::filesystem::permissions(ToPath(folder.PathOf("file")), perms::owner_read);
        const UnprivilegedUser user(folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        QVERIFY(!m_operations->GetState(folder.PathOf("file")).isReplaceable);
    }

    void create_copiesTheModeOfTheModel_data()
    {
        QTest::addColumn<int>("mode");
        for (const int mode : {0600, 0660, 0666, 0755, 0402}) {
            QTest::addRow("%o", mode) << mode;
        }
    }

    void create_copiesTheModeOfTheModel()
    {
        QFETCH(int, mode);
        const TemporaryFolder folder;
        folder.Write("model", "x");
        std::filesystem::permissions(ToPath(folder.PathOf("model")), static_cast<perms>(mode));
        m_operations->Create(folder.PathOf("new"), "x", folder.PathOf("model"));
        QCOMPARE(static_cast<int>(StatusOf(folder.PathOf("new")).st_mode & 07777U), mode);
    }

    void create_withoutModel_usesTheDefaultMode()
    {
        const TemporaryFolder folder;
        const mode_t before = ::umask(027);
        m_operations->Create(folder.PathOf("new"), "x", folder.PathOf("no model"));
        ::umask(before);
        QCOMPARE(static_cast<int>(StatusOf(folder.PathOf("new")).st_mode & 07777U), 0640);
    }

    void create_copiesOwnerAndGroupOfTheModel()
    {
        if (::geteuid() != 0) {
            QSKIP("only root can change the owner of files");
        }
        const TemporaryFolder folder;
        folder.Write("model", "x");
        QCOMPARE(::chown(folder.PathOf("model").c_str(), 4711, 4712), 0);
        std::filesystem::permissions(ToPath(folder.PathOf("model")), static_cast<perms>(0664));
        m_operations->Create(folder.PathOf("new"), "x", folder.PathOf("model"));
        const auto status = StatusOf(folder.PathOf("new"));
        QCOMPARE(status.st_uid, uid_t{4711});
        QCOMPARE(status.st_gid, gid_t{4712});
        QCOMPARE(static_cast<int>(status.st_mode & 07777U), 0664);
    }

    void create_groupThatCannotBeSet_getsNoRights()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("log");
        folder.Write("model", "x");
        std::filesystem::permissions(ToPath(folder.PathOf("model")), static_cast<perms>(0664));
        const UnprivilegedUser user(folder);
        if (!UnprivilegedUser::IsUnprivileged() || ::getegid() != 0) {
            QSKIP("needs the group of root for the user nobody");
        }
        // the process has the group of root, the file the group of "nobody"
        m_operations->Create(folder.PathOf("log/new"), "x", folder.PathOf("model"));
        QCOMPARE(static_cast<int>(StatusOf(folder.PathOf("log/new")).st_mode & 07777U), 0604);
    }

    void create_copiesAttributesAndAccessListOfTheModel()
    {
        const TemporaryFolder folder;
        const std::string model = folder.PathOf("model");
        folder.Write("model", "x");
        if (!SetAttribute(model, "user.place", "Old Pier\0\xFF"s) ||
            !SetAttribute(model, accessList, AccessListFor(4711))) {
            QSKIP("this file system has no extended attributes or access lists");
        }
        m_operations->Create(folder.PathOf("new"), "x", model);
        QCOMPARE(Attribute(folder.PathOf("new"), "user.place"), "Old Pier\0\xFF"s);
        QCOMPARE(Attribute(folder.PathOf("new"), accessList), AccessListFor(4711));
        QCOMPARE(StatusOf(folder.PathOf("new")).st_mode, StatusOf(model).st_mode);
    }

    void create_defaultAccessListOfTheFolder_isNotApplied()
    {
        const TemporaryFolder folder;
        folder.Write("model", "x");
        std::filesystem::permissions(ToPath(folder.PathOf("model")), static_cast<perms>(0640));
        if (!SetAttribute(folder.Path(), "system.posix_acl_default", AccessListFor(4711))) {
            QSKIP("this file system has no access lists");
        }
        m_operations->Create(folder.PathOf("new"), "x", folder.PathOf("model"));
        QCOMPARE(Attribute(folder.PathOf("new"), accessList), "none"s);
        QCOMPARE(static_cast<int>(StatusOf(folder.PathOf("new")).st_mode & 07777U), 0640);
    }

    void create_existingLink_isNotFollowed()
    {
        const TemporaryFolder folder;
        folder.MakeLink("link", folder.PathOf("elsewhere"));
        QCOMPARE(
            RaisedNumber([&] { m_operations->Create(folder.PathOf("link"), "x", folder.PathOf("none")); }),
            58);
        QCOMPARE(folder.Names(), Texts{"link"});
    }

    // in a child process that starts with the default action of the signal
    void write_beyondTheFileSizeLimit_isDiskFullAndDoesNotKillTheProcess()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        const pid_t child = ::fork();
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_DFL);
            const auto operations = SystemFileOperations();
            const rlimit limited{4, RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &limited);
            const auto write = [&] { SafeWriter(*operations).Write(folder.PathOf("tarno.xml"), "12345"); };
            const auto append = [&] { operations->Append(folder.PathOf("Tarno.log"), "12345"); };
            ::_exit(RaisedNumber(write) == 61 && RaisedNumber(append) == 61 ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), (Texts{"Tarno.log", "tarno.xml"}));
    }

    void syncFolder_missingFolderOrFile_isAnError()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolder(folder.Path()); }), 0);
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolder(folder.PathOf("gone")); }), 76);
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolder(folder.PathOf("file")); }), 75);
    }

    void lock_ofAKilledProcess_isReleased()
    {
        const TemporaryFolder folder;
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const FolderLock lock = m_operations->Lock(folder.Path());
            const bool isWritten = ::write(pipe[1], "x", 1) == 1;
            ::pause();
            ::_exit(isWritten ? 0 : 1);
        }
        char received = '\0';
        QCOMPARE(::read(pipe[0], &received, 1), ssize_t{1});
        QCOMPARE(RaisedNumber([&] { m_operations->Lock(folder.Path()); }), 70);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ::close(pipe[0]);
        ::close(pipe[1]);
        QVERIFY(m_operations->Lock(folder.Path()) != nullptr);
    }

    void append_notARegularFile_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.MakePipe("pipe");
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("pipe"), "x"); }), 75);
    }

    void append_readOnlyFile_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("log", "old");
        std::filesystem::permissions(ToPath(folder.PathOf("log")), perms::owner_read);
        const UnprivilegedUser user(folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("log"), "x"); }), 75);
        QCOMPARE(folder.Read("log"), "old"s);
    }

private:
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
};

TEST_CLASS(tst_PosixFileOperations)
#include "tst_PosixFileOperations.moc"
