#include "RtfBands.h"

#include "RtfWriter.h"

#include <QBuffer>
#include <QStringBuilder>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

namespace Tarno
{

namespace
{

// Texts are joined with %, which allocates once. With +, writing an RTF takes twice as long.

/// Returns a text with its font, or the page field that a word processor fills in.
QByteArray Run(const PlacedText& text, RtfFonts& fonts)
{
    const int font = fonts.IndexOf(text.font.Name);
    const int halfPoints = static_cast<int>(std::lround(text.font.Size * 2));
    // RTF sets the font of right-to-left scripts separately
    QByteArray run = "{\\rtlch" % RtfWord("af", font) % RtfWord("afs", halfPoints) %
                     (text.font.Bold ? "\\ab" : "") % "\\ltrch" % RtfWord("f", font) %
                     RtfWord("fs", halfPoints) % (text.font.Bold ? "\\b " : " ");
    run += text.joinsPrevious ? " " : "";
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
    return "{\\pict\\pngblip" + RtfWord("picwgoal", picture.box.width()) +
           RtfWord("pichgoal", picture.box.height()) + "\n" + png.toHex() + "}";
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

/// Writes the texts of a phrase as one paragraph.
QByteArray Paragraph(const std::vector<PlacedText>& phrase, const Row& row, RtfFonts& fonts)
{
    const PlacedText& first = phrase.front();
    const int top = first.lines.empty() ? first.box.top() : first.lines.front().top;
    QByteArray rtf = RtfWord("sb", std::max(0, top - row.top)) % RtfWord("ri", first.paddingRight) %
                     RtfWord("sl", -first.lineHeight) % "\\slmult0" % AlignmentWord(first.alignment) % " ";
    for (const PlacedText& text : phrase) {
        rtf += Run(text, fonts);
    }
    return rtf;
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

std::vector<Row> RowsOf(const Band& band, RtfFonts& fonts, TextMeasurer& measurer)
{
    std::vector<Row> rows = EmptyRows(band);
    for (auto text = band.texts.begin(); text != band.texts.end();) {
        const auto end = PhraseEnd(band, text);
        Row& row = RowAt(rows, text->box.top());
        row.grows = row.grows || text->grows;
        const QRect last = std::prev(end)->box;
        const int left = text->box.left();
        std::vector<PlacedText> phrase;
        std::transform(text, end, std::back_inserter(phrase),
                       [&](const PlacedText& part) { return Written(part, measurer); });
        row.cells.push_back({left, last.left() + last.width() - left, Paragraph(phrase, row, fonts)});
        text = end;
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
        row.ruleBelow > 0 ? "\\clbrdrb\\brdrs" + RtfWord("brdrw", row.ruleBelow) : QByteArray();
    QByteArray definition;
    QByteArray contents;
    int end = 0;
    const auto addCell = [&](int right, const Cell& cell) {
        static const std::map<Merge, QByteArray> merges{
            {Merge::None, ""}, {Merge::First, "\\clvmgf"}, {Merge::Rest, "\\clvmrg"}};
        end = std::max(right, end + 1);
        definition += merges.at(cell.merge) % border % RtfWord("cellx", end);
        contents += "\\pard\\intbl" % keep % (cell.content.isEmpty() ? "\\sl-20\\slmult0" : cell.content) %
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
    // a negative height is fixed; a row higher than a page gets its height from its lines
    const int height = std::max(1, row.end - row.top);
    const QByteArray heightWord =
        row.grows && mayBreak ? QByteArray() : RtfWord("trrh", row.grows ? height : -height);
    return "\\trowd\\trgaph0\\trleft0" % heightWord % (mayBreak ? "" : "\\trkeep") % definition % "\n" %
           contents % "\\row\n";
}

} // namespace

QByteArray RtfWord(const char* word, int number)
{
    return '\\' % QByteArrayView(word) % QByteArray::number(number);
}

int RtfFonts::IndexOf(const QString& family)
{
    const qsizetype known = m_families.indexOf(family);
    if (known >= 0) {
        return static_cast<int>(known);
    }
    m_families << family;
    return static_cast<int>(m_families.size() - 1);
}

QByteArray RtfFonts::Table() const
{
    QByteArray table = "{\\fonttbl";
    for (int index = 0; index < m_families.size(); ++index) {
        table += "{" + RtfWord("f", index) + "\\fswiss\\fcharset0 " + RtfText(m_families[index]) +
                 "{\\*\\falt " + RtfText(AvailableFamily(m_families[index])) + "};}";
    }
    return table + "}\n";
}

RtfBands::RtfBands(const Document& document)
    : m_width(document.paper.width() - document.margins.left() - document.margins.right()),
      m_room(document.paper.height() - document.margins.top() - document.margins.bottom() -
             document.header.height - document.footer.height)
{
}

QByteArray RtfBands::Write(const Band& band, int shorter)
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

} // namespace Tarno
