#pragma once

#include <QtTest/QTest>

#include <string_view>

namespace Tarno
{

#ifdef Q_OS_WIN
inline constexpr bool isWindows = true;
/// Skips the rest of a test that does not apply to Windows.
#define NOT_ON_WINDOWS(what) QSKIP("not on Windows: " what)
#else
inline constexpr bool isWindows = false;
#define NOT_ON_WINDOWS(what) static_cast<void>(0)
#endif

/// Whether `name` is a valid file name on this platform.
inline bool IsFileName(std::string_view name)
{
    return !isWindows ||
           (name.find_first_of("<>:\"/\\|?*\n") == std::string_view::npos && !name.ends_with(' '));
}

} // namespace Tarno
