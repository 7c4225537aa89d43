#pragma once

#include "safety/faults/FaultyDisk.h"
#include "support/ScriptedFileOperations.h"

#include <cerrno>
#include <string>
#include <vector>

namespace Tarno
{

// The steps of a save, the system calls of each step, and the effect of a failure of each on the save.

enum Effect {
    Fails,             ///< the file keeps its old bytes
    FailsButIsWritten, ///< the file has its new bytes, which a power failure may still undo
    GoesUnnoticed
};

struct SystemCall {
    std::string name;
    Effect effect;
    std::vector<int> harmless = {}; ///< errors and write faults that the step tolerates
};

struct SaveStep {
    std::string name; ///< as ScriptedFileOperations calls it
    int before;       ///< steps of that name that precede it in a save
    Effect effect;
    std::vector<SystemCall> calls = {};

    /// Returns whether the step is retried while another program holds the lock or the file.
    bool IsRetried() const { return name == "lock" || name == "replace"; }
};

/// All steps in order. The last step happens only after a failure.
inline const std::vector<SaveStep> saveSteps{
    {"get state", 0, Fails, {{"stat", Fails}}}, // at the folder
    {"lock", 0, Fails, {{"open", Fails, {EINTR}}, {"flock", GoesUnnoticed}}},
    {"get state", 1, Fails, {{"stat", Fails}, {"access", Fails}}},
    {"create",
     0,
     Fails,
     {{"open", Fails, {EINTR}},
      {"stat", Fails, {ENOENT}}, // from here to fchmod: the rights of the old file
      {"fchown", GoesUnnoticed},
      {"fremovexattr", GoesUnnoticed},
      {"listxattr", GoesUnnoticed},
      {"getxattr", GoesUnnoticed},
      {"fsetxattr", GoesUnnoticed},
      {"fchmod", GoesUnnoticed},
      {"write", Fails, {EINTR, ShortWrite}},
      {"fsync", Fails, {EINTR, EINVAL}}, // some file systems cannot synchronise
      {"close", Fails, {EINTR}},
      {"stat", Fails},
      {"access", GoesUnnoticed}}},
    {"get state", 2, Fails, {{"stat", Fails}, {"access", GoesUnnoticed}}},
    {"replace", 0, Fails, {{"rename", Fails}}},
    {"sync folder",
     0,
     FailsButIsWritten,
     {{"open", FailsButIsWritten, {EINTR}},
      {"fsync", FailsButIsWritten, {EINTR, EINVAL}},
      {"close", FailsButIsWritten, {EINTR}},
      {"close", GoesUnnoticed}}}, // releases the lock
    {"remove", 0, GoesUnnoticed, {{"unlink", GoesUnnoticed}}},
};

/// A step, its error, and how often it fails.
struct Fault {
    SaveStep step;
    ErrorNumber error;
    int times;
    Effect effect;

    std::string Description() const
    {
        return step.name + " after " + std::to_string(step.before) + ", error " +
               std::to_string(static_cast<int>(error)) + ", " + std::to_string(times) + " times";
    }

    void Inject(ScriptedFileOperations& operations) const
    {
        operations.Fail(step.name, error, times, step.before);
    }
};

inline const std::vector<ErrorNumber> allErrors{ErrorNumber::DiskFull, ErrorNumber::DeviceInputOutput,
                                                ErrorNumber::PermissionDenied, ErrorNumber::PathFileAccess};

/// Combines all `steps` with all `errors`, each failing once and each failing always.
inline std::vector<Fault> AllFaults(const std::vector<SaveStep>& steps,
                                    const std::vector<ErrorNumber>& errors)
{
    std::vector<Fault> faults;
    for (const SaveStep& step : steps) {
        for (const ErrorNumber error : errors) {
            const bool isRetried = step.IsRetried() && error == ErrorNumber::PermissionDenied;
            faults.push_back({step, error, 1, isRetried ? GoesUnnoticed : step.effect});
            faults.push_back({step, error, ScriptedFileOperations::always, step.effect});
        }
    }
    return faults;
}

} // namespace Tarno
