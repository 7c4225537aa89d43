#include "core/Xml.h"
#include "store/DataFile.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// A data file in a temporary folder.
struct Opened {
    explicit Opened(const char* name) : file(name, {"report", "RptNo"}) {}

    void Load() { file.Load(programFolder, operations); }

    void Load(const char* bytes)
    {
        folder.Write(file.Name(), bytes);
        Load();
    }

    /// Saves and returns the number of the error, or 0.
    int Save(const std::string& name)
    {
        return RaisedNumber([&] { file.Save(programFolder, name, operations, merged); });
    }

    bool IsLoaded()
    {
        return RaisedNumber([&] { file.Records().List(); }) == 0;
    }

    TemporaryFolder folder;
    ProgramFolder programFolder{folder.Path()};
    ScriptedFileOperations operations;
    DataFile file;
    MergeResult merged;
};

} // namespace

class tst_DataFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void load_readsTheRecords()
    {
        Opened test("Rpt.xml");
        QVERIFY(!test.IsLoaded());
        test.Load("<data><report><RptNo>1</RptNo></report></data>");
        QCOMPARE(test.file.Records().Get("1").Text(0), "1"s);
        QVERIFY(test.file.Records().Changed().empty());
        QCOMPARE(test.file.Name(), "Rpt.xml"s);
    }

    void load_ignoresTheCaseOfTheName()
    {
        Opened test("field.xml");
        test.folder.Write("Field.XML", "<data/>");
        test.Load();
        QVERIFY(test.IsLoaded());
    }

    void release_dropsTheDocument()
    {
        Opened test("Rpt.xml");
        test.Load("<data/>");
        test.operations.Fail("create", ErrorNumber::DiskFull);
        QCOMPARE(test.Save("Rpt.xml"), 61);
        test.file.Release();
        QVERIFY(!test.IsLoaded());
        QVERIFY(test.file.Records().Changed().empty());
        QCOMPARE(test.folder.Read("Rpt.xml"), "<data/>"s);
    }

    void save_takesEveryStep()
    {
        Opened test("Rpt.xml");
        test.Load("<data/>");
        const auto before = static_cast<std::ptrdiff_t>(test.operations.Steps().size());
        QCOMPARE(test.Save("Rpt.xml"), 0);
        // states of the folder, the file, and the file again just before it is replaced
        QCOMPARE(Texts(test.operations.Steps().begin() + before, test.operations.Steps().end()),
                 (Texts{"get state", "lock", "get state", "create", "get state", "replace", "sync folder"}));
        QCOMPARE(test.folder.Read("Rpt.xml"), "<data />\n"s);
        QCOMPARE(test.folder.Names(), Texts{"Rpt.xml"});
    }

    void save_writesTheFileThatWasLoaded_data()
    {
        QTest::addColumn<Texts>("files");
        QTest::newRow("save name") << Texts{"rpt.xml"};
        QTest::newRow("name as loaded") << Texts{"Rpt.xml"};
        QTest::newRow("other case") << Texts{"RPT.XML"};
        QTest::newRow("both exist: the one that was loaded") << Texts{"Rpt.xml", "rpt.xml"};
    }

    void save_writesTheFileThatWasLoaded()
    {
        QFETCH(Texts, files);
        if (files.size() > 1) {
            NOT_ON_WINDOWS("names of files that differ in case");
        }
        Opened test("Rpt.xml");
        for (const std::string& name : files) {
            test.folder.Write(name, "<data><!-- " + name + " --></data>");
        }
        test.Load();
        QCOMPARE(test.Save("rpt.xml"), 0);
        QCOMPARE(test.folder.Names(), files);
        QCOMPARE(test.folder.Read(files.front()), "<data>\n\t<!-- " + files.front() + " -->\n</data>\n");
    }

    void save_recordInsertedFirst_precedesText_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::newRow("line end") << "\n"s;
        QTest::newRow("other text") << " a &amp; b<!-- c -->\n"s;
    }

    void save_recordInsertedFirst_precedesText()
    {
        QFETCH(const std::string, text);
        Opened test("Rpt.xml");
        test.Load(("<data>" + text + "</data>").c_str());
        test.file.Records().Restore(Record::FromXml("<report><RptNo>1</RptNo></report>"), {});
        QCOMPARE(test.Save("Rpt.xml"), 0);
        QCOMPARE(test.folder.Read("Rpt.xml"),
                 "<data>\n\t<report>\n\t\t<RptNo>1</RptNo>\n\t</report>" + text + "</data>\n");
    }

    void save_missingFile_isCreatedUnderItsSaveName()
    {
        Opened test("field.xml");
        test.Load("<data/>");
        std::filesystem::remove(ToPath(test.folder.PathOf("field.xml")));
        QCOMPARE(test.Save("Field.xml"), 0);
        QCOMPARE(test.folder.Names(), Texts{"Field.xml"});
    }

    void save_fileRenamedSinceLoading_isFoundIgnoringCase()
    {
        NOT_ON_WINDOWS("names of files that differ in case");
        Opened test("field.xml");
        test.Load("<data/>");
        std::filesystem::rename(ToPath(test.folder.PathOf("field.xml")),
                                ToPath(test.folder.PathOf("FIELD.XML")));
        QCOMPARE(test.Save("Field.xml"), 0);
        QCOMPARE(test.folder.Names(), Texts{"FIELD.XML"});
    }
};

TEST_CLASS(tst_DataFile)
#include "tst_DataFile.moc"
