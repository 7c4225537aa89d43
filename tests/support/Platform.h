#pragma once

#include <QtTest/QTest>

#ifdef Q_OS_WIN
inline constexpr bool isWindows = true;
/// Skips the rest of a test that needs something which Windows does not have, or has otherwise.
#define NOT_ON_WINDOWS(what) QSKIP("not on Windows: " what)
#else
inline constexpr bool isWindows = false;
#define NOT_ON_WINDOWS(what) static_cast<void>(0)
#endif
