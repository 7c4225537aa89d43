// Exporting a report as RTF or PDF: the file dialog, the file name, and write errors.

#include "qt/Strings.h"
#include "reports/ReadRtf.h"
#include "reports/RowsReport.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "ui/reports/ReportExport.h"

using namespace Tarno;

namespace
{

enum class Format { Rtf, Pdf };

/// A program and a report in its preview.
struct ShownReport {
    ShownReport()
    {
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 300;
        report.Caption = QStringLiteral("three rows");
        document = LayOut(report).value();
    }

    /// Expects the file dialog and answers it with `file`, or cancels.
    void ExpectQuestion(Format format, const std::optional<QString>& file)
    {
        const bool rtf = format == Format::Rtf;
        program.files.ExpectSave(
            {.title = rtf ? QStringLiteral("Save Report to RTF") : QStringLiteral("Save Report to PDF"),
             .filter =
                 rtf ? QStringLiteral("Rich Text Format (*.rtf)") : QStringLiteral("PDF Documents (*.pdf)"),
             .folder = FromUtf8(program.folder.Path() + '/'),
             .fileName = rtf ? QStringLiteral("RTF Files") : QStringLiteral("PDF Files"),
             .suffix = rtf ? QStringLiteral(".rtf") : QStringLiteral(".pdf")},
            file);
    }

    /// Returns the path of the written file.
    std::optional<QString> Export(Format format)
    {
        return format == Format::Rtf ? mMain::RTFExport(program.program, document, nullptr)
                                     : mMain::PDFExport(program.program, document, nullptr);
    }

    QString PathOf(const char* name) const { return FromUtf8(program.folder.PathOf(name)); }

    void ExpectExportError(const QString& file)
    {
        program.messages.Expect(
            {.text = QStringLiteral("Unable to write to the file ") + file +
                     QStringLiteral("\r\nPlease ensure you have selected a valid directory "
                                    "and file for writing."),
             .title = QStringLiteral("Export Error"),
             .icon = Icon::Exclamation},
            Button::Ok);
    }

    TestProgram program;
    RowsReport report{RowsReport::Numbered(3)};
    Document document;
};

QString NameOf(Format format)
{
    return format == Format::Rtf ? QStringLiteral("RTF") : QStringLiteral("PDF");
}

} // namespace

Q_DECLARE_METATYPE(Format)

class tst_ReportExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void fileName_getsItsSuffix_data()
    {
        QTest::addColumn<Format>("format");
        QTest::addColumn<QByteArray>("chosen");
        QTest::addColumn<QByteArray>("written");
        for (const Format format : {Format::Rtf, Format::Pdf}) {
            const auto row = [&](const char* chosen, const char* written) {
                QTest::addRow("%s as %s", qPrintable(NameOf(format)), chosen)
                    << format << QByteArray(chosen) << QByteArray(written);
            };
            row("report", "report.pdf");
            row("report.pdf", "report.pdf");
            row("report.PDF", "report.PDF.pdf");
            row("report.Pdf", "report.Pdf.pdf");
            row("log.rtf", "log.rtf.pdf");
            row("pdf", "pdf.pdf");
            row(".pdf", ".pdf");
            row("Fänge 釣り", "Fänge 釣り.pdf");
        }
    }

    void fileName_getsItsSuffix()
    {
        QFETCH(Format, format);
        QFETCH(QByteArray, chosen);
        QFETCH(QByteArray, written);
        ShownReport shown;
        const std::vector<std::string> before = shown.program.folder.Names();
        shown.ExpectQuestion(format, shown.PathOf(chosen.constData()));
        QCOMPARE(shown.Export(format), shown.PathOf(written.constData()));
        CheckContent(format, shown.program.folder.Read(written.constData()));
        QCOMPARE(shown.program.folder.Names().size(), before.size() + 1);
    }

    void cancel_writesAndShowsNothing_data() { AddFormats(); }

    void cancel_writesAndShowsNothing()
    {
        QFETCH(Format, format);
        ShownReport shown;
        const std::vector<std::string> before = shown.program.folder.Names();
        shown.ExpectQuestion(format, std::nullopt);
        QVERIFY(!shown.Export(format));
        QCOMPARE(shown.program.folder.Names(), before);
        QVERIFY(shown.program.operations.Steps().empty());
    }

    void olderFile_isReplacedWithoutAQuestion_data() { AddFormats(); }

    void olderFile_isReplacedWithoutAQuestion()
    {
        QFETCH(Format, format);
        ShownReport shown;
        shown.program.folder.Write("report.pdf", "older and longer than nothing");
        shown.ExpectQuestion(format, shown.PathOf("report"));
        shown.Export(format);
        CheckContent(format, shown.program.folder.Read("report.pdf"));
    }

    void writeError_isReportedAndTheOldFileStays_data()
    {
        QTest::addColumn<Format>("format");
        QTest::addColumn<QByteArray>("step");
        QTest::addColumn<int>("error");
        for (const Format format : {Format::Rtf, Format::Pdf}) {
            for (const auto& [step, error] : {std::pair("create", ErrorNumber::PathFileAccess),
                                              std::pair("create", ErrorNumber::PermissionDenied),
                                              std::pair("create", ErrorNumber::DiskFull),
                                              std::pair("replace", ErrorNumber::PathFileAccess)}) {
                QTest::addRow("%s, %s fails with %d", qPrintable(NameOf(format)), step,
                              static_cast<int>(error))
                    << format << QByteArray(step) << static_cast<int>(error);
            }
        }
    }

    void writeError_isReportedAndTheOldFileStays()
    {
        QFETCH(Format, format);
        QFETCH(QByteArray, step);
        QFETCH(int, error);
        ShownReport shown;
        shown.program.folder.Write("report.pdf", "older");
        const std::vector<std::string> before = shown.program.folder.Names();
        shown.program.operations.Fail(step.toStdString(), static_cast<ErrorNumber>(error));
        shown.ExpectQuestion(format, shown.PathOf("report"));
        shown.ExpectExportError(shown.PathOf("report.pdf"));
        shown.Export(format);
        QCOMPARE(shown.program.folder.Read("report.pdf"), std::string("older"));
        QCOMPARE(shown.program.folder.Names(), before);
    }

    void missingFolder_isReported_data() { AddFormats(); }

    void missingFolder_isReported()
    {
        QFETCH(Format, format);
        ShownReport shown;
        shown.ExpectQuestion(format, shown.PathOf("no such folder/report.rtf"));
        shown.ExpectExportError(shown.PathOf("no such folder/report.rtf.pdf"));
        QVERIFY(!shown.Export(format));
    }

    void afterAFailure_theNextTryWrites_data() { AddFormats(); }

    void afterAFailure_theNextTryWrites()
    {
        QFETCH(Format, format);
        ShownReport shown;
        shown.program.operations.Fail("create", ErrorNumber::DiskFull);
        shown.ExpectQuestion(format, shown.PathOf("report"));
        shown.ExpectExportError(shown.PathOf("report.pdf"));
        shown.Export(format);
        shown.ExpectQuestion(format, shown.PathOf("report"));
        shown.Export(format);
        CheckContent(format, shown.program.folder.Read("report.pdf"));
    }

    void otherErrors_goToTheErrorReport_data() { AddFormats(); }

    void otherErrors_goToTheErrorReport()
    {
        QFETCH(Format, format);

        class FailingDialogs final : public FileDialogs
        {
        public:
            std::optional<QString> Open(QWidget* /*parent*/, const FileQuestion& /*question*/) override
            {
                throw Error(ErrorNumber::OutOfMemory);
            }

            std::optional<QString> Save(QWidget* /*parent*/, const FileQuestion& /*question*/) override
            {
                throw Error(ErrorNumber::OutOfMemory);
            }

            std::optional<QString> ChooseFolder(QWidget* /*parent*/, const QString& /*title*/,
                                                const QString& /*folder*/) override
            {
                throw Error(ErrorNumber::OutOfMemory);
            }
        } failing;

        ShownReport shown;
        const TestProgram& parts = shown.program;
        const Program program{parts.program.folder,
                              parts.program.sql,
                              parts.program.descs,
                              parts.program.settings,
                              parts.program.clock,
                              parts.program.messages,
                              failing,
                              parts.program.programs,
                              parts.program.printers,
                              parts.program.operations,
                              parts.program.windows,
                              parts.program.drafts};
        shown.program.reports.Expect("mMain", format == Format::Rtf ? "RTFExport" : "PDFExport",
                                     ErrorNumber::OutOfMemory);
        if (format == Format::Rtf) {
            mMain::RTFExport(program, shown.document, nullptr);
        } else {
            mMain::PDFExport(program, shown.document, nullptr);
        }
    }

private:
    static void AddFormats()
    {
        QTest::addColumn<Format>("format");
        QTest::newRow("RTF") << Format::Rtf;
        QTest::newRow("PDF") << Format::Pdf;
    }

    /// Checks that `bytes` is the complete report in that format.
    static void CheckContent(Format format, const std::string& bytes)
    {
        const QByteArray content = QByteArray::fromStdString(bytes);
        if (format == Format::Rtf) {
            const RtfReading reading = RtfReader::Read(content);
            QCOMPARE(reading.fault, QString());
            QCOMPARE(reading.title, QStringLiteral("three rows"));
            QCOMPARE(reading.body.size(), 3);
            QCOMPARE(reading.body[2].cells.first(), QStringLiteral("row 2"));
        } else {
            QVERIFY(content.startsWith("%PDF-"));
            QVERIFY(content.trimmed().endsWith("%%EOF"));
        }
    }
};

TEST_CLASS(tst_ReportExport)
#include "tst_ReportExport.moc"
