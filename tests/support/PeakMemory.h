#pragma once

#include <QtGlobal>

#include <cstddef>

#ifdef Q_OS_WIN
#include <windows.h>
// needs windows.h
#include <psapi.h>
#else
#include <sys/resource.h>
#endif

/// The most memory that this process ever used, in megabytes.
inline std::size_t PeakMegabytes()
{
#ifdef Q_OS_WIN
    PROCESS_MEMORY_COUNTERS counters{};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return counters.PeakWorkingSetSize / 1024 / 1024;
#else
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) / 1024;
#endif
}
