#include "ReportFonts.h"

#include "core/Twips.h"

#include <QFontDatabase>
#include <QHash>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace Tarno
{

namespace
{

/// Returns whether `text` contains letters of a cursive script such as Arabic, which letter spacing would
/// break.
bool HasJoiningLetters(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar letter) {
        const QChar::JoiningType type = letter.joiningType();
        return type == QChar::Joining_Dual || type == QChar::Joining_Right || type == QChar::Joining_Left;
    });
}

QStringList WrappedLines(const QString& paragraph, const QFont& font, int width,
                         QTextOption::WrapMode mode = QTextOption::WrapAtWordBoundaryOrAnywhere)
{
    QTextOption option;
    option.setWrapMode(mode);
    QTextLayout layout(paragraph, font);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines << paragraph.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

} // namespace

QString AvailableFamily(const QString& family)
{
    static const QStringList families = QFontDatabase::families();
    static const QHash<QString, QString> substitutes{
        {QStringLiteral("Tahoma"), QStringLiteral("DejaVu Sans Condensed")},
        {QStringLiteral("Verdana"), QStringLiteral("DejaVu Sans")},
        {QStringLiteral("Arial"), QStringLiteral("Liberation Sans")}};
    return families.contains(family) ? family : substitutes.value(family, family);
}

QFont TwipFont(const ReportFont& font)
{
    QFont twipFont(AvailableFamily(font.Name));
    twipFont.setPixelSize(std::max(1, static_cast<int>(std::lround(font.Size * twipsPerPoint))));
    twipFont.setBold(font.Bold);
    twipFont.setHintingPreference(QFont::PreferNoHinting);
    return twipFont;
}

const TextMeasurer::Measure& TextMeasurer::For(const ReportFont& font, const QString& text)
{
    const bool hasJoiningLetters = HasJoiningLetters(text);
    const auto found = std::find_if(m_measures.begin(), m_measures.end(), [&](const Measure& measure) {
        return measure.hasJoiningLetters == hasJoiningLetters && measure.font == font;
    });
    if (found != m_measures.end()) {
        return *found;
    }
    QFont twipFont = TwipFont(font);
    if (!hasJoiningLetters) {
        // invisible letter spacing prevents ligatures, which cannot be searched for in a PDF
        twipFont.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
    }
    const QFontMetricsF metrics(twipFont);
    return m_measures.emplace_back(Measure{font, hasJoiningLetters, twipFont, metrics,
                                           static_cast<int>(std::ceil(metrics.height())),
                                           static_cast<int>(metrics.horizontalAdvance(QLatin1Char('M')))});
}

qreal TextMeasurer::Width(const QString& text, const Measure& measure)
{
    const std::pair key(&measure, text);
    if (const qreal* const known = m_widths.object(key)) {
        return *known;
    }
    const qreal width = measure.metrics.horizontalAdvance(text);
    m_widths.insert(key, new qreal(width));
    return width;
}

QStringList TextMeasurer::Lines(const QString& text, const ReportFont& font, int width, bool wrap)
{
    const Measure& measure = For(font, text);
    if (!wrap) {
        return {QString(text).replace(QLatin1Char('\n'), QLatin1Char(' '))};
    }
    QStringList lines;
    for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
        if (Width(paragraph, measure) <= width) {
            lines << paragraph;
        } else {
            lines << WrappedLines(paragraph, measure.twipFont, width);
        }
    }
    return lines;
}

QString TextMeasurer::FittingPart(const QString& text, const ReportFont& font, int width)
{
    const Measure& measure = For(font, text);
    return Width(text, measure) <= width
               ? text
               : WrappedLines(text, measure.twipFont, width, QTextOption::WrapAnywhere).first();
}

} // namespace Tarno
