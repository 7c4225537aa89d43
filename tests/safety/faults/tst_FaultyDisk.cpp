// Makes every system call of a save fail with every possible error.

#include "safety/faults/FaultyLog.h"
#include "support/TestClass.h"

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Tarno;

namespace
{

constexpr int always = 1'000'000;

/// The object of the preloaded library, or null if the library is not loaded.
FaultyDisk* const disk = static_cast<FaultyDisk*>(::dlsym(RTLD_DEFAULT, "faultyDisk"));

void Heal()
{
    disk->times = 0;
}

std::vector<int> ErrorsOf(const std::string& call)
{
    std::vector<int> errors{ENOSPC, EDQUOT, EIO,    EACCES, EPERM,   EROFS,  EXDEV, EOPNOTSUPP,
                            ENOSYS, ENOLCK, ENOMEM, EBUSY,  ETXTBSY, EAGAIN, EINTR, EINVAL};
    if (call == "write") {
        errors.insert(errors.end(), {ShortWrite, NothingWritten});
    }
    return errors;
}

/// Returns the error that is reported after an error of a system call.
ErrorNumber NumberOf(const std::string& call, int error)
{
    return call == "access"          ? ErrorNumber::PathFileAccess
           : error == NothingWritten ? ErrorNumber::DiskFull
                                     : ErrorOf({error, std::generic_category()}).Number();
}

/// Returns whether the number of these calls depends on the extended attributes of the file.
bool IsCallPerAttribute(const std::string& call)
{
    return call == "getxattr" || call == "fsetxattr";
}

} // namespace

class tst_FaultyDisk : public QObject
{
    Q_OBJECT

public:
    /// Starts this program again with the library preloaded.
    static void initMain()
    {
        if (std::getenv("LD_PRELOAD") != nullptr) {
            return;
        }
        ::setenv("LD_PRELOAD", TARNO_FAULTY_DISK, 1);
        std::ifstream file("/proc/self/cmdline");
        std::string words{std::istreambuf_iterator<char>(file), {}};
        std::vector<char*> arguments;
        for (std::size_t at = 0; at < words.size(); at = words.find('\0', at) + 1) {
            arguments.push_back(&words[at]);
        }
        arguments.push_back(nullptr);
        ::execv("/proc/self/exe", arguments.data());
    }

private Q_SLOTS:

    void initTestCase() { QVERIFY(disk != nullptr); }

    void save_makesTheSystemCallsInSaveSteps()
    {
        static Texts calls;
        FaultyLog log;
        Texts expected;
        for (const SaveStep& step : saveSteps) {
            if (step.name != "remove") {
                log.operations.Before(step.name, [&] {
                    calls.push_back(step.name + ':');
                    disk->record = [](const char* call) { calls.emplace_back(call); };
                });
                expected.push_back(step.name + ':');
                for (const SystemCall& call : step.calls) {
                    expected.push_back(call.name);
                }
            }
        }
        QCOMPARE(log.Save(1, "changed"), succeeded);
        disk->record = nullptr;
        std::erase_if(calls, IsCallPerAttribute);
        std::erase_if(expected, IsCallPerAttribute);
        QCOMPARE(calls, expected);
    }

    void everyCall_leavesTheOldBytesOrTheNewOnes()
    {
        for (const SaveStep& step : saveSteps) {
            std::map<std::string, int> before; // calls of each name
            for (const SystemCall& call : step.calls) {
                for (const int error : ErrorsOf(call.name)) {
                    CheckCall(step, call, before[call.name], error, 1);
                    if (error != EINTR) { // interrupted calls are repeated
                        CheckCall(step, call, before[call.name], error, always);
                    }
                    if (QTest::currentTestFailed()) {
                        QFAIL((step.name + ", " + call.name + ", error " + std::to_string(error)).c_str());
                    }
                }
                ++before[call.name];
            }
        }
    }

    void changedFile_everyCallThatReadsIt_losesNothingOfEitherSide()
    {
        for (const char* call : {"stat", "read"}) {
            for (int before = 0, failures = 1; failures > 0 && !QTest::currentTestFailed(); ++before) {
                FaultyLog log;
                log.values[3] = "changed by another program";
                log.folder.Write(log.family.file, log.FileOf(log.values));
                log.operations.Before("create", Heal);
                CheckSaves(
                    log, std::nullopt, 1,
                    [&] { *disk = {.call = call, .error = EIO, .before = before, .times = 1}; }, Heal);
                failures = disk->failures;
                QVERIFY2(failures > 0 || before > 0, "the call is not made");
            }
        }
    }

    void fileSizeLimit_isDiskFull()
    {
        FaultyLog log;
        rlimit usual{};
        ::getrlimit(RLIMIT_FSIZE, &usual);
        const rlimit low{10, usual.rlim_max};
        // the program ignores the signal that would otherwise end it
        CheckSaves(
            log, Outcome{Fails, ErrorNumber::DiskFull}, 1, [&] { ::setrlimit(RLIMIT_FSIZE, &low); },
            [&] { ::setrlimit(RLIMIT_FSIZE, &usual); });
        ::setrlimit(RLIMIT_FSIZE, &usual);
    }

private:
    /// Makes `call` fail `times` times during `step`, after `before` successful calls of the same name.
    static void CheckCall(const SaveStep& step, const SystemCall& call, int before, int error, int times)
    {
        FaultyLog log;
        ::setxattr(log.folder.PathOf(log.family.file).c_str(), "user.origin", "pier", 4, 0); // if possible
        const ErrorNumber number = NumberOf(call.name, error);
        const bool isHarmless = std::count(call.harmless.begin(), call.harmless.end(), error) > 0 ||
                                (step.IsRetried() && number == ErrorNumber::PermissionDenied);
        std::optional<Outcome> expected;
        if (step.name == "remove") {
            log.operations.Fail("replace", ErrorNumber::PathNotFound);
            expected = {Fails, ErrorNumber::PathNotFound, 1};
        } else if (times == 1) { // a lasting fault would hit the same call in later steps
            expected = {isHarmless ? GoesUnnoticed : call.effect, number};
        }
        *disk = {};
        const auto inject = [&] {
            *disk = {.call = call.name.c_str(), .error = error, .before = before, .times = times};
        };
        CheckSaves(
            log, expected, times == 1 || step.name == "remove" ? 1 : 2,
            [&] { log.operations.Before(step.name, inject, step.before); }, Heal);
        QVERIFY2(disk->failures > 0 || IsCallPerAttribute(call.name), "the call is not made");
    }
};

TEST_CLASS(tst_FaultyDisk)
#include "tst_FaultyDisk.moc"
