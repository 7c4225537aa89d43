#pragma once

#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QWidget>

#include <utility>

namespace Tarno
{

/// Runs `body` whenever `control` emits `signal`, as long as `context` exists. Its errors are reported as
/// those of the control's window in the routine `control`_`event`, both by their object names: "fEntry",
/// "cmdLoad_Click".
template <typename Control, typename Signal, typename Body>
void Handle(const Control* control, Signal signal, const char* event, const QObject* context, Body body)
{
    QObject::connect(control, signal, context, [control, event, body = std::move(body)] {
        Trap(ToUtf8(control->window()->objectName()), ToUtf8(control->objectName()) + '_' + event, body);
    });
}

} // namespace Tarno
