#pragma once

#include "core/SettingsStore.h"

#include <pugixml.hpp>

#include <string>

namespace Tarno
{

/// Settings in an XML file: <settings><section name="..."><value name="...">text</value>... Every call reads
/// the file, so that running programs see each other's changes, and every write replaces it as a whole. A
/// damaged file is neither read nor overwritten.
class SettingsFile final : public SettingsStore
{
public:
    SettingsFile(std::string path, FileOperations& operations);

    std::optional<std::string> Read(std::string_view section, std::string_view name) override;
    void Write(std::string_view section, std::string_view name, std::string_view text) override;
    std::optional<std::vector<Setting>> Values(std::string_view section) override;
    void RemoveSection(std::string_view section) override;
    void RemoveValue(std::string_view section, std::string_view name) override;

private:
    bool Load(pugi::xml_document& document) const;
    void Save(const pugi::xml_document& document) const;

    std::string m_path;
    FileOperations& m_operations;
};

} // namespace Tarno
