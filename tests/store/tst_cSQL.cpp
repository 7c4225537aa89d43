#include "RecordFamily.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <cstring>

#ifndef Q_OS_WIN
#include <sys/inotify.h>
#include <unistd.h>
#endif

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const Texts sevenFiles{"tarno.xml",         "field.xml", "location.xml", "tarnoblank.xml",
                       "locationblank.xml", "Rpt.xml",   "RptBlank.xml"};

#ifndef Q_OS_WIN
/// Records the names of files in a folder that are opened during its lifetime.
class OpenedFiles
{
public:
    explicit OpenedFiles(const TemporaryFolder& folder) : m_watch(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        m_isWatching = ::inotify_add_watch(m_watch, folder.Path().c_str(), IN_OPEN) >= 0;
    }

    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;

    ~OpenedFiles() { ::close(m_watch); }

    bool IsWatching() const { return m_isWatching; }

    /// Returns the names in the order of opening.
    Texts Names() const
    {
        Texts names;
        std::array<char, 16384> buffer{};
        const ssize_t size = ::read(m_watch, buffer.data(), buffer.size());
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if ((event.mask & IN_ISDIR) == 0) {
                names.emplace_back(buffer.data() + at + sizeof event);
            }
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
        return names;
    }

private:
    int m_watch;
    bool m_isWatching = false;
};
#endif

std::string Field(const std::string& key, const std::string& label)
{
    return "\t<field>\n\t\t<FieldNo>" + key + "</FieldNo>\n\t\t<Label>" + label + "</Label>\n\t</field>\n";
}

} // namespace

class tst_cSQL : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init_loadsTheSevenFilesInTheirOrder()
    {
        NOT_ON_WINDOWS("watching which files are opened");
#ifndef Q_OS_WIN
        TestStore store;
        const OpenedFiles opened(store.folder);
        QVERIFY(opened.IsWatching());
        QCOMPARE(store.sql.Init(), succeeded);
        QCOMPARE(opened.Names(), sevenFiles);
#endif
    }

    void init_filesMissing_succeedsAndCreatesNone()
    {
        TestStore store;
        for (const std::string& name : sevenFiles) {
            std::filesystem::remove(ToPath(store.folder.PathOf(name)));
        }
        QCOMPARE(store.sql.Init(), succeeded);
        QCOMPARE(store.folder.Names(), Texts());
    }

    void beforeInit_everyListFails()
    {
        TestStore store;
        for (const RecordFamily& family : RecordFamilies()) {
            RecordList list;
            store.reports.Expect("cSQL", family.name + "List", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.list)(list), failed);
        }
    }

    void deInit_savesNothingAndEveryOperationFailsAfterwards()
    {
        TestStore store;
        store.folder.Write("location.xml",
                           "<data><location><LocNo>1</LocNo><LocName>a</LocName></location></data>");
        store.folder.Write("tarno.xml", "<data><tarno><TarnoNo>1</TarnoNo></tarno></data>");
        QCOMPARE(store.sql.Init(), succeeded);
        Record entry;
        QCOMPARE(store.sql.EntryGet(1, entry), succeeded);
        QCOMPARE(store.sql.DeInit(), succeeded);
        QVERIFY(!store.operations.HasWritten());

        for (const RecordFamily& family : RecordFamilies()) {
            RecordList list;
            store.reports.Expect("cSQL", family.name + "List", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.list)(list), failed);
            Record record;
            for (const std::int16_t key : {std::int16_t{0}, std::int16_t{1}}) {
                store.reports.Expect("cSQL", family.name + "Get", ErrorNumber::ObjectNotSet);
                QCOMPARE((store.sql.*family.get)(key, record), failed);
            }
            store.reports.Expect("cSQL", family.name + "Update", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.update)(entry), failed);
            store.reports.Expect("cSQL", family.name + "Delete", ErrorNumber::ObjectNotSet);
            QCOMPARE((store.sql.*family.remove)(1), failed);
        }
        RecordList fields;
        store.reports.Expect("cSQL", "FieldList", ErrorNumber::ObjectNotSet);
        QCOMPARE(store.sql.FieldList(fields), failed);
        store.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::ObjectNotSet);
        QCOMPARE(store.sql.FieldUpdate(entry), failed);
        store.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        QCOMPARE(store.sql.LocationNameGet("1"), "1"s);
        QVERIFY(!store.operations.HasWritten());
    }

    void entryUpdate_template_isAppendedWithAllItsValues()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        Record record;
        QCOMPARE(store.sql.EntryGet(0, record), succeeded);
        QCOMPARE(record.Text(0), "0"s);
        QCOMPARE(store.sql.EntryUpdate(record), succeeded);
        QCOMPARE(record.Text(0), "1"s);
        std::string expected = store.folder.Read("tarnoblank.xml");
        expected.replace(expected.find("<TarnoNo>0"), 10, "<TarnoNo>1");
        QCOMPARE(store.folder.Read("tarno.xml"), expected);
    }

    void locationNameGet_returnsTheSecondValue()
    {
        TestStore store;
        store.folder.Write("location.xml",
                           "<data><location><LocNo>1</LocNo><Anything>Reef~CL~west</Anything></location>"
                           "<location><LocNo>x'y</LocNo><LocName>odd</LocName></location></data>");
        QCOMPARE(store.sql.Init(), succeeded);
        QCOMPARE(store.sql.LocationNameGet("1"), "Reef~CL~west"s);
        QCOMPARE(store.sql.LocationNameGet("x'y"), "odd"s);
    }

    void locationNameGet_missingLocation_isReportedAndReturnsOne()
    {
        TestStore store;
        store.folder.Write("location.xml",
                           "<data><location><LocNo>1</LocNo><LocName>Reef</LocName></location></data>");
        QCOMPARE(store.sql.Init(), succeeded);
        for (const char* key : {"2", "01", "", "' or '1'='1"}) {
            store.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
            QCOMPARE(store.sql.LocationNameGet(key), "1"s);
        }
    }

    void locationNameGet_locationWithoutName_isEmpty()
    {
        TestStore store;
        store.folder.Write("location.xml", "<data><location><LocNo>5</LocNo></location></data>");
        QCOMPARE(store.sql.Init(), succeeded);
        QCOMPARE(store.sql.LocationNameGet("5"), ""s);
    }

    void fieldList_allFields_inFileOrder()
    {
        TestStore store;
        store.folder.Write("field.xml", "<data>" + Field("2", "b") + Field("1", "a") + "</data>");
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        QCOMPARE(KeysOf(fields), (Texts{"2", "1"}));
    }

    void fieldUpdate_replacesTheFieldInTheExistingFile()
    {
        TestStore store;
        store.folder.Write("field.xml", "<data>" + Field("2", "b") + Field("1", "a") + "</data>");
        const Texts names = store.folder.Names();
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        Record field(fields.front());
        field.SetText(1, "new");
        QCOMPARE(store.sql.FieldUpdate(field), succeeded);
        QCOMPARE(store.folder.Read("field.xml"),
                 "<data>\n" + Field("2", "new") + Field("1", "a") + "</data>\n");
        QCOMPARE(store.folder.Names(), names);
    }

    void fieldUpdate_missingKey_isReportedEvenForZero()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        Record field(fields.front());
        for (const char* key : {"0", "1000"}) {
            field.SetText(0, key);
            store.reports.Expect("cSQL", "FieldUpdate", ErrorNumber::ObjectNotSet);
            QCOMPARE(store.sql.FieldUpdate(field), failed);
        }
        QVERIFY(!store.operations.HasWritten());
    }

    void reportUpdateAndDelete_writeTheSameFile()
    {
        for (const char* name : {"Rpt.xml", "rpt.xml", "RPT.XML"}) {
            TestStore store;
            std::filesystem::rename(ToPath(store.folder.PathOf("Rpt.xml")),
                                    ToPath(store.folder.PathOf(name)));
            const Texts names = store.folder.Names();
            QCOMPARE(store.sql.Init(), succeeded);
            Record report;
            QCOMPARE(store.sql.ReportGet(0, report), succeeded);
            QCOMPARE(store.sql.ReportUpdate(report), succeeded);
            QVERIFY(store.folder.Read(name).find("<RptNo>1</RptNo>") != std::string::npos);
            QCOMPARE(store.folder.Names(), names);
            QCOMPARE(store.sql.ReportDelete(1), succeeded);
            QCOMPARE(store.folder.Read(name), "<data />\n"s);
            QCOMPARE(store.folder.Names(), names);
        }
    }

    void saves_createNoOtherFile()
    {
        TestStore store;
        const Texts names = store.folder.Names();
        QCOMPARE(store.sql.Init(), succeeded);
        for (const RecordFamily& family : RecordFamilies()) {
            Record record;
            QCOMPARE((store.sql.*family.get)(0, record), succeeded);
            QCOMPARE((store.sql.*family.update)(record), succeeded);
            QCOMPARE((store.sql.*family.update)(record), succeeded);
            QCOMPARE((store.sql.*family.remove)(1), succeeded);
        }
        QCOMPARE(store.folder.Names(), names);
    }

    void saves_missingFiles_areCreatedUnderTheirSaveNames()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        for (const std::string& name : sevenFiles) {
            std::filesystem::remove(ToPath(store.folder.PathOf(name)));
        }
        Record record;
        QCOMPARE(store.sql.EntryGet(0, record), succeeded);
        QCOMPARE(store.sql.EntryUpdate(record), succeeded);
        QCOMPARE(store.sql.LocationGet(0, record), succeeded);
        QCOMPARE(store.sql.LocationUpdate(record), succeeded);
        QCOMPARE(store.sql.ReportGet(0, record), succeeded);
        QCOMPARE(store.sql.ReportUpdate(record), succeeded);
        RecordList fields;
        QCOMPARE(store.sql.FieldList(fields), succeeded);
        QCOMPARE(store.sql.FieldUpdate(Record(fields.front())), succeeded);
        QCOMPARE(store.folder.Names(), (Texts{"Field.xml", "location.xml", "rpt.xml", "tarno.xml"}));

        for (const std::string& name : store.folder.Names()) {
            std::filesystem::remove(ToPath(store.folder.PathOf(name)));
        }
        QCOMPARE(store.sql.EntryDelete(1), succeeded);
        QCOMPARE(store.sql.LocationDelete(1), succeeded);
        QCOMPARE(store.sql.ReportDelete(1), succeeded);
        QCOMPARE(store.folder.Names(), (Texts{"Rpt.xml", "location.xml", "tarno.xml"}));
    }
};

TEST_CLASS(tst_cSQL)
#include "tst_cSQL.moc"
