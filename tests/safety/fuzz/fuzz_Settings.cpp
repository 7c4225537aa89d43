#include "Promise.h"
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

/// The texts of the section by name but for the one of `without`; of those with the same name the first
/// counts.
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
    Promise(settings.GetSetting(section, name, fallback) == fallback, "damage is not read");
    Promise(!settings.GetAllSettings(section), "damage has no sections");
    Promise(folder.Read(fileName) == bytes, "damage is left alone");
}

/// Saves the text under `key`, reads it, and deletes it; what stands beside it stays.
void CheckSaving(CRegSettings& settings, const std::string& key, const std::string& text)
{
    const std::string stored = key == "*" ? "" : key;
    const Texts beside = TextsOf(settings, stored);
    settings.SaveSetting(section, key, text);
    Promise(settings.GetSetting(section, key, fallback) == XmlText(text), "what was saved is read back");
    Promise(TextsOf(settings, stored) == beside, "the settings beside it stay when it is saved");
    settings.DeleteSetting(section, key);
    Promise(TextsOf(settings, stored) == beside, "the settings beside it stay when it is deleted");
}

} // namespace

/// What is to be saved up to the first line feed; the settings file behind it.
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
    // as a save leaves it: blanks that stand as references beside comments are gone
    folder.Write(fileName, SerializeXml(document));
    CheckSaving(settings, name, text);
    CheckSaving(settings, "*", text);
    settings.DeleteSetting(section);
    Promise(ParseXml(folder.Read(fileName), document) && document.child("settings"),
            "the file stays one that can be read");
    return 0;
}
