#pragma once

#include "support/ScriptedFileOperations.h"

#include <string>
#include <vector>

/// A step of a save and the way in which it fails.
struct Fault {
    std::string step;
    ErrorNumber error;
    int times;
};

/// Every one of `steps` with every error, once and for ever.
inline std::vector<Fault> AllFaults(const std::vector<std::string>& steps)
{
    std::vector<Fault> faults;
    for (const std::string& step : steps) {
        for (const ErrorNumber error : {ErrorNumber::DiskFull, ErrorNumber::DeviceInputOutput,
                                        ErrorNumber::PermissionDenied, ErrorNumber::PathFileAccess}) {
            for (const int times : {1, ScriptedFileOperations::always}) {
                faults.push_back({step, error, times});
            }
        }
    }
    return faults;
}

/// The steps of a data file's save that come before the new bytes have taken their place.
inline const std::vector<std::string> stepsBefore{"follow", "check", "create", "write",
                                                  "sync",   "close", "size",   "exchange"};

/// Those of an export.
inline const std::vector<std::string> exportSteps{"follow", "check", "create", "write",
                                                  "sync",   "close", "size",   "replace"};
