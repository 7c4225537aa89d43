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
    std::string name; ///< empty for the section's unnamed value
    std::string text;
};

/// Where the user's settings lie: named texts in named sections, under the common root
/// "Control Panel" (the section with the empty name is that root itself). Names are compared without
/// the case of letters. What cannot be read is absent, what cannot be written stays as it was; neither
/// is an error.
class SettingsStore
{
public:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    virtual ~SettingsStore() = default;

    virtual std::optional<std::string> Read(std::string_view section, std::string_view name) = 0;
    /// Creates the section when needed.
    virtual void Write(std::string_view section, std::string_view name, std::string_view text) = 0;
    /// All values in the store's own order; nothing when there is no such section.
    virtual std::optional<std::vector<Setting>> Values(std::string_view section) = 0;
    virtual void RemoveSection(std::string_view section) = 0;
    virtual void RemoveValue(std::string_view section, std::string_view name) = 0;
};

/// The registry of the current user on Windows, a file "tarno/settings.xml" in the user's configuration
/// folder elsewhere. `operations` must outlive the store.
std::unique_ptr<SettingsStore> SystemSettingsStore(FileOperations& operations);

} // namespace Tarno
