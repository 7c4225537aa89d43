// The preview of a report: its tools, its pages, zoom, page set-up and printing.

#include "core/Error.h"
#include "reports/PaintedPage.h"
#include "reports/RowsReport.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/reports/PreviewView.h"
#include "ui/reports/fPreview.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressDialog>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolBar>
#include <QWheelEvent>

using namespace Tarno;

namespace
{

/// A preview of a report of five pages, two rows on each but the last.
class Preview
{
public:
    Preview()
    {
        report.AddField(QStringLiteral("a"), {0, 0, 3000, 300});
        report.Detail.Height = 6000;
        report.Caption = QStringLiteral("Nine Rows");
        report.tools = {{QStringLiteral("&RTF Export"), 3}, {QStringLiteral("&PDF Export"), 4}};
    }

    /// Shows the report, runs `steps` on its window and closes the window.
    void Show(const std::function<void()>& steps)
    {
        WhileOpen(
            "fPreview", [this] { fPreview(program.program, report, nullptr).ShowReport(); },
            [&](QDialog& shown) {
                m_window = &shown;
                steps();
                shown.close();
            });
        m_window = nullptr;
    }

    QDialog& Window() { return *m_window; }

    const Document& Pages() const { return static_cast<const fPreview*>(m_window)->Pages(); }

    PreviewView& View() { return Find<PreviewView>(*m_window, "arvPreview"); }

    QSpinBox& PageBox() { return Find<QSpinBox>(*m_window, "txtPreviewPage"); }

    QComboBox& Zoom() { return Find<QComboBox>(*m_window, "cboZoom"); }

    QToolBar& ToolBar() { return Find<QToolBar>(*m_window, "tlbPreview"); }

    /// Clicks the tool `name` with the mouse.
    void ClickTool(const char* name) { Click(*ToolBar().widgetForAction(&Find<QAction>(*m_window, name))); }

    void ChooseZoom(const char* item)
    {
        Zoom().setCurrentIndex(Zoom().findText(QLatin1String(item)));
        Q_EMIT Zoom().activated(Zoom().currentIndex());
    }

    void TypeZoom(const char* text)
    {
        Zoom().setFocus();
        Zoom().lineEdit()->selectAll();
        Type(Window(), text);
        Press(Window(), Qt::Key_Return);
    }

    void TypePage(const char* text)
    {
        PageBox().setFocus();
        PageBox().selectAll();
        Type(Window(), text);
        Press(Window(), Qt::Key_Return);
    }

    /// Turns the mouse wheel by one step over the pages.
    void Wheel(int angle, Qt::KeyboardModifiers modifiers)
    {
        const QPointF position(100, 100);
        QWheelEvent event(position, View().viewport()->mapToGlobal(position), {}, {0, angle}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(View().viewport(), &event);
    }

    TestProgram program;
    RowsReport report{RowsReport::Numbered(9)};

private:
    QDialog* m_window = nullptr;
};

} // namespace

class tst_fPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_showsTheReportFromItsFirstPage()
    {
        Preview preview;
        preview.Show([&] {
            QCOMPARE(preview.Window().windowTitle(), QStringLiteral("Nine Rows"));
            QCOMPARE(preview.View().PageCount(), 5);
            QCOMPARE(preview.View().CurrentPage(), 0);
            QCOMPARE(preview.View().CurrentFit(), PreviewView::Fit::Page);
            QCOMPARE(preview.PageBox().text(), QStringLiteral("1 of 5"));
            QCOMPARE(preview.Zoom().currentText(), QStringLiteral("%1 %").arg(preview.View().Zoom()));
            QVERIFY(preview.View().hasFocus());
            QCOMPARE(preview.Pages().pages.size(), std::size_t(5));
        });
    }

    void window_closesWithEscape()
    {
        Preview preview;
        preview.Show([&] {
            Press(preview.Window(), Qt::Key_Escape);
            QVERIFY(!preview.Window().isVisible());
        });
    }

    void reportTools_areAtTheirPositions()
    {
        Preview preview;
        preview.Show([&] {
            const QList<QAction*> tools = preview.ToolBar().actions();
            QCOMPARE(tools[0]->text(), QStringLiteral("Print..."));
            QCOMPARE(tools[1]->text(), QStringLiteral("Page &Setup..."));
            QCOMPARE(tools[3]->text(), QStringLiteral("&RTF Export"));
            QCOMPARE(tools[4]->text(), QStringLiteral("&PDF Export"));
        });
    }

    void reportWithoutTools_hasNone()
    {
        Preview preview;
        preview.report.tools.clear();
        preview.Show([&] {
            for (const QAction* tool : preview.ToolBar().actions()) {
                QVERIFY2(!tool->text().contains(QStringLiteral("Export")), qPrintable(tool->text()));
            }
        });
    }

    void toolClick_reachesTheReport()
    {
        Preview preview;
        preview.Show([&] {
            preview.ClickTool("&PDF Export");
            preview.ClickTool("&RTF Export");
        });
        QCOMPARE(preview.report.clicked,
                 (QStringList{QStringLiteral("&PDF Export"), QStringLiteral("&RTF Export")}));
    }

    void toolsMnemonic_reachesTheReport()
    {
        Preview preview;
        preview.Show([&] {
            Press(preview.Window(), Qt::Key_R, Qt::AltModifier);
            Press(preview.Window(), Qt::Key_P, Qt::AltModifier);
        });
        QCOMPARE(preview.report.clicked,
                 (QStringList{QStringLiteral("&RTF Export"), QStringLiteral("&PDF Export")}));
    }

    void toolThatFails_isReportedAndThePreviewStays()
    {
        Preview preview;
        preview.report.handlers[QStringLiteral("ToolbarClick")] = [] {
            throw Error(ErrorNumber::TypeMismatch);
        };
        preview.program.reports.Expect("fPreview", "ToolbarClick", ErrorNumber::TypeMismatch);
        preview.Show([&] {
            preview.ClickTool("&PDF Export");
            QVERIFY(preview.Window().isVisible());
        });
    }

    void navigation_toolsGoThroughThePages()
    {
        Preview preview;
        preview.Show([&] {
            preview.ClickTool("tolNext");
            QCOMPARE(preview.View().CurrentPage(), 1);
            QCOMPARE(preview.PageBox().text(), QStringLiteral("2 of 5"));
            preview.ClickTool("tolNext");
            preview.ClickTool("tolPrevious");
            QCOMPARE(preview.View().CurrentPage(), 1);
            preview.ClickTool("tolLast");
            QCOMPARE(preview.View().CurrentPage(), 4);
            preview.ClickTool("tolNext");
            QCOMPARE(preview.PageBox().text(), QStringLiteral("5 of 5"));
            preview.ClickTool("tolFirst");
            preview.ClickTool("tolPrevious");
            QCOMPARE(preview.PageBox().text(), QStringLiteral("1 of 5"));
        });
    }

    void navigation_goesPageByPageAtEveryZoom_data()
    {
        QTest::addColumn<int>("percent");
        for (const int percent : {10, 25, 50, 100, 400}) {
            QTest::addRow("%d", percent) << percent;
        }
    }

    void navigation_goesPageByPageAtEveryZoom()
    {
        QFETCH(int, percent);
        Preview preview;
        preview.Show([&] {
            preview.View().SetZoom(percent);
            QList<int> pages;
            for (int step = 0; step < 4; ++step) {
                preview.ClickTool("tolNext");
                pages << preview.PageBox().value();
            }
            for (int step = 0; step < 4; ++step) {
                preview.ClickTool("tolPrevious");
                pages << preview.PageBox().value();
            }
            QCOMPARE(pages, (QList<int>{2, 3, 4, 5, 4, 3, 2, 1}));
        });
    }

    void keys_goThroughThePages()
    {
        Preview preview;
        preview.Show([&] {
            Press(preview.Window(), Qt::Key_PageDown);
            Press(preview.Window(), Qt::Key_PageDown);
            QCOMPARE(preview.View().CurrentPage(), 2);
            Press(preview.Window(), Qt::Key_PageUp);
            QCOMPARE(preview.View().CurrentPage(), 1);
            Press(preview.Window(), Qt::Key_End);
            QCOMPARE(preview.View().CurrentPage(), 4);
            Press(preview.Window(), Qt::Key_PageUp);
            QCOMPARE(preview.View().CurrentPage(), 3);
            Press(preview.Window(), Qt::Key_Home);
            QCOMPARE(preview.View().CurrentPage(), 0);
            Press(preview.Window(), Qt::Key_PageUp);
            QCOMPARE(preview.View().CurrentPage(), 0);
        });
    }

    void pageBox_goesToTheTypedPage()
    {
        Preview preview;
        preview.Show([&] {
            preview.TypePage("4");
            QCOMPARE(preview.View().CurrentPage(), 3);
            preview.TypePage("5");
            QCOMPARE(preview.View().CurrentPage(), 4);
            QVERIFY(preview.Window().isVisible());
        });
    }

    void scrolling_showsThePageInTheBox()
    {
        Preview preview;
        preview.Show([&] {
            QScrollBar& bar = *preview.View().verticalScrollBar();
            bar.setValue(bar.maximum());
            QCOMPARE(preview.PageBox().value(), 5);
            bar.setValue(0);
            QCOMPARE(preview.PageBox().value(), 1);
        });
    }

    void zoomList_percentIsApplied()
    {
        Preview preview;
        preview.Show([&] {
            preview.ChooseZoom("150 %");
            QCOMPARE(preview.View().Zoom(), 150);
            QCOMPARE(preview.View().CurrentFit(), PreviewView::Fit::None);
            QCOMPARE(preview.Zoom().currentText(), QStringLiteral("150 %"));
            QVERIFY(preview.View().hasFocus());
        });
    }

    void zoomList_fitPage_showsAWholePage()
    {
        Preview preview;
        preview.Show([&] {
            preview.ChooseZoom("400 %");
            preview.ChooseZoom("Fit page");
            QCOMPARE(preview.View().CurrentFit(), PreviewView::Fit::Page);
            const QSizeF page = PageAt(preview.View().Zoom());
            QVERIFY(page.height() <= preview.View().viewport()->height());
            QVERIFY(page.width() <= preview.View().viewport()->width());
            QVERIFY(PageAt(preview.View().Zoom() + 6).height() > preview.View().viewport()->height() - 32);
        });
    }

    void zoomList_fitWidth_fillsTheWidth()
    {
        Preview preview;
        preview.Show([&] {
            preview.ChooseZoom("Fit width");
            QCOMPARE(preview.View().CurrentFit(), PreviewView::Fit::Width);
            QCOMPARE(preview.View().horizontalScrollBar()->maximum(), 0);
            const int room = preview.View().viewport()->width();
            QVERIFY(PageAt(preview.View().Zoom()).width() <= room);
            QVERIFY(PageAt(preview.View().Zoom() + 6).width() > room - 32);
            const int zoom = preview.View().Zoom();
            preview.Window().resize(preview.Window().width() / 2, preview.Window().height());
            Await([&] { return preview.View().Zoom() < zoom; }, "the zoom stays");
        });
    }

    void zoomBox_typedPercentIsApplied_data()
    {
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<int>("zoom");
        QTest::newRow("number") << QByteArray("120") << 120;
        QTest::newRow("with its sign") << QByteArray("120%") << 120;
        QTest::newRow("with a blank") << QByteArray("85 %") << 85;
        QTest::newRow("too small") << QByteArray("3") << 10;
        QTest::newRow("too large") << QByteArray("5000") << 800;
    }

    void zoomBox_typedPercentIsApplied()
    {
        QFETCH(QByteArray, typed);
        QFETCH(int, zoom);
        Preview preview;
        preview.Show([&] {
            preview.TypeZoom(typed.constData());
            QCOMPARE(preview.View().Zoom(), zoom);
            QCOMPARE(preview.Zoom().currentText(), QStringLiteral("%1 %").arg(zoom));
            QVERIFY(preview.Window().isVisible());
        });
    }

    void zoomBox_otherText_changesNothing_data()
    {
        QTest::addColumn<QByteArray>("typed");
        QTest::newRow("word") << QByteArray("large");
        QTest::newRow("none") << QByteArray("0");
        QTest::newRow("negative") << QByteArray("-1");
        QTest::newRow("negative, the value of an item") << QByteArray("-2");
        QTest::newRow("out of range") << QByteArray("99999999999");
    }

    void zoomBox_otherText_changesNothing()
    {
        QFETCH(QByteArray, typed);
        Preview preview;
        preview.Show([&] {
            preview.View().SetZoom(90);
            preview.TypeZoom(typed.constData());
            QCOMPARE(preview.View().Zoom(), 90);
            QCOMPARE(preview.View().CurrentFit(), PreviewView::Fit::None);
            QCOMPARE(preview.Zoom().currentText(), QStringLiteral("90 %"));
        });
    }

    void zoomTools_goInSteps()
    {
        Preview preview;
        preview.Show([&] {
            preview.View().SetZoom(100);
            preview.ClickTool("tolZoomIn");
            QCOMPARE(preview.View().Zoom(), 125);
            preview.ClickTool("tolZoomOut");
            QCOMPARE(preview.View().Zoom(), 100);
        });
    }

    void zoomTools_reachTheLimitsAndComeBack()
    {
        Preview preview;
        preview.Show([&] {
            preview.View().SetZoom(10);
            preview.ClickTool("tolZoomOut");
            QCOMPARE(preview.View().Zoom(), 10);
            preview.ClickTool("tolZoomIn");
            QVERIFY(preview.View().Zoom() > 10);
            preview.View().SetZoom(800);
            preview.ClickTool("tolZoomIn");
            QCOMPARE(preview.View().Zoom(), 800);
        });
    }

    void controlAndWheel_zooms()
    {
        Preview preview;
        preview.Show([&] {
            preview.View().SetZoom(100);
            preview.Wheel(120, Qt::ControlModifier);
            QCOMPARE(preview.View().Zoom(), 125);
            preview.Wheel(-120, Qt::ControlModifier);
            QCOMPARE(preview.View().Zoom(), 100);
            QCOMPARE(preview.Zoom().currentText(), QStringLiteral("100 %"));
            preview.Wheel(-120, Qt::NoModifier);
            QCOMPARE(preview.View().Zoom(), 100);
            QVERIFY(preview.View().verticalScrollBar()->value() > 0);
        });
    }

    void zooming_keepsThePage()
    {
        Preview preview;
        preview.Show([&] {
            preview.TypePage("3");
            for (const int percent : {20, 300, 75}) {
                preview.View().SetZoom(percent);
                QCOMPARE(preview.PageBox().value(), 3);
            }
        });
    }

    void twoPages_areSideBySide()
    {
        Preview preview;
        preview.Show([&] {
            preview.TypePage("4");
            preview.ClickTool("tolTwoPages");
            QCOMPARE(preview.View().PagesAcross(), 2);
            QCOMPARE(preview.View().CurrentPage(), 2);
            QCOMPARE(preview.PageBox().value(), 3);
            preview.ClickTool("tolNext");
            QCOMPARE(preview.PageBox().value(), 5);
            preview.ClickTool("tolPrevious");
            preview.ClickTool("tolPrevious");
            QCOMPARE(preview.PageBox().value(), 1);
            QVERIFY(Find<QAction>(preview.Window(), "tolTwoPages").isChecked());
            preview.ClickTool("tolOnePage");
            QCOMPARE(preview.View().PagesAcross(), 1);
            QVERIFY(!Find<QAction>(preview.Window(), "tolTwoPages").isChecked());
        });
    }

    void pageSetup_laysOutAgain()
    {
        Preview preview;
        QPageLayout turned = preview.report.Page;
        turned.setOrientation(QPageLayout::Landscape);
        preview.program.printers.ExpectSetUpPage(turned);
        preview.Show([&] {
            preview.TypePage("3");
            preview.ClickTool("tolPageSetup");
            QCOMPARE(preview.View().PageCount(), 9); // now one row on each page
            QCOMPARE(preview.PageBox().text(), QStringLiteral("1 of 9"));
            QCOMPARE(preview.Pages().paper, QSize(16838, 11906));
            preview.ClickTool("tolLast");
            QCOMPARE(preview.PageBox().value(), 9);
        });
    }

    void pageSetup_cancelled_keepsThePages()
    {
        Preview preview;
        preview.program.printers.ExpectSetUpPage(std::nullopt);
        preview.Show([&] {
            preview.TypePage("3");
            const Document* pages = &preview.Pages();
            preview.ClickTool("tolPageSetup");
            QCOMPARE(&preview.Pages(), pages);
            QCOMPARE(preview.PageBox().text(), QStringLiteral("3 of 5"));
        });
        QCOMPARE(preview.report.events.count(QStringLiteral("ReportStart")), 1);
    }

    void pageSetup_layingOutCancelled_keepsThePages()
    {
        Preview preview;
        QPageLayout turned = preview.report.Page;
        const QPageLayout before = turned;
        turned.setOrientation(QPageLayout::Landscape);
        preview.program.printers.ExpectSetUpPage(turned);
        preview.Show([&] {
            preview.report.handlers[QStringLiteral("FetchData")] = CancelLayingOut;
            const Document* pages = &preview.Pages();
            preview.ClickTool("tolPageSetup");
            QCOMPARE(&preview.Pages(), pages);
            QCOMPARE(preview.View().PageCount(), 5);
            QCOMPARE(preview.report.Page, before);
        });
    }

    void pageSetup_errorOfTheReport_isReportedAndThePagesStay()
    {
        Preview preview;
        QPageLayout turned = preview.report.Page;
        const QPageLayout before = turned;
        turned.setOrientation(QPageLayout::Landscape);
        preview.program.printers.ExpectSetUpPage(turned);
        preview.program.reports.Expect("fPreview", "tolPageSetup", ErrorNumber::TypeMismatch);
        preview.Show([&] {
            preview.report.handlers[QStringLiteral("FetchData")] = [] {
                throw Error(ErrorNumber::TypeMismatch);
            };
            preview.ClickTool("tolPageSetup");
            QCOMPARE(preview.View().PageCount(), 5);
            QCOMPARE(preview.report.Page, before);
        });
    }

    void print_printsAllPages()
    {
        Preview preview;
        preview.program.printers.ExpectPrint(QStringLiteral("Nine Rows"), 5);
        preview.Show([&] {
            Press(preview.Window(), Qt::Key_P, Qt::ControlModifier);
            const PrintJob& job = preview.program.printers.lastJob.value();
            QCOMPARE(job.page.pageSize().id(), QPageSize::A4);
            QCOMPARE(job.page.orientation(), QPageLayout::Portrait);
            QStringList rows;
            for (int number = 0; number < job.pages; ++number) {
                const PaintedPage page([&](QPainter& painter) { job.paint(painter, number); });
                QCOMPARE(page.Texts().size(), number < 4 ? 2 : 1);
                QVERIFY(qAbs(page.texts[0].baseline.y() - (1440 + 150)) < 150);
                rows << page.Texts();
            }
            QCOMPARE(rows.size(), 9);
            QCOMPARE(rows.last(), QStringLiteral("row 8"));
        });
    }

    void print_cancelled_changesNothing()
    {
        Preview preview;
        preview.program.printers.ExpectPrint(QStringLiteral("Nine Rows"), 5, false);
        preview.Show([&] {
            preview.ClickTool("tolPrint");
            QVERIFY(preview.Window().isVisible());
        });
    }

    void layingOutCancelled_showsNothing()
    {
        Preview preview;
        preview.report.handlers[QStringLiteral("FetchData")] = CancelLayingOut;
        WithoutWindow([&] { fPreview(preview.program.program, preview.report, nullptr).ShowReport(); });
        QCOMPARE(preview.report.events.count(QStringLiteral("FetchData")), 1);
    }

    void errorOfTheReport_passesThroughAndShowsNothing()
    {
        Preview preview;
        preview.report.handlers[QStringLiteral("Detail_Format")] = [] {
            throw Error(ErrorNumber::ObjectNotSet);
        };
        WithoutWindow([&] {
            QCOMPARE(RaisedNumber(
                         [&] { fPreview(preview.program.program, preview.report, nullptr).ShowReport(); }),
                     91);
        });
    }

    void emptyReport_showsOnePage()
    {
        Preview preview;
        preview.report.rows.clear();
        preview.Show([&] {
            QCOMPARE(preview.PageBox().text(), QStringLiteral("1 of 1"));
            preview.ClickTool("tolNext");
            preview.ClickTool("tolTwoPages");
            QCOMPARE(preview.PageBox().text(), QStringLiteral("1 of 1"));
        });
    }

private:
    static QSizeF PageAt(int percent) { return QSizeF(11906, 16838) / 15 * percent / 100; }

    /// Presses "Cancel" in the dialog that is shown while a report is laid out.
    static void CancelLayingOut()
    {
        for (QWidget* widget : QApplication::allWidgets()) {
            if (auto* dialog = qobject_cast<QProgressDialog*>(widget); dialog != nullptr) {
                dialog->cancel();
            }
        }
    }
};

TEST_CLASS(tst_fPreview)
#include "tst_fPreview.moc"
