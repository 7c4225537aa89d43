#pragma once

#include <string>
#include <string_view>

namespace Tarno
{

/// Returns the stored name of a location in the form in which names are compared: folded like the words of a
/// query, on one line, without surplus blanks.
std::string ComparedName(std::string_view stored);

} // namespace Tarno
