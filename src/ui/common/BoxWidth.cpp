#include "BoxWidth.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QScrollBar>

namespace Tarno
{

namespace
{

int WidthFor(const QLineEdit& box, const QString& sample)
{
    // QLineEdit's size hint is 17 letters "x" plus its frame and margins
    const int frame = box.sizeHint().width() - 17 * box.fontMetrics().horizontalAdvance(QLatin1Char('x'));
    return box.fontMetrics().horizontalAdvance(sample) + frame;
}

} // namespace

void FitBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample)
{
    for (QLineEdit* box : boxes) {
        box->setFixedWidth(WidthFor(*box, sample + QLatin1String("  ")));
    }
}

void WidenBoxes(std::initializer_list<QLineEdit*> boxes, const QString& sample)
{
    for (QLineEdit* box : boxes) {
        box->setMinimumWidth(WidthFor(*box, sample));
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
