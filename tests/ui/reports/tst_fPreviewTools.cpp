// The tools of the preview with a real report: their tool tips, exports, and the folder of the exported file.

#include "qt/Strings.h"
#include "reports/arLocList.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/reports/fPreview.h"

#include <QAction>
#include <QLineEdit>
#include <QSpinBox>
#include <QToolBar>

using namespace Tarno;

namespace
{

/// The preview of the location report.
class Preview
{
public:
    Preview()
    {
        program.Start();
        program.AddLocation("Wharf");
        program.sql.LocationList(m_locations);
    }

    /// Shows the report, runs `steps` on its window and closes the window.
    void Show(const std::function<void()>& steps)
    {
        arLocList report(program.printers.defaultPage, m_locations);
        WhileOpen(
            "fPreview", [&] { fPreview(program.program, report, nullptr).ShowReport(); },
            [&](QDialog& shown) {
                m_window = &shown;
                steps();
                shown.close();
            });
        m_window = nullptr;
    }

    QDialog& Window() { return *m_window; }

    QToolBar& ToolBar() { return Find<QToolBar>(*m_window, "tlbPreview"); }

    QWidget& StatusLine() { return Find<QWidget>(*m_window, "frExported"); }

    QString ShownPath() { return Find<QLineEdit>(*m_window, "txtExported").text(); }

    QString PathOf(const char* name) const { return FromUtf8(program.folder.PathOf(name)); }

    /// Exports with the tool "&RTF Export" or "&PDF Export" to `file`, or cancels.
    void Export(const char* tool, const std::optional<QString>& file)
    {
        const QString format = QString::fromLatin1(tool).mid(1, 3);
        program.files.ExpectSave({.title = QStringLiteral("Save Report to ") + format,
                                  .filter = format == QLatin1String("RTF")
                                                ? QStringLiteral("Rich Text Format (*.rtf)")
                                                : QStringLiteral("PDF Documents (*.pdf)"),
                                  .folder = FromUtf8(program.folder.Path() + '/'),
                                  .fileName = format + QStringLiteral(" Files"),
                                  .suffix = QLatin1Char('.') + format.toLower()},
                                 file);
        Click(*ToolBar().widgetForAction(&Find<QAction>(*m_window, tool)));
    }

    TestProgram program;

private:
    RecordList m_locations;
    QDialog* m_window = nullptr;
};

} // namespace

class tst_fPreviewTools : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void toolTips_showTheKeys()
    {
        Preview preview;
        preview.Show([&] {
            QStringList tips;
            for (const QAction* tool : preview.ToolBar().actions()) {
                const QString key = tool->shortcut().toString(QKeySequence::NativeText);
                QVERIFY(key.isEmpty() || tool->toolTip().endsWith(QStringLiteral(" (%1)").arg(key)));
                if (!key.isEmpty()) {
                    tips << tool->toolTip().chopped(key.size() + 3);
                }
            }
            QCOMPARE(tips.join(QLatin1Char('|')),
                     QStringLiteral("Print|Page Setup|RTF Export|PDF Export|First page|Previous page|"
                                    "Next page|Last page|Zoom out|Zoom in|One Page|Two Pages"));
        });
    }

    void export_showsWhereTheFileIs_data()
    {
        QTest::addColumn<QByteArray>("tool");
        QTest::newRow("RTF") << QByteArray("&RTF Export");
        QTest::newRow("PDF") << QByteArray("&PDF Export");
    }

    void export_showsWhereTheFileIs()
    {
        QFETCH(QByteArray, tool);
        Preview preview;
        preview.Show([&] {
            QVERIFY(!preview.StatusLine().isVisible());
            const QWidget* focused = QApplication::focusWidget();
            preview.Export(tool, preview.PathOf("places"));
            QVERIFY(preview.StatusLine().isVisible());
            QCOMPARE(preview.ShownPath(), preview.PathOf("places.pdf"));
            QCOMPARE(QApplication::focusWidget(), focused);
            preview.Export(tool, preview.PathOf("again"));
            QCOMPARE(preview.ShownPath(), preview.PathOf("again.pdf"));
        });
    }

    void exportWithoutAFile_changesNothing()
    {
        Preview preview;
        preview.Show([&] {
            preview.Export("&PDF Export", std::nullopt);
            QVERIFY(!preview.StatusLine().isVisible());
            preview.program.operations.Fail("create", ErrorNumber::DiskFull);
            preview.program.messages.Expect(
                {.text = QStringLiteral("Unable to write to the file ") + preview.PathOf("places.pdf") +
                         QStringLiteral("\r\nPlease ensure you have selected a valid directory and file for "
                                        "writing."),
                 .title = QStringLiteral("Export Error"),
                 .icon = Icon::Exclamation},
                Button::Ok);
            preview.Export("&RTF Export", preview.PathOf("places"));
            QVERIFY(!preview.StatusLine().isVisible());
            preview.Export("&RTF Export", preview.PathOf("places"));
            preview.Export("&RTF Export", std::nullopt);
            QCOMPARE(preview.ShownPath(), preview.PathOf("places.pdf"));
        });
    }

    void openFolder_opensTheFolderOfTheFile()
    {
        Preview preview;
        preview.Show([&] {
            preview.Export("&PDF Export", preview.PathOf("places"));
            preview.program.programs.ExpectOpenFolder(FromUtf8(preview.program.folder.Path()));
            Click(preview.Window(), "cmdOpenFolder");
            preview.program.programs.ExpectOpenFolder(FromUtf8(preview.program.folder.Path()));
            PressMnemonic(preview.Window(), Qt::Key_F, "cmdOpenFolder");
        });
    }

    void openFolder_thatFails_isReported()
    {
        Preview preview;
        preview.program.reports.Expect("fPreview", "cmdOpenFolder_Click", ErrorNumber::FileNotFound);
        preview.Show([&] {
            preview.Export("&PDF Export", preview.PathOf("places"));
            preview.program.programs.ExpectOpenFolder(FromUtf8(preview.program.folder.Path()), false);
            Click(preview.Window(), "cmdOpenFolder");
            QVERIFY(preview.Window().isVisible());
        });
    }

    void enterInThePageBox_opensNoFolder()
    {
        Preview preview;
        preview.Show([&] {
            preview.Export("&PDF Export", preview.PathOf("places"));
            Find<QSpinBox>(preview.Window(), "txtPreviewPage").setFocus();
            Press(preview.Window(), Qt::Key_Return);
            QVERIFY(preview.Window().isVisible());
        });
    }
};

TEST_CLASS(tst_fPreviewTools)
#include "tst_fPreviewTools.moc"
