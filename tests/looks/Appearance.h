#pragma once

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

inline QPalette DarkPalette()
{
    QPalette dark(QColor(49, 54, 59), QColor(35, 38, 41));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    return dark;
}

/// Sets the palette and the font of the application. Appearance::Usual restores those before the first call.
inline void Apply(Appearance appearance)
{
    static const QPalette usualPalette = QApplication::palette();
    static const QFont usualFont = QApplication::font();
    const bool isDark = appearance == Appearance::Dark || appearance == Appearance::DarkWithLargeFont;
    const bool isLarge = appearance == Appearance::LargeFont || appearance == Appearance::DarkWithLargeFont;
    QFont font = usualFont;
    font.setPointSizeF(font.pointSizeF() * (isLarge ? 2 : 1));
    QApplication::setPalette(isDark ? DarkPalette() : usualPalette);
    QApplication::setFont(font);
}

} // namespace Tarno
