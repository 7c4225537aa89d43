#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <cstdlib>

namespace Tarno
{

/// Exits the process, without cleanup, as soon as the first window is painted.
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
