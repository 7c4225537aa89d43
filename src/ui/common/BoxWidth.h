#pragma once

#include <QString>

#include <initializer_list>

class QAbstractItemView;
class QLineEdit;

namespace Tarno
{

/// Fixes the width of each box to that of `sample` in its font.
void FitBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample);
/// Sets the minimum width of each box to that of `sample` in its font.
void WidenBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample);

/// Sets the minimum width of each list to `letters` average characters in its font.
void WidenLists(std::initializer_list<QAbstractItemView*> lists, int letters);

} // namespace Tarno
