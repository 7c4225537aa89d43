#include "PaintPage.h"

#include <QPainter>

#include <cmath>
#include <memory>

namespace Tarno
{

namespace
{

constexpr int linesKept = 1000;

/// Returns the position of a text of `width` in `box`.
qreal LeftOf(const QRect& box, TextAlignment alignment, qreal width)
{
    const qreal room = box.width() - width;
    return box.left() + (alignment == TextAlignment::Left || room < 0 ? 0
                         : alignment == TextAlignment::Right          ? room
                                                                      : room / 2);
}

std::unique_ptr<QTextLayout> Shape(const QString& line, const QFont& font, const QPaintDevice* device)
{
    // QTextLayout would break the line at a line separator, which has no width either
    constexpr QChar zeroWidthSpace(0x200B);
    const QString unbroken = QString(line).replace(QChar::LineSeparator, zeroWidthSpace);
    auto layout = std::make_unique<QTextLayout>(unbroken, font, device);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout->setTextOption(option);
    layout->setCacheEnabled(true); // otherwise the line is shaped each time it is painted
    layout->beginLayout();
    layout->createLine();
    layout->endLayout();
    return layout;
}

} // namespace

PagePainter::PagePainter(QPainter& painter, const Document& document)
    : m_painter(painter), m_document(document), m_shaped(linesKept)
{
}

void PagePainter::Paint(std::size_t page)
{
    m_page = page;
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                             QPainter::SmoothPixmapTransform);
    PaintBand(m_document.header, {.bandTop = m_document.margins.top()});
    for (const Slice& slice : m_document.pages[page].slices) {
        PaintBand(m_document.details[slice.detail], slice);
    }
    PaintBand(m_document.footer, {.bandTop = m_document.paper.height() - m_document.margins.bottom() -
                                             m_document.footer.height});
}

/// Paints the part of `band` that `slice` selects.
void PagePainter::PaintBand(const Band& band, const Slice& slice)
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

/// Moves the texts of a phrase together and paints them.
void PagePainter::PaintPhrase(std::vector<PlacedText> phrase, const Slice& slice)
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

void PagePainter::PaintText(const PlacedText& text, const Slice& slice)
{
    const TextMeasurer::Measure& measure = m_measurer.For(text.font, text.text);
    m_painter.setPen(Qt::black);
    const QStringList lines = LinesOnPage(m_document, text, m_page);
    for (int i = 0; i < lines.size() && i < static_cast<int>(text.lines.size()); ++i) {
        const TextLine& line = text.lines[static_cast<std::size_t>(i)];
        if (!slice.Contains(text.EndOf(line)) || lines[i].isEmpty()) {
            continue;
        }
        const QTextLayout& shaped = Shaped(lines[i], measure);
        // rarely needed, and slow; a line is painted at least as wide as it was measured
        const auto measured = [&] { return measure.metrics.horizontalAdvance(lines[i]); };
        const qreal left = text.alignment == TextAlignment::Left
                               ? text.box.left()
                               : LeftOf(text.box, text.alignment, measured());
        const QPointF corner(left, line.top + measure.metrics.ascent() - shaped.lineAt(0).ascent());
        const bool fits =
            shaped.lineAt(0).naturalTextWidth() <= text.box.width() || measured() <= text.box.width();
        if (fits && line.top >= text.box.top() && line.top + text.lineHeight == text.EndOf(line)) {
            shaped.draw(&m_painter, corner);
        } else {
            m_painter.save();
            m_painter.setClipRect(text.box, Qt::IntersectClip);
            shaped.draw(&m_painter, corner);
            m_painter.restore();
        }
    }
}

/// Returns `line` in the font of `measure`. The reference is valid until the next call.
const QTextLayout& PagePainter::Shaped(const QString& line, const TextMeasurer::Measure& measure)
{
    const std::pair key(&measure, line);
    if (!m_shaped.contains(key)) {
        m_shaped.insert(key, Shape(line, measure.twipFont, m_painter.device()).release());
    }
    return *m_shaped.object(key);
}

void PaintPage(QPainter& painter, const Document& document, std::size_t page)
{
    PagePainter(painter, document).Paint(page);
}

} // namespace Tarno
