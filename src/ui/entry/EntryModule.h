#pragma once

#include <string_view>

namespace Tarno
{

/// The module under which the entry editor and all its parts report errors.
inline constexpr std::string_view entryModule = "fEntry";

} // namespace Tarno
