#include "BoxWidth.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QScrollBar>

namespace Tarno
{

void FitBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample)
{
    for (QLineEdit* box : boxes) {
        // QLineEdit's size hint is 17 letters "x" plus its frame and margins
        const int frame =
            box->sizeHint().width() - 17 * box->fontMetrics().horizontalAdvance(QLatin1Char('x'));
        box->setFixedWidth(box->fontMetrics().horizontalAdvance(sample + QLatin1String("  ")) + frame);
    }
}

void WidenLists(std::initializer_list<QAbstractItemView*> lists, int letters)
{
    for (QAbstractItemView* list : lists) {
        list->setMinimumWidth(letters * list->fontMetrics().averageCharWidth() +
                              list->verticalScrollBar()->sizeHint().width());
    }
}

} // namespace Tarno
