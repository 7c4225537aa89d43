#include "store/DataFile.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// A data file in a folder of its own.
struct Opened {
    explicit Opened(const char* name) : file(name) {}

    void Load() { file.Load(programFolder); }

    /// What Save raises, 0 for nothing.
    int Save(const std::string& name)
    {
        return RaisedNumber([&] { file.Save(file.SavePath(programFolder, name), writer); });
    }

    bool IsLoaded() const
    {
        return RaisedNumber([&] { file.Container(); }) == 0;
    }

    TemporaryFolder folder;
    ProgramFolder programFolder{folder.Path()};
    ScriptedFileOperations operations;
    SafeWriter writer{operations};
    DataFile file;
};

} // namespace

class tst_DataFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void load_aDataFile_hasItsContainer()
    {
        Opened test("tarno.xml");
        QVERIFY(!test.IsLoaded());
        test.folder.Write("tarno.xml", "<data><tarno/></data>");
        test.Load();
        QCOMPARE(std::string(test.file.Container().name()), "data"s);
        QVERIFY(test.file.Container() == test.file.Data());
        QVERIFY(!test.file.IsUnsaved());
        QCOMPARE(test.file.Name(), "tarno.xml"s);
    }

    void load_nameInOtherCase_meetsItsFile()
    {
        Opened test("field.xml");
        test.folder.Write("Field.XML", "<data/>");
        test.Load();
        QVERIFY(test.IsLoaded());
    }

    void load_again_forgetsWhatWasThere()
    {
        Opened test("tarno.xml");
        test.folder.Write("tarno.xml", "<data/>");
        test.Load();
        QVERIFY(test.IsLoaded());
        test.folder.Write("tarno.xml", "<data>");
        test.Load();
        QVERIFY(!test.IsLoaded());
    }

    void load_firstChildIsNoData_dataIsStillFound()
    {
        Opened test("tarno.xml");
        test.folder.Write("tarno.xml", "<?xml version=\"1.0\"?><data/>");
        test.Load();
        QCOMPARE(std::string(test.file.Data().name()), "data"s);
        QVERIFY(test.file.Container() != test.file.Data());
    }

    void load_damagedAfterGood_knowsNoOtherVersion()
    {
        Opened test("tarno.xml");
        const std::string path = test.folder.PathOf("tarno.xml");
        test.folder.Write("tarno.xml", "<data/>");
        test.Load();
        test.folder.Write("tarno.xml", "<data><tarno/></data>");
        QVERIFY(test.file.OtherVersion(path).has_value());
        test.folder.Write("tarno.xml", "<data>");
        test.Load();
        QVERIFY(!test.IsLoaded());
        test.folder.Write("tarno.xml", "<data><tarno/></data>");
        QVERIFY(!test.file.OtherVersion(path).has_value());
    }

    void release_everythingIsGone()
    {
        Opened test("tarno.xml");
        test.folder.Write("tarno.xml", "<data/>");
        test.Load();
        test.operations.Fail("write", ErrorNumber::DiskFull);
        QCOMPARE(test.Save("tarno.xml"), 61);
        test.file.Release();
        QCOMPARE(RaisedNumber([&] { test.file.Container(); }), 91);
        QCOMPARE(RaisedNumber([&] { test.file.Data(); }), 91);
        QVERIFY(!test.file.IsUnsaved());
        QCOMPARE(test.folder.Read("tarno.xml"), "<data/>"s);
    }

    void save_name_intoTheFileThatWasLoaded_data()
    {
        QTest::addColumn<Texts>("files");
        QTest::newRow("the name itself") << Texts{"rpt.xml"};
        QTest::newRow("the name as loaded") << Texts{"Rpt.xml"};
        QTest::newRow("neither") << Texts{"RPT.XML"};
        QTest::newRow("both: the one that was loaded") << Texts{"Rpt.xml", "rpt.xml"};
    }

    void save_name_intoTheFileThatWasLoaded()
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
        test.file.Data().append_child("report");
        QCOMPARE(test.Save("rpt.xml"), 0);
        QCOMPARE(test.folder.Names(), files);
        QCOMPARE(test.folder.Read(files.front()),
                 "<data>\n\t<!-- " + files.front() + " -->\n\t<report />\n</data>\n");
    }

    void save_fileGone_isCreatedUnderTheNameForSaving()
    {
        Opened test("field.xml");
        test.folder.Write("field.xml", "<data/>");
        test.Load();
        std::filesystem::remove(ToPath(test.folder.PathOf("field.xml")));
        QCOMPARE(test.Save("Field.xml"), 0);
        QCOMPARE(test.folder.Names(), Texts{"Field.xml"});
    }

    void save_fileRenamedMeanwhile_isMetWhateverItsCase()
    {
        NOT_ON_WINDOWS("names of files that differ in case");
        Opened test("field.xml");
        test.folder.Write("field.xml", "<data/>");
        test.Load();
        std::filesystem::rename(ToPath(test.folder.PathOf("field.xml")),
                                ToPath(test.folder.PathOf("FIELD.XML")));
        QCOMPARE(test.Save("Field.xml"), 0);
        QCOMPARE(test.folder.Names(), Texts{"FIELD.XML"});
    }

    void save_failed_isUnsavedUntilTheNext()
    {
        Opened test("tarno.xml");
        test.folder.Write("tarno.xml", "<data/>");
        test.Load();
        test.file.Data().append_child("tarno");
        test.operations.Fail("exchange", ErrorNumber::PathFileAccess);
        QCOMPARE(test.Save("tarno.xml"), 75);
        QVERIFY(test.file.IsUnsaved());
        QCOMPARE(test.folder.Read("tarno.xml"), "<data/>"s);
        QCOMPARE(test.Save("tarno.xml"), 0);
        QVERIFY(!test.file.IsUnsaved());
        QCOMPARE(test.folder.Read("tarno.xml"), "<data>\n\t<tarno />\n</data>\n"s);
    }

    // as when another program puts a copy from earlier back
    void save_succeeded_whatStoodThereBeforeIsAnotherVersion()
    {
        Opened test("tarno.xml");
        test.folder.Write("tarno.xml", "<data/>");
        test.Load();
        test.file.Data().append_child("tarno");
        QCOMPARE(test.Save("tarno.xml"), 0);
        const std::string path = test.folder.PathOf("tarno.xml");
        QVERIFY(!test.file.OtherVersion(path));
        test.folder.Write("tarno.xml", "<data/>");
        QCOMPARE(test.file.OtherVersion(path).value_or("none"), "<data/>"s);
    }
};

TEST_CLASS(tst_DataFile)
#include "tst_DataFile.moc"
