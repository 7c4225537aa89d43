#include "RtfWriter.h"

#include "RtfBands.h"

namespace Tarno
{

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
            rtf += RtfWord("u", static_cast<std::int16_t>(unit)) + "?";
        }
    }
    return rtf;
}

QByteArray RtfBytes(const Document& document)
{
    // a table is always followed by a paragraph, which is made as low as possible
    constexpr int endHeight = 10;
    const QByteArray end = "\\pard\\fs2" + RtfWord("sl", -endHeight) + "\\slmult0\\par}\n";
    RtfBands bands(document);
    const QByteArray header = bands.Write(document.header, endHeight);
    const QByteArray footer = bands.Write(document.footer, endHeight);
    QByteArray body;
    for (const Band& band : document.details) {
        body += bands.Write(band);
    }
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n" + bands.Fonts().Table();
    rtf += "{\\info{\\title " + RtfText(document.title) + "}}\n";
    rtf += RtfWord("paperw", document.paper.width()) + RtfWord("paperh", document.paper.height()) +
           RtfWord("margl", document.margins.left()) + RtfWord("margr", document.margins.right()) +
           RtfWord("margt", document.margins.top() + document.header.height) +
           RtfWord("margb", document.margins.bottom() + document.footer.height) +
           RtfWord("headery", document.margins.top()) + RtfWord("footery", document.margins.bottom());
    rtf += document.paper.width() > document.paper.height() ? "\\landscape\n" : "\n";
    rtf += "{\\header\n" + header + end;
    if (!footer.isEmpty()) {
        rtf += "{\\footer\n" + footer + end;
    }
    return rtf + body + end;
}

} // namespace Tarno
