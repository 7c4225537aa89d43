#pragma once

#include <QtGlobal>

#include <cstddef>
#include <fstream>
#include <string>

#ifdef Q_OS_WIN
#include <windows.h>
// needs windows.h
#include <psapi.h>
#endif

namespace Tarno
{

/// Returns the peak memory usage of this process in megabytes, excluding the process that started it.
inline std::size_t PeakMegabytes()
{
#ifdef Q_OS_WIN
    PROCESS_MEMORY_COUNTERS counters{};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return counters.PeakWorkingSetSize / 1024 / 1024;
#else
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "VmHWM:") {
    }
    std::size_t kilobytes = 0;
    status >> kilobytes;
    return kilobytes / 1024;
#endif
}

} // namespace Tarno
