#pragma once

#include <string_view>

namespace Tarno
{

/// The module under which the report builder and its parts report errors.
inline constexpr std::string_view builderModule = "fRptLog";

} // namespace Tarno
