#include "RtfWriter.h"

#include "ReportFonts.h"

#include <QBuffer>

#include <algorithm>
#include <cmath>
#include <map>

namespace Tarno
{

namespace
{

QByteArray Word(const char* word, int number)
{
    return QByteArray("\\") + word + QByteArray::number(number);
}

/// The fonts of a document in the order of their first use.
class FontTable
{
public:
    int IndexOf(const QString& family)
    {
        const qsizetype known = m_families.indexOf(family);
        if (known >= 0) {
            return static_cast<int>(known);
        }
        m_families << family;
        return static_cast<int>(m_families.size() - 1);
    }

    QByteArray Rtf() const
    {
        QByteArray table = "{\\fonttbl";
        for (int index = 0; index < m_families.size(); ++index) {
            table += "{" + Word("f", index) + "\\fswiss\\fcharset0 " + RtfText(m_families[index]) +
                     "{\\*\\falt " + RtfText(AvailableFamily(m_families[index])) + "};}";
        }
        return table + "}\n";
    }

private:
    QStringList m_families;
};

/// Returns a text with its font, or the page field that a word processor fills in.
QByteArray Run(const PlacedText& text, FontTable& fonts)
{
    const int font = fonts.IndexOf(text.font.Name);
    const int halfPoints = static_cast<int>(std::lround(text.font.Size * 2));
    // RTF sets the font of right-to-left scripts separately
    QByteArray run = "{\\rtlch" + Word("af", font) + Word("afs", halfPoints) +
                     (text.font.Bold ? "\\ab" : "") + "\\ltrch" + Word("f", font) + Word("fs", halfPoints) +
                     (text.font.Bold ? "\\b " : " ");
    switch (text.page) {
    case PageText::Number:
        run += "{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}";
        break;
    case PageText::Count:
        run += "{\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 1}}";
        break;
    case PageText::None:
        run += RtfText(text.text);
        break;
    }
    return run + "}";
}

QByteArray AlignmentWord(TextAlignment alignment)
{
    return alignment == TextAlignment::Right ? "\\qr" : alignment == TextAlignment::Center ? "\\qc" : "\\ql";
}

QByteArray PictureRun(const PlacedPicture& picture)
{
    QByteArray png;
    QBuffer buffer(&png);
    picture.picture.save(&buffer, "PNG");
    return "{\\pict\\pngblip" + Word("picwgoal", picture.box.width()) +
           Word("pichgoal", picture.box.height()) + "\n" + png.toHex() + "}";
}

struct Cell {
    int left = 0;
    int width = 0;
    QByteArray content;
};

/// One table row: the items of a band that start at the same height.
struct Row {
    std::vector<Cell> cells;
    bool ruleBelow = false;
    bool keepWithNext = false; ///< is kept on the same page as the next row
};

/// Returns the rows of a band by their top. Pictures go into the first row; a line becomes the lower border
/// of the row above it.
std::map<int, Row> RowsOf(const Band& band, FontTable& fonts)
{
    std::map<int, Row> rows;
    for (const PlacedText& text : band.texts) {
        rows[text.box.top()].cells.push_back(
            {text.box.left(), text.box.width(), AlignmentWord(text.alignment) + " " + Run(text, fonts)});
    }
    for (const PlacedPicture& picture : band.pictures) {
        const int top = rows.empty() ? picture.box.top() : rows.begin()->first;
        rows[top].cells.push_back({picture.box.left(), picture.box.width(), " " + PictureRun(picture)});
    }
    for (const PlacedLine& line : band.lines) {
        if (const auto below = rows.upper_bound(line.from.y()); below != rows.begin()) {
            std::prev(below)->second.ruleBelow = true;
        }
    }
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        row->second.keepWithNext = std::next(row) != rows.end();
    }
    return rows;
}

QByteArray RowRtf(Row row, int pageWidth)
{
    constexpr int negligibleGap = 60;
    std::sort(row.cells.begin(), row.cells.end(),
              [](const Cell& left, const Cell& right) { return left.left < right.left; });
    QByteArray borders;
    QByteArray contents;
    int end = 0;
    const auto addCell = [&](int right, const QByteArray& content) {
        end = std::max(right, end + 1);
        borders +=
            (row.ruleBelow ? QByteArray("\\clbrdrb\\brdrs\\brdrw10") : QByteArray()) + Word("cellx", end);
        contents += (row.keepWithNext ? "\\pard\\intbl\\keepn" : "\\pard\\intbl") + content + "\\cell\n";
    };
    for (const Cell& cell : row.cells) {
        if (cell.left > end + negligibleGap) {
            addCell(cell.left, {});
        }
        addCell(cell.left + cell.width, cell.content);
    }
    if (pageWidth > end + negligibleGap) {
        addCell(pageWidth, {});
    }
    return "\\trowd\\trgaph0\\trleft0" + borders + "\n" + contents + "\\row\n";
}

QByteArray BandRtf(const Band& band, int pageWidth, FontTable& fonts)
{
    QByteArray rtf;
    for (const auto& [top, row] : RowsOf(band, fonts)) {
        rtf += RowRtf(row, pageWidth);
    }
    return rtf;
}

} // namespace

QByteArray RtfText(const QString& text)
{
    QByteArray rtf;
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (unit == u'\n') {
            rtf += "\\line ";
        } else if (unit == u'\t') {
            rtf += "\\tab ";
        } else if (unit == u'\\' || unit == u'{' || unit == u'}') {
            rtf += '\\';
            rtf += static_cast<char>(unit);
        } else if (unit >= 0x20 && unit < 0x7F) {
            rtf += static_cast<char>(unit);
        } else if (unit >= 0x7F) {
            rtf += Word("u", static_cast<std::int16_t>(unit)) + "?";
        }
    }
    return rtf;
}

QByteArray RtfBytes(const Document& document)
{
    FontTable fonts;
    const int width = document.paper.width() - document.margins.left() - document.margins.right();
    const QByteArray header = BandRtf(document.header, width, fonts);
    const QByteArray footer = BandRtf(document.footer, width, fonts);
    QByteArray body;
    for (const Band& band : document.details) {
        body += BandRtf(band, width, fonts);
    }
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n" + fonts.Rtf();
    rtf += "{\\info{\\title " + RtfText(document.title) + "}}\n";
    rtf += Word("paperw", document.paper.width()) + Word("paperh", document.paper.height()) +
           Word("margl", document.margins.left()) + Word("margr", document.margins.right()) +
           Word("margt", document.margins.top() + document.header.height) +
           Word("margb", document.margins.bottom() + document.footer.height) +
           Word("headery", document.margins.top()) + Word("footery", document.margins.bottom());
    rtf += document.paper.width() > document.paper.height() ? "\\landscape\n" : "\n";
    rtf += "{\\header\n" + header + "\\pard\\fs2\\par}\n";
    if (!footer.isEmpty()) {
        rtf += "{\\footer\n" + footer + "\\pard\\fs2\\par}\n";
    }
    return rtf + body + "\\pard\\par}\n";
}

} // namespace Tarno
