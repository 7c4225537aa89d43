#pragma once

#include "reports/engine/ReportControl.h"

#include <QMargins>
#include <QPageLayout>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <limits>
#include <vector>

namespace Tarno
{

// A report that has been laid out: texts broken into lines, bands cut into pages. All lengths are twips.

struct TextLine {
    QString text;
    int top = 0; ///< from the band's top
};

struct PlacedText {
    QString name; ///< of the control
    QRect box;    ///< in the band
    ReportFont font;
    TextAlignment alignment = TextAlignment::Left;
    PageText page = PageText::None;
    int lineHeight = 0;
    std::vector<TextLine> lines;

    /// All lines, "\n" between the paragraphs.
    QString text;
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

/// The part of a detail band that stands on a page; the whole of it unless it is higher than a page. A line
/// of text is never cut: it stands on the page on which it ends.
struct Slice {
    std::size_t detail = 0;
    int bandTop = 0; ///< where the band's upper end is, from the page's; negative when on an earlier page
    int from = std::numeric_limits<int>::min(); ///< what ends at this depth of the band is on an earlier page
    int to = std::numeric_limits<int>::max();   ///< what ends below this depth is on a later page

    bool Holds(int end) const { return end > from && end <= to; }
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

/// The paper on which the document was laid out, whichever way it is turned, without margins.
QPageLayout PageOf(const Document& document);

/// The words of `text` on the page `page` (from 0) of `document`: one text a line.
QStringList LinesOnPage(const Document& document, const PlacedText& text, std::size_t page);

} // namespace Tarno
