#pragma once

#include "core/SettingsStore.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// The settings of the program. No operation throws; errors are reported through ErrorLog.
class CRegSettings
{
public:
    static constexpr std::string_view defaultCompany = "Tarno";
    static constexpr std::string_view productName = "Tarno Fishing Log";

    /// `store` must outlive the settings.
    explicit CRegSettings(SettingsStore& store);

    // Company and AppName do not affect where the settings are stored. Their values are trimmed; an empty
    // text restores the default.
    const std::string& Company() const { return m_company; }

    void Company(std::string_view NewVal);

    const std::string& AppName() const { return m_appName; }

    void AppName(std::string_view NewVal);

    // `Key` "*" is the unnamed value of the section.

    /// Returns the text of the value, or `Default` if the section or the value does not exist.
    std::string GetSetting(std::string_view Section, std::string_view Key, std::string_view Default);
    /// Writes the value, creating the section if necessary.
    void SaveSetting(std::string_view Section, std::string_view Key, std::string_view Setting);
    /// Returns all values of the section in the order of the store, or nullopt if it does not exist.
    std::optional<std::vector<Setting>> GetAllSettings(std::string_view Section);
    /// Deletes the value, or the whole section without `Key`. Does nothing if the section name is empty.
    void DeleteSetting(std::string_view Section, std::optional<std::string_view> Key = std::nullopt);

private:
    SettingsStore& m_store;
    std::string m_company{defaultCompany};
    std::string m_appName{productName};
};

} // namespace Tarno
