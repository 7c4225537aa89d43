#pragma once

#include "reports/engine/ReportControl.h"

#include <QMargins>
#include <QPageLayout>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace Tarno
{

// The result of laying out a report: texts are broken into lines and bands into pages. All lengths are in
// twips.

struct TextLine {
    QString text;
    int top = 0; ///< relative to the band
};

struct PlacedText {
    QString name; ///< of the control
    QRect box;    ///< relative to the band; the text is clipped to it
    ReportFont font;
    TextAlignment alignment = TextAlignment::Left;
    PageText page = PageText::None;
    bool joinsPrevious = false; ///< follows the text before it at the distance of a space
    bool grows = false;         ///< the box was enlarged to the text as needed
    int paddingRight = 0;       ///< space at the right of the box that wrapped text leaves free
    int lineHeight = 0;
    std::vector<TextLine> lines;

    QString text; ///< the whole text, with "\n" between paragraphs

    /// Returns the end of the visible part of `line`, relative to the band.
    int EndOf(const TextLine& line) const
    {
        return std::min(line.top + lineHeight, box.top() + box.height());
    }
};

struct PlacedLine {
    QPoint from;
    QPoint to;
    int weight = 0;
};

struct PlacedPicture {
    QRect box;
    QImage picture;
};

/// One printed section. Its left edge is the page's left margin.
struct Band {
    int height = 0;
    std::vector<PlacedText> texts;
    std::vector<PlacedLine> lines;
    std::vector<PlacedPicture> pictures;
};

/// The part of a detail band that is printed on one page. A band is split only if it is higher than a page.
/// Lines of text are never split: each is printed on the page on which it ends.
struct Slice {
    std::size_t detail = 0;
    int bandTop = 0; ///< top of the band relative to the page; negative if the band starts on an earlier page
    int from =
        std::numeric_limits<int>::min();      ///< items that end at or above this offset are on earlier pages
    int to = std::numeric_limits<int>::max(); ///< items that end below this offset are on later pages

    /// Returns whether this page shows an item that ends `end` below the top of the band.
    bool Contains(int end) const { return end > from && end <= to; }
};

struct DocumentPage {
    std::vector<Slice> slices;
};

struct Document {
    QString title;
    QSize paper;
    QMargins margins;
    Band header; ///< at the top margin of every page
    Band footer; ///< at the bottom margin of every page
    std::vector<Band> details;
    std::vector<DocumentPage> pages; ///< at least one
};

/// Returns the paper of the document with its orientation and without margins.
QPageLayout PageOf(const Document& document);

/// Returns the end of the phrase that starts with `first`: that text and those that join it.
std::vector<PlacedText>::const_iterator PhraseEnd(const Band& band,
                                                  std::vector<PlacedText>::const_iterator first);

/// Returns the lines of `text` as shown on page `page` (from 0), with page numbers filled in.
QStringList LinesOnPage(const Document& document, const PlacedText& text, std::size_t page);

} // namespace Tarno
