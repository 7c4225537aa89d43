#include "core/FileOperations.h"
#include "support/PlainUser.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using std::filesystem::perms;

/// As long as it lives, no file can grow beyond `most` bytes: a write that would do so fails as on a full
/// disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t most) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limited{most, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

} // namespace

// What the system's own operations do beyond tst_FileOperations with links, pipes, modes, limits and
// processes.
class tst_PosixFileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void followed_links_leadToTheFile()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("real/inner");
        folder.Write("real/inner/file", "x");
        folder.MakeLink("folder link", folder.PathOf("real"));
        folder.MakeLink("real/second", "inner/file");
        folder.MakeLink("first", "folder link/second");
        QCOMPARE(m_operations->Followed(folder.PathOf("first")), folder.PathOf("real/inner/file"));
        QCOMPARE(m_operations->Followed(folder.PathOf("folder link/inner/file")),
                 folder.PathOf("real/inner/file"));
        QCOMPARE(m_operations->Followed(folder.PathOf("real/inner/file")), folder.PathOf("real/inner/file"));
    }

    void followed_noSuchFile_isNoError()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("real");
        folder.MakeLink("folder link", "real");
        folder.MakeLink("dangling", "real/new");
        QCOMPARE(m_operations->Followed(folder.PathOf("new")), folder.PathOf("new"));
        QCOMPARE(m_operations->Followed(folder.PathOf("folder link/new")), folder.PathOf("real/new"));
        QCOMPARE(m_operations->Followed(folder.PathOf("dangling")), folder.PathOf("real/new"));
        QCOMPARE(m_operations->Followed(folder.PathOf("gone/new")), folder.PathOf("gone/new"));
    }

    void followed_linkToItself_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.MakeLink("circle", "circle");
        folder.MakeLink("one", "other");
        folder.MakeLink("other", "one");
        QCOMPARE(RaisedNumber([&] { m_operations->Followed(folder.PathOf("circle")); }), 75);
        QCOMPARE(RaisedNumber([&] { m_operations->Followed(folder.PathOf("one")); }), 75);
    }

    void checkReplaceable_anythingElse_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        folder.MakeFolder("folder");
        folder.MakePipe("pipe");
        for (const char* name : {"folder", "pipe", "file/below"}) {
            QCOMPARE(RaisedNumber([&] { m_operations->CheckReplaceable(folder.PathOf(name)); }), 75);
        }
    }

    void checkReplaceable_fileThatMayNotBeWritten_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        std::filesystem::permissions(ToPath(folder.PathOf("file")), perms::owner_read);
        const PlainUser user(folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        QCOMPARE(RaisedNumber([&] { m_operations->CheckReplaceable(folder.PathOf("file")); }), 75);
    }

    void create_withModel_takesItsMode()
    {
        const TemporaryFolder folder;
        folder.Write("model", "x");
        std::filesystem::permissions(ToPath(folder.PathOf("model")), perms::owner_read | perms::others_write);
        m_operations->Create(folder.PathOf("new"), folder.PathOf("model"))->Close();
        QCOMPARE(std::filesystem::status(ToPath(folder.PathOf("new"))).permissions(),
                 perms::owner_read | perms::others_write);
    }

    void create_withoutModel_takesTheUsualMode()
    {
        const TemporaryFolder folder;
        const mode_t before = ::umask(027);
        m_operations->Create(folder.PathOf("new"), folder.PathOf("no model"))->Close();
        ::umask(before);
        QCOMPARE(std::filesystem::status(ToPath(folder.PathOf("new"))).permissions(),
                 perms::owner_read | perms::owner_write | perms::group_read);
    }

    void create_linkInItsPlace_isNotFollowed()
    {
        const TemporaryFolder folder;
        folder.MakeLink("link", folder.PathOf("elsewhere"));
        QCOMPARE(RaisedNumber([&] { m_operations->Create(folder.PathOf("link"), folder.PathOf("none")); }),
                 58);
        QCOMPARE(folder.Names(), Texts{"link"});
    }

    void write_diskFull_takesWhatFitsThenFails()
    {
        const TemporaryFolder folder;
        const auto file = m_operations->Create(folder.PathOf("file"), folder.PathOf("none"));
        std::size_t taken = 0;
        int number = 0;
        {
            const FileSizeLimit limit(4);
            taken = file->Write("123456");
            number = RaisedNumber([&] { file->Write("56"); });
        }
        file->Sync();
        file->Close();
        QCOMPARE(static_cast<int>(taken), 4);
        QCOMPARE(number, 61);
        QCOMPARE(folder.Read("file"), "1234"s);
    }

    void write_beyondTheLimitOfTheFileSize_endsNoProgram()
    {
        const TemporaryFolder folder;
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            // as a program starts, with the system's own answer to the signal
            std::signal(SIGXFSZ, SIG_DFL);
            const auto operations = SystemFileOperations();
            const rlimit limited{4, RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &limited);
            const auto file = operations->Create(folder.PathOf("file"), folder.PathOf("none"));
            const int number = RaisedNumber([&] {
                file->Write("1234");
                file->Write("5");
            });
            const bool isTold = ::write(pipe[1], &number, sizeof number) == sizeof number;
            ::_exit(isTold ? 0 : 1);
        }
        ::close(pipe[1]);
        int number = 0;
        const ssize_t told =
            ::read(pipe[0], &number, sizeof number); // nothing once a signal has ended the child
        ::close(pipe[0]);
        QCOMPARE(::waitpid(child, nullptr, 0), child);
        QCOMPARE(told, static_cast<ssize_t>(sizeof number));
        QCOMPARE(number, 61);
    }

    void close_endsWithTheFile_closesNothingElse()
    {
        const TemporaryFolder folder;
        auto file = m_operations->Create(folder.PathOf("file"), folder.PathOf("none"));
        file->Close();
        const int other =
            ::open(folder.Path().c_str(), O_RDONLY | O_CLOEXEC); // takes the descriptor that is free
        file.reset();
        const bool isOpen = ::fcntl(other, F_GETFD) >= 0;
        ::close(other);
        QVERIFY(isOpen);
    }

    void isRunning_aProcess_untilItHasEnded()
    {
        QCOMPARE(m_operations->ProcessNumber(), static_cast<std::uint32_t>(::getpid()));
        QVERIFY(m_operations->IsRunning(m_operations->ProcessNumber()));
        QVERIFY(m_operations->IsRunning(1)); // of another user, for everybody but root
        const pid_t child = ::fork();
        if (child == 0) {
            ::pause();
            ::_exit(0);
        }
        QVERIFY(child > 0);
        QVERIFY(m_operations->IsRunning(static_cast<std::uint32_t>(child)));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        QVERIFY(!m_operations->IsRunning(static_cast<std::uint32_t>(child)));
    }

    void syncFolderOf_noSuchFolder_isPathNotFound()
    {
        const TemporaryFolder folder;
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolderOf(folder.PathOf("file")); }), 0);
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolderOf(folder.PathOf("gone/file")); }), 76);
        folder.Write("file", "x");
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolderOf(folder.PathOf("file/below")); }), 75);
        QCOMPARE(RaisedNumber([&] { m_operations->SyncFolderOf("bare name"); }), 0);
    }

    void append_diskFull_isDiskFull()
    {
        const TemporaryFolder folder;
        int number = 0;
        {
            const FileSizeLimit limit(4);
            number = RaisedNumber([&] { m_operations->Append(folder.PathOf("log"), "123456"); });
        }
        QCOMPARE(number, 61);
    }

    void append_noRegularFile_isPathFileAccess_data()
    {
        QTest::addColumn<std::string>("name");
        QTest::newRow("folder") << "folder"s;
        QTest::newRow("pipe") << "pipe"s;
    }

    void append_noRegularFile_isPathFileAccess()
    {
        QFETCH(std::string, name);
        const TemporaryFolder folder;
        folder.MakeFolder("folder");
        folder.MakePipe("pipe");
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf(name), "x"); }), 75);
    }

    void append_fileThatMayNotBeWritten_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("log", "old");
        std::filesystem::permissions(ToPath(folder.PathOf("log")), perms::owner_read);
        const PlainUser user(folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("log"), "x"); }), 75);
        QCOMPARE(folder.Read("log"), "old"s);
    }

private:
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
};

TEST_CLASS(tst_PosixFileOperations)
#include "tst_PosixFileOperations.moc"
