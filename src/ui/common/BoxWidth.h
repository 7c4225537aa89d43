#pragma once

#include <QString>

#include <initializer_list>

class QAbstractItemView;
class QLineEdit;

namespace Tarno
{

/// Makes the boxes as wide as `sample` in their own font, no wider and no narrower.
void FitBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample);

/// Makes the lists at least wide enough to show rows of `letters` in their own font.
void WidenLists(std::initializer_list<QAbstractItemView*> lists, int letters);

} // namespace Tarno
