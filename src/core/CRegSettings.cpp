#include "CRegSettings.h"

#include "Conversions.h"
#include "ErrorLog.h"

namespace Tarno
{

namespace
{

constexpr std::string_view module = "CRegSettings";

std::string_view ValueName(std::string_view key)
{
    return key == "*" ? std::string_view() : key;
}

std::string TrimmedOr(std::string_view text, std::string_view fallback)
{
    const std::string_view trimmed = Trimmed(text);
    return std::string(trimmed.empty() ? fallback : trimmed);
}

} // namespace

CRegSettings::CRegSettings(SettingsStore& store) : m_store(store) {}

void CRegSettings::Company(std::string_view NewVal)
{
    Trap(module, "Company:Let", [&] { m_company = TrimmedOr(NewVal, defaultCompany); });
}

void CRegSettings::AppName(std::string_view NewVal)
{
    Trap(module, "AppName:Let", [&] { m_appName = TrimmedOr(NewVal, productName); });
}

std::string CRegSettings::GetSetting(std::string_view Section, std::string_view Key, std::string_view Default)
{
    std::string text(Default);
    Trap(module, "GetSetting", [&] { text = m_store.Read(Section, ValueName(Key)).value_or(text); });
    return text;
}

void CRegSettings::SaveSetting(std::string_view Section, std::string_view Key, std::string_view Setting)
{
    Trap(module, "SaveSetting", [&] { m_store.Write(Section, ValueName(Key), Setting); });
}

std::optional<std::vector<Setting>> CRegSettings::GetAllSettings(std::string_view Section)
{
    std::optional<std::vector<Setting>> values;
    Trap(module, "GetAllSettings", [&] { values = m_store.Values(Section); });
    return values;
}

void CRegSettings::DeleteSetting(std::string_view Section, std::optional<std::string_view> Key)
{
    Trap(module, "DeleteSetting", [&] {
        if (Section.empty()) {
            return;
        }
        if (Key) {
            m_store.RemoveValue(Section, ValueName(*Key));
        } else {
            m_store.RemoveSection(Section);
        }
    });
}

} // namespace Tarno
