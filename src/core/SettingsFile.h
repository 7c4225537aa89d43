#pragma once

#include "core/SettingsStore.h"

#include <pugixml.hpp>

#include <string>

namespace Tarno
{

/// Settings in an XML file: <settings><section name="..."><value name="...">text</value>...
/// The file is read at each call, so two running programs see each other's settings, and written whole.
/// A file that is damaged is left alone: nothing is read from it and nothing is written over it.
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
