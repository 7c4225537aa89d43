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

/// How a cell continues those above and below it.
enum class Merge { None, First, Rest };

struct Cell {
    int left = 0;
    int width = 0;
    QByteArray content;
    Merge merge = Merge::None;
};

/// One table row: the items of a band that start at the same height.
struct Row {
    int top = 0;
    int end = 0;
    bool grows = false; ///< becomes higher if a word processor needs more lines
    int ruleBelow = 0;  ///< thickness of the rule, or 0
    std::vector<Cell> cells = {};
};

// shorter distances do not become rows or cells of their own
constexpr int negligible = 60;
constexpr int negligibleAtRule = 20;

/// Returns the rows of a band without their cells. A row starts where a text, a picture or the space below a
/// rule starts.
std::vector<Row> EmptyRows(const Band& band)
{
    std::map<int, int> tops; // with the distance to other rows that is negligible
    int end = band.height;
    for (const PlacedText& text : band.texts) {
        tops[text.box.top()] = negligible;
        end = std::max(end, text.box.top() + text.box.height());
    }
    for (const PlacedPicture& picture : band.pictures) {
        tops[picture.box.top()] = negligible;
    }
    for (const PlacedLine& line : band.lines) {
        tops.emplace(line.from.y(), negligibleAtRule);
    }
    std::vector<Row> rows;
    for (const auto& [top, distance] : tops) {
        if (rows.empty()) {
            rows.push_back({.top = 0, .end = end}); // has the space above the first item, too
        } else if (top > rows.back().top + distance && top < end - distance) {
            rows.back().end = top;
            rows.push_back({.top = top, .end = end});
        }
    }
    return rows;
}

/// Returns the row in which an item at `top` starts.
Row& RowAt(std::vector<Row>& rows, int top)
{
    const auto below =
        std::find_if(rows.begin() + 1, rows.end(), [&](const Row& row) { return row.top > top; });
    return *(below - 1);
}

/// Returns `text` as it is written. A word processor would wrap a text that does not grow, and paint a high
/// one over the row above it. So such a text is cut off at its box, and its font is reduced to the height of
/// the box.
PlacedText Written(PlacedText text, TextMeasurer& measurer)
{
    const int height = std::max(1, text.box.height());
    if (text.lineHeight > height) {
        text.font.Size = std::max(1.0, text.font.Size * height / text.lineHeight);
        text.lineHeight = height;
    }
    if (!text.grows && text.lines.size() == 1) {
        text.text = measurer.FittingPart(text.text, text.font, text.box.width());
        text.paddingRight = text.alignment == TextAlignment::Left ? -text.box.width() / 4 : 0;
    }
    return text;
}

QByteArray Paragraph(const PlacedText& placed, const Row& row, FontTable& fonts, TextMeasurer& measurer)
{
    const PlacedText text = Written(placed, measurer);
    const int top = text.lines.empty() ? text.box.top() : text.lines.front().top;
    return Word("sb", std::max(0, top - row.top)) + Word("ri", text.paddingRight) +
           Word("sl", -text.lineHeight) + "\\slmult0" + AlignmentWord(text.alignment) + " " +
           Run(text, fonts);
}

/// Puts a picture into the row where it starts. The cells below it are merged with that one.
void AddPicture(std::vector<Row>& rows, const PlacedPicture& picture)
{
    const Row& first = RowAt(rows, picture.box.top());
    const int end = picture.box.top() + picture.box.height();
    for (Row& row : rows) {
        if (&row == &first) {
            row.cells.push_back({picture.box.left(), picture.box.width(), " " + PictureRun(picture),
                                 row.end < end ? Merge::First : Merge::None});
        } else if (row.top > first.top && row.top < end) {
            row.cells.push_back({picture.box.left(), picture.box.width(), {}, Merge::Rest});
        }
    }
}

std::vector<Row> RowsOf(const Band& band, FontTable& fonts, TextMeasurer& measurer)
{
    std::vector<Row> rows = EmptyRows(band);
    for (const PlacedText& text : band.texts) {
        Row& row = RowAt(rows, text.box.top());
        row.grows = row.grows || text.grows;
        row.cells.push_back({text.box.left(), text.box.width(), Paragraph(text, row, fonts, measurer)});
    }
    for (const PlacedPicture& picture : band.pictures) {
        AddPicture(rows, picture);
    }
    for (const PlacedLine& line : band.lines) {
        const auto nearest =
            std::min_element(rows.begin(), rows.end(), [&](const Row& one, const Row& other) {
                return std::abs(one.end - line.from.y()) < std::abs(other.end - line.from.y());
            });
        nearest->ruleBelow = line.weight;
    }
    return rows;
}

/// Writes a row as wide as the page. `keep` are the words that keep its paragraphs with the next row.
QByteArray RowRtf(Row row, int pageWidth, const QByteArray& keep, bool mayBreak)
{
    std::sort(row.cells.begin(), row.cells.end(),
              [](const Cell& left, const Cell& right) { return left.left < right.left; });
    const QByteArray border =
        row.ruleBelow > 0 ? "\\clbrdrb\\brdrs" + Word("brdrw", row.ruleBelow) : QByteArray();
    QByteArray definition;
    QByteArray contents;
    int end = 0;
    const auto addCell = [&](int right, const Cell& cell) {
        static const std::map<Merge, QByteArray> merges{
            {Merge::None, ""}, {Merge::First, "\\clvmgf"}, {Merge::Rest, "\\clvmrg"}};
        end = std::max(right, end + 1);
        definition += merges.at(cell.merge) + border + Word("cellx", end);
        contents += "\\pard\\intbl" + keep + (cell.content.isEmpty() ? "\\sl-20\\slmult0" : cell.content) +
                    "\\cell\n";
    };
    for (const Cell& cell : row.cells) {
        if (cell.left > end + negligible) {
            addCell(cell.left, {});
        }
        addCell(cell.left + cell.width, cell);
    }
    if (pageWidth > end + negligible) {
        addCell(pageWidth, {});
    }
    const int height = std::max(1, row.end - row.top);
    return "\\trowd\\trgaph0\\trleft0" + Word("trrh", row.grows ? height : -height) +
           (mayBreak ? "" : "\\trkeep") + definition + "\n" + contents + "\\row\n";
}

/// Writes the bands of a document with a common font table.
class BandWriter
{
public:
    explicit BandWriter(const Document& document)
        : m_width(document.paper.width() - document.margins.left() - document.margins.right()),
          m_room(document.paper.height() - document.margins.top() - document.margins.bottom() -
                 document.header.height - document.footer.height)
    {
    }

    /// Writes `band` as if it were `shorter` less high than it is.
    QByteArray Write(const Band& band, int shorter = 0)
    {
        std::vector<Row> rows = RowsOf(band, m_fonts, m_measurer);
        if (!rows.empty()) {
            rows.back().end -= shorter;
        }
        QByteArray rtf;
        for (const Row& row : rows) {
            rtf += RowRtf(row, m_width, &row == &rows.back() ? "" : "\\keepn", band.height > m_room);
        }
        return rtf;
    }

    QByteArray Fonts() const { return m_fonts.Rtf(); }

private:
    int m_width;
    int m_room; ///< height of the space for details on a page
    FontTable m_fonts;
    TextMeasurer m_measurer;
};

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
    // a table is always followed by a paragraph, which is made as low as possible
    constexpr int endHeight = 10;
    const QByteArray end = "\\pard\\fs2" + Word("sl", -endHeight) + "\\slmult0\\par}\n";
    BandWriter bands(document);
    const QByteArray header = bands.Write(document.header, endHeight);
    const QByteArray footer = bands.Write(document.footer, endHeight);
    QByteArray body;
    for (const Band& band : document.details) {
        body += bands.Write(band);
    }
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n" + bands.Fonts();
    rtf += "{\\info{\\title " + RtfText(document.title) + "}}\n";
    rtf += Word("paperw", document.paper.width()) + Word("paperh", document.paper.height()) +
           Word("margl", document.margins.left()) + Word("margr", document.margins.right()) +
           Word("margt", document.margins.top() + document.header.height) +
           Word("margb", document.margins.bottom() + document.footer.height) +
           Word("headery", document.margins.top()) + Word("footery", document.margins.bottom());
    rtf += document.paper.width() > document.paper.height() ? "\\landscape\n" : "\n";
    rtf += "{\\header\n" + header + end;
    if (!footer.isEmpty()) {
        rtf += "{\\footer\n" + footer + end;
    }
    return rtf + body + end;
}

} // namespace Tarno
