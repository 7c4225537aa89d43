#pragma once

#include "core/Xml.h"
#include "safety/ChildProgram.h"
#include "safety/QuickPlace.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

/// The folder of a log that several programs write; it holds entries of two values, the key and a text.
class SharedLog
{
public:
    /// With the entries 1 to `entries`, whose values are "old-1", "old-2" and so on.
    explicit SharedLog(int entries)
    {
        for (const char* name :
             {"field.xml", "location.xml", "locationblank.xml", "Rpt.xml", "RptBlank.xml"}) {
            folder.Write(name, "<data />\n");
        }
        folder.Write("tarnoblank.xml", Bytes({{"0", ""}}));
        std::vector<Entry> old;
        for (int key = 1; key <= entries; ++key) {
            old.push_back({std::to_string(key), "old-" + std::to_string(key)});
        }
        folder.Write("tarno.xml", Bytes(old));
    }

    struct Entry {
        std::string key;
        std::string value;
    };

    static std::string Bytes(const std::vector<Entry>& entries)
    {
        std::string bytes = "<data>\n";
        for (const Entry& entry : entries) {
            bytes += "\t<tarno>\n\t\t<TarnoNo>" + entry.key + "</TarnoNo>\n\t\t<Value>" + entry.value +
                     "</Value>\n\t</tarno>\n";
        }
        return bytes + "</data>\n";
    }

    /// What a version of the log holds; nothing when it is not whole.
    static std::optional<std::vector<Entry>> Entries(std::string_view bytes)
    {
        pugi::xml_document document;
        if (!ParseXml(bytes, document) || !document.child("data")) {
            return std::nullopt;
        }
        std::vector<Entry> entries;
        for (const pugi::xml_node& entry : document.child("data").children("tarno")) {
            entries.push_back({entry.child_value("TarnoNo"), entry.child_value("Value")});
        }
        return entries;
    }

    /// Starts a writer, as writer.cpp says, and waits until it has loaded the log.
    ChildProgram& Start(const std::string& task, int count)
    {
        const std::string name(1, static_cast<char>('A' + m_writers.size()));
        m_writers.push_back(std::make_unique<ChildProgram>(std::vector<std::string>{
            TARNO_WRITER, folder.Path(), m_notes.PathOf(name), task, name, std::to_string(count)}));
        m_writers.back()->Line();
        return *m_writers.back();
    }

    ChildProgram& Writer(std::size_t number) { return *m_writers.at(number); }

    std::size_t WriterCount() const { return m_writers.size(); }

    /// What all writers have noted that begins with `word`, without it.
    std::vector<std::string> Noted(const std::string& word) const
    {
        std::vector<std::string> found;
        for (const std::string& name : m_notes.Names()) {
            std::istringstream notes(m_notes.Read(name));
            for (std::string line; std::getline(notes, line);) {
                if (line.starts_with(word + ' ')) {
                    found.push_back(line.substr(word.size() + 1));
                }
            }
        }
        return found;
    }

    /// The paths of the kept files that the words for the user name.
    std::set<std::string> NamedFiles() const
    {
        std::set<std::string> named;
        for (const std::string& words : Noted("told")) {
            std::istringstream lines(words);
            for (std::string line; std::getline(lines, line, '|');) {
                if (line.starts_with(folder.Path())) {
                    named.insert(line);
                }
            }
        }
        return named;
    }

    /// The names in the folder that begin and end so.
    std::vector<std::string> Names(std::string_view begin, std::string_view end) const
    {
        std::vector<std::string> names = folder.Names();
        std::erase_if(
            names, [&](const std::string& name) { return !name.starts_with(begin) || !name.ends_with(end); });
        return names;
    }

    std::vector<std::string> KeptFiles() const { return Names("tarno-kept-", ".xml"); }

    /// The values that one or more versions of the log hold.
    static std::set<std::string> Values(const std::vector<std::string>& versions)
    {
        std::set<std::string> values;
        for (const std::string& bytes : versions) {
            if (const auto entries = Entries(bytes)) {
                for (const Entry& entry : *entries) {
                    values.insert(entry.value);
                }
            }
        }
        return values;
    }

    TemporaryFolder folder{QuickPlace()};

private:
    TemporaryFolder m_notes{QuickPlace()};
    std::vector<std::unique_ptr<ChildProgram>> m_writers;
};
