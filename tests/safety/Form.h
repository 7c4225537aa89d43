#pragma once

#include <cstdlib>
#include <string_view>

namespace Tarno
{

// The environment variable TARNO_SAFETY chooses how much the safety tests do: "long" takes hours, "short" is
// what CI runs, and without it the tests that take longest do a quarter of the short form.

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

/// How often something is done in this run.
inline int Times(int shortForm, int longForm)
{
    return IsLongForm() ? longForm : shortForm;
}

} // namespace Tarno
