#pragma once

#include "core/Error.h"
#include "core/FileOperations.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// Zip archives: entries that are stored or deflated, names in UTF-8. Nothing else is accepted, see
// docs/backup.md.

/// Receives how much is done, from 0 to 1. Returns false to cancel.
using Progress = std::function<bool(double done)>;

/// Thrown when a Progress has cancelled the work. Nothing has been changed.
class Cancelled : public std::exception
{
public:
    const char* what() const noexcept override { return "Cancelled"; }
};

/// Calls `progress`, if it is set. Throws Cancelled if it returns false.
void Report(const Progress& progress, double done);

/// Returns a progress for a part of the work, from `from` to `to`.
Progress PartOf(const Progress& progress, double from, double to);

/// Why an archive cannot be used: one or more sentences for the user.
class ArchiveProblem : public Error
{
public:
    explicit ArchiveProblem(const std::string& text) : Error(ErrorNumber::PathFileAccess, text) {}
};

/// Writes an archive completely or not at all.
class ArchiveWriter
{
public:
    explicit ArchiveWriter(FileOperations& operations) : m_operations(operations) {}

    /// Adds an entry. NameFault must return an empty text for its name.
    void AddBytes(const std::string& name, std::string bytes);
    /// Adds the contents that the file `path` has when the archive is written. Needs no memory for them.
    void AddFile(const std::string& name, const std::string& path);

    /// Writes the entries to a temporary file beside `path`, synchronises it, reads it back and compares
    /// every entry with what was put in, and renames it to `path`. Throws Error if any step fails, Cancelled
    /// if `progress` returns false: the temporary is then removed and an old file is unchanged.
    void Write(const std::string& path, const Progress& progress = {});

private:
    struct Entry {
        std::string name;
        std::string bytes;
        std::string path; ///< of the file; empty for bytes
    };

    /// What was written, to be compared with what can be read.
    struct Written {
        std::uint64_t size = 0;
        std::string hash = {};
    };

    void WriteTo(const std::string& path, std::vector<Written>& written, const Progress& progress) const;
    void CheckWritten(const std::string& path, const std::vector<Written>& written,
                      const Progress& progress) const;

    FileOperations& m_operations;
    std::vector<Entry> m_entries;
};

/// What an archive may contain at most.
struct ArchiveLimits {
    std::size_t entries = 100'000;
    std::uint64_t entryBytes = std::uint64_t(4) << 30U;  ///< of one file, decompressed
    std::uint64_t totalBytes = std::uint64_t(64) << 30U; ///< of all files, decompressed
    std::uint64_t freeBytes = std::uint64_t(1) << 30U;   ///< below this total, the ratio does not matter
    std::uint64_t ratio = 100;                           ///< of the total to the size of the archive
};

/// A file in an archive.
struct ArchiveEntry {
    std::string name;
    std::uint64_t size = 0; ///< decompressed
    std::uint32_t checksum = 0;
    std::uint64_t index = 0; ///< in the archive
};

/// An archive from an unknown source. Opening it checks everything that can be known without decompressing:
/// the names, kinds, sizes and positions of all entries.
class ArchiveReader
{
public:
    /// Throws ArchiveProblem if the file is not an archive that can be trusted, Error if it cannot be read.
    explicit ArchiveReader(const std::string& path, const ArchiveLimits& limits = {});
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    /// Returns the files in the order of the archive, without folders.
    const std::vector<ArchiveEntry>& Entries() const { return m_entries; }

    /// Returns the entry with exactly this name, or null.
    const ArchiveEntry* Find(std::string_view name) const;

    /// Passes the contents of the entry to `take`, block by block, never more than its size. Throws
    /// ArchiveProblem if they do not have the size and the checksum of the entry.
    void Read(const ArchiveEntry& entry, const std::function<void(std::string_view block)>& take) const;

    /// Returns the contents of the entry. Throws like Read, or if they have more than `most` bytes.
    std::string ReadBytes(const ArchiveEntry& entry, std::uint64_t most = std::uint64_t(512) << 20U) const;

    /// Decompresses every entry. Throws like Read.
    void CheckAll(const Progress& progress = {}) const;

private:
    struct Handle;

    std::unique_ptr<Handle> m_handle;
    std::vector<ArchiveEntry> m_entries;
    std::map<std::string, std::size_t, std::less<>> m_byName;
};

} // namespace Tarno
