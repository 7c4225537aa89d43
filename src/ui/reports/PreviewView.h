#pragma once

#include "reports/engine/Document.h"

#include <QAbstractScrollArea>

namespace Tarno
{

/// Shows the pages of a document, one or two side by side, at any zoom. Paints only visible pages.
class PreviewView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    enum class Fit { None, Page, Width };

    explicit PreviewView(QWidget* parent = nullptr);

    /// Shows `document` from its first page. The document must stay alive until it is replaced.
    void SetDocument(const Document* document);

    int PageCount() const;

    /// Returns the page (from 0) of the last GoTo, or the topmost page after scrolling.
    int CurrentPage() const { return m_currentPage; }

    void GoTo(int page);

    /// Returns the zoom in percent of the natural size, 10 to 800.
    int Zoom() const { return m_zoom; }

    void SetZoom(int percent);
    /// Adapts the zoom to the size of the window until SetZoom is called.
    void SetFit(Fit fit);

    Fit CurrentFit() const { return m_fit; }

    /// Returns the number of pages side by side: 1 or 2.
    int PagesAcross() const { return m_pagesAcross; }

    void SetPagesAcross(int pages);

Q_SIGNALS:
    void CurrentPageChanged(int page);
    void ZoomChanged(int percent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    int Rows() const;
    QSize PaperSize() const;
    QRect PageRect(int page) const;
    int UppermostPage() const;
    void MakeCurrent(int page);
    void ApplyFit();
    void ChangeZoom(int percent);
    void UpdateScrollBars();

    const Document* m_document = nullptr;
    int m_zoom = 100;
    Fit m_fit = Fit::Page;
    int m_pagesAcross = 1;
    int m_currentPage = 0;
};

} // namespace Tarno
