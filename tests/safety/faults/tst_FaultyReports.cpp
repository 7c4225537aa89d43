// The report builder, the customising window and the exports while saving fails.

#include "reports/BuilderTest.h"
#include "reports/ReportExport.h"
#include "reports/RowsReport.h"
#include "reports/fCustom.h"
#include "safety/faults/Faults.h"
#include "support/TestClass.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

const std::vector<Line> twoReports{{"1", "Tides", "TideStart,StartDate", "6,1"},
                                   {"2", "Ends", "EndTime,EndDate,LocNo", "4,2,5"}};

/// Opens the window of customising and takes `steps` in it, which have to close it.
template <typename Steps>
void ShowCustom(TestProgram& program, Steps&& steps)
{
    WhileOpen(
        "fCustom", [&] { fCustom(program.program, nullptr).exec(); }, std::forward<Steps>(steps));
}

/// A report of three rows that is exported to "report.pdf".
class Exported
{
public:
    explicit Exported(bool rtf) : m_rtf(rtf)
    {
        m_report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        m_report.Detail.Height = 300;
        m_document = LayOut(m_report).value();
        m_report.Pages = &m_document;
    }

    /// Exports; the user is told that it failed, or nothing.
    void Export(bool fails)
    {
        const QString format = m_rtf ? QStringLiteral("RTF") : QStringLiteral("PDF");
        program.files.ExpectSave({.title = QStringLiteral("Save Report to ") + format,
                                  .filter = m_rtf ? QStringLiteral("Rich Text Format (*.rtf)")
                                                  : QStringLiteral("PDF Documents (*.pdf)"),
                                  .folder = FromUtf8(program.folder.Path() + '/'),
                                  .fileName = format + QStringLiteral(" Files"),
                                  .suffix = m_rtf ? QStringLiteral(".rtf") : QStringLiteral(".pdf")},
                                 FromUtf8(program.folder.PathOf("report.pdf")));
        if (fails) {
            program.messages.Expect(
                {.text = QStringLiteral("Unable to write to the file ") +
                         FromUtf8(program.folder.PathOf("report.pdf")) +
                         QStringLiteral("\r\nPlease ensure you have selected a valid directory "
                                        "and file for writing."),
                 .title = QStringLiteral("Export Error"),
                 .icon = Icon::Exclamation},
                Button::Ok);
        }
        if (m_rtf) {
            mMain::RTFExport(program.program, m_report, nullptr);
        } else {
            mMain::PDFExport(program.program, m_report, nullptr);
        }
    }

    /// Whether the file is a whole report.
    bool IsWhole() const
    {
        const QByteArray bytes = QByteArray::fromStdString(program.folder.Read("report.pdf")).trimmed();
        return m_rtf ? bytes.startsWith("{\\rtf") && bytes.endsWith('}')
                     : bytes.startsWith("%PDF-") && bytes.endsWith("%%EOF");
    }

    TestProgram program;

private:
    bool m_rtf;
    RowsReport m_report{RowsReport::Numbered(3)};
    Document m_document;
};

} // namespace

class tst_FaultyReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void savedReport_everyFault_keepsTheFrameAndTheOldBytes()
    {
        ProgramWithSixFields program(twoReports);
        const std::string before = program.folder.Read("Rpt.xml");
        const Texts names = program.folder.Names();
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "cmdSave");
            if (!IsTicked(builder, "chkNew")) {
                Click(builder, "chkNew");
            }
            Retype(builder, "txtSaved", "Mine");
            for (const Fault& fault : AllFaults(stepsBefore)) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                for (int tried = 0; tried < (fault.times == 1 ? 1 : 2); ++tried) {
                    program.reports.Expect("cSQL", "ReportUpdate", fault.error);
                    Click(builder, "cmdSavedOK");
                    QVERIFY2(Find<QWidget>(builder, "frSaved").isVisible(), fault.step.c_str());
                    QVERIFY(IsEnabled(builder, "cmdSavedOK"));
                    QCOMPARE(BoxText(builder, "txtSaved"), "Mine"s);
                    QCOMPARE(program.folder.Read("Rpt.xml"), before);
                    QCOMPARE(program.folder.Names(), names);
                    QCOMPARE(program.sql.UnsavedFiles(), Texts{"Rpt.xml"});
                }
                program.operations.Heal();
            }
            Click(builder, "cmdSavedOK");
            QVERIFY(!Find<QWidget>(builder, "frSaved").isVisible());
            QCOMPARE(Choices(builder, "cboSaved"), "Tides|Ends|Mine"s);
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 3U);
        QCOMPARE(program.Stored("Rpt.xml").back().at(1), "Mine"s);
        QCOMPARE(program.folder.Names(), names);
    }

    void savedReport_folderNotSynchronised_isToldAndTheNextSaveSucceeds()
    {
        ProgramWithSixFields program(twoReports);
        const Texts names = program.folder.Names();
        ShowBuilder(program, [&](QDialog& builder) {
            Click(builder, "cmdMoveAll");
            Click(builder, "cmdSave");
            if (!IsTicked(builder, "chkNew")) {
                Click(builder, "chkNew");
            }
            Retype(builder, "txtSaved", "Mine");
            for (const Fault& fault : AllFaults({"sync folder"})) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                program.reports.Expect("cSQL", "ReportUpdate", fault.error);
                Click(builder, "cmdSavedOK");
                QVERIFY(Find<QWidget>(builder, "frSaved").isVisible());
                QCOMPARE(program.Stored("Rpt.xml").size(), 3U);
                program.operations.Heal();
            }
            Click(builder, "cmdSavedOK");
            QVERIFY(!Find<QWidget>(builder, "frSaved").isVisible());
        });
        QCOMPARE(program.Stored("Rpt.xml").size(), 3U);
        QCOMPARE(program.sql.UnsavedFiles(), Texts());
        QCOMPARE(program.folder.Names(), names);
    }

    void customised_everyFault_keepsTheFieldAndTheOldBytes()
    {
        ProgramWithSixFields program;
        const std::string before = program.folder.Read("field.xml");
        const Texts names = program.folder.Names();
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            for (const Fault& fault : AllFaults(stepsBefore)) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                for (int tried = 0; tried < (fault.times == 1 ? 1 : 2); ++tried) {
                    program.reports.Expect("cSQL", "FieldUpdate", fault.error);
                    Click(custom, "cmdOK");
                    QVERIFY2(custom.isVisible(), fault.step.c_str());
                    QVERIFY(IsEnabled(custom, "cmdOK"));
                    QCOMPARE(BoxText(custom, "txtLabel"), "Day"s);
                    QCOMPARE(program.folder.Read("field.xml"), before);
                    QCOMPARE(program.folder.Names(), names);
                    QCOMPARE(program.sql.UnsavedFiles(), Texts{"field.xml"});
                }
                program.operations.Heal();
            }
            Click(custom, "cmdOK");
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(program.Stored("field.xml").at(0).at(3), "Day"s);
        QCOMPARE(program.folder.Names(), names);
    }

    void customised_folderNotSynchronised_isToldAndTheNextSaveSucceeds()
    {
        ProgramWithSixFields program;
        const Texts names = program.folder.Names();
        ShowCustom(program, [&](QDialog& custom) {
            Retype(custom, "txtLabel", "Day");
            for (const Fault& fault : AllFaults({"sync folder"})) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                program.reports.Expect("cSQL", "FieldUpdate", fault.error);
                Click(custom, "cmdOK");
                QVERIFY(custom.isVisible());
                QCOMPARE(program.Stored("field.xml").at(0).at(3), "Day"s);
                program.operations.Heal();
            }
            Click(custom, "cmdOK");
            QVERIFY(!custom.isVisible());
        });
        QCOMPARE(program.sql.UnsavedFiles(), Texts());
        QCOMPARE(program.folder.Names(), names);
    }

    void export_everyFault_leavesTheFileThatWasThere_data() { AddFormats(); }

    void export_everyFault_leavesTheFileThatWasThere()
    {
        QFETCH(bool, rtf);
        Exported exported(rtf);
        exported.program.folder.Write("report.pdf", "older");
        const Texts names = exported.program.folder.Names();
        for (const Fault& fault : AllFaults(exportSteps)) {
            exported.program.operations.Fail(fault.step, fault.error, fault.times);
            exported.Export(true);
            QCOMPARE(exported.program.folder.Read("report.pdf"), "older"s);
            QCOMPARE(exported.program.folder.Names(), names);
            exported.program.operations.Heal();
        }
        for (const Fault& fault : AllFaults({"sync folder"})) {
            exported.program.operations.Fail(fault.step, fault.error, fault.times);
            exported.Export(true);
            QVERIFY(exported.IsWhole());
            exported.program.operations.Heal();
        }
        exported.program.folder.Write("report.pdf", "older");
        exported.Export(false);
        QVERIFY(exported.IsWhole());
        QCOMPARE(exported.program.folder.Names(), names);
    }

    void export_ofANewFile_everyFault_leavesNone_data() { AddFormats(); }

    void export_ofANewFile_everyFault_leavesNone()
    {
        QFETCH(bool, rtf);
        Exported exported(rtf);
        const Texts names = exported.program.folder.Names();
        for (const Fault& fault : AllFaults(exportSteps)) {
            exported.program.operations.Fail(fault.step, fault.error, fault.times);
            exported.Export(true);
            QCOMPARE(exported.program.folder.Names(), names);
            exported.program.operations.Heal();
        }
        exported.Export(false);
        QVERIFY(exported.IsWhole());
    }

private:
    static void AddFormats()
    {
        QTest::addColumn<bool>("rtf");
        QTest::newRow("RTF") << true;
        QTest::newRow("PDF") << false;
    }
};

TEST_CLASS(tst_FaultyReports)
#include "tst_FaultyReports.moc"
