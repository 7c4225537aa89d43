#include "TextHeight.h"

#include <QEvent>
#include <QLabel>

namespace Tarno
{

namespace
{

void KeepHeight(QLabel& label)
{
    if (label.isVisible()) {
        label.setMinimumHeight(label.heightForWidth(label.width()));
    }
}

} // namespace

TextHeight::TextHeight(QWidget* window) : QObject(window)
{
    for (QLabel* label : window->findChildren<QLabel*>()) {
        if (label->wordWrap()) {
            label->installEventFilter(this);
        }
    }
}

bool TextHeight::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::Resize ||
        event->type() == QEvent::FontChange) {
        // queued, because the label has intermediate widths until the layout is complete
        auto* label = static_cast<QLabel*>(watched);
        QMetaObject::invokeMethod(
            label, [label] { KeepHeight(*label); }, Qt::QueuedConnection);
    }
    return false;
}

} // namespace Tarno
