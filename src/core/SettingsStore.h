#pragma once

#include "core/FileOperations.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

struct Setting {
    std::string name; ///< empty for the unnamed value of the section
    std::string text;
};

/// The storage of the user's settings: named texts in named sections below the root "Control Panel" (the
/// section with the empty name is the root itself). Names are case-insensitive. An unreadable value is
/// treated as absent, and a failed write leaves the old value; neither is an error.
class SettingsStore
{
public:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    virtual ~SettingsStore() = default;

    virtual std::optional<std::string> Read(std::string_view section, std::string_view name) = 0;
    /// Creates the section if necessary.
    virtual void Write(std::string_view section, std::string_view name, std::string_view text) = 0;
    /// Returns all values in the order of the store, or nullopt if the section does not exist.
    virtual std::optional<std::vector<Setting>> Values(std::string_view section) = 0;
    virtual void RemoveSection(std::string_view section) = 0;
    virtual void RemoveValue(std::string_view section, std::string_view name) = 0;
};

/// Returns the registry of the current user on Windows, and the file "tarno/settings.xml" in the user's
/// configuration folder elsewhere. `operations` must outlive the store.
std::unique_ptr<SettingsStore> SystemSettingsStore(FileOperations& operations);

} // namespace Tarno
