#pragma once

#include "reports/engine/ReportControl.h"

#include <QFont>
#include <QFontMetricsF>

#include <vector>

namespace Tarno
{

/// The family in which `family` is printed: itself where the machine has it, otherwise one of like width.
QString AvailableFamily(const QString& family);

/// The font in which the program measures and paints: one unit of its size is one twip, unhinted, so that
/// a text is as wide on every screen, printer and page.
QFont TwipFont(const ReportFont& font);

/// Breaks texts into lines. It remembers the fonts that it has met.
class TextMeasurer
{
public:
    struct Measure {
        ReportFont font;
        bool joins;
        QFont twipFont;
        QFontMetricsF metrics;
        int lineHeight;
    };

    /// What measures and paints `text`, or a line of it.
    const Measure& For(const ReportFont& font, const QString& text = {});

    /// The lines of `text` in boxes of `width` twips: at each line break, and when `wrap` also between
    /// words, or within a word that is wider than the box.
    QStringList Lines(const QString& text, const ReportFont& font, int width, bool wrap);

private:
    std::vector<Measure> m_measures;
};

} // namespace Tarno
