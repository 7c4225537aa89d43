#include "core/ErrorLog.h"
#include "support/Platform.h"
#include "support/ScriptedClock.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

#ifndef Q_OS_WIN
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const Error objectNotSet(ErrorNumber::ObjectNotSet);

const std::string rule = "---------------------------------------------------------------\r\n";

const std::string recordOfEntryGet = rule + "5/02/2003 9:07 PM\r\n"
                                            "Module = cSQL, Routine = EntryGet\r\n"
                                            "Vb<91> error raised\r\n"
                                            "Object variable or With block variable not set\r\n";

const std::string messageOfEntryGet = "An error has occurred in Tarno in cSQL.EntryGet\r\n"
                                      "Vb<91> error raised\r\n"
                                      "Object variable or With block variable not set";

} // namespace

class tst_ErrorLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<TemporaryFolder>();
        m_programFolder = std::make_unique<ProgramFolder>(m_folder->Path());
        m_operations = std::make_unique<ScriptedFileOperations>();
        m_shown.clear();
        m_clock.shortTime = "9:07 PM";
        ErrorReporter::Instance().SetLog(*m_programFolder, *m_operations, m_clock);
        ErrorReporter::Instance().SetShowMessage([this](const std::string& text, const std::string& title) {
            m_shown.push_back(title);
            m_shown.push_back(text);
        });
    }

    void cleanup()
    {
        ErrorReporter::Instance().Reset();
        m_operations.reset();
    }

    void error_isLoggedAndShownVerbatim()
    {
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_folder->Names(), Texts{"Tarno.log"});
        QCOMPARE(m_folder->Read("Tarno.log"), recordOfEntryGet);
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void repeatedError_isLoggedButNotShown()
    {
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_folder->Read("Tarno.log"),
                 recordOfEntryGet + recordOfEntryGet + "(Message not shown)\r\n\r\n");
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void repeatedError_isShownAgainAfterAnotherOne()
    {
        const Error diskFull(ErrorNumber::DiskFull);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        ErrorLog("cSQL", "EntryGet", &diskFull);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_shown.size(), 6U);
        QCOMPARE(m_shown.back(), messageOfEntryGet);
    }

    void repeatedError_isShownAgainOnceAllowed()
    {
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        ErrorReporter::Instance().AllowRepetition();
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet, "Tarno Error", messageOfEntryGet}));
    }

    void errors_areAppended()
    {
        m_folder->Write("Tarno.log", "earlier records\r\n");
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        m_clock.shortTime = "9:08 PM";
        const Error missing(ErrorNumber::FileNotFound);
        ErrorLog("fTarno", "LoadEntryList", &missing);
        QCOMPARE(m_folder->Read("Tarno.log"), "earlier records\r\n" + recordOfEntryGet + rule +
                                                  "5/02/2003 9:08 PM\r\n"
                                                  "Module = fTarno, Routine = LoadEntryList\r\n"
                                                  "Vb<53> error raised\r\n"
                                                  "File not found\r\n");
    }

    void error_withMessage_logsBothAndShowsTheError()
    {
        ErrorLog("cSQL", "EntryGet", &objectNotSet, "while the tide turned");
        QCOMPARE(m_folder->Read("Tarno.log"), recordOfEntryGet + "while the tide turned\r\n");
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void noError_withMessage_logsAndShowsTheMessage()
    {
        ErrorLog("fEntry", "cmdSave_Click", nullptr, "nothing to save");
        QCOMPARE(m_folder->Read("Tarno.log"), rule + "5/02/2003 9:07 PM\r\n"
                                                     "Module = fEntry, Routine = cmdSave_Click\r\n"
                                                     "nothing to save\r\n");
        QCOMPARE(m_shown, (Texts{"Tarno Error", "An error has occurred in Tarno in fEntry.cmdSave_Click\r\n"
                                                "nothing to save"}));
    }

    void noError_noMessage_logsAndShowsTheRoutineOnly()
    {
        ErrorLog("mMain", "FileExist", nullptr);
        QCOMPARE(m_folder->Read("Tarno.log"), rule + "5/02/2003 9:07 PM\r\n"
                                                     "Module = mMain, Routine = FileExist\r\n");
        QCOMPARE(m_shown, (Texts{"Tarno Error", "An error has occurred in Tarno in mMain.FileExist\r\n"}));
    }

    void notShown_isOnlyLoggedWithANote()
    {
        ErrorReporter::Instance().Report("mMain", "ShellSort", "Vb<9> error raised\r\nSubscript out of range",
                                         "the table was short", false);
        QCOMPARE(m_folder->Read("Tarno.log"), rule + "5/02/2003 9:07 PM\r\n"
                                                     "Module = mMain, Routine = ShellSort\r\n"
                                                     "Vb<9> error raised\r\n"
                                                     "Subscript out of range\r\n"
                                                     "(Message not shown)\r\n"
                                                     "the table was short\r\n");
        QCOMPARE(m_shown, Texts());
    }

    void log_nameInOtherCase_isAppendedTo()
    {
        m_folder->Write("TARNO.LOG", "old\r\n");
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_folder->Names(), Texts{"TARNO.LOG"});
        QCOMPARE(m_folder->Read("TARNO.LOG"), "old\r\n" + recordOfEntryGet);
    }

    void log_heldByAnotherProcess_isWaitedFor()
    {
        m_operations->Fail("append", ErrorNumber::PermissionDenied, 3);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_operations->Steps(),
                 (Texts{"append", "pause", "append", "pause", "append", "pause", "append"}));
        QCOMPARE(m_folder->Read("Tarno.log"), recordOfEntryGet);
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void log_otherFailure_isTriedOnceAndSkipped_data()
    {
        QTest::addColumn<ErrorNumber>("number");
        QTest::newRow("not writable") << ErrorNumber::PathFileAccess;
        QTest::newRow("missing path") << ErrorNumber::PathNotFound;
        QTest::newRow("disk full") << ErrorNumber::DiskFull;
        QTest::newRow("device error") << ErrorNumber::DeviceInputOutput;
    }

    void log_otherFailure_isTriedOnceAndSkipped()
    {
        QFETCH(ErrorNumber, number);
        m_operations->Fail("append", number);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_operations->Steps(), Texts{"append"});
        QCOMPARE(m_folder->Names(), Texts());
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void log_notARegularFile_isSkippedAtOnce_data()
    {
        QTest::addColumn<bool>("pipe");
        QTest::newRow("folder") << false;
        QTest::newRow("pipe") << true;
    }

    void log_notARegularFile_isSkippedAtOnce()
    {
        QFETCH(bool, pipe);
        if (pipe) {
            NOT_ON_WINDOWS("pipes");
            m_folder->MakePipe("Tarno.log");
        } else {
            m_folder->MakeFolder("Tarno.log");
        }
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_operations->Steps(), Texts{"append"});
        QCOMPARE(m_folder->Names(), Texts{"Tarno.log"});
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void log_pipeWithAReader_isNotWrittenTo()
    {
        NOT_ON_WINDOWS("pipes");
#ifndef Q_OS_WIN
        m_folder->MakePipe("Tarno.log");
        const int reader = ::open(m_folder->PathOf("Tarno.log").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        QVERIFY(reader >= 0);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        char byte = 0;
        const ssize_t received = ::read(reader, &byte, 1);
        ::close(reader);
        QCOMPARE(static_cast<int>(received), 0);
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
#endif
    }

    void log_inAReadOnlyFolder_isSkipped()
    {
        std::filesystem::permissions(ToPath(m_folder->Path()),
                                     std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
        {
            const UnprivilegedUser user(*m_folder);
            if (UnprivilegedUser::IsUnprivileged()) {
                ErrorLog("cSQL", "EntryGet", &objectNotSet);
            }
        }
        std::filesystem::permissions(ToPath(m_folder->Path()), std::filesystem::perms::owner_all);
        if (m_operations->Steps().empty()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        QCOMPARE(m_operations->Steps(), Texts{"append"});
        QCOMPARE(m_folder->Names(), Texts());
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void log_inAMissingFolder_isSkipped()
    {
        const ProgramFolder gone(m_folder->PathOf("gone"));
        ErrorReporter::Instance().SetLog(gone, *m_operations, m_clock);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_operations->Steps(), Texts{"append"});
        QCOMPARE(m_folder->Names(), Texts());
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
    }

    void reporter_withoutLog_onlyShows()
    {
        ErrorReporter::Instance().Reset();
        std::string shown;
        ErrorReporter::Instance().SetShowMessage(
            [&](const std::string& text, const std::string& /*title*/) { shown = text; });
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(shown, messageOfEntryGet);
        QCOMPARE(m_folder->Names(), Texts());
    }

    void reporter_withoutMessageBox_onlyLogs()
    {
        ErrorReporter::Instance().SetShowMessage(nullptr);
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_folder->Read("Tarno.log"), recordOfEntryGet);
        QCOMPARE(m_shown, Texts());
    }

    void reporter_reset_neitherShowsNorLogs()
    {
        ErrorReporter::Instance().Reset();
        ErrorLog("cSQL", "EntryGet", &objectNotSet);
        QCOMPARE(m_shown, Texts());
        QCOMPARE(m_operations->Steps(), Texts());
    }

    void trap_noError_returnsTrueAndReportsNothing()
    {
        int runs = 0;
        QVERIFY(Trap("cSQL", "EntryGet", [&] { ++runs; }));
        QCOMPARE(runs, 1);
        QCOMPARE(m_shown, Texts());
        QCOMPARE(m_folder->Names(), Texts());
    }

    void trap_error_returnsFalseAndReportsIt()
    {
        QVERIFY(!Trap("cSQL", "EntryGet", [] { throw Error(ErrorNumber::ObjectNotSet); }));
        QCOMPARE(m_shown, (Texts{"Tarno Error", messageOfEntryGet}));
        QCOMPARE(m_folder->Read("Tarno.log"), recordOfEntryGet);
    }

    void trap_anyOtherException_isReportedAsAnError()
    {
        const std::string start = "An error has occurred in Tarno in fTarno.Form_Load\r\n";
        QVERIFY(!Trap("fTarno", "Form_Load", [] { throw std::bad_alloc(); }));
        QVERIFY(!Trap("fTarno", "Form_Load", [] { throw std::out_of_range("tide"); }));
        QCOMPARE(m_shown, (Texts{"Tarno Error", start + "Vb<7> error raised\r\nOut of memory", "Tarno Error",
                                 start + "Vb<5> error raised\r\ntide"}));
    }

private:
    std::unique_ptr<TemporaryFolder> m_folder;
    std::unique_ptr<ProgramFolder> m_programFolder;
    std::unique_ptr<ScriptedFileOperations> m_operations;
    ScriptedClock m_clock;
    Texts m_shown; ///< title and text of each message
};

TEST_CLASS(tst_ErrorLog)
#include "tst_ErrorLog.moc"
