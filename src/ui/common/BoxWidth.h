#pragma once

#include <QString>

#include <initializer_list>

class QLineEdit;

/// Makes the boxes as wide as `sample` in their own font, no wider and no narrower.
void FitBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample);
