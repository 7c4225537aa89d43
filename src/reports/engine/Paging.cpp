#include "Paging.h"

#include "core/Twips.h"

#include <algorithm>

namespace Tarno
{

namespace
{

/// The vertical range of an item that a page break must not split.
struct Extent {
    int top;
    int end;
};

std::vector<Extent> ExtentsOf(const Band& band)
{
    std::vector<Extent> extents;
    for (const PlacedText& text : band.texts) {
        for (const TextLine& line : text.lines) {
            extents.push_back({line.top, text.EndOf(line)});
        }
    }
    for (const PlacedLine& line : band.lines) {
        extents.push_back({line.from.y(), line.to.y()});
    }
    for (const PlacedPicture& picture : band.pictures) {
        extents.push_back({picture.box.top(), picture.box.top() + picture.box.height()});
    }
    return extents;
}

class Paging
{
public:
    explicit Paging(Document& document)
        : m_document(document),
          m_top(document.margins.top() + document.header.height),
          m_bottom(std::max(m_top + twipsPerInch / 2,
                            document.paper.height() - document.margins.bottom() - document.footer.height))
    {
        StartPage();
    }

    void Add(std::size_t detail)
    {
        const Band& band = m_document.details[detail];
        if (m_y + band.height > m_bottom && m_y > m_top) {
            StartPage();
        }
        if (m_y + band.height > m_bottom) {
            Cut(detail);
        } else {
            m_document.pages.back().slices.push_back({detail, m_y});
            m_y += band.height;
        }
    }

private:
    void StartPage()
    {
        m_document.pages.emplace_back();
        m_y = m_top;
    }

    /// Splits a band that is higher than a page, starting at the top of the current page.
    void Cut(std::size_t detail)
    {
        const Band& band = m_document.details[detail];
        const std::vector<Extent> extents = ExtentsOf(band);
        Slice slice{detail, m_top};
        for (int start = 0;;) { // offset in the band at the top of the page
            slice.to = start + m_bottom - m_top;
            for (const Extent& extent : extents) {
                if (extent.top <= start) { // higher than the page
                    slice.to = std::max(slice.to, extent.end);
                }
            }
            if (slice.to >= band.height) {
                slice.to = Slice().to;
                m_document.pages.back().slices.push_back(slice);
                m_y = m_top + band.height - start;
                return;
            }
            m_document.pages.back().slices.push_back(slice);
            start = slice.to;
            for (const Extent& extent : extents) {
                if (extent.end > slice.to) {
                    start = std::min(start, extent.top);
                }
            }
            StartPage();
            slice.bandTop = m_top - start;
            slice.from = slice.to;
        }
    }

    Document& m_document;
    int m_top;    ///< top of the space for details on a page
    int m_bottom; ///< end of that space
    int m_y = 0;
};

} // namespace

void BreakIntoPages(Document& document)
{
    Paging paging(document);
    for (std::size_t detail = 0; detail < document.details.size(); ++detail) {
        paging.Add(detail);
    }
}

} // namespace Tarno
