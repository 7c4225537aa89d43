#include "Document.h"

#include "core/Twips.h"

#include <QPageSize>

namespace Tarno
{

QPageLayout PageOf(const Document& document)
{
    const QSizeF points = QSizeF(document.paper) / twipsPerPoint;
    const bool landscape = points.width() > points.height();
    const QPageSize size(landscape ? points.transposed() : points, QPageSize::Point, QString(),
                         QPageSize::FuzzyOrientationMatch);
    QPageLayout layout(size, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

std::vector<PlacedText>::const_iterator PhraseEnd(const Band& band,
                                                  std::vector<PlacedText>::const_iterator first)
{
    return std::find_if(std::next(first), band.texts.end(),
                        [](const PlacedText& text) { return !text.joinsPrevious; });
}

QStringList LinesOnPage(const Document& document, const PlacedText& text, std::size_t page)
{
    switch (text.page) {
    case PageText::Number:
        return {QString::number(page + 1)};
    case PageText::Count:
        return {QString::number(document.pages.size())};
    case PageText::None:
        break;
    }
    QStringList lines;
    for (const TextLine& line : text.lines) {
        lines << line.text;
    }
    return lines;
}

} // namespace Tarno
