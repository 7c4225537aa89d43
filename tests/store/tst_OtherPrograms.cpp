#include "RecordFamily.h"
#include "support/PlainUser.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// A second program on the same folder. It has loaded the files when it is made.
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

std::string WordsWhenTheirsIsTaken(const std::string& file, const std::string& kept)
{
    return "Another program has changed " + file +
           ". Nothing is lost: the log is now as that program left it, with your change; what you saw here "
           "before is kept "
           "in\r\n" +
           kept;
}

} // namespace

// Another program writes a data file while this one runs: a second Tarno, a tool that synchronises folders, a
// hand with an editor. Nothing of either side is lost without a word.
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
        m_store->folder.Write(m_family.file,
                              RecordFamily::File({m_family.Made("1", "one"), m_family.Made("2", "two")}));
        QCOMPARE(m_store->sql.Init(), succeeded);
    }

    void cleanup() { m_store.reset(); }

    void bothAdd_bothAreThere()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        QCOMPARE(Add(m_store->sql, "ours"), "4"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 theirs", "4 ours"}));
        QCOMPARE(Held(m_store->sql), Records(m_family.file));
        QVERIFY(!IsAnythingKept());
    }

    void bothAddInTurns_allAreThereInOrder()
    {
        OtherProgram other(*m_store);
        Texts expected{"1 one", "2 two"};
        for (int key = 3; key <= 12; ++key) {
            const std::string value = "value " + std::to_string(key);
            QCOMPARE(Add(key % 2 == 0 ? other.sql : m_store->sql, value), std::to_string(key));
            expected.push_back(std::to_string(key) + ' ' + value);
        }
        QCOMPARE(Records(m_family.file), expected);
        QVERIFY(!IsAnythingKept());
    }

    void bothChangeDifferentRecords_bothChangesAreThere()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 1, "theirs"), succeeded);
        ExpectTheirsIsTaken("Update");
        QCOMPARE(Change(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 theirs", "2 ours"}));
        QCOMPARE(Held(m_store->sql), Records(m_family.file));
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 two"}));

        // once is enough
        QCOMPARE(Change(m_store->sql, 2, "again"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 theirs", "2 again"}));
    }

    void bothChangeTheSameRecord_theOtherVersionIsKept()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 2, "theirs"), succeeded);
        ExpectOursStays("Update");
        QCOMPARE(Change(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 ours"}));
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 theirs"}));
        QCOMPARE(Change(m_store->sql, 2, "again"), succeeded);
    }

    void changeOfARemovedRecord_theOtherVersionIsKept()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Remove(other.sql, 2), succeeded);
        ExpectOursStays("Update");
        QCOMPARE(Change(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 ours"}));
        QCOMPARE(Records(Kept()), Texts{"1 one"});
    }

    void removalOfAChangedRecord_theOtherVersionIsKept()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 2, "theirs"), succeeded);
        ExpectOursStays("Delete");
        QCOMPARE(Remove(m_store->sql, 2), succeeded);
        QCOMPARE(Records(m_family.file), Texts{"1 one"});
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 theirs"}));
    }

    void removalOfARemovedRecord_isNoQuarrel()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        QCOMPARE(Remove(m_store->sql, 7), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 theirs"}));
        QVERIFY(!IsAnythingKept());
    }

    void otherRemovesARecord_whatStoodHereIsKept()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Remove(other.sql, 1), succeeded);
        ExpectTheirsIsTaken("Update");
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"2 two", "3 ours"}));
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 two"}));
    }

    void olderVersionPutBack_whatStoodHereIsKept()
    {
        const std::string older = m_store->folder.Read(m_family.file);
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        WriteOther(older);
        ExpectTheirsIsTaken("Update");
        QCOMPARE(Add(m_store->sql, "more"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 more"}));
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 two", "3 ours"}));
    }

    void unusableVersion_isKeptAndWrittenOver_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("empty") << ""s;
        QTest::newRow("cut off") << "<data><tarno>"s;
        QTest::newRow("other root") << "<log/>"s;
        QTest::newRow("zeros") << std::string(200, '\0');
        QTest::newRow("declaration before the root")
            << "<?xml version=\"1.0\"?>"s + RecordFamily::File({m_family.Made("1", "one")});
    }

    void unusableVersion_isKeptAndWrittenOver()
    {
        QFETCH(std::string, bytes);
        WriteOther(bytes);
        ExpectOursStays("Update");
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 ours"}));
        QCOMPARE(m_store->folder.Read(Kept()), bytes);
    }

    void sameBytesWrittenAnew_areNoOtherVersion()
    {
        WriteOther(m_store->folder.Read(m_family.file));
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        WriteOther(m_store->folder.Read(m_family.file));
        QCOMPARE(Change(m_store->sql, 1, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 two", "3 ours"}));
        QVERIFY(!IsAnythingKept());
    }

    void otherLayoutOfTheSameRecords_isTakenOver()
    {
        const std::string bytes = m_store->folder.Read(m_family.file);
        std::string onOneLine;
        std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(onOneLine),
                     [](char c) { return c != '\n' && c != '\t'; });
        WriteOther("\xEF\xBB\xBF" + onOneLine.substr(0, 6) + "<!-- by hand -->" + onOneLine.substr(6));
        QCOMPARE(Change(m_store->sql, 1, "ours"), succeeded);
        QCOMPARE(Held(m_store->sql), (Texts{"1 ours", "2 two"}));
        QVERIFY(m_store->folder.Read(m_family.file).find("by hand") != std::string::npos);
        QVERIFY(!IsAnythingKept());
    }

    void fileRemoved_isWrittenAnew()
    {
        std::filesystem::remove(ToPath(m_store->folder.PathOf(m_family.file)));
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 ours"}));
        QVERIFY(!IsAnythingKept());
    }

    void folderInItsPlace_failsAndKeepsTheChange()
    {
        std::filesystem::remove(ToPath(m_store->folder.PathOf(m_family.file)));
        m_store->folder.MakeFolder(m_family.file);
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::PathFileAccess);
        QCOMPARE(Change(m_store->sql, 1, "ours"), failed);
        std::filesystem::remove(ToPath(m_store->folder.PathOf(m_family.file)));
        QCOMPARE(Change(m_store->sql, 1, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 two"}));
    }

    void unreadableVersion_isNeverWrittenOver()
    {
        m_store->operations.ExchangeNothing(); // nor would it be looked at afterwards
        WriteOther("<data/>");
        std::filesystem::permissions(ToPath(m_store->folder.PathOf(m_family.file)),
                                     std::filesystem::perms::owner_write);
        {
            const PlainUser user(m_store->folder);
            if (!PlainUser::IsPlain()) {
                QSKIP(PlainUser::whyNot);
            }
            m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::PathFileAccess);
            QCOMPARE(Add(m_store->sql, "ours"), ""s);
        }
        std::filesystem::permissions(ToPath(m_store->folder.PathOf(m_family.file)),
                                     std::filesystem::perms::owner_all);
        QCOMPARE(m_store->folder.Read(m_family.file), "<data/>"s);
    }

    void failedSaveBefore_otherVersionIsKept()
    {
        m_store->operations.Fail("write", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::DiskFull);
        QCOMPARE(Change(m_store->sql, 1, "ours"), failed);
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        ExpectOursStays("Update");
        QCOMPARE(Change(m_store->sql, 2, "ours too"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 ours too"}));
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 two", "3 theirs"}));
    }

    void failedFolderSync_isNoOtherVersion()
    {
        m_store->operations.Fail("sync folder", ErrorNumber::DeviceInputOutput);
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::DeviceInputOutput);
        QCOMPARE(Change(m_store->sql, 1, "ours"), failed);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 two"}));
        QCOMPARE(Change(m_store->sql, 1, "again"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 again", "2 two"}));
        QVERIFY(!IsAnythingKept());
    }

    void keepingFails_nothingIsWritten()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 2, "theirs"), succeeded);
        m_store->operations.Fail("write", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::DiskFull);
        QCOMPARE(Change(m_store->sql, 2, "ours"), failed);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 theirs"}));
        QVERIFY(!IsAnythingKept());
        ExpectOursStays("Update");
        QCOMPARE(Change(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 theirs"}));
    }

    void savingFailsAfterTakingOver_nextSaveWritesBoth()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Add(other.sql, "theirs"), "3"s);
        m_store->operations.Fail("sync", ErrorNumber::DiskFull);
        m_store->reports.Expect("cSQL", Routine("Update"), ErrorNumber::DiskFull);
        QCOMPARE(Change(m_store->sql, 1, "ours"), failed);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 theirs"}));
        QCOMPARE(Change(m_store->sql, 1, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 ours", "2 two", "3 theirs"}));
        QVERIFY(!IsAnythingKept());
    }

    void otherIsQuickerThanTheLook_itsVersionIsKept()
    {
        OtherProgram other(*m_store);
        m_store->operations.BeforeExchange([&] { QCOMPARE(Add(other.sql, "theirs"), "3"s); });
        ExpectOursStays("Update");
        QCOMPARE(Add(m_store->sql, "ours"), "3"s);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two", "3 ours"}));
        QCOMPARE(Records(Kept()), (Texts{"1 one", "2 two", "3 theirs"}));
    }

    void bothHappen_bothAreTold()
    {
        OtherProgram other(*m_store);
        QCOMPARE(Change(other.sql, 2, "theirs"), succeeded);
        m_store->operations.BeforeExchange(
            [&] { QCOMPARE(Change(other.sql, 2, "theirs again"), succeeded); });
        m_store->reports.ExpectWords("cSQL", Routine("Update"),
                                     WordsWhenOursStays(m_family.file, m_store->folder.PathOf(Kept(1))) +
                                         "\r\n\r\n" +
                                         WordsWhenOursStays(m_family.file, m_store->folder.PathOf(Kept(2))));
        QCOMPARE(Change(m_store->sql, 2, "ours"), succeeded);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 ours"}));
        QCOMPARE(Records(Kept(1)), (Texts{"1 one", "2 theirs"}));
        QCOMPARE(Records(Kept(2)), (Texts{"1 one", "2 theirs again"}));
    }

    void endedBeforeTheOtherVersionWasKept_nextStartKeepsIt()
    {
        // what a program leaves that is ended by force right after its exchange
        const std::string theirs = RecordFamily::File({m_family.Made("3", "theirs")});
        m_store->folder.Write(m_family.file + '.' + std::to_string(m_store->operations.ProcessNumber()) +
                                  "-12-34.tarno-tmp",
                              theirs);
        m_store->reports.ExpectWords(
            "cSQL", "Init",
            "Tarno was ended by force while it wrote " + m_family.file +
                ". Nothing is lost: what another program had written meanwhile is kept in\r\n" +
                m_store->folder.PathOf(Kept()));
        QCOMPARE(m_store->sql.Init(), succeeded);
        QCOMPARE(m_store->folder.Read(Kept()), theirs);
        QCOMPARE(Records(m_family.file), (Texts{"1 one", "2 two"}));
        QCOMPARE(m_store->sql.Init(), succeeded);
    }

private:
    using Get = Status (cSQL::*)(std::int16_t, Record&) const;

    Record Fetched(cSQL& sql, int key) const
    {
        Record record;
        (sql.*m_family.get)(static_cast<std::int16_t>(key), record);
        return record;
    }

    Status Change(cSQL& sql, int key, const std::string& value) const
    {
        Record record = Fetched(sql, key);
        record.SetText(1, value);
        return (sql.*m_family.update)(record);
    }

    /// Adds a record; returns its key, or the empty text.
    std::string Add(cSQL& sql, const std::string& value) const
    {
        Record record = Fetched(sql, 0);
        record.SetText(1, value);
        return (sql.*m_family.update)(record) == succeeded ? record.Text(0) : "";
    }

    Status Remove(cSQL& sql, int key) const { return (sql.*m_family.remove)(static_cast<std::int16_t>(key)); }

    /// "key value" of each record in a file, as it lies on the disk.
    Texts Records(const std::string& file) const
    {
        const std::string bytes = ReadWholeFile(m_store->programFolder.Existing(file));
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

    /// The records as the program holds them.
    Texts Held(const cSQL& sql) const
    {
        RecordList list;
        (sql.*m_family.list)(list);
        Texts records;
        for (const RecordView& record : list) {
            records.push_back(record.Text(0) + ' ' + record.Text(1));
        }
        return records;
    }

    /// The name of the file that keeps the other version.
    std::string Kept(int number = 1) const
    {
        return ToPath(m_family.file).stem().string() + "-kept-" + std::to_string(number) + ".xml";
    }

    std::string Routine(const char* verb) const { return m_family.name + verb; }

    void ExpectOursStays(const char* verb, int number = 1)
    {
        m_store->reports.ExpectWords("cSQL", Routine(verb),
                                     WordsWhenOursStays(m_family.file, m_store->folder.PathOf(Kept(number))));
    }

    void ExpectTheirsIsTaken(const char* verb)
    {
        m_store->reports.ExpectWords("cSQL", Routine(verb),
                                     WordsWhenTheirsIsTaken(m_family.file, m_store->folder.PathOf(Kept())));
    }

    /// Writes another version, two records of which the first is the program's own.
    void WriteOther(const std::string& bytes) const { m_store->folder.Write(m_family.file, bytes); }

    bool IsAnythingKept() const
    {
        const Texts names = m_store->folder.Names();
        return std::any_of(names.begin(), names.end(), [](const std::string& name) {
            return name.find("-kept-") != std::string::npos || name.ends_with("tmp");
        });
    }

    RecordFamily m_family;
    std::unique_ptr<TestStore> m_store;
};

TEST_CLASS(tst_OtherPrograms)
#include "tst_OtherPrograms.moc"
