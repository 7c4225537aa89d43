#include "Strings.h"

#include "core/Text.h"

#include <QList>

QString FromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string ToUtf8(const QString& text)
{
    // by way of UCS-4, whose conversion puts U+FFFD in the place of a lone surrogate
    const QList<uint> codePoints = text.toUcs4();
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(codePoints.constData()), codePoints.size())
        .toStdString();
}

QString ShownLines(std::string_view stored)
{
    QString lines = FromUtf8(mMain::DecodeLineBreaks(stored));
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const QChar lineBreak :
         {QChar(QLatin1Char('\r')), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)}) {
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
