#include "fPreview.h"

#include "ExportedFile.h"
#include "PreviewView.h"
#include "ReportExport.h"
#include "WaitDialog.h"
#include "core/ErrorLog.h"
#include "reports/engine/PaintPage.h"
#include "ui/common/Handle.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSpinBox>
#include <QToolBar>
#include <QVBoxLayout>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fPreview";
constexpr int fitPage = -1; // items in the zoom list other than percentages
constexpr int fitWidth = -2;

/// Returns a caption without its mnemonic and without dots at the end.
QString WordsOf(QString caption)
{
    return caption.remove(QLatin1Char('&')).remove(QLatin1String("..."));
}

} // namespace

fPreview::fPreview(const Program& program, Report& report, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_report(report),
      m_toolBar(new QToolBar(this)),
      m_view(new PreviewView(this)),
      m_exported(new ExportedFile(program.programs, this))
{
    setObjectName(QStringLiteral("fPreview"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(1000, 680);
    m_toolBar->setObjectName(QStringLiteral("tlbPreview"));
    m_view->setObjectName(QStringLiteral("arvPreview"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_exported);
    m_view->setFocus();
    Handle(m_view, &PreviewView::CurrentPageChanged, "PageChange", this, [this] { ShowPage(); });
    Handle(m_view, &PreviewView::ZoomChanged, "ZoomChange", this, [this] { ShowZoom(); });
    program.windows.Remember(*this);
}

fPreview::~fPreview() = default;

void fPreview::ShowReport()
{
    if (Prepare()) {
        setWindowTitle(m_report.Caption);
        MakeToolBar();
        ShowPage();
        ShowZoom();
        resize(size().expandedTo({m_toolBar->sizeHint().width(), 0})); // wide enough for all tools
        exec();
    }
}

/// Lays the report out again. Returns false and keeps the old pages if the user cancelled.
bool fPreview::Prepare()
{
    WaitDialog wait(m_program.clock, parentWidget(), QStringLiteral("Laying out the report..."));
    std::optional<Document> document = LayOut(m_report, [&wait](int /*rows*/) { return wait.Advance(); });
    if (!document) {
        return false;
    }
    auto laidOut = std::make_unique<Document>(std::move(*document));
    m_view->SetDocument(laidOut.get());
    m_document = std::move(laidOut);
    if (m_page != nullptr) {
        ShowPage();
    }
    return true;
}

QAction* fPreview::AddAction(const char* name, const QString& caption, const QKeySequence& key,
                             void (fPreview::*run)())
{
    QAction* action = m_toolBar->addAction(caption);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key.isEmpty() ? QKeySequence::mnemonic(caption) : key);
    Describe(action, WordsOf(caption));
    connect(action, &QAction::triggered, this,
            [this, name, run] { Trap(module, name, [&] { (this->*run)(); }); });
    return action;
}

/// Sets the tool tip and the accessible name, because the caption may be only a symbol.
void fPreview::Describe(QAction* action, const QString& words)
{
    action->setToolTip(
        QStringLiteral("%1 (%2)").arg(words, action->shortcut().toString(QKeySequence::NativeText)));
    m_toolBar->widgetForAction(action)->setAccessibleName(words);
}

void fPreview::MakeToolBar()
{
    AddAction("tolPrint", QStringLiteral("Print..."), QKeySequence::Print, &fPreview::Print);
    AddAction("tolPageSetup", QStringLiteral("Page &Setup..."), {}, &fPreview::SetUpPage);
    m_toolBar->addSeparator();
    AddReportTools();
    m_toolBar->addSeparator();
    AddNavigation();
    m_toolBar->addSeparator();
    AddZoom();
}

/// Inserts the report's own tools at the positions that it specifies.
void fPreview::AddReportTools()
{
    for (const ReportTool& tool : m_report.Tools) {
        auto* action = new QAction(tool.Caption, this);
        action->setObjectName(tool.Caption);
        action->setShortcut(QKeySequence::mnemonic(tool.Caption));
        connect(action, &QAction::triggered, this, [this, caption = tool.Caption] {
            Trap(module, "ToolbarClick", [&] { m_report.ToolbarClick(caption, *this); });
        });
        m_toolBar->insertAction(m_toolBar->actions().value(tool.Position), action);
        Describe(action, WordsOf(tool.Caption));
    }
}

void fPreview::AddNavigation()
{
    Describe(AddAction("tolFirst", QStringLiteral("|<"), QKeySequence(Qt::CTRL | Qt::Key_Home),
                       &fPreview::FirstPage),
             QStringLiteral("First page"));
    Describe(AddAction("tolPrevious", QStringLiteral("<"), QKeySequence(Qt::CTRL | Qt::Key_PageUp),
                       &fPreview::PreviousPage),
             QStringLiteral("Previous page"));
    m_page = new QSpinBox(m_toolBar);
    m_page->setObjectName(QStringLiteral("txtPreviewPage"));
    m_page->setAccessibleName(QStringLiteral("Page"));
    m_page->setToolTip(QStringLiteral("Page"));
    m_page->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_page->setKeyboardTracking(false);
    m_page->setRange(1, m_view->PageCount());
    m_toolBar->addWidget(m_page);
    connect(m_page, &QSpinBox::valueChanged, this, [this](int page) {
        Trap(module, "txtPreviewPage_Change", [&] {
            m_view->GoTo(page - 1);
            ShowPage();
        });
    });
    Describe(AddAction("tolNext", QStringLiteral(">"), QKeySequence(Qt::CTRL | Qt::Key_PageDown),
                       &fPreview::NextPage),
             QStringLiteral("Next page"));
    Describe(
        AddAction("tolLast", QStringLiteral(">|"), QKeySequence(Qt::CTRL | Qt::Key_End), &fPreview::LastPage),
        QStringLiteral("Last page"));
}

void fPreview::AddZoom()
{
    Describe(AddAction("tolZoomOut", QStringLiteral("-"), QKeySequence::ZoomOut, &fPreview::ZoomOut),
             QStringLiteral("Zoom out"));
    m_zoom = new QComboBox(m_toolBar);
    m_zoom->setObjectName(QStringLiteral("cboZoom"));
    m_zoom->setAccessibleName(QStringLiteral("Zoom"));
    m_zoom->setToolTip(QStringLiteral("Zoom"));
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->addItem(QStringLiteral("Fit page"), fitPage);
    m_zoom->addItem(QStringLiteral("Fit width"), fitWidth);
    for (const int percent : {50, 75, 100, 150, 200, 400}) {
        m_zoom->addItem(QStringLiteral("%1 %").arg(percent), percent);
    }
    m_toolBar->addWidget(m_zoom);
    const auto choose = [this] { Trap(module, "cboZoom_Click", [this] { ChooseZoom(); }); };
    connect(m_zoom, &QComboBox::activated, this, choose);
    connect(m_zoom->lineEdit(), &QLineEdit::returnPressed, this, choose);
    Describe(AddAction("tolZoomIn", QStringLiteral("+"), QKeySequence::ZoomIn, &fPreview::ZoomIn),
             QStringLiteral("Zoom in"));
    m_toolBar->addSeparator();
    auto* across = new QActionGroup(this);
    QAction* one = AddAction("tolOnePage", QStringLiteral("&One Page"), {}, &fPreview::OnePage);
    QAction* two = AddAction("tolTwoPages", QStringLiteral("&Two Pages"), {}, &fPreview::TwoPages);
    for (QAction* action : {one, two}) {
        action->setCheckable(true);
        across->addAction(action);
    }
    one->setChecked(true);
}

void fPreview::ShowPage()
{
    const QSignalBlocker blocker(m_page);
    m_page->setRange(1, m_view->PageCount());
    m_page->setSuffix(QStringLiteral(" of %1").arg(m_view->PageCount()));
    m_page->setValue(m_view->CurrentPage() + 1);
}

void fPreview::ShowZoom()
{
    if (m_zoom != nullptr) {
        m_zoom->setEditText(QStringLiteral("%1 %").arg(m_view->Zoom()));
    }
}

void fPreview::ChooseZoom()
{
    const int known = m_zoom->findText(m_zoom->currentText(), Qt::MatchFixedString);
    const int listed = known >= 0 ? m_zoom->itemData(known).toInt() : 0;
    if (listed == fitPage || listed == fitWidth) {
        m_view->SetFit(listed == fitPage ? PreviewView::Fit::Page : PreviewView::Fit::Width);
    } else if (const int percent =
                   m_zoom->currentText().remove(QRegularExpression(QStringLiteral("[ %]"))).toInt();
               percent > 0) {
        m_view->SetZoom(percent);
    }
    ShowZoom();
    m_view->setFocus();
}

void fPreview::ExportRtf()
{
    ShowExported(mMain::RTFExport(m_program, *m_document, this));
}

void fPreview::ExportPdf()
{
    ShowExported(mMain::PDFExport(m_program, *m_document, this));
}

void fPreview::ShowExported(const std::optional<QString>& file)
{
    if (file) {
        m_exported->ShowFile(*file);
    }
}

void fPreview::Print()
{
    m_program.printers.Print(this, {.title = m_report.Caption,
                                    .page = PageOf(*m_document),
                                    .pages = m_view->PageCount(),
                                    .paint = [this](QPainter& painter, int page) {
                                        PaintPage(painter, *m_document, static_cast<std::size_t>(page));
                                    }});
}

void fPreview::SetUpPage()
{
    auto restorePage = qScopeGuard([this, before = m_report.Page] { m_report.Page = before; });
    m_report.Page.setOrientation(
        PageOf(*m_document).orientation()); // a report may change the orientation during a run
    if (m_program.printers.SetUpPage(this, m_report.Page) && Prepare()) {
        restorePage.dismiss();
    }
}

void fPreview::FirstPage()
{
    m_view->GoTo(0);
}

void fPreview::PreviousPage()
{
    m_view->GoTo(m_view->CurrentPage() - m_view->PagesAcross());
}

void fPreview::NextPage()
{
    m_view->GoTo(m_view->CurrentPage() + m_view->PagesAcross());
}

void fPreview::LastPage()
{
    m_view->GoTo(m_view->PageCount() - 1);
}

void fPreview::ZoomIn()
{
    m_view->SetZoom(m_view->Zoom() * 5 / 4);
}

void fPreview::ZoomOut()
{
    m_view->SetZoom(m_view->Zoom() * 4 / 5);
}

void fPreview::OnePage()
{
    m_view->SetPagesAcross(1);
}

void fPreview::TwoPages()
{
    m_view->SetPagesAcross(2);
}

} // namespace Tarno
