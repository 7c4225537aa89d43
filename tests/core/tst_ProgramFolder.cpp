#include "core/ProgramFolder.h"
#include "support/Platform.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_ProgramFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void getAppPath_rootOfADrive_hasNoTrailingSeparator()
    {
        const ProgramFolder drive("C:\\", '\\');
        QCOMPARE(drive.GetAppPath(), "C:"s);
        QCOMPARE(drive.PathOf("tarno.xml"), "C:\\tarno.xml"s);
        const ProgramFolder root("/", '/');
        QCOMPARE(root.GetAppPath(), ""s);
        QCOMPARE(root.PathOf("tarno.xml"), "/tarno.xml"s);
    }

    void getAppPath_anyOtherFolder_isUnchanged()
    {
        QCOMPARE(ProgramFolder("C:\\Fishing Log", '\\').GetAppPath(), "C:\\Fishing Log"s);
        QCOMPARE(ProgramFolder("/opt/tarno", '/').GetAppPath(), "/opt/tarno"s);
        QCOMPARE(ProgramFolder("/opt/tarno\\", '/').GetAppPath(), "/opt/tarno\\"s);
    }

    void pathOf_joinsFolderAndName()
    {
        QCOMPARE(ProgramFolder("C:\\Log", '\\').PathOf("Rpt.xml"), "C:\\Log\\Rpt.xml"s);
        const TemporaryFolder folder;
        QCOMPARE(ProgramFolder(folder.Path()).PathOf("Rpt.xml"), folder.PathOf("Rpt.xml"));
    }

    void findPath_prefersTheExactName()
    {
        const TemporaryFolder folder;
        for (const char* name : {"FIELD.XML", "Field.xml", "field.xml"}) {
            folder.Write(name, name);
        }
        QCOMPARE(ProgramFolder(folder.Path()).FindPath("Field.xml"), folder.PathOf("Field.xml"));
        QCOMPARE(ProgramFolder(folder.Path()).FindPath("field.xml"), folder.PathOf("field.xml"));
    }

    void findPath_ignoresCase_data()
    {
        QTest::addColumn<std::string>("stored");
        QTest::addColumn<std::string>("asked");
        QTest::newRow("field.xml") << "field.xml"s
                                   << "Field.xml"s;
        QTest::newRow("Rpt.xml") << "Rpt.xml"s
                                 << "rpt.xml"s;
        QTest::newRow("RPTBLANK.XML") << "RPTBLANK.XML"s
                                      << "RptBlank.xml"s;
    }

    void findPath_ignoresCase()
    {
        QFETCH(std::string, stored);
        QFETCH(std::string, asked);
        const TemporaryFolder folder;
        folder.Write("other.xml", "x");
        folder.Write(stored, "y");
        QCOMPARE(ReadWholeFile(ProgramFolder(folder.Path()).FindPath(asked)), "y"s);
        NOT_ON_WINDOWS("names of files that differ in case");
        QCOMPARE(ProgramFolder(folder.Path()).FindPath(asked), folder.PathOf(stored));
        QCOMPARE(ProgramFolder(folder.Path() + '/').FindPath(asked), folder.PathOf(stored));
    }

    void findPath_missingFile_returnsPathOf()
    {
        const TemporaryFolder folder;
        folder.Write("field.xml.bak", "x");
        QCOMPARE(ProgramFolder(folder.Path()).FindPath("Field.xml"), folder.PathOf("Field.xml"));
        QCOMPARE(ProgramFolder(folder.PathOf("gone")).FindPath("Field.xml"), folder.PathOf("gone/Field.xml"));
    }
};

TEST_CLASS(tst_ProgramFolder)
#include "tst_ProgramFolder.moc"
