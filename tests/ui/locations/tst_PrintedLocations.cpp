// "Print" in the list of locations.

#include "reports/PaintedPage.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/PreviewView.h"
#include "ui/reports/fPreview.h"

#include <QAction>
#include <QPushButton>

using namespace Tarno;

class tst_PrintedLocations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void print_showsTheReportWithDateAndTime()
    {
        TestProgram program;
        program.clock.shortDate = "7/03/2003";
        program.clock.shortTime = "6:45 AM";
        program.Start();
        program.AddLocation("Clifton Gardens");
        program.AddLocation("Apple Bay");
        fLocs window(program.program, nullptr);
        window.show();
        program.printers.ExpectPrint(QStringLiteral("Tarno Locations Listing"), 1);
        QStringList texts;
        WhileOpen(
            "fPreview", [&] { Find<QPushButton>(window, "cmdPrint").click(); },
            [&](QDialog& preview) {
                QVERIFY(qobject_cast<fPreview*>(&preview) != nullptr);
                QCOMPARE(preview.windowTitle(), QStringLiteral("Tarno Locations Listing"));
                Find<QAction>(preview, "tolPrint").trigger();
                const PaintedPage page(
                    [&](QPainter& painter) { program.printers.lastJob->paint(painter, 0); });
                texts = page.Texts();
                preview.close();
            });
        QVERIFY(texts.contains(QStringLiteral("Printed on 7/03/2003 at 6:45 AM")));
        QVERIFY(texts.indexOf(QStringLiteral("Clifton Gardens")) <
                texts.indexOf(QStringLiteral("Apple Bay")));
    }

    void print_rtfAndPdfTools_askForTheirFiles()
    {
        TestProgram program;
        program.Start();
        fLocs window(program.program, nullptr);
        window.show();
        const auto expectSave = [&](const char* format, const char* filter, const char* suffix) {
            program.files.ExpectSave({.title = QStringLiteral("Save Report to ") + QLatin1String(format),
                                      .filter = QLatin1String(filter),
                                      .folder = QString::fromStdString(program.folder.Path() + '/'),
                                      .fileName = QLatin1String(format) + QStringLiteral(" Files"),
                                      .suffix = QLatin1String(suffix)},
                                     QString::fromStdString(program.folder.PathOf(format)));
        };
        expectSave("RTF", "Rich Text Format (*.rtf)", ".rtf");
        expectSave("PDF", "PDF Documents (*.pdf)", ".pdf");
        WhileOpen(
            "fPreview", [&] { Find<QPushButton>(window, "cmdPrint").click(); },
            [&](QDialog& preview) {
                Find<QAction>(preview, "&RTF Export").trigger();
                Find<QAction>(preview, "&PDF Export").trigger();
                QVERIFY(preview.isVisible());
                preview.close();
            });
        QVERIFY(program.folder.Read("RTF.pdf").starts_with("{\\rtf1"));
        QVERIFY(program.folder.Read("PDF.pdf").starts_with("%PDF-"));
    }

    void print_unreadableFile_isReportedAndShowsNoPreview()
    {
        TestProgram program;
        program.folder.Write("location.xml", "<data><location>");
        program.Start();
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        fLocs window(program.program, nullptr);
        window.show();
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { Find<QPushButton>(window, "cmdPrint").click(); });
        QVERIFY(Find<QPushButton>(window, "cmdPrint").isEnabled());
    }
};

TEST_CLASS(tst_PrintedLocations)
#include "tst_PrintedLocations.moc"
