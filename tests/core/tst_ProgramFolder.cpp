#include "core/ProgramFolder.h"
#include "support/Platform.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <QScopeGuard>

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

    void mayBelongToLog_data()
    {
        QTest::addColumn<std::string>("path");
        QTest::addColumn<bool>("mayBelong");
        const auto row = [](const char* path, bool mayBelong) {
            QTest::newRow(path) << std::string(path) << mayBelong;
        };
        for (const char* path : {"log/tarno.xml", "log/TARNO.XML", "LOG/Bait.TXT", "log/Tarno.log",
                                 "log/pictures/x.png", "log/Tarno", "log/.csv", "log/trips.csv.bak",
                                 "log/../log/new.xml", "elsewhere/../log/tarno.xml", "log/missing/x.jpg"}) {
            row(path, true);
        }
        for (const char* path : {"log/trips.csv", "log/TRIPS.CSV", "log/pictures/t.gpx", "log/t.pdf",
                                 "log/t.rtf", "log/t.ics", "log/t.zip", "log", "log2/tarno.xml",
                                 "log.bak/tarno.xml", "lo/tarno.xml", "tarno.xml", "log/../tarno.xml"}) {
            row(path, false);
        }
    }

    void mayBelongToLog()
    {
        QFETCH(std::string, path);
        QFETCH(bool, mayBelong);
        const TemporaryFolder folder;
        for (const char* name : {"log/pictures", "log2", "elsewhere"}) {
            folder.MakeFolder(name);
        }
        QCOMPARE(ProgramFolder(folder.PathOf("log")).MayBelongToLog(folder.PathOf(path)), mayBelong);
        QCOMPARE(ProgramFolder(folder.PathOf("log/")).MayBelongToLog(folder.PathOf(path)), mayBelong);
    }

    void mayBelongToLog_relativePath_refersToTheCurrentFolder()
    {
        const TemporaryFolder folder;
        const auto goBack = qScopeGuard([current = QDir::currentPath()] { QDir::setCurrent(current); });
        QVERIFY(QDir::setCurrent(QString::fromStdString(folder.Path())));
        QVERIFY(ProgramFolder(folder.Path()).MayBelongToLog("new.xml"));
        QVERIFY(ProgramFolder(".").MayBelongToLog("missing/new.xml"));
        QVERIFY(!ProgramFolder(folder.PathOf("log")).MayBelongToLog("new.xml"));
    }

    void mayBelongToLog_followsLinks()
    {
        NOT_ON_WINDOWS("symbolic links");
        const TemporaryFolder folder;
        folder.MakeFolder("log");
        folder.Write("log/Tarno.log", "x");
        folder.Write("disk.xml", "x");
        folder.MakeLink("linked", folder.PathOf("log"));
        folder.MakeLink("log/tarno.xml", folder.PathOf("disk.xml"));
        folder.MakeLink("log/t.pdf", "Tarno.log");
        folder.MakeLink("toLog.csv", folder.PathOf("log/new.xml"));
        folder.MakeLink("outside.csv", folder.PathOf("disk.xml"));
        for (const char* log : {"log", "linked"}) {
            const ProgramFolder program(folder.PathOf(log));
            for (const char* name : {"linked/Tarno.log", "linked/tarno.xml", "log/tarno.xml", "log/t.pdf",
                                     "linked/t.pdf", "toLog.csv"}) {
                QVERIFY2(program.MayBelongToLog(folder.PathOf(name)), name);
            }
            for (const char* name : {"linked/t.csv", "outside.csv", "disk.xml"}) {
                QVERIFY2(!program.MayBelongToLog(folder.PathOf(name)), name);
            }
        }
    }
};

TEST_CLASS(tst_ProgramFolder)
#include "tst_ProgramFolder.moc"
