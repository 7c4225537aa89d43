#include "core/FileOperations.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

} // namespace

// The system's own operations, as the safe writer and the error log use them.
class tst_FileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void followed_noLink_isItself()
    {
        const TemporaryFolder folder;
        folder.Write("h\u0101puku.xml", "x");
        QCOMPARE(ToPath(m_operations->Followed(folder.PathOf("h\u0101puku.xml"))),
                 ToPath(folder.PathOf("h\u0101puku.xml")).make_preferred());
        QCOMPARE(m_operations->Followed(folder.PathOf("new")), folder.PathOf("new"));
        QCOMPARE(m_operations->Followed(folder.PathOf("gone/new")), folder.PathOf("gone/new"));
    }

    void checkReplaceable_regularFileOrNone_passes()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        QCOMPARE(RaisedNumber([&] { m_operations->CheckReplaceable(folder.PathOf("file")); }), 0);
        QCOMPARE(RaisedNumber([&] { m_operations->CheckReplaceable(folder.PathOf("none")); }), 0);
    }

    void checkReplaceable_aFolder_isPathFileAccess()
    {
        const TemporaryFolder folder;
        QCOMPARE(RaisedNumber([&] { m_operations->CheckReplaceable(folder.Path()); }), 75);
    }

    void create_existingFile_isFileAlreadyExistsAndKept()
    {
        const TemporaryFolder folder;
        folder.Write("file", "old");
        QCOMPARE(RaisedNumber([&] { m_operations->Create(folder.PathOf("file"), folder.PathOf("file")); }),
                 58);
        QCOMPARE(folder.Read("file"), "old"s);
    }

    void size_ofAFile_isItsBytes()
    {
        const TemporaryFolder folder;
        folder.Write("file", "12345");
        QCOMPARE(static_cast<int>(m_operations->Size(folder.PathOf("file"))), 5);
        QCOMPARE(RaisedNumber([&] { m_operations->Size(folder.PathOf("none")); }), 76);
    }

    void replace_aFile_takesItsPlace()
    {
        const TemporaryFolder folder;
        folder.Write("from", "new");
        folder.Write("to", "old");
        m_operations->Replace(folder.PathOf("from"), folder.PathOf("to"));
        QCOMPARE(folder.Names(), Texts{"to"});
        QCOMPARE(folder.Read("to"), "new"s);
        QCOMPARE(RaisedNumber([&] { m_operations->Replace(folder.PathOf("none"), folder.PathOf("to")); }),
                 76);
        QCOMPARE(folder.Read("to"), "new"s);
    }

    void exchange_twoFiles_changePlaces()
    {
        const TemporaryFolder folder;
        folder.Write("one", "1");
        folder.Write("other", "2");
        QVERIFY(m_operations->Exchange(folder.PathOf("one"), folder.PathOf("other")));
        QCOMPARE(folder.Read("one"), "2"s);
        QCOMPARE(folder.Read("other"), "1"s);
        QCOMPARE(folder.Names(), (Texts{"one", "other"}));
    }

    void exchange_oneIsNotThere_doesNothing()
    {
        const TemporaryFolder folder;
        folder.Write("one", "1");
        QVERIFY(!m_operations->Exchange(folder.PathOf("one"), folder.PathOf("other")));
        QVERIFY(!m_operations->Exchange(folder.PathOf("other"), folder.PathOf("one")));
        QCOMPARE(folder.Read("one"), "1"s);
        QCOMPARE(folder.Names(), Texts{"one"});
    }

    void remove_aFile_isGone()
    {
        const TemporaryFolder folder;
        folder.Write("file", "x");
        m_operations->Remove(folder.PathOf("file"));
        QCOMPARE(folder.Names(), Texts());
        QCOMPARE(RaisedNumber([&] { m_operations->Remove(folder.PathOf("file")); }), 76);
    }

    void append_newAndExistingFile_grow()
    {
        const TemporaryFolder folder;
        m_operations->Append(folder.PathOf("log"), "one\r\n");
        m_operations->Append(folder.PathOf("log"), "");
        m_operations->Append(folder.PathOf("log"), "two\r\n");
        QCOMPARE(folder.Read("log"), "one\r\ntwo\r\n"s);
    }

    void append_aFolder_isPathFileAccess()
    {
        const TemporaryFolder folder;
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.Path(), "x"); }), 75);
    }

    void append_noSuchFolder_isPathNotFound()
    {
        const TemporaryFolder folder;
        QCOMPARE(RaisedNumber([&] { m_operations->Append(folder.PathOf("gone/log"), "x"); }), 76);
    }

private:
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
};

TEST_CLASS(tst_FileOperations)
#include "tst_FileOperations.moc"
