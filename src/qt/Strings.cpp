#include "Strings.h"

#include "core/Text.h"

#include <QList>

namespace Tarno
{

// A text may begin with U+FEFF. Qt's conversions would drop it as a byte order mark.

QString FromUtf8(std::string_view text)
{
    QString converted = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return text.starts_with("\xEF\xBB\xBF") ? converted.prepend(QChar(QChar::ByteOrderMark)) : converted;
}

std::string ToUtf8(const QString& text)
{
    QString whole;
    whole.reserve(text.size());
    for (const uint codePoint : text.toUcs4()) { // U+FFFD for a lone surrogate
        whole += QChar::fromUcs4(codePoint);
    }
    return whole.toStdString();
}

QString ShownLines(std::string_view stored)
{
    QString lines = FromUtf8(mMain::DecodeLineBreaks(stored));
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    // including two characters that QTextDocument reserves
    for (const QChar lineBreak : {QChar(QLatin1Char('\r')), QChar(QChar::LineSeparator),
                                  QChar(QChar::ParagraphSeparator), QChar(0xFDD0), QChar(0xFDD1)}) {
        lines.replace(lineBreak, QLatin1Char('\n'));
    }
    return lines;
}

std::string StoredLines(const QString& shown)
{
    QString lines = shown;
    return mMain::EncodeLineBreaks(ToUtf8(lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"))));
}

QString ShownInOneLine(std::string_view stored)
{
    return ShownLines(stored).replace(QLatin1Char('\n'), QLatin1Char(' '));
}

} // namespace Tarno
