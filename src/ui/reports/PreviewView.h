#pragma once

#include "reports/engine/Document.h"

#include <QAbstractScrollArea>

namespace Tarno
{

/// The pages of a document as paper on a desk: one or two side by side, at any zoom. A page is painted when
/// it comes into view.
class PreviewView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    enum class Fit { None, Page, Width };

    explicit PreviewView(QWidget* parent = nullptr);

    /// Shows `document` from its first page; it must outlive its being shown.
    void SetDocument(const Document* document);

    int PageCount() const;

    /// The page (from 0) that was gone to, or that stands uppermost after scrolling.
    int CurrentPage() const { return m_currentPage; }

    void GoTo(int page);

    /// Percent of the natural size, 10 to 800.
    int Zoom() const { return m_zoom; }

    void SetZoom(int percent);
    /// Follows the window's size until SetZoom.
    void SetFit(Fit fit);

    Fit CurrentFit() const { return m_fit; }

    /// How many pages stand side by side: 1 or 2.
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
