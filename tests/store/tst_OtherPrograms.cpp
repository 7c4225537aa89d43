#include "RecordFamily.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/TestStore.h"
#include "support/UnprivilegedUser.h"

#include <regex>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// A second program with the same folder. The constructor loads the files.
struct OtherProgram {
    explicit OtherProgram(const TestStore& store) : sql(store.programFolder, *operations)
    {
        if (sql.Init() != succeeded) {
            qFatal("the other program does not start");
        }
    }

    std::unique_ptr<FileOperations> operations = SystemFileOperations();
    cSQL sql;
};

} // namespace

// Another program (a second Tarno, a folder synchronisation tool, an editor) writes a data file while this
// one runs. The changes of both are merged record by record.
class tst_OtherPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase_data() { AddRecordFamilies(); }

    void init()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        m_family = family;
        m_store = std::make_unique<TestStore>();
        m_notices.clear();
        m_store->sql.SetShowConflict([this](const ConflictNotice& notice) {
            m_notices.push_back(
                (notice.isDeletedHere ? "deleted here, " : "") +
                (notice.keptAs.empty() ? "deleted there"s : FromPath(ToPath(notice.keptAs).filename())));
        });
        m_store->folder.Write(m_family.file, RecordFamily::File({m_family.RecordXml("1", "one"),
                                                                 m_family.RecordXml("2", "two")}));
        QCOMPARE(m_store->sql.Init(), succeeded);
    }

    void cleanup() { m_store.reset(); }

    void differentRecords_areMergedWithoutANotice()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 1, "theirs"), succeeded);
        QCOMPARE(Change(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 theirs", "2 ours"}));
        QCOMPARE(RecordsInMemory(m_store->sql), Records(m_family.file));
        QCOMPARE(Remove(other.sql, 1), succeeded);
        QCOMPARE(Change(m_store->sql, 2, "again"), succeeded);
        QCOMPARE(Records(m_family.file), Texts{"2 again"});
        QCOMPARE(Kept(), Texts());
        QCOMPARE(m_notices, Texts());
    }

    void sameRecord_oursIsStoredAndTheirsIsKept()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 1, "theirs"), succeeded);
        QCOMPARE(Add(other.sql, "added"), "3"s);
        QCOMPARE(Change(m_store->sql, 1, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 two", "3 added"}));
        QCOMPARE(m_store->folder.Read(KeptName(1)), RecordFamily::File({m_family.RecordXml("1", "theirs")}));
        QCOMPARE(m_notices, Texts{KeptName(1)});
        QCOMPARE(Change(m_store->sql, 1, "again"), succeeded);
        QCOMPARE(Add(m_store->sql, "next"), "4"s);
        QCOMPARE(Kept(), Texts{KeptName(1)});

        QCOMPARE(Change(other.sql, 1, "theirs again"), succeeded);
        QCOMPARE(Kept(), (Texts{KeptName(1), KeptName(2)}));
        QCOMPARE(Records(KeptName(2)), Texts{"1 again"});
    }

    // A partly written file may be well-formed.
    void fileWrittenInPlace_isReadTwice()
    {
        m_store->folder.Write(m_family.file, RecordFamily::File({m_family.RecordXml("1", "new"),
                                                                 m_family.RecordXml("2", "old")}));
        m_store->operations.Before("pause", [&] {
            m_store->folder.Write(m_family.file, RecordFamily::File({m_family.RecordXml("1", "new"),
                                                                     m_family.RecordXml("2", "new")}));
        });
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 new", "2 new", "3 ours"}));
    }

    // Like the output of "xmllint --format", whose declaration would hide the records.
    void reformattedFile_isNoConflict()
    {
        std::string bytes = m_store->folder.Read(m_family.file);
        bytes = "<?xml version=\"1.0\"?>\n<!DOCTYPE data>\n<!-- in front -->\n" +
                std::regex_replace(bytes, std::regex("\t"), "  ") + "<!-- behind -->\n";
        m_store->folder.Write(m_family.file, bytes);
        QCOMPARE(Change(m_store->sql, 1, "ours"), succeeded);
        QCOMPARE(m_store->folder.Read(m_family.file),
                 RecordFamily::File({m_family.RecordXml("1", "ours"), m_family.RecordXml("2", "two")}) +
                     "<!-- in front -->\n<!-- behind -->\n");
        QCOMPARE(RecordsInMemory(m_store->sql), (Texts{"1 ours", "2 two"}));
        QCOMPARE(Kept(), Texts());
    }

    void fileRemovedDuringMerge_isCreatedAgain()
    {
        m_store->folder.Write(m_family.file, "<data><!-- theirs -->");
        m_store->operations.Before(
            "pause", [&] { std::filesystem::remove(ToPath(m_store->folder.PathOf(m_family.file))); });
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 ours"}));
    }

    void unreadableFile_isNeverReplaced()
    {
        m_store->folder.Write(m_family.file, "<data/>");
        std::filesystem::permissions(ToPath(m_store->folder.PathOf(m_family.file)),
                                     std::filesystem::perms::owner_write);
        {
            const UnprivilegedUser user(m_store->folder);
            if (!UnprivilegedUser::IsUnprivileged()) {
                QSKIP(UnprivilegedUser::skipReason);
            }
            m_store->reports.Expect(
                "cSQL", Routine("Update"), ErrorNumber::PathFileAccess,
                "Another program has changed " + m_store->folder.PathOf(m_family.file) +
                    ". The file is damaged, incomplete or cannot be read.\r\nNothing was "
                    "written. Your changes are kept while Tarno is open. Restore that file or "
                    "move it away, then save again.");
            QCOMPARE(Add(m_store->sql, "ours"), ""s);
        }
        std::filesystem::permissions(ToPath(m_store->folder.PathOf(m_family.file)),
                                     std::filesystem::perms::owner_all);
        QCOMPARE(m_store->folder.Read(m_family.file), "<data/>"s);
    }

    // for example, if the file system of the log is unmounted
    void replacedFolder_isNotWrittenToUntilTheOldOneReturns()
    {
        NOT_ON_WINDOWS("renaming a folder of which a test holds files");
        const std::string path = m_store->folder.Path();
        std::filesystem::rename(ToPath(path), ToPath(path + ".away"));
        std::filesystem::create_directory(ToPath(path));
        m_store->reports.Expect(
            "cSQL", Routine("Update"), ErrorNumber::PathNotFound,
            "The folder of " + m_family.file + " is no longer the one that was opened:\r\n" + path +
                "\r\nNothing was written. Your changes are kept while Tarno is open. Make the "
                "original folder available, then save again.");
        QCOMPARE(Change(m_store->sql, 1, "ours"), failed);
        QCOMPARE(m_store->folder.Names(), Texts());
        std::filesystem::remove(ToPath(path));
        std::filesystem::rename(ToPath(path + ".away"), ToPath(path));
        QCOMPARE(Change(m_store->sql, 2, "ours too"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 ours too"}));
    }

    void lockedFolder_failsAndKeepsTheChange()
    {
        FolderLock held = SystemFileOperations()->Lock(m_store->folder.Path());
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::PermissionDenied);
        QCOMPARE(Change(m_store->sql, 1, "ours"), failed);
        held.reset();
        QCOMPARE(Change(m_store->sql, 2, "ours too"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 ours too"}));
    }

    void earlierFailedSave_isMergedToo()
    {
        m_store->operations.Fail("create", ErrorNumber::DiskFull, 2);
        for (const char* value : {"ours", "ours again"}) {
            m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::DiskFull);
            QCOMPARE(Change(m_store->sql, 1, value), failed);
        }
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        QCOMPARE(Change(m_store->sql, 2, "ours too"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours again", "2 ours too", "3 theirs"}));
        QCOMPARE(Kept(), Texts());
    }

    void addition_mergedTwice_returnsItsFinalKey()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        m_store->operations.Before("create", [&] { Add(other.sql, "theirs too"); });
        m_store->operations.DisableLocks();
        QCOMPARE(Add(m_store->sql, "ours"), "5"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 theirs", "4 theirs too", "5 ours"}));
    }

    void failedAddition_withANewKey_updatesTheCallersRecord()
    {
        Record record = Fetch(m_store->sql, 0);
        record.SetText(1, "ours");
        m_store->operations.Fail("replace", ErrorNumber::PathFileAccess);
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::PathFileAccess);
        QCOMPARE((m_store->sql.*m_family.update)(record), failed);
        QCOMPARE(record.Text(0), "3"s);
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        record.SetText(1, "ours again");
        QCOMPARE((m_store->sql.*m_family.update)(record), succeeded);
        QCOMPARE(record.Text(0), "4"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 theirs", "4 ours again"}));
    }

private:
    Record Fetch(cSQL& sql, int key) const
    {
        Record record;
        (sql.*m_family.get)(static_cast<std::int16_t>(key), record);
        return record;
    }

    Status Change(cSQL& sql, int key, const std::string& value) const
    {
        Record record = Fetch(sql, key);
        record.SetText(1, value);
        return (sql.*m_family.update)(record);
    }

    /// Adds a record. Returns its key, or an empty text on failure.
    std::string Add(cSQL& sql, const std::string& value) const
    {
        Record record = Fetch(sql, 0);
        record.SetText(1, value);
        return (sql.*m_family.update)(record) == succeeded ? record.Text(0) : "";
    }

    Status Remove(cSQL& sql, int key) const { return (sql.*m_family.remove)(static_cast<std::int16_t>(key)); }

    /// Returns "key value" of each record in a file on disk.
    Texts Records(const std::string& file) const
    {
        const std::string bytes = ReadWholeFile(m_store->programFolder.FindPath(file));
        pugi::xml_document document;
        Texts records;
        if (!document.load_buffer(bytes.data(), bytes.size())) {
            records.emplace_back("(not well-formed)");
        }
        for (const pugi::xml_node& record : document.child("data").children()) {
            records.push_back(std::string(record.child(m_family.key.c_str()).text().get()) + ' ' +
                              record.first_child().next_sibling().text().get());
        }
        return records;
    }

    /// Returns "key value" of each record in memory.
    Texts RecordsInMemory(const cSQL& sql) const
    {
        RecordList list;
        (sql.*m_family.list)(list);
        Texts records;
        for (const RecordView& record : list) {
            records.push_back(record.Text(0) + ' ' + record.Text(1));
        }
        return records;
    }

    std::string KeptName(int number) const
    {
        return ToPath(m_family.file).stem().string() + "-kept-" + std::to_string(number) + ".xml";
    }

    /// Returns the names of all kept versions and temporaries.
    Texts Kept() const
    {
        Texts names = m_store->folder.Names();
        std::erase_if(names, [](const std::string& name) {
            return name.find("-kept-") == std::string::npos && !name.ends_with("tmp");
        });
        return names;
    }

    std::string Routine(const char* verb) const { return m_family.name + verb; }

    RecordFamily m_family;
    std::unique_ptr<TestStore> m_store;
    Texts m_notices;
};

TEST_CLASS(tst_OtherPrograms)
#include "tst_OtherPrograms.moc"
