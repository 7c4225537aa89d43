#include "BackUpParts.h"

#include "core/Error.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/DataFile.h"
#include "store/LogFiles.h"

#include <algorithm>

namespace Tarno
{

std::string WriteNote(const BackUpNote& note)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("backup");
    root.append_attribute("version").set_value("1");
    root.append_child("log").text().set(XmlText(note.log).c_str());
    root.append_child("date").text().set(note.time.c_str());
    root.append_child("program").text().set(XmlText(note.program).c_str());
    for (const auto& [stored, name] : note.pictures) {
        pugi::xml_node picture = root.append_child("picture");
        picture.append_child("stored").text().set(stored.c_str());
        picture.append_child("name").text().set(name.c_str());
    }
    return SerializeXml(document);
}

BackUpNote ReadNote(const std::string& bytes)
{
    BackUpNote note;
    pugi::xml_document document;
    if (!ParseXml(bytes, document)) {
        return note;
    }
    constexpr std::size_t longest = 100;
    const pugi::xml_node root = document.child("backup");
    note.version = root.attribute("version").as_uint(note.version);
    note.log = TextOf(root.child("log"));
    note.time = std::string(root.child("date").text().get()).substr(0, longest);
    note.program = std::string(root.child("program").text().get()).substr(0, longest);
    for (const pugi::xml_node& picture : root.children("picture")) {
        note.pictures.emplace(picture.child("stored").text().get(), picture.child("name").text().get());
    }
    return note;
}

LogBytes ReadLogFiles(const ProgramFolder& folder)
{
    LogBytes files;
    const auto read = [&](const char* name) {
        try {
            files.emplace(name, ReadWholeFile(folder.FindPath(name)));
        } catch (const Error& error) {
            if (error.Number() != ErrorNumber::FileNotFound) {
                throw Error(error.Number(), "The file " + std::string(name) +
                                                " cannot be read: " + error.Description() + '.');
            }
        }
    };
    for (const LogFile& file : LogFiles::data) {
        read(file.name);
    }
    for (const char* name : LogFiles::pickLists) {
        read(name);
    }
    return files;
}

std::string ProblemOf(const LogBytes& files)
{
    std::string problems;
    const auto add = [&](const std::string& name, const std::string& reason) {
        problems += (problems.empty() ? "" : "\n") + name + " cannot be read: " + reason + '.';
    };
    for (const LogFile& file : LogFiles::data) {
        const auto found = files.find(file.name);
        if (found != files.end()) {
            DataFile parsed(file);
            parsed.LoadBytes(found->second);
            if (!parsed.Problem().empty()) {
                add(file.name, parsed.Problem());
            }
        }
    }
    for (const LogFile& needed : {LogFiles::trips, LogFiles::locations}) {
        if (!files.contains(needed.name)) {
            add(needed.name, "The file does not exist");
        }
    }
    return problems;
}

} // namespace Tarno
