#pragma once

namespace Tarno
{

/// Faults of write that set no error.
enum WriteFault { ShortWrite = -1, NothingWritten = -2 };

/// Describes which system call fails, and how. The library `faulty_disk` defines the only instance,
/// `faultyDisk`.
struct FaultyDisk {
    const char* call = nullptr;                 ///< null if none fails
    int error = 0;                              ///< an errno value or a WriteFault
    int before = 0;                             ///< calls that succeed first
    int times = 0;                              ///< calls that fail
    int failures = 0;                           ///< calls that have failed
    void (*record)(const char* call) = nullptr; ///< called for each system call, if set
};

} // namespace Tarno
