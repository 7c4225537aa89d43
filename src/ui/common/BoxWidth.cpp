#include "BoxWidth.h"

#include <QLineEdit>

void FitBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample)
{
    for (QLineEdit* box : boxes) {
        // the box's own hint is as wide as 17 letters "x" plus its frame and margins
        const int frame =
            box->sizeHint().width() - 17 * box->fontMetrics().horizontalAdvance(QLatin1Char('x'));
        box->setFixedWidth(box->fontMetrics().horizontalAdvance(sample + QLatin1String("  ")) + frame);
    }
}
