#include "SourceTexts.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <stdexcept>

using namespace Tarno;

namespace
{

using Texts = std::vector<std::string>;

std::string FixedTexts()
{
    std::ifstream file(TARNO_TEST_DATA "/fixed-texts.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

/// Texts that users, scripts and existing data rely on do not change.
class tst_FixedTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sources_containEachFixedText()
    {
        const std::string list = FixedTexts();
        QVERIFY(list.find("Species You Targetted:") != std::string::npos);
        QCOMPARE(MissingTexts(TARNO_SOURCES, list), Texts());
    }

    void literal_isRead_data()
    {
        QTest::addColumn<std::string>("code");
        QTest::addColumn<Texts>("literals");
        const auto row = [](const char* name, const char* code, const Texts& literals) {
            QTest::newRow(name) << std::string(code) << literals;
        };
        row("two", "f(\"Add\", \"Edit\");", {"Add", "Edit"});
        row("adjacent", "f(\"Save \"\n  // why\n  \"Changes\");", {"Save Changes"});
        row("with a prefix", "f(u\"Save\" , u\"Close\");", {"Save", "Close"});
        row("escapes", "\"a\\r\\n\\\"b\\\" \\\\ \\x20\"", {"a\r\n\"b\" \\  "});
        row("empty", "\"\"", {""});
        row("comments", "// \"no\"\n/* \"no\" */ \"yes\"", {"yes"});
        row("comment in a literal", "\"// yes\" \"/*\"", {"// yes/*"});
        row("quotation mark as a character", "'\"', \"yes\", '\\'', '\\\\'", {"yes"});
        row("separated digits", "10'000, \"yes\", 1'000'000, \"also\"", {"yes", "also"});
    }

    void literal_isRead()
    {
        QFETCH(std::string, code);
        QTEST(LiteralsOf(code), "literals");
    }

    void form_givesItsStrings()
    {
        QCOMPARE(
            StringsOfForm(
                "<ui><widget>"
                "<property name='text'><string>&amp;Save</string></property>"
                "<property name='accessibleName'><string>for assistive tools</string></property>"
                "<property name='toolTip'><string notr='true'>&lt;R&amp;&amp;D&gt; it's</string></property>"
                "<attribute name='title'><string>General</string></attribute>"
                "</widget></ui>"),
            (Texts{"Save", "<R&D> it's", "General"}));
    }

    void missingText_isFound_data()
    {
        QTest::addColumn<std::string>("list");
        QTest::addColumn<Texts>("missing");
        const auto row = [](const char* name, const char* list, const Texts& missing) {
            QTest::newRow(name) << std::string(list) << missing;
        };
        row("nothing", "# a comment\n\n[a.ui]\nSave\n[b.cpp]\nOne\\r\nTwo\nTwo\n", {});
        row("other letter", "[a.ui]\nSafe\n", {"a.ui: Safe"});
        row("other case", "[a.ui]\nsave\n", {"a.ui: save"});
        row("only a part", "[a.ui]\nSav\n", {"a.ui: Sav"});
        row("blank at the end", "[a.ui]\nSave\\x20\n", {"a.ui: Save\\x20"});
        row("other file", "[b.cpp]\nSave\n", {"b.cpp: Save"});
        row("one of two files", "[a.ui b.cpp]\nSave\nTwo\n", {});
        row("too rare", "[a.ui]\nSave\nSave\n", {"a.ui: Save"});
        row("too rare over two groups", "[b.cpp]\nTwo\nTwo\n[a.ui]\nSave\n[b.cpp]\nTwo\n", {"b.cpp: Two"});
    }

    void missingText_isFound()
    {
        QFETCH(std::string, list);
        const TemporaryFolder sources;
        sources.Write("a.ui", "<ui><string>&amp;Save</string></ui>");
        sources.Write("b.cpp", "f(\"One\\r\", \"Two\", \"Two\");");
        QTEST(MissingTexts(sources.Path(), list), "missing");
    }

    void missingFile_isAnError()
    {
        const TemporaryFolder sources;
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, MissingTexts(sources.Path(), "[a.ui]\nSave\n"));
    }

    void unknownEscape_isAnError()
    {
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, ResolveEscapes("a\\q"));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, ResolveEscapes("a\\"));
    }
};

TEST_CLASS(tst_FixedTexts)
#include "tst_FixedTexts.moc"
