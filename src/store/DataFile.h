#pragma once

#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"

#include <pugixml.hpp>

#include <string>

/// One data file, held whole in memory: a document whose element `data` holds the records.
class DataFile
{
public:
    explicit DataFile(std::string name);
    DataFile(const DataFile&) = delete;
    DataFile& operator=(const DataFile&) = delete;
    ~DataFile() = default;

    const std::string& Name() const { return m_name; }

    /// Reads the file from `folder`. A file that is missing, damaged or no data file leaves the document
    /// empty: every operation on it then fails, so nothing can be saved over it.
    void Load(const ProgramFolder& folder);

    /// Writes the whole document into the file that was loaded; where that is gone, into the existing file of
    /// `name`, whatever the case of its letters.
    /// Throws Error; the document then still counts as unsaved.
    void Save(const ProgramFolder& folder, SafeWriter& writer, const std::string& name);

    void Release();

    /// The document's first child, where records are listed and appended.
    /// Throws Error ObjectNotSet when the document is empty.
    pugi::xml_node Container() const;
    /// The document's child `data`, where records are looked up. Throws as Container.
    pugi::xml_node Data() const;

    /// Whether the last Save did not succeed: the document differs from the file.
    bool IsUnsaved() const { return m_unsaved; }

private:
    std::string m_name;
    std::string m_path;  ///< of the file that was loaded
    std::string m_bytes; ///< of the file as it was loaded, in which the document's values lie
    pugi::xml_document m_document;
    bool m_unsaved = false;
};
