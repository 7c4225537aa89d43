#pragma once

#include <cstdlib>
#include <string_view>

/// Whether the long form of the safety tests was asked for, by "long" in the environment variable
/// TARNO_SAFETY. The short form is the one that runs with all other tests.
inline bool IsLongForm()
{
    const char* form = std::getenv("TARNO_SAFETY");
    return form != nullptr && std::string_view(form) == "long";
}

/// How often something is done in this run.
inline int Times(int shortForm, int longForm)
{
    return IsLongForm() ? longForm : shortForm;
}
