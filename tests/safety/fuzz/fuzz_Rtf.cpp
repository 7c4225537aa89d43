#include "Require.h"
#include "reports/ReadRtf.h"
#include "reports/engine/RtfWriter.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>

using namespace Tarno;

namespace
{

constexpr qsizetype maxTexts = 6; // more texts are slower and find nothing new
constexpr int lineHeight = 200;
constexpr int columnWidth = 1500;

/// Returns the text without the control characters that RTF cannot store; tabs and line breaks are kept.
QString Readable(QString text)
{
    return text.removeIf([](QChar character) {
        const char16_t unit = character.unicode();
        return (unit < 0x20 && unit != u'\n' && unit != u'\t');
    });
}

/// Returns a band with two columns of texts.
Band BandOf(const QStringList& texts)
{
    Band band;
    for (int index = 0; index < texts.size(); ++index) {
        PlacedText placed;
        placed.box = QRect(index % 2 * columnWidth, index / 2 * lineHeight, columnWidth, lineHeight);
        placed.font = {QStringLiteral("Arial"), 8, index % 3 == 0};
        placed.alignment = static_cast<TextAlignment>(index % 3);
        placed.text = texts[index];
        band.texts.push_back(placed);
    }
    band.height = static_cast<int>(texts.size() + 1) / 2 * lineHeight;
    return band;
}

void CheckRows(const QList<RtfRow>& rows, const QStringList& texts)
{
    Require(rows.size() == (texts.size() + 1) / 2, "each line of texts becomes a row");
    for (int index = 0; index < texts.size(); ++index) {
        const QStringList& cells = rows[index / 2].cells;
        Require(index % 2 < cells.size() && cells[index % 2] == Readable(texts[index]),
                "a text is read back");
    }
}

/// Checks a document with the texts in the details, the first one also in the header, the last one in the
/// footer.
void CheckDocument(const QString& title, const QStringList& texts)
{
    Document document;
    document.title = title;
    document.paper = {11906, 16838};
    document.margins = {720, 720, 720, 720};
    document.header = BandOf(texts.first(1));
    document.footer = BandOf(texts.last(1));
    const qsizetype half = texts.size() / 2;
    document.details = {BandOf(texts.first(half)), BandOf(texts.sliced(half))};
    const RtfReading reading = RtfReader::Read(RtfBytes(document));
    Require(reading.fault.isEmpty(), "the file is well-formed RTF in ASCII");
    Require(reading.title == Readable(title), "the title is read back");
    CheckRows(reading.header, texts.first(1));
    CheckRows(reading.footer, texts.last(1));
    const qsizetype firstRows = (half + 1) / 2;
    Require(reading.body.size() >= firstRows, "the details are read back");
    CheckRows(reading.body.first(firstRows), texts.first(half));
    CheckRows(reading.body.sliced(firstRows), texts.sliced(half));
}

/// Creates the application object, which the font database needs.
void CreateApplication()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static std::array<char, 5> name{"fuzz"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static const QGuiApplication application(count, arguments.data());
}

} // namespace

/// The input contains texts separated by U+0000; the first one is also the title. It is UTF-16, which can
/// contain lone surrogates, or UTF-8 if the number of bytes is odd.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CreateApplication();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString text = QString::fromUtf8(bytes);
    if (size % 2 == 0) {
        text.resize(static_cast<qsizetype>(size / 2));
        std::copy_n(data, size, reinterpret_cast<std::uint8_t*>(text.data()));
    }
    const QStringList texts = text.split(QChar());
    CheckDocument(texts.first(), texts.first(std::min(texts.size(), maxTexts)));
    return 0;
}
