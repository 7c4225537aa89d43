// The export of trips.

#include "TransferTest.h"
#include "exchange/Csv.h"
#include "support/TestClass.h"
#include "ui/transfer/dlgExport.h"

#include <QComboBox>
#include <QLocale>
#include <QRadioButton>
#include <QtTest>

using namespace Tarno;
using namespace std::string_literals;

namespace
{

/// The dialog on the screen.
class ShownExport : public dlgExport
{
public:
    explicit ShownExport(const TestProgram& program, TripsFound found = {})
        : dlgExport(program.program, std::move(found), nullptr)
    {
        show();
        AwaitActive(*this);
    }
};

class ExportProgram : public ProgramWithTrips
{
public:
    /// The user chooses the file, or cancels.
    void ExpectFile(bool chosen = true)
    {
        files.ExpectSave({.title = QStringLiteral("Export Trips"),
                          .filter = QStringLiteral("CSV (*.csv)"),
                          .folder = FromUtf8(programFolder.GetAppPath() + '/'),
                          .fileName = QStringLiteral("trips.csv"),
                          .suffix = QStringLiteral(".csv")},
                         chosen ? std::optional(Path()) : std::nullopt);
    }

    QString Path() const { return FromUtf8(folder.PathOf("trips.csv")); }

    /// Returns the dates of the exported trips.
    Texts Exported() const
    {
        Texts dates;
        for (const CsvRow& row : ReadCsv(folder.Read("trips.csv")).rows) {
            dates.push_back(row.at(1));
        }
        return dates;
    }
};

const TripsFound twoTrips{.keys = {"1", "3"}, .query = QStringLiteral("place:pittwater")};

} // namespace

class tst_dlgExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void opening_withoutQuery_offersAllTrips()
    {
        ExportProgram program;
        const ShownExport window(program);
        QVERIFY(Find<QRadioButton>(window, "optAll").isChecked());
        QVERIFY(!Find<QRadioButton>(window, "optFound").isEnabled());
    }

    void opening_withQuery_proposesTheTripsFound()
    {
        ExportProgram program;
        const ShownExport window(program, twoTrips);
        const auto& found = Find<QRadioButton>(window, "optFound");
        QVERIFY(found.isEnabled() && found.isChecked());
        QCOMPARE(ToUtf8(found.text()), "Trips &found: 2"s);
    }

    void separator_isTheOneThatSpreadsheetsExpect_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("separator");
        QTest::newRow("English") << QLocale(QLocale::English, QLocale::Australia) << "Comma";
        QTest::newRow("German") << QLocale(QLocale::German, QLocale::Germany) << "Semicolon";
    }

    void separator_isTheOneThatSpreadsheetsExpect()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, separator);
        QLocale::setDefault(locale);
        ExportProgram program;
        QCOMPARE(Find<QComboBox>(ShownExport(program), "cboSeparator").currentText(), separator);
    }

    void export_writesTheTrips_data()
    {
        QTest::addColumn<bool>("onlyFound");
        QTest::addColumn<int>("separator");
        QTest::newRow("all, comma") << false << 0;
        QTest::newRow("all, tab") << false << 2;
        QTest::newRow("found, semicolon") << true << 1;
    }

    void export_writesTheTrips()
    {
        QFETCH(bool, onlyFound);
        QFETCH(int, separator);
        ExportProgram program;
        ShownExport window(program, twoTrips);
        if (!onlyFound) {
            Click(window, "optAll");
        }
        Find<QComboBox>(window, "cboSeparator").setCurrentIndex(separator);
        program.ExpectFile();
        program.messages.ExpectInformation(QStringLiteral("Exported %1 trips to ").arg(onlyFound ? 2 : 3) +
                                               program.Path(),
                                           QStringLiteral("Tarno"));
        Click(window, "cmdExport");
        QVERIFY(!window.isVisible());
        QCOMPARE(program.Exported(), onlyFound
                                         ? (Texts{"StartDate", "2026-11-02", "2026-12-01"})
                                         : (Texts{"StartDate", "2026-11-02", "2026-11-03", "2026-12-01"}));
        QCOMPARE(ReadCsv(program.folder.Read("trips.csv")).separator, ",;\t"[separator]);
    }

    void export_cancelled_keepsTheDialog()
    {
        ExportProgram program;
        ShownExport window(program);
        program.ExpectFile(false);
        Click(window, "cmdExport");
        QVERIFY(window.isVisible());
    }

    void export_failedWrite_namesTheFileAndKeepsTheDialog()
    {
        ExportProgram program;
        ShownExport window(program);
        program.ExpectFile();
        program.operations.Fail("create", ErrorNumber::PermissionDenied);
        program.messages.Expect({.text = QStringLiteral("The file could not be written: ") + program.Path() +
                                         QStringLiteral("\r\n") +
                                         FromUtf8(Error(ErrorNumber::PermissionDenied).Description()),
                                 .title = QStringLiteral("Export Error"),
                                 .icon = Icon::Exclamation},
                                Button::Ok);
        Click(window, "cmdExport");
        QVERIFY(window.isVisible());
    }

    void existingFile_isReplacedOnlyAfterAQuestion_data()
    {
        QTest::addColumn<bool>("isAgreed");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void existingFile_isReplacedOnlyAfterAQuestion()
    {
        QFETCH(bool, isAgreed);
        ExportProgram program;
        program.folder.Write("trips.csv", "before");
        ShownExport window(program);
        program.ExpectFile();
        program.messages.Expect({.text = QStringLiteral("This file already exists: ") + program.Path() +
                                         QStringLiteral("\r\n\r\nDo you want to replace it?"),
                                 .title = QStringLiteral("Replace File"),
                                 .icon = Icon::Question,
                                 .buttons = Buttons::YesNo,
                                 .byDefault = Button::No},
                                isAgreed ? Button::Yes : Button::No);
        if (isAgreed) {
            program.messages.ExpectInformation(QStringLiteral("Exported 3 trips to ") + program.Path(),
                                               QStringLiteral("Tarno"));
        }
        Click(window, "cmdExport");
        QCOMPARE(window.isVisible(), !isAgreed);
        QCOMPARE(program.folder.Read("trips.csv") == "before", !isAgreed);
    }

    void fileOfTheLog_isNeverReplaced()
    {
        ExportProgram program;
        const QString log = FromUtf8(program.folder.PathOf("tarno.xml"));
        const std::string before = program.folder.Read("tarno.xml");
        ShownExport window(program);
        program.files.ExpectSave({.title = QStringLiteral("Export Trips"),
                                  .filter = QStringLiteral("CSV (*.csv)"),
                                  .folder = FromUtf8(program.programFolder.GetAppPath() + '/'),
                                  .fileName = QStringLiteral("trips.csv"),
                                  .suffix = QStringLiteral(".csv")},
                                 log);
        program.messages.Expect({.text = QStringLiteral("This file may belong to your log: ") + log +
                                         QStringLiteral("\r\nNothing was written. Choose another name."),
                                 .title = QStringLiteral("Export Error"),
                                 .icon = Icon::Exclamation},
                                Button::Ok);
        Click(window, "cmdExport");
        QVERIFY(window.isVisible());
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void nothingFound_cannotBeExported()
    {
        ExportProgram program;
        const ShownExport window(program, {.keys = {}, .query = QStringLiteral("bream")});
        QVERIFY(!Find<QWidget>(window, "cmdExport").isEnabled());
        Find<QRadioButton>(window, "optAll").click();
        QVERIFY(Find<QWidget>(window, "cmdExport").isEnabled());
    }

    void closing_writesNothing()
    {
        ExportProgram program;
        ShownExport window(program);
        Press(window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }
};

TEST_CLASS(tst_dlgExport)
#include "tst_dlgExport.moc"
