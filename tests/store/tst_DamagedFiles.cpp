#include "RecordFamily.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/TestStore.h"
#include "support/UnsavedFiles.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const std::string good = "<data><tarno><TarnoNo>1</TarnoNo><StartDate>2003-02-05</StartDate></tarno></data>";

std::string Utf16(const std::string& ascii)
{
    std::string bytes = "\xFF\xFE";
    for (const char letter : ascii) {
        bytes += letter;
        bytes += '\0';
    }
    return bytes;
}

/// Checks that every operation on entries fails with a report and writes nothing.
void CheckEveryOperationFails(TestStore& store)
{
    QCOMPARE(store.sql.Init(), succeeded);
    Record entry;
    QCOMPARE(store.sql.EntryGet(0, entry), succeeded);

    RecordList entries;
    store.reports.Expect("cSQL", "EntryList", ErrorNumber::ObjectNotSet);
    QCOMPARE(store.sql.EntryList(entries), failed);
    QVERIFY(entries.empty());
    Record none;
    store.reports.Expect("cSQL", "EntryGet", ErrorNumber::ObjectNotSet);
    QCOMPARE(store.sql.EntryGet(1, none), failed);
    for (const char* key : {"0", "1"}) {
        entry.SetText(0, key);
        store.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::ObjectNotSet);
        QCOMPARE(store.sql.EntryUpdate(entry), failed);
        QCOMPARE(entry.Text(0), std::string(key));
    }
    store.reports.Expect("cSQL", "EntryDelete", ErrorNumber::ObjectNotSet);
    QCOMPARE(store.sql.EntryDelete(1), failed);
    QVERIFY(!store.operations.HasWritten());
    QCOMPARE(UnsavedFiles(store.sql), Texts());

    // the other files are not affected
    RecordList fields;
    QCOMPARE(store.sql.FieldList(fields), succeeded);
    QVERIFY(!fields.empty());
}

} // namespace

class tst_DamagedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void damagedFile_isNeverOverwritten_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("empty") << ""s;
        QTest::newRow("truncated") << good.substr(0, good.size() - 10);
        QTest::newRow("truncated in a value") << good.substr(0, 40);
        QTest::newRow("two roots") << good + good;
        QTest::newRow("zeros") << std::string(good.size(), '\0');
        QTest::newRow("zeros after") << good + std::string(512, '\0');
        QTest::newRow("garbage after") << good + "garbage";
        QTest::newRow("end tag after") << good + "</data>";
        QTest::newRow("other root") << "<log>" + good + "</log>";
        QTest::newRow("root in other case") << "<Data/>"s;
        QTest::newRow("not XML") << "Dear diary"s;
        QTest::newRow("not UTF-8")
            << "<data><tarno><TarnoNo>1</TarnoNo><StartDate>\xE9</StartDate></tarno></data>"s;
        QTest::newRow("control character")
            << "<data><tarno><TarnoNo>1</TarnoNo><StartDate>\x02</StartDate></tarno></data>"s;
        QTest::newRow("unknown reference")
            << "<data><tarno><TarnoNo>1</TarnoNo><StartDate>&tide;</StartDate></tarno></data>"s;
        QTest::newRow("truncated UTF-16") << Utf16(good).substr(0, 2 * good.size() - 20);
        QTest::newRow("UTF-16 without byte order mark") << Utf16(good).substr(2);
    }

    void damagedFile_isNeverOverwritten()
    {
        QFETCH(std::string, bytes);
        TestStore store;
        store.folder.Write("tarno.xml", bytes);
        CheckEveryOperationFails(store);
        QCOMPARE(store.folder.Read("tarno.xml"), bytes);
    }

    void missingFile_isNotCreatedFromItsTemplate()
    {
        TestStore store;
        std::filesystem::remove(ToPath(store.folder.PathOf("tarno.xml")));
        CheckEveryOperationFails(store);
        QVERIFY(!std::filesystem::exists(ToPath(store.folder.PathOf("tarno.xml"))));
    }

    void folderInPlaceOfTheFile_failsEveryOperation()
    {
        TestStore store;
        std::filesystem::remove(ToPath(store.folder.PathOf("tarno.xml")));
        store.folder.MakeFolder("tarno.xml");
        CheckEveryOperationFails(store);
    }

    void pipeInPlaceOfTheFile_doesNotHang()
    {
        NOT_ON_WINDOWS("pipes");
        TestStore store;
        std::filesystem::remove(ToPath(store.folder.PathOf("tarno.xml")));
        store.folder.MakePipe("tarno.xml");
        CheckEveryOperationFails(store);
        QVERIFY(std::filesystem::is_fifo(ToPath(store.folder.PathOf("tarno.xml"))));
    }

    void danglingLink_failsEveryOperation()
    {
        NOT_ON_WINDOWS("links");
        TestStore store;
        std::filesystem::remove(ToPath(store.folder.PathOf("tarno.xml")));
        store.folder.MakeLink("tarno.xml", "unplugged/tarno.xml");
        CheckEveryOperationFails(store);
        QVERIFY(std::filesystem::is_symlink(ToPath(store.folder.PathOf("tarno.xml"))));
    }

    void repairedFile_isReadByTheNextInit()
    {
        TestStore store;
        store.folder.Write("tarno.xml", good.substr(0, 40));
        CheckEveryOperationFails(store);
        store.folder.Write("tarno.xml", good);
        QCOMPARE(store.sql.Init(), succeeded);
        Record entry;
        QCOMPARE(store.sql.EntryGet(1, entry), succeeded);
        QCOMPARE(entry.Text(1), "2003-02-05"s);
    }

    void nodeBeforeData_breaksOnlyListingAndNewKeys_data()
    {
        QTest::addColumn<std::string>("before");
        QTest::newRow("declaration") << R"(<?xml version="1.0"?>)"s;
        QTest::newRow("comment") << "<!-- mine -->"s;
        QTest::newRow("instruction") << "<?mine it?>"s;
    }

    void nodeBeforeData_breaksOnlyListingAndNewKeys()
    {
        QFETCH(std::string, before);
        TestStore store;
        store.folder.Write("tarno.xml", before + good);
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList entries;
        QCOMPARE(store.sql.EntryList(entries), succeeded);
        QVERIFY(entries.empty());

        Record entry;
        QCOMPARE(store.sql.EntryGet(0, entry), succeeded);
        store.reports.Expect("cSQL", "EntryUpdate", ErrorNumber::ObjectNotSet);
        QCOMPARE(store.sql.EntryUpdate(entry), failed);
        QCOMPARE(entry.Text(0), "0"s);
        QVERIFY(!store.operations.HasWritten());
        QCOMPARE(store.folder.Read("tarno.xml"), before + good);

        // operations that look up records by key still work
        QCOMPARE(store.sql.EntryGet(1, entry), succeeded);
        entry.SetText(1, "2003-02-06");
        QCOMPARE(store.sql.EntryUpdate(entry), succeeded);
        QCOMPARE(store.folder.Read("tarno.xml"),
                 before + "\n<data>\n\t<tarno>\n\t\t<TarnoNo>1</TarnoNo>\n"
                          "\t\t<StartDate>2003-02-06</StartDate>\n\t</tarno>\n</data>\n");
        QCOMPARE(store.sql.EntryDelete(1), succeeded);
        QCOMPARE(store.folder.Read("tarno.xml"), before + "\n<data />\n");
    }

    void otherEncodings_areReadAndSavedAsUtf8_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + good;
        QTest::newRow("UTF-16") << Utf16(good);
        QTest::newRow("Windows line ends") << "<data>\r\n<tarno>\r\n<TarnoNo>1</TarnoNo>\r\n"
                                              "<StartDate>2003-02-05</StartDate>\r\n</tarno>\r\n</data>\r\n"s;
    }

    void otherEncodings_areReadAndSavedAsUtf8()
    {
        QFETCH(std::string, bytes);
        TestStore store;
        store.folder.Write("tarno.xml", bytes);
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList entries;
        QCOMPARE(store.sql.EntryList(entries), succeeded);
        QCOMPARE(KeysOf(entries), Texts{"1"});
        Record entry(entries.front());
        entry.SetText(1, "Sn\u0101pper");
        QCOMPARE(store.sql.EntryUpdate(entry), succeeded);
        QCOMPARE(store.folder.Read("tarno.xml"),
                 "<data>\n\t<tarno>\n\t\t<TarnoNo>1</TarnoNo>\n"
                 "\t\t<StartDate>Sn\u0101pper</StartDate>\n\t</tarno>\n</data>\n"s);
    }
};

TEST_CLASS(tst_DamagedFiles)
#include "tst_DamagedFiles.moc"
