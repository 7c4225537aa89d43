#include "SettingsStore.h"

#include <array>
#include <windows.h>

namespace Tarno
{

namespace
{

/// Converts `text` to another code page. Characters that the target code page lacks become its
/// replacement character.
std::string Transcode(std::string_view text, UINT from, UINT to)
{
    if (text.empty() || from == to) {
        return std::string(text);
    }
    const auto size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(::MultiByteToWideChar(from, 0, text.data(), size, nullptr, 0)),
                      L'\0');
    const auto wideSize = static_cast<int>(wide.size());
    ::MultiByteToWideChar(from, 0, text.data(), size, wide.data(), wideSize);
    std::string recoded(static_cast<std::size_t>(::WideCharToMultiByte(to, 0, wide.data(), wideSize, nullptr,
                                                                       0, nullptr, nullptr)),
                        '\0');
    ::WideCharToMultiByte(to, 0, wide.data(), wideSize, recoded.data(), static_cast<int>(recoded.size()),
                          nullptr, nullptr);
    return recoded;
}

// The registry functions use the code page of the process, which is UTF-8 since Windows 10.

std::string ToRegistry(std::string_view utf8)
{
    return Transcode(utf8, CP_UTF8, ::GetACP());
}

std::string FromRegistry(std::string_view text)
{
    return Transcode(text, ::GetACP(), CP_UTF8);
}

std::string KeyPath(std::string_view section)
{
    return ToRegistry("Control Panel\\" + std::string(section));
}

/// An open key. The destructor closes it.
class RegistryKey
{
public:
    RegistryKey(std::string_view section, REGSAM access)
    {
        if (::RegOpenKeyExA(HKEY_CURRENT_USER, KeyPath(section).c_str(), 0, access, &m_key) !=
            ERROR_SUCCESS) {
            m_key = nullptr;
        }
    }

    /// Opens the key, creating it if necessary.
    explicit RegistryKey(std::string_view section)
    {
        if (::RegCreateKeyExA(HKEY_CURRENT_USER, KeyPath(section).c_str(), 0, nullptr,
                              REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &m_key,
                              nullptr) != ERROR_SUCCESS) {
            m_key = nullptr;
        }
    }

    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    ~RegistryKey()
    {
        if (m_key != nullptr) {
            ::RegCloseKey(m_key);
        }
    }

    explicit operator bool() const { return m_key != nullptr; }

    HKEY Handle() const { return m_key; }

private:
    HKEY m_key = nullptr;
};

std::string WithoutTerminator(std::string text)
{
    if (!text.empty()) {
        text.pop_back();
    }
    return text;
}

class RegistrySettings final : public SettingsStore
{
public:
    std::optional<std::string> Read(std::string_view section, std::string_view name) override
    {
        const RegistryKey key(section, KEY_ALL_ACCESS);
        const std::string value = ToRegistry(name);
        DWORD size = 0;
        if (!key ||
            ::RegQueryValueExA(key.Handle(), value.c_str(), nullptr, nullptr, nullptr, &size) !=
                ERROR_SUCCESS ||
            size == 0) {
            return std::nullopt;
        }
        std::string text(size, '\0');
        if (::RegQueryValueExA(key.Handle(), value.c_str(), nullptr, nullptr,
                               reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        text.resize(size);
        return FromRegistry(WithoutTerminator(text));
    }

    void Write(std::string_view section, std::string_view name, std::string_view text) override
    {
        const RegistryKey key(section);
        const std::string data = ToRegistry(text);
        if (key) {
            ::RegSetValueExA(key.Handle(), ToRegistry(name).c_str(), 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(data.c_str()),
                             static_cast<DWORD>(data.size() + 1));
        }
    }

    std::optional<std::vector<Setting>> Values(std::string_view section) override
    {
        const RegistryKey key(section, KEY_READ);
        DWORD count = 0;
        DWORD longestName = 0;
        DWORD longestText = 0;
        if (!key ||
            ::RegQueryInfoKeyA(key.Handle(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                               &longestName, &longestText, nullptr, nullptr) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        std::vector<Setting> values;
        for (DWORD index = 0; index < count; ++index) {
            std::string name(longestName + 1, '\0');
            std::string text(longestText + 1, '\0');
            auto nameSize = static_cast<DWORD>(name.size());
            auto textSize = static_cast<DWORD>(text.size());
            if (::RegEnumValueA(key.Handle(), index, name.data(), &nameSize, nullptr, nullptr,
                                reinterpret_cast<BYTE*>(text.data()), &textSize) == ERROR_SUCCESS) {
                name.resize(nameSize);
                text.resize(textSize);
                values.push_back({FromRegistry(name), FromRegistry(WithoutTerminator(text))});
            }
        }
        return values;
    }

    void RemoveSection(std::string_view section) override
    {
        if (const RegistryKey root("", KEY_ALL_ACCESS); root) {
            ::RegDeleteKeyA(root.Handle(), ToRegistry(section).c_str());
        }
    }

    void RemoveValue(std::string_view section, std::string_view name) override
    {
        if (const RegistryKey key(section, KEY_ALL_ACCESS); key) {
            ::RegDeleteValueA(key.Handle(), ToRegistry(name).c_str());
        }
    }
};

} // namespace

std::unique_ptr<SettingsStore> SystemSettingsStore(FileOperations& /*operations*/)
{
    return std::make_unique<RegistrySettings>();
}

} // namespace Tarno
