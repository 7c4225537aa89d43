#include "PreviewView.h"

#include "core/Twips.h"
#include "reports/engine/PaintPage.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr int gap = 16; // around and between the pages
constexpr int shadow = 3;
constexpr int smallestZoom = 10;
constexpr int largestZoom = 800;

} // namespace

PreviewView::PreviewView(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
    setAccessibleName(QStringLiteral("Pages of the report"));
}

void PreviewView::SetDocument(const Document* document)
{
    m_document = document;
    ApplyFit();
    UpdateScrollBars();
    GoTo(0);
    viewport()->update();
}

int PreviewView::PageCount() const
{
    return m_document != nullptr ? static_cast<int>(m_document->pages.size()) : 0;
}

int PreviewView::Rows() const
{
    return (PageCount() + m_pagesAcross - 1) / m_pagesAcross;
}

QSize PreviewView::PaperSize() const
{
    return m_document != nullptr ? m_document->paper * (m_zoom / 100.0) / twipsPerPixel : QSize();
}

/// Returns the rectangle of the page in viewport coordinates.
QRect PreviewView::PageRect(int page) const
{
    const QSize paper = PaperSize();
    const int across = m_pagesAcross * (paper.width() + gap) + gap;
    const int left = std::max(0, (viewport()->width() - across) / 2) + gap - horizontalScrollBar()->value();
    const int column = page % m_pagesAcross;
    const int row = page / m_pagesAcross;
    return {left + column * (paper.width() + gap),
            gap + row * (paper.height() + gap) - verticalScrollBar()->value(), paper.width(), paper.height()};
}

int PreviewView::UppermostPage() const
{
    // the first row of which at least half is visible
    const int pitch = PaperSize().height() + gap;
    const int row = (verticalScrollBar()->value() + pitch / 2) / std::max(1, pitch);
    const bool atEnd =
        verticalScrollBar()->maximum() > 0 && verticalScrollBar()->value() == verticalScrollBar()->maximum();
    const int last = std::max(0, Rows() - 1);
    return (atEnd ? last : std::min(row, last)) * m_pagesAcross;
}

void PreviewView::GoTo(int page)
{
    const int row = std::clamp(page, 0, std::max(0, PageCount() - 1)) / m_pagesAcross;
    verticalScrollBar()->setValue(row * (PaperSize().height() + gap));
    // if several of the last rows are visible together, the scroll position does not identify the row
    MakeCurrent(row * m_pagesAcross);
}

void PreviewView::MakeCurrent(int page)
{
    if (page != m_currentPage) {
        m_currentPage = page;
        Q_EMIT CurrentPageChanged(page);
    }
}

void PreviewView::SetZoom(int percent)
{
    m_fit = Fit::None;
    ChangeZoom(percent);
}

void PreviewView::SetFit(Fit fit)
{
    m_fit = fit;
    ApplyFit();
}

void PreviewView::SetPagesAcross(int pages)
{
    const int page = CurrentPage();
    m_pagesAcross = pages;
    ApplyFit();
    UpdateScrollBars();
    GoTo(page);
    viewport()->update();
}

void PreviewView::ApplyFit()
{
    if (m_document == nullptr || m_fit == Fit::None) {
        return;
    }
    const QSizeF natural = QSizeF(m_document->paper) / twipsPerPixel;
    const int scrollBar = verticalScrollBar()->sizeHint().width();
    const double across = (maximumViewportSize().width() - scrollBar - (m_pagesAcross + 1) * gap) /
                          (natural.width() * m_pagesAcross);
    const double down = (maximumViewportSize().height() - 2 * gap) / natural.height();
    ChangeZoom(static_cast<int>(100 * (m_fit == Fit::Page ? std::min(across, down) : across)));
}

void PreviewView::ChangeZoom(int percent)
{
    const int zoom = std::clamp(percent, smallestZoom, largestZoom);
    if (zoom == m_zoom) {
        return;
    }
    const int page = CurrentPage();
    m_zoom = zoom;
    UpdateScrollBars();
    GoTo(page);
    viewport()->update();
    Q_EMIT ZoomChanged(zoom);
}

void PreviewView::UpdateScrollBars()
{
    const QSize paper = PaperSize();
    const int width = m_pagesAcross * (paper.width() + gap) + gap;
    const int height = Rows() * (paper.height() + gap) + gap;
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(3 * gap);
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(3 * gap);
}

void PreviewView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    ApplyFit();
    UpdateScrollBars();
}

void PreviewView::scrollContentsBy(int dx, int dy)
{
    QAbstractScrollArea::scrollContentsBy(dx, dy);
    viewport()->update();
    MakeCurrent(UppermostPage());
}

void PreviewView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_PageDown:
        GoTo(CurrentPage() + m_pagesAcross);
        break;
    case Qt::Key_PageUp:
        GoTo(CurrentPage() - m_pagesAcross);
        break;
    case Qt::Key_Home:
        GoTo(0);
        break;
    case Qt::Key_End:
        GoTo(PageCount() - 1);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PreviewView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() == Qt::ControlModifier) {
        SetZoom(event->angleDelta().y() > 0 ? m_zoom * 5 / 4 : m_zoom * 4 / 5);
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

void PreviewView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    const int pitch = PaperSize().height() + gap;
    const int firstRow =
        std::max(0, (verticalScrollBar()->value() + event->rect().top()) / std::max(1, pitch) - 1);
    for (int page = firstRow * m_pagesAcross; page < PageCount(); ++page) {
        const QRect paper = PageRect(page);
        if (paper.top() > event->rect().bottom()) {
            break;
        }
        if (!paper.adjusted(0, 0, shadow, shadow).intersects(event->rect())) {
            continue;
        }
        painter.fillRect(paper.translated(shadow, shadow), palette().shadow());
        painter.fillRect(paper, Qt::white);
        painter.save();
        painter.setClipRect(paper & event->rect());
        painter.translate(paper.topLeft());
        const double scale = m_zoom / 100.0 / twipsPerPixel;
        painter.scale(scale, scale);
        PaintPage(painter, *m_document, static_cast<std::size_t>(page));
        painter.restore();
    }
}

} // namespace Tarno
