#include "core/Paths.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_Paths : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void paths_nonAscii_roundTrip()
    {
        const std::string path = "/tmp/p\u0101tiki \u9BDB.jpg";
        QCOMPARE(FromPath(ToPath(path)), path);
        QCOMPARE(FromPath(ToPath("")), ""s);
    }

    void suffix_isComparedWithoutCase()
    {
        QVERIFY(HasSuffix("/tmp/a.b/p\u0101tiki.GpX", ".gpx"));
        for (const char* path : {"", ".gpx", "/tmp/.gpx", "gpx", "a.gpx/b", "a.gpx.csv", "a.gpx "}) {
            QVERIFY2(!HasSuffix(path, ".gpx"), path);
        }
    }

    void readWholeFile_returnsAllBytes()
    {
        const TemporaryFolder folder;
        const std::string bytes = "\r\n\0\xFF\x1A end\n"s;
        folder.Write("tipar\u0101.txt", bytes);
        folder.Write("empty.txt", "");
        QCOMPARE(ReadWholeFile(folder.PathOf("tipar\u0101.txt")), bytes);
        QCOMPARE(ReadWholeFile(folder.PathOf("empty.txt")), ""s);
    }

    void readWholeFile_missingFile_isFileNotFound()
    {
        const TemporaryFolder folder;
        if constexpr (!isWindows) {
            folder.MakeLink("dangling", folder.PathOf("missing"));
        }
        for (const char* name : {"missing", "no folder/missing", "dangling"}) {
            QCOMPARE(RaisedNumber([&] { ReadWholeFile(folder.PathOf(name)); }), 53);
        }
        QCOMPARE(RaisedNumber([] { ReadWholeFile(""); }), 53);
    }

    // A file that may exist is not reported as missing, because the caller would then create it.
    void readWholeFile_inaccessibleFolder_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("closed");
        folder.Write("closed/settings.xml", "<settings/>");
        std::filesystem::permissions(ToPath(folder.PathOf("closed")), std::filesystem::perms::none);
        int number = -1;
        {
            const UnprivilegedUser user(folder);
            if (UnprivilegedUser::IsUnprivileged()) {
                number = RaisedNumber([&] { ReadWholeFile(folder.PathOf("closed/settings.xml")); });
            }
        }
        std::filesystem::permissions(ToPath(folder.PathOf("closed")), std::filesystem::perms::owner_all);
        if (number == -1) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        QCOMPARE(number, 75);
    }

    void readWholeFile_notARegularFile_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("folder");
        QCOMPARE(RaisedNumber([&] { ReadWholeFile(folder.PathOf("folder")); }), 75);
        NOT_ON_WINDOWS("pipes");
        folder.MakePipe("pipe");
        QCOMPARE(RaisedNumber([&] { ReadWholeFile(folder.PathOf("pipe")); }), 75);
    }

    void readWholeFile_unreadableFile_isPathFileAccess()
    {
        const TemporaryFolder folder;
        folder.Write("secret", "spot X");
        std::filesystem::permissions(ToPath(folder.PathOf("secret")), std::filesystem::perms::none);
        const UnprivilegedUser user(folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        QCOMPARE(RaisedNumber([&] { ReadWholeFile(folder.PathOf("secret")); }), 75);
    }

    void resolved_withoutLinks_isUnchanged()
    {
        const TemporaryFolder folder;
        folder.Write("h\u0101puku.xml", "x");
        for (const char* name : {"h\u0101puku.xml", "new", "gone/new"}) {
            QCOMPARE(ToPath(Resolved(folder.PathOf(name))), ToPath(folder.PathOf(name)));
        }
    }

    void resolved_followsLinks()
    {
        NOT_ON_WINDOWS("links");
        const TemporaryFolder folder;
        folder.MakeFolder("real/inner");
        folder.Write("real/inner/file", "x");
        folder.MakeLink("folder link", folder.PathOf("real"));
        folder.MakeLink("real/second", "inner/file");
        folder.MakeLink("first", "folder link/second");
        folder.MakeLink("dangling", "real/new");
        QCOMPARE(Resolved(folder.PathOf("first")), folder.PathOf("real/inner/file"));
        QCOMPARE(Resolved(folder.PathOf("folder link/inner/file")), folder.PathOf("real/inner/file"));
        QCOMPARE(Resolved(folder.PathOf("folder link/new")), folder.PathOf("real/new"));
        QCOMPARE(Resolved(folder.PathOf("dangling")), folder.PathOf("real/new"));
    }

    void resolved_circleOfLinks_isPathFileAccess()
    {
        NOT_ON_WINDOWS("links");
        const TemporaryFolder folder;
        folder.MakeLink("circle", "circle");
        folder.MakeLink("one", "other");
        folder.MakeLink("other", "one");
        QCOMPARE(RaisedNumber([&] { Resolved(folder.PathOf("circle")); }), 75);
        QCOMPARE(RaisedNumber([&] { Resolved(folder.PathOf("one")); }), 75);
    }

    void folderOf_returnsTheParent()
    {
        const TemporaryFolder folder;
        QCOMPARE(FolderOf(folder.PathOf("tarno.xml")), folder.Path());
        QCOMPARE(FolderOf("tarno.xml"), "."s);
    }

    void fileExist_file_isTrue()
    {
        const TemporaryFolder folder;
        for (const char* name : {"plain.jpg", ".hidden", "two words.jpg", "h\u0101puku.jpg"}) {
            folder.Write(name, "x");
            std::string path = folder.PathOf(name);
            QVERIFY(mMain::FileExist(path));
            QCOMPARE(path, folder.PathOf(name));
        }
    }

    void fileExist_trimsTheCallersText()
    {
        const TemporaryFolder folder;
        folder.Write("catch.jpg", "x");
        std::string path = "  " + folder.PathOf("catch.jpg") + " ";
        QVERIFY(mMain::FileExist(path));
        QCOMPARE(path, folder.PathOf("catch.jpg"));

        std::string missing = " " + folder.PathOf("missing.jpg") + "  ";
        QVERIFY(!mMain::FileExist(missing));
        QCOMPARE(missing, folder.PathOf("missing.jpg"));
    }

    void fileExist_folder_isFalse()
    {
        const TemporaryFolder folder;
        folder.MakeFolder("folder");
        for (const std::string& name : {folder.PathOf("folder"), folder.PathOf("folder/"), "/"s}) {
            std::string path = name;
            QVERIFY(!mMain::FileExist(path));
        }
    }

    void fileExist_missing_isFalse_data()
    {
        QTest::addColumn<std::string>("name");
        QTest::newRow("missing") << "missing.jpg"s;
        QTest::newRow("wildcard for any file") << "*"s;
        QTest::newRow("wildcard for any letter") << "catch.jp?"s;
        QTest::newRow("below a file") << "catch.jpg/more"s;
        QTest::newRow("too long") << std::string(5000, 'a');
        QTest::newRow("dangling link") << "dangling"s;
        QTest::newRow("link to itself") << "circle"s;
    }

    void fileExist_missing_isFalse()
    {
        QFETCH(std::string, name);
        const TemporaryFolder folder;
        folder.Write("catch.jpg", "x");
        if constexpr (!isWindows) {
            folder.MakeLink("dangling", folder.PathOf("gone.jpg"));
            folder.MakeLink("circle", folder.PathOf("circle"));
        }
        std::string path = folder.PathOf(name);
        QVERIFY(!mMain::FileExist(path));
        for (std::string nothing : {"", "   "}) {
            QVERIFY(!mMain::FileExist(nothing));
            QCOMPARE(nothing, ""s);
        }
    }

    void fileExist_linkOrPipe_isTrueWithoutOpening()
    {
        NOT_ON_WINDOWS("links");
        const TemporaryFolder folder;
        folder.Write("catch.jpg", "x");
        folder.MakeLink("link.jpg", folder.PathOf("catch.jpg"));
        folder.MakePipe("pipe");
        std::string link = folder.PathOf("link.jpg");
        QVERIFY(mMain::FileExist(link));
        std::string pipe = folder.PathOf("pipe");
        QVERIFY(mMain::FileExist(pipe));
    }
};

TEST_CLASS(tst_Paths)
#include "tst_Paths.moc"
