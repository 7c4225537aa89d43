#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <cstdlib>

namespace Tarno
{

/// Ends the process, without any tidying, as soon as the first window has been painted.
class FirstPaint : public QObject
{
public:
    FirstPaint() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, [] { std::_Exit(0); });
        }
        return QObject::eventFilter(object, event);
    }
};

} // namespace Tarno
