#pragma once

#include <QColor>

#include <array>

namespace Tarno
{

/// The colours of four grades, worst first: of a rating or of the action. Each is readable on light and dark
/// backgrounds and is always shown with a word or a figure.
inline const std::array gradeColours{QColor(0x8a, 0x8f, 0x98), QColor(0xc9, 0x8a, 0x1b),
                                     QColor(0x2f, 0x8f, 0xb8), QColor(0x3a, 0x9d, 0x4f)};

} // namespace Tarno
