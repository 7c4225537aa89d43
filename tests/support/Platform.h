#pragma once

#include <QtTest/QTest>

#include <string_view>

namespace Tarno
{

#ifdef Q_OS_WIN
inline constexpr bool isWindows = true;
/// Skips the rest of a test that needs something which Windows does not have, or has otherwise.
#define NOT_ON_WINDOWS(what) QSKIP("not on Windows: " what)
#else
inline constexpr bool isWindows = false;
#define NOT_ON_WINDOWS(what) static_cast<void>(0)
#endif

/// Whether a file can have that name here.
inline bool IsFileName(std::string_view name)
{
    return !isWindows ||
           (name.find_first_of("<>:\"/\\|?*\n") == std::string_view::npos && !name.ends_with(' '));
}

} // namespace Tarno
