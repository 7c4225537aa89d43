// The choice of the data folder: the program folder or the user folder.

#include "app/DataFolder.h"
#include "core/Error.h"
#include "support/RaisedNumber.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

#include <QDir>
#include <QFile>

using namespace Tarno;

namespace
{

/// A machine with the program folder bin/ and without data files.
class Machine
{
public:
    Machine()
    {
        for (const char* folder : {"bin", "share/tarno", "home"}) {
            QDir(At("")).mkpath(QLatin1String(folder));
        }
    }

    QString At(const char* path) const { return QString::fromStdString(folder.PathOf(path)); }

    void WriteShippedFiles(const std::string& where) const
    {
        folder.Write(where + "/field.xml", "<data/>");
        folder.Write(where + "/tarno.xml", "<data><tarno/></data>");
        folder.Write(where + "/Bait.txt", "Worm");
    }

    void Lock(const char* path) const
    {
        QFile::setPermissions(At(path), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    }

    void Unlock(const char* path) const
    {
        QFile::setPermissions(At(path),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }

    DataFolder Find() const { return FindDataFolder(At("bin"), At("home/data/Tarno")); }

    TemporaryFolder folder;
};

} // namespace

class tst_DataFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void filesInTheProgramFolder_areUsed()
    {
        const Machine machine;
        machine.WriteShippedFiles("bin");
        machine.WriteShippedFiles("share/tarno");
        const DataFolder found = machine.Find();
        QCOMPARE(found.path, machine.At("bin"));
        QVERIFY(!found.isNew);
        QVERIFY(!QFile::exists(machine.At("home/data")));
    }

    void noFilesAnywhere_programFolderIsUsed()
    {
        const Machine machine;
        QCOMPARE(machine.Find().path, machine.At("bin"));
    }

    void installed_createsTheUserFolderOnce()
    {
        const Machine machine;
        machine.WriteShippedFiles("share/tarno");
        const DataFolder first = machine.Find();
        QCOMPARE(first.path, machine.At("home/data/Tarno"));
        QVERIFY(first.isNew);
        QCOMPARE(QDir(first.path).entryList(QDir::Files, QDir::Name),
                 QStringList(
                     {QStringLiteral("Bait.txt"), QStringLiteral("field.xml"), QStringLiteral("tarno.xml")}));
        QCOMPARE(machine.folder.Read("home/data/Tarno/tarno.xml"), "<data><tarno/></data>");
        machine.folder.Write("home/data/Tarno/tarno.xml", "mine");
        const DataFolder second = machine.Find();
        QCOMPARE(second.path, first.path);
        QVERIFY(!second.isNew);
        QCOMPARE(machine.folder.Read("home/data/Tarno/tarno.xml"), "mine");
        // no temporary folder is left
        QCOMPARE(QDir(machine.At("home/data")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
    }

    void existingFolder_isTheSameButNeverCreated()
    {
        const Machine machine;
        const auto existing = [&] {
            return ExistingDataFolder(machine.At("bin"), machine.At("home/data/Tarno"));
        };
        QCOMPARE(existing(), machine.At("bin"));
        machine.WriteShippedFiles("share/tarno");
        QCOMPARE(existing(), QString());
        QVERIFY(!QFile::exists(machine.At("home/data")));
        machine.Find();
        QCOMPARE(existing(), machine.At("home/data/Tarno"));
        machine.WriteShippedFiles("bin");
        QCOMPARE(existing(), machine.At("bin"));
    }

    void installedReadOnly_copiesAreWritable()
    {
        const Machine machine;
        machine.WriteShippedFiles("share/tarno");
        for (const char* name : {"share/tarno/field.xml", "share/tarno/tarno.xml", "share/tarno/Bait.txt"}) {
            QFile::setPermissions(machine.At(name), QFileDevice::ReadOwner | QFileDevice::ReadOther);
        }
        machine.Find();
        QVERIFY(QFile::permissions(machine.At("home/data/Tarno/tarno.xml")) & QFileDevice::WriteOwner);
    }

    void readOnlyProgramFolder_filesAreCopiedToTheUserFolder()
    {
        const Machine machine;
        machine.WriteShippedFiles("bin");
        const UnprivilegedUser plain(machine.folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        machine.Lock("bin");
        const DataFolder found = machine.Find();
        machine.Unlock("bin");
        QCOMPARE(found.path, machine.At("home/data/Tarno"));
        QVERIFY(found.isNew);
        QCOMPARE(machine.folder.Read("home/data/Tarno/tarno.xml"), "<data><tarno/></data>");
    }

    void userFolderNotCreated_isPathFileAccess()
    {
        const Machine machine;
        machine.WriteShippedFiles("share/tarno");
        machine.folder.Write("home/data", "a file with the name of the folder");
        QCOMPARE(RaisedNumber([&] { machine.Find(); }), 75);
        QCOMPARE(machine.folder.Read("home/data"), "a file with the name of the folder");
    }

    void filesNotCopied_leaveNoPartialFolder()
    {
        const Machine machine;
        machine.WriteShippedFiles("share/tarno");
        const UnprivilegedUser plain(machine.folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        QFile::setPermissions(machine.At("share/tarno/tarno.xml"), {});
        QCOMPARE(RaisedNumber([&] { machine.Find(); }), 75);
        QVERIFY(QDir(machine.At("home/data")).isEmpty());
    }
};

TEST_CLASS(tst_DataFolder)
#include "tst_DataFolder.moc"
