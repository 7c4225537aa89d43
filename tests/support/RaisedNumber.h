#pragma once

#include "core/Error.h"

#include <utility>

namespace Tarno
{

/// Runs `body` and returns the number of the Error that it throws, or 0.
template <typename Body>
int RaisedNumber(Body&& body)
{
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (const Error& error) {
        return static_cast<int>(error.Number());
    }
}

} // namespace Tarno
