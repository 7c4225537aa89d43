#include "Require.h"
#include "core/CRegSettings.h"
#include "core/SettingsFile.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "support/TemporaryFolder.h"

#include <map>

using namespace Tarno;

namespace
{

const std::string fileName = "settings.xml";
const std::string section = "KOWRA";
const std::string name = "XTidePath";
const std::string fallback = "(fallback)";

using Texts = std::map<std::string, std::string>;

/// Returns the texts of the section by name, except the one of `without`. If a name occurs twice, the first
/// one counts.
Texts TextsOf(CRegSettings& settings, const std::string& without)
{
    Texts texts;
    for (const Setting& setting : settings.GetAllSettings(section).value_or(std::vector<Setting>())) {
        if (!EqualIgnoringCase(setting.name, without)) {
            texts.emplace(setting.name, setting.text);
        }
    }
    return texts;
}

void CheckDamaged(CRegSettings& settings, const TemporaryFolder& folder, std::string_view bytes)
{
    settings.SaveSetting(section, name, "x");
    settings.DeleteSetting(section, name);
    settings.DeleteSetting(section);
    Require(settings.GetSetting(section, name, fallback) == fallback, "a damaged file has no settings");
    Require(!settings.GetAllSettings(section), "a damaged file has no sections");
    Require(folder.Read(fileName) == bytes, "a damaged file is not changed");
}

/// Saves the text under `key`, reads it and deletes it. Checks that other settings do not change.
void CheckSaving(CRegSettings& settings, const std::string& key, const std::string& text)
{
    const std::string stored = key == "*" ? "" : key;
    const Texts beside = TextsOf(settings, stored);
    settings.SaveSetting(section, key, text);
    Require(settings.GetSetting(section, key, fallback) == XmlText(text), "a saved text is read back");
    Require(TextsOf(settings, stored) == beside, "saving a setting does not change others");
    settings.DeleteSetting(section, key);
    Require(TextsOf(settings, stored) == beside, "deleting a setting does not change others");
}

} // namespace

/// The first line is the text to save; the rest is the settings file.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    static const std::unique_ptr<FileOperations> operations = SystemFileOperations();
    const std::string_view input = BytesOf(data, size);
    const auto end = std::min(input.find('\n'), input.size());
    const std::string text(input.substr(0, end));
    const std::string_view bytes = input.substr(std::min(end + 1, input.size()));
    folder.Write(fileName, bytes);
    SettingsFile store(folder.PathOf(fileName), *operations);
    CRegSettings settings(store);

    pugi::xml_document document;
    if (!ParseXml(bytes, document) || !document.child("settings")) {
        CheckDamaged(settings, folder, bytes);
        return 0;
    }
    // in the form that a save writes: without blanks written as references next to comments
    folder.Write(fileName, SerializeXml(document));
    CheckSaving(settings, name, text);
    CheckSaving(settings, "*", text);
    settings.DeleteSetting(section);
    Require(ParseXml(folder.Read(fileName), document) && document.child("settings"),
            "the file can still be read");
    return 0;
}
