#pragma once

#include "reports/engine/Document.h"
#include "reports/engine/ReportFonts.h"

#include <QCache>
#include <QTextLayout>

#include <utility>

class QPainter;

namespace Tarno
{

/// Paints pages of a document. One unit of the painter is one twip; the caller sets the scale. Painting many
/// pages with the same object is faster: it keeps the lines that it has shaped, and most values of a report
/// occur in many rows.
class PagePainter
{
public:
    PagePainter(QPainter& painter, const Document& document);

    /// Paints page `page` (from 0) with its upper left corner at the origin.
    void Paint(std::size_t page);

private:
    void PaintBand(const Band& band, const Slice& slice);
    void PaintPhrase(std::vector<PlacedText> phrase, const Slice& slice);
    void PaintText(const PlacedText& text, const Slice& slice);
    const QTextLayout& Shaped(const QString& line, const TextMeasurer::Measure& measure);

    QPainter& m_painter;
    const Document& m_document;
    std::size_t m_page = 0;
    TextMeasurer m_measurer;
    QCache<std::pair<const TextMeasurer::Measure*, QString>, QTextLayout> m_shaped;
};

/// Paints page `page` (from 0) with its upper left corner at the origin. One unit of `painter` is one twip;
/// the caller sets the scale.
void PaintPage(QPainter& painter, const Document& document, std::size_t page);

} // namespace Tarno
