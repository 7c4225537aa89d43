#pragma once

#include <string>

/// To be called when there is no file at `path`: an exchange may be under way, or a program may have been
/// killed amid one. Waits for the file to come, or brings back what went out when that takes too long; false
/// when the file is really missing.
bool ComesBack(const std::string& path);
