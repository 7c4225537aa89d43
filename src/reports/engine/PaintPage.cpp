#include "PaintPage.h"

#include "ReportFonts.h"

#include <QPainter>

#include <cmath>

namespace Tarno
{

namespace
{

class PagePainter
{
public:
    PagePainter(QPainter& painter, const Document& document, std::size_t page)
        : m_painter(painter), m_document(document), m_page(page)
    {
    }

    /// Paints the part of `band` that `slice` selects.
    void Paint(const Band& band, const Slice& slice)
    {
        m_painter.save();
        m_painter.translate(m_document.margins.left(), slice.bandTop);
        for (const PlacedPicture& picture : band.pictures) {
            if (slice.Contains(picture.box.top() + picture.box.height())) {
                m_painter.drawImage(picture.box, picture.picture);
            }
        }
        for (auto text = band.texts.begin(); text != band.texts.end();) {
            const auto end = PhraseEnd(band, text);
            if (end == std::next(text)) {
                PaintText(*text, slice);
            } else {
                PaintPhrase({text, end}, slice);
            }
            text = end;
        }
        for (const PlacedLine& line : band.lines) {
            if (slice.Contains(line.to.y())) {
                m_painter.setPen(QPen(Qt::black, line.weight, Qt::SolidLine, Qt::FlatCap));
                m_painter.drawLine(line.from, line.to);
            }
        }
        m_painter.restore();
    }

private:
    /// Returns the position of a text of `width` in `box`.
    static qreal LeftOf(const QRect& box, TextAlignment alignment, qreal width)
    {
        const qreal room = box.width() - width;
        return box.left() + (alignment == TextAlignment::Left || room < 0 ? 0
                             : alignment == TextAlignment::Right          ? room
                                                                          : room / 2);
    }

    /// Moves the texts of a phrase together and paints them.
    void PaintPhrase(std::vector<PlacedText> phrase, const Slice& slice)
    {
        const auto advance = [this](const PlacedText& text, const QString& words) {
            return m_measurer.For(text.font, words).metrics.horizontalAdvance(words);
        };
        const QRect box = phrase.front().box | phrase.back().box;
        qreal width = 0;
        for (PlacedText& text : phrase) {
            width += text.joinsPrevious ? advance(text, QStringLiteral(" ")) : 0;
            text.box.moveLeft(static_cast<int>(width));
            const qreal words = advance(text, LinesOnPage(m_document, text, m_page).join(QLatin1Char(' ')));
            text.box.setWidth(static_cast<int>(std::ceil(words)));
            width += words;
        }
        const int left = static_cast<int>(LeftOf(box, phrase.front().alignment, width));
        for (PlacedText& text : phrase) {
            text.box.translate(left, 0);
            PaintText(text, slice);
        }
    }

    void PaintText(const PlacedText& text, const Slice& slice)
    {
        const TextMeasurer::Measure& measure = m_measurer.For(text.font, text.text);
        m_painter.setFont(measure.twipFont);
        m_painter.setPen(Qt::black);
        const QStringList lines = LinesOnPage(m_document, text, m_page);
        for (int i = 0; i < lines.size() && i < static_cast<int>(text.lines.size()); ++i) {
            const TextLine& line = text.lines[static_cast<std::size_t>(i)];
            if (!slice.Contains(text.EndOf(line)) || lines[i].isEmpty()) {
                continue;
            }
            const qreal width = measure.metrics.horizontalAdvance(lines[i]);
            const QPointF baseline(LeftOf(text.box, text.alignment, width),
                                   line.top + measure.metrics.ascent());
            if (width <= text.box.width() && line.top >= text.box.top() &&
                line.top + text.lineHeight == text.EndOf(line)) {
                m_painter.drawText(baseline, lines[i]);
            } else {
                m_painter.save();
                m_painter.setClipRect(text.box, Qt::IntersectClip);
                m_painter.drawText(baseline, lines[i]);
                m_painter.restore();
            }
        }
    }

    QPainter& m_painter;
    const Document& m_document;
    std::size_t m_page;
    TextMeasurer m_measurer;
};

} // namespace

void PaintPage(QPainter& painter, const Document& document, std::size_t page)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    PagePainter pagePainter(painter, document, page);
    pagePainter.Paint(document.header, {.bandTop = document.margins.top()});
    for (const Slice& slice : document.pages[page].slices) {
        pagePainter.Paint(document.details[slice.detail], slice);
    }
    pagePainter.Paint(document.footer, {.bandTop = document.paper.height() - document.margins.bottom() -
                                                   document.footer.height});
}

} // namespace Tarno
