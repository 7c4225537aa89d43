#include "core/SettingsFile.h"
#include "support/Platform.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{
using Texts = std::vector<std::string>;
} // namespace

class tst_SettingsFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void write_firstValue_createsFoldersAndFile()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        SettingsFile(folder.PathOf("config/tarno/settings.xml"), operations)
            .Write("KOWRA", "XTidePath", "x & y");
        QCOMPARE(folder.Read("config/tarno/settings.xml"), "<settings>\n"
                                                           "\t<section name=\"KOWRA\">\n"
                                                           "\t\t<value name=\"XTidePath\">x &amp; y</value>\n"
                                                           "\t</section>\n"
                                                           "</settings>\n"s);
    }

    void write_nextValue_keepsForeignContent()
    {
        const TemporaryFolder folder;
        folder.Write("settings.xml", "<?xml version=\"1.0\"?><!-- mine --><settings><section name=\"Else\">"
                                     "<value name=\"a\">b</value><extra/></section></settings>");
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        file.Write("KOWRA", "XTidePath", "x");
        const std::string after = folder.Read("settings.xml");
        for (const char* kept : {"<?xml version=\"1.0\"?>", "<!-- mine -->", "<extra />"}) {
            QVERIFY(after.find(kept) != std::string::npos);
        }
        QCOMPARE(file.Read("Else", "a").value_or("none"), "b"s);
        QCOMPARE(file.Read("KOWRA", "XTidePath").value_or("none"), "x"s);
    }

    void write_invalidText_becomesReplacementCharacters()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        file.Write("KOWRA\x01", "XTidePath\xFF", "a\0b"s);
        QCOMPARE(file.Read("KOWRA\uFFFD", "XTidePath\uFFFD").value_or("none"), "a\uFFFDb"s);
    }

    void write_overACDataSection_isReadBack()
    {
        const TemporaryFolder folder;
        folder.Write("settings.xml", "<settings><section name=\"KOWRA\">"
                                     "<value name=\"XTidePath\"><![CDATA[x]]></value></section></settings>");
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        file.Write("KOWRA", "XTidePath", "a]]>b");
        QCOMPARE(file.Read("KOWRA", "XTidePath").value_or("none"), "a]]>b"s);
    }

    void read_seesChangesOfOtherPrograms()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        SettingsFile one(folder.PathOf("settings.xml"), operations);
        SettingsFile other(folder.PathOf("settings.xml"), operations);
        one.Write("KOWRA", "first", "1");
        other.Write("KOWRA", "second", "2");
        one.Write("KOWRA", "third", "3");
        QCOMPARE(one.Read("KOWRA", "second").value_or("none"), "2"s);
        QCOMPARE(static_cast<int>(other.Values("KOWRA").value_or(std::vector<Setting>()).size()), 3);
    }

    void damagedFile_isNeitherReadNorOverwritten_data()
    {
        const std::string good =
            R"(<settings><section name="KOWRA"><value name="XTidePath">x</value></section></settings>)";
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("empty") << ""s;
        QTest::newRow("truncated") << good.substr(0, good.size() - 5);
        QTest::newRow("two roots") << good + good;
        QTest::newRow("other root") << "<data>" + good + "</data>";
        QTest::newRow("zeros") << std::string(good.size(), '\0');
        QTest::newRow("not UTF-8") << "<settings><!-- \xE9 -->" + good.substr(10);
    }

    void damagedFile_isNeitherReadNorOverwritten()
    {
        QFETCH(std::string, bytes);
        const TemporaryFolder folder;
        folder.Write("settings.xml", bytes);
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        QVERIFY(!file.Read("KOWRA", "XTidePath"));
        QVERIFY(!file.Values("KOWRA"));
        file.Write("KOWRA", "XTidePath", "y");
        file.RemoveValue("KOWRA", "XTidePath");
        file.RemoveSection("KOWRA");
        QCOMPARE(folder.Read("settings.xml"), bytes);
        QCOMPARE(operations.Steps(), Texts());
    }

    void fileInPlaceOfTheFolder_isUnchanged()
    {
        const TemporaryFolder folder;
        folder.Write("tarno", "a file");
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("tarno/settings.xml"), operations);
        file.Write("KOWRA", "XTidePath", "x");
        QVERIFY(!file.Read("KOWRA", "XTidePath"));
        QCOMPARE(folder.Read("tarno"), "a file"s);
    }

    void pipeInPlaceOfTheFile_doesNotHang()
    {
        NOT_ON_WINDOWS("pipes");
        const TemporaryFolder folder;
        folder.MakePipe("settings.xml");
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        QVERIFY(!file.Read("KOWRA", "XTidePath"));
        file.Write("KOWRA", "XTidePath", "x");
        QVERIFY(std::filesystem::is_fifo(ToPath(folder.PathOf("settings.xml"))));
    }

    void unreadableFile_isNotOverwritten()
    {
        const TemporaryFolder folder;
        folder.Write("settings.xml", "<settings><!-- mine --></settings>");
        std::filesystem::permissions(ToPath(folder.PathOf("settings.xml")),
                                     std::filesystem::perms::owner_write);
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        const UnprivilegedUser user(folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        file.Write("KOWRA", "XTidePath", "x");
        QVERIFY(!file.Values("KOWRA"));
        std::filesystem::permissions(ToPath(folder.PathOf("settings.xml")),
                                     std::filesystem::perms::owner_all);
        QCOMPARE(folder.Read("settings.xml"), "<settings><!-- mine --></settings>"s);
    }

    void failedWrite_keepsTheOldSetting()
    {
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        SettingsFile file(folder.PathOf("settings.xml"), operations);
        file.Write("KOWRA", "XTidePath", "old");
        operations.Fail("create", ErrorNumber::DiskFull);
        file.Write("KOWRA", "XTidePath", "new");
        QCOMPARE(file.Read("KOWRA", "XTidePath").value_or("none"), "old"s);
        QCOMPARE(folder.Names(), Texts{"settings.xml"});
    }

    void systemStore_isInTheUsersConfigurationFolder()
    {
        NOT_ON_WINDOWS("a configuration folder");
        const TemporaryFolder folder;
        ScriptedFileOperations operations;
        qputenv("HOME", QByteArray::fromStdString(folder.PathOf("home")));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.PathOf("xdg")));
        SystemSettingsStore(operations)->Write("KOWRA", "XTidePath", "x");
        QVERIFY(folder.Read("xdg/tarno/settings.xml").find("XTidePath") != std::string::npos);

        // a relative folder is ignored
        for (const char* none : {"", "relative"}) {
            qputenv("XDG_CONFIG_HOME", none);
            SystemSettingsStore(operations)->Write("KOWRA", none, "x");
        }
        qunsetenv("XDG_CONFIG_HOME");
        SystemSettingsStore(operations)->Write("KOWRA", "third", "x");
        const auto values =
            SettingsFile(folder.PathOf("home/.config/tarno/settings.xml"), operations).Values("KOWRA");
        QVERIFY(values.has_value());
        QCOMPARE(static_cast<int>(values->size()), 3);
    }
};

TEST_CLASS(tst_SettingsFile)
#include "tst_SettingsFile.moc"
