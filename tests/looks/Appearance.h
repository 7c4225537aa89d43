#pragma once

#include "ui/common/CrispFrames.h"
#include "ui/common/DarkColours.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

namespace Tarno
{

/// A combination of palette and font size.
enum class Appearance { Usual, Dark, LargeFont, DarkWithLargeFont };

struct NamedAppearance {
    const char* name;
    Appearance appearance;
};

/// Sets the palette and the font of the application. Appearance::Usual restores those before the first call.
inline void Apply(Appearance appearance)
{
    static const bool hasStyle = (QApplication::setStyle(new CrispFrames), true); // as in main
    Q_UNUSED(hasStyle)
    static const QPalette usualPalette = QApplication::palette();
    static const QFont usualFont = QApplication::font();
    const bool isDark = appearance == Appearance::Dark || appearance == Appearance::DarkWithLargeFont;
    const bool isLarge = appearance == Appearance::LargeFont || appearance == Appearance::DarkWithLargeFont;
    QFont font = usualFont;
    font.setPointSizeF(font.pointSizeF() * (isLarge ? 2 : 1));
    QApplication::setPalette(isDark ? DarkColours() : usualPalette);
    QApplication::setFont(font);
}

} // namespace Tarno
