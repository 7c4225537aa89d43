#pragma once

#include <QApplication>
#include <QPalette>

/// As desktops at night have it.
inline QPalette DarkPalette()
{
    QPalette dark(QColor(49, 54, 59), QColor(35, 38, 41));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    return dark;
}

inline void SetFont(QFont font, bool large)
{
    font.setPointSizeF(font.pointSizeF() * (large ? 2 : 1));
    QApplication::setFont(font);
}
