#pragma once

#include "core/Error.h"

#include <utility>

namespace Tarno
{

/// The number of the Error that `body` throws, 0 when it throws none.
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
