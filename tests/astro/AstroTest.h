#pragma once

#include "core/Conversions.h"
#include "core/Error.h"

#include <QtTest>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

// Lets QCOMPARE print texts and dates.
namespace QTest
{

template <>
inline char* toString(const std::string& text)
{
    return qstrdup(text.c_str());
}

template <>
inline char* toString(const std::string_view& text)
{
    return qstrdup(std::string(text).c_str());
}

template <>
inline char* toString(const std::chrono::year_month_day& t)
{
    return qstrdup(Tarno::FromDate(t).c_str());
}

} // namespace QTest

namespace Tarno
{

/// Runs `routine` and returns the number of the Error that it throws, or nullopt.
template <typename Routine>
std::optional<ErrorNumber> ErrorOf(Routine routine)
{
    try {
        routine();
    } catch (const Error& error) {
        return error.Number();
    }
    return std::nullopt;
}

} // namespace Tarno
