#include "SettingsFile.h"

#include "Error.h"
#include "Paths.h"
#include "SafeWriter.h"
#include "Text.h"
#include "Xml.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace Tarno
{

namespace
{

namespace fs = std::filesystem;

pugi::xml_node Named(const pugi::xml_node& parent, const char* element, std::string_view name)
{
    return parent.find_child([&](const pugi::xml_node& child) {
        return std::string_view(child.name()) == element &&
               EqualIgnoringCase(child.attribute("name").value(), name);
    });
}

pugi::xml_node Section(const pugi::xml_document& document, std::string_view name)
{
    return Named(document.child("settings"), "section", name);
}

pugi::xml_node AppendNamed(pugi::xml_node parent, const char* element, std::string_view name)
{
    pugi::xml_node child = parent.append_child(element);
    child.append_attribute("name") = XmlText(name).c_str();
    return child;
}

} // namespace

SettingsFile::SettingsFile(std::string path, FileOperations& operations)
    : m_path(std::move(path)), m_operations(operations)
{
}

std::optional<std::string> SettingsFile::Read(std::string_view section, std::string_view name)
{
    pugi::xml_document document;
    if (!Load(document)) {
        return std::nullopt;
    }
    const pugi::xml_node value = Named(Section(document, section), "value", name);
    return value ? std::optional<std::string>(value.text().get()) : std::nullopt;
}

void SettingsFile::Write(std::string_view section, std::string_view name, std::string_view text)
{
    pugi::xml_document document;
    if (!Load(document)) {
        return;
    }
    pugi::xml_node found = Section(document, section);
    if (!found) {
        found = AppendNamed(document.child("settings"), "section", section);
    }
    pugi::xml_node value = Named(found, "value", name);
    if (!value) {
        value = AppendNamed(found, "value", name);
    }
    value.remove_children(); // text().set() would reuse a CDATA section, which cannot contain "]]>"
    value.text().set(XmlText(text).c_str());
    Save(document);
}

std::optional<std::vector<Setting>> SettingsFile::Values(std::string_view section)
{
    pugi::xml_document document;
    pugi::xml_node found;
    if (!Load(document) || !(found = Section(document, section))) {
        return std::nullopt;
    }
    std::vector<Setting> values;
    for (const pugi::xml_node& value : found.children("value")) {
        values.push_back({value.attribute("name").value(), value.text().get()});
    }
    return values;
}

void SettingsFile::RemoveSection(std::string_view section)
{
    pugi::xml_document document;
    if (Load(document) && document.child("settings").remove_child(Section(document, section))) {
        Save(document);
    }
}

void SettingsFile::RemoveValue(std::string_view section, std::string_view name)
{
    pugi::xml_document document;
    if (!Load(document)) {
        return;
    }
    pugi::xml_node found = Section(document, section);
    if (found.remove_child(Named(found, "value", name))) {
        Save(document);
    }
}

bool SettingsFile::Load(pugi::xml_document& document) const
{
    try {
        return ParseXml(ReadWholeFile(m_path), document) && document.child("settings");
    } catch (const Error& error) {
        document.append_child("settings");
        return error.Number() == ErrorNumber::FileNotFound;
    }
}

void SettingsFile::Save(const pugi::xml_document& document) const
{
    std::error_code ignored; // if this fails, writing the file fails too
    fs::create_directories(ToPath(m_path).parent_path(), ignored);
    try {
        SafeWriter writer(m_operations);
        const FolderLock lock = writer.LockFolder(FolderOf(Resolved(m_path)));
        writer.Write(m_path, SerializeXml(document));
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): the old setting stays, see SettingsStore
    }
}

#ifndef _WIN32
namespace
{

std::string UserConfigurationFolder()
{
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder != nullptr && *folder == '/') {
        return folder;
    }
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : "") + "/.config";
}

} // namespace

std::unique_ptr<SettingsStore> SystemSettingsStore(FileOperations& operations)
{
    const std::string path = UserConfigurationFolder() + "/tarno/settings.xml";
    SafeWriter(operations).RemoveStaleTemporaries(path);
    return std::make_unique<SettingsFile>(path, operations);
}
#endif

} // namespace Tarno
