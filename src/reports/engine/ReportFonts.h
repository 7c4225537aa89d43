#pragma once

#include "reports/engine/ReportControl.h"

#include <QCache>
#include <QFont>
#include <QFontMetricsF>

#include <deque>

namespace Tarno
{

/// Returns `family` if it is installed, otherwise a family of similar width.
QString AvailableFamily(const QString& family);

/// Returns the font for measuring and painting. Its size is in twips and it is unhinted, so a text has the
/// same width on every screen and printer.
QFont TwipFont(const ReportFont& font);

/// Measures texts and breaks them into lines. Keeps the metrics of the fonts that it has used, and
/// the last widths, because most values of a report occur in many rows.
class TextMeasurer
{
public:
    struct Measure {
        ReportFont font;
        bool hasJoiningLetters;
        QFont twipFont;
        QFontMetricsF metrics;
        int lineHeight;
        int letterWidth; ///< of a wide letter, "M"
    };

    /// Returns the font and metrics for `text` or a line of it. The reference is valid as long as the
    /// measurer.
    const Measure& For(const ReportFont& font, const QString& text = {});

    /// Returns the lines of `text` in a box of `width` twips. If `wrap` is true, breaks at line breaks,
    /// between words, and within a word that is wider than the box. Otherwise returns a single line.
    QStringList Lines(const QString& text, const ReportFont& font, int width, bool wrap);

    /// Returns the start of `text` that fits into `width` twips, at least one character.
    QString FittingPart(const QString& text, const ReportFont& font, int width);

private:
    qreal Width(const QString& text, const Measure& measure);

    std::deque<Measure> m_measures; // a deque, so that For keeps references valid
    QCache<std::pair<const Measure*, QString>, qreal> m_widths{1000};
};

} // namespace Tarno
