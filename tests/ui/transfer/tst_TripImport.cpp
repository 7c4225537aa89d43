// The way from the menu to the imported trips.

#include "TransferTest.h"
#include "exchange/Csv.h"
#include "support/TestClass.h"
#include "ui/transfer/TripImport.h"

#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

class ImportProgram : public ProgramWithTrips
{
public:
    void ExpectFile(const std::optional<QString>& path)
    {
        files.ExpectOpen({.title = QStringLiteral("Import Trips"),
                          .filter = QStringLiteral("Tables (*.csv *.txt *.tsv);;All files (*)"),
                          .folder = FromUtf8(programFolder.GetAppPath() + '/'),
                          .fileName = {}},
                         path);
    }

    void ExpectProblem(const QString& path, const std::string& reason)
    {
        messages.Expect({.text = QStringLiteral("This file cannot be imported: ") + path +
                                 QStringLiteral("\r\n") + FromUtf8(reason) +
                                 QStringLiteral(".\r\nNothing was changed."),
                         .title = QStringLiteral("Import Error"),
                         .icon = Icon::Exclamation},
                        Button::Ok);
    }

    QString Path(const char* name) const { return FromUtf8(folder.PathOf(name)); }
};

} // namespace

class tst_TripImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void noFile_importsNothing()
    {
        ImportProgram program;
        program.ExpectFile(std::nullopt);
        QCOMPARE(ImportTrips(program.program, nullptr), Texts());
    }

    void missingFile_isExplained()
    {
        ImportProgram program;
        program.ExpectFile(program.Path("missing.csv"));
        program.ExpectProblem(program.Path("missing.csv"), Error(ErrorNumber::FileNotFound).Description());
        QCOMPARE(ImportTrips(program.program, nullptr), Texts());
    }

    void damagedFile_isExplained()
    {
        ImportProgram program;
        program.folder.Write("open.csv", "StartDate,Notes\n2026-11-20,\"open\n");
        program.ExpectFile(program.Path("open.csv"));
        program.ExpectProblem(program.Path("open.csv"),
                              ReadCsv("StartDate,Notes\n2026-11-20,\"open\n").problem->Describe());
        QCOMPARE(ImportTrips(program.program, nullptr), Texts());
    }

    void file_isImported()
    {
        ImportProgram program;
        program.folder.Write("one.csv", "StartDate,Location\n2026-11-20,Pittwater\n");
        program.ExpectFile(program.Path("one.csv"));
        program.messages.ExpectInformation(
            QStringLiteral("1 trip imported. Edit > Undo takes the import back."), QStringLiteral("Tarno"));
        Texts keys;
        WhileOpen(
            "fImport", [&] { keys = ImportTrips(program.program, nullptr); },
            [](QDialog& window) { Click(window, "cmdImport"); });
        QCOMPARE(keys, Texts{"4"});
    }
};

TEST_CLASS(tst_TripImport)
#include "tst_TripImport.moc"
