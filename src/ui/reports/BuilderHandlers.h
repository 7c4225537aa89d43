#pragma once

#include "core/ErrorLog.h"

#include <QObject>

#include <string_view>
#include <utility>

namespace Tarno
{

/// The module under which the report builder and its parts report errors.
constexpr std::string_view builderModule = "fRptLog";

/// Runs `body` whenever `sender` emits `signal`, as long as `context` exists. Its errors are reported as
/// those of `routine`, which must be a literal.
template <typename Sender, typename Signal, typename Body>
void Handle(const Sender* sender, Signal signal, const QObject* context, std::string_view routine, Body body)
{
    QObject::connect(sender, signal, context,
                     [routine, body = std::move(body)] { Trap(builderModule, routine, body); });
}

} // namespace Tarno
