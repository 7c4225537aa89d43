#include "core/SafeWriter.h"
#include "support/PlainUser.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using std::filesystem::perms;

const Texts allSteps{"follow", "check", "create", "write", "sync", "close", "size", "replace", "sync folder"};

const Texts allStepsOver{"follow", "check",   "create",   "write",  "sync",       "close",
                         "size",   "replace", "exchange", "remove", "sync folder"};

/// No process has such a high number.
const std::string ended = "4999999";

std::string FingerprintText(std::string_view bytes)
{
    return std::to_string(SafeWriter::FingerprintOf(bytes));
}

/// Where the version was kept that WriteOver found, "" for nowhere, or the number that it raises.
std::string WrittenOver(FileOperations& operations, const std::string& path, std::string_view bytes)
{
    std::string kept;
    const int raised = RaisedNumber(
        [&] { kept = SafeWriter(operations).WriteOver(path, bytes, {SafeWriter::FingerprintOf("old")}); });
    return raised == 0 ? kept : std::to_string(raised);
}

/// What Write raises, 0 for nothing.
int Written(FileOperations& operations, const std::string& path, std::string_view bytes)
{
    return RaisedNumber([&] { SafeWriter(operations).Write(path, bytes); });
}

} // namespace

class tst_SafeWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void write_existingFile_isReplacedStepByStep()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "the old and longer bytes");
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new\r\n\0bytes"s), 0);
        QCOMPARE(folder.Read("tarno.xml"), "new\r\n\0bytes"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
        QCOMPARE(operations.Steps(), allSteps);
    }

    void write_newFile_isCreated()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("sn\u0101pper log.pdf"), "new"), 0);
        QCOMPARE(folder.Read("sn\u0101pper log.pdf"), "new"s);
        QCOMPARE(folder.Names(), Texts{"sn\u0101pper log.pdf"});
        QCOMPARE(operations.Steps(), allSteps);
    }

    void write_noBytes_emptiesTheFile()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), ""), 0);
        QCOMPARE(folder.Read("tarno.xml"), ""s);
    }

    void write_temporary_liesBesideTheFile()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 0);
        QVERIFY(operations.Created().starts_with(folder.PathOf("tarno.xml.")));
        QVERIFY(operations.Created().ends_with(SafeWriter::temporarySuffix));
    }

    void write_inShortPieces_writesAll()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.TakeAtMost(4);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "ten bytes!"), 0);
        QCOMPARE(folder.Read("tarno.xml"), "ten bytes!"s);
        QCOMPARE(std::count(operations.Steps().begin(), operations.Steps().end(), "write"), 3);
    }

    void write_aStepFails_leavesTheOldBytesAndNoTemporary_data()
    {
        QTest::addColumn<std::string>("step");
        for (const std::string& step : allSteps) {
            if (step != "sync folder") {
                QTest::newRow(step.c_str()) << step;
            }
        }
    }

    void write_aStepFails_leavesTheOldBytesAndNoTemporary()
    {
        QFETCH(std::string, step);
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.Fail(step, ErrorNumber::DeviceInputOutput);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 57);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void write_failsHalfWay_leavesTheOldBytesAndNoTemporary()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.TakeAtMost(4);
        operations.Fail("write", ErrorNumber::DiskFull, 1, 2);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "ten bytes!"), 61);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void write_fileShorterThanItsBytes_isDiskFull()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.LoseBytes();
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new bytes"), 61);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void write_newFileFails_leavesNothing()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        operations.Fail("sync", ErrorNumber::DiskFull);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 61);
        QCOMPARE(folder.Names(), Texts());
    }

    void write_failedStep_dropsTheFileBeforeRemovingIt()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        operations.Fail("sync", ErrorNumber::DiskFull);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 61);
        QCOMPARE(operations.Steps(), (Texts{"follow", "check", "create", "write", "sync", "drop", "remove"}));
    }

    void write_removingFailsToo_tellsTheFirstFailure()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.Fail("write", ErrorNumber::DiskFull);
        operations.Fail("remove", ErrorNumber::PathFileAccess);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 61);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
    }

    void write_folderNotSynchronised_tellsButTheNewBytesAreThere()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.Fail("sync folder", ErrorNumber::DeviceInputOutput);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 57);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void write_afterAFailure_succeeds()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.Fail("replace", ErrorNumber::PathFileAccess);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 75);
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 0);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
    }

    void write_leftoverOfACrash_isNoObstacle()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "old"), 0);
        const std::string leftover = FromPath(ToPath(operations.Created()).filename());
        folder.Write(leftover, "half");
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 0);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Read(leftover), "half"s);
    }

    void write_mode_isKept_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("private") << 0600;
        QTest::newRow("open to the group") << 0660;
        QTest::newRow("open to all") << 0666;
        QTest::newRow("executable") << 0755;
    }

    void write_mode_isKept()
    {
        NOT_ON_WINDOWS("modes of files");
        QFETCH(int, mode);
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        std::filesystem::permissions(ToPath(folder.PathOf("tarno.xml")), static_cast<perms>(mode));
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 0);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(static_cast<int>(std::filesystem::status(ToPath(folder.PathOf("tarno.xml"))).permissions()),
                 mode);
    }

    void write_symbolicLink_staysALink_data()
    {
        QTest::addColumn<bool>("relative");
        QTest::newRow("absolute") << false;
        QTest::newRow("relative") << true;
    }

    void write_symbolicLink_staysALink()
    {
        NOT_ON_WINDOWS("links");
        QFETCH(bool, relative);
        const TemporaryFolder folder;
        folder.MakeFolder("sync");
        folder.Write("sync/tarno.xml", "old");
        folder.MakeLink("tarno.xml", relative ? "sync/tarno.xml" : folder.PathOf("sync/tarno.xml"));
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 0);
        QVERIFY(std::filesystem::is_symlink(ToPath(folder.PathOf("tarno.xml"))));
        QVERIFY(!std::filesystem::is_symlink(ToPath(folder.PathOf("sync/tarno.xml"))));
        QCOMPARE(folder.Read("sync/tarno.xml"), "new"s);
        QVERIFY(operations.Created().starts_with(folder.PathOf("sync/")));
    }

    void write_danglingLink_createsItsTarget()
    {
        NOT_ON_WINDOWS("links");
        const TemporaryFolder folder;
        folder.MakeFolder("sync");
        folder.MakeLink("tarno.xml", "sync/tarno.xml");
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 0);
        QVERIFY(std::filesystem::is_symlink(ToPath(folder.PathOf("tarno.xml"))));
        QCOMPARE(folder.Read("sync/tarno.xml"), "new"s);

        // where the link leads to no folder, it is left as it is
        folder.MakeLink("Rpt.xml", "gone/Rpt.xml");
        QCOMPARE(Written(operations, folder.PathOf("Rpt.xml"), "new"), 76);
        QVERIFY(std::filesystem::is_symlink(ToPath(folder.PathOf("Rpt.xml"))));
        QCOMPARE(folder.Names(), (Texts{"Rpt.xml", "sync", "tarno.xml"}));
    }

    void write_targetIsNoFile_isPathFileAccess_data()
    {
        QTest::addColumn<std::string>("name");
        QTest::newRow("folder") << "folder"s;
        QTest::newRow("pipe") << "pipe"s;
        QTest::newRow("link to itself") << "circle"s;
        QTest::newRow("below a file") << "file/tarno.xml"s;
    }

    void write_targetIsNoFile_isPathFileAccess()
    {
        NOT_ON_WINDOWS("links and pipes");
        QFETCH(std::string, name);
        const TemporaryFolder folder;
        folder.MakeFolder("folder");
        folder.MakePipe("pipe");
        folder.MakeLink("circle", "circle");
        folder.Write("file", "old");
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf(name), "new"), 75);
        QCOMPARE(folder.Names(), (Texts{"circle", "file", "folder", "pipe"}));
        QVERIFY(std::filesystem::is_fifo(ToPath(folder.PathOf("pipe"))));
        QVERIFY(std::filesystem::is_symlink(ToPath(folder.PathOf("circle"))));
        QCOMPARE(operations.Created(), ""s);
    }

    void write_noSuchFolder_isPathNotFound()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("gone/tarno.xml"), "new"), 76);
        QCOMPARE(folder.Names(), Texts());
    }

    void write_readOnlyFile_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        std::filesystem::permissions(ToPath(folder.PathOf("tarno.xml")), perms::owner_read);
        const PlainUser user(folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 75);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void write_readOnlyFolder_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        std::filesystem::permissions(ToPath(folder.Path()), perms::owner_read | perms::owner_exec);
        const PlainUser user(folder);
        if (!PlainUser::IsPlain()) {
            QSKIP(PlainUser::whyNot);
        }
        ScriptedFileOperations operations;
        QCOMPARE(Written(operations, folder.PathOf("tarno.xml"), "new"), 75);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
        std::filesystem::permissions(ToPath(folder.Path()), perms::owner_all);
    }

    void writeOver_knownVersion_isReplacedStepByStep()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), ""s);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
        QCOMPARE(operations.Steps(), allStepsOver);
    }

    void writeOver_newFile_isCreated()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), ""s);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_otherVersion_isKept()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "other");
        ScriptedFileOperations operations;
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"),
                 folder.PathOf("tarno-kept-1.xml"));
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "other"s);
        QCOMPARE(folder.Names(), (Texts{"tarno-kept-1.xml", "tarno.xml"}));
    }

    void writeOver_otherVersionInTheLastMoment_isKept()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.BeforeExchange([&] {
            folder.Write("theirs", "other");
            std::filesystem::rename(ToPath(folder.PathOf("theirs")), ToPath(folder.PathOf("tarno.xml")));
        });
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"),
                 folder.PathOf("tarno-kept-1.xml"));
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "other"s);
        QCOMPARE(folder.Names(), (Texts{"tarno-kept-1.xml", "tarno.xml"}));
    }

    void writeOver_otherVersionCannotBeKept_standsAgain_data()
    {
        QTest::addColumn<std::string>("step");
        for (const char* step : {"create", "write", "sync", "close", "size"}) {
            QTest::newRow(step) << std::string(step);
        }
    }

    void writeOver_otherVersionCannotBeKept_standsAgain()
    {
        QFETCH(std::string, step);
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "other");
        ScriptedFileOperations operations;
        operations.Fail(step, ErrorNumber::DiskFull, 1, 1);
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), "61"s);
        QCOMPARE(folder.Read("tarno.xml"), "other"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_otherVersionCannotBeKeptAndOursIsGone_standsAgain()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "other");
        ScriptedFileOperations operations;
        operations.BeforeExchange([&] {
            operations.BeforeExchange([&] { std::filesystem::remove(ToPath(folder.PathOf("tarno.xml"))); });
        });
        operations.Fail("create", ErrorNumber::DiskFull, 1, 1);
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), "61"s);
        QCOMPARE(folder.Read("tarno.xml"), "other"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_fileGoneMeanwhile_otherVersionIsKept()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "other");
        ScriptedFileOperations operations;
        operations.AfterExchange([&] {
            std::filesystem::remove(ToPath(folder.PathOf("tarno.xml")));
            folder.MakeFolder("tarno.xml"); // nor can it be replaced any more
        });
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"),
                 folder.PathOf("tarno-kept-1.xml"));
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "other"s);
        QCOMPARE(folder.Names(), (Texts{"tarno-kept-1.xml", "tarno.xml"}));
    }

    void writeOver_noExchangeAndNoReplacing_leavesTheOldBytesAndNoTemporary()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.ExchangeNothing();
        operations.Fail("replace", ErrorNumber::PathFileAccess, 1, 1);
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), "75"s);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_nothingCanBePutBack_losesNothing()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "other");
        ScriptedFileOperations operations;
        operations.Fail("create", ErrorNumber::DiskFull, 1, 1);
        operations.Fail("exchange", ErrorNumber::DeviceInputOutput, 1, 1);
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), "57"s);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Names().size(), std::size_t{2});
        const Texts kept{folder.PathOf("tarno-kept-1.xml")};
        QCOMPARE(SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml")), kept);
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "other"s);
        QCOMPARE(folder.Names(), (Texts{"tarno-kept-1.xml", "tarno.xml"}));
    }

    void writeOver_noExchange_replaces()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.ExchangeNothing();
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), ""s);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_aStepFails_leavesTheOldBytesAndNoTemporary_data()
    {
        QTest::addColumn<std::string>("step");
        QTest::addColumn<bool>("exchanges");
        for (const std::string& step : allStepsOver) {
            if (step != "sync folder" && step != "remove") {
                QTest::newRow(step.c_str()) << step << true;
            }
        }
        QTest::newRow("replace, no exchange") << "replace"s << false;
    }

    void writeOver_aStepFails_leavesTheOldBytesAndNoTemporary()
    {
        QFETCH(std::string, step);
        QFETCH(bool, exchanges);
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        if (!exchanges) {
            operations.ExchangeNothing();
        }
        operations.Fail(step, ErrorNumber::DeviceInputOutput);
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), "57"s);
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_oldBytesCannotBeRemoved_isNoFailure()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml", "old");
        ScriptedFileOperations operations;
        operations.Fail("remove", ErrorNumber::PathFileAccess);
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"), ""s);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
    }

    void writeOver_symbolicLinkAndMode_areKept()
    {
        NOT_ON_WINDOWS("links");
        const TemporaryFolder folder;
        folder.MakeFolder("sync");
        folder.Write("sync/tarno.xml", "other");
        std::filesystem::permissions(ToPath(folder.PathOf("sync/tarno.xml")), static_cast<perms>(0600));
        folder.MakeLink("tarno.xml", "sync/tarno.xml");
        ScriptedFileOperations operations;
        QCOMPARE(WrittenOver(operations, folder.PathOf("tarno.xml"), "new"),
                 folder.PathOf("sync/tarno-kept-1.xml"));
        QVERIFY(std::filesystem::is_symlink(ToPath(folder.PathOf("tarno.xml"))));
        for (const char* name : {"sync/tarno.xml", "sync/tarno-kept-1.xml"}) {
            QCOMPARE(static_cast<int>(std::filesystem::status(ToPath(folder.PathOf(name))).permissions()),
                     0600);
        }
    }

    void keep_takesTheNextFreeName()
    {
        const TemporaryFolder folder;
        folder.Write("tarno-kept-2.xml", "mine");
        folder.MakeFolder("tarno-kept-3.xml");
        if constexpr (isWindows) {
            folder.Write("tarno-kept-4.xml", "mine");
        } else {
            folder.MakeLink("tarno-kept-4.xml", "nowhere");
        }
        ScriptedFileOperations operations;
        SafeWriter writer(operations);
        QCOMPARE(writer.Keep(folder.PathOf("tarno.xml"), "1"), folder.PathOf("tarno-kept-1.xml"));
        QCOMPARE(writer.Keep(folder.PathOf("tarno.xml"), "5"), folder.PathOf("tarno-kept-5.xml"));
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "1"s);
        QCOMPARE(folder.Read("tarno-kept-2.xml"), "mine"s);
        QCOMPARE(folder.Read("tarno-kept-5.xml"), "5"s);
    }

    void keep_aStepFails_leavesNoFile_data()
    {
        QTest::addColumn<std::string>("step");
        for (const char* step : {"follow", "create", "write", "sync", "close", "size", "sync folder"}) {
            QTest::newRow(step) << std::string(step);
        }
    }

    void keep_aStepFails_leavesNoFile()
    {
        QFETCH(std::string, step);
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        operations.Fail(step, ErrorNumber::DiskFull);
        QCOMPARE(RaisedNumber([&] { SafeWriter(operations).Keep(folder.PathOf("tarno.xml"), "bytes"); }), 61);
        QCOMPARE(folder.Names(), Texts());
    }

    void removeLeftovers_onlyOurs_areGone()
    {
        const TemporaryFolder folder;
        const Texts others{"field.xml." + ended + "-12.tarno-tmp",
                           "location.xml." + ended + "-12.tarno-tmp",
                           "tarno.xml",
                           "tarno.xml-" + ended + "-12.tarno-tmp",
                           "tarno.xml..tarno-tmp",
                           "tarno.xml.-12.tarno-tmp",
                           "tarno.xml." + ended,
                           "tarno.xml." + ended + "-.tarno-tmp",
                           "tarno.xml." + ended + "-12",
                           "tarno.xml." + ended + "-12.tarno-bak",
                           "tarno.xml." + ended + "-12.tmp",
                           "tarno.xml." + ended + "-12a.tarno-tmp",
                           "tarno.xml." + ended + ".tarno-tmp",
                           "tarno.xml." + ended + "a-12.tarno-tmp",
                           "tarno.xml.99999999999-12.tarno-tmp",
                           "tarno.xml.tarno-tmp",
                           "xtarno.xml." + ended + "-12.tarno-tmp"};
        for (const std::string& name : others) {
            folder.Write(name, "mine");
        }
        folder.Write("tarno.xml." + ended + "-0.tarno-tmp", "half");
        folder.Write("tarno.xml." + ended + "-4294967295.tarno-tmp", "half");
        const std::string inTheWay = "tarno.xml." + ended + "-1.tarno-tmp";
        const std::string link = "tarno.xml." + ended + "-2.tarno-tmp";
        folder.MakeFolder(inTheWay);
        Texts left = others;
        left.push_back(inTheWay);
        if constexpr (!isWindows) {
            folder.MakeLink(link, "tarno.xml");
            left.push_back(link);
        }
        ScriptedFileOperations operations;
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        std::sort(left.begin(), left.end());
        QCOMPARE(folder.Names(), left);
    }

    void removeLeftovers_ofARunningProcess_stay()
    {
        NOT_ON_WINDOWS("a process that is known to run");
#ifndef Q_OS_WIN
        const TemporaryFolder folder;
        const std::string parent = std::to_string(::getppid());
        const std::string own = std::to_string(::getpid()); // a number that was used before
        folder.Write("tarno.xml." + parent + "-12.tarno-tmp", "half");
        folder.Write("tarno.xml." + own + "-12.tarno-tmp", "half");
        ScriptedFileOperations operations;
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names(), Texts{"tarno.xml." + parent + "-12.tarno-tmp"});
#endif
    }

    void removeLeftovers_oneCannotBeRemoved_theOthersAreGone()
    {
        const TemporaryFolder folder;
        folder.Write("tarno.xml." + ended + "-1.tarno-tmp", "half");
        folder.Write("tarno.xml." + ended + "-2.tarno-tmp", "half");
        ScriptedFileOperations operations;
        operations.Fail("remove", ErrorNumber::PathFileAccess);
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names().size(), std::size_t{1});
        operations.Fail("follow", ErrorNumber::DeviceInputOutput);
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("gone/tarno.xml"));
        QCOMPARE(folder.Names().size(), std::size_t{1});
    }

    void removeLeftovers_exchanged_knownVersionsAreGone()
    {
        const TemporaryFolder folder;
        const std::string begin = "tarno.xml." + ended + "-12-" + FingerprintText("old") + '-';
        folder.Write(begin + FingerprintText("new") + ".tarno-tmp", "new");
        folder.Write(begin + FingerprintText("newer") + ".tarno-tmp", "old");
        folder.Write(begin + "x.tarno-tmp", "mine");
        ScriptedFileOperations operations;
        QCOMPARE(SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml")), Texts());
        QCOMPARE(folder.Names(), Texts{begin + "x.tarno-tmp"});
    }

    void removeLeftovers_exchanged_whatNobodyKnewIsKept()
    {
        const TemporaryFolder folder;
        const std::string name = "tarno.xml." + ended + "-12-" + FingerprintText("old") + ".tarno-tmp";
        folder.Write(name, "other");
        ScriptedFileOperations operations;
        operations.Fail("sync", ErrorNumber::DiskFull);
        QCOMPARE(SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml")), Texts());
        QCOMPARE(folder.Names(), Texts{name});
        QCOMPARE(SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml")),
                 Texts{folder.PathOf("tarno-kept-1.xml")});
        QCOMPARE(folder.Names(), Texts{"tarno-kept-1.xml"});
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "other"s);
    }

    void removeLeftovers_onItsWayOut_goesBackWhenNothingHasCome()
    {
        const TemporaryFolder folder;
        const std::string name = "tarno.xml." + ended + "-12-" + FingerprintText("new") + ".tarno-tmp";
        folder.Write(name, "new");
        folder.Write(name + ".out", "old");
        ScriptedFileOperations operations;
        operations.Fail("replace", ErrorNumber::PathFileAccess);
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names(), Texts{name + ".out"});
        SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml"));
        QCOMPARE(folder.Names(), Texts{"tarno.xml"});
        QCOMPARE(folder.Read("tarno.xml"), "old"s);
    }

    void removeLeftovers_onItsWayOut_isALeftoverWhenSomethingHasCome()
    {
        const TemporaryFolder folder;
        const std::string begin = "tarno.xml." + ended + "-12-" + FingerprintText("new");
        folder.Write("tarno.xml", "new");
        folder.Write(begin + '-' + FingerprintText("old") + ".tarno-tmp.out", "old");
        folder.Write(begin + ".tarno-tmp.out", "other");
        folder.Write(begin + ".tarno-tmp.oui", "mine");
        ScriptedFileOperations operations;
        QCOMPARE(SafeWriter(operations).RemoveLeftovers(folder.PathOf("tarno.xml")),
                 Texts{folder.PathOf("tarno-kept-1.xml")});
        QCOMPARE(folder.Names(), (Texts{"tarno-kept-1.xml", "tarno.xml", begin + ".tarno-tmp.oui"}));
        QCOMPARE(folder.Read("tarno-kept-1.xml"), "other"s);
        QCOMPARE(folder.Read("tarno.xml"), "new"s);
    }
};

TEST_CLASS(tst_SafeWriter)
#include "tst_SafeWriter.moc"
