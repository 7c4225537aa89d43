#include "Require.h"
#include "qt/Strings.h"
#include "ui/entry/PickLists.h"

using namespace Tarno;

namespace
{

const QByteArray utf8Mark("\xEF\xBB\xBF");

/// Checks that each line of the file is a line of the list, with its characters unchanged.
void CheckLines(const QByteArray& bytes, const QStringList& lines)
{
    QByteArray content = bytes;
    content.replace("\r\n", "\n");
    Require(lines.size() == content.count('\n') + 1, "the list has as many lines as the file");
    const QString text = lines.join(QLatin1Char('\n'));
    if (QString::fromUtf8(bytes).toUtf8() == bytes.mid(bytes.startsWith(utf8Mark) ? utf8Mark.size() : 0)) {
        content.remove(0, content.startsWith(utf8Mark) ? utf8Mark.size() : 0);
        Require(text.toUtf8() == content, "a UTF-8 file is read unchanged");
    } else {
        Require(text.size() == content.size(), "an ANSI file has one character for each byte");
    }
}

/// Checks that a picked line can be stored in an entry and shown again.
void CheckStoring(const QString& picked)
{
    // "~CL" before a line break is stored as "~CL~CL~", the same text as for a line break before "CL~"
    if (picked.contains(QLatin1String("~CL"))) {
        return;
    }
    const std::string stored = StoredLines(picked);
    QString expected = picked;
    for (const char16_t lineBreak : {u'\r', u'\u2028', u'\u2029'}) {
        expected.replace(QChar(lineBreak), QLatin1Char('\n'));
    }
    const QString shown = ShownLines(stored);
    Require(shown == expected, "a picked text is shown again, with line feeds as line breaks");
    Require(ShownLines(StoredLines(shown)) == shown, "a shown text makes a round trip");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QStringList lines = PickListLines(bytes);
    CheckLines(bytes, lines);
    for (const QString& line : lines) {
        Require(!line.contains(QLatin1Char('\n')), "a line contains no line feed");
        CheckStoring(line);
    }
    return 0;
}
