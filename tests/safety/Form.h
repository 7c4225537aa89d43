#pragma once

#include <cstdlib>
#include <string_view>

namespace Tarno
{

// The environment variable TARNO_SAFETY selects the extent of the safety tests: "long" takes hours, "short"
// is for CI. Without it, the longest tests do a quarter of the short form.

inline std::string_view SafetyForm()
{
    const char* form = std::getenv("TARNO_SAFETY");
    return form != nullptr ? form : "";
}

inline bool IsLongForm()
{
    return SafetyForm() == "long";
}

inline bool IsQuickForm()
{
    return SafetyForm().empty();
}

/// Returns the number of repetitions for this run.
inline int Times(int shortForm, int longForm)
{
    return IsLongForm() ? longForm : shortForm;
}

} // namespace Tarno
