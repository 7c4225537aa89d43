// What a back-up contains, and when an automatic one is made.

#include "LogFolder.h"
#include "backup/BackUpParts.h"
#include "support/Platform.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Names = std::vector<std::string>;

Names EntriesOf(const std::string& path)
{
    Names names;
    const ArchiveReader reader(path);
    for (const ArchiveEntry& entry : reader.Entries()) {
        names.push_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string EntryOf(const std::string& path, const std::string& name)
{
    const ArchiveReader reader(path);
    const ArchiveEntry* entry = reader.Find(name);
    return entry == nullptr ? "(no such entry)" : reader.ReadBytes(*entry);
}

const Names logFiles{"Bait.txt",         "Methods.txt", "Rpt.xml",       "RptBlank.xml",
                     "Species.txt",      "field.xml",   "location.xml",  "locationblank.xml",
                     "tarno-backup.xml", "tarno.xml",   "tarnoblank.xml"};

Names WithLogFiles(Names names)
{
    names.insert(names.end(), logFiles.begin(), logFiles.end());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

class tst_BackUp : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void backUp_hasTheFilesOfTheLog()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.folder.Write("Tarno.log", "not a part of the log");
        const TemporaryFolder target;
        const std::string path = target.PathOf("b.zip");
        const BackUpResult result = log.BackUpTo(path, BackUpPictures::LeaveOut);
        QCOMPARE(EntriesOf(path), WithLogFiles({}));
        QCOMPARE(static_cast<int>(result.pictures), 0);
        for (const std::string& name : logFiles) {
            if (name != noteName) {
                QVERIFY2(EntryOf(path, name) == log.folder.Read(name), name.c_str());
            }
        }
        const BackUpNote note = ReadNote(EntryOf(path, std::string(noteName)));
        QCOMPARE(note.time, "2026-11-22 18:05"s);
        QCOMPARE(note.log, log.Path());
        QCOMPARE(note.program, "Tarno 1.0.0"s);
        QCOMPARE(target.Names(), (Names{"b.zip"}));
    }

    void pictures_keepTheirPathsBelowTheFolder()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.folder.MakeFolder("pictures/2024");
        log.folder.Write("pictures/2024/a.png", "a");
        log.Replace("tarno.xml", "pictures/trout.png", log.folder.PathOf("pictures/2024/a.png"));
        const std::string path = log.folder.PathOf("b.zip");
        const BackUpResult result = log.BackUpTo(path);
        QCOMPARE(EntriesOf(path),
                 WithLogFiles({"pictures/2024/a.png", "pictures/pittwater.png", "pictures/snapper.png"}));
        QCOMPARE(static_cast<int>(result.pictures), 3);
        QCOMPARE(result.missing, Names());
    }

    void otherPictures_getNamesOfTheirOwn()
    {
        LogFolder log(LogFolder::Log::Sample);
        const TemporaryFolder other;
        other.MakeFolder("card");
        other.Write("Snapper.png", "another snapper");
        other.Write("card/snapper.png", "a third snapper");
        log.Replace("tarno.xml", "pictures/trout.png", other.PathOf("Snapper.png"));
        log.Replace("location.xml", "pictures/pittwater.png", other.PathOf("card/snapper.png"));
        const std::string path = log.folder.PathOf("b.zip");
        log.BackUpTo(path);
        QCOMPARE(EntriesOf(path),
                 WithLogFiles({"pictures/Snapper-2.png", "pictures/snapper-3.png", "pictures/snapper.png"}));
        QCOMPARE(EntryOf(path, "pictures/Snapper-2.png"), "another snapper"s);
        QCOMPARE(EntryOf(path, "pictures/snapper-3.png"), "a third snapper"s);
        const BackUpNote note = ReadNote(EntryOf(path, std::string(noteName)));
        QCOMPARE(note.pictures.at(other.PathOf("Snapper.png")), "pictures/Snapper-2.png"s);
        QCOMPARE(note.pictures.at("pictures/snapper.png"), "pictures/snapper.png"s);
    }

    void sameFile_isPackedOnce()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.Replace("tarno.xml", "pictures/trout.png", log.folder.PathOf("pictures/snapper.png"));
        log.Replace("location.xml", "pictures/pittwater.png", "pictures/../pictures/snapper.png");
        const std::string path = log.folder.PathOf("b.zip");
        QCOMPARE(static_cast<int>(log.BackUpTo(path).pictures), 1);
        QCOMPARE(EntriesOf(path), WithLogFiles({"pictures/snapper.png"}));
    }

    void missingPictures_areListed()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.Replace("tarno.xml", "pictures/trout.png", "/no/such/trout.png");
        log.Replace("tarno.xml", "pictures/snapper.png", log.Path()); // a folder
        const BackUpResult result = log.BackUpTo(log.folder.PathOf("b.zip"));
        QCOMPARE(static_cast<int>(result.pictures), 1);
        QCOMPARE(result.missing, (Names{log.Path(), "/no/such/trout.png"}));
    }

    void pipeAsPicture_isMissing()
    {
        NOT_ON_WINDOWS("pipes");
        LogFolder log(LogFolder::Log::Sample);
        log.folder.MakePipe("pictures/pipe.png");
        log.Replace("tarno.xml", "pictures/trout.png", "pictures/pipe.png");
        QCOMPARE(log.BackUpTo(log.folder.PathOf("b.zip")).missing, (Names{"pictures/pipe.png"}));
    }

    void damagedLog_isNotBackedUp()
    {
        LogFolder log;
        log.folder.Write("Rpt.xml", "<data>");
        try {
            log.BackUpTo(log.folder.PathOf("b.zip"));
            QFAIL("a damaged log was backed up");
        } catch (const Error& error) {
            QVERIFY2(error.Description().starts_with("Rpt.xml cannot be read: Line 1"),
                     error.Description().c_str());
            QVERIFY(error.Description().ends_with(".\nNothing was backed up."));
        }
        QVERIFY(!log.operations.GetState(log.folder.PathOf("b.zip")).exists);
    }

    void lockedFolder_isWaitedFor()
    {
        LogFolder log;
        log.operations.Fail("lock", ErrorNumber::PermissionDenied, 3);
        log.BackUpTo(log.folder.PathOf("b.zip"));
        QCOMPARE(log.operations.Count("pause"), 3);
        log.operations.Fail("lock", ErrorNumber::PermissionDenied, ScriptedFileOperations::always);
        QVERIFY_THROWS_EXCEPTION(Error, log.BackUpTo(log.folder.PathOf("c.zip")));
        QVERIFY(!log.operations.GetState(log.folder.PathOf("c.zip")).exists);
    }

    void automatic_isMadeIfTheLogDiffers()
    {
        LogFolder log(LogFolder::Log::Sample);
        const std::string backUps = log.folder.PathOf("backups");
        const auto backUp = [&] {
            return BackUpIfChanged(log.program, log.operations, backUps,
                                   {.pictures = BackUpPictures::LeaveOut, .time = testTime, .program = {}});
        };
        const std::string first = "tarno-2026-11-22-1805-automatic.zip";
        const std::string second = "tarno-2026-11-22-1805-automatic-2.zip";
        QCOMPARE(backUp(), first);
        QCOMPARE(backUp(), ""s);
        log.folder.Write("Bait.txt", "Worms\r\n");
        QCOMPARE(backUp(), second);
        log.folder.Write("backups/" + second, "damaged");
        QCOMPARE(backUp(), "tarno-2026-11-22-1805-automatic-3.zip"s);
        QCOMPARE(backUp(), ""s);
        std::filesystem::remove(ToPath(log.folder.PathOf("Bait.txt")));
        QCOMPARE(backUp(), "tarno-2026-11-22-1805-automatic-4.zip"s);
    }

    void automatic_removesExpiredOnes()
    {
        LogFolder log;
        log.folder.MakeFolder("backups");
        const auto backUp = [](LogFolder& of, const std::string& path) {
            BackUp(of.program, of.operations, path, {.time = testTime, .program = {}});
        };
        for (int day = 10; day <= 20; ++day) {
            backUp(log,
                   log.folder.PathOf("backups/tarno-2026-10-" + std::to_string(day) + "-0900-automatic.zip"));
        }
        log.folder.Write("Bait.txt", "Worms\r\n");
        log.folder.Write("backups/tarno-2026-10-01-0900.zip", "by hand");
        log.folder.Write("backups/tarno-2026-10-01-0900-automatic.zip", "damaged");
        LogFolder otherLog;
        backUp(otherLog, log.folder.PathOf("backups/tarno-2026-10-02-0900-automatic.zip"));
        log.folder.Write("backups/tarno.zip.12.tarno-tmp", "being written");
        log.folder.Write("backups/tarno-2026-10-01-0900.zip.12.tarno-tmp", "stale");
        std::filesystem::last_write_time(
            ToPath(log.folder.PathOf("backups/tarno-2026-10-01-0900.zip.12.tarno-tmp")),
            std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
        BackUpIfChanged(log.program, log.operations, log.folder.PathOf("backups"),
                        {.time = testTime, .program = {}});
        Names names = NamesIn(log.folder.PathOf("backups"));
        QCOMPARE(static_cast<int>(names.size()), 10 + 4);
        QCOMPARE(names[0], "tarno-2026-10-01-0900-automatic.zip"s);
        QCOMPARE(names[1], "tarno-2026-10-01-0900.zip"s);
        QCOMPARE(names[2], "tarno-2026-10-02-0900-automatic.zip"s);
        QCOMPARE(names[3], "tarno-2026-10-12-0900-automatic.zip"s);
        QCOMPARE(names.back(), "tarno.zip.12.tarno-tmp"s);
    }
};

TEST_CLASS(tst_BackUp)
#include "tst_BackUp.moc"
