#pragma once

#include "core/ProgramFolder.h"
#include "core/SafeWriter.h"

#include <pugixml.hpp>

#include <optional>
#include <string>
#include <string_view>

/// One data file, held whole in memory: a document whose element `data` holds the records. It knows its own
/// version of the file, the one that was read or written last, from one that another program has put there.
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

    /// Holds what `bytes`, another version of the file, say; it is its own version from then on. Returns
    /// false when they are no data file; the document is empty then.
    bool TakeOver(std::string bytes);

    /// Where Save writes: the file that was loaded; where that is gone, the existing file of `name`, whatever
    /// the case of its letters.
    std::string SavePath(const ProgramFolder& folder, const std::string& name) const;

    /// What the file at `path` holds when another program has written it; nothing when it is our own version,
    /// when there is no file, or when the document is empty. Throws Error when it cannot be read.
    std::optional<std::string> OtherVersion(const std::string& path) const;

    /// From now on `bytes`, another version of the file, may be replaced without a trace.
    void GiveUp(std::string_view bytes) { m_ours.push_back(SafeWriter::FingerprintOf(bytes)); }

    /// Writes the whole document to `path`. Another program's version that stands there by then is kept as
    /// SafeWriter::Keep does; returns the path of that file, otherwise the empty text.
    /// Throws Error; the document then still counts as unsaved.
    std::string Save(const std::string& path, SafeWriter& writer);

    /// The document as Save writes it.
    std::string Bytes() const;

    void Release();

    /// The document's first child, where records are listed and appended.
    /// Throws Error ObjectNotSet when the document is empty.
    pugi::xml_node Container() const;
    /// The document's child `data`, where records are looked up. Throws as Container.
    pugi::xml_node Data() const;

    /// Whether the last Save did not succeed, or could not even begin: the document differs from the file.
    bool IsUnsaved() const { return m_unsaved; }

    void CountAsUnsaved() { m_unsaved = true; }

private:
    std::string m_name;
    std::string m_path;  ///< of the file that was loaded
    std::string m_bytes; ///< of the file as it was loaded, in which the document's values lie
    pugi::xml_document m_document;
    SafeWriter::Fingerprints m_ours; ///< of what we read or wrote last, and of what we tried to write since
    bool m_unsaved = false;
};
