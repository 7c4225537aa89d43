#pragma once

#include "core/SettingsStore.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// The program's own settings. No operation throws; an error inside goes to ErrorLog.
class CRegSettings
{
public:
    static constexpr std::string_view defaultCompany = "Tarno";
    static constexpr std::string_view productName = "Tarno Fishing Log";

    /// `store` must outlive the settings.
    explicit CRegSettings(SettingsStore& store);

    // Two names that stand beside the settings; neither takes part in where they lie. They are stored
    // trimmed, and an empty text restores the default.
    const std::string& Company() const { return m_company; }

    void Company(std::string_view NewVal);

    const std::string& AppName() const { return m_appName; }

    void AppName(std::string_view NewVal);

    // `Key` "*" stands for the section's unnamed value.

    /// The value's text, or `Default` when the section or the value does not exist.
    std::string GetSetting(std::string_view Section, std::string_view Key, std::string_view Default);
    /// Creates the section when needed and writes the value.
    void SaveSetting(std::string_view Section, std::string_view Key, std::string_view Setting);
    /// All values of the section in the store's order; nothing when there is no such section.
    std::optional<std::vector<Setting>> GetAllSettings(std::string_view Section);
    /// Deletes the one value, or without `Key` the section. An empty section name does nothing.
    void DeleteSetting(std::string_view Section, std::optional<std::string_view> Key = std::nullopt);

private:
    SettingsStore& m_store;
    std::string m_company{defaultCompany};
    std::string m_appName{productName};
};

} // namespace Tarno
