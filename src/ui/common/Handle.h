#pragma once

#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QWidget>

#include <utility>

namespace Tarno
{

/// Runs `body` whenever `control` emits `signal`, as long as `context` exists. Errors are reported with the
/// object name of the window as the module, for example "fEntry", and `control`_`event` as the routine, for
/// example "cmdLoad_Click".
template <typename Control, typename Signal, typename Body>
void Handle(const Control* control, Signal signal, const char* event, const QObject* context, Body body)
{
    QObject::connect(control, signal, context, [control, event, body = std::move(body)] {
        Trap(ToUtf8(control->window()->objectName()), ToUtf8(control->objectName()) + '_' + event, body);
    });
}

} // namespace Tarno
