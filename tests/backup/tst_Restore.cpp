// Restoring back-ups: what is refused, and what is in the folder afterwards.

#include "LogFolder.h"
#include "RawZip.h"
#include "support/Platform.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Names = std::vector<std::string>;

/// A back-up of the sample log, and the folder that contains it.
struct SampleBackUp {
    SampleBackUp() { log.BackUpTo(Path()); }

    std::string Path() const { return folder.PathOf("b.zip"); }

    TemporaryFolder folder;
    LogFolder log{LogFolder::Log::Sample};
};

Contents Without(Contents contents, const std::string& prefix)
{
    std::erase_if(contents, [&](const auto& file) { return file.first.starts_with(prefix); });
    return contents;
}

/// Returns why the back-up cannot be restored, or an empty text.
std::string ProblemOfArchive(const std::string& path)
{
    try {
        const BackUpArchive backUp(path);
        return {};
    } catch (const ArchiveProblem& problem) {
        return problem.Description();
    }
}

} // namespace

class tst_Restore : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opened_describesTheBackUp()
    {
        const SampleBackUp file;
        const BackUpArchive backUp(file.Path());
        const LogSummary found = Summarize(backUp.Trips(), backUp.Locations());
        QCOMPARE(static_cast<int>(found.trips), 72);
        QCOMPARE(static_cast<int>(found.locations), 6);
        QCOMPARE(static_cast<int>(backUp.PictureCount()), 3);
        QCOMPARE(backUp.Time(), "2026-11-22 18:05"s);
        QVERIFY2(found.lastTrip > "2020" && found.lastTrip.size() == 10, found.lastTrip.c_str());
        QCOMPARE(Summarize({}, {}).lastTrip, ""s);
    }

    void unsuitableArchive_isExplained_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<std::string>("problem");
        const auto row = [](const char* name, const RawZip& zip, const char* problem) {
            QTest::newRow(name) << zip.Bytes() << std::string(problem);
        };
        QTest::newRow("no archive") << "<data/>"s
                                    << "This is not a zip archive."s;
        RawZip zip;
        row("empty", zip, "This is not a back-up of Tarno: it has no tarno.xml.");
        zip.Add("tarno.xml", "<data><tarno><TarnoNo>1</TarnoNo></tarno></data>");
        row("without locations", zip, "This is not a back-up of Tarno: it has no location.xml.");
        zip.Add("location.xml", "<data/>");
        RawZip damaged = zip;
        damaged.Add("Rpt.xml", "<data>");
        row("damaged file", damaged,
            "The back-up is damaged: Rpt.xml cannot be read: Line 1, column 6: Start-end tags mismatch.");
        RawZip other = zip;
        other.Add("field.xml", "<!-- --><data/>");
        row("comment", other,
            "The back-up is damaged: field.xml cannot be read: Something precedes the element \"data\", for "
            "example a declaration or a comment.");
        RawZip hostile = zip;
        hostile.Add("../x");
        row("hostile", hostile, "The name \"../x\" in the archive leads to another folder.");
        RawZip newer;
        newer.Add("tarno-backup.xml", "<backup version=\"2\"/>");
        row("newer format", newer, "A newer version of Tarno has made this back-up.");
        RawZip note = zip;
        note.Add("tarno-backup.xml", "<backup><picture>");
        row("damaged note", note, "");
    }

    void unsuitableArchive_isExplained()
    {
        QFETCH(std::string, bytes);
        QFETCH(std::string, problem);
        LogFolder here;
        const TemporaryFolder folder;
        folder.Write("b.zip", bytes);
        const Contents before = here.State();
        QCOMPARE(ProblemOfArchive(folder.PathOf("b.zip")), problem);
        if (!problem.empty()) {
            QVERIFY_THROWS_EXCEPTION(ArchiveProblem, here.Restore(folder.PathOf("b.zip")));
            QVERIFY(here.State() == before);
        }
    }

    void restored_isTheSameLog()
    {
        SampleBackUp backUp;
        LogFolder here;
        const Contents before = here.State();
        const RestoreResult result = here.Restore(backUp.Path());
        QVERIFY(here.State() == backUp.log.State());
        QCOMPARE(static_cast<int>(result.restored.trips), 72);
        QCOMPARE(static_cast<int>(result.pictures), 3);
        QCOMPARE(result.missing, Names());
        // the back-up of the files that were replaced undoes it
        QCOMPARE(result.before, here.folder.PathOf("backups/tarno-2026-11-22-1805-before-restore.zip"));
        here.Restore(result.before);
        QVERIFY(Without(here.State(), "pictures/") == before);
    }

    void folderThatDoesNotExist_isCreated()
    {
        SampleBackUp backUp;
        const TemporaryFolder parent;
        const ProgramFolder folder(parent.PathOf("new/log"));
        const RestoreResult result =
            RestoreBackUp(backUp.Path(), folder, backUp.log.operations, testTime, "Tarno");
        QCOMPARE(result.before, ""s);
        QVERIFY(ContentsOfFolder(folder.GetAppPath()) == backUp.log.State());
    }

    void picturesFromEverywhere_areFoundInAnotherFolder()
    {
        const TemporaryFolder card;
        const TemporaryFolder phone;
        card.Write("photo.png", "one");
        phone.Write("photo.png", "two");
        phone.MakeFolder("old");
        phone.Write("old/PHOTO.png", "three");
        const std::map<std::string, std::string> wanted{{card.PathOf("photo.png"), "one"},
                                                        {phone.PathOf("photo.png"), "two"},
                                                        {phone.PathOf("old/PHOTO.png"), "three"}};
        const TemporaryFolder target;
        const std::string path = target.PathOf("b.zip");
        {
            LogFolder log(LogFolder::Log::Sample);
            log.Replace("tarno.xml", "pictures/snapper.png", card.PathOf("photo.png"));
            log.Replace("tarno.xml", "pictures/trout.png", phone.PathOf("photo.png"));
            log.Replace("location.xml", "pictures/pittwater.png", phone.PathOf("old/PHOTO.png"));
            log.BackUpTo(path);
        }
        for (const auto& [picture, bytes] : wanted) {
            std::filesystem::remove(ToPath(picture));
        }
        LogFolder here;
        here.folder.MakeFolder("pictures");
        here.folder.Write("pictures/photo-2.png", "a different one");
        const RestoreResult result = here.Restore(path);
        QCOMPARE(result.missing, Names());
        QCOMPARE(static_cast<int>(result.pictures), 3);
        Names contents;
        for (const std::string& stored : here.Pictures()) {
            QVERIFY2(stored.starts_with("pictures/"), stored.c_str());
            contents.push_back(here.folder.Read(stored));
        }
        QCOMPARE(contents, (Names{"one", "two", "three"}));
        QCOMPARE(here.folder.Read("pictures/photo-2.png"), "a different one"s);
        // once more: the pictures are there already
        const Contents before = here.State();
        here.Restore(path);
        QVERIFY(here.State() == before);
    }

    void pictureThatIsMissing_isNamedAndItsPathKept()
    {
        LogFolder log(LogFolder::Log::Sample);
        log.Replace("tarno.xml", "pictures/trout.png", "/no/such/trout.png");
        const TemporaryFolder target;
        log.BackUpTo(target.PathOf("b.zip"));
        LogFolder here;
        QCOMPARE(here.Restore(target.PathOf("b.zip")).missing, (Names{"/no/such/trout.png"}));
        QCOMPARE(here.folder.Read("tarno.xml"), log.folder.Read("tarno.xml"));
    }

    void noteOfAHostileArchive_isNotTrusted()
    {
        LogFolder here;
        RawZip zip;
        zip.Add("location.xml", "<data/>");
        zip.Add("tarno.xml", LogWithPictures({"a", "b", "c", "d"}));
        zip.Add("secret", "s");
        zip.Add("pictures/x.png", "x");
        const auto picture = [](const std::string& stored, const std::string& name) {
            return "<picture><stored>" + stored + "</stored><name>" + name + "</name></picture>";
        };
        zip.Add("tarno-backup.xml", "<backup>" + picture("a", "../../etc/passwd") + picture("b", "secret") +
                                        picture("c", "pictures/none.png") + picture("d", "pictures/x.png") +
                                        "</backup>");
        const TemporaryFolder folder;
        folder.Write("b.zip", zip.Bytes());
        const RestoreResult result = here.Restore(folder.PathOf("b.zip"));
        QCOMPARE(here.Pictures(), (Names{"a", "b", "c", "pictures/x.png"}));
        QCOMPARE(result.missing, (Names{"a", "b", "c"}));
        QVERIFY(!here.operations.GetState(here.folder.PathOf("secret")).exists);
    }

    void filesThatTheBackUpLacks_stay()
    {
        LogFolder here(LogFolder::Log::Sample);
        RawZip zip;
        zip.Add("location.xml", "<data/>");
        zip.Add("tarno.xml", "<data/>");
        const TemporaryFolder folder;
        folder.Write("b.zip", zip.Bytes());
        Contents expected = here.State();
        expected["location.xml"] = expected["tarno.xml"] = "<data/>";
        here.Restore(folder.PathOf("b.zip"));
        QVERIFY(here.State() == expected);
        // but a log must be complete
        const ProgramFolder empty(folder.PathOf("empty"));
        try {
            RestoreBackUp(folder.PathOf("b.zip"), empty, here.operations, testTime, "Tarno");
            QFAIL("an incomplete log was restored");
        } catch (const Error& error) {
            QCOMPARE(error.Description(), "Neither the back-up nor the folder has the file field.xml.\n"
                                          "Nothing was changed."s);
        }
    }

    void cancelled_changesNothing()
    {
        SampleBackUp backUp;
        int reports = 0;
        {
            LogFolder here;
            RestoreBackUp(backUp.Path(), here.program, here.operations, testTime, "Tarno",
                          [&](double) { return ++reports > 0; });
        }
        QVERIFY(reports > 10);
        for (int cancelAt = 0; cancelAt < reports; ++cancelAt) {
            LogFolder here;
            const Contents before = here.State();
            int count = 0;
            QVERIFY_THROWS_EXCEPTION(Cancelled,
                                     RestoreBackUp(backUp.Path(), here.program, here.operations, testTime,
                                                   "Tarno", [&](double) { return count++ < cancelAt; }));
            QVERIFY(here.State() == before);
        }
    }

    void anotherProgramThatSaves_isWaitedFor()
    {
        SampleBackUp backUp;
        LogFolder here;
        const Contents before = here.State();
        here.operations.Fail("lock", ErrorNumber::PermissionDenied, ScriptedFileOperations::always);
        QVERIFY_THROWS_EXCEPTION(Error, here.Restore(backUp.Path()));
        QCOMPARE(here.operations.Count("pause"), 999);
        QVERIFY(here.State() == before);
        here.operations.ClearFailures();
    }

    void folderInPlaceOfAFile_isNotReplaced()
    {
        SampleBackUp backUp;
        LogFolder here;
        std::filesystem::remove(ToPath(here.folder.PathOf("Bait.txt")));
        here.folder.MakeFolder("Bait.txt");
        const Contents before = here.State();
        const auto restore = [&] {
            try {
                here.Restore(backUp.Path());
                return std::string();
            } catch (const Error& error) {
                return error.Description();
            }
        };
        QCOMPARE(restore(), "You may not write to the file " + here.folder.PathOf("Bait.txt") +
                                ".\nNothing was changed.");
        QVERIFY(here.State() == before);
    }

    void readOnlyFolder_isNotChanged()
    {
        SampleBackUp backUp;
        LogFolder here;
        here.folder.Write("b.zip", backUp.folder.Read("b.zip"));
        const Contents before = here.State();
        const UnprivilegedUser user(here.folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        using std::filesystem::perms;
        const auto setRights = [&](perms rights) {
            std::filesystem::permissions(ToPath(here.Path()), rights);
        };
        setRights(perms::owner_read | perms::owner_exec);
        QVERIFY_THROWS_EXCEPTION(Error, here.Restore(here.folder.PathOf("b.zip")));
        setRights(perms::owner_all);
        QVERIFY(here.State() == before);
    }

    void linkedFile_staysALink()
    {
        NOT_ON_WINDOWS("links");
        SampleBackUp backUp;
        LogFolder here;
        const TemporaryFolder other;
        other.Write("log.xml", "<data />\n");
        std::filesystem::remove(ToPath(here.folder.PathOf("tarno.xml")));
        here.folder.MakeLink("tarno.xml", other.PathOf("log.xml"));
        here.Restore(backUp.Path());
        QVERIFY(other.Read("log.xml") == backUp.log.folder.Read("tarno.xml"));
        QVERIFY(std::filesystem::is_symlink(ToPath(here.folder.PathOf("tarno.xml"))));
    }

private:
    static std::string LogWithPictures(const Names& pictures)
    {
        std::string bytes = "<data>";
        int key = 0;
        for (const std::string& picture : pictures) {
            bytes += "<tarno><TarnoNo>" + std::to_string(++key) + "</TarnoNo>";
            for (std::size_t position = 1; position < EntryField::Picture; ++position) {
                bytes += "<v/>";
            }
            bytes.append("<Picture>").append(picture).append("</Picture></tarno>");
        }
        return bytes + "</data>";
    }
};

TEST_CLASS(tst_Restore)
#include "tst_Restore.moc"
