#pragma once

namespace Tarno
{

/// How a write fails without an error.
enum WriteFault { ShortWrite = -1, NothingWritten = -2 };

/// Which system call fails, and how. The library `faulty_disk` has the only object, `faultyDisk`.
struct FaultyDisk {
    const char* call = nullptr;                 ///< null if none fails
    int error = 0;                              ///< its number, or a WriteFault
    int before = 0;                             ///< calls that succeed first
    int times = 0;                              ///< calls that fail
    int failures = 0;                           ///< calls that have failed
    void (*record)(const char* call) = nullptr; ///< receives each call if it is set
};

} // namespace Tarno
